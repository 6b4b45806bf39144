#include "component/interaction/Livelli.h"
#include "component/Scena.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using prove::Scena;

namespace {

using Ids = std::vector<std::int64_t>;

/// 1 with 2 with 3 and 4, then 5 with 6, then 7: three levels. Every test runs on both sides.
class LivelliTest : public testing::TestWithParam<bool> {
protected:
    LivelliTest() {
        scena.tabelle.tipi = {{10, "A", "TRE LIVELLI"}, {20, "B", "UN LIVELLO"}, {30, "C", "VUOTA"}};
        scena.tabelle.nodi = {{1, 10, {}, 101}, {2, 10, 1, 102}, {3, 10, 2, 103},  {4, 10, 2, 104},
                              {5, 10, {}, 105}, {6, 10, 5, 106}, {7, 10, {}, 107}, {8, 20, {}, 108}};
        scena.carica(lato, "10");
    }

    void premi() { qz::CMD_ESPANDICOLLASSA_ButtonClick(scena.stato, lato); }
    std::string didascalia() const { return lato.livelli->caption(); }
    Ids mostrati() {
        Ids ids;
        for (const auto posizione : scena.albero(lato).shown())
            ids.push_back(lato.albero->key({posizione}));
        return ids;
    }

    Scena scena;
    qz::Lato& lato = GetParam() ? scena.stato.destinazione : scena.stato.origine;
};

TEST_P(LivelliTest, ClosesALevelAtATimeThenOpensThemAgain) {
    EXPECT_EQ(didascalia(), "Comprimi liv.3");
    premi();
    EXPECT_EQ(mostrati(), (Ids{1, 2, 5, 6, 7}));
    EXPECT_EQ(lato.LivelloCorrente, 1);
    EXPECT_EQ(didascalia(), "Comprimi liv.2");
    premi();
    EXPECT_EQ(mostrati(), (Ids{1, 5, 7}));
    EXPECT_EQ(lato.LivelloCorrente, 0);
    EXPECT_EQ(didascalia(), "Espandi liv.1");
    premi();
    EXPECT_EQ(mostrati(), (Ids{1, 2, 5, 6, 7}));
    EXPECT_EQ(lato.LivelloCorrente, 1);
    EXPECT_EQ(didascalia(), "Espandi liv.2");
    premi();
    EXPECT_EQ(mostrati(), (Ids{1, 2, 3, 4, 5, 6, 7}));
    EXPECT_EQ(lato.LivelloCorrente, 2);
    EXPECT_EQ(didascalia(), "Comprimi liv.3");
}

TEST_P(LivelliTest, ReadsTheModeFromTheCaptionWhateverItsCase) {
    lato.livelli->setCaption("comprimi liv.3   ");
    premi();
    EXPECT_EQ(lato.LivelloCorrente, 1);
    lato.livelli->setCaption("qualcosa d'altro");
    premi();
    EXPECT_EQ(lato.LivelloCorrente, 2);
    lato.livelli->setCaption("Comprim");
    premi();
    EXPECT_EQ(lato.LivelloCorrente, 3);
}

TEST_P(LivelliTest, DoesNothingOnAnEmptyTree) {
    scena.carica(lato, "30");
    premi();
    EXPECT_EQ(didascalia(), "Comprimi liv.3");
    EXPECT_EQ(lato.LivelloCorrente, 2);
}

TEST_P(LivelliTest, TurnsToCollapsingAtOnceInATreeOfOneLevel) {
    Scena altra;
    altra.tabelle.tipi = {{20, "B", "UN LIVELLO"}};
    altra.tabelle.nodi = {{8, 20, {}, 108}};
    auto& suo = GetParam() ? altra.stato.destinazione : altra.stato.origine;
    altra.carica(suo, "20");
    suo.livelli->setCaption("Espandi liv.1");
    qz::CMD_ESPANDICOLLASSA_ButtonClick(altra.stato, suo);
    EXPECT_EQ(suo.livelli->caption(), "Comprimi liv.2");
    EXPECT_EQ(suo.LivelloCorrente, 1);
}

TEST_P(LivelliTest, TurnsToExpandingWhenOnlyTheTopIsLeft) {
    for (int i = 0; i < 2; ++i)
        premi();
    EXPECT_EQ(didascalia(), "Espandi liv.1");
}

TEST_P(LivelliTest, WalksNodesThatAreNotOnScreen) {
    // The level below a closed one is closed too: opening the upper one does not show it.
    premi();
    premi();
    lato.albero->setExpanded(lato.albero->byKey(1), true);
    EXPECT_EQ(mostrati(), (Ids{1, 2, 5, 7}));
}

TEST_P(LivelliTest, LaysTheExpansionsOutOnce) {
    const int prima = scena.albero(lato).layouts();
    premi();
    EXPECT_EQ(scena.albero(lato).layouts(), prima + 1);
}

TEST_P(LivelliTest, LeavesFocusAndRecordWhereTheUserHadThem) {
    scena.albero(lato).focusKey(6);
    premi();
    EXPECT_EQ(lato.albero->key(lato.albero->focused()), 6);
    EXPECT_EQ((*lato.dati)["QZ02_ID"].integer(), 6);
}

TEST_P(LivelliTest, KeepsTheRecordUnderTheFocusWhenTheFocusedNodeIsHidden) {
    scena.albero(lato).focusKey(4);
    premi();
    const auto inFuoco = lato.albero->key(lato.albero->focused());
    EXPECT_EQ((*lato.dati)["QZ02_ID"].integer(), inFuoco);
    EXPECT_EQ(inFuoco, 2);
}

TEST_P(LivelliTest, LetsPendingEventsBeProcessed) {
    premi();
    EXPECT_EQ(scena.form().eventRounds(), 1);
}

TEST_P(LivelliTest, WalksADistintaOfMoreThan32767Records) {
    scena.tabelle.nodi.clear();
    for (std::int64_t i = 0; i < 33'000; ++i)
        scena.tabelle.nodi.push_back({i + 1, 10, {}, 1});
    scena.tabelle.nodi.push_back({40'000, 10, 33'000, 2});
    scena.carica(lato, "10");
    lato.LivelloCorrente = 1;
    qz::ComprimiLivello(lato);
    EXPECT_FALSE(lato.albero->expanded(lato.albero->byKey(33'000)));
}

TEST_P(LivelliTest, RefreshesByOneStepInTheCaptionsMode) {
    qz::AggiornaLivello(lato);
    EXPECT_EQ(lato.LivelloCorrente, 1);
    EXPECT_EQ(didascalia(), "Comprimi liv.2");
    scena.carica(lato, "30");
    qz::AggiornaLivello(lato);
    EXPECT_EQ(lato.LivelloCorrente, 1);
}

TEST_P(LivelliTest, WritesTheCaptionForTheLevelOpen) {
    const auto scrivi = [&](const char* modo, std::int16_t livello) {
        lato.livelli->setCaption(modo);
        lato.LivelloCorrente = livello;
        qz::AggiornaDidascaliaLivello(lato);
        return didascalia();
    };
    EXPECT_EQ(scrivi("Comprimi", 2), "Comprimi liv.3");
    EXPECT_EQ(scrivi("Comprimi", 1), "Comprimi liv.2");
    EXPECT_EQ(scrivi("Comprimi", 0), "Espandi liv.1");
    EXPECT_EQ(scrivi("Comprimi", -1), "Espandi liv.0");
    EXPECT_EQ(scrivi("Espandi", 1), "Espandi liv.2");
    EXPECT_EQ(scrivi("Espandi", 2), "Comprimi liv.3");
    EXPECT_EQ(scrivi("Espandi", 3), "Comprimi liv.4");
}

INSTANTIATE_TEST_SUITE_P(BothSides, LivelliTest, testing::Bool(),
                         [](const auto& caso) { return caso.param ? "Destinazione" : "Origine"; });

} // namespace
