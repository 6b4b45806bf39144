// What the commands of the menu bar do when a call fails on the way.

#include "component/Programma.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using prove::Programma;
using Testi = std::vector<std::string>;

namespace {

const std::string rilette = "Le distinte sono state rilette.";

/// The same distinta on both sides, three nodes each.
void prepara(Programma& programma) {
    programma.tabelle.tipi = {{10, "A", "X"}};
    programma.tabelle.nodi = {{1, 10, {}, 101}, {2, 10, 1, 102}, {3, 10, 1, 103}};
    programma.tabelle.collega(*programma.db);
    programma.mostra();
    programma.classe->form()->CaricaDistintaOrig("10");
    programma.classe->form()->CaricaDistintaDest("10");
}

TEST(AggiornaConErrori, ALossIsToldOnceAndNothingIsSaidToBeReadAgain) {
    for (const int risposta : {3, 5}) {
        Programma programma;
        prepara(programma);
        programma.host->statusText.clear();
        programma.host->errorAnswer = [risposta] { return risposta; };
        programma.db->loseConnectionAt(1);
        EXPECT_TRUE(programma.classe->menuCommand("mnuAggiorna"));
        EXPECT_EQ(programma.errori(), Testi{"CaricaDistintaOrig"}) << risposta;
        EXPECT_NE(programma.host->statusText, rilette) << risposta;
    }
}

TEST(AggiornaConErrori, OneSideThatIsNotReadIsNotSaidToBe) {
    for (const auto* istruzione : {" SELECT QZ01_IDDIV_CO1A FROM", " SELECT QZ01_IDDIV_CO1A, QZ01_GUID FROM"}) {
        Programma programma;
        prepara(programma);
        programma.host->statusText.clear();
        programma.host->errorAnswer = [] { return 3; };
        programma.db->fail(istruzione, {"HY000", 1, "guasto", contract::ErrorCategory::other});
        EXPECT_TRUE(programma.classe->menuCommand("mnuAggiorna"));
        EXPECT_EQ(programma.errori().size(), 1U) << istruzione;
        EXPECT_NE(programma.host->statusText, rilette) << istruzione;
        programma.db->forget();
        programma.tabelle.collega(*programma.db);
        EXPECT_TRUE(programma.classe->menuCommand("mnuAggiorna"));
        EXPECT_EQ(programma.host->statusText, rilette) << istruzione;
    }
}

TEST(AggiornaConErrori, AStatusLineThatFailsIsReported) {
    Programma programma;
    prepara(programma);
    programma.host->errorAnswer = [] { return 3; };
    const auto prima = programma.host->journal->count("StatusBar.setText");
    EXPECT_TRUE(programma.classe->menuCommand("mnuAggiorna"));
    const auto ultima = programma.host->journal->count("StatusBar.setText") - prima;
    programma.host->journal->failCall("StatusBar.setText", static_cast<int>(ultima),
                                      contract::RuntimeError(5, "rotto"));
    EXPECT_TRUE(programma.classe->menuCommand("mnuAggiorna"));
    EXPECT_EQ(programma.errori(), Testi{"mnuAggiorna_Click"});
}

} // namespace
