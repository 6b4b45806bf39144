#include "component/Scena.h"
#include "data/CaricaDistinta.h"
#include "maintenance/Comandi.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

using prove::NodoFinto;
using prove::Scena;

namespace {

using Testi = std::vector<std::string>;
using Ids = std::vector<std::int64_t>;

const std::string ricorsivo = ": legame presente in un nodo padre nella struttura.\n";

/// Origin 10: 1 (101) with 2 (102) with 3 (103) and 4 (104); 5 (105) stands apart. Destination 20: 11 (201) with 12
/// (202). The moved node is 2, its new parent 12.
class SpostaStrutturaTest : public testing::Test {
protected:
    SpostaStrutturaTest() {
        scena.tabelle.tipi = {{10, "A", "ORIGINE"}, {20, "B", "DESTINAZIONE"}, {30, "C", "VUOTA"}};
        scena.tabelle.nodi = {{1, 10, {}, 101}, {2, 10, 1, 102},   {3, 10, 2, 103},  {4, 10, 3, 104},
                              {5, 10, {}, 105}, {11, 20, {}, 201}, {12, 20, 11, 202}};
        prepara();
    }

    void prepara(std::int64_t origine = 2, std::int64_t destinazione = 12) {
        scena.carica(scena.stato.origine, "10", origine);
        scena.carica(scena.stato.destinazione, "20", destinazione);
        scena.host->answers = {6};
        prima = scena.tabelle.nodi;
    }
    NodoFinto atteso(std::int64_t id) const {
        for (const auto& nodo : prima)
            if (nodo.id == id)
                return nodo;
        return {};
    }
    void spostato(std::int64_t id, std::int64_t padre) {
        auto nodo = atteso(id);
        nodo.padre = padre;
        nodo.distinta = 20;
        nodo.dataVar = "15/06/2024";
        nodo.gruppoVar = "GRUPPO";
        nodo.utenteVar = "UTENTE";
        EXPECT_EQ(scena.tabelle.il(id), nodo);
    }
    void seguito(std::int64_t id) {
        auto nodo = atteso(id);
        nodo.distinta = 20;
        EXPECT_EQ(scena.tabelle.il(id), nodo);
    }
    void comePrima() {
        EXPECT_EQ(scena.tabelle.nodi, prima);
        EXPECT_FALSE(scena.db->InTransaction());
    }
    void premi() { comandi.CMD_SPOSTASTRU_ButtonClick(); }

    Scena scena;
    qz::Comandi comandi{scena.stato};
    std::vector<NodoFinto> prima;
};

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
    Testi inizi;
    for (const auto& testo : scena.db->take())
        inizi.push_back(testo.substr(0, 45));
    const std::string conta = " SELECT Count(*) as Conta  FROM QZ02_DISTINTA";
    const std::string padri = " SELECT  CG44_CLIFOR AS Anagrafica, CG16_RAGS";
    const std::string decodifica = "SELECT QZ02_DISTINTA_DEST.QZ02_ID AS ID , QZ0";
    const std::string figli = "SELECT  *  FROM  QZ02_DISTINTA  WHERE QZ02_ID";
    const std::string aggiorna = "UPDATE QZ02_DISTINTA  SET QZ02_ID_QZ01 = '20'";
    const Testi attesi{"BeginTrans",
                       "SELECT QZ02_ID, QZ02_ID_QZ01 FROM QZ02_DISTIN",
                       conta,
                       padri,
                       padri, // check of 102 under 202: 202's parent 201, then 201's
                       conta, // queue
                       decodifica,
                       figli, // children of 2
                       conta,
                       padri,
                       aggiorna, // 103 under 102, which is a child of 101 that is no destination link
                       decodifica,
                       figli,
                       conta,
                       padri,
                       padri,
                       padri,
                       aggiorna, // 104 under 103
                       decodifica,
                       figli,
                       "UPDATE QZ02_DISTINTA  SET QZ02_IDPARENT_QZ02 ",
                       "CommitTrans",
                       " SELECT QZ01_IDDIV_CO1A FROM QZ01_TIPODISTINT",
                       " SELECT QZ02_ID,   (SELECT CG16_RAGSOANAG    ",
                       " SELECT QZ01_IDDIV_CO1A, QZ01_GUID FROM QZ01_",
                       " SELECT QZ02_ID,   (SELECT CG16_RAGSOANAG    "};
    EXPECT_EQ(inizi.front(), "BeginTrans");
    EXPECT_EQ(inizi[1], attesi[1]);
    EXPECT_EQ((Testi{inizi.begin() + 2, inizi.begin() + 8}), (Testi{conta, padri, padri, conta, decodifica, figli}));
    const Testi coda(attesi.end() - 6, attesi.end());
    EXPECT_EQ((Testi{inizi.end() - 6, inizi.end()}), coda);
    EXPECT_EQ(std::count(inizi.begin(), inizi.end(), aggiorna), 2);
    EXPECT_EQ(std::count(inizi.begin(), inizi.end(), decodifica), 3);
    EXPECT_EQ(std::count(inizi.begin(), inizi.end(), figli), 3);
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
    Scena nuova;
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
        return platform::headless::rows({"QZ02_ID", "QZ02_CLIFOR_CG44"}, {{3, ++account}});
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

TEST_F(SpostaStrutturaTest, LeavesTheEndOfLinkTextAlone) {
    scena.stato.DataFineLegame = "30/06/2024";
    premi();
    EXPECT_EQ(scena.stato.DataFineLegame, "30/06/2024");
    spostato(2, 12);
}

// Errors

class SpostamentoConErrore : public SpostaStrutturaTest, public testing::WithParamInterface<bool> {};

TEST_P(SpostamentoConErrore, KeepsNothingWhateverStatementFails) {
    premi();
    const auto operazioni = static_cast<int>(scena.db->take().size()) - 4; // without the reload
    scena.tabelle.nodi = prima;
    for (int nth = 1; nth <= operazioni; ++nth) {
        SCOPED_TRACE(nth);
        prepara();
        scena.host->errors.clear();
        scena.db->endTransactionOnError(GetParam());
        scena.db->failNth(nth, {"HY000", 1, "guasto", contract::ErrorCategory::other});
        premi();
        comePrima();
        EXPECT_EQ(scena.errori(), Testi{"CMD_SPOSTASTRU_ButtonClick"});
        ASSERT_FALSE(scena.host->errors[0].databaseErrors.empty());
        EXPECT_EQ(scena.host->errors[0].databaseErrors[0].description, "guasto");
        EXPECT_EQ(prove::nodiDi(*scena.stato.origine.albero), (Ids{1, 2, 3, 4, 5}));
        EXPECT_EQ(prove::nodiDi(*scena.stato.destinazione.albero), (Ids{11, 12}));
        ASSERT_TRUE(scena.alberoOrig().focusKey(2));
    }
    prepara();
    premi();
    spostato(2, 12);
}

INSTANTIATE_TEST_SUITE_P(ServerEnds, SpostamentoConErrore, testing::Bool());

TEST_F(SpostaStrutturaTest, RunsTheWholeMoveAgainOnRetry) {
    scena.host->answers = {6, 4};
    scena.db->failNth(12, {"40001", 1205, "stallo", contract::ErrorCategory::deadlock});
    premi();
    spostato(2, 12);
    EXPECT_EQ(scena.db->statements("BeginTrans").size(), 2U);
    EXPECT_EQ(scena.db->statements("CommitTrans").size(), 1U);
}

TEST_F(SpostaStrutturaTest, EndsTheMoveOnIgnore) {
    scena.host->answers = {6, 5};
    scena.db->failNth(12, {"40001", 1205, "stallo", contract::ErrorCategory::deadlock});
    premi();
    comePrima();
    EXPECT_EQ(scena.db->statements("BeginTrans").size(), 1U);
}

TEST_F(SpostaStrutturaTest, KeepsNothingWhenTheConnectionIsLost) {
    premi();
    const auto operazioni = static_cast<int>(scena.db->take().size()) - 4;
    scena.tabelle.nodi = prima;
    for (int nth = 1; nth <= operazioni; ++nth) {
        SCOPED_TRACE(nth);
        prepara();
        scena.host->errors.clear();
        scena.db->loseConnectionAt(nth);
        premi();
        comePrima();
        ASSERT_FALSE(scena.errori().empty());
        EXPECT_EQ(scena.errori().front(), "CMD_SPOSTASTRU_ButtonClick");
        EXPECT_EQ(scena.host->errors[0].databaseErrors.at(0).category, contract::ErrorCategory::lostConnection);
        scena.db->forget();
        scena.tabelle.collega(*scena.db);
    }
}

} // namespace
