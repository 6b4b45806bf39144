#include "interaction/ModificaNodo.h"
#include "component/Scena.h"
#include "data/CaricaDistinta.h"
#include "maintenance/IstruzioniSpostamento.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using contract::Value;
using platform::headless::rows;
using prove::giorno;
using prove::Scena;

namespace {

using Testi = std::vector<std::string>;

constexpr const char* colonnaInizio = "trQZ02_DATAINIZIOVAL";
constexpr const char* colonnaFine = "trQZ02_DATAFINEVAL";
const std::string parametri = " SELECT   QZ03_ID_WF02";
const std::string dettaglio = " SELECT   RTrim(CAST(CG44_CLIFOR";
const std::string premio = "SELECT TOP 1 *";

/// Destination 20: 11 (201) with 12 (202) and 13 (203); 13 has no dates. The focus is on 12.
class ModificaNodoTest : public testing::Test {
protected:
    ModificaNodoTest() {
        scena.tabelle.tipi = {{10, "A", "ORIGINE", 0, "DO"}, {20, "B", "DESTINAZIONE", 0, "DD"}, {30, "C", "VUOTA"}};
        scena.tabelle.nodi = {{1, 10, {}, 101},
                              {2, 10, 1, 102},
                              {11, 20, {}, 201},
                              {12, 20, 11, 202, "10/05/2024", "20/05/2024"},
                              {13, 20, 11, 203, "", ""}};
        auto& dest = *scena.stato.destinazione.albero;
        auto& orig = *scena.stato.origine.albero;
        orig.OnChangeNode = [this] { modifica.TRW_ELEMDISTINTAORIG_OnChangeNode(); };
        orig.OnChangeNodeEx = [this] { modifica.TRW_ELEMDISTINTAORIG_OnChangeNodeEx(); };
        dest.OnChangeNode = [this] { modifica.TRW_ELEMDISTINTADEST_OnChangeNode(); };
        dest.OnChangeNodeEx = [this] { modifica.TRW_ELEMDISTINTADEST_OnChangeNodeEx(); };
        dest.OnEdited = [this](contract::Node nodo) { modifica.TRW_ELEMDISTINTADEST_OnEdited(nodo); };
        dest.OnChangedColumn = [this](contract::Node nodo) { modifica.TRW_ELEMDISTINTADEST_OnChangedColumn(nodo); };
        modifica.apriEditorStato = [this](contract::Node nodo) { editor.push_back(albero.key(nodo)); };
        scena.db->change("UPDATE QZ02_DISTINTA  SET QZ02_DATAINIZIOVAL", [this](const std::string& testo) {
            scritte.push_back(testo);
            return righeScritte;
        });
        scena.carica(scena.stato.destinazione, "20", 12);
        albero.settle();
        scena.db->take();
    }

    bool scrivi(const char* colonna, std::string_view testo, std::int64_t nodo = 12) {
        return albero.editCell(albero.byKey(nodo), colonna, testo);
    }
    std::string cella(const char* colonna, std::int64_t nodo = 12) {
        return albero.value(albero.byKey(nodo), colonna).text();
    }
    void comePrima() {
        EXPECT_EQ(cella(colonnaInizio), "10/05/2024");
        EXPECT_EQ(cella(colonnaFine), "20/05/2024");
        EXPECT_TRUE(scritte.empty());
    }
    Testi inizi() {
        Testi testi;
        for (const auto& testo : scena.db->take())
            for (const auto& inizio : {parametri, dettaglio, premio})
                if (testo.starts_with(inizio))
                    testi.push_back(inizio);
        return testi;
    }

    Scena scena;
    qz::ModificaNodo modifica{scena.stato};
    platform::headless::HeadlessTree& albero = scena.alberoDest();
    std::vector<std::int64_t> editor;
    Testi scritte;
    std::int64_t righeScritte = 1;
};

// Focus

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

// Validation

TEST_F(ModificaNodoTest, RefusesAnEmptyStart) {
    EXPECT_TRUE(scrivi(colonnaInizio, ""));
    EXPECT_EQ(scena.messaggi(), Testi{"Attenzione la data validità inizio è obbligatoria"});
    EXPECT_EQ(scena.host->messages[0].style, 0);
    comePrima();
}

TEST_F(ModificaNodoTest, RefusesAnEmptyEnd) {
    EXPECT_TRUE(scrivi(colonnaFine, ""));
    EXPECT_EQ(scena.messaggi(), Testi{"Attenzione la data validità fine è obbligatoria"});
    EXPECT_EQ(scena.host->messages[0].style, 0);
    comePrima();
}

TEST_F(ModificaNodoTest, RestoresTheEmptyCellAlone) {
    albero.setValue(albero.byKey(12), colonnaFine, Value::null());
    scrivi(colonnaInizio, "");
    EXPECT_EQ(scena.messaggi(), Testi{"Attenzione la data validità inizio è obbligatoria"});
    EXPECT_EQ(cella(colonnaInizio), "10/05/2024");
    EXPECT_EQ(cella(colonnaFine), "");
}

TEST_F(ModificaNodoTest, RefusesAnEndBeforeTheStart) {
    scrivi(colonnaInizio, "21/05/2024");
    EXPECT_EQ(scena.messaggi(), Testi{"Attenzione data validità inizio deve essere inferiore di data validità fine"});
    EXPECT_EQ(scena.host->messages[0].style, 0);
    comePrima();
}

TEST_F(ModificaNodoTest, RestoresBothCells) {
    albero.setValue(albero.byKey(12), colonnaInizio, giorno("15/05/2024"));
    scrivi(colonnaFine, "14/05/2024");
    comePrima();
}

TEST_F(ModificaNodoTest, AcceptsAnEndEqualToTheStart) {
    scrivi(colonnaInizio, "20/05/2024");
    EXPECT_TRUE(scena.host->messages.empty());
    ASSERT_EQ(scritte.size(), 1U);
    EXPECT_EQ(cella(colonnaInizio), "20/05/2024");
}

TEST_F(ModificaNodoTest, WritesAnAcceptedPairAtOnce) {
    scrivi(colonnaFine, "30/06/2024");
    EXPECT_EQ(scritte, Testi{"UPDATE QZ02_DISTINTA  SET QZ02_DATAINIZIOVAL = CONVERT(DateTime,'10/05/2024',103),     "
                             "QZ02_DATAFINEVAL = CONVERT(DateTime,'30/06/2024',103),     QZ02_DATAVAR = "
                             "CONVERT(DateTime,'15/06/2024',103),     QZ02_GRUPPOVAR = 'GRUPPO',     QZ02_UTENTEVAR = "
                             "'UTENTE' WHERE QZ02_ID = 12   AND QZ02_DATAINIZIOVAL = "
                             "CONVERT(DateTime,'10/05/2024',103)   AND QZ02_DATAFINEVAL = "
                             "CONVERT(DateTime,'20/05/2024',103)"});
    EXPECT_EQ((*scena.stato.destinazione.dati)["QZ02_DATAFINEVAL"].text(), "30/06/2024");
}

TEST_F(ModificaNodoTest, ChecksAndWritesInOneTransaction) {
    scrivi(colonnaFine, "30/06/2024");
    auto inviate = scena.db->take();
    ASSERT_GE(inviate.size(), 5U);
    EXPECT_EQ(inviate.front(), "BeginTrans");
    EXPECT_TRUE(inviate[1].starts_with(" SELECT * FROM QZ02_DISTINTA ")) << inviate[1];
    EXPECT_TRUE(inviate[inviate.size() - 2].starts_with("UPDATE QZ02_DISTINTA ")) << inviate[inviate.size() - 2];
    EXPECT_EQ(inviate.back(), "CommitTrans");

    // What is refused leaves none open, and an unchanged pair needs none.
    scena.tabelle.nodi.push_back({14, 20, 11, 202, "01/07/2024", "31/12/2024"});
    scrivi(colonnaFine, "01/07/2024");
    inviate = scena.db->take();
    EXPECT_EQ(inviate.front(), "BeginTrans");
    EXPECT_EQ(inviate.back(), "RollbackTrans");
    scrivi(colonnaFine, "30/06/2024");
    for (const auto& parola : scena.db->take())
        EXPECT_NE(parola, "BeginTrans");
}

TEST_F(ModificaNodoTest, RemembersAnAcceptedPair) {
    scrivi(colonnaFine, "30/06/2024");
    EXPECT_EQ(scena.stato.DataFineNodoDest, giorno("30/06/2024"));
    scrivi(colonnaFine, "01/01/2024");
    EXPECT_EQ(cella(colonnaFine), "30/06/2024");
    scrivi(colonnaFine, "31/07/2024");
    EXPECT_NE(scritte.back().find("AND QZ02_DATAFINEVAL = CONVERT(DateTime,'30/06/2024',103)"), std::string::npos);
}

TEST_F(ModificaNodoTest, WritesOverNullDates) {
    albero.focusKey(13);
    scrivi(colonnaInizio, "01/01/2024", 13);
    // Only one date so far: the other is asked for, and the remembered end of another node put in its place.
    EXPECT_EQ(scena.messaggi(), Testi{"Attenzione la data validità fine è obbligatoria"});
    EXPECT_EQ(cella(colonnaFine, 13), "20/05/2024");
    scrivi(colonnaFine, "31/12/2024", 13);
    ASSERT_EQ(scritte.size(), 1U);
    EXPECT_TRUE(scritte[0].ends_with(" WHERE QZ02_ID = 13   AND QZ02_DATAINIZIOVAL IS NULL   AND QZ02_DATAFINEVAL IS "
                                     "NULL"))
        << scritte[0];
}

TEST_F(ModificaNodoTest, RefusesAnOverlapWithAnotherLink) {
    scena.tabelle.nodi.push_back({14, 20, 11, 202, "01/06/2024", "31/12/2024"});
    scrivi(colonnaFine, "01/06/2024");
    EXPECT_EQ(scena.messaggi(),
              Testi{"Anagrafica non modificata:\nCliente 202 già legato alla distinta B: Nodo padre 201 - SOGGETTO 201 "
                    "nel periodo dal 01/06/2024 al 31/12/2024\n"});
    EXPECT_EQ(scena.host->messages[0].style, 64);
    comePrima();
}

TEST_F(ModificaNodoTest, DoesNotCountTheNodesOwnLinkAsAnOverlap) {
    scrivi(colonnaFine, "25/05/2024");
    EXPECT_TRUE(scena.host->messages.empty());
    EXPECT_EQ(scritte.size(), 1U);
}

TEST_F(ModificaNodoTest, RefusesAnEndBeforeADefinitiveSettlement) {
    scena.tabelle.premi = {{12, "01/07/2024", 2}};
    scrivi(colonnaFine, "30/06/2024");
    EXPECT_EQ(scena.messaggi(), Testi{"Anagrafica non modificata:\nLa data fine è inferiore alla data scadenza di un "
                                      "premio definitivo"});
    comePrima();
    scrivi(colonnaFine, "01/07/2024");
    EXPECT_EQ(scritte.size(), 1U);
}

TEST_F(ModificaNodoTest, EmptiesTheMessageBeforeEachEdit) {
    scena.stato.MessaggioSpostamento = "di prima\n";
    scena.tabelle.nodi.push_back({14, 20, 11, 202, "01/06/2024", "31/12/2024"});
    scrivi(colonnaFine, "01/06/2024");
    EXPECT_EQ(scena.messaggi()[0].find("di prima"), std::string::npos);
}

TEST_F(ModificaNodoTest, ReadsAMissingParentAsZero) {
    albero.focusKey(11);
    scrivi(colonnaFine, "31/12/2050", 11);
    EXPECT_EQ(scena.db->statements(" SELECT * FROM QZ02_DISTINTA ").back(),
              " SELECT * FROM QZ02_DISTINTA  WHERE QZ02_DITTA_CG18 = 1   AND QZ02_ID  = 0");
    EXPECT_EQ(scritte.size(), 1U);
}

TEST_F(ModificaNodoTest, ShowsWhatTheDatabaseHoldsWhenTheRowHasChangedMeanwhile) {
    righeScritte = 0;
    scena.db->answer("SELECT QZ02_DATAINIZIOVAL, QZ02_DATAFINEVAL",
                     rows({"QZ02_DATAINIZIOVAL", "QZ02_DATAFINEVAL"}, {{giorno("01/01/2023"), giorno("02/02/2023")}}));
    scrivi(colonnaFine, "30/06/2024");
    ASSERT_EQ(scena.host->errors.size(), 1U);
    EXPECT_EQ(cella(colonnaInizio), "01/01/2023");
    EXPECT_EQ(cella(colonnaFine), "02/02/2023");
    EXPECT_EQ(scena.stato.DataInizioNodoDest, giorno("01/01/2023"));
    // The next edit starts from what is shown now.
    righeScritte = 1;
    scrivi(colonnaFine, "03/03/2023");
    EXPECT_NE(scritte.back().find("AND QZ02_DATAFINEVAL = CONVERT(DateTime,'02/02/2023',103)"), std::string::npos);
}

TEST_F(ModificaNodoTest, NeverOverwritesAnotherUsersDatesOnRetry) {
    righeScritte = 0;
    scena.host->answers = {4, 3};
    scena.db->answer("SELECT QZ02_DATAINIZIOVAL, QZ02_DATAFINEVAL",
                     rows({"QZ02_DATAINIZIOVAL", "QZ02_DATAFINEVAL"}, {{giorno("01/01/2023"), giorno("02/02/2023")}}));
    scrivi(colonnaFine, "30/06/2024");
    for (const auto& testo : scritte)
        EXPECT_NE(testo.find("AND QZ02_DATAFINEVAL = CONVERT(DateTime,'20/05/2024',103)"), std::string::npos);
}

TEST_F(ModificaNodoTest, RestoresTheCellsWhenTheWriteFails) {
    for (const int risposta : {3, 5}) {
        scena.host->errors.clear();
        scena.db->fail("UPDATE QZ02_DISTINTA  SET QZ02_DATAINIZIOVAL",
                       {"HY000", 1, "guasto", contract::ErrorCategory::other});
        scena.host->answers = {risposta};
        scrivi(colonnaFine, "30/06/2024");
        EXPECT_EQ(scena.host->errors.size(), 1U);
        comePrima();
    }
}

TEST_F(ModificaNodoTest, RestoresTheCellsWhateverStatementOfTheEditFails) {
    scrivi(colonnaFine, "30/06/2024");
    const auto istruzioni = static_cast<int>(scena.db->take().size());
    scrivi(colonnaFine, "20/05/2024");
    EXPECT_GE(istruzioni, 4);
    for (const int risposta : {3, 5})
        for (int nth = 1; nth <= istruzioni; ++nth) {
            SCOPED_TRACE(nth);
            scritte.clear();
            scena.host->answers = {risposta};
            scena.db->failNth(nth, {"HY000", 1, "guasto", contract::ErrorCategory::other});
            scrivi(colonnaFine, "30/06/2024");
            EXPECT_EQ(cella(colonnaFine), "20/05/2024");
            EXPECT_EQ(cella(colonnaInizio), "10/05/2024");
            EXPECT_EQ(scena.stato.DataFineNodoDest, giorno("20/05/2024"));
        }
}

TEST_F(ModificaNodoTest, ReloadsTheOriginThatShowsTheSameDistinta) {
    scena.carica(scena.stato.origine, "20", 13);
    scena.tabelle.il(12).fine = "30/06/2024"; // what the write does
    scrivi(colonnaFine, "30/06/2024");
    EXPECT_EQ(scena.alberoOrig().value(scena.alberoOrig().byKey(12), "QZ02_DATAFINEVAL").text(), "30/06/2024");
    EXPECT_EQ(scena.alberoOrig().key(scena.alberoOrig().focused()), 13);
}

TEST_F(ModificaNodoTest, LeavesAnOriginWithAnotherDistintaAlone) {
    scena.carica(scena.stato.origine, "10", 2);
    scena.db->take();
    scrivi(colonnaFine, "30/06/2024");
    EXPECT_TRUE(scena.db->statements(" SELECT QZ02_ID,  ").size() == 2U);
}

TEST_F(ModificaNodoTest, SendsNothingForARejectedPair) {
    scrivi(colonnaInizio, "");
    scrivi(colonnaFine, "");
    scrivi(colonnaFine, "01/01/2024");
    EXPECT_TRUE(scritte.empty());
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
