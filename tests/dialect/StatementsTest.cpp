// The statements that the component sends, literally.

#include "dialect/DialectFixture.h"

namespace dialect_test {
namespace {

using Bindings = std::vector<Binding>;

class StatementsTest : public DialectTest {};

void addDate(Statement& statement, int year, int month, int day) {
    statement.date(*contract::Date::of(year, month, day));
}

TEST_F(StatementsTest, Types) {
    Statement s;
    s << "SELECT * "
      << " FROM QZ01_TIPODISTINTA"
      << " WHERE QZ01_DITTA_CG18 = ";
    s.number(1);
    s << "   AND QZ01_INDTIPOSOGG = 0 ";
    EXPECT_EQ(translate(s).text, "SELECT * FROM QZ01_TIPODISTINTA WHERE QZ01_DITTA_CG18 = ?1 AND QZ01_INDTIPOSOGG = 0");
}

TEST_F(StatementsTest, AKeyThatIsGivenNeedsNoLeave) {
    EXPECT_EQ(textOf("SET IDENTITY_INSERT QZ02_DISTINTA ON"), "SELECT NULL WHERE 0");
    EXPECT_EQ(textOf("set identity_insert QZ02_DISTINTA off;"), "SELECT NULL WHERE 0");
    EXPECT_EQ(refusalOfText("SET NOCOUNT ON").substr(0, 30), "Istruzione SQL non compresa pr");
}

TEST_F(StatementsTest, NodesOfADistinta) {
    Statement s;
    s << " SELECT QZ02_ID,  "
      << " (SELECT CG16_RAGSOANAG"
      << "    FROM CG44_CLIFOR"
      << "    INNER JOIN CG16_ANAGGEN "
      << "            ON CG44_CLIFOR.CG44_CODICE_CG16 = CG16_ANAGGEN.CG16_CODICE"
      << "           AND QZ02_DISTINTA.QZ02_DITTA_CG18 = CG44_CLIFOR.CG44_DITTA_CG18 "
      << "  ) AS RagioneSociale,"
      << " QZ02_ID AS COD, "
      << " QZ02_DATAINIZIOVAL "
      << " , QZ02_GUID "
      << " FROM         QZ02_DISTINTA"
      << " WHERE QZ02_DITTA_CG18 = ";
    s.number(1);
    s << "   AND QZ02_ID_QZ01 = '";
    s.text("12");
    s << "'"
      << "   AND QZ02_CLIFOR_CG44 IS NOT NULL";
    const auto translation = translate(s);
    EXPECT_EQ(translation.text,
              "SELECT QZ02_ID, (SELECT CG16_RAGSOANAG FROM CG44_CLIFOR JOIN CG16_ANAGGEN ON "
              "CG44_CLIFOR.CG44_CODICE_CG16 = CG16_ANAGGEN.CG16_CODICE AND QZ02_DISTINTA.QZ02_DITTA_CG18 = "
              "CG44_CLIFOR.CG44_DITTA_CG18) AS RagioneSociale, QZ02_ID AS COD, QZ02_DATAINIZIOVAL, QZ02_GUID FROM "
              "QZ02_DISTINTA WHERE QZ02_DITTA_CG18 = ?1 AND QZ02_ID_QZ01 = ?2 AND QZ02_CLIFOR_CG44 IS NOT NULL");
    EXPECT_EQ(bindingsOf(translation), (Bindings{Binding::number, Binding::whole}));
}

TEST_F(StatementsTest, LinkParameters) {
    EXPECT_EQ(textOf(" SELECT   QZ03_ID_WF02 AS StatoLegame,  ISNULL(QZ03_TIPOCARICODATA,0) AS TipoCaricaDATA, "
                     " ISNULL(QZ02_DATAINIZIOVAL,'01/01/2000') AS DataFissaINIZIO,  "
                     "ISNULL(QZ02_DATAFINEVAL,'01/01/2099') AS DataFissaFINE FROM  QZ02_DISTINTA"),
              "SELECT QZ03_ID_WF02 AS StatoLegame, ifnull(QZ03_TIPOCARICODATA, 0) AS TipoCaricaDATA, "
              "ifnull(QZ02_DATAINIZIOVAL, '2000-01-01') AS DataFissaINIZIO, ifnull(QZ02_DATAFINEVAL, '2099-01-01') AS "
              "DataFissaFINE FROM QZ02_DISTINTA");
}

TEST_F(StatementsTest, StructuralUpdate) {
    Statement s;
    s << "UPDATE QZ02_DISTINTA "
      << " SET QZ02_IDPARENT_QZ02 = ";
    s.bare(contract::Value(std::int64_t{7}));
    s << ","
      << "     QZ02_ID_QZ01 = '";
    s.text("12");
    s << "',"
      << "     QZ02_DATAVAR = CONVERT(DateTime,'";
    addDate(s, 2024, 5, 1);
    s << "',103),"
      << "     QZ02_GRUPPOVAR = '";
    s.text("ADMIN");
    s << "'"
      << " WHERE QZ02_ID_QZ01 = '";
    s.text("11");
    s << "'"
      << "   AND QZ02_ID = ";
    s.bare(contract::Value(std::int64_t{3}));
    const auto translation = translate(s);
    EXPECT_EQ(translation.text,
              "UPDATE QZ02_DISTINTA SET QZ02_IDPARENT_QZ02 = ?1, QZ02_ID_QZ01 = ?2, QZ02_DATAVAR = ?3, "
              "QZ02_GRUPPOVAR = ?4 WHERE QZ02_ID_QZ01 = ?5 AND QZ02_ID = ?6");
    EXPECT_EQ(bindingsOf(translation), (Bindings{Binding::number, Binding::whole, Binding::date, Binding::text,
                                                 Binding::whole, Binding::number}));
}

TEST_F(StatementsTest, TheTwoNodesOfAMove) {
    Statement s;
    s << "SELECT QZ02_ID, QZ02_ID_QZ01, QZ02_IDPARENT_QZ02, QZ02_DATAINIZIOVAL, QZ02_DATAFINEVAL FROM QZ02_DISTINTA "
         "WHERE QZ02_ID IN (";
    s.bare(contract::Value(std::int64_t{7}));
    s << ", ";
    s.bare(contract::Value(std::int64_t{12}));
    s << ")";
    EXPECT_EQ(translate(s).text, "SELECT QZ02_ID, QZ02_ID_QZ01, QZ02_IDPARENT_QZ02, QZ02_DATAINIZIOVAL, "
                                 "QZ02_DATAFINEVAL FROM QZ02_DISTINTA WHERE QZ02_ID IN (?1, ?2)");
}

TEST_F(StatementsTest, ClosingAnOldLink) {
    Statement s;
    s << "UPDATE QZ02_DISTINTA "
      << " SET QZ02_DATAFINEVAL = (CASE WHEN QZ02_DATAINIZIOVAL > CONVERT(DateTime,'";
    addDate(s, 2024, 6, 30);
    s << "',103)"
      << "                              THEN QZ02_DATAINIZIOVAL "
      << "                              ELSE CONVERT(DateTime,'";
    addDate(s, 2024, 6, 30);
    s << "',103)"
      << "                         END)"
      << " WHERE QZ02_ID = ";
    s.number(5);
    s << "   AND QZ02_DATAFINEVAL > CONVERT(DateTime,'";
    addDate(s, 2024, 6, 30);
    s << "',103)";
    EXPECT_EQ(translate(s).text,
              "UPDATE QZ02_DISTINTA SET QZ02_DATAFINEVAL = CASE WHEN QZ02_DATAINIZIOVAL > ?1 THEN QZ02_DATAINIZIOVAL "
              "ELSE ?2 END WHERE QZ02_ID = ?3 AND QZ02_DATAFINEVAL > ?4");
}

TEST_F(StatementsTest, ParentsOfAnAccount) {
    Statement s;
    s << " SELECT  CG44_CLIFOR AS Anagrafica, CG16_RAGSOANAG AS RagSoc, QZ02_DISTINTA_FIGLIO.QZ02_DATAINIZIOVAL AS "
         "DataI, QZ02_DISTINTA_FIGLIO.QZ02_DATAFINEVAL AS DataF "
      << " FROM         QZ02_DISTINTA QZ02_DISTINTA_PADRE LEFT OUTER JOIN"
      << "                       QZ01_TIPODISTINTA ON QZ02_DISTINTA_PADRE.QZ02_ID_QZ01 = QZ01_TIPODISTINTA.QZ01_ID "
         "RIGHT OUTER JOIN"
      << "                       QZ02_DISTINTA QZ02_DISTINTA_FIGLIO ON QZ02_DISTINTA_PADRE.QZ02_ID = "
         "QZ02_DISTINTA_FIGLIO.QZ02_IDPARENT_QZ02 LEFT OUTER JOIN"
      << "                       CG44_CLIFOR LEFT OUTER JOIN"
      << "                       CG16_ANAGGEN ON CG44_CLIFOR.CG44_CODICE_CG16 = CG16_ANAGGEN.CG16_CODICE ON "
      << "                       QZ02_DISTINTA_PADRE.QZ02_DITTA_CG18 = CG44_CLIFOR.CG44_DITTA_CG18 AND "
      << "                       QZ02_DISTINTA_PADRE.QZ02_TIPOCF_CG44 = CG44_CLIFOR.CG44_TIPOCF AND "
      << "                       QZ02_DISTINTA_PADRE.QZ02_CLIFOR_CG44 = CG44_CLIFOR.CG44_CLIFOR"
      << " WHERE QZ02_DISTINTA_FIGLIO.QZ02_DITTA_CG18 = ";
    s.number(1);
    s << "   AND QZ02_DISTINTA_FIGLIO.QZ02_CLIFOR_CG44 = ";
    s.number(123);
    s << " ORDER BY QZ02_DISTINTA_FIGLIO.QZ02_ID_QZ01";
    EXPECT_EQ(translate(s).text,
              "SELECT CG44_CLIFOR AS Anagrafica, CG16_RAGSOANAG AS RagSoc, QZ02_DISTINTA_FIGLIO.QZ02_DATAINIZIOVAL AS "
              "DataI, QZ02_DISTINTA_FIGLIO.QZ02_DATAFINEVAL AS DataF FROM QZ02_DISTINTA AS QZ02_DISTINTA_FIGLIO LEFT "
              "JOIN QZ02_DISTINTA AS QZ02_DISTINTA_PADRE ON QZ02_DISTINTA_PADRE.QZ02_ID = "
              "QZ02_DISTINTA_FIGLIO.QZ02_IDPARENT_QZ02 LEFT JOIN QZ01_TIPODISTINTA ON "
              "QZ02_DISTINTA_PADRE.QZ02_ID_QZ01 = QZ01_TIPODISTINTA.QZ01_ID LEFT JOIN CG44_CLIFOR ON "
              "QZ02_DISTINTA_PADRE.QZ02_DITTA_CG18 = CG44_CLIFOR.CG44_DITTA_CG18 AND "
              "QZ02_DISTINTA_PADRE.QZ02_TIPOCF_CG44 = CG44_CLIFOR.CG44_TIPOCF AND "
              "QZ02_DISTINTA_PADRE.QZ02_CLIFOR_CG44 = CG44_CLIFOR.CG44_CLIFOR LEFT JOIN CG16_ANAGGEN ON "
              "CG44_CLIFOR.CG44_CODICE_CG16 = CG16_ANAGGEN.CG16_CODICE WHERE QZ02_DISTINTA_FIGLIO.QZ02_DITTA_CG18 = ?1 "
              "AND QZ02_DISTINTA_FIGLIO.QZ02_CLIFOR_CG44 = ?2 ORDER BY QZ02_DISTINTA_FIGLIO.QZ02_ID_QZ01");
}

TEST_F(StatementsTest, OverlapConditions) {
    Statement s;
    s << "SELECT QZ02_ID FROM QZ02_DISTINTA QZ02_DISTINTA_FIGLIO WHERE QZ02_DISTINTA_FIGLIO.QZ02_DITTA_CG18 = ";
    s.number(1);
    s << "   AND (CONVERT(DateTime,'";
    addDate(s, 2024, 7, 1);
    s << "',103) BETWEEN  QZ02_DISTINTA_FIGLIO.QZ02_DATAINIZIOVAL  AND  QZ02_DISTINTA_FIGLIO.QZ02_DATAFINEVAL  "
      << "        OR (CONVERT(DateTime,'";
    addDate(s, 2024, 7, 1);
    s << "',103) <= QZ02_DISTINTA_FIGLIO.QZ02_DATAINIZIOVAL AND CONVERT(DateTime,'";
    s.text("31/12/2099");
    s << "',103) >= QZ02_DISTINTA_FIGLIO.QZ02_DATAFINEVAL)"
      << "        )"
      << "   AND QZ02_DISTINTA_FIGLIO.QZ02_ID <> ";
    s.number(9);
    EXPECT_EQ(translate(s).text,
              "SELECT QZ02_ID FROM QZ02_DISTINTA AS QZ02_DISTINTA_FIGLIO WHERE QZ02_DISTINTA_FIGLIO.QZ02_DITTA_CG18 = "
              "?1 AND (?2 BETWEEN QZ02_DISTINTA_FIGLIO.QZ02_DATAINIZIOVAL AND QZ02_DISTINTA_FIGLIO.QZ02_DATAFINEVAL OR "
              "?3 <= QZ02_DISTINTA_FIGLIO.QZ02_DATAINIZIOVAL AND ?4 >= QZ02_DISTINTA_FIGLIO.QZ02_DATAFINEVAL) AND "
              "QZ02_DISTINTA_FIGLIO.QZ02_ID <> ?5");
}

TEST_F(StatementsTest, DefinitiveBonus) {
    EXPECT_EQ(textOf("SELECT TOP 1 *   FROM  QZ18_LIQUIDAZIONE INNER JOIN       QZ13_PREMI ON "
                     "QZ18_LIQUIDAZIONE.QZ18_ID_QZ13 = QZ13_PREMI.QZ13_ID        INNER JOIN        QZ14_SOGGCONTR ON "
                     "QZ13_PREMI.QZ13_ID = QZ14_SOGGCONTR.QZ14_ID_QZ13 WHERE QZ13_DITTA_CG18    = 1   AND "
                     "QZ18_STATOSCADENZA >= 2    AND QZ14_ID_QZ02 NOT IN (                            SELECT "
                     "QZ27_ID_QZ02                               FROM QZ27_SOGGCONTRDISAB                              "
                     "WHERE QZ27_DITTA_CG18     = QZ14_DITTA_CG18                                 )   "),
              "SELECT * FROM QZ18_LIQUIDAZIONE JOIN QZ13_PREMI ON QZ18_LIQUIDAZIONE.QZ18_ID_QZ13 = QZ13_PREMI.QZ13_ID "
              "JOIN QZ14_SOGGCONTR ON QZ13_PREMI.QZ13_ID = QZ14_SOGGCONTR.QZ14_ID_QZ13 WHERE QZ13_DITTA_CG18 = 1 AND "
              "QZ18_STATOSCADENZA >= 2 AND QZ14_ID_QZ02 NOT IN (SELECT QZ27_ID_QZ02 FROM QZ27_SOGGCONTRDISAB WHERE "
              "QZ27_DITTA_CG18 = QZ14_DITTA_CG18) LIMIT 1");
}

TEST_F(StatementsTest, AccountDetailLine) {
    EXPECT_EQ(
        textOf(" SELECT   RTrim(CAST(CG44_CLIFOR.CG44_CLIFOR AS Char)) + ' ' + RTrim(CG16_ANAGGEN.CG16_RAGSOANAG) "
               "+ ' - ' +  RTrim(ISNULL(CG16_ANAGGEN.CG16_INDIRIZZO,'')) AS Soggetto  FROM CG44_CLIFOR LEFT "
               "OUTER JOIN CG16_ANAGGEN ON CG44_CLIFOR.CG44_CODICE_CG16 = CG16_ANAGGEN.CG16_CODICE"),
        "SELECT rtrim(CAST(CG44_CLIFOR.CG44_CLIFOR AS TEXT)) || ' ' || rtrim(CG16_ANAGGEN.CG16_RAGSOANAG) || ' - "
        "' || rtrim(ifnull(CG16_ANAGGEN.CG16_INDIRIZZO, '')) AS Soggetto FROM CG44_CLIFOR LEFT JOIN CG16_ANAGGEN "
        "ON CG44_CLIFOR.CG44_CODICE_CG16 = CG16_ANAGGEN.CG16_CODICE");
}

TEST_F(StatementsTest, LookupOfStates) {
    EXPECT_EQ(textOf(" SELECT WF02_ID, WF02_DESCR FROM  WF02_STATI ORDER BY WF02_ID "),
              "SELECT WF02_ID, WF02_DESCR FROM WF02_STATI ORDER BY WF02_ID");
}

TEST_F(StatementsTest, ColumnLayout) {
    EXPECT_EQ(textOf("SELECT * FROM QZ02_DISTINTA WHERE 1=0 "), "SELECT * FROM QZ02_DISTINTA WHERE 1 = 0");
}

} // namespace
} // namespace dialect_test
