#include "component/Scena.h"

#include "component/data/CaricaDistinta.h"

namespace prove {

using contract::TreeColumnKind;

Scena::Scena() {
    host->user = "UTENTE";
    host->group = "GRUPPO";
    auto globale = std::make_shared<platform::headless::HostGlobal>(host);
    interfaccia.ClsGlobal(globale);
    interfaccia.StatusBar(platform::headless::newStatusBar(host));
    interfaccia.ActiveNavigator(platform::headless::newNavigator(host));
    interfaccia.ActiveFrame(platform::headless::newActiveFrame(host));
    db->Open();
    tabelle.collega(*db);

    stato.ospite = &interfaccia;
    stato.connessione = db;
    stato.classeLog = globale->newLogClass();
    stato.dittaDiLavoro = 1;
    stato.oggi = [] { return giorno("15/06/2024"); };
    stato.form = host->controls->newDocumentForm("FRMQZ_COPIADISTINTA");
    stato.form->setCaption("Manutenzione distinte");
    stato.ridimensionamento = &stato.form->addResizeControl("KVT_RESIZEFORM");
    stato.campoId = &stato.form->addTextField("TXT_QZ02_ID", nullptr);
    stato.campoStato = &stato.form->addWorkflowStateField("TXT_QZ02_STATO", nullptr);
    flusso = globale->newWorkflowState();
    stato.campoStato->setObject(flusso);
    creaLato(stato.origine, "ORIG");
    creaLato(stato.destinazione, "DEST");
    host->journal->take();
}

void Scena::creaLato(qz::Lato& lato, std::string_view suffisso) {
    const std::string fine(suffisso);
    const bool dest = lato.descrizione.destinazione;
    auto& f = *stato.form;
    lato.pannello = &f.addFrame(dest ? "FME_DESTINAZIONE" : "FME_ORIGINE", nullptr);
    lato.tipi = &f.addTypeList("TRW_DISTINTE" + fine, lato.pannello);
    lato.didascaliaDistinta = &f.addLabel("lblDescDistinta" + fine, lato.pannello);
    lato.albero = &f.addTreeList("TRW_ELEMDISTINTA" + fine, lato.pannello);
    lato.dettaglio = &f.addDetailGrid("GRD_DETTDISTINTA" + fine, lato.pannello);
    lato.cerca = &f.addTextField("txtCerca" + fine, lato.pannello);
    lato.menuCerca = &f.addMenuButton("MenuCerca" + fine, lato.pannello);
    lato.livelli = &f.addButton("CMD_ESPANDICOLLASSA" + fine, lato.pannello);
    lato.frame = &f.addDataFrame("FME_CopiaDistinta" + fine, lato.pannello);
    lato.menu = &f.addPopupMenu("mnuCollegamento" + fine);
    lato.dati = std::make_shared<contract::Recordset>();

    auto& albero = *lato.albero;
    albero.addColumn({.name = "trQZ02_ID", .caption = "", .field = "QZ02_ID", .visible = false});
    albero.addColumn({.name = std::string(lato.descrizione.colonnaCodice),
                      .caption = "Codice",
                      .field = "QZ02_CLIFOR_CG44",
                      .kind = TreeColumnKind::code,
                      .link = true});
    albero.addColumn({.name = "RagioneSociale", .caption = "Ragione Sociale", .field = "RagioneSociale", .link = true});
    albero.addColumn({.name = "trQZ02_DATAINIZIOVAL",
                      .caption = "Data inizio",
                      .field = "QZ02_DATAINIZIOVAL",
                      .kind = TreeColumnKind::date,
                      .editable = dest});
    albero.addColumn({.name = std::string(lato.descrizione.colonnaFine),
                      .caption = "Data fine",
                      .field = "QZ02_DATAFINEVAL",
                      .kind = TreeColumnKind::date,
                      .editable = dest});
    if (dest)
        albero.addColumn({.name = "Stato", .caption = "Stato", .field = "", .kind = TreeColumnKind::state});
    else
        albero.addColumn({.name = "Seleziona",
                          .caption = "Seleziona",
                          .field = "",
                          .kind = TreeColumnKind::check,
                          .checkedValue = "True"});
}

void Scena::carica(qz::Lato& lato, std::string_view id, std::int64_t nodo) {
    qz::CaricaDistinta(stato, lato, id);
    if (nodo != 0)
        albero(lato).focusKey(nodo);
    db->take();
}

std::vector<std::string> Scena::messaggi() const {
    std::vector<std::string> testi;
    for (const auto& messaggio : host->messages)
        testi.push_back(messaggio.text);
    return testi;
}

std::vector<std::string> Scena::errori() const {
    std::vector<std::string> nomi;
    for (const auto& errore : host->errors)
        nomi.push_back(errore.procedure);
    return nomi;
}

std::vector<std::int64_t> nodiDi(const contract::TreeList& albero) {
    std::vector<std::int64_t> ids;
    for (auto nodo = albero.firstNode(); nodo; nodo = albero.next(nodo))
        ids.push_back(albero.key(nodo));
    return ids;
}

} // namespace prove
