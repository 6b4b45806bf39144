#include "component/data/CaricaDistinta.h"
#include "component/Scena.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using prove::nodiDi;
using prove::Scena;

namespace {

using Testi = std::vector<std::string>;
using Ids = std::vector<std::int64_t>;

/// Distinta 10: a chain five levels deep; 20: three levels; 30: none; 40: only a node without account.
class CaricaDistintaTest : public testing::Test {
protected:
    CaricaDistintaTest() {
        scena.tabelle.tipi = {{10, "A", "PROFONDA", 0, "DIV1", "GUID-10"},
                              {20, "B", "BASSA", 0, "   ", std::nullopt},
                              {30, "C", "VUOTA"},
                              {40, "D", "SENZA ACCOUNT"}};
        scena.tabelle.nodi = {{1, 10, {}, 101}, {2, 10, 1, 102}, {3, 10, 2, 103},  {4, 10, 3, 104}, {5, 10, 4, 105},
                              {6, 20, {}, 106}, {7, 20, 6, 107}, {8, 20, 7, 1008}, {9, 20, 6, 109}, {10, 40, {}, {}}};
    }

    const std::string& didascalia(qz::Lato& lato) { return testo = lato.livelli->caption(); }

    Scena scena;
    qz::Lato& origine = scena.stato.origine;
    qz::Lato& destinazione = scena.stato.destinazione;
    std::string testo;
};

TEST_F(CaricaDistintaTest, ReadsTheDivisionThenTheNodes) {
    qz::CaricaDistinta(scena.stato, origine, "20");
    const auto istruzioni = scena.db->take();
    ASSERT_GE(istruzioni.size(), 2U);
    EXPECT_TRUE(istruzioni[0].starts_with(" SELECT QZ01_IDDIV_CO1A FROM"));
    EXPECT_TRUE(istruzioni[1].starts_with(" SELECT QZ02_ID,  "));
    EXPECT_EQ(nodiDi(*origine.albero), (Ids{6, 7, 8, 9}));
    EXPECT_EQ(origine.istruzione.text(), istruzioni[1]);
}

TEST_F(CaricaDistintaTest, HandsStatementAndRowsToTheSidesFrame) {
    qz::CaricaDistinta(scena.stato, destinazione, "20");
    EXPECT_EQ(scena.host->journal->count("FME_CopiaDistintaDEST.load( SELECT QZ02_ID,"), 1U);
    EXPECT_EQ(destinazione.albero->records(), destinazione.dati);
}

TEST_F(CaricaDistintaTest, KeepsIdDivisionAndGuid) {
    qz::CaricaDistinta(scena.stato, origine, "10");
    qz::CaricaDistinta(scena.stato, destinazione, "10");
    EXPECT_EQ(origine.IdDistinta, "10");
    EXPECT_EQ(origine.Divisione, "DIV1");
    EXPECT_EQ(origine.GuidDistinta, "");
    EXPECT_EQ(destinazione.IdDistinta, "10");
    EXPECT_EQ(destinazione.Divisione, "DIV1");
    EXPECT_EQ(destinazione.GuidDistinta, "GUID-10");
}

TEST_F(CaricaDistintaTest, TakesABlankDivisionAndAMissingTypeForNone) {
    for (const auto* id : {"20", "999"}) {
        qz::CaricaDistinta(scena.stato, destinazione, "10");
        qz::CaricaDistinta(scena.stato, destinazione, id);
        EXPECT_EQ(destinazione.Divisione, "") << id;
        EXPECT_EQ(destinazione.GuidDistinta, "") << id;
    }
}

TEST_F(CaricaDistintaTest, CountsTheDepthAndCaptionsTheLevelButton) {
    qz::CaricaDistinta(scena.stato, origine, "20");
    EXPECT_EQ(origine.LivelloMax, 2);
    EXPECT_EQ(origine.LivelloCorrente, 2);
    EXPECT_EQ(didascalia(origine), "Comprimi liv.3");
    EXPECT_EQ(didascalia(destinazione), "");
}

TEST_F(CaricaDistintaTest, KeepsTheLargestDepthEverSeen) {
    qz::CaricaDistinta(scena.stato, origine, "10");
    EXPECT_EQ(didascalia(origine), "Comprimi liv.5");
    qz::CaricaDistinta(scena.stato, origine, "20");
    EXPECT_EQ(origine.LivelloMax, 4);
    EXPECT_EQ(origine.LivelloCorrente, 4);
    EXPECT_EQ(didascalia(origine), "Comprimi liv.5");
}

TEST_F(CaricaDistintaTest, EmptiesTheTreeForADistintaWithoutNodesToShow) {
    for (const auto* id : {"30", "40"}) {
        qz::CaricaDistinta(scena.stato, origine, "20");
        qz::CaricaDistinta(scena.stato, origine, id);
        EXPECT_EQ(origine.albero->nodeCount(), 0U) << id;
        EXPECT_EQ(origine.albero->records(), nullptr) << id;
        EXPECT_EQ(didascalia(origine), "Comprimi liv.3") << id;
        EXPECT_EQ(origine.LivelloCorrente, 2) << id;
        EXPECT_EQ(origine.IdDistinta, id);
    }
}

TEST_F(CaricaDistintaTest, LeavesNoOldRowToActOnInAnEmptyDistinta) {
    qz::CaricaDistinta(scena.stato, origine, "20");
    qz::CaricaDistinta(scena.stato, origine, "30");
    EXPECT_TRUE(origine.dati->Bof() && origine.dati->Eof());
}

TEST_F(CaricaDistintaTest, ShowsANodeWithoutRegistryEntryByAnEmptyName) {
    qz::CaricaDistinta(scena.stato, origine, "20");
    const auto nodo = origine.albero->byKey(8);
    EXPECT_TRUE(origine.albero->value(nodo, "RagioneSociale").isNull());
    EXPECT_EQ(origine.albero->value(nodo, "trQZ02_CLIFOR_CG44").text(), "1008");
}

TEST_F(CaricaDistintaTest, FocusesTheFirstNodeWithItsRecord) {
    qz::CaricaDistinta(scena.stato, origine, "20");
    EXPECT_EQ(origine.albero->focused().position, 0);
    EXPECT_EQ((*origine.dati)["QZ02_ID"].integer(), 6);
}

TEST_F(CaricaDistintaTest, KeepsTheFocusOnItsNodeWhenTheSameDistintaIsLoadedAgain) {
    scena.carica(origine, "20", 9);
    qz::CaricaDistinta(scena.stato, origine, "20");
    EXPECT_EQ(origine.albero->key(origine.albero->focused()), 9);
    EXPECT_EQ((*origine.dati)["QZ02_ID"].integer(), 9);
    scena.tabelle.il(9).distinta = 10;
    qz::CaricaDistinta(scena.stato, origine, "20");
    EXPECT_EQ(origine.albero->key(origine.albero->focused()), 6);
}

TEST_F(CaricaDistintaTest, ShowsEverythingExpanded) {
    qz::CaricaDistinta(scena.stato, origine, "10");
    EXPECT_EQ(scena.alberoOrig().shown().size(), 5U);
}

TEST_F(CaricaDistintaTest, RaisesTheFocusEventWhenBoundAndWhenCleared) {
    int eventi = 0;
    origine.albero->OnChangeNode = [&] { ++eventi; };
    qz::CaricaDistinta(scena.stato, origine, "20");
    EXPECT_EQ(eventi, 1);
    qz::CaricaDistinta(scena.stato, origine, "30");
    EXPECT_EQ(eventi, 2);
}

TEST_F(CaricaDistintaTest, ReadsTheNodesOfItsSidesKindInTheOrderOfTheDatabase) {
    origine.TipoCF = 1;
    qz::CaricaDistinta(scena.stato, origine, "20");
    EXPECT_EQ(origine.albero->nodeCount(), 0U);
    EXPECT_EQ(scena.db->statements(" SELECT QZ02_ID,  ").size(), 1U);
    EXPECT_EQ(scena.db->statements(" SELECT QZ02_ID,  ")[0].find("ORDER BY"), std::string::npos);
}

TEST_F(CaricaDistintaTest, ReportsAnErrorUnderItsSidesNameAndKeepsWhatWasSet) {
    for (auto* lato : {&origine, &destinazione}) {
        scena.db->failNth(2, {"42000", 1, "guasto", contract::ErrorCategory::other});
        qz::CaricaDistinta(scena.stato, *lato, "10");
        EXPECT_EQ(lato->Divisione, "DIV1");
        EXPECT_EQ(lato->IdDistinta, "10");
        EXPECT_EQ(lato->albero->nodeCount(), 0U);
    }
    EXPECT_EQ(scena.errori(), (Testi{"CaricaDistintaOrig", "CaricaDistintaDest"}));
}

TEST_F(CaricaDistintaTest, ReadsTheNodesAgainOnRetry) {
    scena.db->failNth(2, {"42000", 1, "guasto", contract::ErrorCategory::other});
    scena.host->answers = {4};
    qz::CaricaDistinta(scena.stato, origine, "20");
    EXPECT_EQ(nodiDi(*origine.albero), (Ids{6, 7, 8, 9}));
}

TEST_F(CaricaDistintaTest, CountsTheDepthOfATreeWithRowsOnACycle) {
    scena.tabelle.nodi = {{1, 10, {}, 101}, {2, 10, 1, 102}, {3, 10, 4, 103}, {4, 10, 3, 104}};
    qz::CaricaDistinta(scena.stato, origine, "10");
    EXPECT_EQ(nodiDi(*origine.albero), (Ids{1, 2}));
    EXPECT_EQ(origine.LivelloMax, 1);
}

TEST_F(CaricaDistintaTest, StandsOnNoRecordWhenAllRowsAreOnCycles) {
    scena.tabelle.nodi = {{3, 10, 4, 103}, {4, 10, 3, 104}};
    qz::CaricaDistinta(scena.stato, origine, "10");
    EXPECT_EQ(origine.albero->nodeCount(), 0U);
    EXPECT_TRUE(origine.dati->Eof());
    EXPECT_TRUE(origine.senzaRecord());
}

TEST_F(CaricaDistintaTest, KeepsTheIdBeforeWhenTheDivisionCanNotBeRead) {
    scena.carica(origine, "20");
    scena.db->failNth(1, {"42000", 1, "guasto", contract::ErrorCategory::other});
    qz::CaricaDistinta(scena.stato, origine, "10");
    EXPECT_EQ(origine.IdDistinta, "20");
    EXPECT_EQ(nodiDi(*origine.albero), (Ids{6, 7, 8, 9}));
}

TEST_F(CaricaDistintaTest, TakesARowWithoutItsParentForARoot) {
    scena.tabelle.nodi = {{7, 20, 99, 107}, {8, 20, 7, 108}};
    qz::CaricaDistinta(scena.stato, origine, "20");
    EXPECT_EQ(nodiDi(*origine.albero), (Ids{7, 8}));
    EXPECT_EQ(origine.LivelloMax, 1);
}

TEST_F(CaricaDistintaTest, CountsMoreLevelsThanAShortIntegerAndSaysThatNotAllAreOpen) {
    scena.tabelle.nodi.clear();
    constexpr std::int64_t livelli = 40000;
    for (std::int64_t id = 1; id <= livelli; ++id)
        scena.tabelle.nodi.push_back({id, 20, id > 1 ? std::optional(id - 1) : std::nullopt, 100});
    qz::CaricaDistinta(scena.stato, origine, "20");
    EXPECT_EQ(origine.LivelloMax, livelli - 1);
    EXPECT_EQ(origine.LivelloCorrente, livelli - 1);
    EXPECT_EQ(didascalia(origine), "Comprimi liv.40000");
    EXPECT_EQ(scena.host->statusText, "La distinta ha 40000 livelli: sono aperti i primi 200.");
}

} // namespace
