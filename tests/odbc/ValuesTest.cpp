// Values of every kind, whatever length, over the SQLite driver.

#include "odbc/OdbcFixture.h"

namespace odbc_test {
namespace {

using contract::FieldType;
using contract::Value;

class OdbcValues : public SqliteOdbcTest {};

TEST_F(OdbcValues, CharactersOutsideLatin1) {
    contract::Statement statement("INSERT INTO PROVA (CODICE, NOME) VALUES (1, '");
    statement.text("Città € Łódź Ж 中 🦄") << "')";
    connection.Execute(statement);
    EXPECT_EQ("Città € Łódź Ж 中 🦄", read("SELECT NOME FROM PROVA"_sql).column(0).text(0));
}

TEST_F(OdbcValues, TextsAroundTheLengthOfTheArrays) {
    for (const std::size_t length : {510U, 511U, 512U, 513U, 1023U, 1024U, 1025U, 70000U}) {
        connection.Execute("DELETE FROM PROVA"_sql);
        const std::string text = std::string(length - 2, 'x') + "è";
        for (int i = 0; i < 3; ++i) {
            contract::Statement statement("INSERT INTO PROVA (CODICE, NOME) VALUES (");
            statement.number(i) << ", '";
            statement.text(i == 1 ? text : "breve") << "')";
            connection.Execute(statement);
        }
        const auto rows = read("SELECT CODICE, NOME, DAL FROM PROVA ORDER BY CODICE"_sql);
        ASSERT_EQ(3U, rows.rowCount());
        EXPECT_EQ("breve", rows.column(1).text(0));
        EXPECT_EQ(text, rows.column(1).text(1)) << length;
        EXPECT_EQ("breve", rows.column(1).text(2));
        EXPECT_EQ(2, rows.column(0).integer(2));
        EXPECT_TRUE(rows.column(2).isNull(1));
    }
}

TEST_F(OdbcValues, ManyBlocksOfRows) {
    connection.BeginTrans();
    constexpr std::int64_t count = 3 * 1000 + 7;
    for (std::int64_t i = 0; i < count; ++i) {
        contract::Statement statement("INSERT INTO PROVA (CODICE, NOME) VALUES (");
        statement.number(i) << ", 'nome')";
        connection.Execute(statement);
    }
    connection.CommitTrans();
    const auto rows = read("SELECT CODICE, NOME FROM PROVA ORDER BY CODICE"_sql);
    ASSERT_EQ(static_cast<std::size_t>(count), rows.rowCount());
    for (std::int64_t i = 0; i < count; ++i)
        ASSERT_EQ(i, rows.column(0).integer(static_cast<std::size_t>(i)));
}

TEST_F(OdbcValues, ExpressionsHaveTheirTypes) {
    connection.Execute(
        "INSERT INTO PROVA (CODICE, DAL, IMPORTO) VALUES (1, CONVERT(DateTime,'30/06/2024',103), 7)"_sql);
    const auto rows =
        read("SELECT Count(*) AS C, ISNULL(MAX(DAL),'01/01/2000') AS D, MAX(IMPORTO) AS I FROM PROVA"_sql);
    EXPECT_EQ(FieldType::integer, rows.fields()[0].type);
    EXPECT_EQ("7.00", rows.column(2).value(0).text());
    EXPECT_EQ(2, rows.fields()[2].numericScale);
}

TEST_F(OdbcValues, ValuesThatLieAreShownAsTheyAre) {
    connection.runNative(
        "INSERT INTO PROVA (CODICE, DAL, IMPORTO, CONTO) VALUES ('testo', '2024-02-31', 'molto', 1.5)");
    connection.runNative("INSERT INTO PROVA (CODICE, DAL) VALUES (9223372036854775807, '2024-06-30 00:00:00')");
    const auto rows = read("SELECT CODICE, DAL, IMPORTO, CONTO FROM PROVA ORDER BY ID"_sql);
    EXPECT_EQ("testo", rows.column(0).value(0).text());
    EXPECT_EQ("2024-02-31", rows.column(1).value(0).text());
    EXPECT_EQ("molto", rows.column(2).value(0).text());
    EXPECT_EQ(Value(1.5), rows.column(3).value(0));
    EXPECT_EQ(9223372036854775807, rows.column(0).integer(1));
    EXPECT_EQ(Value(*contract::Date::of(2024, 6, 30)), rows.column(1).value(1));
}

TEST_F(OdbcValues, NegativeNumbersStandAfterAMinus) {
    connection.Execute("INSERT INTO PROVA (CODICE) VALUES (5)"_sql);
    contract::Statement statement("SELECT CODICE -");
    statement.number(-3) << " AS N FROM PROVA";
    EXPECT_EQ(8, read(statement).column(0).integer(0));
}

TEST_F(OdbcValues, QuestionMarksInTextsAreCharacters) {
    contract::Statement statement("SELECT '?1' AS A, '");
    statement.text("?2'?") << "' AS B, 'it''s ?' AS C FROM CHIAVI";
    connection.Execute("INSERT INTO CHIAVI (CHIAVE) VALUES (1)"_sql);
    const auto rows = read(statement);
    EXPECT_EQ("?1", rows.column(0).text(0));
    EXPECT_EQ("?2'?", rows.column(1).text(0));
    EXPECT_EQ("it's ?", rows.column(2).text(0));
}

TEST_F(OdbcValues, AFileWithAccentsInItsName) {
    const auto driver = sqliteDriver();
    Connection other(sqliteString(*driver, folder.file("città.db")));
    other.Open();
    platform::odbc::createTables(other, contract_suites::suiteSchema());
    EXPECT_TRUE(std::filesystem::exists(folder.file("città.db")));
    EXPECT_EQ(folder.file("città.db"), other.databaseName());
}

} // namespace
} // namespace odbc_test
