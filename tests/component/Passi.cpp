#include "component/Passi.h"

#include "platform/headless/HeadlessTree.h"
#include "platform/headless/HeadlessTypeList.h"

#include <utility>

namespace prove {

namespace {

using contract::MouseButton;
using platform::headless::HeadlessComboBox;
using platform::headless::HeadlessDataFrame;
using platform::headless::HeadlessDateField;
using platform::headless::HeadlessForm;
using platform::headless::HeadlessLookupField;
using platform::headless::HeadlessMenuButton;
using platform::headless::HeadlessPopupMenu;
using platform::headless::HeadlessTextField;
using platform::headless::HeadlessTypeList;
using platform::headless::HeadlessWorkflowField;
using P = ProgrammaConGuasti;

constexpr const char* orig = "TRW_ELEMDISTINTAORIG";
constexpr const char* dest = "TRW_ELEMDISTINTADEST";

/// What a host calls directly: no event of a control tells that the component is at work.
template <class Azione> void dallOspite(Azione&& azione) {
    const Guasti::Tratto tratto(true);
    azione();
}

void nodoDest(P& p, std::int64_t id) {
    p.albero(dest).focusKey(id);
    p.albero(dest).settle();
}

void destinazione20(P& p) {
    p.controllo<HeadlessTypeList>("TRW_DISTINTEDEST").clickEntry("C20");
}

std::function<void(P&)> pulsante(std::string_view nome) {
    return [nome](P& p) { p.pulsante(nome).click(); };
}

std::function<void(P&)> voceTipo(std::string_view lista, std::string_view chiave) {
    return [lista, chiave](P& p) { p.controllo<HeadlessTypeList>(lista).clickEntry(chiave); };
}

std::function<void(P&)> voceMenu(std::string_view menu, std::string_view voce) {
    return [menu, voce](P& p) {
        p.controllo<HeadlessPopupMenu>(menu).showAtMouse();
        p.controllo<HeadlessPopupMenu>(menu).choose(voce);
    };
}

std::function<void(P&)> premuto(std::string_view albero, MouseButton tasto) {
    return [albero, tasto](P& p) { p.albero(albero).pressMouse(tasto, {1}, "RagioneSociale"); };
}

std::function<void(P&)> cella(std::string_view colonna, std::string_view testo) {
    return [colonna, testo](P& p) { p.albero(dest).editCell(p.albero(dest).byKey(12), colonna, testo); };
}

void preparaModifica(P& p) {
    destinazione20(p);
    nodoDest(p, 12);
}

void preparaStati(P& p) {
    destinazione20(p);
    p.albero(dest).pressMouse(MouseButton::right, p.albero(dest).byKey(11), "RagioneSociale");
    p.controllo<HeadlessPopupMenu>("mnuCollegamentoDest").dismiss();
}

void preparaSpostamento(P& p) {
    destinazione20(p);
    nodoDest(p, 12);
    p.albero(orig).focusKey(2);
    p.albero(orig).settle();
    p.albero(orig).setScreenRows(1);
    p.albero(orig).setTopRow(1);
    p.host->controls->whenModal("FRMQZ_DATAFINELEGAME", [](HeadlessForm& form) {
        form.control<HeadlessDateField>("TXT_DATACHIUSURALEGAME").type("30/06/2024");
        form.control<platform::headless::HeadlessButton>("CMD_ESEGUI").click();
    });
}

void finestraParametri(P& p) {
    p.host->choices = {5};
    p.host->controls->whenModal("FRMQZ_PARAMETRI", [](HeadlessForm& form) {
        form.control<HeadlessComboBox>("CMB_QZ03_TIPOCARICODATA").pick(1);
        form.control<HeadlessDateField>("TXT_QZ03_DATAINIZIOVAL").type("02/03/2024");
        form.control<HeadlessDateField>("TXT_QZ03_DATAFINEVAL").type("01/03/2024");
        form.control<HeadlessLookupField>("TXT_QZ03_ID_WF02").openList();
        bool annulla = false;
        contract::fire(form.control<HeadlessDataFrame>("FME_Parametri").BeforeUpdate, annulla);
        form.control<HeadlessComboBox>("CMB_QZ03_TIPOCARICODATA").pick(0);
        form.control<HeadlessDataFrame>("FME_Parametri").undo();
    });
}

std::vector<Caso> tutti() {
    const auto niente = [](P&) {};
    const auto cerca = [](std::string_view testo, std::string_view lato) {
        return
            [testo, nome = "txtCerca" + std::string(lato)](P& p) { p.controllo<HeadlessTextField>(nome).type(testo); };
    };
    return {
        {.nome = "Avvio"},
        {.nome = "AvvioConLaDivisione",
         .prima = [](P& p) { p.tabelle.tipi[0] = {10, "A", "ORIGINE", 0, "7", "GUID-TIPO"}; }},
        {.nome = "AvvioSenzaTipi", .prima = [](P& p) { p.tabelle.tipi.clear(); }},
        {.nome = "Chiusura", .prepara = niente, .fai = [](P& p) { p.form().pressClose(); }},
        {.nome = "CambioAzienda",
         .prepara = niente,
         .fai = [](P& p) { dallOspite([&] { p.classe->companyChanged(); }); }},
        {.nome = "TipoCliente", .prepara = niente, .fai = voceTipo("TRW_DISTINTEORIG", "C20")},
        {.nome = "TipoClienteDest", .prepara = niente, .fai = voceTipo("TRW_DISTINTEDEST", "C20")},
        {.nome = "TipoFornitore", .prepara = niente, .fai = voceTipo("TRW_DISTINTEORIG", "F30")},
        {.nome = "TipoFornitoreDest", .prepara = niente, .fai = voceTipo("TRW_DISTINTEDEST", "F30")},
        {.nome = "NascondiSelezione", .prepara = niente, .fai = pulsante("CMD_VISTOPSX")},
        {.nome = "MostraSelezione", .prepara = pulsante("CMD_VISTOPSX"), .fai = pulsante("CMD_VISTOPDX")},
        {.nome = "NascondiDettagli",
         .prepara = niente,
         .fai = [](P& p) { dallOspite([&] { p.classe->menuCommand("mnuDettagli"); }); }},
        {.nome = "MostraDettagli",
         .prepara = [](P& p) { dallOspite([&] { p.classe->menuCommand("mnuDettagli"); }); },
         .fai = [](P& p) { dallOspite([&] { p.classe->menuCommand("mnuDettagli"); }); }},
        {.nome = "Ridimensiona", .prepara = niente, .fai = [](P& p) { p.form().resize(20000, 12000); }},
        {.nome = "StatoDelFrame",
         .prepara = niente,
         .fai = [](P& p) { p.controllo<HeadlessDataFrame>("FME_CopiaDistintaDest").enterStatus(0); }},
        {.nome = "CercaInvio",
         .prepara = cerca("SOGGETTO 103", "Orig"),
         .fai = [](P& p) { p.controllo<HeadlessTextField>("txtCercaOrig").press(13); }},
        {.nome = "CercaDest",
         .prepara = cerca("SOGGETTO 103", "Dest"),
         .fai = [](P& p) { p.controllo<HeadlessTextField>("txtCercaDest").press(13); }},
        {.nome = "CercaMenu",
         .prepara = cerca("103", "Orig"),
         .fai = [](P& p) { p.controllo<HeadlessMenuButton>("MenuCercaOrig").choose("Codice"); }},
        {.nome = "CercaMenuDest",
         .prepara = cerca("SOGGETTO 103", "Dest"),
         .fai = [](P& p) { p.controllo<HeadlessMenuButton>("MenuCercaDest").choose("RagSoc"); }},
        {.nome = "CercaInvano",
         .prepara = cerca("nessuno", "Orig"),
         .fai = [](P& p) { p.controllo<HeadlessTextField>("txtCercaOrig").press(13); }},
        {.nome = "FuocoOrigine",
         .prepara = niente,
         .fai =
             [](P& p) {
                 p.albero(orig).focusKey(2);
                 p.albero(orig).settle();
             }},
        {.nome = "FuocoDestinazione", .prepara = destinazione20, .fai = [](P& p) { nodoDest(p, 12); }},
        {.nome = "DistintaVuota",
         .prima =
             [](P& p) {
                 p.tabelle.tipi.push_back({40, "D", "VUOTA"});
             },
         .prepara = niente,
         .fai = voceTipo("TRW_DISTINTEDEST", "C40")},
        {.nome = "Seleziona",
         .prepara = niente,
         .fai = [](P& p) { p.albero(orig).check(p.albero(orig).byKey(1), true); }},
        {.nome = "TastoSinistro", .prepara = niente, .fai = premuto(orig, MouseButton::left)},
        {.nome = "TastoDestro", .prepara = niente, .fai = premuto(orig, MouseButton::right)},
        {.nome = "TastoSinistroDest", .prepara = niente, .fai = premuto(dest, MouseButton::left)},
        {.nome = "TastoDestroDest", .prepara = niente, .fai = premuto(dest, MouseButton::right)},
        {.nome = "Collegamento",
         .prepara = niente,
         .fai = [](P& p) { p.albero(orig).clickLink({1}, "RagioneSociale"); }},
        {.nome = "CollegamentoDest",
         .prepara = niente,
         .fai = [](P& p) { p.albero(dest).clickLink({1}, "RagioneSociale"); }},
        {.nome = "SchedaCliente", .prepara = niente, .fai = voceMenu("mnuCollegamentoOrig", "mnuSchedaCFOrig")},
        {.nome = "SchedaFornitore",
         .prepara = voceTipo("TRW_DISTINTEDEST", "F30"),
         .fai = voceMenu("mnuCollegamentoDest", "mnuSchedaCFDest")},
        {.nome = "CollegaCliente", .prepara = niente, .fai = voceMenu("mnuCollegamentoOrig", "mnuAnagCFOrig")},
        {.nome = "CollegaFornitore",
         .prepara = voceTipo("TRW_DISTINTEDEST", "F30"),
         .fai = voceMenu("mnuCollegamentoDest", "mnuAnagCFDest")},
        {.nome = "EditorStato", .prepara = preparaStati, .fai = voceMenu("mnuCollegamentoDest", "mnuStatoLegame")},
        {.nome = "ColonnaStato",
         .prepara = preparaModifica,
         .fai = [](P& p) { p.albero(dest).setFocusedColumn("Stato"); }},
        {.nome = "AltraColonna",
         .prepara = preparaModifica,
         .fai = [](P& p) { p.albero(dest).setFocusedColumn("RagioneSociale"); }},
        {.nome = "StatoScelto",
         .prepara =
             [](P& p) {
                 preparaStati(p);
                 voceMenu("mnuCollegamentoDest", "mnuStatoLegame")(p);
             },
         .fai = [](P& p) { p.controllo<HeadlessWorkflowField>("TXT_QZ02_STATO").choose(5); }},
        {.nome = "StatoSuiFigli", .prepara = preparaStati, .fai = voceMenu("mnuCollegamentoDest", "mnuRilasciaFigli")},
        {.nome = "ModificaAccettata", .prepara = preparaModifica, .fai = cella("trQZ02_DATAINIZIOVAL", "01/02/2021")},
        {.nome = "ModificaSenzaInizio", .prepara = preparaModifica, .fai = cella("trQZ02_DATAINIZIOVAL", "")},
        {.nome = "ModificaSenzaFine", .prepara = preparaModifica, .fai = cella("trQZ02_DATAFINEVAL", "")},
        {.nome = "ModificaInvertita", .prepara = preparaModifica, .fai = cella("trQZ02_DATAFINEVAL", "01/02/2019")},
        {.nome = "ModificaRifiutata",
         .prima =
             [](P& p) {
                 p.tabelle.nodi.push_back({70, 20, 11, 202, "01/01/2010", "31/12/2015"});
             },
         .prepara = preparaModifica,
         .fai = cella("trQZ02_DATAINIZIOVAL", "01/02/2014")},
        {.nome = "ModificaInvariata", .prepara = preparaModifica, .fai = cella("trQZ02_DATAINIZIOVAL", "01/01/2020")},
        {.nome = "Comprimi", .prepara = niente, .fai = pulsante("CMD_ESPANDICOLLASSAORIG")},
        {.nome = "ComprimiDest", .prepara = niente, .fai = pulsante("CMD_ESPANDICOLLASSADEST")},
        {.nome = "Espandi",
         .prepara =
             [](P& p) {
                 for (int i = 0; i < 3; ++i)
                     p.pulsante("CMD_ESPANDICOLLASSAORIG").click();
             },
         .fai = pulsante("CMD_ESPANDICOLLASSAORIG")},
        {.nome = "Parametri", .prepara = finestraParametri, .fai = pulsante("CMD_PARAMETRI"), .conDialogo = true},
        {.nome = "SpostaStruttura", .prepara = preparaSpostamento, .fai = pulsante("CMD_SPOSTASTRU"), .risposte = {6}},
        {.nome = "SpostaValidita",
         .prepara = preparaSpostamento,
         .fai = pulsante("CMD_SPOSTAVALID"),
         .risposte = {6},
         .conDialogo = true},
        {.nome = "SpostaAnnullato",
         .prepara =
             [](P& p) {
                 p.host->controls->whenModal("FRMQZ_DATAFINELEGAME", [](HeadlessForm& form) {
                     form.control<platform::headless::HeadlessButton>("CMD_ANNULLA").click();
                 });
             },
         .fai = pulsante("CMD_SPOSTAVALID"),
         .conDialogo = true},
        {.nome = "SpostaTipiDiversi",
         .prepara = voceTipo("TRW_DISTINTEDEST", "F30"),
         .fai = pulsante("CMD_SPOSTASTRU")},
    };
}

} // namespace

const std::vector<Caso>& casi() {
    static const std::vector<Caso> elenco = tutti();
    return elenco;
}

Corsa esegui(const Caso& caso, std::optional<std::size_t> guasto, int risposta) {
    Guasti guasti;
    ProgrammaConGuasti programma;
    programma.tabelle.tipi[1].guid = "GUID-20";
    programma.tabelle.il(11).guid = "GUID-11";
    programma.tabelle.il(12).guid = "GUID-12";
    programma.tabelle.nodi.push_back({13, 20, 12, 203, "01/01/2020", "31/12/2099", "GUID-13"});
    programma.tabelle.nodi.push_back({31, 30, {}, 301});
    programma.db->answer(" SELECT   RTrim(CAST(CG44_CLIFOR.CG44_CLIFOR",
                         platform::headless::rows({"Soggetto", "Valuta"}, {{"101 SOGGETTO", "EUR"}}));
    if (caso.prima)
        caso.prima(programma);
    if (caso.prepara) {
        programma.mostra();
        caso.prepara(programma);
        programma.host->errors.clear();
    }
    programma.host->answers.assign(caso.risposte.begin(), caso.risposte.end());
    programma.rispondi(risposta);
    guasti.registra(guasto);
    if (caso.prepara)
        caso.fai(programma);
    else
        programma.apri();
    guasti.ferma();
    return {guasti.traccia(), guasti.madri(), programma.errori()};
}

} // namespace prove
