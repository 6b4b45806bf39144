#include "component/data/Ricerca.h"
#include "component/Scena.h"
#include "component/data/BloccoRicerca.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

using prove::Scena;

namespace {

/// SOGGETTO 101 to SOGGETTO 105; 3's account has no registry entry. Every test runs on both sides.
class RicercaTest : public testing::TestWithParam<bool> {
protected:
    RicercaTest() {
        scena.tabelle.tipi = {{10, "A", "X"}, {30, "C", "VUOTA"}};
        scena.tabelle.nodi = {{1, 10, {}, 101}, {2, 10, 1, 102}, {3, 10, 2, 1003}, {4, 10, {}, 104}, {5, 10, 4, 105}};
        scena.carica(lato, "10", 2);
        lato.albero->OnChangeNode = [this] { ++cambi; };
    }

    std::int64_t inFuoco() const { return lato.albero->key(lato.albero->focused()); }
    std::int64_t cerca(std::string_view testo, std::string_view colonna = "RagioneSociale") {
        lato.cerca->setText(testo);
        ricerca.CercaNellaDistinta(colonna);
        return inFuoco();
    }

    Scena scena;
    qz::Lato& lato = GetParam() ? scena.stato.destinazione : scena.stato.origine;
    qz::Ricerca ricerca{scena.stato, lato};
    int cambi = 0;
};

TEST_P(RicercaTest, FindsTheNextNodeThatContainsTheText) {
    EXPECT_EQ(cerca("105"), 5);
    EXPECT_EQ((*lato.dati)["QZ02_ID"].integer(), 5);
    EXPECT_EQ(cambi, 1);
}

TEST_P(RicercaTest, IgnoresCase) {
    EXPECT_EQ(cerca("soggetto 104"), 4);
    EXPECT_EQ(cerca("SoGgEtTo 101"), 1);
}

TEST_P(RicercaTest, TestsTheFocusedNodeFirst) {
    EXPECT_EQ(cerca("SOGGETTO"), 2);
    EXPECT_EQ(cerca("SOGGETTO"), 2);
    EXPECT_EQ(cambi, 0);
}

TEST_P(RicercaTest, WrapsRoundToANodeAbove) {
    EXPECT_EQ(cerca("101"), 1);
}

TEST_P(RicercaTest, ChangesNothingWithoutAMatch) {
    EXPECT_EQ(cerca("ASSENTE"), 2);
    EXPECT_EQ(cambi, 0);
    EXPECT_TRUE(scena.host->errors.empty());
}

TEST_P(RicercaTest, GoesOnToTheNextAndThePreviousMatchRoundTheEnd) {
    cerca("SOGGETTO"); // 1, 2, 4 and 5 match; 2 has the focus
    EXPECT_EQ(ricerca.CercaAncora(false), "3 di 4: 104 SOGGETTO 104");
    EXPECT_EQ(inFuoco(), 4);
    lato.cerca->setText("altro, non ancora cercato");
    EXPECT_EQ(ricerca.CercaAncora(false), "4 di 4: 104 SOGGETTO 104 › 105 SOGGETTO 105");
    EXPECT_EQ(ricerca.CercaAncora(false), "1 di 4: 101 SOGGETTO 101");
    EXPECT_EQ(ricerca.CercaAncora(true), "4 di 4: 104 SOGGETTO 104 › 105 SOGGETTO 105");
    EXPECT_EQ(ricerca.CercaAncora(true), "3 di 4: 104 SOGGETTO 104");
    EXPECT_EQ(ricerca.CercaAncora(true), "2 di 4: 101 SOGGETTO 101 › 102 SOGGETTO 102");
    EXPECT_EQ(inFuoco(), 2);
}

TEST_P(RicercaTest, GoesOnWithoutASearchByTheFieldsTextAndSaysWhatIsMissing) {
    EXPECT_EQ(ricerca.CercaAncora(false), "Scrivere prima che cosa cercare.");
    lato.cerca->setText("105");
    EXPECT_EQ(ricerca.CercaAncora(false), "1 di 1: 104 SOGGETTO 104 › 105 SOGGETTO 105");
    EXPECT_EQ(ricerca.CercaAncora(false), "1 di 1: 104 SOGGETTO 104 › 105 SOGGETTO 105");
    cerca("ASSENTE");
    EXPECT_EQ(ricerca.CercaAncora(true), "Nessun nodo contiene \"ASSENTE\".");
    EXPECT_EQ(inFuoco(), 5);
    scena.carica(lato, "30");
    EXPECT_EQ(ricerca.CercaAncora(false), "");
}

TEST_P(RicercaTest, MatchesEveryValueWithTheEmptyText) {
    EXPECT_EQ(cerca(""), 2);
    scena.albero(lato).focusKey(3); // has no name: the next one with a name is found
    EXPECT_EQ(cerca(""), 4);
}

TEST_P(RicercaTest, SearchesACodeAsText) {
    if (GetParam())
        return;
    EXPECT_EQ(cerca("10", "trQZ02_CLIFOR_CG44"), 2);
    EXPECT_EQ(cerca("003", "trQZ02_CLIFOR_CG44"), 3);
}

TEST_P(RicercaTest, BringsTheNodeIntoView) {
    lato.albero->setExpanded(lato.albero->byKey(4), false);
    EXPECT_EQ(cerca("105"), 5);
    EXPECT_TRUE(lato.albero->expanded(lato.albero->byKey(4)));
}

TEST_P(RicercaTest, StopsOnAnEmptySide) {
    scena.carica(lato, "30");
    lato.cerca->setText("1");
    ricerca.CercaNellaDistinta("NON_ESISTE");
    EXPECT_TRUE(scena.host->errors.empty());
}

TEST_P(RicercaTest, ReportsAnUnknownColumnAndKeepsTheFocus) {
    EXPECT_EQ(cerca("1", "NON_ESISTE"), 2);
    EXPECT_EQ(scena.host->errors.size(), 1U);
    EXPECT_EQ(scena.host->errors[0].number, contract::RuntimeError::itemNotFound);
    EXPECT_EQ(scena.errori(), std::vector<std::string>{"CercaNellaDistinta"});
}

TEST_P(RicercaTest, SearchesTheCodeByTheSameColumnNameOnBothSides) {
    lato.cerca->setText("104");
    ricerca.menuScelto("Codice");
    if (GetParam()) {
        // The destination does not carry a column of that name.
        EXPECT_EQ(inFuoco(), 2);
        EXPECT_EQ(scena.host->errors.size(), 1U);
    } else {
        EXPECT_EQ(inFuoco(), 4);
        EXPECT_TRUE(scena.host->errors.empty());
    }
    EXPECT_EQ(scena.form().focused(), lato.albero);
}

TEST_P(RicercaTest, SearchesTheNameFromTheMenu) {
    lato.cerca->setText("105");
    ricerca.menuScelto("RagSoc");
    EXPECT_EQ(inFuoco(), 5);
    EXPECT_EQ(scena.form().focused(), lato.albero);
}

TEST_P(RicercaTest, SearchesTheNameOnEnterOnly) {
    lato.cerca->setText("105");
    lato.cerca->setFocus();
    for (const int tasto : {65, 27, 9, 32, 112}) {
        ricerca.tastoPremuto(tasto);
        EXPECT_EQ(inFuoco(), 2);
        EXPECT_NE(scena.form().focused(), lato.albero);
    }
    ricerca.tastoPremuto(13);
    EXPECT_EQ(inFuoco(), 5);
    EXPECT_EQ(scena.form().focused(), lato.albero);
}

TEST_P(RicercaTest, SearchesWhatIsLoadedNow) {
    EXPECT_EQ(cerca("105"), 5);
    scena.tabelle.il(5).account = 999;
    scena.carica(lato, "10", 2);
    EXPECT_EQ(cerca("105"), 2);
    EXPECT_EQ(cerca("999"), 5);
}

INSTANTIATE_TEST_SUITE_P(BothSides, RicercaTest, testing::Bool(),
                         [](const auto& caso) { return caso.param ? "Destinazione" : "Origine"; });

TEST(BloccoRicerca, FindsNothingAcrossTwoTexts) {
    qz::BloccoRicerca blocco;
    blocco.aggiungi("ab");
    blocco.aggiungi("cd");
    EXPECT_FALSE(blocco.trova("bc", 0, 2));
    EXPECT_EQ(blocco.trova("cd", 0, 2), 1U);
    EXPECT_EQ(blocco.trova("ab", 0, 2), 0U);
    EXPECT_FALSE(blocco.trova("ab", 1, 2));
    EXPECT_FALSE(blocco.trova("cd", 0, 1));
}

TEST(BloccoRicerca, NeverFindsAMissingValue) {
    qz::BloccoRicerca blocco;
    blocco.aggiungi(std::nullopt);
    blocco.aggiungi("");
    blocco.aggiungi(std::nullopt);
    EXPECT_EQ(blocco.trova("", 0, 3), 1U);
    EXPECT_FALSE(blocco.trova("", 2, 3));
    EXPECT_FALSE(blocco.trova("x", 0, 3));
    blocco.svuota();
    EXPECT_EQ(blocco.numero(), 0U);
    EXPECT_FALSE(blocco.trova("", 0, 0));
}

TEST(BloccoRicerca, AgreesWithAPlainSearch) {
    std::vector<std::string> testi;
    for (int i = 0; i < 300; ++i)
        testi.push_back(i % 11 == 0 ? std::string() : "a" + std::to_string(i * 7919 % 1000) + "b");
    qz::BloccoRicerca blocco;
    for (const auto& testo : testi)
        blocco.aggiungi(testo);
    for (const auto* cercato : {"a", "b", "1", "99", "a5", "0b", "b1", "a7b", "999", "00"})
        for (std::size_t da = 0; da < testi.size(); da += 13) {
            std::optional<std::size_t> atteso;
            for (std::size_t i = da; i < testi.size() && !atteso; ++i)
                if (testi[i].find(cercato) != std::string::npos)
                    atteso = i;
            ASSERT_EQ(blocco.trova(cercato, da, testi.size()), atteso) << cercato << " da " << da;
        }
}

} // namespace
