// The dates of a destination node edited in place: what is refused and put back, and what is written.

#include "component/IstruzioniAttese.h"
#include "component/NodoModificato.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using contract::Value;
using platform::headless::rows;
using prove::giorno;
using prove::ModificaNodoTest;
namespace attesa = prove::attesa;

namespace {

using Testi = std::vector<std::string>;

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
    albero.setValue(albero.byKey(12), colonnaInizio, giorno("15/05/2024"));
    scrivi(colonnaFine, "");
    EXPECT_EQ(cella(colonnaInizio), "15/05/2024");
    EXPECT_EQ(cella(colonnaFine), "20/05/2024");
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
    EXPECT_EQ(scena.db->take(),
              (Testi{"BeginTrans", attesa::nodo(11), attesa::sovrapposti(202, "10/05/2024", "30/06/2024", 0, 12),
                     attesa::premio(12, "30/06/2024"), scritte.at(0), "CommitTrans"}));

    // What is refused leaves none open, and an unchanged pair needs none.
    scena.tabelle.nodi.push_back({14, 20, 11, 202, "01/07/2024", "31/12/2024"});
    scrivi(colonnaFine, "01/07/2024");
    EXPECT_EQ(scena.db->take(), (Testi{"BeginTrans", attesa::nodo(11),
                                       attesa::sovrapposti(202, "10/05/2024", "01/07/2024", 0, 12), "RollbackTrans"}));
    scrivi(colonnaFine, "30/06/2024");
    EXPECT_EQ(scena.db->take(), (Testi{attesa::nodo(11), attesa::sovrapposti(202, "10/05/2024", "30/06/2024", 0, 12),
                                       attesa::premio(12, "30/06/2024")}));
}

TEST_F(ModificaNodoTest, SendsNothingForAPairThatIsNoPair) {
    scrivi(colonnaInizio, "");
    scrivi(colonnaFine, "");
    scrivi(colonnaFine, "01/01/2024");
    EXPECT_TRUE(scena.db->take().empty());
}

TEST_F(ModificaNodoTest, ChecksBothDatesWhicheverWasEdited) {
    scena.tabelle.premi = {{12, "01/07/2024", 2}};
    // The start moves, the end falls before a definitive settlement all the same.
    scrivi(colonnaInizio, "11/05/2024");
    EXPECT_EQ(scena.messaggi(), Testi{"Anagrafica non modificata:\nLa data fine è inferiore alla data scadenza di un "
                                      "premio definitivo"});
    comePrima();
}

TEST_F(ModificaNodoTest, LooksForOverlapsOfTheDestinationsKindAndLabelsThemByTheOrigins) {
    scena.stato.destinazione.TipoCF = 1;
    scena.db->answer(attesa::sovrapposti(202, "10/05/2024", "30/06/2024", 1, 12),
                     rows({"Anagrafica", "RagSoc", "DataI", "DataF", "CodDistinta", "DescDistinta"},
                          {{201, "SOGGETTO", giorno("01/06/2024"), giorno("31/12/2024"), "B", "DESTINAZIONE"}}));
    scrivi(colonnaFine, "30/06/2024");
    ASSERT_EQ(scena.messaggi().size(), 1U);
    EXPECT_EQ(scena.messaggi()[0], "Anagrafica non modificata:\nCliente 202 già legato alla distinta B: Nodo padre 201 "
                                   "- SOGGETTO nel periodo dal 01/06/2024 al 31/12/2024\n");
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

TEST_F(ModificaNodoTest, ShowsThePairThatWasWrittenWhenTheWriteWasRunAgain) {
    scena.host->answers = {4};
    scena.db->failNth(5, {"40001", 1205, "stallo", contract::ErrorCategory::deadlock});
    scrivi(colonnaFine, "30/06/2024");
    EXPECT_EQ(scena.host->errors.size(), 1U);
    EXPECT_EQ(scritte.size(), 1U);
    EXPECT_EQ(cella(colonnaFine), "30/06/2024");
    EXPECT_EQ(scena.stato.DataFineNodoDest, giorno("30/06/2024"));
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
    for (std::int64_t i = 0; i < 60; ++i)
        scena.tabelle.nodi.push_back({300 + i, 20, {}, 300 + i});
    scena.carica(scena.stato.origine, "20", 13);
    scena.alberoOrig().setTopRow(30);
    scena.tabelle.il(12).fine = "30/06/2024"; // what the write does
    scrivi(colonnaFine, "30/06/2024");
    EXPECT_EQ(scena.alberoOrig().topRow(), 30);
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

} // namespace
