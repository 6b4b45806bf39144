// Commands of the host's menu bar that the class carries out, and what the status line says of them.

#include "component/Programma.h"
#include "component/data/CaricaDistinta.h"

#include <gtest/gtest.h>

using prove::Programma;

namespace {

class ComandiMenuTest : public testing::Test {
protected:
    ComandiMenuTest() {
        programma.tabelle.tipi = {{10, "A", "X"}};
        programma.tabelle.nodi = {{1, 10, {}, 101}, {2, 10, 1, 102}, {3, 10, 1, 103}};
        programma.tabelle.collega(*programma.db);
        programma.mostra();
        qz::CaricaDistinta(programma.stato(), programma.stato().origine, "10");
        qz::CaricaDistinta(programma.stato(), programma.stato().destinazione, "10");
    }
    std::string stato() const { return programma.host->statusText; }

    Programma programma;
};

TEST_F(ComandiMenuTest, AMatchIsToldUntilTheFocusGoesOn) {
    auto& albero = programma.albero("TRW_ELEMDISTINTAORIG");
    programma.stato().origine.cerca->setText("soggetto");
    EXPECT_TRUE(programma.classe->menuCommand("mnuTrovaSuccessivoOrig"));
    const std::string nota = "2 di 3: 101 SOGGETTO 101 › 102 SOGGETTO 102";
    EXPECT_EQ(stato(), nota);
    albero.settle(); // the focus has come to rest
    EXPECT_EQ(stato(), nota);
    albero.focusKey(3);
    albero.settle();
    EXPECT_EQ(stato().find("Sposta: 103"), 0U) << stato();
    EXPECT_TRUE(programma.classe->menuCommand("mnuTrovaPrecedenteOrig"));
    EXPECT_EQ(albero.key(albero.focused()), 2);
    EXPECT_EQ(programma.albero("TRW_ELEMDISTINTADEST").focused().position, 0);
}

TEST_F(ComandiMenuTest, BothSidesAreReadAgain) {
    programma.tabelle.nodi.push_back({4, 10, 1, 104});
    EXPECT_TRUE(programma.classe->menuCommand("mnuAggiorna"));
    EXPECT_TRUE(programma.albero("TRW_ELEMDISTINTAORIG").byKey(4));
    EXPECT_TRUE(programma.albero("TRW_ELEMDISTINTADEST").byKey(4));
    EXPECT_EQ(stato(), "Le distinte sono state rilette.");
    EXPECT_FALSE(programma.classe->menuCommand("mnuTrovaSuccessivo")) << "a side must be named";
}

TEST_F(ComandiMenuTest, ALockedCellSaysWhy) {
    auto& albero = programma.albero("TRW_ELEMDISTINTADEST");
    albero.setColumnLocked(3, true);
    EXPECT_FALSE(albero.editCell(albero.focused(), "trQZ02_DATAINIZIOVAL", "01/01/2021"));
    EXPECT_EQ(stato(), "La data inizio non può essere modificata perchè è presente un premio definitivo.");
}

} // namespace
