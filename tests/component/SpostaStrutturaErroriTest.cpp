// A structural move under errors: nothing of it is kept, no transaction stays open, and the form goes on working.

#include "component/SpostaStruttura.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using prove::SpostaStrutturaTest;

namespace {

using Testi = std::vector<std::string>;
using Ids = std::vector<std::int64_t>;

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
