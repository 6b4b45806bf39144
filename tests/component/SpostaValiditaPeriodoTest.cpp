// A move never opens a link that would end before it starts.

#include "component/IstruzioniAttese.h"
#include "component/SpostaValidita.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

using prove::giorno;
using prove::SpostaValiditaTest;
namespace attesa = prove::attesa;

namespace {

using Testi = std::vector<std::string>;

const std::string domanda = "Spostare il nodo 102 e tutti i suoi figli?";

class PeriodoRovesciatoTest : public SpostaValiditaTest {
protected:
    /// Moves and expects the refusal, with nothing changed and no link closed on the way.
    void rifiuta(const std::string& fine, const std::string& inizio) {
        scena.db->take();
        premi();
        EXPECT_EQ(scena.messaggi(),
                  (Testi{domanda, "Il nuovo legame finirebbe il " + fine + ", prima del suo inizio il " + inizio +
                                      ". Spostamento annullato.\n"}));
        EXPECT_EQ(scena.host->messages.back().style, 16);
        comePrima();
        const auto inviate = scena.db->take();
        EXPECT_EQ(std::count(inviate.begin(), inviate.end(), "RollbackTrans"), 1);
        EXPECT_TRUE(std::none_of(inviate.begin(), inviate.end(), [](const std::string& testo) {
            return testo.starts_with("UPDATE") || testo.starts_with("INSERT");
        }));
        EXPECT_TRUE(operazioni().empty());
        // As after every refused move, the text is the end that the new links would have had.
        EXPECT_EQ(scena.stato.DataFineLegame, fine);
    }
};

TEST_F(PeriodoRovesciatoTest, WithTheEndOfTheMovedNode) {
    scena.tabelle.il(2).fine = "30/06/2022";
    prepara();
    dataScelta = "30/06/2025";
    rifiuta("30/06/2022", "01/07/2025");
}

TEST_F(PeriodoRovesciatoTest, WithTheEndOfTheMovedNodeOnTheLastDayItself) {
    scena.tabelle.il(2).fine = "30/06/2024";
    prepara();
    rifiuta("30/06/2024", "01/07/2024");
}

TEST_F(PeriodoRovesciatoTest, WithTheFixedEnd) {
    scena.stato.parametri.TipoCaricaDATA = 1;
    scena.stato.parametri.DataFissaFINE = giorno("01/01/2020");
    rifiuta("01/01/2020", "01/07/2024");
}

TEST_F(PeriodoRovesciatoTest, ALinkOfOneDayIsOpened) {
    scena.stato.parametri.TipoCaricaDATA = 1;
    scena.stato.parametri.DataFissaFINE = giorno("01/07/2024");
    premi();
    EXPECT_EQ(scena.messaggi(), Testi{domanda});
    for (const auto account : {102, 103, 104}) {
        ASSERT_NE(copia(account), nullptr) << account;
        EXPECT_EQ(copia(account)->fine, "01/07/2024") << account;
    }
}

// The end of the new links is one for the whole subtree: a descendant's own end is not looked at.
TEST_F(PeriodoRovesciatoTest, TheDescendantsTakeThePeriodOfTheMovedNode) {
    scena.tabelle.il(3).fine = "31/12/2021";
    prepara();
    premi();
    EXPECT_EQ(scena.messaggi(), Testi{domanda});
    ASSERT_NE(copia(103), nullptr);
    EXPECT_EQ(copia(103)->fine, "31/12/2099");
}

TEST_F(PeriodoRovesciatoTest, AnAccountFoundAboveTheDestinationIsSaidFirst) {
    scena.tabelle.il(2).fine = "30/06/2022";
    scena.tabelle.il(11).account = 102;
    prepara();
    premi();
    EXPECT_EQ(scena.messaggi().back(), "Cliente 102 coincide con la destinazione. Spostamento annullato.\n");
    comePrima();
}

// An end that no one could read is no day on which a link could end.
TEST_F(PeriodoRovesciatoTest, AFixedEndThatWasNeverReadOpensNoLink) {
    scena.stato.parametri.TipoCaricaDATA = 1;
    scena.stato.parametri.DataFissaFINE.reset();
    premi();
    EXPECT_EQ(scena.errori(), Testi{"CMD_SPOSTAVALID_ButtonClick"});
    comePrima();
}

} // namespace
