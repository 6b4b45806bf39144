// What depends on what: the calls that do not come, or come instead, when another one failed and was passed over.

#include "component/Passi.h"

#include <algorithm>
#include <string_view>

namespace prove {

namespace {

struct Dipendenza {
    std::string_view fallita; ///< beginning of the call that failed
    std::string_view dipende; ///< piece of the calls that depend on it; empty: all
};

constexpr Dipendenza mancano[] = {
    // Nothing is chosen, so nothing is loaded and captioned.
    {"TRW_DISTINTEORIG.selected", ""},
    {"TRW_DISTINTEDEST.selected", ""},
    // A record set that could not be opened is empty, and an empty distinta ends the loading.
    {" SELECT QZ02_ID,  ", ""},
    {" SELECT   RTrim(CAST(CG44_CLIFOR", ".setRowHeight"},
    {" SELECT   RTrim(CAST(CG44_CLIFOR", ".setCell"},
    // A colour that could not be read is not given.
    {"Theme.color", "Theme.color"},
    {"Theme.color", ".set"},
    // A lock or a suspension that did not come about is not taken back.
    {"FRMQZ_COPIADISTINTA.lockUpdate(true)", "lockUpdate(false)"},
    {"TRW_ELEMDISTINTAORIG.beginUpdate", "endUpdate"},
    {"TRW_ELEMDISTINTADEST.beginUpdate", "endUpdate"},
    // An object that is not there is asked for nothing.
    {"ClsGlobal.connectionService()", "ConnectionService."},
    {"ClsGlobal.companyService()", "CompanyService."},
    {"ClsGlobal.scriptService()", "ScriptService."},
    {"ClsGlobal.newVirtualFrame()", "VirtualFrame."},
    {"ClsGlobal.newVirtualFrame()", "WHERE 1=0"},
    {"VirtualFrame.newRecordset()", "WHERE 1=0"},
    {"ClsGlobal.newParameterObject()", "openProgram"},
    {"ClsGlobal.newAccountLink()", "AccountLink."},
    {"ClsGlobal.newTheme()", ""},
    // Nothing to look for, no cell under the mouse, no state chosen.
    {"txtCerca", ".setFocused("},
    {"txtCerca", ".makeVisible("},
    {"txtCerca", "SELECT"},
    {"txtCerca", "GRD_DETT"},
    {"txtCerca", "TXT_QZ02_ID."},
    {"txtCerca", ".setColumnLocked"},
    {"txtCerca", "StatusBar."},
    {"TRW_ELEMDISTINTAORIG.hitTest", ""},
    {"TRW_ELEMDISTINTADEST.hitTest", ""},
    {"TXT_QZ02_STATO.stateChosen", ""},
    // An editor without its link does not open; a state that could not be read is not taken for a missing one.
    {"TXT_QZ02_STATO.setValue", "TXT_QZ02_STATO."},
    {"WorkflowState.GetDescrizioneStatoFromGUID", "WorkflowState.GetDefaultFlussoStato"},
    {"WorkflowState.GetDescrizioneStatoFromGUID", "WorkflowState.ConfermaStato"},
    // A date that could not be read is a missing one; a pair that was not checked is not written.
    {"TRW_ELEMDISTINTADEST.value", ""},
    {" SELECT * FROM QZ02_DISTINTA  WHERE", ""},
    {" SELECT  CG44_CLIFOR AS Anagrafica", ""},
    {"SELECT TOP 1 *", "SELECT"},
    {"BeginTrans", "LogClass.ShowMessage"},
    {"RollbackTrans", "LogClass.ShowMessage"},
    // A combo that stands on no item when the record is shown raises no change.
    {"FME_Parametri.setDefault(QZ03_TIPOCARICODATA)", "TXT_QZ03_"},
    {"FME_Parametri.setDefault(QZ03_TIPOCARICODATA)", "GRIDNAV_PARAMETRI.setAllow"},
    // A combo without its items changes nothing when the user picks one.
    {"CMB_QZ03_TIPOCARICODATA.addItem", "TXT_QZ03_"},
    {"CMB_QZ03_TIPOCARICODATA.addItem", "LogClass.ShowMessage"},
    // A field that is not bound is not filled when the record is shown.
    {"FME_Parametri.bindField", "TXT_"},
    {"FME_Parametri.setDefault", "TXT_QZ03_"},
    {"FME_Parametri.bindField", "WF02_STATI"},
    // No date was given.
    {"FRMQZ_DATAFINELEGAME.", ""},
    {"TXT_DATACHIUSURALEGAME.", ""},
    // A move that failed gives the trees again without scrolling them back, and has nothing to tell.
    {"", ".setTopRow"},
    {"", "StatusBar.setText(Spostat"},
    // Dates that could not be read are missing ones, which the form lets pass.
    {"TXT_QZ03_DATAINIZIOVAL.text", "LogClass.ShowMessage"},
    {"TXT_QZ03_DATAINIZIOVAL.text", "TXT_QZ03_DATAINIZIOVAL.setFocus"},
    {"TXT_QZ03_DATAFINEVAL.text", "LogClass.ShowMessage"},
    {"TXT_QZ03_DATAFINEVAL.text", "TXT_QZ03_DATAINIZIOVAL.setFocus"},
    // No state was chosen in the list.
    {"ClsGlobal.IDLookup", "WF02"},
    // Nobody said yes.
    {"LogClass.ShowMessage(Manutenzione distinte, Spostare", ""},
};

// Without connection or company no statement runs, and without their entries the lists have nothing to choose, so that
// other trees are loaded or none.
constexpr std::string_view senzaDati[] = {"ClsGlobal.newConnectionProvider()",
                                          "ConnectionProvider.newConnection()",
                                          "Connection.Open()",
                                          "ClsGlobal.companyService()",
                                          "CompanyService.Company()",
                                          "TRW_DISTINTEORIG.add",
                                          "TRW_DISTINTEDEST.add",
                                          "TRW_DISTINTEORIG.select(",
                                          "TRW_DISTINTEDEST.select(",
                                          "SELECT *  FROM QZ01_TIPODISTINTA"};
constexpr std::string_view dati[] = {"SELECT",    "ConnectionProvider.", "Connection.", "FME_CopiaDistinta", "TRW_",
                                     "GRD_",      "TXT_QZ02_ID.",        "CMD_ESPANDI", "StatusBar.",        "lblDesc",
                                     "lockUpdate"};

constexpr Dipendenza vengono[] = {
    {"FRMQZ_DATAFINELEGAME.", "ShowMessage"},
    {"TXT_DATACHIUSURALEGAME.", "ShowMessage"},
    // The tree of a distinta that could not be read or bound is emptied.
    {" SELECT QZ02_ID,  ", "clear"},
    {" SELECT QZ02_ID,  ", "unbind"},
    {" SELECT QZ02_ID,  ", "lockUpdate"},
    {" SELECT QZ02_ID,  ", "StatusBar"},
    {"TRW_ELEMDISTINTAORIG.bind", ""},
    {"TRW_ELEMDISTINTADEST.bind", ""},
    {"TRW_ELEMDISTINTADEST.clearNodes", ""},
    // What was not accepted is put back.
    {"TRW_ELEMDISTINTADEST.value", "setValue"},
    {"TRW_ELEMDISTINTADEST.value", "ShowMessage"},
    {"BeginTrans", "setValue"},
    {" SELECT * FROM QZ02_DISTINTA  WHERE", "setValue"},
    {" SELECT  CG44_CLIFOR AS Anagrafica", "setValue"},
    {"SELECT TOP 1 *", "setValue"},
    {"UserService.", "setValue"},
    {"UPDATE QZ02_DISTINTA  SET QZ02_DATAINIZIOVAL", "setValue"},
    {"CommitTrans", "setValue"},
};

template <std::size_t numero>
bool inTabella(const Dipendenza (&tabella)[numero], const std::string& fallita, const std::string& chiamata) {
    return std::any_of(std::begin(tabella), std::end(tabella), [&](const Dipendenza& riga) {
        return fallita.starts_with(riga.fallita) && chiamata.find(riga.dipende) != std::string::npos;
    });
}

bool riguardaDati(const std::string& fallita, const std::string& chiamata) {
    return std::any_of(std::begin(senzaDati), std::end(senzaDati),
                       [&](std::string_view inizio) { return fallita.starts_with(inizio); }) &&
           std::any_of(std::begin(dati), std::end(dati),
                       [&](std::string_view parte) { return chiamata.find(parte) != std::string::npos; });
}

} // namespace

bool puoMancare(const std::string& fallita, const std::string& chiamata) {
    return inTabella(mancano, fallita, chiamata) || riguardaDati(fallita, chiamata);
}

bool puoVenire(const std::string& fallita, const std::string& chiamata) {
    return inTabella(vengono, fallita, chiamata) || riguardaDati(fallita, chiamata);
}

bool rimediaSempre(const std::string& procedura) {
    return procedura == "Form_UnLoad" || procedura == "TRW_ELEMDISTINTADEST_OnEdited" ||
           procedura == "mnuRilasciaFigli_Click" || procedura.starts_with("CMD_SPOSTA");
}

bool chiamataPiuVolte(const std::string& procedura) {
    return procedura == "Ridisponi" || procedura == "CaricaParametri" || procedura == "CaricaDatiAnagrafici" ||
           procedura == "Form_Load" || procedura == "SvuotaFlex" || procedura == "descriviSpostamento";
}

std::string nomiDelleProcedure() {
    return "AttivaFrameworkParametri\nCMB_QZ03_TIPOCARICODATA_Change\nCMD_ANNULLA_ButtonClick\n"
           "CMD_ESEGUI_ButtonClick\nCMD_ESPANDICOLLASSADEST_ButtonClick\nCMD_ESPANDICOLLASSAORIG_ButtonClick\n"
           "CMD_PARAMETRI_ButtonClick\nCMD_SPOSTASTRU_ButtonClick\nCMD_SPOSTAVALID_ButtonClick\n"
           "CaricaDistintaDest\nCaricaDistintaOrig\nCaricaParametri\nCercaNellaDistinta\nCollegaAnag\nColoriSTD\n"
           "EsciForm\nEseguiSpostamento\nExecuteFormEvent\nFME_CopiaDistintaDest_ChangeStatus\n"
           "FME_Parametri_BeforeUpdate\nFME_parametri_ChangeStatus\nForm_Activate\nForm_Load\n"
           "Form_QueryUnload\nForm_UnLoad\nForm_Unload\nImpostaVirtualFrame\nInizializza Distinte\n"
           "KVT_RESIZEFORM_Setup\nMDIActiveX1_FormLoad\nMenuCercaDest_MenuClick\nMenuCercaOrig_MenuClick\n"
           "NascondiDettagli\nNascondiSelezioneDistinta\nPropagaFigli\nRichiamaSchedaClienti\n"
           "RichiamaSchedaFornitori\nRidisponi\nSvuotaFlex\nTRW_DISTINTEDEST_Click\nTRW_DISTINTEORIG_Click\n"
           "TRW_ELEMDISTINTADEST_OnChangeNode\nTRW_ELEMDISTINTADEST_OnChangeNodeEx\n"
           "TRW_ELEMDISTINTADEST_OnChangedColumn\nTRW_ELEMDISTINTADEST_OnEdited\n"
           "TRW_ELEMDISTINTADEST_OnMouseDown\nTRW_ELEMDISTINTAORIG_OnMouseDown\nTXT_DATACHIUSURALEGAME_Change\n"
           "TXT_QZ02_STATO_AfterItem\n"
           "VisualizzaDettagli\nVisualizzaSelezioneDistinta\ndecodificaStato\ndescriviSpostamento\nlkp_Stati\n"
           "mnuRilasciaFigli_Click\nmnuStatoLegame_Click\ntxtCercaDest_KeyPress\ntxtCercaOrig_KeyPress\n";
}

} // namespace prove
