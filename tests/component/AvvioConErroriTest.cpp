// Whatever the host or the database refuses while the form starts, and whatever the user answers: the form neither
// crashes nor keeps the host from closing it.

#include "component/Programma.h"

#include <gtest/gtest.h>

#include <string>

using contract::RuntimeError;
using prove::Programma;

namespace {

/// Everything a user can press, once.
void premiTutto(Programma& programma) {
    auto& form = programma.form();
    for (const auto* nome : {"CMD_SPOSTASTRU", "CMD_SPOSTAVALID", "CMD_ESPANDICOLLASSAORIG", "CMD_ESPANDICOLLASSADEST",
                             "CMD_PARAMETRI", "CMD_VISTOPSX", "CMD_VISTOPDX"})
        programma.pulsante(nome).click();
    for (const auto* nome : {"TRW_DISTINTEORIG", "TRW_DISTINTEDEST"}) {
        auto& lista = form.control<platform::headless::HeadlessTypeList>(nome);
        lista.clickEntry("P1");
        lista.clickEntry("C20");
    }
    for (const auto* nome : {"TRW_ELEMDISTINTAORIG", "TRW_ELEMDISTINTADEST"}) {
        auto& albero = programma.albero(nome);
        if (albero.columns().empty())
            continue; // the form could not even be set up
        albero.focusNode(albero.firstNode());
        albero.settle();
        albero.pressMouse(contract::MouseButton::right, albero.firstNode(), "RagioneSociale");
        albero.clickLink(albero.firstNode(), "RagioneSociale");
    }
    for (const auto* nome : {"mnuCollegamentoOrig", "mnuCollegamentoDest"}) {
        auto& menu = form.control<platform::headless::HeadlessPopupMenu>(nome);
        for (const auto& voce : menu.items()) {
            menu.showAtMouse();
            menu.choose(voce.name);
        }
    }
    for (const auto* nome : {"MenuCercaOrig", "MenuCercaDest"})
        form.control<platform::headless::HeadlessMenuButton>(nome).choose("Codice");
    form.control<platform::headless::HeadlessWorkflowField>("TXT_QZ02_STATO").leave();
    form.resize(20000, 12000);
    form.activate();
}

class AvvioConErrori : public testing::TestWithParam<int> {};

TEST_P(AvvioConErrori, SurvivesAnyServiceThatFails) {
    for (const auto* operazione : {"ClsGlobal.newLogClass",
                                   "ClsGlobal.connectionService",
                                   "ConnectionService.ConnectionString",
                                   "ClsGlobal.newConnectionProvider",
                                   "ConnectionProvider.newConnection",
                                   "Connection.SetConnectionString",
                                   "Connection.Open",
                                   "ClsGlobal.companyService",
                                   "CompanyService.Company",
                                   "ClsGlobal.newVirtualFrame",
                                   "VirtualFrame.newRecordset",
                                   "VirtualFrame.newFieldList",
                                   "FME_CopiaDistintaOrig.initialise",
                                   "FME_CopiaDistintaDest.initialise",
                                   "ClsGlobal.applyProgramMode",
                                   "Navigator.refreshState",
                                   "ScriptModel.runFormEvent",
                                   "FME_CopiaDistintaOrig.load",
                                   "FME_CopiaDistintaDest.load",
                                   "ClsGlobal.newWorkflowState",
                                   "ClsGlobal.newTheme",
                                   "Theme.color"}) {
        SCOPED_TRACE(operazione);
        Programma programma;
        programma.host->answers.assign(40, GetParam());
        programma.host->journal->failCall(operazione, 1, RuntimeError(429, "Impossibile creare l'oggetto"));
        programma.apri();
        ASSERT_NE(programma.classe->form(), nullptr);
        programma.host->answers.clear();
        premiTutto(programma);
        EXPECT_FALSE(programma.db->InTransaction());
        EXPECT_EQ(programma.classe->CloseForm(), contract::Value(true));
    }
}

TEST_P(AvvioConErrori, SurvivesAnyStatementThatFails) {
    for (int nth = 1; nth <= 30; ++nth) {
        SCOPED_TRACE(nth);
        Programma programma;
        programma.host->answers.assign(40, GetParam());
        programma.db->failNth(nth, {"HY000", 1, "guasto", contract::ErrorCategory::other});
        programma.apri();
        programma.host->answers.clear();
        premiTutto(programma);
        EXPECT_FALSE(programma.db->InTransaction());
        EXPECT_EQ(programma.classe->CloseForm(), contract::Value(true));
    }
}

INSTANTIATE_TEST_SUITE_P(Risposte, AvvioConErrori, testing::Values(3, 4, 5));

TEST(Avvio, SurvivesALostConnection) {
    for (int nth = 1; nth <= 12; ++nth) {
        SCOPED_TRACE(nth);
        Programma programma;
        programma.host->answers.assign(200, 5);
        programma.db->loseConnectionAt(nth);
        programma.apri();
        premiTutto(programma);
        EXPECT_EQ(programma.classe->CloseForm(), contract::Value(true));
    }
}

TEST(Avvio, TriesAgainAtTheNextActivationAfterAnAbort) {
    Programma programma;
    programma.host->journal->failCall("Connection.Open", 1, RuntimeError(RuntimeError::database, "irraggiungibile"));
    programma.apri();
    EXPECT_EQ(programma.errori(), std::vector<std::string>{"Form_Activate"});
    EXPECT_EQ(programma.albero("TRW_ELEMDISTINTAORIG").nodeCount(), 0U);
    programma.form().activate();
    EXPECT_EQ(programma.albero("TRW_ELEMDISTINTAORIG").nodeCount(), 3U);
}

} // namespace
