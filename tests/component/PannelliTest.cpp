// Hiding and showing the type lists and the detail grids.

#include "component/Programma.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

using contract::Rect;
using prove::Programma;

namespace {

class PannelliTest : public testing::Test {
protected:
    PannelliTest() { programma.mostra(); }

    contract::Control& controllo(const char* nome) { return programma.controllo<contract::Control>(nome); }
    Rect posto(const char* nome) { return controllo(nome).bounds(); }
    std::vector<Rect> tutti() {
        std::vector<Rect> posti;
        for (const auto& nome : programma.form().controlNames())
            posti.push_back(posto(nome.c_str()));
        return posti;
    }
    bool listeVisibili() {
        EXPECT_EQ(controllo("TRW_DISTINTEORIG").visible(), controllo("TRW_DISTINTEDEST").visible());
        return controllo("TRW_DISTINTEORIG").visible();
    }
    contract::Twips inizioContenuto() {
        return programma.controllo<platform::headless::HeadlessFrame>("FME_ORIGINE").contentTop();
    }

    Programma programma;
};

TEST_F(PannelliTest, SharesOneFlagBetweenTheTwoButtons) {
    const auto prima = tutti();
    programma.pulsante("CMD_VISTOPSX").click();
    EXPECT_FALSE(listeVisibili());
    programma.pulsante("CMD_VISTOPDX").click();
    EXPECT_TRUE(listeVisibili());
    EXPECT_EQ(tutti(), prima);
    programma.pulsante("CMD_VISTOPDX").click();
    EXPECT_FALSE(listeVisibili());
}

TEST_F(PannelliTest, GivesTheTreesTheRoomOfTheLists) {
    const auto lista = posto("TRW_DISTINTEORIG").height;
    const auto albero = posto("TRW_ELEMDISTINTAORIG");
    const auto inizio = inizioContenuto();
    EXPECT_EQ(albero.top, inizio + lista + 210);
    programma.pulsante("CMD_VISTOPSX").click();
    for (const auto* nome : {"TRW_ELEMDISTINTAORIG", "TRW_ELEMDISTINTADEST"}) {
        EXPECT_EQ(posto(nome).top, inizio + 200) << nome;
        EXPECT_EQ(posto(nome).height, albero.height + lista + 50) << nome;
    }
    // The hidden state reaches 40 further down.
    const auto nascosto = posto("TRW_ELEMDISTINTAORIG");
    EXPECT_EQ(nascosto.top + nascosto.height, albero.top + albero.height + 40);
}

TEST_F(PannelliTest, RestoresTheShownGeometryExactlyHoweverOften) {
    const auto prima = tutti();
    for (int volta = 0; volta < 5; ++volta) {
        programma.pulsante("CMD_VISTOPSX").click();
        EXPECT_NE(tutti(), prima);
        programma.pulsante("CMD_VISTOPSX").click();
        EXPECT_EQ(tutti(), prima);
    }
}

TEST_F(PannelliTest, GivesTheTreesTheRoomOfTheGrids) {
    const auto prima = tutti();
    const auto albero = posto("TRW_ELEMDISTINTAORIG");
    EXPECT_TRUE(programma.classe->menuCommand("mnuDettagli"));
    for (const auto* nome : {"GRD_DETTDISTINTAORIG", "GRD_DETTDISTINTADEST"})
        EXPECT_FALSE(controllo(nome).visible());
    EXPECT_GT(posto("TRW_ELEMDISTINTAORIG").height, albero.height);
    EXPECT_EQ(posto("TRW_ELEMDISTINTAORIG").top, posto("TRW_ELEMDISTINTADEST").top);
    EXPECT_EQ(posto("TRW_ELEMDISTINTAORIG").height, posto("TRW_ELEMDISTINTADEST").height);
    EXPECT_TRUE(programma.classe->menuCommand("mnuDettagli"));
    for (const auto* nome : {"GRD_DETTDISTINTAORIG", "GRD_DETTDISTINTADEST"})
        EXPECT_TRUE(controllo(nome).visible());
    EXPECT_EQ(tutti(), prima);
}

TEST_F(PannelliTest, KnowsNoOtherMenuCommand) {
    EXPECT_FALSE(programma.classe->menuCommand("mnuAltro"));
    EXPECT_FALSE(programma.classe->menuCommand(""));
}

TEST_F(PannelliTest, ShowsTheListsAgainWhenTheyAreFilledAnew) {
    programma.pulsante("CMD_VISTOPSX").click();
    programma.classe->CloseForm();
    programma.mostra();
    EXPECT_TRUE(listeVisibili());
}

TEST_F(PannelliTest, KeepsEveryPartInsideItsPanelAtAnySize) {
    for (const int zoom : {8, 10, 12, 14}) {
        programma.stato().ridimensionamento->setZoom(zoom);
        for (const auto& [larghezza, altezza] :
             std::vector<std::pair<int, int>>{{14685, 9058}, {24000, 14000}, {18000, 9600}}) {
            programma.form().resize(larghezza, altezza);
            for (const auto& nome : programma.form().controlNames()) {
                const auto* padre = programma.form().parentOf(nome);
                const auto suo = posto(nome.c_str());
                const auto area = padre ? padre->bounds() : Rect{0, 0, larghezza, altezza};
                if (nome == "TXT_QZ02_STATO" || nome == "TXT_QZ02_ID" || !controllo(nome.c_str()).visible())
                    continue;
                EXPECT_GE(suo.left, 0) << nome << " " << larghezza << " " << zoom;
                EXPECT_GE(suo.top, 0) << nome << " " << larghezza << " " << zoom;
                EXPECT_LE(suo.left + suo.width, area.width) << nome << " " << larghezza << " " << zoom;
                EXPECT_LE(suo.top + suo.height, area.height + 40) << nome << " " << larghezza << " " << zoom;
            }
        }
    }
}

TEST_F(PannelliTest, FollowsTheSplitters) {
    auto& verticale = programma.controllo<platform::headless::HeadlessSplitter>("SPLITTERVerticale");
    const auto prima = posto("FME_ORIGINE").width;
    verticale.drag(70);
    EXPECT_GT(posto("FME_ORIGINE").width, prima);
    verticale.drag(0);
    EXPECT_GE(posto("FME_ORIGINE").width, 2000);
    verticale.drag(100);
    EXPECT_GE(posto("FME_DESTINAZIONE").width, 2000);
    auto& orizzontale = programma.controllo<platform::headless::HeadlessSplitter>("SPLITTEROrizzDest");
    orizzontale.drag(0);
    EXPECT_GE(posto("TRW_ELEMDISTINTADEST").height, 500);
    orizzontale.drag(100);
    EXPECT_GE(posto("GRD_DETTDISTINTADEST").height, 300);
}

TEST_F(PannelliTest, LeavesNoLockBehind) {
    programma.pulsante("CMD_VISTOPSX").click();
    programma.form().resize(20000, 12000);
    EXPECT_EQ(programma.form().lockDepth(), 0);
}

TEST_F(PannelliTest, HidesAndShowsTheGridsWithTheListsHidden) {
    const auto prima = tutti();
    programma.pulsante("CMD_VISTOPSX").click();
    const auto senzaListe = tutti();
    const auto albero = posto("TRW_ELEMDISTINTAORIG");
    EXPECT_TRUE(programma.classe->menuCommand("mnuDettagli"));
    const auto largo = posto("TRW_ELEMDISTINTAORIG");
    EXPECT_EQ(largo.top, albero.top);
    EXPECT_GT(largo.height, albero.height);
    EXPECT_EQ(posto("TRW_ELEMDISTINTADEST").height, largo.height);
    EXPECT_TRUE(programma.classe->menuCommand("mnuDettagli"));
    EXPECT_EQ(tutti(), senzaListe);
    programma.pulsante("CMD_VISTOPDX").click();
    EXPECT_EQ(tutti(), prima);
}

} // namespace
