// The start-up at the first activation, and what every later activation does.

#include "component/Programma.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

using platform::headless::HeadlessDataFrame;
using platform::headless::HeadlessMenuButton;
using platform::headless::HeadlessResizeControl;
using prove::Programma;
using prove::soloQueste;

namespace {

using Testi = std::vector<std::string>;

TEST(FormActivate, RegistersTheControlsForResizingInOrder) {
    Programma programma;
    programma.apri();
    const std::vector<std::pair<std::string, int>> attese{
        {"TRW_DISTINTEORIG", 7},        {"TRW_DISTINTEDEST", 7},
        {"TRW_ELEMDISTINTAORIG", 15},   {"TRW_ELEMDISTINTADEST", 15},
        {"GRD_DETTDISTINTAORIG", 14},   {"GRD_DETTDISTINTADEST", 14},
        {"FME_INTESTAZIONEORIGINE", 7}, {"FME_INTESTAZIONEDESTINAZIONE", 7},
        {"SPLITTERVerticale", 15},      {"SPLITTEROrizzOrig", 11},
        {"SPLITTEROrizzDest", 15}};
    EXPECT_EQ(programma.controllo<HeadlessResizeControl>("KVT_RESIZEFORM").registrations(), attese);
}

TEST(FormActivate, StartsUpInOrder) {
    Programma programma;
    programma.apri();
    const Testi passi{"ActiveFrame.Status()",
                      "Navigator.setStatus(0)",
                      "ConnectionService.ConnectionString()",
                      "ClsGlobal.newConnectionProvider()",
                      "ConnectionProvider.newConnection()",
                      "Connection.SetConnectionString(scripted)",
                      "Connection.Open()",
                      "CompanyService.Company()",
                      "ClsGlobal.newVirtualFrame()",
                      "VirtualFrame.newRecordset()",
                      "VirtualFrame.newFieldList()",
                      "FME_CopiaDistintaOrig.initialise(",
                      "FME_CopiaDistintaDest.initialise(",
                      "ClsGlobal.applyProgramMode(FRMQZ_COPIADISTINTA, 0)",
                      "Navigator.refreshState()",
                      "ScriptModel.runFormEvent(tsOpen)",
                      "FME_CopiaDistintaOrig.load(",
                      "FME_CopiaDistintaDest.load(",
                      "ClsGlobal.newWorkflowState()",
                      "ClsGlobal.newTheme()"};
    Testi attesi = passi;
    attesi.insert(attesi.begin() + 11, {"VirtualFrame.newFieldList()", "VirtualFrame.newRecordset()"});
    EXPECT_EQ(soloQueste(programma.host->journal->lines(), passi), attesi);
}

TEST(FormActivate, SendsItsFirstStatementsInOrder) {
    Programma programma;
    programma.apri();
    const auto istruzioni = programma.db->take();
    ASSERT_GE(istruzioni.size(), 4U);
    EXPECT_EQ(istruzioni[0], "SELECT * FROM QZ02_DISTINTA WHERE 1=0 ");
    EXPECT_TRUE(istruzioni[1].ends_with("QZ01_INDTIPOSOGG = 0 "));
    EXPECT_TRUE(istruzioni[2].ends_with("QZ01_INDTIPOSOGG = 1 "));
    EXPECT_TRUE(istruzioni[3].starts_with(" SELECT QZ01_IDDIV_CO1A FROM"));
    EXPECT_EQ(istruzioni.back().substr(0, 40), " SELECT   QZ03_ID_WF02 AS StatoLegame,  ");
}

TEST(FormActivate, HandsItsConnectionToTheHost) {
    Programma programma;
    programma.apri();
    EXPECT_EQ(programma.interfaccia().Connection(), programma.db);
    EXPECT_TRUE(programma.db->IsOpen());
    EXPECT_EQ(programma.db->ConnectionString(), "scripted");
}

TEST(FormActivate, InitialisesBothFramesWithTheSharedEmptyRecordSet) {
    Programma programma;
    programma.apri();
    const std::string argomenti = "(host, connection, records, SELECT * FROM QZ02_DISTINTA WHERE 1=0 , QZ02_ID)";
    EXPECT_EQ(programma.host->journal->count("FME_CopiaDistintaOrig.initialise" + argomenti), 1U);
    EXPECT_EQ(programma.host->journal->count("FME_CopiaDistintaDest.initialise" + argomenti), 1U);
    EXPECT_EQ(programma.db->statements("SELECT * FROM QZ02_DISTINTA WHERE 1=0 ").size(), 1U);
}

TEST(FormActivate, AddsTheSearchItemsToBothMenus) {
    Programma programma;
    programma.apri();
    for (const auto* nome : {"MenuCercaOrig", "MenuCercaDest"}) {
        auto& menu = programma.controllo<HeadlessMenuButton>(nome);
        EXPECT_EQ(menu.itemKeys(), (Testi{"RagSoc", "Codice"}));
        EXPECT_EQ(menu.itemCaption("RagSoc"), "Rag. Sociale");
        EXPECT_EQ(menu.itemCaption("Codice"), "Codice");
    }
}

TEST(FormActivate, StartsUpOnce) {
    Programma programma;
    programma.mostra();
    programma.host->frameStatus = 2;
    programma.form().activate();
    EXPECT_EQ(programma.host->journal->take(), (Testi{"ActiveFrame.Status()", "Navigator.setStatus(2)"}));
    EXPECT_TRUE(programma.db->take().empty());
}

TEST(FormActivate, PassesNoStatusWithoutAFrame) {
    Programma programma;
    programma.interfaccia().ActiveFrame(nullptr);
    programma.mostra();
    programma.form().activate();
    EXPECT_TRUE(programma.host->journal->take().empty());
    EXPECT_TRUE(programma.host->errors.empty());
}

TEST(FormActivate, IgnoresErrorsOfTheRefresh) {
    Programma programma;
    programma.mostra();
    programma.host->journal->failCall("Navigator.setStatus", 1, contract::RuntimeError(5, "x"));
    programma.form().activate();
    EXPECT_TRUE(programma.host->errors.empty());
}

TEST(FormActivate, RunsNoScriptEventWithoutAScriptModel) {
    Programma programma;
    programma.host->hasScriptModel = false;
    programma.apri();
    EXPECT_EQ(programma.host->journal->count("Navigator.refreshState"), 1U);
    EXPECT_EQ(programma.host->journal->count("ScriptModel."), 0U);
    EXPECT_TRUE(programma.host->errors.empty());
}

TEST(FormActivate, FiltersByTheCompanyItReadOnce) {
    Programma programma;
    programma.host->company = 42;
    programma.apri();
    programma.host->company = 43;
    EXPECT_EQ(programma.db->statements("SELECT *  FROM QZ01_TIPODISTINTA WHERE QZ01_DITTA_CG18 = 42 ").size(), 2U);
}

TEST(FormActivate, SharesOneEmptyRecordSetBetweenTheSides) {
    Programma programma;
    programma.tabelle.tipi.clear(); // nothing takes the record set's place
    programma.apri();
    const auto orig = programma.controllo<HeadlessDataFrame>("FME_CopiaDistintaOrig").records();
    const auto dest = programma.controllo<HeadlessDataFrame>("FME_CopiaDistintaDest").records();
    ASSERT_NE(orig, nullptr);
    EXPECT_EQ(orig, dest);
    EXPECT_EQ(orig->Source().text(), "SELECT * FROM QZ02_DISTINTA WHERE 1=0 ");
    EXPECT_EQ(orig->GetMarshalOptions(), contract::MarshalOptions::modifiedOnly);
    EXPECT_TRUE(orig->IsOpen());
    EXPECT_TRUE(orig->Empty());
    EXPECT_EQ(programma.controllo<HeadlessDataFrame>("FME_CopiaDistintaOrig").connection(), programma.db);
}

TEST(FormActivate, AppliesTheHostsProgramMode) {
    Programma programma;
    programma.interfaccia().ProgramMode(3);
    programma.apri();
    EXPECT_EQ(programma.host->journal->count("ClsGlobal.applyProgramMode(FRMQZ_COPIADISTINTA, 3)"), 1U);
}

TEST(FormActivate, PassesTheStatusAlsoWithoutAGlobalClass) {
    Programma programma;
    programma.mostra();
    programma.interfaccia().ClsGlobal(nullptr);
    programma.host->frameStatus = 1;
    programma.form().activate();
    EXPECT_EQ(programma.host->journal->take(), (Testi{"~ClsGlobal", "ActiveFrame.Status()", "Navigator.setStatus(1)"}));
}

// What stands after a step that failed and was left shows the order of the steps.

std::size_t registrati(Programma& programma) {
    return programma.controllo<HeadlessResizeControl>("KVT_RESIZEFORM").registrations().size();
}
std::size_t vociDiRicerca(Programma& programma) {
    return programma.controllo<HeadlessMenuButton>("MenuCercaOrig").itemKeys().size() +
           programma.controllo<HeadlessMenuButton>("MenuCercaDest").itemKeys().size();
}
constexpr const char* lettura = " SELECT   QZ03_ID_WF02 AS StatoLegame, ";

TEST(FormActivate, HandsTheConnectionOverBeforeItReadsTheCompany) {
    Programma programma;
    programma.host->journal->failCall("CompanyService.Company", 1, contract::RuntimeError(5, "x"));
    programma.apri();
    EXPECT_EQ(programma.errori(), Testi{"Form_Activate"});
    EXPECT_EQ(programma.interfaccia().Connection(), programma.db);
    EXPECT_EQ(registrati(programma), 0U);
    EXPECT_EQ(programma.host->journal->count("ClsGlobal.newVirtualFrame"), 0U);
}

TEST(FormActivate, SetsTheResizingAndTheFramesUpBeforeTheProgramMode) {
    Programma programma;
    programma.host->journal->failCall("ClsGlobal.applyProgramMode", 1, contract::RuntimeError(5, "x"));
    programma.apri();
    EXPECT_EQ(registrati(programma), 11U);
    EXPECT_EQ(programma.host->journal->count("FME_CopiaDistintaDest.initialise"), 1U);
    EXPECT_EQ(programma.host->journal->count("Navigator.refreshState"), 0U);
    EXPECT_EQ(programma.db->statements("SELECT *  FROM QZ01_TIPODISTINTA").size(), 0U);
    EXPECT_EQ(vociDiRicerca(programma), 0U);
}

TEST(FormActivate, FillsTheMenusBeforeTheWorkflowAndReadsTheParametersAfterIt) {
    Programma programma;
    programma.host->journal->failCall("ClsGlobal.newWorkflowState", 1, contract::RuntimeError(5, "x"));
    programma.apri();
    EXPECT_EQ(programma.albero("TRW_ELEMDISTINTADEST").nodeCount(), 3U);
    EXPECT_EQ(vociDiRicerca(programma), 4U);
    EXPECT_EQ(programma.host->journal->count("ClsGlobal.newTheme"), 0U);
    // The start-up counts as done: another activation adds nothing.
    const auto letture = programma.db->operations();
    programma.form().activate();
    EXPECT_EQ(programma.db->operations(), letture);
    EXPECT_EQ(vociDiRicerca(programma), 4U);
    EXPECT_EQ(programma.errori(), Testi{"Form_Activate"});
}

TEST(FormActivate, ReadsTheParametersBeforeTheColours) {
    Programma programma;
    std::vector<std::size_t> temi; // themes made when the parameters are read
    programma.db->answer(lettura, [&](const std::string&) {
        temi.push_back(programma.host->journal->count("ClsGlobal.newTheme"));
        return platform::headless::ScriptedRows{};
    });
    programma.apri();
    ASSERT_FALSE(temi.empty());
    EXPECT_EQ(temi.back(), 0U);
    EXPECT_EQ(programma.host->journal->count("ClsGlobal.newTheme"), 1U);
    EXPECT_EQ(programma.db->statements().back().substr(0, 39), lettura);
}

TEST(FormActivate, ReportsEachProcedureUnderItsName) {
    const std::vector<std::pair<const char*, const char*>> casi{
        {"ConnectionProvider.newConnection", "Form_Activate"},
        {"VirtualFrame.newFieldList", "ImpostaVirtualFrame"},
        {"FME_CopiaDistintaDest.initialise", "ImpostaVirtualFrame"},
        {"Navigator.refreshState", "ExecuteFormEvent"},
        {"ScriptModel.runFormEvent", "ExecuteFormEvent"},
        {"Theme.color", "ColoriSTD"}};
    for (const auto& [operazione, procedura] : casi) {
        Programma programma;
        programma.host->journal->failCall(operazione, 1, contract::RuntimeError(5, "x"));
        programma.apri();
        EXPECT_EQ(programma.errori(), Testi{procedura}) << operazione;
    }
}

} // namespace
