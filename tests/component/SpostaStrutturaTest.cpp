#include "component/SpostaStruttura.h"
#include "component/IstruzioniAttese.h"
#include "component/interaction/EseguiSpostamento.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using prove::SpostaStrutturaTest;
namespace attesa = prove::attesa;

namespace {

using Testi = std::vector<std::string>;
using Ids = std::vector<std::int64_t>;

const std::string ricorsivo = ": legame presente in un nodo padre nella struttura.\n";

TEST_F(SpostaStrutturaTest, MovesTheNodeWithItsSubtree) {
    premi();
    spostato(2, 12);
    seguito(3);
    seguito(4);
    EXPECT_EQ(scena.tabelle.il(1), atteso(1));
    EXPECT_EQ(scena.tabelle.il(5), atteso(5));
    EXPECT_EQ(scena.messaggi(), Testi{"Spostare il nodo 102 e tutti i suoi figli?"});
    EXPECT_EQ(scena.host->messages[0].style, 4);
    EXPECT_EQ(scena.host->messages[0].title, "Manutenzione distinte");
}

TEST_F(SpostaStrutturaTest, ReloadsBothTrees) {
    premi();
    EXPECT_EQ(prove::nodiDi(*scena.stato.origine.albero), (Ids{1, 5}));
    EXPECT_EQ(prove::nodiDi(*scena.stato.destinazione.albero), (Ids{11, 12, 2, 3, 4}));
}

TEST_F(SpostaStrutturaTest, SendsItsStatementsInOrder) {
    premi();
    const auto inviate = scena.db->take();
    const Testi attese{"BeginTrans", attesa::rilettura(2, 12),
                       // 102 under 202: 202 hangs under 201, which hangs under nothing
                       attesa::contaDitta(10), attesa::padri(202, 20), attesa::padri(201, 20), attesa::contaNodi(10),
                       // Children of 2: 103 under 102, which has no link in the destination yet
                       attesa::decodifica(2), attesa::figli(2, 10), attesa::contaDitta(10), attesa::padri(102, 20),
                       attesa::aggiornaDistinta(3, 10, 20),
                       // Children of 3: 104 under 103, whose link is the destination's by now
                       attesa::decodifica(3), attesa::figli(3, 10), attesa::contaDitta(10), attesa::padri(103, 20),
                       attesa::padri(102, 20), attesa::aggiornaDistinta(4, 10, 20),
                       // Children of 4: none
                       attesa::decodifica(4), attesa::figli(4, 10), attesa::spostaNodo(2, 12, 10, 20), "CommitTrans"};
    ASSERT_EQ(inviate.size(), attese.size() + 4);
    EXPECT_EQ((Testi{inviate.begin(), inviate.end() - 4}), attese);
    // Then the origin is loaded, and after it the destination.
    EXPECT_EQ(inviate[attese.size()], attesa::divisioneOrig + "10");
    EXPECT_TRUE(inviate[attese.size() + 1].starts_with(attesa::nodi));
    EXPECT_NE(inviate[attese.size() + 1].find("QZ02_ID_QZ01 = '10'"), std::string::npos);
    EXPECT_EQ(inviate[attese.size() + 2], attesa::divisioneDest + "20");
    EXPECT_TRUE(inviate[attese.size() + 3].starts_with(attesa::nodi));
    EXPECT_NE(inviate[attese.size() + 3].find("QZ02_ID_QZ01 = '20'"), std::string::npos);
}

TEST_F(SpostaStrutturaTest, MovesANodeWithoutChildrenAlone) {
    prepara(5, 12);
    premi();
    spostato(5, 12);
    EXPECT_EQ(scena.tabelle.il(2), atteso(2));
}

TEST_F(SpostaStrutturaTest, DoesNothingOnNo) {
    scena.host->answers = {7};
    premi();
    comePrima();
    EXPECT_TRUE(scena.db->take().empty());
    EXPECT_EQ(scena.host->messages.size(), 1U);
}

TEST_F(SpostaStrutturaTest, DoesNothingWithAnEmptyOrigin) {
    scena.carica(scena.stato.origine, "30");
    premi();
    EXPECT_TRUE(scena.host->messages.empty());
    EXPECT_TRUE(scena.db->take().empty());
}

TEST_F(SpostaStrutturaTest, RefusesDifferingKindsWithAMessage) {
    scena.stato.destinazione.TipoCF = 1;
    premi();
    EXPECT_EQ(scena.messaggi(), Testi{"Non è consentito effettuare la manutenzione tra distinte di tipologia "
                                      "diversa(cliente/fornitore)."});
    EXPECT_EQ(scena.host->messages[0].style, 48);
    EXPECT_TRUE(scena.db->take().empty());
}

TEST_F(SpostaStrutturaTest, ComparesTheKindsBeforeItAsks) {
    scena.carica(scena.stato.destinazione, "30");
    scena.stato.origine.TipoCF = 1;
    premi();
    EXPECT_EQ(scena.host->messages.size(), 1U);
    EXPECT_EQ(scena.host->messages[0].style, 48);
}

TEST_F(SpostaStrutturaTest, RefusesADestinationWithoutNodes) {
    scena.carica(scena.stato.destinazione, "30");
    premi();
    comePrima();
    EXPECT_EQ(scena.messaggi().back(), "La distinta di destinazione selezionata non contiene nodi capostipite!");
    EXPECT_EQ(scena.host->messages.back().style, 16);
    EXPECT_EQ(scena.db->statements("UPDATE").size(), 0U);
    EXPECT_EQ(scena.db->statements("RollbackTrans").size(), 1U);
    EXPECT_EQ(scena.db->statements("CommitTrans").size(), 0U);
}

TEST_F(SpostaStrutturaTest, RefusesADestinationThatWasNeverLoaded) {
    prove::Scena nuova;
    nuova.tabelle.tipi = scena.tabelle.tipi;
    nuova.tabelle.nodi = prima;
    nuova.carica(nuova.stato.origine, "10", 2);
    nuova.host->answers = {6};
    qz::Comandi suoi(nuova.stato);
    suoi.CMD_SPOSTASTRU_ButtonClick();
    EXPECT_EQ(nuova.messaggi().back(), "La distinta di destinazione selezionata non contiene nodi capostipite!");
    EXPECT_TRUE(nuova.host->errors.empty());
    EXPECT_EQ(nuova.tabelle.nodi, prima);
}

TEST_F(SpostaStrutturaTest, ShowsTheMessageBeforeItRollsBack) {
    scena.carica(scena.stato.destinazione, "30");
    bool aperta = false;
    scena.db->transaction = [&](std::string_view parola) {
        if (parola == "RollbackTrans")
            aperta = scena.host->messages.size() == 2;
    };
    premi();
    EXPECT_TRUE(aperta);
}

TEST_F(SpostaStrutturaTest, RollsARefusalBackBeforeItLoadsTheTrees) {
    scena.carica(scena.stato.destinazione, "10", 4);
    premi();
    const auto inviate = scena.db->take();
    ASSERT_GE(inviate.size(), 6U);
    EXPECT_EQ(inviate.front(), "BeginTrans");
    EXPECT_EQ(inviate[inviate.size() - 5], "RollbackTrans");
    EXPECT_EQ(inviate[inviate.size() - 4], attesa::divisioneOrig + "10");
    EXPECT_EQ(inviate[inviate.size() - 2], attesa::divisioneDest + "10");
}

TEST_F(SpostaStrutturaTest, RefusesTheNodeUnderItsOwnAccount) {
    scena.tabelle.nodi.push_back({13, 20, 12, 102});
    prepara(2, 13);
    premi();
    comePrima();
    EXPECT_EQ(scena.messaggi().back(), "Cliente 102 coincide con la destinazione. Spostamento annullato.\n");
    EXPECT_EQ(scena.host->messages.back().style, 16);
}

TEST_F(SpostaStrutturaTest, RefusesTheNodeUnderItsOwnDescendant) {
    scena.carica(scena.stato.destinazione, "10", 4);
    premi();
    comePrima();
    EXPECT_EQ(scena.messaggi().back(), "Cliente 102" + ricorsivo);
}

TEST_F(SpostaStrutturaTest, MovesWithinOneDistinta) {
    scena.carica(scena.stato.destinazione, "10", 5);
    premi();
    EXPECT_EQ(scena.tabelle.il(2).padre, 5);
    EXPECT_EQ(scena.tabelle.il(2).distinta, 10);
    EXPECT_EQ(prove::nodiDi(*scena.stato.origine.albero), (Ids{1, 5, 2, 3, 4}));
}

/// 2's children are 3 (103) and 6 (106).
class SpostaFratelliTest : public SpostaStrutturaTest {
protected:
    SpostaFratelliTest() { scena.tabelle.nodi = {{1, 10, {}, 101}, {2, 10, 1, 102}, {3, 10, 2, 103}, {6, 10, 2, 106}}; }

    /// A child of this account cannot go under 102: in the destination 102 hangs below it already.
    void rifiuta(std::int64_t account) {
        scena.tabelle.nodi.push_back({40, 20, {}, account});
        scena.tabelle.nodi.push_back({41, 20, 40, 102});
        scena.tabelle.nodi.push_back({12, 20, {}, 202});
        prepara();
    }
};

TEST_F(SpostaFratelliTest, SkipsAFailingChildSilentlyWhenALaterOnePasses) {
    rifiuta(103);
    premi();
    spostato(2, 12);
    EXPECT_EQ(scena.tabelle.il(3), atteso(3));
    seguito(6);
    EXPECT_EQ(scena.host->messages.size(), 1U);
}

TEST_F(SpostaFratelliTest, RollsBackForAFailureOfTheLastChild) {
    rifiuta(106);
    premi();
    comePrima();
    EXPECT_EQ(scena.messaggi().back(), "Cliente 106" + ricorsivo);
}

TEST_F(SpostaFratelliTest, NeverShowsTheHeading) {
    rifiuta(106);
    premi();
    for (const auto& testo : scena.messaggi())
        EXPECT_EQ(testo.find("Non è stato possibile"), std::string::npos);
}

TEST_F(SpostaFratelliTest, VisitsTheChildrenOfASkippedChild) {
    scena.tabelle.nodi.push_back({7, 10, 3, 107});
    rifiuta(103);
    premi();
    EXPECT_EQ(scena.tabelle.il(3), atteso(3));
    seguito(7);
}

TEST_F(SpostaStrutturaTest, EndsSilentlyAndCommitsWhenTheQueueIsFull) {
    scena.tabelle.nodi = {{2, 10, {}, 102}, {3, 10, 2, 103}, {4, 10, 3, 104}, {11, 20, {}, 201}};
    prepara(2, 11);
    // As on a cycle, every question about children finds one more, each time with another account.
    auto& db = *scena.db;
    std::int32_t account = 500;
    db.answer("SELECT  *  FROM  QZ02_DISTINTA  WHERE QZ02_IDPARENT_QZ02", [&account](const std::string&) {
        return platform::headless::rows(prove::colonneNodo, {{3, 10, 2, 1, 0, ++account, {}, {}, {}, {}, {}, {}, {}}});
    });
    premi();
    EXPECT_EQ(scena.host->messages.size(), 1U);
    EXPECT_EQ(db.statements("CommitTrans").size(), 1U);
    // The distinta has three rows, the queue four places: four children are taken, the fifth ends the walk.
    EXPECT_EQ(db.statements("UPDATE QZ02_DISTINTA  SET QZ02_ID_QZ01").size(), 4U);
    spostato(2, 11);
}

TEST_F(SpostaStrutturaTest, RefusesANodeThatHasLeftTheDistintaMeanwhile) {
    for (const std::int64_t id : {2, 12}) {
        prepara();
        scena.tabelle.il(id).distinta = 30;
        prima = scena.tabelle.nodi;
        premi();
        comePrima();
        EXPECT_EQ(scena.host->messages.back().style, 16);
        EXPECT_NE(scena.messaggi().back().find(std::to_string(*scena.tabelle.il(id).account)), std::string::npos);
        EXPECT_EQ(scena.db->statements("UPDATE").size(), 0U);
        scena.tabelle.il(id).distinta = id == 2 ? 10 : 20;
    }
}

TEST_F(SpostaStrutturaTest, RefusesANodeThatWasDeletedMeanwhile) {
    std::erase_if(scena.tabelle.nodi, [](const auto& nodo) { return nodo.id == 12; });
    prima = scena.tabelle.nodi;
    premi();
    comePrima();
    EXPECT_EQ(scena.host->messages.back().style, 16);
    EXPECT_EQ(prove::nodiDi(*scena.stato.destinazione.albero), Ids{11});
}

TEST_F(SpostaStrutturaTest, ActsOnTheNodeInFocusAfterAWalkMovedTheCursor) {
    scena.stato.origine.livelli->setCaption("Comprimi liv.3");
    scena.alberoOrig().focusKey(5);
    scena.stato.origine.dati->MoveFirst();
    scena.alberoOrig().setFocused(scena.alberoOrig().byKey(5));
    premi();
    spostato(5, 12);
}

TEST_F(SpostaStrutturaTest, WritesAUserWithAQuote) {
    scena.host->user = "O'Brien";
    premi();
    EXPECT_EQ(scena.db
                  ->statements("UPDATE QZ02_DISTINTA  SET QZ02_IDPARENT_QZ02 = 12,     QZ02_ID_QZ01 = '20',     "
                               "QZ02_DATAVAR = CONVERT(DateTime,'15/06/2024',103),     QZ02_GRUPPOVAR = 'GRUPPO',   "
                               "  QZ02_UTENTEVAR = 'O''Brien' WHERE QZ02_ID_QZ01 = '10'   AND QZ02_ID = 2")
                  .size(),
              1U);
}

TEST_F(SpostaStrutturaTest, RestoresTheTopRowsOfBothTrees) {
    for (std::int64_t i = 0; i < 60; ++i) {
        scena.tabelle.nodi.push_back({300 + i, 10, {}, 300 + i});
        scena.tabelle.nodi.push_back({400 + i, 20, {}, 400 + i});
    }
    prepara(359, 459);
    scena.alberoOrig().setTopRow(17);
    scena.alberoDest().setTopRow(23);
    premi();
    spostato(359, 459);
    EXPECT_EQ(scena.alberoOrig().topRow(), 17);
    EXPECT_EQ(scena.alberoDest().topRow(), 23);
}

TEST_F(SpostaStrutturaTest, RestoresNoTopRowThatWasTheFirst) {
    for (std::int64_t i = 0; i < 60; ++i)
        scena.tabelle.nodi.push_back({400 + i, 20, {}, 400 + i});
    prepara(2, 459);
    scena.alberoDest().setTopRow(0);
    premi();
    // The loading brings the focused node into view, and that stays.
    EXPECT_EQ(scena.alberoDest().key(scena.alberoDest().focused()), 459);
    EXPECT_TRUE(scena.alberoDest().cell(scena.alberoDest().focused(), "RagioneSociale"));
}

TEST_F(SpostaStrutturaTest, RestoresTheTopRowEvenWhereItHidesTheFocusedNode) {
    for (std::int64_t i = 0; i < 60; ++i)
        scena.tabelle.nodi.push_back({300 + i, 10, {}, 300 + i});
    prepara(359, 12);
    scena.carica(scena.stato.destinazione, "10", 5);
    scena.alberoOrig().setTopRow(40);
    premi();
    EXPECT_EQ(scena.alberoOrig().key(scena.alberoOrig().focused()), 359);
    EXPECT_EQ(scena.alberoOrig().level(scena.alberoOrig().focused()), 1);
    EXPECT_EQ(scena.alberoOrig().topRow(), 40);
    EXPECT_FALSE(scena.alberoOrig().cell(scena.alberoOrig().focused(), "RagioneSociale"));
}

TEST_F(SpostaStrutturaTest, RestoresTheTopRowsAfterARefusalToo) {
    for (std::int64_t i = 0; i < 60; ++i)
        scena.tabelle.nodi.push_back({300 + i, 10, {}, 300 + i});
    prepara(359, 12);
    scena.tabelle.nodi.push_back({13, 20, 12, 359});
    scena.carica(scena.stato.destinazione, "20", 13);
    scena.alberoOrig().setTopRow(17);
    premi();
    EXPECT_EQ(scena.host->messages.back().style, 16);
    EXPECT_EQ(scena.alberoOrig().topRow(), 17);
}

TEST_F(SpostaStrutturaTest, GuardsTheMoveItselfAgainstAnEmptyOriginAndDifferingKinds) {
    scena.stato.destinazione.TipoCF = 1;
    qz::EseguiSpostamento(scena.stato, false);
    qz::EseguiSpostamento(scena.stato, true);
    scena.stato.destinazione.TipoCF = 0;
    scena.carica(scena.stato.origine, "30");
    qz::EseguiSpostamento(scena.stato, false);
    EXPECT_TRUE(scena.db->take().empty());
    EXPECT_TRUE(scena.host->messages.empty());
}

TEST_F(SpostaStrutturaTest, LeavesTheEndOfLinkTextAlone) {
    scena.stato.DataFineLegame = "30/06/2024";
    premi();
    EXPECT_EQ(scena.stato.DataFineLegame, "30/06/2024");
    spostato(2, 12);
}

} // namespace
