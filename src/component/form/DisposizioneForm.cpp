#include "component/form/FRMQZ_COPIADISTINTA.h"

#include "component/shared/BloccoRidisegno.h"

#include <utility>

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
    stato_.procedura("KVT_RESIZEFORM_Setup", [&](auto& passo) {
        auto& orig = stato_.origine;
        auto& dest = stato_.destinazione;
        const std::pair<contract::Control*, int> modi[] = {{orig.tipi, modoIntestazioni},
                                                           {dest.tipi, modoIntestazioni},
                                                           {orig.albero, modoAlberi},
                                                           {dest.albero, modoAlberi},
                                                           {orig.dettaglio, modoDettagli},
                                                           {dest.dettaglio, modoDettagli},
                                                           {orig.intestazione, modoIntestazioni},
                                                           {dest.intestazione, modoIntestazioni},
                                                           {controlli_.SPLITTERVerticale, modoAlberi},
                                                           {orig.divisorio, modoDivisorioOrig},
                                                           {dest.divisorio, modoDivisorioDest}};
        for (const auto& [controllo, modo] : modi)
            passo([&, registrato = controllo, codice = modo] {
                controlli_.KVT_RESIZEFORM->registerControl(*registrato, codice);
            });
        passo([&] { Ridisponi(); });
    });
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
        stato_.procedura("Ridisponi", [&](auto& passo) { disponiPannello(passo); });
}

namespace {

void disponi(FormBase::Passo& passo, contract::Control& controllo, const contract::Rect& posto) {
    passo([&] { controllo.setBounds(posto); });
}

} // namespace

void FRMQZ_COPIADISTINTA::disponiPannello(FormBase::Passo& passo) {
    const auto posto = disponiPannelli(datiDisposizione());
    BloccoRidisegno blocco(*stato_.form);
    passo([&] { blocco.blocca(); });
    disponi(passo, *stato_.origine.pannello, posto.pannelloOrig);
    disponi(passo, *stato_.destinazione.pannello, posto.pannelloDest);
    passo([&] { stato_.origine.pannello->setContentTop(posto.inizioContenuto); });
    passo([&] { stato_.destinazione.pannello->setContentTop(posto.inizioContenuto); });
    disponi(passo, *controlli_.SPLITTERVerticale, posto.areaVerticale);
    passo([&] { controlli_.SPLITTERVerticale->setBar(posto.barraVerticale); });
    disponi(passo, *controlli_.GRB_PULSANTI, posto.pulsanti);
    disponi(passo, *controlli_.PIC_TRANSPARENT, posto.sfondo);
    disponi(passo, *controlli_.CMD_VISTOPSX, posto.vistoSinistra);
    disponi(passo, *controlli_.CMD_SPOSTASTRU, posto.spostaStruttura);
    disponi(passo, *controlli_.CMD_SPOSTAVALID, posto.spostaValidita);
    disponi(passo, *controlli_.CMD_PARAMETRI, posto.parametri);
    disponi(passo, *controlli_.CMD_VISTOPDX, posto.vistoDestra);
    disponiLato(passo, stato_.origine, posto.orig);
    disponiLato(passo, stato_.destinazione, posto.dest);
    passo([&] { blocco.sblocca(); });
}

void FRMQZ_COPIADISTINTA::disponiLato(FormBase::Passo& passo, Lato& lato, const DisposizioneLato& posto) {
    disponi(passo, *lato.intestazione, posto.intestazione);
    disponi(passo, *lato.ruolo, posto.ruolo);
    disponi(passo, *lato.didascaliaDistinta, posto.didascalia);
    disponi(passo, *lato.tipi, posto.tipi);
    disponi(passo, *lato.cerca, posto.cerca);
    disponi(passo, *lato.menuCerca, posto.menuCerca);
    disponi(passo, *lato.livelli, posto.livelli);
    disponi(passo, *lato.albero, posto.albero);
    disponi(passo, *lato.dettaglio, posto.dettaglio);
    disponi(passo, *lato.divisorio, posto.area);
    passo([&] { lato.divisorio->setBar(posto.barra); });
    passo([&] { lato.divisorio->setVisible(!stato_.dettagliNascosti); });
    menu_.nascondiEditorStato(passo);
}

/// The origin tree gets this top and so much more height, and the destination tree both.
void FRMQZ_COPIADISTINTA::trasferisciAltezza(FormBase::Passo& passo, contract::Twips alto, contract::Twips differenza) {
    auto posto = stato_.origine.albero->bounds();
    posto.top = alto;
    posto.height += differenza;
    disponi(passo, *stato_.origine.albero, posto);
    auto postoDest = stato_.destinazione.albero->bounds();
    postoDest.top = posto.top;
    postoDest.height = posto.height;
    disponi(passo, *stato_.destinazione.albero, postoDest);
    passo([&] { stato_.destinazione.divisorio->setShare(stato_.origine.divisorio->share()); });
}

void FRMQZ_COPIADISTINTA::NascondiSelezioneDistinta() {
    stato_.selezioneNascosta = true;
    stato_.procedura("NascondiSelezioneDistinta", [&](auto& passo) {
        const auto inizio = stato_.origine.pannello->contentTop();
        const auto lista = stato_.origine.tipi->bounds().height;
        trasferisciAltezza(passo, inizio + 200, lista + 50);
        for (auto* lato : {&stato_.origine, &stato_.destinazione})
            passo([&] { lato->tipi->setVisible(false); });
    });
}

void FRMQZ_COPIADISTINTA::VisualizzaSelezioneDistinta() {
    stato_.selezioneNascosta = false;
    stato_.procedura("VisualizzaSelezioneDistinta", [&](auto& passo) {
        const auto inizio = stato_.origine.pannello->contentTop();
        const auto lista = stato_.origine.tipi->bounds().height;
        // 10 more than the distance with the lists hidden, which leaves the trees reaching 40 less far down.
        trasferisciAltezza(passo, inizio + lista + 210, -(lista + 50));
        for (auto* lato : {&stato_.origine, &stato_.destinazione})
            passo([&] { lato->tipi->setVisible(true); });
    });
}

void FRMQZ_COPIADISTINTA::NascondiDettagli() {
    stato_.dettagliNascosti = true;
    stato_.procedura("NascondiDettagli", [&](auto& passo) {
        for (auto* lato : {&stato_.origine, &stato_.destinazione})
            passo([&] { lato->dettaglio->setVisible(false); });
        passo([&] { stato_.destinazione.divisorio->setShare(stato_.origine.divisorio->share()); });
        passo([&] { Ridisponi(); });
    });
}

void FRMQZ_COPIADISTINTA::VisualizzaDettagli() {
    stato_.dettagliNascosti = false;
    stato_.procedura("VisualizzaDettagli", [&](auto& passo) {
        passo([&] { stato_.destinazione.divisorio->setShare(stato_.origine.divisorio->share()); });
        passo([&] { Ridisponi(); });
        for (auto* lato : {&stato_.origine, &stato_.destinazione})
            passo([&] { lato->dettaglio->setVisible(true); });
    });
}

} // namespace qz
