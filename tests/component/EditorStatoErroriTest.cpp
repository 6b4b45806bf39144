// What becomes of an error while the state editor goes, or follows its cell, and while a locked cell says why.

#include "component/Guasti.h"
#include "platform/headless/HeadlessTree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

using contract::MouseButton;
using platform::headless::HeadlessTree;
using platform::headless::HeadlessWorkflowField;
using prove::Guasti;
using prove::ProgrammaConGuasti;
using Testi = std::vector<std::string>;

namespace {

/// The editor open over the third of thirty nodes at the top level.
class EditorStatoConErrori : public testing::Test {
protected:
    EditorStatoConErrori() {
        programma.tabelle.tipi = {{10, "A", "X"}, {20, "B", "Y"}};
        programma.tabelle.nodi = {{1, 10, {}, 101}};
        for (std::int64_t id = 11; id <= 40; ++id)
            programma.tabelle.nodi.push_back(
                {id, 20, std::nullopt, 100 + id, "01/01/2020", "31/12/2099", "G" + std::to_string(id)});
        programma.mostra();
        programma.classe->form()->CaricaDistintaDest("20");
        albero().setScreenRows(10);
        albero().pressMouse(MouseButton::left, albero().byKey(13), "Stato");
        programma.rispondi(3);
        EXPECT_TRUE(editor().visible());
    }
    HeadlessTree& albero() { return programma.albero("TRW_ELEMDISTINTADEST"); }
    HeadlessWorkflowField& editor() { return programma.controllo<HeadlessWorkflowField>("TXT_QZ02_STATO"); }
    /// Does it with the first call that begins so failing.
    template <class Azione> void conGuasto(const std::string& chiamata, Azione&& fai, Azione&& indietro) {
        guasti.registra({});
        fai();
        const auto& traccia = guasti.traccia();
        const auto trovata = std::find(traccia.begin(), traccia.end(), chiamata);
        ASSERT_NE(trovata, traccia.end()) << testing::PrintToString(traccia);
        const auto quale = static_cast<std::size_t>(trovata - traccia.begin());
        guasti.ferma();
        indietro();
        guasti.registra(quale);
        fai();
        guasti.ferma();
        EXPECT_TRUE(guasti.colpito());
    }

    Guasti guasti;
    ProgrammaConGuasti programma;
};

TEST_F(EditorStatoConErrori, OneThatCanNotGoIsReportedByTheChangeOfTheNode) {
    conGuasto<std::function<void()>>(
        "TXT_QZ02_STATO.setVisible(false)", [&] { albero().focusKey(15); },
        [&] { albero().pressMouse(MouseButton::left, albero().byKey(13), "Stato"); });
    EXPECT_EQ(programma.errori(), Testi{"TRW_ELEMDISTINTADEST_OnChangeNode"});
    EXPECT_EQ(programma.stato().campoId->text(), "15") << "the change itself goes on";
}

TEST_F(EditorStatoConErrori, OneThatCanNotFollowIsReported) {
    conGuasto<std::function<void()>>(
        "TXT_QZ02_STATO.setBounds", [&] { albero().setTopRow(1); }, [&] { albero().setTopRow(0); });
    EXPECT_EQ(programma.errori(), Testi{"TRW_ELEMDISTINTADEST_OnViewMoved"});
}

TEST_F(EditorStatoConErrori, ALockedCellThatCanNotSayWhyIsReported) {
    albero().setColumnLocked(3, true);
    programma.host->journal->failCall("StatusBar.setText", 1, contract::RuntimeError(5, "rotto"));
    EXPECT_FALSE(albero().editCell(albero().focused(), "trQZ02_DATAINIZIOVAL", "01/01/2021"));
    EXPECT_EQ(programma.errori(), Testi{"TRW_ELEMDISTINTADEST_OnLocked"});
}

} // namespace
