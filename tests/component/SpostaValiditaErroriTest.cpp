// The workflow states that a move with validity carries over, and the move under errors.

#include "component/SpostaValidita.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

using prove::SpostaValiditaTest;

namespace {

using Testi = std::vector<std::string>;

// Workflow state

TEST_F(SpostaValiditaTest, CarriesTheFocusedNodesStateOverToEveryCopy) {
    scena.tabelle.il(2).guid = "GUID-2";
    scena.tabelle.il(3).guid = "GUID-3";
    prepara();
    premi();
    EXPECT_EQ(
        operazioni(),
        (Testi{"WorkflowState.GetNewGUID()", "WorkflowState.DuplicaStato(GUID-2, 00000000-0000-4000-8000-000000000001)",
               "WorkflowState.GetNewGUID()", "WorkflowState.DuplicaStato(GUID-2, 00000000-0000-4000-8000-000000000002)",
               "WorkflowState.GetNewGUID()",
               "WorkflowState.DuplicaStato(GUID-2, 00000000-0000-4000-8000-000000000003)"}));
    const auto* nodo = copia(104);
    ASSERT_TRUE(nodo);
    EXPECT_EQ(nodo->guid, "00000000-0000-4000-8000-000000000003");
}

TEST_F(SpostaValiditaTest, GivesEveryCopyTheDefaultStateWithoutAGuid) {
    scena.tabelle.il(3).guid = "GUID-3";
    scena.tabelle.nodi.erase(scena.tabelle.nodi.begin() + 3);
    prepara();
    premi();
    EXPECT_EQ(operazioni(), (Testi{"WorkflowState.GetNewGUID()", "WorkflowState.GetDefaultFlussoStato()",
                                   "WorkflowState.ConfermaStato()", "WorkflowState.GetNewGUID()",
                                   "WorkflowState.GetDefaultFlussoStato()", "WorkflowState.ConfermaStato()"}));
}

TEST_F(SpostaValiditaTest, MakesNoGuidForARefusedLink) {
    scena.tabelle.nodi.push_back({70, 20, 11, 102, "01/01/2025", "31/12/2025"});
    prepara();
    premi();
    EXPECT_TRUE(operazioni().empty());
}

TEST_F(SpostaValiditaTest, KeepsNothingWhenAStateOperationFails) {
    for (const auto* operazione :
         {"WorkflowState.GetNewGUID", "WorkflowState.GetDefaultFlussoStato", "WorkflowState.ConfermaStato"}) {
        SCOPED_TRACE(operazione);
        for (int nth = 1; nth <= 3; ++nth) {
            prepara();
            scena.host->errors.clear();
            scena.host->journal->failCall(operazione, nth, contract::RuntimeError(5, "flusso fermo"));
            premi();
            comePrima();
            EXPECT_EQ(scena.errori(), Testi{"CMD_SPOSTAVALID_ButtonClick"});
        }
    }
}

// Errors

class ValiditaConErrore : public SpostaValiditaTest, public testing::WithParamInterface<bool> {};

TEST_P(ValiditaConErrore, KeepsNothingWhateverStatementFails) {
    premi();
    const auto operazioniDelloSpostamento = static_cast<int>(scena.db->take().size()) - 4; // without the reload
    EXPECT_GT(operazioniDelloSpostamento, 20);
    scena.tabelle.nodi = prima;
    for (int nth = 1; nth <= operazioniDelloSpostamento; ++nth) {
        SCOPED_TRACE(nth);
        prepara();
        scena.host->errors.clear();
        if (GetParam())
            scena.db->loseConnectionAt(nth);
        else
            scena.db->failNth(nth, {"HY000", 1, "guasto", contract::ErrorCategory::other});
        premi();
        comePrima();
        ASSERT_FALSE(scena.errori().empty());
        EXPECT_EQ(scena.errori().front(), "CMD_SPOSTAVALID_ButtonClick");
        scena.db->forget();
        scena.tabelle.collega(*scena.db);
    }
    prepara();
    premi();
    EXPECT_NE(copia(104), nullptr);
}

INSTANTIATE_TEST_SUITE_P(LostConnection, ValiditaConErrore, testing::Bool());

TEST_F(SpostaValiditaTest, ClosesAtTheDateTypedWhenRunAgain) {
    scena.tabelle.il(2).fine = "31/12/2027";
    prepara();
    scena.host->answers = {6, 4};
    scena.db->fail("INSERT INTO QZ02_DISTINTA", {"40001", 1205, "stallo", contract::ErrorCategory::deadlock});
    bool unaVolta = true;
    scena.db->transaction = [&, prima = scena.db->transaction](std::string_view parola) {
        prima(parola);
        if (parola == "RollbackTrans" && std::exchange(unaVolta, false)) {
            scena.db->forget();
            scena.tabelle.collega(*scena.db);
        }
    };
    premi();
    EXPECT_EQ(fineDi(2), "30/06/2024");
    const auto* nodo = copia(102);
    ASSERT_TRUE(nodo);
    EXPECT_EQ(nodo->fine, "31/12/2027");
}

} // namespace
