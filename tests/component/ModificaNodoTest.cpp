// What a change of the focused node or column does.

#include "component/NodoModificato.h"
#include "component/data/CaricaDistinta.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

using platform::headless::rows;
using prove::giorno;
using prove::ModificaNodoTest;

namespace {

using Testi = std::vector<std::string>;

TEST_F(ModificaNodoTest, ReadsTheOriginsParametersOnlyWhenTheFocusHasComeToRest) {
    scena.carica(scena.stato.origine, "10");
    scena.alberoOrig().settle();
    scena.db->take();
    scena.alberoOrig().focusKey(2);
    EXPECT_EQ(inizi(), Testi{dettaglio});
    scena.alberoOrig().settle();
    EXPECT_EQ(inizi(), (Testi{parametri, dettaglio}));
}

TEST_F(ModificaNodoTest, ReadsTheDestinationsParametersBothTimes) {
    albero.focusKey(11);
    EXPECT_EQ(inizi(), (Testi{parametri, dettaglio, premio}));
    albero.settle();
    EXPECT_EQ(inizi(), (Testi{parametri, dettaglio}));
}

TEST_F(ModificaNodoTest, ShowsEachSidesAccountWithItsOwnDivision) {
    scena.carica(scena.stato.origine, "10");
    scena.alberoOrig().focusKey(2);
    auto testo = scena.db->statements(dettaglio).back();
    EXPECT_NE(testo.find("CO1C_IDDIV_CO1A = 'DO'"), std::string::npos);
    EXPECT_TRUE(testo.ends_with("CG44_CLIFOR = 102"));
    albero.focusKey(11);
    testo = scena.db->statements(dettaglio).back();
    EXPECT_NE(testo.find("CO1C_IDDIV_CO1A = 'DD'"), std::string::npos);
    EXPECT_TRUE(testo.ends_with("CG44_CLIFOR = 201"));
}

TEST_F(ModificaNodoTest, ShowsTheFocusedNodesIdInItsField) {
    EXPECT_EQ(scena.stato.campoId->text(), "12");
    albero.focusKey(13);
    EXPECT_EQ(scena.stato.campoId->text(), "13");
}

TEST_F(ModificaNodoTest, EmptiesTheIdsFieldWithTheTree) {
    albero.clearNodes();
    EXPECT_EQ(scena.stato.campoId->text(), "");
}

TEST_F(ModificaNodoTest, RemembersTheDatesOfTheFocusedNode) {
    EXPECT_EQ(scena.stato.DataInizioNodoDest, giorno("10/05/2024"));
    EXPECT_EQ(scena.stato.DataFineNodoDest, giorno("20/05/2024"));
    albero.focusKey(13); // null dates leave the remembered ones
    EXPECT_EQ(scena.stato.DataInizioNodoDest, giorno("10/05/2024"));
    EXPECT_EQ(scena.stato.DataFineNodoDest, giorno("20/05/2024"));
}

TEST_F(ModificaNodoTest, ClearsTheGridOfAnEmptySide) {
    for (auto* lato : {&scena.stato.destinazione, &scena.stato.origine}) {
        scena.carica(*lato, lato == &scena.stato.origine ? "10" : "20");
        lato->dettaglio->setRowCount(3);
        qz::CaricaDistinta(scena.stato, *lato, "30");
        EXPECT_EQ(lato->dettaglio->rowCount(), 0U);
    }
    EXPECT_EQ(scena.stato.DataInizioNodoDest, giorno("10/05/2024"));
    EXPECT_TRUE(scena.host->errors.empty());
}

TEST_F(ModificaNodoTest, DoesNothingWhileNodeChangesAreSuspended) {
    scena.stato.sospendiCambioNodo = true;
    albero.focusKey(11);
    albero.settle();
    EXPECT_TRUE(scena.db->take().empty());
    EXPECT_EQ(scena.stato.campoId->text(), "12");
}

TEST_F(ModificaNodoTest, LocksTheStartColumnOfANodeWithADefinitiveBonus) {
    EXPECT_FALSE(albero.columnLocked(3));
    scena.tabelle.premi = {{11, "31/12/2010", 2}};
    albero.focusKey(11);
    EXPECT_TRUE(albero.columnLocked(3));
    EXPECT_EQ(albero.columns()[3].name, colonnaInizio);
    EXPECT_FALSE(scrivi(colonnaInizio, "01/01/2023", 11));
    EXPECT_EQ(cella(colonnaInizio, 11), "01/01/2020");
    albero.focusKey(12);
    EXPECT_FALSE(albero.columnLocked(3));
}

TEST_F(ModificaNodoTest, AsksForTheBonusWithoutADate) {
    albero.focusKey(11);
    EXPECT_EQ(scena.db->statements(premio).back().find("QZ18_DATASCADENZA"), std::string::npos);
}

TEST_F(ModificaNodoTest, ReportsAnErrorUnderTheHandlersName) {
    // The steps below trap their own errors; the bonus question belongs to the handler.
    scena.db->fail(premio, {"HY000", 1, "guasto", contract::ErrorCategory::other});
    albero.focusKey(11);
    EXPECT_EQ(scena.errori(), Testi{"TRW_ELEMDISTINTADEST_OnChangeNode"});
}

TEST_F(ModificaNodoTest, TakesTheNodeThenFocusedForQueuedKeyRepeats) {
    scena.carica(scena.stato.destinazione, "20", 11);
    albero.settle();
    scena.db->take();
    albero.focusThrough({albero.byKey(12), albero.byKey(13)});
    EXPECT_EQ(inizi(), (Testi{parametri, dettaglio, premio}));
    EXPECT_EQ(scena.stato.campoId->text(), "13");
}

TEST_F(ModificaNodoTest, RemembersTheOneDateThatIsThere) {
    scena.tabelle.nodi.push_back({14, 20, 11, 204, "", "31/12/2030"});
    scena.tabelle.nodi.push_back({15, 20, 11, 205, "01/02/2003", ""});
    scena.carica(scena.stato.destinazione, "20", 12);
    albero.focusKey(14);
    EXPECT_EQ(scena.stato.DataInizioNodoDest, giorno("10/05/2024"));
    EXPECT_EQ(scena.stato.DataFineNodoDest, giorno("31/12/2030"));
    albero.focusKey(15);
    EXPECT_EQ(scena.stato.DataInizioNodoDest, giorno("01/02/2003"));
    EXPECT_EQ(scena.stato.DataFineNodoDest, giorno("31/12/2030"));
}

TEST_F(ModificaNodoTest, RemembersNothingWhenTheFocusComesToRest) {
    scena.stato.DataFineNodoDest = giorno("01/01/2001");
    modifica.TRW_ELEMDISTINTADEST_OnChangeNodeEx();
    EXPECT_EQ(scena.stato.DataFineNodoDest, giorno("01/01/2001"));
    modifica.TRW_ELEMDISTINTADEST_OnChangeNode();
    EXPECT_EQ(scena.stato.DataFineNodoDest, giorno("20/05/2024"));
}

TEST_F(ModificaNodoTest, ReportsARecordWithoutAccountColumnUnderEveryHandlersName) {
    auto senzaColonne = std::make_shared<contract::Recordset>();
    scena.db->answer("SELECT senza colonne", rows({"ALTRO"}, {{1}}));
    senzaColonne->Open(contract::Statement("SELECT senza colonne"), *scena.db);
    scena.stato.origine.dati = senzaColonne;
    scena.stato.destinazione.dati = senzaColonne;
    modifica.TRW_ELEMDISTINTAORIG_OnChangeNode();
    modifica.TRW_ELEMDISTINTAORIG_OnChangeNodeEx();
    modifica.TRW_ELEMDISTINTADEST_OnChangeNode();
    modifica.TRW_ELEMDISTINTADEST_OnChangeNodeEx();
    EXPECT_EQ(scena.errori(), (Testi{"TRW_ELEMDISTINTAORIG_OnChangeNode", "TRW_ELEMDISTINTAORIG_OnChangeNodeEx",
                                     "TRW_ELEMDISTINTADEST_OnChangeNode", "TRW_ELEMDISTINTADEST_OnChangeNodeEx"}));
}

// State column

TEST_F(ModificaNodoTest, OpensTheStateEditorOverTheStateColumnOnly) {
    albero.focusKey(13, "Stato");
    EXPECT_EQ(editor, std::vector<std::int64_t>{13});
    EXPECT_EQ(scena.stato.NodoStatoDest, albero.byKey(13));
    scena.stato.campoStato->setVisible(true);
    albero.focusKey(13, colonnaFine);
    EXPECT_FALSE(scena.stato.campoStato->visible());
    EXPECT_EQ(editor.size(), 1U);
}

} // namespace
