// Asking whether the form may close, its release, and its events towards scripts.

#include "component/Programma.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using contract::Value;
using prove::Programma;
using prove::soloQueste;

namespace {

using Testi = std::vector<std::string>;

TEST(FormQueryUnload, AsksTheFrameThenTheScripts) {
    Programma programma;
    programma.mostra();
    programma.classe->CloseForm();
    const auto righe = programma.host->journal->take();
    EXPECT_EQ((Testi{righe.begin(), righe.begin() + 5}),
              (Testi{"ActiveFrame.Status()", "Navigator.setStatus(0)", "VirtualFrameHandler.closeQuery(2, true)",
                     "ScriptModel.runFormEvent(tsClose)", "ScriptModel.close()"}));
}

TEST(FormQueryUnload, DoesNotAskTheScriptsWhenTheFrameRefuses) {
    Programma programma;
    programma.mostra();
    programma.host->frameRefusesClose = true;
    programma.classe->CloseForm();
    EXPECT_EQ(programma.host->journal->take(),
              (Testi{"ActiveFrame.Status()", "Navigator.setStatus(0)", "VirtualFrameHandler.closeQuery(2, true)"}));
}

TEST(FormUnLoad, ReleasesInOrder) {
    Programma programma;
    programma.mostra();
    programma.classe->CloseForm();
    const auto righe = programma.host->journal->take();
    const Testi attese{"~WorkflowState",
                       "Navigator.releaseObjectModels()",
                       "VirtualFrameHandler.close(1)",
                       "~VirtualFrameHandler 1",
                       "VirtualFrameHandler.close(2)",
                       "~VirtualFrameHandler 2",
                       "~VirtualFrame",
                       "Connection.Close()",
                       "~LogClass"};
    EXPECT_EQ(soloQueste(righe, attese), attese);
    EXPECT_EQ(righe.back(), "~LogClass");
    EXPECT_FALSE(programma.db->IsOpen());
}

TEST(FormUnLoad, SendsNoStatementAnyMore) {
    Programma programma;
    programma.mostra();
    programma.classe->CloseForm();
    EXPECT_TRUE(programma.db->take().empty());
    EXPECT_TRUE(programma.host->errors.empty());
}

TEST(FormUnLoad, GoesOnReleasingWhenAStepFailsAndIsIgnored) {
    Programma programma;
    programma.mostra();
    programma.host->journal->failCall("Navigator.releaseObjectModels", 1, contract::RuntimeError(5, "x"));
    programma.host->answers = {5};
    EXPECT_EQ(programma.classe->CloseForm(), Value(true));
    EXPECT_EQ(programma.errori(), Testi{"Form_UnLoad"});
    EXPECT_FALSE(programma.db->IsOpen());
}

TEST(FormUnLoad, LeavesTheHostFreeEvenWhenAStepFails) {
    Programma programma;
    programma.mostra();
    programma.host->journal->failCall("Navigator.releaseObjectModels", 1, contract::RuntimeError(5, "x"));
    EXPECT_EQ(programma.classe->CloseForm(), Value(true));
}

TEST(Form, CanBeShownAgainAfterAClose) {
    Programma programma;
    programma.mostra();
    programma.classe->CloseForm();
    programma.apri();
    EXPECT_TRUE(programma.form().isOpen());
    EXPECT_EQ(programma.albero("TRW_ELEMDISTINTAORIG").nodeCount(), 3U);
}

TEST(EsciForm, SaysWhyAndUnloads) {
    Programma programma;
    programma.mostra();
    programma.classe->companyChanged();
    EXPECT_EQ(programma.messaggi(),
              Testi{"Cambiando l'azienda di lavoro è necessario uscire e rientrare nel programma."});
    EXPECT_EQ(programma.host->messages[0].style, 48);
    EXPECT_EQ(programma.host->messages[0].title, "Manutenzione distinte");
    EXPECT_TRUE(programma.form().isGone());
}

TEST(ChangeStatus, TellsTheScriptsWhetherTheFrameMayClose) {
    Programma programma;
    programma.mostra();
    auto& frame = programma.controllo<platform::headless::HeadlessDataFrame>("FME_CopiaDistintaDest");
    frame.enterStatus(0);
    EXPECT_EQ(programma.host->scriptCanClose, true);
    programma.host->frameRefusesClose = true;
    frame.enterStatus(0);
    EXPECT_EQ(programma.host->scriptCanClose, false);
    EXPECT_EQ(programma.host->journal->count("VirtualFrameHandler.closeQuery(2, true)"), 2U);
    frame.enterStatus(1);
    frame.enterStatus(2);
    EXPECT_EQ(programma.host->journal->count("VirtualFrameHandler.closeQuery(2, true)"), 2U);
}

TEST(ExecuteFormEvent, KnowsTwoEvents) {
    Programma programma;
    programma.mostra();
    programma.classe->form()->ExecuteFormEvent("tsAltro");
    EXPECT_TRUE(programma.host->journal->take().empty());
    programma.classe->form()->ExecuteFormEvent("tsClose");
    EXPECT_EQ(programma.host->journal->take(), Testi{"ScriptModel.runFormEvent(tsClose)"});
    programma.classe->form()->ExecuteFormEvent("tsOpen");
    EXPECT_EQ(programma.host->journal->take(), (Testi{"Navigator.refreshState()", "ScriptModel.runFormEvent(tsOpen)"}));
}

TEST(EsciForm, SpeaksBeforeItUnloadsAndStaysWhenTheCloseIsRefused) {
    Programma programma;
    programma.mostra();
    programma.host->frameRefusesClose = true;
    programma.classe->companyChanged();
    EXPECT_FALSE(programma.form().isGone());
    const auto& diario = *programma.host->journal;
    EXPECT_LT(diario.first("LogClass.ShowMessage("), diario.first("VirtualFrameHandler.closeQuery("));
    EXPECT_EQ(programma.messaggi().size(), 1U);
}

TEST(FormUnLoad, LeavesNoInterfaceBehind) {
    Programma programma;
    programma.mostra();
    programma.classe->CloseForm();
    EXPECT_EQ(programma.classe->form()->ActiveDll(), nullptr);
    EXPECT_EQ(programma.classe->form()->classeLog(), nullptr);
    EXPECT_EQ(programma.classe->form()->finestra(), nullptr);
}

TEST(FormQueryUnload, UnloadsWithoutAScriptModel) {
    Programma programma;
    programma.mostra();
    programma.host->hasScriptModel = false;
    programma.host->scriptRefusesClose = true;
    EXPECT_EQ(programma.classe->CloseForm(), Value(true));
}

TEST(Form, ReportsItsLastProceduresUnderTheirNames) {
    Programma programma;
    programma.mostra();
    auto& diario = *programma.host->journal;
    diario.failCall("VirtualFrameHandler.closeQuery", 1, contract::RuntimeError(5, "x"));
    programma.controllo<platform::headless::HeadlessDataFrame>("FME_CopiaDistintaDest").enterStatus(0);
    diario.failCall("LogClass.ShowMessage", 1, contract::RuntimeError(5, "x"));
    programma.host->frameRefusesClose = true;
    programma.classe->companyChanged();
    diario.failCall("VirtualFrameHandler.closeQuery", 1, contract::RuntimeError(5, "x"));
    programma.classe->CloseForm();
    EXPECT_EQ(programma.errori(), (Testi{"FME_CopiaDistintaDest_ChangeStatus", "EsciForm", "Form_QueryUnload"}));
}

} // namespace
