#include "form/FRMQZ_COPIADISTINTA.h"

#include "form/shared/BloccoRidisegno.h"

namespace qz {

namespace {

// The two horizontal splitters get different codes.
constexpr int modoIntestazioni = 7;
constexpr int modoAlberi = 15;
constexpr int modoDettagli = 14;
constexpr int modoDivisorioOrig = 11;
constexpr int modoDivisorioDest = 15;

} // namespace

void FRMQZ_COPIADISTINTA::registraRidimensionamento() {
    auto& controllo = *controlli_.KVT_RESIZEFORM;
    auto& orig = stato_.origine;
    auto& dest = stato_.destinazione;
    controllo.registerControl(*orig.tipi, modoIntestazioni);
    controllo.registerControl(*dest.tipi, modoIntestazioni);
    controllo.registerControl(*orig.albero, modoAlberi);
    controllo.registerControl(*dest.albero, modoAlberi);
    controllo.registerControl(*orig.dettaglio, modoDettagli);
    controllo.registerControl(*dest.dettaglio, modoDettagli);
    controllo.registerControl(*orig.intestazione, modoIntestazioni);
    controllo.registerControl(*dest.intestazione, modoIntestazioni);
    controllo.registerControl(*controlli_.SPLITTERVerticale, modoAlberi);
    controllo.registerControl(*orig.divisorio, modoDivisorioOrig);
    controllo.registerControl(*dest.divisorio, modoDivisorioDest);
    Ridisponi();
}

DatiDisposizione FRMQZ_COPIADISTINTA::datiDisposizione() const {
    return {.larghezza = stato_.form->clientWidth(),
            .altezza = stato_.form->clientHeight(),
            .zoom = controlli_.KVT_RESIZEFORM->zoom(),
            .quotaVerticale = controlli_.SPLITTERVerticale->share(),
            .quotaOrig = stato_.origine.divisorio->share(),
            .quotaDest = stato_.destinazione.divisorio->share(),
            .selezioneNascosta = stato_.selezioneNascosta,
            .dettagliNascosti = stato_.dettagliNascosti};
}

void FRMQZ_COPIADISTINTA::Ridisponi() {
    if (finestra_ != nullptr)
        stato_.procedura("Ridisponi", [&](auto& passo) { passo([&] { disponiPannello(); }); });
}

void FRMQZ_COPIADISTINTA::disponiPannello() {
    const auto posto = disponiPannelli(datiDisposizione());
    const BloccoRidisegno blocco(*stato_.form);
    stato_.origine.pannello->setBounds(posto.pannelloOrig);
    stato_.destinazione.pannello->setBounds(posto.pannelloDest);
    stato_.origine.pannello->setContentTop(posto.inizioContenuto);
    stato_.destinazione.pannello->setContentTop(posto.inizioContenuto);
    controlli_.SPLITTERVerticale->setBounds(posto.areaVerticale);
    controlli_.SPLITTERVerticale->setBar(posto.barraVerticale);
    controlli_.GRB_PULSANTI->setBounds(posto.pulsanti);
    controlli_.PIC_TRANSPARENT->setBounds(posto.sfondo);
    controlli_.CMD_VISTOPSX->setBounds(posto.vistoSinistra);
    controlli_.CMD_SPOSTASTRU->setBounds(posto.spostaStruttura);
    controlli_.CMD_SPOSTAVALID->setBounds(posto.spostaValidita);
    controlli_.CMD_PARAMETRI->setBounds(posto.parametri);
    controlli_.CMD_VISTOPDX->setBounds(posto.vistoDestra);
    disponiLato(stato_.origine, posto.orig);
    disponiLato(stato_.destinazione, posto.dest);
}

void FRMQZ_COPIADISTINTA::disponiLato(Lato& lato, const DisposizioneLato& posto) {
    lato.intestazione->setBounds(posto.intestazione);
    lato.ruolo->setBounds(posto.ruolo);
    lato.didascaliaDistinta->setBounds(posto.didascalia);
    lato.tipi->setBounds(posto.tipi);
    lato.cerca->setBounds(posto.cerca);
    lato.menuCerca->setBounds(posto.menuCerca);
    lato.livelli->setBounds(posto.livelli);
    lato.albero->setBounds(posto.albero);
    lato.dettaglio->setBounds(posto.dettaglio);
    lato.divisorio->setBounds(posto.area);
    lato.divisorio->setBar(posto.barra);
    lato.divisorio->setVisible(!stato_.dettagliNascosti);
    menu_.nascondiEditorStato();
}

void FRMQZ_COPIADISTINTA::NascondiSelezioneDistinta() {
    stato_.selezioneNascosta = true;
    const auto inizio = stato_.origine.pannello->contentTop();
    const auto lista = stato_.origine.tipi->bounds().height;
    auto posto = stato_.origine.albero->bounds();
    posto.top = inizio + 200;
    posto.height += lista + 50;
    stato_.origine.albero->setBounds(posto);
    auto postoDest = stato_.destinazione.albero->bounds();
    postoDest.top = posto.top;
    postoDest.height = posto.height;
    stato_.destinazione.albero->setBounds(postoDest);
    stato_.destinazione.divisorio->setShare(stato_.origine.divisorio->share());
    stato_.origine.tipi->setVisible(false);
    stato_.destinazione.tipi->setVisible(false);
}

void FRMQZ_COPIADISTINTA::VisualizzaSelezioneDistinta() {
    stato_.selezioneNascosta = false;
    const auto inizio = stato_.origine.pannello->contentTop();
    const auto lista = stato_.origine.tipi->bounds().height;
    auto posto = stato_.origine.albero->bounds();
    // 10 more than the distance with the lists hidden, which leaves the trees reaching 40 less far down.
    posto.top = inizio + lista + 210;
    posto.height -= lista + 50;
    stato_.origine.albero->setBounds(posto);
    auto postoDest = stato_.destinazione.albero->bounds();
    postoDest.top = posto.top;
    postoDest.height = posto.height;
    stato_.destinazione.albero->setBounds(postoDest);
    stato_.destinazione.divisorio->setShare(stato_.origine.divisorio->share());
    stato_.origine.tipi->setVisible(true);
    stato_.destinazione.tipi->setVisible(true);
}

void FRMQZ_COPIADISTINTA::NascondiDettagli() {
    stato_.dettagliNascosti = true;
    for (auto* lato : {&stato_.origine, &stato_.destinazione})
        lato->dettaglio->setVisible(false);
    stato_.destinazione.divisorio->setShare(stato_.origine.divisorio->share());
    Ridisponi();
}

void FRMQZ_COPIADISTINTA::VisualizzaDettagli() {
    stato_.dettagliNascosti = false;
    stato_.destinazione.divisorio->setShare(stato_.origine.divisorio->share());
    Ridisponi();
    for (auto* lato : {&stato_.origine, &stato_.destinazione})
        lato->dettaglio->setVisible(true);
}

} // namespace qz
