#include "component/interaction/MenuContestuali.h"
#include "component/Scena.h"
#include "component/interaction/ModificaNodo.h"

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

using contract::Value;
using platform::headless::HeadlessWorkflowField;
using prove::Scena;

namespace {

using Testi = std::vector<std::string>;

/// Destination 20: 11 with 12 (with 13) and 14; then 15 with 16. Their GUIDs are "G11" to "G16".
class MenuContestualiTest : public testing::Test {
protected:
    MenuContestualiTest() {
        scena.host->workflow->states = {{3, "Bozza"}, {5, "Attivo"}};
        scena.tabelle.tipi = {{10, "A", "X"}, {20, "B", "Y"}};
        scena.tabelle.nodi = {{1, 10, {}, 101}};
        for (const auto& [id, padre] : std::vector<std::pair<std::int64_t, std::int64_t>>{
                 {11, 0}, {12, 11}, {13, 12}, {14, 11}, {15, 0}, {16, 15}})
            scena.tabelle.nodi.push_back({id, 20, padre ? std::optional(padre) : std::nullopt, 190 + id, "01/01/2020",
                                          "31/12/2099", "G" + std::to_string(id)});
        scena.carica(scena.stato.origine, "10");
        scena.carica(scena.stato.destinazione, "20");
        scena.host->journal->take();
    }

    void destro(std::int64_t nodo) {
        albero.focusKey(nodo);
        scena.stato.NodoStatoDest = albero.byKey(nodo);
        scena.stato.posizioneNodoStato = scena.stato.NodoStatoDest.position;
    }
    Testi operazioni() {
        Testi righe;
        for (const auto& riga : scena.host->journal->take())
            if (riga.starts_with("WorkflowState."))
                righe.push_back(riga.substr(14));
        return righe;
    }

    Scena scena;
    qz::MenuContestuali menu{scena.stato};
    platform::headless::HeadlessTree& albero = scena.alberoDest();
    std::map<std::string, std::int64_t>& stati = scena.host->workflow->stateOf;
};

// Card and link

TEST_F(MenuContestualiTest, OpensTheCustomersCard) {
    scena.stato.CodiceAnagMenu = 345;
    menu.mnuSchedaCF_Click(scena.stato.origine);
    EXPECT_EQ(scena.host->journal->take(),
              (Testi{"ClsGlobal.newParameterObject()", "ClsGlobal.openProgram(SchedaClienti, true, 0, 345, 1)",
                     "~ParameterObject"}));
}

TEST_F(MenuContestualiTest, OpensTheSuppliersCardOfTheSidesKind) {
    scena.stato.CodiceAnagMenu = 345;
    scena.stato.destinazione.TipoCF = 1;
    menu.mnuSchedaCF_Click(scena.stato.destinazione);
    EXPECT_EQ(scena.host->journal->count("ClsGlobal.openProgram(SchedaFornitori, true, 1, 345, 1)"), 1U);
    EXPECT_EQ(scena.stato.TipoAnagMenu.integer(), 1);
}

TEST_F(MenuContestualiTest, HandsTheAccountToTheLinkService) {
    scena.stato.CodiceAnagMenu = 345;
    menu.mnuAnagCF_Click(scena.stato.origine);
    EXPECT_EQ(scena.host->journal->take(),
              (Testi{"ClsGlobal.newAccountLink()", "AccountLink.setInterface(host)", "AccountLink.setAccountCode(345)",
                     "AccountLink.linkCustomer()", "~AccountLink"}));
    scena.stato.destinazione.TipoCF = 1;
    menu.mnuAnagCF_Click(scena.stato.destinazione);
    EXPECT_EQ(scena.host->journal->count("AccountLink.linkSupplier()"), 1U);
}

TEST_F(MenuContestualiTest, OpensNothingForAnyOtherKind) {
    for (const auto& tipo : {Value(2), Value(-1), Value(), Value::null(), Value("  ")}) {
        scena.stato.TipoAnagMenu = tipo;
        menu.CollegamentoSchedaAnag();
        menu.CollegaAnag();
    }
    EXPECT_EQ(scena.host->journal->count("ClsGlobal.openProgram"), 0U);
    EXPECT_EQ(scena.host->journal->count("AccountLink.link"), 0U);
    EXPECT_TRUE(scena.host->errors.empty());
}

TEST_F(MenuContestualiTest, TakesTheKindOfItsOwnSide) {
    scena.stato.origine.TipoCF = 1;
    scena.stato.TipoAnagMenu = 0;
    menu.mnuSchedaCF_Click(scena.stato.origine);
    EXPECT_EQ(scena.stato.TipoAnagMenu.integer(), 1);
    menu.mnuSchedaCF_Click(scena.stato.destinazione);
    EXPECT_EQ(scena.stato.TipoAnagMenu.integer(), 0);
    menu.mnuAnagCF_Click(scena.stato.origine);
    EXPECT_EQ(scena.stato.TipoAnagMenu.integer(), 1);
    menu.mnuAnagCF_Click(scena.stato.destinazione);
    EXPECT_EQ(scena.stato.TipoAnagMenu.integer(), 0);
}

TEST_F(MenuContestualiTest, ReportsUnderTheInnermostProceduresName) {
    auto& diario = *scena.host->journal;
    diario.failCall("ClsGlobal.openProgram", 1, contract::RuntimeError(429, "x"));
    menu.mnuSchedaCF_Click(scena.stato.origine);
    scena.stato.destinazione.TipoCF = 1;
    diario.failCall("ClsGlobal.openProgram", 1, contract::RuntimeError(429, "x"));
    menu.mnuSchedaCF_Click(scena.stato.destinazione);
    diario.failCall("AccountLink.linkCustomer", 1, contract::RuntimeError(429, "x"));
    menu.mnuAnagCF_Click(scena.stato.origine);
    EXPECT_EQ(scena.errori(), (Testi{"RichiamaSchedaClienti", "RichiamaSchedaFornitori", "CollegaAnag"}));
}

// State editor

TEST_F(MenuContestualiTest, PlacesTheStateEditorOverTheCellAndOpensItsList) {
    auto& campo = dynamic_cast<HeadlessWorkflowField&>(*scena.stato.campoStato);
    scena.stato.destinazione.albero->setBounds({100, 2000, 9000, 5000});
    destro(13);
    campo.setVisible(false);
    menu.mnuStatoLegame_Click();
    EXPECT_TRUE(campo.visible());
    EXPECT_TRUE(campo.listOpen());
    EXPECT_EQ(campo.value(), "G13");
    const auto cella = albero.cell(albero.byKey(13), "Stato");
    ASSERT_TRUE(cella);
    EXPECT_EQ(campo.bounds().left, 100 + cella->left);
    EXPECT_EQ(campo.bounds().top, 2000 + cella->top);
}

TEST_F(MenuContestualiTest, GivesTheStateEditorAHeightForEveryZoom) {
    destro(13);
    const std::map<int, contract::Twips> altezze{{8, 285}, {10, 360}, {12, 435}, {14, 510}};
    for (const auto& [zoom, altezza] : altezze) {
        scena.stato.ridimensionamento->setZoom(zoom);
        menu.mnuStatoLegame_Click();
        EXPECT_EQ(scena.stato.campoStato->bounds().height, altezza) << zoom;
    }
}

TEST_F(MenuContestualiTest, ConfirmsAStateThatWasChosen) {
    auto& campo = dynamic_cast<HeadlessWorkflowField&>(*scena.stato.campoStato);
    campo.AfterItem = [this] { menu.TXT_QZ02_STATO_AfterItem(); };
    destro(13);
    menu.mnuStatoLegame_Click();
    ASSERT_TRUE(campo.choose(5));
    EXPECT_EQ(stati["G13"], 5);
    EXPECT_EQ(operazioni(), Testi{"ConfermaStato()"});
    campo.leave();
    EXPECT_TRUE(operazioni().empty());
}

TEST_F(MenuContestualiTest, ReportsAStateThatCannotBeConfirmed) {
    auto& campo = dynamic_cast<HeadlessWorkflowField&>(*scena.stato.campoStato);
    campo.AfterItem = [this] { menu.TXT_QZ02_STATO_AfterItem(); };
    destro(13);
    menu.mnuStatoLegame_Click();
    scena.host->journal->failCall("WorkflowState.ConfermaStato", 1, contract::RuntimeError(5, "x"));
    campo.choose(5);
    EXPECT_EQ(scena.errori(), Testi{"TXT_QZ02_STATO_AfterItem"});
}

// Propagation

TEST_F(MenuContestualiTest, GivesTheStateToTheNodesBelow) {
    stati = {{"G11", 5}};
    destro(11);
    menu.mnuRilasciaFigli_Click();
    EXPECT_EQ(operazioni(), (Testi{"GetDescrizioneStatoFromGUID(G11)", "DuplicaStato(G11, G12)",
                                   "DuplicaStato(G11, G13)", "DuplicaStato(G11, G14)"}));
    EXPECT_EQ(stati["G13"], 5);
    EXPECT_FALSE(stati.contains("G15"));
}

TEST_F(MenuContestualiTest, GivesANodeWithoutStateTheDefaultFirst) {
    destro(12);
    menu.mnuRilasciaFigli_Click();
    EXPECT_EQ(operazioni(), (Testi{"GetDescrizioneStatoFromGUID(G12)", "GetDefaultFlussoStato()", "ConfermaStato()",
                                   "DuplicaStato(G12, G13)", "DuplicaStato(G12, G14)"}));
    EXPECT_EQ(stati["G12"], 3);
    EXPECT_EQ(stati["G14"], 3); // the level bound of 0 does not stop at the end of 12's own subtree
}

TEST_F(MenuContestualiTest, StopsAtTheLevelLastClickedInTheOrigin) {
    stati = {{"G11", 5}};
    scena.stato.destinazione.livelloCliccato = 0;
    scena.stato.origine.livelloCliccato = 1;
    destro(12);
    menu.mnuRilasciaFigli_Click();
    EXPECT_EQ(operazioni().back(), "DuplicaStato(G12, G13)"); // 14 stands at level 1
    scena.stato.origine.livelloCliccato = 5;
    destro(11);
    menu.mnuRilasciaFigli_Click();
    EXPECT_EQ(operazioni(), Testi{"GetDescrizioneStatoFromGUID(G11)"});
}

TEST_F(MenuContestualiTest, CopiesNothingFromTheLastNode) {
    stati = {{"G16", 5}};
    destro(16);
    menu.mnuRilasciaFigli_Click();
    EXPECT_EQ(operazioni(), Testi{"GetDescrizioneStatoFromGUID(G16)"});
    EXPECT_FALSE(scena.stato.NodoStatoDest);
}

TEST_F(MenuContestualiTest, PutsTheFocusBackAndLeavesTheNodePastTheLastOne) {
    stati = {{"G11", 5}};
    destro(11);
    menu.mnuRilasciaFigli_Click();
    EXPECT_EQ(albero.key(albero.focused()), 11);
    EXPECT_EQ((*scena.stato.destinazione.dati)["QZ02_ID"].integer(), 11);
    EXPECT_EQ(scena.stato.NodoStatoDest, albero.byKey(15));
    EXPECT_EQ(albero.drawings(), 1);
}

TEST_F(MenuContestualiTest, SuspendsTheNodeChangesMeanwhile) {
    qz::ModificaNodo modifica(scena.stato);
    int cambi = 0;
    int lavorati = 0;
    albero.OnChangeNode = [&] {
        ++cambi;
        const auto prima = scena.db->operations();
        modifica.TRW_ELEMDISTINTADEST_OnChangeNode();
        lavorati += scena.db->operations() != prima;
    };
    stati = {{"G11", 5}};
    destro(11);
    cambi = lavorati = 0;
    menu.mnuRilasciaFigli_Click();
    EXPECT_GT(cambi, 0);
    EXPECT_EQ(lavorati, 0);
    EXPECT_FALSE(scena.stato.sospendiCambioNodo);
}

TEST_F(MenuContestualiTest, LeavesNothingToReadWhenTheFocusComesToRestAfterwards) {
    qz::ModificaNodo modifica(scena.stato);
    albero.OnChangeNode = [&] { modifica.TRW_ELEMDISTINTADEST_OnChangeNode(); };
    albero.OnChangeNodeEx = [&] { modifica.TRW_ELEMDISTINTADEST_OnChangeNodeEx(); };
    stati = {{"G11", 5}};
    destro(11);
    albero.settle();
    const auto prima = scena.db->operations();
    menu.mnuRilasciaFigli_Click();
    albero.settle();
    EXPECT_EQ(scena.db->operations(), prima);
    albero.focusKey(12);
    const auto mossa = scena.db->operations();
    EXPECT_GT(mossa, prima) << "a move of the user's is a change again";
    albero.settle();
    EXPECT_GT(scena.db->operations(), mossa);
}

TEST_F(MenuContestualiTest, EndsTheSuspensionAfterAnErrorAndKeepsWhatWasCopied) {
    stati = {{"G11", 5}};
    destro(11);
    scena.host->journal->failCall("WorkflowState.DuplicaStato", 2, contract::RuntimeError(5, "x"));
    menu.mnuRilasciaFigli_Click();
    EXPECT_EQ(scena.errori(), Testi{"mnuRilasciaFigli_Click"});
    EXPECT_FALSE(scena.stato.sospendiCambioNodo);
    EXPECT_EQ(stati["G12"], 5);
    EXPECT_FALSE(stati.contains("G14"));
}

TEST_F(MenuContestualiTest, PutsTheFocusBackAfterAnError) {
    for (const int risposta : {3, 5}) {
        stati = {{"G11", 5}};
        destro(11);
        scena.host->answers = {risposta};
        scena.host->journal->failCall("WorkflowState.DuplicaStato", 2, contract::RuntimeError(5, "x"));
        menu.mnuRilasciaFigli_Click();
        EXPECT_EQ(albero.key(albero.focused()), 11);
        EXPECT_EQ((*scena.stato.destinazione.dati)["QZ02_ID"].integer(), 11);
        EXPECT_EQ(stati.contains("G14"), risposta == 5);
    }
}

TEST_F(MenuContestualiTest, DoesNothingWithoutANode) {
    albero.focusKey(14);
    scena.stato.NodoStatoDest = {};
    menu.mnuRilasciaFigli_Click();
    EXPECT_TRUE(operazioni().empty());
    EXPECT_EQ(albero.key(albero.focused()), 14);
    EXPECT_TRUE(scena.host->errors.empty());
}

TEST_F(MenuContestualiTest, StopsAtTheFirstNodeOfTheBoundsLevelOrHigher) {
    // A chain of seven levels, then a node of level 5 and one of level 6 below it.
    scena.tabelle.nodi.clear();
    for (std::int64_t i = 0; i < 7; ++i)
        scena.tabelle.nodi.push_back({21 + i, 20, i ? std::optional(20 + i) : std::nullopt, 300 + i, "01/01/2020",
                                      "31/12/2099", "G" + std::to_string(21 + i)});
    for (const auto& [id, padre] : std::vector<std::pair<std::int64_t, std::int64_t>>{{31, 25}, {32, 31}})
        scena.tabelle.nodi.push_back({id, 20, padre, 300 + id, "01/01/2020", "31/12/2099", "G" + std::to_string(id)});
    scena.carica(scena.stato.destinazione, "20");
    ASSERT_EQ(albero.level(albero.byKey(31)), 5);
    stati = {{"G26", 5}};
    scena.stato.origine.livelloCliccato = 5;
    destro(26);
    operazioni();
    menu.mnuRilasciaFigli_Click();
    EXPECT_EQ(operazioni(), (Testi{"GetDescrizioneStatoFromGUID(G26)", "DuplicaStato(G26, G27)"}));
    EXPECT_EQ(scena.stato.NodoStatoDest, albero.byKey(31));
}

TEST_F(MenuContestualiTest, SendsNoStatement) {
    stati = {{"G11", 5}};
    destro(11);
    const auto prima = scena.db->operations();
    menu.mnuRilasciaFigli_Click();
    EXPECT_EQ(scena.db->operations(), prima);
}

} // namespace
