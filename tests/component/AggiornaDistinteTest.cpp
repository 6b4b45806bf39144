#include "component/data/AggiornaDistinte.h"

#include "component/Scena.h"

#include <gtest/gtest.h>

using prove::Scena;

namespace {

class AggiornaDistinteTest : public testing::TestWithParam<bool> {
protected:
    AggiornaDistinteTest() {
        scena.tabelle.tipi = {{10, "A", "X"}};
        for (std::int64_t id = 1; id <= 60; ++id)
            scena.tabelle.nodi.push_back(
                {id, 10, id % 3 == 1 ? std::nullopt : std::optional(id - (id - 1) % 3), 100 + id});
        scena.carica(lato, "10", 31);
        albero.setExpanded(albero.byKey(4), false);
        albero.setTopRow(albero.byKey(28).position);
        lato.LivelloCorrente = 0;
        lato.livelli->setCaption("Espandi liv.1");
    }

    Scena scena;
    qz::Lato& lato = GetParam() ? scena.stato.destinazione : scena.stato.origine;
    contract::TreeList& albero = *lato.albero;
};

TEST_P(AggiornaDistinteTest, KeepsFocusBranchesLevelAndRowsWhereTheyStillExist) {
    scena.tabelle.il(5).inizio = "01/06/2021";
    std::erase_if(scena.tabelle.nodi, [](const auto& nodo) { return nodo.id == 2; });
    scena.tabelle.nodi.push_back({70, 10, 31, 170});
    qz::AggiornaDistinte(scena.stato);
    EXPECT_EQ(albero.key(albero.focused()), 31);
    EXPECT_FALSE(albero.byKey(2));
    EXPECT_TRUE(albero.byKey(70));
    EXPECT_FALSE(albero.expanded(albero.byKey(4)));
    EXPECT_TRUE(albero.expanded(albero.byKey(31)));
    EXPECT_EQ(albero.key(contract::Node{albero.topRow()}), 28);
    EXPECT_EQ(lato.LivelloCorrente, 0);
    EXPECT_EQ(lato.livelli->caption(), "Espandi liv.1");
    EXPECT_TRUE(scena.host->errors.empty());
}

TEST_P(AggiornaDistinteTest, GoesToTheFirstNodeWhenTheFocusedOneIsGone) {
    std::erase_if(scena.tabelle.nodi,
                  [](const auto& nodo) { return nodo.id == 28 || (nodo.id >= 31 && nodo.id < 34); });
    qz::AggiornaDistinte(scena.stato);
    EXPECT_EQ(albero.key(albero.focused()), 1);
    scena.tabelle.nodi.clear();
    qz::AggiornaDistinte(scena.stato);
    EXPECT_EQ(albero.nodeCount(), 0U);
    qz::AggiornaDistinte(scena.stato);
    EXPECT_TRUE(scena.host->errors.empty());
}

INSTANTIATE_TEST_SUITE_P(BothSides, AggiornaDistinteTest, testing::Bool(),
                         [](const auto& caso) { return caso.param ? "Destinazione" : "Origine"; });

} // namespace
