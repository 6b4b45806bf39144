// What a move with validity closes and copies, and what refuses it.

#include "component/SpostaValidita.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

using prove::giorno;
using prove::SpostaValiditaTest;

namespace {

using Testi = std::vector<std::string>;

const std::string domanda = "Spostare il nodo 102 e tutti i suoi figli?";

TEST_F(SpostaValiditaTest, ClosesTheOldLinksAndOpensNewOnesFromTheNextDay) {
    premi();
    for (const std::int64_t id : {2, 3, 4})
        EXPECT_EQ(fineDi(id), "30/06/2024");
    EXPECT_EQ(fineDi(1), "31/12/2099");
    const auto* due = copia(102);
    const auto* tre = copia(103);
    const auto* quattro = copia(104);
    ASSERT_TRUE(due && tre && quattro);
    for (const auto* nodo : {due, tre, quattro}) {
        EXPECT_EQ(nodo->distinta, 20);
        EXPECT_EQ(nodo->fine, "31/12/2099");
    }
    EXPECT_EQ(due->padre, 11);
    EXPECT_EQ(tre->padre, due->id);
    EXPECT_EQ(quattro->padre, tre->id);
    EXPECT_EQ(scena.tabelle.nodi.size(), 8U);
}

TEST_F(SpostaValiditaTest, LeavesTheOldRowsInTheOrigin) {
    premi();
    for (const std::int64_t id : {2, 3, 4})
        EXPECT_EQ(scena.tabelle.il(id).distinta, 10);
    EXPECT_EQ(scena.tabelle.il(2).padre, 1);
    EXPECT_TRUE(scena.db->statements("UPDATE QZ02_DISTINTA  SET QZ02_ID").empty());
}

TEST_F(SpostaValiditaTest, WritesTheAuditColumns) {
    premi();
    const auto& vecchio = scena.tabelle.il(2);
    EXPECT_EQ(vecchio.gruppoVar, "GRUPPO");
    EXPECT_EQ(vecchio.utenteVar, "UTENTE");
    EXPECT_EQ(vecchio.dataVar, ""); // the closing statement does not set it
    const auto* nuovo = copia(102);
    ASSERT_TRUE(nuovo);
    EXPECT_EQ(
        (Testi{nuovo->dataCre, nuovo->gruppoCre, nuovo->utenteCre, nuovo->dataVar, nuovo->gruppoVar, nuovo->utenteVar}),
        (Testi{"15/06/2024", "GRUPPO", "UTENTE", "15/06/2024", "GRUPPO", "UTENTE"}));
}

TEST_F(SpostaValiditaTest, EndsTheNewLinksWhereTheMovedNodeEnded) {
    scena.tabelle.il(2).fine = "31/12/2027";
    scena.tabelle.il(3).fine = "31/12/2050";
    prepara();
    premi();
    for (const std::int64_t account : {102, 103, 104}) {
        const auto* nodo = copia(account);
        ASSERT_TRUE(nodo);
        EXPECT_EQ(nodo->fine, "31/12/2027") << account;
    }
    EXPECT_EQ(scena.stato.DataFineLegame, "31/12/2027");
}

TEST_F(SpostaValiditaTest, EndsTheNewLinksAtTheOpenEndForAMissingEnd) {
    scena.tabelle.il(2).fine = "";
    prepara();
    premi();
    const auto* nodo = copia(102);
    ASSERT_TRUE(nodo);
    EXPECT_EQ(nodo->fine, "31/12/2099");
}

TEST_F(SpostaValiditaTest, TakesAnyKindButTheParentsForFixedDates) {
    for (const auto tipo : std::vector<std::int16_t>{2, -1}) {
        scena.tabelle.nodi = {{2, 10, {}, 102}, {11, 20, {}, 201}};
        prepara();
        scena.stato.parametri.TipoCaricaDATA = tipo;
        scena.stato.parametri.DataFissaFINE = giorno("31/12/2030");
        premi();
        const auto* nodo = copia(102);
        ASSERT_TRUE(nodo);
        EXPECT_EQ(nodo->fine, "31/12/2030");
    }
}

TEST_F(SpostaValiditaTest, CopiesTheMovedNodeForTheFormsCompanyAndAChildForItsOwn) {
    scena.tabelle.nodi = {{2, 10, {}, 102}, {11, 20, {}, 201}};
    prepara();
    scena.stato.dittaDiLavoro = 5;
    scena.db->answer("SELECT  *  FROM  QZ02_DISTINTA  WHERE QZ02_IDPARENT_QZ02 = 2 ",
                     platform::headless::rows(prove::colonneNodo, {{3, 10, 2, 9, 1, 103, {}, {}, 4, 5, 6, 7, 8}}));
    premi();
    const auto inserite = scena.db->statements("INSERT INTO QZ02_DISTINTA");
    ASSERT_EQ(inserite.size(), 2U);
    EXPECT_NE(inserite[0].find("VALUES ( '20',  11,  5,  0,  102,"), std::string::npos) << inserite[0];
    EXPECT_NE(inserite[1].find(",  9,  1,  103,"), std::string::npos) << inserite[1];
    EXPECT_NE(inserite[1].find("'UTENTE',4,5,6,7,8, '"), std::string::npos) << inserite[1];
}

TEST_F(SpostaValiditaTest, EndsTheNewLinksAtTheFixedDate) {
    scena.stato.parametri.TipoCaricaDATA = 1;
    scena.stato.parametri.DataFissaFINE = giorno("31/12/2030");
    scena.stato.parametri.DataFissaINIZIO = giorno("01/01/2001");
    premi();
    const auto* nodo = copia(104);
    ASSERT_TRUE(nodo);
    EXPECT_EQ(nodo->fine, "31/12/2030");
    EXPECT_EQ(fineDi(4), "30/06/2024");
}

TEST_F(SpostaValiditaTest, FixesTheTextOnlyAfterTheCheckOfTheMovedNode) {
    scena.tabelle.nodi.push_back({12, 20, 11, 102});
    prepara(2, 12);
    premi();
    EXPECT_EQ(scena.messaggi().back(), "Cliente 102 coincide con la destinazione. Spostamento annullato.\n");
    EXPECT_EQ(scena.stato.DataFineLegame, "30/06/2024");
    comePrima();
}

TEST_F(SpostaValiditaTest, KeepsTheEndOfALinkThatHasEndedBefore) {
    scena.tabelle.il(3).fine = "31/03/2024";
    prepara();
    premi();
    EXPECT_EQ(fineDi(3), "31/03/2024");
    EXPECT_NE(copia(103), nullptr);
}

TEST_F(SpostaValiditaTest, ClosesALinkThatStartsLaterOnItsOwnStartDay) {
    // The new links end before that day, so that it does not count as an overlap.
    scena.stato.parametri.TipoCaricaDATA = 1;
    scena.stato.parametri.DataFissaFINE = giorno("31/12/2024");
    scena.tabelle.il(3).inizio = "01/03/2025";
    prepara();
    premi();
    EXPECT_EQ(fineDi(3), "01/03/2025");
    const auto* nodo = copia(103);
    ASSERT_TRUE(nodo);
    EXPECT_EQ(nodo->fine, "31/12/2024");
}

TEST_F(SpostaValiditaTest, RefusesALinkThatStartsInsideTheNewPeriod) {
    scena.tabelle.il(3).inizio = "01/03/2025";
    prepara();
    premi();
    comePrima();
    EXPECT_EQ(scena.messaggi().back(), "Cliente 103 già legato alla distinta A: Nodo padre 102 - SOGGETTO 102 nel "
                                       "periodo dal 01/03/2025 al 01/03/2025\n");
    EXPECT_EQ(scena.host->messages.back().style, 16);
}

TEST_F(SpostaValiditaTest, ChecksTheNewLinkAfterTheOldOneWasClosed) {
    premi();
    const auto& tutte = scena.db->statements();
    const auto posto = [&](std::string_view inizio) {
        return std::find_if(tutte.begin(), tutte.end(), [&](const auto& t) { return t.starts_with(inizio); });
    };
    const auto chiusura = posto("UPDATE QZ02_DISTINTA  SET QZ02_DATAFINEVAL");
    const auto controllo = posto(" SELECT  CG44_CLIFOR AS Anagrafica, CG16_RAGSOANAG AS RagSoc,  QZ02");
    const auto inserimento = posto("INSERT INTO QZ02_DISTINTA");
    EXPECT_LT(chiusura, controllo);
    EXPECT_LT(controllo, inserimento);
    EXPECT_NE(controllo->find("CONVERT(DateTime,'01/07/2024',103) BETWEEN"), std::string::npos);
    EXPECT_NE(controllo->find("CONVERT(DateTime,'31/12/2099',103) BETWEEN"), std::string::npos);
}

TEST_F(SpostaValiditaTest, CopiesOnlyTheOptionalValuesThatAreThere) {
    scena.tabelle.il(2).facoltativi = {{"QZ02_CLIFORFATT_CG44", 777}, {"QZ02_INDEREPROMO", 0}};
    scena.tabelle.il(3).facoltativi = {
        {"QZ02_TIPOANAGFATT", 1}, {"QZ02_IDSTRUTTURA_LP09", 8}, {"QZ02_IDLOCALIZZATA_LP09", 9}};
    prepara();
    premi();
    const auto* due = copia(102);
    const auto* tre = copia(103);
    const auto* quattro = copia(104);
    ASSERT_TRUE(due && tre && quattro);
    EXPECT_EQ(due->facoltativi, prima[1].facoltativi);
    EXPECT_EQ(tre->facoltativi, prima[2].facoltativi);
    EXPECT_TRUE(quattro->facoltativi.empty());
}

TEST_F(SpostaValiditaTest, GivesNewLinksTheStateOfTheParameters) {
    scena.stato.parametri.StatoLegame = 7;
    premi();
    const auto* nodo = copia(104);
    ASSERT_TRUE(nodo);
    EXPECT_EQ(nodo->stato, 7);
}

TEST_F(SpostaValiditaTest, DoesNotCopyTheChildrenOfAParentWithoutACopy) {
    // 103 hangs already above 102 in the destination, so it is skipped; its child loses its copy silently.
    scena.tabelle.nodi.push_back({40, 20, {}, 103, "01/01/2010", "31/12/2010"});
    scena.tabelle.nodi.push_back({41, 20, 40, 102, "01/01/2010", "31/12/2010"});
    scena.tabelle.nodi.push_back({5, 10, 2, 105});
    prepara();
    premi();
    EXPECT_NE(copia(102), nullptr);
    EXPECT_NE(copia(105), nullptr);
    EXPECT_EQ(copia(103), nullptr);
    EXPECT_EQ(copia(104), nullptr);
    EXPECT_EQ(fineDi(3), "31/12/2099");
    EXPECT_EQ(fineDi(4), "31/12/2099");
    EXPECT_EQ(scena.messaggi(), Testi{domanda});
}

TEST_F(SpostaValiditaTest, DoesNotCopyAChildWithoutAccount) {
    scena.tabelle.nodi.push_back({5, 10, 2, {}});
    prepara();
    premi();
    EXPECT_EQ(scena.tabelle.il(5), prima.back());
    EXPECT_NE(copia(104), nullptr);
    EXPECT_TRUE(scena.host->errors.empty());
}

TEST_F(SpostaValiditaTest, FindsTheCopyInWhateverDistinta) {
    // Another link of 103 starts on the day of the copies, in a third distinta, and comes first.
    scena.tabelle.nodi.insert(scena.tabelle.nodi.begin(), {60, 30, {}, 103, "01/07/2024", "01/07/2024"});
    scena.stato.parametri.TipoCaricaDATA = 0;
    prepara();
    premi();
    const auto* quattro = copia(104);
    ASSERT_TRUE(quattro);
    EXPECT_EQ(quattro->padre, 60);
}

// Overlaps on any node

class SovrapposizioneTest : public SpostaValiditaTest, public testing::WithParamInterface<std::int64_t> {};

TEST_P(SovrapposizioneTest, KeepsNothingWhicheverNodeIsRefused) {
    // Two more children come after the first, so that later children pass.
    scena.tabelle.nodi.push_back({5, 10, 2, 105});
    scena.tabelle.nodi.push_back({6, 10, 2, 106});
    scena.tabelle.nodi.push_back({70, 20, 11, GetParam(), "01/01/2025", "31/12/2025"});
    prepara();
    premi();
    comePrima();
    EXPECT_EQ(scena.messaggi().back(), "Cliente " + std::to_string(GetParam()) +
                                           " già legato alla distinta B: Nodo padre 201 - SOGGETTO 201 nel periodo "
                                           "dal 01/01/2025 al 31/12/2025\n");
    EXPECT_EQ(scena.host->messages.back().style, 16);
}

INSTANTIATE_TEST_SUITE_P(OgniNodo, SovrapposizioneTest, testing::Values(102, 103, 104, 105, 106));

TEST_F(SpostaValiditaTest, ShowsTheReasonsOfAllTheNodesRefused) {
    scena.tabelle.nodi.push_back({5, 10, 2, 105});
    for (const std::int64_t account : {103, 105})
        scena.tabelle.nodi.push_back({account + 500, 20, 11, account, "01/01/2025", "31/12/2025"});
    prepara();
    premi();
    comePrima();
    const auto testo = scena.messaggi().back();
    EXPECT_NE(testo.find("Cliente 103 già legato"), std::string::npos);
    EXPECT_NE(testo.find("Cliente 105 già legato"), std::string::npos);
    EXPECT_EQ(std::count(testo.begin(), testo.end(), '\n'), 2);
}

TEST_F(SpostaValiditaTest, ShowsTheReasonOfTheLastSkippedNodeAfterThoseOfRefusedLinks) {
    // 103's new link overlaps; 105 hangs already above 102 in the destination and is skipped last.
    scena.tabelle.nodi = {{1, 10, {}, 101}, {2, 10, 1, 102}, {3, 10, 2, 103}, {5, 10, 2, 105}, {11, 20, {}, 201}};
    scena.tabelle.nodi.push_back({70, 20, 11, 103, "01/01/2025", "31/12/2025"});
    scena.tabelle.nodi.push_back({40, 20, {}, 105, "01/01/2010", "31/12/2010"});
    scena.tabelle.nodi.push_back({41, 20, 40, 102, "01/01/2010", "31/12/2010"});
    prepara();
    premi();
    comePrima();
    EXPECT_EQ(scena.messaggi().back(),
              "Cliente 103 già legato alla distinta B: Nodo padre 201 - SOGGETTO 201 nel periodo dal 01/01/2025 al "
              "31/12/2025\nCliente 105: legame presente in un nodo padre nella struttura.\n");
}

TEST_F(SpostaValiditaTest, ForgetsTheReasonsOfTheMoveBefore) {
    scena.tabelle.nodi.push_back({70, 20, 11, 103, "01/01/2025", "31/12/2025"});
    prepara();
    premi();
    std::erase_if(scena.tabelle.nodi, [](const auto& nodo) { return nodo.id == 70; });
    prepara();
    scena.stato.DataFineLegame.clear();
    premi();
    EXPECT_NE(copia(104), nullptr);
}

} // namespace
