// The statements of moves in blocks: their texts to the blank, what they come to in the embedded database, and that
// none of them walks through a table.

#include "component/data/Schema.h"
#include "component/maintenance/IstruzioniBlocchi.h"
#include "platform/dialect/Translator.h"
#include "sqlite/SqliteFixture.h"

#include <algorithm>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include <sqlite3.h>

namespace sqlite_test {

namespace {

using contract::Date;
using contract::Statement;
using qz::CodiceAccount;
using qz::DistintaId;
using qz::NodoId;
using qz::TipoCF;

template <class Id> std::vector<Id> upTo(std::int64_t last) {
    std::vector<Id> ids;
    for (std::int64_t id = 1; id <= last; ++id)
        ids.push_back(Id(id));
    return ids;
}

/// "1, 2, 2, 2" of 2 for a length of 4.
std::string filled(std::int64_t last, std::int64_t length) {
    std::string text;
    for (std::int64_t i = 1; i <= length; ++i)
        text += (i == 1 ? "" : ", ") + std::to_string(std::min(i, last));
    return text;
}

const std::string nodeColumns =
    "SELECT QZ02_ID, QZ02_ID_QZ01, QZ02_IDPARENT_QZ02, QZ02_DITTA_CG18, QZ02_TIPOCF_CG44, QZ02_CLIFOR_CG44, "
    "QZ02_DATAINIZIOVAL, QZ02_DATAFINEVAL, QZ02_CLIFORFATT_CG44, QZ02_TIPOANAGFATT, QZ02_IDSTRUTTURA_LP09, "
    "QZ02_IDLOCALIZZATA_LP09, QZ02_INDEREPROMO, CG44_CLIFOR.CG44_CLIFOR AS Anagrafica FROM QZ02_DISTINTA LEFT OUTER "
    "JOIN CG44_CLIFOR ON QZ02_DISTINTA.QZ02_DITTA_CG18 = CG44_CLIFOR.CG44_DITTA_CG18 AND "
    "QZ02_DISTINTA.QZ02_TIPOCF_CG44 = CG44_CLIFOR.CG44_TIPOCF AND QZ02_DISTINTA.QZ02_CLIFOR_CG44 = "
    "CG44_CLIFOR.CG44_CLIFOR";

class BlockStatements : public testing::Test {
protected:
    BlockStatements() {
        const auto file = folder_.file("distinte.db");
        platform::sqlite::createDatabase(file, qz::schema(), [](Connection& database) { fill(database); });
        connection.SetConnectionString(connectionStringOf(file));
        connection.Open();
    }

    // 1 over 2 and 3 in the first distinta, 4 alone in the second; the account of 3 is not registered.
    static void fill(Connection& database) {
        database.runNative(
            "INSERT INTO QZ01_TIPODISTINTA (QZ01_ID, QZ01_DITTA_CG18, QZ01_CODICE) VALUES (1, 1, 'A'), (2, 1, 'B');"
            "INSERT INTO QZ02_DISTINTA (QZ02_ID, QZ02_ID_QZ01, QZ02_IDPARENT_QZ02, QZ02_DITTA_CG18, QZ02_TIPOCF_CG44, "
            "QZ02_CLIFOR_CG44, QZ02_DATAINIZIOVAL, QZ02_DATAFINEVAL) VALUES "
            "(1, 1, NULL, 1, 0, 1, '2020-01-01', '2099-12-31'),"
            "(2, 1, 1, 1, 0, 2, '2020-01-01', '2024-06-30'),"
            "(3, 1, 1, 1, 0, 3, '2025-01-01', '2099-12-31'),"
            "(4, 2, NULL, 1, 0, 1, '2020-01-01', '2099-12-31');"
            "INSERT INTO CG16_ANAGGEN (CG16_CODICE, CG16_RAGSOANAG) VALUES (11, 'Rossi');"
            "INSERT INTO CG44_CLIFOR (CG44_DITTA_CG18, CG44_TIPOCF, CG44_CLIFOR, CG44_CODICE_CG16) VALUES "
            "(1, 0, 1, 11), (1, 0, 2, NULL);");
    }

    contract::Recordset rowsOf(const Statement& statement) {
        contract::Recordset rows;
        rows.Open(statement, connection);
        return rows;
    }

    void expectNoScan(const Statement& statement) {
        const auto text =
            "EXPLAIN QUERY PLAN " + platform::dialect::Translator(connection.catalog()).translate(statement).text;
        sqlite3_stmt* raw = nullptr;
        ASSERT_EQ(sqlite3_prepare_v2(connection.handle(), text.c_str(), -1, &raw, nullptr), SQLITE_OK) << text;
        const platform::sqlite::StatementHandle handle(raw);
        int searches = 0;
        while (sqlite3_step(raw) == SQLITE_ROW) {
            const std::string step(reinterpret_cast<const char*>(sqlite3_column_text(raw, 3)));
            EXPECT_FALSE(has(step, "SCAN") || has(step, "AUTOMATIC")) << step << "\n" << text;
            searches += has(step, "SEARCH");
        }
        EXPECT_GT(searches, 0) << text;
    }

    std::string translated(const Statement& statement) {
        return platform::dialect::Translator(connection.catalog()).translate(statement).text;
    }

    TemporaryFolder folder_;
    Connection connection;
    const qz::Autore author_{"O'Brien", "ADMIN", *Date::of(2024, 5, 1)};
    const Date closing_ = *Date::of(2024, 6, 30);
};

TEST_F(BlockStatements, ListsHaveAFewLengths) {
    const std::pair<std::int64_t, std::int64_t> lengths[] = {{1, 10},    {9, 10},     {10, 10},    {11, 100},
                                                             {100, 100}, {101, 1000}, {1000, 1000}};
    for (const auto& [count, length] : lengths)
        EXPECT_EQ(qz::istruzioneNodiNoti(upTo<NodoId>(count)).text(),
                  nodeColumns + " WHERE QZ02_ID IN (" + filled(count, length) + ")");
    EXPECT_EQ(qz::prossimoBlocco(1), 1U);
    EXPECT_EQ(qz::prossimoBlocco(1000), 1000U);
    EXPECT_EQ(qz::prossimoBlocco(1001), 1000U);
    EXPECT_EQ(qz::prossimoInserimento(1), 1U);
    EXPECT_EQ(qz::prossimoInserimento(9), 1U);
    EXPECT_EQ(qz::prossimoInserimento(10), 10U);
    EXPECT_EQ(qz::prossimoInserimento(99), 10U);
    EXPECT_EQ(qz::prossimoInserimento(100), 100U);
    EXPECT_EQ(qz::prossimoInserimento(5000), 100U);
}

TEST_F(BlockStatements, Nodes) {
    const auto statement = qz::istruzioneNodiNoti(upTo<NodoId>(4));
    auto rows = rowsOf(statement);
    ASSERT_EQ(rows.RecordCount(), 4U);
    EXPECT_EQ(rows["Anagrafica"].integer(), 1);
    rows.MoveTo(2);
    EXPECT_TRUE(rows["Anagrafica"].isNull());
    for (const std::int64_t count : {1, 100, 1000})
        expectNoScan(qz::istruzioneNodiNoti(upTo<NodoId>(count)));
}

TEST_F(BlockStatements, Children) {
    const auto statement = qz::istruzioneFigliDi(upTo<NodoId>(2), DistintaId(1));
    EXPECT_EQ(statement.text(),
              nodeColumns + " WHERE QZ02_IDPARENT_QZ02 IN (" + filled(2, 10) + ") AND QZ02_ID_QZ01 = 1");
    EXPECT_EQ(rowsOf(statement).RecordCount(), 2U);
    EXPECT_EQ(rowsOf(qz::istruzioneFigliDi(upTo<NodoId>(2), DistintaId(2))).RecordCount(), 0U);
    for (const std::int64_t count : {1, 100, 1000})
        expectNoScan(qz::istruzioneFigliDi(upTo<NodoId>(count), DistintaId(1)));
}

TEST_F(BlockStatements, LinksOfAccounts) {
    const auto statement = qz::istruzioneLegamiDi(1, TipoCF(0), upTo<CodiceAccount>(3));
    EXPECT_EQ(statement.text(),
              "SELECT QZ02_DISTINTA_FIGLIO.QZ02_ID, QZ02_DISTINTA_FIGLIO.QZ02_ID_QZ01, "
              "QZ02_DISTINTA_FIGLIO.QZ02_IDPARENT_QZ02, QZ02_DISTINTA_FIGLIO.QZ02_CLIFOR_CG44, "
              "QZ02_DISTINTA_FIGLIO.QZ02_DATAINIZIOVAL, QZ02_DISTINTA_FIGLIO.QZ02_DATAFINEVAL, "
              "QZ02_DISTINTA_PADRE.QZ02_ID_QZ01 AS DistintaPadre, QZ02_DISTINTA_PADRE.QZ02_DITTA_CG18 AS DittaPadre, "
              "QZ02_DISTINTA_PADRE.QZ02_TIPOCF_CG44 AS TipoPadre, CG44_CLIFOR.CG44_CLIFOR AS Anagrafica FROM "
              "QZ02_DISTINTA QZ02_DISTINTA_FIGLIO LEFT OUTER JOIN QZ02_DISTINTA QZ02_DISTINTA_PADRE ON "
              "QZ02_DISTINTA_FIGLIO.QZ02_IDPARENT_QZ02 = QZ02_DISTINTA_PADRE.QZ02_ID LEFT OUTER JOIN CG44_CLIFOR ON "
              "QZ02_DISTINTA_PADRE.QZ02_DITTA_CG18 = CG44_CLIFOR.CG44_DITTA_CG18 AND "
              "QZ02_DISTINTA_PADRE.QZ02_TIPOCF_CG44 = CG44_CLIFOR.CG44_TIPOCF AND "
              "QZ02_DISTINTA_PADRE.QZ02_CLIFOR_CG44 = CG44_CLIFOR.CG44_CLIFOR WHERE "
              "QZ02_DISTINTA_FIGLIO.QZ02_DITTA_CG18 = 1 AND QZ02_DISTINTA_FIGLIO.QZ02_TIPOCF_CG44 = 0 AND "
              "QZ02_DISTINTA_FIGLIO.QZ02_CLIFOR_CG44 IN (" +
                  filled(3, 10) + ")");
    EXPECT_EQ(rowsOf(statement).RecordCount(), 4U);
    for (const std::int64_t count : {1, 100, 1000})
        expectNoScan(qz::istruzioneLegamiDi(1, TipoCF(0), upTo<CodiceAccount>(count)));
}

TEST_F(BlockStatements, NamesAndCodes) {
    const auto names = qz::istruzioneNomi(1, TipoCF(0), upTo<CodiceAccount>(2));
    EXPECT_EQ(names.text(),
              "SELECT CG44_CLIFOR.CG44_CLIFOR AS Anagrafica, CG16_RAGSOANAG AS RagSoc FROM CG44_CLIFOR LEFT OUTER JOIN "
              "CG16_ANAGGEN ON CG44_CLIFOR.CG44_CODICE_CG16 = CG16_ANAGGEN.CG16_CODICE WHERE "
              "CG44_CLIFOR.CG44_DITTA_CG18 = 1 AND CG44_CLIFOR.CG44_TIPOCF = 0 AND CG44_CLIFOR.CG44_CLIFOR IN (" +
                  filled(2, 10) + ")");
    auto rows = rowsOf(names);
    ASSERT_EQ(rows.RecordCount(), 2U);
    EXPECT_EQ(rows["RagSoc"].text(), "Rossi");
    expectNoScan(names);
    const auto code = qz::istruzioneCodiceDistinta(DistintaId(2));
    EXPECT_EQ(code.text(), "SELECT QZ01_CODICE FROM QZ01_TIPODISTINTA WHERE QZ01_ID = 2");
    EXPECT_EQ(rowsOf(code)["QZ01_CODICE"].text(), "B");
    expectNoScan(code);
}

TEST_F(BlockStatements, ChangesOfTheDistinta) {
    const auto statement = qz::istruzioneAggiornaDistinte(upTo<NodoId>(4), DistintaId(1), DistintaId(2));
    EXPECT_EQ(statement.text(),
              "UPDATE QZ02_DISTINTA SET QZ02_ID_QZ01 = '2' WHERE QZ02_ID_QZ01 = '1' AND QZ02_ID IN (" + filled(4, 10) +
                  ")");
    EXPECT_EQ(connection.Execute(statement), 3) << "node 4 stands in another distinta";
    for (const std::int64_t count : {1, 100, 1000})
        expectNoScan(qz::istruzioneAggiornaDistinte(upTo<NodoId>(count), DistintaId(1), DistintaId(2)));
}

TEST_F(BlockStatements, Closings) {
    const auto statement = qz::istruzioneChiudiLegami(upTo<NodoId>(4), DistintaId(1), closing_, author_);
    EXPECT_EQ(
        statement.text(),
        "UPDATE QZ02_DISTINTA SET QZ02_DATAFINEVAL = (CASE WHEN QZ02_DATAINIZIOVAL > "
        "CONVERT(DateTime,'30/06/2024',103) THEN QZ02_DATAINIZIOVAL ELSE CONVERT(DateTime,'30/06/2024',103) END), "
        "QZ02_GRUPPOVAR = 'ADMIN', QZ02_UTENTEVAR = 'O''Brien' WHERE QZ02_ID_QZ01 = '1' AND QZ02_DATAFINEVAL > "
        "CONVERT(DateTime,'30/06/2024',103) AND QZ02_ID IN (" +
            filled(4, 10) + ")");
    EXPECT_EQ(connection.Execute(statement), 2) << "node 2 has ended, node 4 stands in another distinta";
    auto rows = rowsOf(Statement("SELECT QZ02_DATAFINEVAL, QZ02_UTENTEVAR, QZ02_DATAVAR FROM QZ02_DISTINTA ORDER BY "
                                 "QZ02_ID"));
    EXPECT_EQ(rows["QZ02_DATAFINEVAL"].text(), "30/06/2024");
    EXPECT_EQ(rows["QZ02_UTENTEVAR"].text(), "O'Brien");
    EXPECT_TRUE(rows["QZ02_DATAVAR"].isNull());
    rows.MoveTo(2);
    EXPECT_EQ(rows["QZ02_DATAFINEVAL"].text(), "01/01/2025") << "it starts later";
    for (const std::int64_t count : {1, 100, 1000})
        expectNoScan(qz::istruzioneChiudiLegami(upTo<NodoId>(count), DistintaId(1), closing_, author_));
}

TEST_F(BlockStatements, Insertions) {
    std::vector<qz::RigaNuova> rows;
    for (std::int64_t i = 0; i < 100; ++i)
        rows.push_back({{NodoId(4), 1, TipoCF(0), CodiceAccount(500 + i)}, "G" + std::to_string(i)});
    const qz::NuovoLegame link{DistintaId(2), 3, closing_.plusDays(1), "31/12/2099"};
    const auto two = qz::istruzioneInserisciLegami(std::span(rows).first(2), link, author_);
    const auto values = [](const std::string& account, const std::string& guid) {
        return " '2',  4,  1,  0,  " + account +
               ",  0,  3,  CONVERT(DateTime,'01/07/2024',103),  CONVERT(DateTime,'31/12/2099',103),  "
               "CONVERT(DateTime,'01/05/2024',103),  'ADMIN',  'O''Brien',  CONVERT(DateTime,'01/05/2024',103),  "
               "'ADMIN',  'O''Brien', '" +
               guid + "'  )";
    };
    EXPECT_EQ(two.text(),
              "INSERT INTO QZ02_DISTINTA  (  QZ02_ID_QZ01,  QZ02_IDPARENT_QZ02,  QZ02_DITTA_CG18,  QZ02_TIPOCF_CG44,  "
              "QZ02_CLIFOR_CG44,  QZ02_INDREGPROV,  QZ02_ID_WF02,  QZ02_DATAINIZIOVAL,  QZ02_DATAFINEVAL,  "
              "QZ02_DATACRE,  QZ02_GRUPPOCRE,  QZ02_UTENTECRE,  QZ02_DATAVAR,  QZ02_GRUPPOVAR,  QZ02_UTENTEVAR , "
              "QZ02_GUID  ) VALUES (" +
                  values("500", "G0") + ",(" + values("501", "G1"));
    EXPECT_EQ(connection.Execute(two), 2);
    EXPECT_EQ(connection.Execute(qz::istruzioneInserisciLegami(rows, link, author_)), 100);
    // The new ids ascend in the rows' order.
    auto made = rowsOf(Statement("SELECT QZ02_ID, QZ02_CLIFOR_CG44 FROM QZ02_DISTINTA WHERE QZ02_ID > 6 ORDER BY "
                                 "QZ02_ID"));
    for (std::int64_t i = 0; i < 100; ++i, made.MoveNext())
        ASSERT_EQ(made["QZ02_CLIFOR_CG44"].integer(), 500 + i);
}

TEST_F(BlockStatements, NewIds) {
    const auto statement =
        qz::istruzioneIdNuovi(1, TipoCF(0), upTo<CodiceAccount>(2), DistintaId(1), *Date::of(2020, 1, 1));
    EXPECT_EQ(statement.text(), "SELECT QZ02_ID, QZ02_GUID FROM QZ02_DISTINTA WHERE QZ02_DITTA_CG18 = 1 AND "
                                "QZ02_TIPOCF_CG44 = 0 AND QZ02_CLIFOR_CG44 IN (" +
                                    filled(2, 10) +
                                    ") AND QZ02_ID_QZ01 = 1 AND QZ02_DATAINIZIOVAL = "
                                    "CONVERT(DateTime,'01/01/2020',103)");
    EXPECT_EQ(rowsOf(statement).RecordCount(), 2U);
    for (const std::int64_t count : {1, 100, 1000})
        expectNoScan(
            qz::istruzioneIdNuovi(1, TipoCF(0), upTo<CodiceAccount>(count), DistintaId(1), *Date::of(2020, 1, 1)));
}

TEST_F(BlockStatements, AreTranslatedWithAParameterForEveryValue) {
    EXPECT_EQ(translated(qz::istruzioneAggiornaDistinte(upTo<NodoId>(2), DistintaId(1), DistintaId(2))),
              "UPDATE QZ02_DISTINTA SET QZ02_ID_QZ01 = ?1 WHERE QZ02_ID_QZ01 = ?2 AND QZ02_ID IN (?3, ?4, ?5, ?6, ?7, "
              "?8, ?9, ?10, ?11, ?12)");
    EXPECT_EQ(translated(qz::istruzioneFigliDi(upTo<NodoId>(1), DistintaId(1))),
              translated(qz::istruzioneFigliDi(upTo<NodoId>(10), DistintaId(7))));
    EXPECT_NE(translated(qz::istruzioneFigliDi(upTo<NodoId>(10), DistintaId(1))),
              translated(qz::istruzioneFigliDi(upTo<NodoId>(11), DistintaId(1))));
}

} // namespace

} // namespace sqlite_test
