#include "component/interaction/Selezione.h"
#include "component/Scena.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

using contract::MouseButton;
using prove::Scena;

namespace {

using Ids = std::vector<std::int64_t>;
using Testi = std::vector<std::string>;

/// Both sides: 1 with 2 (with 3) and 4 (with 5), then 6 with 7, then 8.
class SelezioneTest : public testing::Test {
protected:
    SelezioneTest() {
        scena.tabelle.tipi = {{10, "A", "X"}, {20, "B", "Y"}};
        for (const std::int64_t base : {0, 10})
            for (const auto& [id, padre] : std::vector<std::pair<std::int64_t, std::int64_t>>{
                     {1, 0}, {2, 1}, {3, 2}, {4, 1}, {5, 4}, {6, 0}, {7, 6}, {8, 0}})
                scena.tabelle.nodi.push_back(
                    {base + id, base + 10, padre ? std::optional(base + padre) : std::nullopt, base + 100 + id});
        for (auto* lato : {&scena.stato.origine, &scena.stato.destinazione}) {
            scena.carica(*lato, lato == &scena.stato.origine ? "10" : "20");
            lato->albero->OnMouseDown = [this, lato](MouseButton tasto, int, contract::Twips x, contract::Twips y) {
                selezione.OnMouseDown(*lato, tasto, x, y);
            };
            lato->albero->OnHyperLink = [this, lato](contract::Node, const std::string&) {
                selezione.OnHyperLink(*lato);
            };
        }
        scena.alberoOrig().OnCheckChanged = [this](contract::Node nodo, int casella) {
            selezione.PropagaFigli(nodo, casella);
        };
        selezione.apriScheda = [this] { ++schede; };
        scena.host->journal->take();
    }

    Ids segnati() {
        Ids ids;
        auto& albero = scena.alberoOrig();
        for (auto nodo = albero.firstNode(); nodo; nodo = albero.next(nodo))
            if (albero.value(nodo, "Seleziona").text() == "True")
                ids.push_back(albero.key(nodo));
        return ids;
    }
    void segna(std::int64_t id, bool si = true) { scena.alberoOrig().check(scena.alberoOrig().byKey(id), si); }
    bool menuAperto(qz::Lato& lato, std::int64_t nodo, std::string_view colonna) {
        auto& menu = dynamic_cast<platform::headless::HeadlessPopupMenu&>(*lato.menu);
        menu.dismiss();
        auto& albero = scena.albero(lato);
        albero.pressMouse(MouseButton::right, albero.byKey(nodo), colonna);
        return menu.isOpen();
    }

    Scena scena;
    qz::Selezione selezione{scena.stato};
    int schede = 0;
};

// Check

TEST_F(SelezioneTest, GivesATopLevelNodesCheckToItsSubtree) {
    segna(1);
    EXPECT_EQ(segnati(), (Ids{1, 2, 3, 4, 5}));
    segna(1, false);
    EXPECT_EQ(segnati(), Ids{});
}

TEST_F(SelezioneTest, ReachesFromALowerNodeToTheNextTopLevelNode) {
    segna(2);
    EXPECT_EQ(segnati(), (Ids{2, 3, 4, 5}));
    segna(3, false);
    EXPECT_EQ(segnati(), Ids{2});
}

TEST_F(SelezioneTest, ReachesTheUnclesOfADeepNode) {
    segna(3);
    EXPECT_EQ(segnati(), (Ids{3, 4, 5}));
}

TEST_F(SelezioneTest, ChangesNothingElseForTheLastNode) {
    segna(8);
    EXPECT_EQ(segnati(), Ids{8});
}

TEST_F(SelezioneTest, TakesOnlyOneForChecked) {
    segna(1);
    for (const int stato : {0, 2, -1}) {
        selezione.PropagaFigli(scena.alberoOrig().byKey(1), 1);
        selezione.PropagaFigli(scena.alberoOrig().byKey(1), stato);
        EXPECT_EQ(segnati(), Ids{1}); // the checked node keeps its own
    }
}

TEST_F(SelezioneTest, ReachesNodesThatAreNotShown) {
    scena.alberoOrig().setExpanded(scena.alberoOrig().byKey(1), false);
    segna(1);
    EXPECT_EQ(segnati(), (Ids{1, 2, 3, 4, 5}));
}

TEST_F(SelezioneTest, LeavesTheFocusOnTheCheckedNode) {
    segna(4);
    EXPECT_EQ(scena.alberoOrig().key(scena.alberoOrig().focused()), 4);
    EXPECT_EQ((*scena.stato.origine.dati)["QZ02_ID"].integer(), 4);
}

TEST_F(SelezioneTest, TouchesNoRecord) {
    const auto istruzioni = scena.db->operations();
    segna(1);
    EXPECT_EQ(scena.db->operations(), istruzioni);
}

// Mouse

TEST_F(SelezioneTest, StoresTheLevelOfALeftClick) {
    auto& orig = scena.stato.origine;
    orig.livelli->setCaption("Comprimi liv.9");
    scena.alberoOrig().pressMouse(MouseButton::left, scena.alberoOrig().byKey(5), "RagioneSociale");
    EXPECT_EQ(orig.livelloCliccato, 2);
    EXPECT_EQ(orig.livelli->caption(), "Comprimi liv.3"); // the caption is written anew for the open level
    EXPECT_EQ(orig.LivelloCorrente, 2);
    EXPECT_EQ(scena.stato.destinazione.livelloCliccato, 0);
}

TEST_F(SelezioneTest, StoresTheLevelOfEachTreeForItself) {
    scena.alberoDest().pressMouse(MouseButton::left, scena.alberoDest().byKey(12), "RagioneSociale");
    EXPECT_EQ(scena.stato.destinazione.livelloCliccato, 1);
    EXPECT_EQ(scena.stato.origine.livelloCliccato, 0);
}

TEST_F(SelezioneTest, DoesNothingBelowTheLastNode) {
    for (auto* lato : {&scena.stato.origine, &scena.stato.destinazione})
        for (const auto tasto : {MouseButton::left, MouseButton::right}) {
            lato->livelloCliccato = 7;
            scena.albero(*lato).pressMouse(tasto, {}, "");
            EXPECT_EQ(lato->livelloCliccato, 7);
            EXPECT_FALSE(dynamic_cast<platform::headless::HeadlessPopupMenu&>(*lato->menu).isOpen());
        }
}

TEST_F(SelezioneTest, OpensTheOriginsMenuOverItsAccountCells) {
    auto& orig = scena.stato.origine;
    EXPECT_TRUE(menuAperto(orig, 5, "trQZ02_CLIFOR_CG44"));
    EXPECT_TRUE(menuAperto(orig, 5, "RagioneSociale"));
    EXPECT_FALSE(menuAperto(orig, 5, "trQZ02_DATAINIZIOVAL"));
    EXPECT_FALSE(menuAperto(orig, 5, "QZ02_DATAFINEVAL"));
    EXPECT_FALSE(menuAperto(orig, 5, "Seleziona"));
}

TEST_F(SelezioneTest, OpensTheDestinationsMenuOverNameAndStateOnly) {
    auto& dest = scena.stato.destinazione;
    EXPECT_TRUE(menuAperto(dest, 15, "RagioneSociale"));
    EXPECT_TRUE(menuAperto(dest, 15, "Stato"));
    EXPECT_FALSE(menuAperto(dest, 15, "QZ02_CLIFOR_CG44"));
    EXPECT_FALSE(menuAperto(dest, 15, "trQZ02_DATAINIZIOVAL"));
    EXPECT_FALSE(menuAperto(dest, 15, "trQZ02_DATAFINEVAL"));
}

TEST_F(SelezioneTest, RemembersAccountAndKindForTheMenu) {
    scena.stato.destinazione.TipoCF = 1;
    menuAperto(scena.stato.origine, 5, "RagioneSociale");
    EXPECT_EQ(scena.stato.CodiceAnagMenu, 105);
    EXPECT_EQ(scena.stato.TipoAnagMenu.integer(), 0);
    EXPECT_FALSE(scena.stato.NodoStatoDest);
    menuAperto(scena.stato.destinazione, 14, "Stato");
    EXPECT_EQ(scena.stato.CodiceAnagMenu, 114);
    EXPECT_EQ(scena.stato.TipoAnagMenu.integer(), 1);
    EXPECT_EQ(scena.stato.NodoStatoDest, scena.alberoDest().byKey(14));
    EXPECT_EQ(scena.stato.posizioneNodoStato, scena.alberoDest().byKey(14).position);
}

TEST_F(SelezioneTest, LeavesTheLevelAloneOnARightClick) {
    scena.stato.origine.livelloCliccato = 7;
    menuAperto(scena.stato.origine, 5, "RagioneSociale");
    EXPECT_EQ(scena.stato.origine.livelloCliccato, 7);
}

// Link

TEST_F(SelezioneTest, OpensTheCardOfALinkWithoutSettingItsKind) {
    scena.stato.TipoAnagMenu = 1;
    scena.alberoOrig().clickLink(scena.alberoOrig().byKey(7), "RagioneSociale");
    EXPECT_EQ(schede, 1);
    EXPECT_EQ(scena.stato.CodiceAnagMenu, 107);
    EXPECT_EQ(scena.stato.TipoAnagMenu.integer(), 1);
    scena.alberoDest().clickLink(scena.alberoDest().byKey(12), "QZ02_CLIFOR_CG44");
    EXPECT_EQ(schede, 2);
    EXPECT_EQ(scena.stato.CodiceAnagMenu, 112);
    EXPECT_EQ(scena.stato.TipoAnagMenu.integer(), 1);
}

TEST_F(SelezioneTest, ReadsTheAccountOfTheFocusedRecord) {
    // Not of the node pressed, where the focus does not follow the press.
    auto& albero = scena.alberoOrig();
    albero.focusKey(7);
    const auto cella = albero.cell(albero.byKey(2), "RagioneSociale");
    ASSERT_TRUE(cella);
    selezione.OnMouseDown(scena.stato.origine, MouseButton::right, cella->left, cella->top);
    EXPECT_EQ(scena.stato.CodiceAnagMenu, 107);
}

TEST_F(SelezioneTest, ReportsErrorsUnderTheHandlersNames) {
    for (auto* lato : {&scena.stato.origine, &scena.stato.destinazione}) {
        auto& albero = scena.albero(*lato);
        const auto cella = albero.cell(albero.firstNode(), "RagioneSociale");
        ASSERT_TRUE(cella);
        lato->dati->MoveEnd();
        selezione.OnMouseDown(*lato, MouseButton::right, cella->left, cella->top);
        selezione.OnHyperLink(*lato);
    }
    EXPECT_EQ(scena.errori(), (Testi{"TRW_ELEMDISTINTAORIG_OnMouseDown", "TRW_ELEMDISTINTAORIG_OnHyperLink",
                                     "TRW_ELEMDISTINTADEST_OnMouseDown", "TRW_ELEMDISTINTADEST_OnHyperLink"}));
}

TEST_F(SelezioneTest, ReportsAPropagationThatFailsAndGoesOnDrawing) {
    // A tree without check column.
    scena.stato.origine.albero = scena.stato.destinazione.albero;
    auto& albero = scena.alberoDest();
    selezione.PropagaFigli(albero.byKey(11), 1);
    EXPECT_EQ(scena.errori(), Testi{"PropagaFigli"});
    const int prima = albero.layouts();
    albero.setExpanded(albero.byKey(11), false);
    EXPECT_EQ(albero.layouts(), prima + 1);
}

} // namespace
