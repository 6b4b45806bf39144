#include "component/form/ControlliForm.h"

namespace qz {

namespace {

using contract::Form;

constexpr contract::Color coloreBarra = 0xC0C0C0;
constexpr contract::Twips spessoreBarra = 100;

struct NomiLato {
    std::string_view pannello, intestazione, ruolo, didascalia, tipi, cerca, menuCerca, livelli, albero, dettaglio,
        divisorio, frame, menu, testoRuolo;
};

constexpr NomiLato nomiOrigine{"FME_ORIGINE",          "FME_INTESTAZIONEORIGINE",
                               "LBL_ORIGINE",          "lblDescDistintaOrig",
                               "TRW_DISTINTEORIG",     "txtCercaOrig",
                               "MenuCercaOrig",        "CMD_ESPANDICOLLASSAORIG",
                               "TRW_ELEMDISTINTAORIG", "GRD_DETTDISTINTAORIG",
                               "SPLITTEROrizzOrig",    "FME_CopiaDistintaOrig",
                               "mnuCollegamentoOrig",  "ORIGINE"};
constexpr NomiLato nomiDestinazione{"FME_DESTINAZIONE",     "FME_INTESTAZIONEDESTINAZIONE",
                                    "LBL_DESTINAZIONE",     "lblDescDistintaDest",
                                    "TRW_DISTINTEDEST",     "txtCercaDest",
                                    "MenuCercaDest",        "CMD_ESPANDICOLLASSADEST",
                                    "TRW_ELEMDISTINTADEST", "GRD_DETTDISTINTADEST",
                                    "SPLITTEROrizzDest",    "FME_CopiaDistintaDest",
                                    "mnuCollegamentoDest",  "DESTINAZIONE"};

void creaLato(Form& form, Lato& lato, const NomiLato& nomi) {
    lato.pannello = &form.addFrame(nomi.pannello, nullptr);
    lato.pannello->setCaption(nomi.testoRuolo);
    lato.intestazione = &form.addFrame(nomi.intestazione, lato.pannello);
    lato.ruolo = &form.addLabel(nomi.ruolo, lato.intestazione);
    lato.didascaliaDistinta = &form.addLabel(nomi.didascalia, lato.intestazione);
    lato.tipi = &form.addTypeList(nomi.tipi, lato.pannello);
    lato.cerca = &form.addTextField(nomi.cerca, lato.pannello);
    lato.menuCerca = &form.addMenuButton(nomi.menuCerca, lato.pannello);
    lato.livelli = &form.addButton(nomi.livelli, lato.pannello);
    lato.albero = &form.addTreeList(nomi.albero, lato.pannello);
    lato.dettaglio = &form.addDetailGrid(nomi.dettaglio, lato.pannello);
    lato.divisorio = &form.addSplitter(nomi.divisorio, lato.pannello);
    lato.frame = &form.addDataFrame(nomi.frame, lato.pannello);
    lato.menu = &form.addPopupMenu(nomi.menu);

    lato.ruolo->setCaption(nomi.testoRuolo);
    lato.ruolo->setHeading(true);
    lato.tipi->setToolTip("Seleziona la distinta da aggiornare");
    lato.cerca->setToolTip("Cerca nella distinta");
    lato.cerca->setPlaceholder("Cerca nella distinta");
    lato.menuCerca->setCaption("Cerca");
    lato.menuCerca->setToolTip("Cerca nella distinta");
    lato.menuCerca->setEnabled(true);
    lato.livelli->setCaption("Comprimi liv.1");
    lato.livelli->setToolTip("Espande o comprime l'albero di un livello");
    lato.livelli->setIcon(contract::Icon::levels);
    lato.dettaglio->setToolTip("Dettaglio dell'anagrafica");
    lato.dettaglio->setFontName("Tahoma");
    lato.frame->setVisible(false);
}

void creaMenu(StatoForm& stato) {
    stato.origine.menu->addItem({"mnuSchedaCFOrig", "Collegamento scheda anagrafica"});
    stato.origine.menu->addItem({"mnuAnagCFOrig", "Collegamento ad anagrafica"});
    stato.destinazione.menu->addItem({"mnuSchedaCFDest", "Collegamento scheda anagrafica"});
    stato.destinazione.menu->addItem({"mnuAnagCFDest", "Collegamento ad anagrafica"});
    stato.destinazione.menu->addItem({"mnuStatoLegame", "Gestione Stato"});
    stato.destinazione.menu->addItem({"mnuRilasciaFigli", "Imposta valore di stato sui figli"});
}

void creaPulsanti(Form& form, ControlliForm& controlli) {
    controlli.GRB_PULSANTI = &form.addGroupBox("GRB_PULSANTI", nullptr);
    controlli.PIC_TRANSPARENT = &form.addBackdrop("PIC_TRANSPARENT", controlli.GRB_PULSANTI);
    controlli.CMD_VISTOPSX = &form.addButton("CMD_VISTOPSX", controlli.GRB_PULSANTI);
    controlli.CMD_SPOSTASTRU = &form.addButton("CMD_SPOSTASTRU", controlli.GRB_PULSANTI);
    controlli.CMD_SPOSTAVALID = &form.addButton("CMD_SPOSTAVALID", controlli.GRB_PULSANTI);
    controlli.CMD_PARAMETRI = &form.addButton("CMD_PARAMETRI", controlli.GRB_PULSANTI);
    controlli.CMD_VISTOPDX = &form.addButton("CMD_VISTOPDX", controlli.GRB_PULSANTI);

    controlli.CMD_VISTOPSX->setToolTip("Mostra o nasconde la scelta delle distinte");
    controlli.CMD_VISTOPSX->setIcon(contract::Icon::panelLeft);
    controlli.CMD_SPOSTASTRU->setCaption("Sposta &struttura");
    controlli.CMD_SPOSTASTRU->setToolTip(
        "Sposta il nodo di origine e tutti i suoi figli sotto il nodo di destinazione");
    controlli.CMD_SPOSTASTRU->setIcon(contract::Icon::moveStructure);
    controlli.CMD_SPOSTASTRU->setPrimary(true);
    controlli.CMD_SPOSTAVALID->setCaption("Sposta con &validità");
    controlli.CMD_SPOSTAVALID->setToolTip(
        "Chiude i legami attuali a una data e li apre dal giorno dopo sotto il nodo di destinazione");
    controlli.CMD_SPOSTAVALID->setIcon(contract::Icon::moveValidity);
    controlli.CMD_SPOSTAVALID->setPrimary(true);
    controlli.CMD_PARAMETRI->setCaption("Parametri");
    controlli.CMD_PARAMETRI->setToolTip("Parametri dei legami dell'azienda");
    controlli.CMD_PARAMETRI->setIcon(contract::Icon::parameters);
    controlli.CMD_VISTOPDX->setToolTip("Mostra o nasconde la scelta delle distinte");
    controlli.CMD_VISTOPDX->setIcon(contract::Icon::panelRight);
}

void impostaColonne(StatoForm& stato, FormBase::Passo& passo, Lato& lato) {
    using Tipo = contract::TreeColumnKind;
    const bool dest = lato.descrizione.destinazione;
    auto& albero = *lato.albero;
    const auto colonna = [&](const contract::TreeColumn& nuova) { passo([&] { albero.addColumn(nuova); }); };
    passo([&] { albero.setBandCaption("Dettaglio distinta"); });
    passo([&] { albero.setFontName("Tahoma"); });
    passo([&] { albero.setEmptyText("La distinta non contiene nodi"); });
    colonna({.name = "trQZ02_ID", .caption = "Id", .field = "QZ02_ID", .kind = Tipo::code, .visible = false});
    colonna({.name = std::string(lato.descrizione.colonnaCodice),
             .caption = "Codice",
             .field = "QZ02_CLIFOR_CG44",
             .kind = Tipo::code,
             .link = true,
             .width = 950});
    colonna({.name = "RagioneSociale",
             .caption = "Ragione Sociale",
             .field = "RagioneSociale",
             .kind = Tipo::text,
             .link = true,
             .width = 2000});
    colonna({.name = "trQZ02_DATAINIZIOVAL",
             .caption = "Data inizio",
             .field = "QZ02_DATAINIZIOVAL",
             .kind = Tipo::date,
             .editable = dest,
             .width = 1150});
    colonna({.name = std::string(lato.descrizione.colonnaFine),
             .caption = "Data fine",
             .field = "QZ02_DATAFINEVAL",
             .kind = Tipo::date,
             .editable = dest,
             .width = 1150});
    if (!dest) {
        colonna({.name = "Seleziona",
                 .caption = "Seleziona",
                 .field = "",
                 .kind = Tipo::check,
                 .width = 950,
                 .checkedValue = "True"});
    } else {
        colonna({.name = "Stato",
                 .caption = "Stato",
                 .field = "",
                 .kind = Tipo::state,
                 .width = 1200,
                 .texts = [&stato](const std::vector<std::size_t>& righe) {
                     std::vector<std::string> guid;
                     const auto& dati = *stato.destinazione.albero->records();
                     guid.reserve(righe.size());
                     const auto campo = dati.FieldIndex("QZ02_GUID");
                     for (const auto riga : righe)
                         guid.push_back(dati.rows().column(campo).value(riga).text());
                     const auto flusso = stato.campoStato->object();
                     return flusso ? flusso->descriptions(guid) : std::vector<std::string>(righe.size());
                 }});
    }
    passo([&] { albero.setScrollTipColumn("trQZ02_ID"); });
}

void impostaDivisorioOrizzontale(FormBase::Passo& passo, Lato& lato) {
    const contract::Splitter::Settings impostazioni{.firstPane = lato.albero->name(),
                                                    .secondPane = lato.dettaglio->name(),
                                                    .firstLimit = 500,
                                                    .secondLimit = 300,
                                                    .start = 90,
                                                    .liveDrag = true,
                                                    .sideBySide = false,
                                                    .locked = false,
                                                    .keepShare = true,
                                                    .barColor = coloreBarra,
                                                    .barSize = spessoreBarra};
    passo([&] { lato.divisorio->setUp(impostazioni); });
    passo([&] { lato.divisorio->setVisible(true); });
}

} // namespace

void creaControlli(StatoForm& stato, ControlliForm& controlli) {
    auto& form = *stato.form;
    controlli.MDIActiveX1 = &form.addMdiContainer("MDIActiveX1");
    controlli.KVT_RESIZEFORM = &form.addResizeControl("KVT_RESIZEFORM");
    creaLato(form, stato.origine, nomiOrigine);
    creaLato(form, stato.destinazione, nomiDestinazione);
    controlli.SPLITTERVerticale = &form.addSplitter("SPLITTERVerticale", nullptr);
    creaPulsanti(form, controlli);
    creaMenu(stato);

    stato.ridimensionamento = controlli.KVT_RESIZEFORM;
    stato.campoId = &form.addTextField("TXT_QZ02_ID", stato.destinazione.frame);
    stato.campoStato = &form.addWorkflowStateField("TXT_QZ02_STATO", stato.destinazione.pannello);
    stato.campoStato->setCaption("Stato");
    stato.campoStato->setVisible(false);
}

void impostaControlli(StatoForm& stato, FormBase::Passo& passo, ControlliForm& controlli) {
    impostaColonne(stato, passo, stato.origine);
    impostaColonne(stato, passo, stato.destinazione);
    const contract::Splitter::Settings verticale{.firstPane = stato.origine.pannello->name(),
                                                 .secondPane = stato.destinazione.pannello->name(),
                                                 .firstLimit = 2000,
                                                 .secondLimit = 2000,
                                                 .start = 50,
                                                 .liveDrag = true,
                                                 .sideBySide = true,
                                                 .locked = false,
                                                 .barColor = coloreBarra,
                                                 .barSize = spessoreBarra};
    passo([&] { controlli.SPLITTERVerticale->setUp(verticale); });
    passo([&] { controlli.SPLITTERVerticale->setVisible(true); });
    impostaDivisorioOrizzontale(passo, stato.origine);
    impostaDivisorioOrizzontale(passo, stato.destinazione);
}

} // namespace qz
