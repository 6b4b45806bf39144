// The statements' texts, to the blank.

#include "component/DistinteFinte.h"
#include "component/data/IstruzioniDistinta.h"
#include "component/data/Parametri.h"
#include "component/interaction/FRMQZ_PARAMETRI.h"
#include "component/maintenance/IstruzioniControlli.h"
#include "component/maintenance/IstruzioniSpostamento.h"
#include "contract/RuntimeError.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

using contract::Value;
using prove::giorno;
using qz::latoDestinazione;
using qz::latoOrigine;

using qz::CodiceAccount;
using qz::DistintaId;
using qz::NodoId;
using qz::TipoCF;

namespace {

const std::string padriEFigli =
    " FROM         QZ02_DISTINTA QZ02_DISTINTA_PADRE LEFT OUTER JOIN"
    "                       QZ01_TIPODISTINTA ON QZ02_DISTINTA_PADRE.QZ02_ID_QZ01 = QZ01_TIPODISTINTA.QZ01_ID RIGHT "
    "OUTER JOIN"
    "                       QZ02_DISTINTA QZ02_DISTINTA_FIGLIO ON QZ02_DISTINTA_PADRE.QZ02_ID = "
    "QZ02_DISTINTA_FIGLIO.QZ02_IDPARENT_QZ02 LEFT OUTER JOIN"
    "                       CG44_CLIFOR LEFT OUTER JOIN"
    "                       CG16_ANAGGEN ON CG44_CLIFOR.CG44_CODICE_CG16 = CG16_ANAGGEN.CG16_CODICE ON "
    "                       QZ02_DISTINTA_PADRE.QZ02_DITTA_CG18 = CG44_CLIFOR.CG44_DITTA_CG18 AND "
    "                       QZ02_DISTINTA_PADRE.QZ02_TIPOCF_CG44 = CG44_CLIFOR.CG44_TIPOCF AND "
    "                       QZ02_DISTINTA_PADRE.QZ02_CLIFOR_CG44 = CG44_CLIFOR.CG44_CLIFOR";

const qz::Autore autore{"O'Brien", "GRUPPO", giorno("15/06/2024")};

TEST(IstruzioniDistinta, ReadTheTypesOfBothKinds) {
    EXPECT_EQ(qz::istruzioneTipi(12, 0).text(), "SELECT *  FROM QZ01_TIPODISTINTA WHERE QZ01_DITTA_CG18 = 12   AND "
                                                "QZ01_INDTIPOSOGG = 0 ");
    EXPECT_EQ(qz::istruzioneTipi(12, 1).text(), "SELECT *  FROM QZ01_TIPODISTINTA WHERE QZ01_DITTA_CG18 = 12   AND "
                                                "QZ01_INDTIPOSOGG = 1 ");
}

TEST(IstruzioniDistinta, ReadTheGuidOnTheDestinationOnly) {
    EXPECT_EQ(qz::istruzioneDivisione(latoOrigine(), "7").text(),
              " SELECT QZ01_IDDIV_CO1A FROM QZ01_TIPODISTINTA WHERE QZ01_ID = 7");
    EXPECT_EQ(qz::istruzioneDivisione(latoDestinazione(), "7").text(),
              " SELECT QZ01_IDDIV_CO1A, QZ01_GUID FROM QZ01_TIPODISTINTA WHERE QZ01_ID = 7");
}

TEST(IstruzioniDistinta, ReadTheNodes) {
    const std::string inizio = " SELECT QZ02_ID,  "
                               " (SELECT CG16_RAGSOANAG"
                               "    FROM CG44_CLIFOR"
                               "    INNER JOIN CG16_ANAGGEN "
                               "            ON CG44_CLIFOR.CG44_CODICE_CG16 = CG16_ANAGGEN.CG16_CODICE"
                               "           AND QZ02_DISTINTA.QZ02_DITTA_CG18 = CG44_CLIFOR.CG44_DITTA_CG18 "
                               "           AND QZ02_DISTINTA.QZ02_TIPOCF_CG44 = CG44_CLIFOR.CG44_TIPOCF "
                               "           AND QZ02_DISTINTA.QZ02_CLIFOR_CG44 = CG44_CLIFOR.CG44_CLIFOR"
                               "  ) AS RagioneSociale,"
                               " QZ02_DESCR, "
                               " QZ02_IDPARENT_QZ02, "
                               " QZ02_ID AS COD, "
                               " QZ02_IDPARENT_QZ02 AS CODP, "
                               " QZ02_CLIFOR_CG44, "
                               " QZ02_DATAINIZIOVAL, "
                               " QZ02_DATAFINEVAL ";
    const std::string fine = " , QZ02_GUID "
                             " FROM         QZ02_DISTINTA"
                             " WHERE QZ02_DITTA_CG18 = 12"
                             "   AND QZ02_TIPOCF_CG44 = 1"
                             "   AND QZ02_ID_QZ01 = '7'"
                             "   AND QZ02_CLIFOR_CG44 IS NOT NULL";
    EXPECT_EQ(qz::istruzioneNodi(latoOrigine(), 12, 1, "7").text(),
              inizio +
                  " , QZ02_CLIFORFATT_CG44 , QZ02_TIPOANAGFATT, QZ02_IDSTRUTTURA_LP09, QZ02_IDLOCALIZZATA_LP09, "
                  "QZ02_INDEREPROMO" +
                  fine);
    EXPECT_EQ(qz::istruzioneNodi(latoDestinazione(), 12, 1, "7").text(), inizio + fine);
}

TEST(IstruzioniDistinta, RefuseAnIdThatIsNoNumberWhereItStandsBare) {
    for (const auto* id : {"", "x", "1 OR 1=1", "1;"})
        EXPECT_THROW(qz::istruzioneDivisione(latoOrigine(), id), contract::RuntimeError) << id;
}

TEST(IstruzioniDistinta, DoubleTheQuotesOfAnIdBetweenQuotes) {
    EXPECT_NE(qz::istruzioneNodi(latoOrigine(), 1, 0, "7' OR '1'='1").text().find("= '7'' OR ''1''=''1'"),
              std::string::npos);
}

TEST(IstruzioniParametri, ReadTheCompanysRow) {
    EXPECT_EQ(qz::istruzioneParametri(12).text(), " SELECT   QZ03_ID_WF02 AS StatoLegame, "
                                                  " ISNULL(QZ03_TIPOCARICODATA,0) AS TipoCaricaDATA, "
                                                  " ISNULL(QZ03_DATAINIZIOVAL,'01/01/2000') AS DataFissaINIZIO, "
                                                  " ISNULL(QZ03_DATAFINEVAL,'01/01/2099') AS DataFissaFINE, "
                                                  " ISNULL(QZ03_FLG_ANAG,0) AS flg_Anagrafica, "
                                                  " ISNULL(QZ03_FLG_CONDVEND,0) AS flg_CondVendita, "
                                                  " ISNULL(QZ03_FLG_CLAS,0) AS flg_Classificazioni, "
                                                  " ISNULL(QZ03_FLG_PROV,0) AS flg_Provvigioni,"
                                                  " ISNULL(QZ03_TIPOANAGFATT,0) AS TipoCaricaFatt"
                                                  " FROM  QZ03_PARAMETRI"
                                                  " WHERE QZ03_DITTA_CG18 = 12");
}

TEST(IstruzioniParametri, ReadTheRowOfTheFormWithoutTheInvoicingKind) {
    EXPECT_EQ(qz::istruzioneValoriParametri(12).text(), " SELECT   QZ03_ID_WF02 AS StatoLegame, "
                                                        " ISNULL(QZ03_TIPOCARICODATA,0) AS TipoCaricaDATA, "
                                                        " ISNULL(QZ03_DATAINIZIOVAL,'01/01/2000') AS DataFissaINIZIO, "
                                                        " ISNULL(QZ03_DATAFINEVAL,'01/01/2099') AS DataFissaFINE, "
                                                        " ISNULL(QZ03_FLG_ANAG,0) AS flg_Anagrafica, "
                                                        " ISNULL(QZ03_FLG_CONDVEND,0) AS flg_CondVendita, "
                                                        " ISNULL(QZ03_FLG_CLAS,0) AS flg_Classificazioni, "
                                                        " ISNULL(QZ03_FLG_PROV,0) AS flg_Provvigioni"
                                                        " FROM  QZ03_PARAMETRI"
                                                        " WHERE QZ03_DITTA_CG18 = 12");
    EXPECT_EQ(qz::istruzioneRigaParametri(12).text(), "SELECT * FROM QZ03_PARAMETRI  WHERE QZ03_DITTA_CG18 = 12");
}

TEST(IstruzioniParametri, ListAndDescribeTheStates) {
    EXPECT_EQ(qz::istruzioneElencoStati().text(), " SELECT WF02_ID, WF02_DESCR FROM  WF02_STATI ORDER BY WF02_ID ");
    EXPECT_EQ(qz::istruzioneDescrizioneStato(4).text(), " SELECT WF02_DESCR FROM  WF02_STATI WHERE WF02_ID = 4");
}

TEST(IstruzioniControlli, CountTheCompanysRows) {
    EXPECT_EQ(qz::istruzioneContaDitta(12, DistintaId(7)).text(),
              " SELECT Count(*) as Conta  FROM QZ02_DISTINTA  WHERE QZ02_DITTA_CG18 = 12   AND QZ02_ID_QZ01 = 7");
}

TEST(IstruzioniControlli, ReadTheParentsOfAnAccount) {
    EXPECT_EQ(qz::istruzionePadri({12, TipoCF(1), CodiceAccount(345)}, DistintaId(7)).text(),
              " SELECT  CG44_CLIFOR AS Anagrafica, CG16_RAGSOANAG AS RagSoc, QZ02_DISTINTA_FIGLIO.QZ02_DATAINIZIOVAL "
              "AS DataI, QZ02_DISTINTA_FIGLIO.QZ02_DATAFINEVAL AS DataF " +
                  padriEFigli +
                  " WHERE QZ02_DISTINTA_FIGLIO.QZ02_DITTA_CG18 = 12"
                  "   AND QZ02_DISTINTA_FIGLIO.QZ02_CLIFOR_CG44 = 345"
                  "   AND QZ02_DISTINTA_FIGLIO.QZ02_TIPOCF_CG44 = 1"
                  "   AND QZ02_DISTINTA_FIGLIO.QZ02_ID_QZ01 = 7");
}

TEST(IstruzioniControlli, DecodeTheParentWithAndWithoutADate) {
    const std::string inizio = "SELECT QZ02_DISTINTA_DEST.QZ02_ID AS ID , QZ02_DISTINTA_DEST.QZ02_CLIFOR_CG44 AS CODICE"
                               " FROM QZ02_DISTINTA QZ02_DISTINTA_ORIG INNER JOIN QZ02_DISTINTA QZ02_DISTINTA_DEST "
                               "      ON QZ02_DISTINTA_ORIG.QZ02_DITTA_CG18 = QZ02_DISTINTA_DEST.QZ02_DITTA_CG18 AND "
                               "         QZ02_DISTINTA_ORIG.QZ02_TIPOCF_CG44 = QZ02_DISTINTA_DEST.QZ02_TIPOCF_CG44 AND "
                               "         QZ02_DISTINTA_ORIG.QZ02_CLIFOR_CG44 = QZ02_DISTINTA_DEST.QZ02_CLIFOR_CG44 ";
    EXPECT_EQ(qz::istruzioneDecodificaPadre(NodoId(99), std::nullopt).text(),
              inizio + " WHERE QZ02_DISTINTA_ORIG.QZ02_ID = 99");
    EXPECT_EQ(qz::istruzioneDecodificaPadre(NodoId(99), giorno("01/07/2024")).text(),
              inizio + "   AND QZ02_DISTINTA_DEST.QZ02_DATAINIZIOVAL =   CONVERT(DateTime,'01/07/2024',103)"
                       " WHERE QZ02_DISTINTA_ORIG.QZ02_ID = 99");
}

TEST(IstruzioniControlli, ReadTheParentNode) {
    EXPECT_EQ(qz::istruzioneNodo(12, NodoId(0)).text(),
              " SELECT * FROM QZ02_DISTINTA  WHERE QZ02_DITTA_CG18 = 12   AND QZ02_ID  = 0");
}

TEST(IstruzioniControlli, ReadTheOverlappingLinks) {
    const std::string testo =
        " SELECT  CG44_CLIFOR AS Anagrafica, CG16_RAGSOANAG AS RagSoc, "
        " QZ02_DISTINTA_FIGLIO.QZ02_DATAINIZIOVAL AS DataI,"
        " QZ02_DISTINTA_FIGLIO.QZ02_DATAFINEVAL AS DataF, "
        " QZ01_TIPODISTINTA.QZ01_CODICE AS CodDistinta,"
        " QZ01_TIPODISTINTA.QZ01_DESCR AS DescDistinta" +
        padriEFigli +
        " WHERE QZ02_DISTINTA_FIGLIO.QZ02_DITTA_CG18 = 12"
        "   AND QZ02_DISTINTA_FIGLIO.QZ02_CLIFOR_CG44 = 345"
        "   AND QZ02_DISTINTA_FIGLIO.QZ02_TIPOCF_CG44 = 1"
        "   AND (CONVERT(DateTime,'01/07/2024',103) BETWEEN  QZ02_DISTINTA_FIGLIO.QZ02_DATAINIZIOVAL  AND  "
        "QZ02_DISTINTA_FIGLIO.QZ02_DATAFINEVAL  "
        "        OR CONVERT(DateTime,'31/12/2099',103) BETWEEN QZ02_DISTINTA_FIGLIO.QZ02_DATAINIZIOVAL  AND "
        "QZ02_DISTINTA_FIGLIO.QZ02_DATAFINEVAL "
        "        OR (CONVERT(DateTime,'01/07/2024',103) <= QZ02_DISTINTA_FIGLIO.QZ02_DATAINIZIOVAL AND "
        "CONVERT(DateTime,'31/12/2099',103) >= QZ02_DISTINTA_FIGLIO.QZ02_DATAFINEVAL)"
        "        )";
    const qz::Soggetto soggetto{12, TipoCF(1), CodiceAccount(345)};
    const qz::Periodo periodo{giorno("01/07/2024"), "31/12/2099"};
    EXPECT_EQ(qz::istruzioneSovrapposti(soggetto, periodo, std::nullopt).text(),
              testo + " ORDER BY QZ02_DISTINTA_FIGLIO.QZ02_ID_QZ01");
    EXPECT_EQ(qz::istruzioneSovrapposti(soggetto, periodo, NodoId(99)).text(),
              testo + "   AND QZ02_DISTINTA_FIGLIO.QZ02_ID <> 99"
                      " ORDER BY QZ02_DISTINTA_FIGLIO.QZ02_ID_QZ01");
}

TEST(IstruzioniControlli, ReadTheDefinitiveBonusWithAndWithoutADate) {
    const std::string inizio = "SELECT TOP 1 *  "
                               " FROM  QZ18_LIQUIDAZIONE INNER JOIN"
                               "       QZ13_PREMI ON QZ18_LIQUIDAZIONE.QZ18_ID_QZ13 = QZ13_PREMI.QZ13_ID "
                               "       INNER JOIN "
                               "       QZ14_SOGGCONTR ON QZ13_PREMI.QZ13_ID = QZ14_SOGGCONTR.QZ14_ID_QZ13"
                               " WHERE QZ13_DITTA_CG18    = 12"
                               "   AND QZ14_ID_QZ02       = 99";
    const std::string fine = "   AND QZ18_STATOSCADENZA >= 2 "
                             "   AND QZ14_ID_QZ02 NOT IN ("
                             "                            SELECT QZ27_ID_QZ02 "
                             "                              FROM QZ27_SOGGCONTRDISAB "
                             "                             WHERE QZ27_DITTA_CG18     = QZ14_DITTA_CG18     "
                             "                               AND QZ27_CODCONTR_QZ10  = QZ14_CODCONTR_QZ10  "
                             "                               AND QZ27_VERCONTR_QZ10  = QZ14_VERCONTR_QZ10  "
                             "                               AND QZ27_PROGRCOND_QZ13 = QZ14_PROGRCOND_QZ13 "
                             "                            )   ";
    EXPECT_EQ(qz::istruzionePremio(12, NodoId(99), std::nullopt).text(), inizio + fine);
    EXPECT_EQ(qz::istruzionePremio(12, NodoId(99), "30/06/2024").text(),
              inizio + "   AND QZ18_DATASCADENZA  > CONVERT(DateTime,'30/06/2024',103) " + fine);
}

TEST(IstruzioniSpostamento, MoveTheNode) {
    EXPECT_EQ(qz::istruzioneSpostaNodo(NodoId(11), NodoId(22), DistintaId(7), DistintaId(8), autore).text(),
              "UPDATE QZ02_DISTINTA "
              " SET QZ02_IDPARENT_QZ02 = 22,"
              "     QZ02_ID_QZ01 = '8',"
              "     QZ02_DATAVAR = CONVERT(DateTime,'15/06/2024',103),"
              "     QZ02_GRUPPOVAR = 'GRUPPO',"
              "     QZ02_UTENTEVAR = 'O''Brien'"
              " WHERE QZ02_ID_QZ01 = '7'"
              "   AND QZ02_ID = 11");
    EXPECT_EQ(qz::istruzioneSpostaNodo(std::nullopt, std::nullopt, DistintaId(7), DistintaId(8), autore).text(),
              "UPDATE QZ02_DISTINTA "
              " SET QZ02_IDPARENT_QZ02 = ,"
              "     QZ02_ID_QZ01 = '8',"
              "     QZ02_DATAVAR = CONVERT(DateTime,'15/06/2024',103),"
              "     QZ02_GRUPPOVAR = 'GRUPPO',"
              "     QZ02_UTENTEVAR = 'O''Brien'"
              " WHERE QZ02_ID_QZ01 = '7'"
              "   AND QZ02_ID = ");
}

TEST(IstruzioniSpostamento, CountAndReadTheOriginsRowsWithTheIdBare) {
    EXPECT_EQ(qz::istruzioneContaNodi(DistintaId(7)).text(),
              " SELECT Count(*) as Conta  FROM QZ02_DISTINTA  WHERE QZ02_ID_QZ01 = 7");
    EXPECT_EQ(qz::istruzioneFigli(NodoId(11), DistintaId(7)).text(),
              "SELECT  *  FROM  QZ02_DISTINTA  WHERE QZ02_IDPARENT_QZ02 = 11   AND QZ02_ID_QZ01 = 7");
}

TEST(IstruzioniSpostamento, MoveADescendantWithoutItsAuditColumns) {
    EXPECT_EQ(qz::istruzioneAggiornaDistinta(NodoId(11), DistintaId(7), DistintaId(8)).text(),
              "UPDATE QZ02_DISTINTA  SET QZ02_ID_QZ01 = '8' WHERE QZ02_ID_QZ01 = '7'   AND QZ02_ID = 11");
}

TEST(IstruzioniSpostamento, ReadTheTwoNodesAgain) {
    const std::string inizio = "SELECT QZ02_ID, QZ02_ID_QZ01, QZ02_IDPARENT_QZ02, QZ02_DATAINIZIOVAL, QZ02_DATAFINEVAL "
                               "FROM QZ02_DISTINTA WHERE QZ02_ID IN (";
    EXPECT_EQ(qz::istruzioneRilettura(11, 22).text(), inizio + "11, 22)");
    EXPECT_EQ(qz::istruzioneRilettura(11, contract::Value::null()).text(), inizio + "11)");
}

TEST(IstruzioniSpostamento, CloseALink) {
    EXPECT_EQ(qz::istruzioneChiudiLegame(NodoId(11), DistintaId(7), giorno("30/06/2024"), autore).text(),
              "UPDATE QZ02_DISTINTA "
              " SET QZ02_DATAFINEVAL = (CASE WHEN QZ02_DATAINIZIOVAL > CONVERT(DateTime,'30/06/2024',103)"
              "                              THEN QZ02_DATAINIZIOVAL "
              "                              ELSE CONVERT(DateTime,'30/06/2024',103)"
              "                         END),"
              "     QZ02_GRUPPOVAR = 'GRUPPO',"
              "     QZ02_UTENTEVAR = 'O''Brien'"
              " WHERE QZ02_ID_QZ01 = '7'"
              "   AND QZ02_ID = 11"
              "   AND QZ02_DATAFINEVAL > CONVERT(DateTime,'30/06/2024',103)");
}

const std::string colonneObbligatorie = "INSERT INTO QZ02_DISTINTA "
                                        " ("
                                        "  QZ02_ID_QZ01,"
                                        "  QZ02_IDPARENT_QZ02,"
                                        "  QZ02_DITTA_CG18,"
                                        "  QZ02_TIPOCF_CG44,"
                                        "  QZ02_CLIFOR_CG44,"
                                        "  QZ02_INDREGPROV,"
                                        "  QZ02_ID_WF02,"
                                        "  QZ02_DATAINIZIOVAL,"
                                        "  QZ02_DATAFINEVAL,"
                                        "  QZ02_DATACRE,"
                                        "  QZ02_GRUPPOCRE,"
                                        "  QZ02_UTENTECRE,"
                                        "  QZ02_DATAVAR,"
                                        "  QZ02_GRUPPOVAR,"
                                        "  QZ02_UTENTEVAR";
const std::string valoriObbligatori = " '8',"
                                      "  22,"
                                      "  12,"
                                      "  1,"
                                      "  345,"
                                      "  0,"
                                      "  3,"
                                      "  CONVERT(DateTime,'01/07/2024',103),"
                                      "  CONVERT(DateTime,'31/12/2099',103),"
                                      "  CONVERT(DateTime,'15/06/2024',103),"
                                      "  'GRUPPO',"
                                      "  'O''Brien',"
                                      "  CONVERT(DateTime,'15/06/2024',103),"
                                      "  'GRUPPO',"
                                      "  'O''Brien'";

TEST(IstruzioniSpostamento, InsertALinkWithoutOptionalColumns) {
    const qz::NuovoLegame legame{DistintaId(8), 3, giorno("01/07/2024"), "31/12/2099"};
    EXPECT_EQ(
        qz::istruzioneInserisciLegame({NodoId(22), 12, TipoCF(1), CodiceAccount(345)}, legame, "G-1", autore).text(),
        colonneObbligatorie + " , QZ02_GUID " + " ) VALUES (" + valoriObbligatori + ", 'G-1' " + " )");
}

TEST(IstruzioniSpostamento, InsertALinkWithEveryCombinationOfOptionalColumns) {
    const std::array<std::string, 5> colonne{", QZ02_CLIFORFATT_CG44 ", ", QZ02_TIPOANAGFATT ",
                                             ", QZ02_IDSTRUTTURA_LP09 ", ", QZ02_IDLOCALIZZATA_LP09 ",
                                             ", QZ02_INDEREPROMO "};
    const qz::NuovoLegame legame{DistintaId(8), 3, giorno("01/07/2024"), "31/12/2099"};
    for (unsigned maschera = 0; maschera < 32; ++maschera) {
        qz::Facoltativi facoltativi;
        std::string attese = colonneObbligatorie;
        std::string valori = valoriObbligatori;
        for (std::size_t i = 0; i < 5; ++i) {
            if ((maschera >> i & 1U) == 0)
                continue;
            facoltativi[i] = static_cast<std::int32_t>(100 + i);
            attese += colonne[i];
            valori += "," + std::to_string(100 + i);
        }
        const qz::NodoDaCopiare nodo{NodoId(22), 12, TipoCF(1), CodiceAccount(345),
                                     std::make_shared<const qz::Facoltativi>(facoltativi)};
        EXPECT_EQ(qz::istruzioneInserisciLegame(nodo, legame, "G-1", autore).text(),
                  attese + " , QZ02_GUID " + " ) VALUES (" + valori + ", 'G-1' " + " )");
    }
}

} // namespace
