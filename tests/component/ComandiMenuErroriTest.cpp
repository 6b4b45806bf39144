// What the commands of the menu bar do when a call fails on the way.

#include "component/Guasti.h"
#include "platform/headless/HeadlessTree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

using prove::Guasti;
using prove::Programma;
using prove::ProgrammaConGuasti;
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
    // What the line said before stays for the first command's focus events; the second one is as the third.
    EXPECT_TRUE(programma.classe->menuCommand("mnuAggiorna"));
    const auto prima = programma.host->journal->count("StatusBar.setText");
    EXPECT_TRUE(programma.classe->menuCommand("mnuAggiorna"));
    const auto ultima = programma.host->journal->count("StatusBar.setText") - prima;
    programma.host->journal->failCall("StatusBar.setText", static_cast<int>(ultima),
                                      contract::RuntimeError(5, "rotto"));
    EXPECT_TRUE(programma.classe->menuCommand("mnuAggiorna"));
    EXPECT_EQ(programma.errori(), Testi{"mnuAggiorna_Click"});
}

/// Goes to the next match of the origin with the n-th call failing; what was called, and where it ended.
struct Ricerca {
    Testi chiamate;
    Testi errori;
    std::int64_t fuoco = 0;
    std::string stato;
};

Ricerca cercaAncora(std::optional<std::size_t> guasto, int risposta) {
    Guasti guasti;
    ProgrammaConGuasti programma;
    prepara(programma);
    programma.stato().origine.cerca->setText("soggetto");
    programma.host->statusText.clear();
    programma.rispondi(risposta);
    guasti.registra(guasto);
    {
        const Guasti::Tratto tratto(true);
        EXPECT_TRUE(programma.classe->menuCommand("mnuTrovaSuccessivoOrig"));
    }
    guasti.ferma();
    const auto& albero = programma.albero("TRW_ELEMDISTINTAORIG");
    return {guasti.traccia(), programma.errori(), albero.key(albero.focused()), programma.host->statusText};
}

TEST(CercaAncoraConErrori, AgainRepeatsTheFailedCallAlone) {
    const auto pulita = cercaAncora({}, 3);
    EXPECT_EQ(pulita.fuoco, 2);
    EXPECT_EQ(pulita.stato, "2 di 3: 101 SOGGETTO 101 › 102 SOGGETTO 102");
    ASSERT_GE(pulita.chiamate.size(), 4U);
    for (std::size_t i = 0; i < pulita.chiamate.size(); ++i) {
        SCOPED_TRACE(pulita.chiamate[i]);
        const auto corsa = cercaAncora(i, 4);
        EXPECT_EQ(corsa.fuoco, 2);
        EXPECT_EQ(corsa.stato, pulita.stato);
        if (pulita.chiamate[i].find(".value(") != std::string::npos)
            continue; // reads for one text, all of them again
        auto attese = pulita.chiamate;
        attese.insert(attese.begin() + static_cast<std::ptrdiff_t>(i), pulita.chiamate[i]);
        EXPECT_TRUE(corsa.chiamate == attese);
    }
}

TEST(CercaAncoraConErrori, GoOnContinuesBehindTheFailedCallAndLeaveEndsTheSearch) {
    const auto pulita = cercaAncora({}, 3);
    const auto& tutte = pulita.chiamate;
    const auto rende = std::find(tutte.begin(), tutte.end(), "TRW_ELEMDISTINTAORIG.makeVisible(1)") - tutte.begin();
    ASSERT_LT(static_cast<std::size_t>(rende), tutte.size());
    const auto oltre = cercaAncora(static_cast<std::size_t>(rende), 5);
    EXPECT_TRUE(oltre.chiamate == tutte);
    EXPECT_EQ(oltre.errori, Testi{"CercaAncora"});
    EXPECT_EQ(oltre.stato, pulita.stato);
    const auto lasciata = cercaAncora(static_cast<std::size_t>(rende), 3);
    EXPECT_EQ(lasciata.chiamate.size(), static_cast<std::size_t>(rende) + 2) << "only the status line is emptied";
    EXPECT_EQ(lasciata.errori, Testi{"CercaAncora"});
    EXPECT_EQ(lasciata.stato, "");
    EXPECT_EQ(cercaAncora(tutte.size() - 1, 3).errori, Testi{"mnuTrova_Click"});
}

TEST(CercaConErrori, AFieldThatDoesNotTakeTheKeyboardIsReported) {
    Guasti guasti;
    ProgrammaConGuasti programma;
    prepara(programma);
    programma.rispondi(3);
    guasti.registra(0);
    {
        const Guasti::Tratto tratto(true);
        EXPECT_TRUE(programma.classe->menuCommand("mnuCercaOrig"));
    }
    guasti.ferma();
    EXPECT_EQ(guasti.traccia(), Testi{"txtCercaOrig.setFocus"});
    EXPECT_EQ(programma.errori(), Testi{"mnuCerca_Click"});
}

} // namespace
