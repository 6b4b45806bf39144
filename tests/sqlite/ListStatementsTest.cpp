// The statements of lists of moves: their texts to the blank, what they come to in the embedded database, and that none
// of them walks through a table.

#include "component/data/Schema.h"
#include "component/maintenance/IstruzioniElenco.h"
#include "platform/dialect/Translator.h"
#include "sqlite/SqliteFixture.h"

#include <string>

#include <sqlite3.h>

namespace sqlite_test {

namespace {

using contract::Statement;
using qz::CodiceAccount;
using qz::DistintaId;
using qz::NodoId;
using qz::TipoCF;

const std::string columns =
    "SELECT QZ02_ID, QZ02_ID_QZ01, QZ02_IDPARENT_QZ02, QZ02_DITTA_CG18, QZ02_TIPOCF_CG44, QZ02_CLIFOR_CG44, "
    "QZ02_DATAINIZIOVAL, QZ02_DATAFINEVAL, QZ02_CLIFORFATT_CG44, QZ02_TIPOANAGFATT, QZ02_IDSTRUTTURA_LP09, "
    "QZ02_IDLOCALIZZATA_LP09, QZ02_INDEREPROMO, QZ02_GUID FROM QZ02_DISTINTA WHERE QZ02_DITTA_CG18 = ";

TEST(ListStatements, TheirTexts) {
    EXPECT_EQ(qz::istruzioneDistinteDi(3).text(), "SELECT QZ01_ID, QZ01_CODICE, QZ01_INDTIPOSOGG FROM "
                                                  "QZ01_TIPODISTINTA WHERE QZ01_DITTA_CG18 = 3 ORDER BY QZ01_ID");
    EXPECT_EQ(qz::istruzioneNodiDiAccount({1, TipoCF(0), CodiceAccount(110)}, DistintaId(2)).text(),
              columns + "1 AND QZ02_TIPOCF_CG44 = 0 AND QZ02_CLIFOR_CG44 = 110 AND QZ02_ID_QZ01 = 2 ORDER BY QZ02_ID");
    EXPECT_EQ(qz::istruzioneNodoConStato(1, NodoId(7)).text(), columns + "1 AND QZ02_ID = 7");
}

TEST(ListStatements, FindTheLinksOfAnAccountInADistinta) {
    const TemporaryFolder folder;
    const auto file = folder.file("distinte.db");
    platform::sqlite::createDatabase(file, qz::schema(), [](Connection& database) {
        for (const auto& statement :
             {Statement(
                  "INSERT INTO QZ01_TIPODISTINTA (QZ01_ID, QZ01_DITTA_CG18, QZ01_CODICE, QZ01_INDTIPOSOGG) VALUES "
                  "(1, 1, 'AG', 0)"),
              Statement("INSERT INTO QZ02_DISTINTA (QZ02_ID, QZ02_ID_QZ01, QZ02_DITTA_CG18, QZ02_TIPOCF_CG44, "
                        "QZ02_CLIFOR_CG44, QZ02_GUID) VALUES (1, 1, 1, 0, 110, 'G1')"),
              Statement("INSERT INTO QZ02_DISTINTA (QZ02_ID, QZ02_ID_QZ01, QZ02_DITTA_CG18, QZ02_TIPOCF_CG44, "
                        "QZ02_CLIFOR_CG44) VALUES (2, 1, 1, 0, 110)"),
              Statement("INSERT INTO QZ02_DISTINTA (QZ02_ID, QZ02_ID_QZ01, QZ02_DITTA_CG18, QZ02_TIPOCF_CG44, "
                        "QZ02_CLIFOR_CG44) VALUES (3, 2, 1, 0, 110)")})
            database.Execute(statement);
    });
    Connection connection;
    connection.SetConnectionString(connectionStringOf(file));
    connection.Open();
    const auto rows = [&](const Statement& statement) {
        contract::Recordset found;
        found.Open(statement, connection);
        return found;
    };
    auto nodes = rows(qz::istruzioneNodiDiAccount({1, TipoCF(0), CodiceAccount(110)}, DistintaId(1)));
    EXPECT_EQ(nodes.RecordCount(), 2U);
    EXPECT_EQ(nodes["QZ02_GUID"].text(), "G1");
    EXPECT_EQ(rows(qz::istruzioneNodiDiAccount({1, TipoCF(1), CodiceAccount(110)}, DistintaId(1))).RecordCount(), 0U);
    EXPECT_EQ(rows(qz::istruzioneNodoConStato(1, NodoId(3))).RecordCount(), 1U);
    EXPECT_EQ(rows(qz::istruzioneNodoConStato(2, NodoId(3))).RecordCount(), 0U);
    EXPECT_EQ(rows(qz::istruzioneDistinteDi(1))["QZ01_CODICE"].text(), "AG");
    EXPECT_EQ(rows(qz::istruzioneDistinteDi(2)).RecordCount(), 0U);
    for (const auto& statement : {qz::istruzioneNodiDiAccount({1, TipoCF(0), CodiceAccount(110)}, DistintaId(1)),
                                  qz::istruzioneNodoConStato(1, NodoId(3)), qz::istruzioneDistinteDi(1)}) {
        const auto text =
            "EXPLAIN QUERY PLAN " + platform::dialect::Translator(connection.catalog()).translate(statement).text;
        sqlite3_stmt* raw = nullptr;
        ASSERT_EQ(sqlite3_prepare_v2(connection.handle(), text.c_str(), -1, &raw, nullptr), SQLITE_OK) << text;
        while (sqlite3_step(raw) == SQLITE_ROW) {
            const std::string step(reinterpret_cast<const char*>(sqlite3_column_text(raw, 3)));
            EXPECT_EQ(step.find("SCAN"), std::string::npos) << step << "\n" << text;
        }
        sqlite3_finalize(raw);
    }
}

} // namespace

} // namespace sqlite_test
