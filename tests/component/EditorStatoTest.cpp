// Where the state editor stands: over its own row's cell, or nowhere.

#include "component/Programma.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

using contract::MouseButton;
using platform::headless::HeadlessTree;
using platform::headless::HeadlessWorkflowField;
using prove::Programma;

namespace {

/// Destination 20 with the nodes 11 to 40, all at the top level.
class EditorStatoTest : public testing::Test {
protected:
    EditorStatoTest() { albero.setScreenRows(10); }
    static std::unique_ptr<Programma> aperto() {
        auto nuovo = std::make_unique<Programma>();
        auto& programma = *nuovo;
        programma.host->workflow->states = {{3, "Bozza"}, {5, "Attivo"}};
        programma.tabelle.tipi = {{10, "A", "X"}, {20, "B", "Y"}};
        programma.tabelle.nodi = {{1, 10, {}, 101}};
        for (std::int64_t id = 11; id <= 40; ++id)
            programma.tabelle.nodi.push_back(
                {id, 20, std::nullopt, 100 + id, "01/01/2020", "31/12/2099", "G" + std::to_string(id)});
        programma.mostra();
        programma.classe->form()->CaricaDistintaDest("20");
        return nuovo;
    }
    void premi(std::int64_t nodo, const char* colonna, MouseButton tasto = MouseButton::left) {
        ASSERT_TRUE(albero.pressMouse(tasto, albero.byKey(nodo), colonna));
    }
    void staSu(std::int64_t nodo) {
        EXPECT_TRUE(editor.visible());
        EXPECT_EQ(editor.value(), "G" + std::to_string(nodo));
        const auto cella = albero.cell(albero.byKey(nodo), "Stato");
        ASSERT_TRUE(cella);
        EXPECT_EQ(editor.bounds().top, albero.bounds().top + cella->top);
    }

    std::unique_ptr<Programma> tenuto = aperto();
    Programma& programma = *tenuto;
    HeadlessTree& albero = programma.albero("TRW_ELEMDISTINTADEST");
    HeadlessWorkflowField& editor = programma.controllo<HeadlessWorkflowField>("TXT_QZ02_STATO");
};

TEST_F(EditorStatoTest, OpensOnceOverTheCellThatGetsTheFocus) {
    premi(12, "Stato");
    staSu(12);
    EXPECT_TRUE(editor.listOpen());
    editor.leave();
    premi(12, "Stato");
    EXPECT_FALSE(editor.listOpen()) << "it stands there already";
}

TEST_F(EditorStatoTest, ComesToTheStateOfAnotherRowThatIsPressed) {
    premi(12, "Stato");
    editor.leave();
    premi(15, "Stato");
    staSu(15);
    EXPECT_TRUE(editor.listOpen());
    EXPECT_EQ(programma.valore("NodoStatoDest").integer(), 15);
}

TEST_F(EditorStatoTest, GoesWhenTheFocusMovesToAnotherRow) {
    premi(12, "Stato");
    albero.focusKey(14);
    EXPECT_FALSE(editor.visible());
    premi(12, "Stato");
    staSu(12);
    premi(13, "RagioneSociale", MouseButton::right);
    EXPECT_FALSE(editor.visible());
}

TEST_F(EditorStatoTest, GoesWhenTheFocusLeavesTheColumn) {
    premi(12, "Stato");
    albero.setFocusedColumn("RagioneSociale");
    EXPECT_FALSE(editor.visible());
}

TEST_F(EditorStatoTest, GoesWhenTheTreeIsFilledAgain) {
    premi(11, "Stato"); // the node that gets the focus afterwards too
    programma.classe->form()->CaricaDistintaDest("20");
    EXPECT_FALSE(editor.visible());
    premi(11, "Stato");
    staSu(11);
    programma.classe->form()->CaricaDistintaDest("99");
    EXPECT_FALSE(editor.visible());
}

TEST_F(EditorStatoTest, FollowsItsCellWhileItIsSeenAndGoesWithIt) {
    premi(15, "Stato");
    const auto prima = editor.bounds().top;
    albero.setTopRow(2);
    staSu(15);
    EXPECT_LT(editor.bounds().top, prima);
    albero.setTopRow(20);
    EXPECT_FALSE(editor.visible());
    albero.setTopRow(0);
    EXPECT_FALSE(editor.visible()) << "it does not come back by itself";
    premi(15, "Stato");
    staSu(15);
}

TEST_F(EditorStatoTest, ScrollsItsRowIntoViewBeforeItIsPlaced) {
    albero.focusKey(12);
    programma.stato().NodoStatoDest = albero.byKey(38);
    programma.stato().destinazione.menu->Click("mnuStatoLegame");
    staSu(38);
}

TEST_F(EditorStatoTest, GoesWhenTheFormIsLaidOutAgain) {
    premi(12, "Stato");
    programma.classe->form()->Ridisponi();
    EXPECT_FALSE(editor.visible());
    premi(12, "Stato");
    staSu(12);
}

} // namespace
