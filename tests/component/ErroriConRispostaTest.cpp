// What an answer to an error display leaves behind: never what the distinta before had, never a state for another link,
// never something of the host unreleased, and one display for one loss of the connection.

#include "component/Programma.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

using contract::MouseButton;
using contract::RuntimeError;
using contract::Value;
using platform::headless::HeadlessDataFrame;
using platform::headless::HeadlessForm;
using platform::headless::HeadlessPopupMenu;
using platform::headless::HeadlessTypeList;
using platform::headless::HeadlessWorkflowField;
using prove::Programma;
using prove::soloQueste;

namespace {

using Testi = std::vector<std::string>;
constexpr const char* dest = "TRW_ELEMDISTINTADEST";

class ErroriConRisposta : public testing::Test {
protected:
    ErroriConRisposta() {
        programma.tabelle.tipi[0].divisione = "7";
        programma.tabelle.tipi[0].guid = "GUID-10";
        programma.tabelle.tipi[1].divisione = "8";
        programma.tabelle.tipi[1].guid = "GUID-20";
        for (auto& nodo : programma.tabelle.nodi)
            nodo.guid = "G" + std::to_string(nodo.id);
        programma.mostra();
    }
    void scegli(std::string_view chiave) {
        programma.controllo<HeadlessTypeList>("TRW_DISTINTEDEST").clickEntry(chiave);
    }
    void menuDest(std::int64_t nodo, std::string_view voce) {
        auto& albero = programma.albero(dest);
        albero.pressMouse(MouseButton::right, albero.byKey(nodo), "RagioneSociale");
        programma.controllo<HeadlessPopupMenu>("mnuCollegamentoDest").choose(voce);
    }
    void rispondi(int risposta) {
        programma.host->errorAnswer = [risposta] { return risposta; };
    }
    std::map<std::string, std::int64_t>& stati() { return programma.host->workflow->stateOf; }

    Programma programma;
};

TEST_F(ErroriConRisposta, LeavesNoDivisionOfTheDistintaBefore) {
    EXPECT_EQ(programma.valore("DivisioneDest"), Value("7"));
    EXPECT_EQ(programma.valore("GuidDistintaDest"), Value("GUID-10"));
    rispondi(5);
    programma.db->failNth(1, {"HY000", 1, "guasto", contract::ErrorCategory::other});
    scegli("C20");
    EXPECT_EQ(programma.errori(), Testi{"CaricaDistintaDest"});
    EXPECT_EQ(programma.albero(dest).nodeCount(), 2U);
    EXPECT_EQ(programma.valore("DivisioneDest"), Value(""));
    EXPECT_EQ(programma.valore("GuidDistintaDest"), Value(""));
}

TEST_F(ErroriConRisposta, LeavesNoNodesOfTheDistintaBefore) {
    rispondi(5);
    programma.host->journal->failCall("FME_CopiaDistintaDest.load", 1, RuntimeError(5, "x"));
    scegli("C20");
    EXPECT_EQ(programma.albero(dest).nodeCount(), 2U);
    EXPECT_EQ(programma.stato().destinazione.dati, programma.albero(dest).records());
    EXPECT_EQ((*programma.stato().destinazione.dati)["QZ02_ID"].integer(), 11);
}

TEST_F(ErroriConRisposta, EmptiesTheTreeThatCouldNotBeBound) {
    rispondi(5);
    // Rows without the key's column cannot be bound.
    programma.db->answer(" SELECT QZ02_ID,  ", platform::headless::rows({"ALTRO"}, {{1}}));
    scegli("C20");
    EXPECT_EQ(programma.albero(dest).nodeCount(), 0U);
    EXPECT_TRUE(programma.stato().destinazione.vuoto());
}

TEST_F(ErroriConRisposta, KeepsTreeAndRecordSetTogetherWhenTheBindingIsLeft) {
    programma.db->answer(" SELECT QZ02_ID,  ", platform::headless::rows({"ALTRO"}, {{1}}));
    scegli("C20");
    EXPECT_EQ(programma.albero(dest).nodeCount(), 3U);
    EXPECT_EQ(programma.stato().destinazione.dati, programma.albero(dest).records());
}

TEST_F(ErroriConRisposta, BindsTheRecordSetThatWasOpenedWhateverTheFrameGives) {
    scegli("C20");
    auto& lato = programma.stato().destinazione;
    EXPECT_EQ(lato.dati, programma.albero(dest).records());
    EXPECT_EQ(lato.oggettoDati, lato.dati); // this frame gives back what it was handed
}

// Workflow states

TEST_F(ErroriConRisposta, ConfirmsTheStateOfTheEditorsOwnLink) {
    scegli("C20");
    menuDest(12, "mnuStatoLegame");
    // The same workflow serves another link before the choice.
    programma.stato().campoStato->object()->GetDescrizioneStatoFromGUID("G11");
    programma.controllo<HeadlessWorkflowField>("TXT_QZ02_STATO").choose(9);
    EXPECT_EQ(stati().count("G11"), 0U);
    ASSERT_EQ(stati().count("G12"), 1U);
    EXPECT_EQ(stati().at("G12"), 9);
}

TEST_F(ErroriConRisposta, ShowsTheStatesThatAreStoredAfterAPropagationThatWasLeft) {
    programma.tabelle.nodi.push_back({13, 20, 11, 203, "01/01/2020", "31/12/2099", "G13"});
    scegli("C20");
    stati()["G11"] = 5;
    auto& albero = programma.albero(dest);
    albero.draw();
    EXPECT_EQ(albero.value(albero.byKey(12), "Stato"), Value(""));
    programma.host->journal->failCall("WorkflowState.DuplicaStato", 2, RuntimeError(5, "x"));
    menuDest(11, "mnuRilasciaFigli");
    EXPECT_EQ(programma.errori(), Testi{"mnuRilasciaFigli_Click"});
    EXPECT_EQ(albero.value(albero.byKey(12), "Stato"), Value("Attivo"));
    EXPECT_EQ(albero.value(albero.byKey(13), "Stato"), Value(""));
}

TEST_F(ErroriConRisposta, GivesNoDefaultWhereTheStateCouldNotBeRead) {
    scegli("C20");
    stati()["G11"] = 9;
    rispondi(5);
    programma.host->journal->failCall("WorkflowState.GetDescrizioneStatoFromGUID", 1, RuntimeError(5, "x"));
    menuDest(11, "mnuRilasciaFigli");
    EXPECT_EQ(stati().at("G11"), 9);
    EXPECT_EQ(stati().at("G12"), 9);
}

TEST_F(ErroriConRisposta, LocksTheStartWhereTheBonusIsUnknown) {
    scegli("C20");
    auto& albero = programma.albero(dest);
    EXPECT_FALSE(albero.columnLocked(3));
    rispondi(5);
    programma.db->fail("SELECT TOP 1 *", {"HY000", 1, "guasto", contract::ErrorCategory::other});
    albero.focusKey(12);
    EXPECT_EQ(programma.errori(), Testi{"TRW_ELEMDISTINTADEST_OnChangeNode"});
    EXPECT_TRUE(albero.columnLocked(3));
}

// A move that is over is not run again

TEST_F(ErroriConRisposta, DoesNotMoveASecondTimeWhenTheTreesDoNotCome) {
    scegli("C20");
    programma.albero("TRW_ELEMDISTINTAORIG").focusKey(2);
    programma.host->answers = {6};
    bool prima = true;
    programma.host->errorAnswer = [&prima] { return std::exchange(prima, false) ? 4 : 3; };
    programma.host->journal->failCall("FME_CopiaDistintaOrig.load", 1, RuntimeError(5, "x"));
    programma.pulsante("CMD_SPOSTASTRU").click();
    EXPECT_EQ(programma.db->statements("CommitTrans").size(), 1U);
    EXPECT_EQ(programma.errori(), Testi{"CaricaDistintaOrig"});
}

// One loss, one display

class UnaPerdita : public ErroriConRisposta, public testing::WithParamInterface<int> {
protected:
    UnaPerdita() {
        scegli("C20");
        programma.albero("TRW_ELEMDISTINTAORIG").focusKey(2);
        programma.albero("TRW_ELEMDISTINTAORIG").settle();
        rispondi(GetParam());
        programma.host->answers = {6};
        programma.db->loseConnectionAt(1);
    }
};

TEST_P(UnaPerdita, IsShownOnceByAMove) {
    programma.pulsante("CMD_SPOSTASTRU").click();
    EXPECT_EQ(programma.errori(), Testi{"CMD_SPOSTASTRU_ButtonClick"});
}

TEST_P(UnaPerdita, IsShownOnceByAMoveOfTheFocus) {
    auto& albero = programma.albero(dest);
    albero.focusKey(12);
    albero.settle();
    EXPECT_EQ(programma.errori(), Testi{"CaricaParametri"});
}

TEST_P(UnaPerdita, IsShownOnceByAChoiceOfADistinta) {
    scegli("C10");
    EXPECT_EQ(programma.errori(), Testi{"CaricaDistintaDest"});
}

TEST_P(UnaPerdita, IsShownOnceByTheParameters) {
    programma.pulsante("CMD_PARAMETRI").click();
    EXPECT_EQ(programma.errori(), Testi{"Form_Load"});
}

TEST_P(UnaPerdita, IsShownOnceByAnEdit) {
    auto& albero = programma.albero(dest);
    albero.editCell(albero.byKey(11), "trQZ02_DATAINIZIOVAL", "01/02/2021");
    EXPECT_EQ(programma.errori(), Testi{"TRW_ELEMDISTINTADEST_OnEdited"});
}

TEST_P(UnaPerdita, IsShownAgainByTheNextCommand) {
    scegli("C10");
    scegli("C20");
    EXPECT_EQ(programma.errori(), (Testi{"CaricaDistintaDest", "CaricaDistintaDest"}));
}

INSTANTIATE_TEST_SUITE_P(Risposte, UnaPerdita, testing::Values(3, 5, 1));

TEST_F(ErroriConRisposta, ShowsALossAgainWhenTryingAgainDoesNotHelp) {
    int mostrati = 0;
    programma.host->errorAnswer = [&] { return ++mostrati < 3 ? 4 : 3; };
    programma.db->loseConnectionAt(1);
    scegli("C20");
    EXPECT_EQ(mostrati, 3);
}

TEST_F(ErroriConRisposta, ShowsEveryOtherErrorOfACommand) {
    rispondi(5);
    programma.db->fail(" SELECT ", {"HY000", 1, "guasto", contract::ErrorCategory::other});
    scegli("C20");
    EXPECT_GT(programma.errori().size(), 1U);
}

// Release

class RilascioInterrotto : public testing::TestWithParam<const char*> {};

TEST_P(RilascioInterrotto, ReleasesTheRestInItsOrderOnce) {
    Programma programma;
    programma.mostra();
    programma.host->journal->failCall(GetParam(), 1, RuntimeError(5, "x"));
    EXPECT_EQ(programma.classe->CloseForm(), Value(true));
    EXPECT_EQ(programma.errori(), Testi{"Form_UnLoad"});
    const auto righe = programma.host->journal->take();
    const Testi attese{"~WorkflowState",
                       "Navigator.releaseObjectModels()",
                       "VirtualFrameHandler.close(1)",
                       "~VirtualFrameHandler 1",
                       "VirtualFrameHandler.close(2)",
                       "~VirtualFrameHandler 2",
                       "~VirtualFrame",
                       "Connection.Close()",
                       "~ConnectionProvider",
                       "~LogClass"};
    EXPECT_EQ(soloQueste(righe, attese), attese);
    EXPECT_EQ(programma.stato().origine.albero->records(), nullptr);
    EXPECT_EQ(programma.stato().destinazione.albero->records(), nullptr);
    EXPECT_TRUE(programma.stato().origine.vuoto() && programma.stato().destinazione.vuoto());
    EXPECT_FALSE(programma.db->IsOpen());
    EXPECT_EQ(programma.classe->form()->ActiveDll(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(Form_UnLoad, RilascioInterrotto,
                         testing::Values("Navigator.releaseObjectModels", "VirtualFrameHandler.close",
                                         "FME_CopiaDistintaOrig.close", "FME_CopiaDistintaDest.close"));

TEST(RilascioInterrotto, AsksNothingMoreWhenSeveralFail) {
    Programma programma;
    programma.mostra();
    programma.host->journal->failCall("VirtualFrameHandler.close", 1, RuntimeError(5, "x"));
    programma.host->journal->failCall("VirtualFrameHandler.close", 2, RuntimeError(5, "x"));
    EXPECT_EQ(programma.classe->CloseForm(), Value(true));
    EXPECT_EQ(programma.errori(), Testi{"Form_UnLoad"});
    EXPECT_EQ(programma.host->journal->count("~VirtualFrameHandler"), 2U);
    EXPECT_EQ(programma.host->journal->count("VirtualFrameHandler.close("), 2U);
}

} // namespace
