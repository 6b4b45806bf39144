#include "platform/odbc/BulkWriter.h"

#include "odbc/ScriptedServer.h"
#include "odbc/ServerLock.h"

#include <algorithm>
#include <string>
#include <vector>

namespace odbc_test {
namespace {

using contract::Value;
using platform::odbc::BulkWriter;
using platform::odbc::RowForm;

const contract::TableDef& table() {
    static const contract::Schema schema = contract_suites::suiteSchema();
    return schema.tables.front();
}

class OdbcBulk : public ScriptedServer {
protected:
    static Value row(int i) { return {std::int64_t{i}}; }
    /// Texts of the statements that wrote rows, in order.
    std::vector<std::string> inserts() {
        std::vector<std::string> texts;
        for (const auto& call : script().calls)
            if (call.rfind("INSERT", 0) == 0)
                texts.push_back(call);
        return texts;
    }
};

TEST_F(OdbcBulk, StatementsHaveTwoHundredRows) {
    contract::Transaction transaction(connection);
    BulkWriter writer(connection, table(), {"CODICE", "NOME"});
    std::vector<std::string> expected(3, "INSERT INTO PROVA (CODICE, NOME) VALUES ");
    for (int i = 0; i < 450; ++i) {
        writer.append({row(i), "nome " + std::to_string(i)});
        auto& text = expected[static_cast<std::size_t>(i / 200)];
        text += (i % 200 == 0 ? "(" : ", (") + std::to_string(i) + ", N'nome " + std::to_string(i) + "')";
    }
    EXPECT_EQ(2U, inserts().size());
    writer.finish();
    writer.finish();
    EXPECT_EQ(expected, inserts());
    EXPECT_EQ(450U, writer.rowCount());
    EXPECT_EQ(0U, callsOf("SET IDENTITY_INSERT PROVA ON"));
}

TEST_F(OdbcBulk, LongTextsMakeAStatementShorter) {
    contract::Transaction transaction(connection);
    BulkWriter writer(connection, table(), {"NOME"});
    for (int i = 0; i < 5; ++i)
        writer.append({std::string(25'000, 'x')});
    writer.finish();
    const auto letters = [](const std::string& text) { return std::count(text.begin(), text.end(), 'x'); };
    ASSERT_EQ(2U, inserts().size());
    EXPECT_EQ(75'000, letters(inserts()[0]));
    EXPECT_EQ(50'000, letters(inserts()[1]));
}

TEST_F(OdbcBulk, ValuesOfEveryKindAndNulls) {
    contract::Transaction transaction(connection);
    BulkWriter writer(connection, table(), {"CONTO", "NOME", "DAL", "IMPORTO", "ATTIVO", "CODICE"});
    writer.append({std::int64_t{123456789012}, "dell'Orto", *contract::Date::of(2024, 2, 29), contract::Decimal{"1.50"},
                   true, row(-7)});
    writer.append({Value::null(), Value::null(), Value::null(), Value::null(), Value::null(), Value()});
    writer.finish();
    EXPECT_EQ((std::vector<std::string>{"INSERT INTO PROVA (CONTO, NOME, DAL, IMPORTO, ATTIVO, CODICE) VALUES "
                                        "(123456789012, N'dell''Orto', '20240229', '1.50', 1, -7), "
                                        "(NULL, NULL, NULL, NULL, NULL, NULL)"}),
              inserts());
}

TEST_F(OdbcBulk, AnIdentifierThatIsNullIsSaidToBeOne) {
    const contract::TableDef guids{"GUIDS", {{"G", contract::ColumnType::guid}}, {}, {}, false};
    contract::Transaction transaction(connection);
    BulkWriter writer(connection, guids, {"G"});
    writer.append({Value::null()});
    writer.append({"0E984725-C51C-4BF4-9960-E1C80E27ABA0"});
    writer.finish();
    EXPECT_EQ((std::vector<std::string>{"INSERT INTO GUIDS (G) VALUES (CAST(NULL AS UNIQUEIDENTIFIER)), "
                                        "(N'0E984725-C51C-4BF4-9960-E1C80E27ABA0')"}),
              inserts());
}

TEST_F(OdbcBulk, ABackslashBeforeALinesEndStandsInAPartOfItsOwn) {
    contract::Transaction transaction(connection);
    BulkWriter writer(connection, table(), {"NOME"});
    for (const char* text : {"a\\\nb'", "\\\r\n\\\n", "c\\d\\", "\\", ""})
        writer.append({text});
    writer.finish();
    EXPECT_EQ(
        (std::vector<std::string>{"INSERT INTO PROVA (NOME) VALUES (N'a\\' + N'\nb'''), (N'\\' + N'\r\n\\' + N'\n'), "
                                  "(N'c\\d\\'), (N'\\'), (N'')"}),
        inserts());
}

TEST_F(OdbcBulk, NumbersThatTheServerCountsAreAllowedAround) {
    contract::Transaction transaction(connection);
    BulkWriter writer(connection, table(), {"ID", "CODICE"});
    writer.append({row(7), row(1)});
    writer.finish();
    EXPECT_EQ(1U, callsOf("SET IDENTITY_INSERT PROVA ON"));
    EXPECT_EQ(1U, callsOf("SET IDENTITY_INSERT PROVA OFF"));
}

TEST_F(OdbcBulk, RefusesWhatDoesNotFit) {
    failureOf([&] { BulkWriter(connection, table(), {"CODICE"}); }, contract::RuntimeError::invalidCall);
    contract::Transaction transaction(connection);
    failureOf([&] { BulkWriter(connection, table(), {"NONESISTE"}); }, contract::RuntimeError::invalidCall);
    BulkWriter writer(connection, table(), {"CODICE"});
    failureOf([&] { writer.append({row(1), row(2)}); }, contract::RuntimeError::invalidCall);
    EXPECT_TRUE(has(failureOf([&] { writer.append({"testo"}); }, contract::RuntimeError::typeMismatch), "CODICE"));
    writer.append({row(3)});
    writer.finish();
    EXPECT_EQ((std::vector<std::string>{"INSERT INTO PROVA (CODICE) VALUES (3)"}), inserts());
    EXPECT_EQ(1U, writer.rowCount());
}

TEST_F(OdbcBulk, ARowThatIsRefusedFailsTheWriter) {
    contract::Transaction transaction(connection);
    BulkWriter writer(connection, table(), {"CODICE"});
    writer.append({row(1)});
    failWith({{"23000", 2627, "[FreeTDS][SQL Server]duplicate"}});
    EXPECT_TRUE(has(failureOf([&] { writer.finish(); }), "PROVA"));
    EXPECT_EQ(contract::ErrorCategory::duplicate, connection.Errors().front().category);
}

using RowsAsJson = OdbcBulk;

TEST_F(RowsAsJson, StatementsHaveAThousandRows) {
    contract::Transaction transaction(connection);
    BulkWriter writer(connection, table(), {"CODICE", "NOME"}, RowForm::json);
    for (int i = 0; i < 1001; ++i)
        writer.append({row(i), "x"});
    EXPECT_EQ(1U, inserts().size());
    writer.finish();
    writer.finish();
    ASSERT_EQ(2U, inserts().size());
    EXPECT_EQ(0U, inserts()[0].find("INSERT INTO PROVA (CODICE, NOME) SELECT CODICE, NOME FROM OPENJSON"
                                    "(N'[[\"0\",\"x\"], [\"1\",\"x\"], "));
    EXPECT_EQ("INSERT INTO PROVA (CODICE, NOME) SELECT CODICE, NOME FROM OPENJSON(N'[[\"1000\",\"x\"]]') "
              "WITH (CODICE NVARCHAR(MAX) '$[0]', NOME NVARCHAR(MAX) '$[1]')",
              inserts()[1]);
}

TEST_F(RowsAsJson, ValuesOfEveryKindAndNulls) {
    const contract::TableDef every{"OGNI",
                                   {{"T", contract::ColumnType::text},
                                    {"D", contract::ColumnType::date},
                                    {"I", contract::ColumnType::amount},
                                    {"F", contract::ColumnType::flag},
                                    {"G", contract::ColumnType::guid}},
                                   {},
                                   {},
                                   false};
    contract::Transaction transaction(connection);
    BulkWriter writer(connection, every, {"T", "D", "I", "F", "G"}, RowForm::json);
    writer.append({"dell'Orto", *contract::Date::of(2024, 2, 29), contract::Decimal{"1.50"}, true,
                   "0E984725-C51C-4BF4-9960-E1C80E27ABA0"});
    writer.append({Value::null(), Value::null(), Value::null(), Value::null(), Value()});
    writer.finish();
    EXPECT_EQ((std::vector<std::string>{
                  "INSERT INTO OGNI (T, D, I, F, G) SELECT T, D, I, F, G FROM OPENJSON(N'[[\"dell''Orto\","
                  "\"20240229\",\"1.50\",\"1\",\"0E984725-C51C-4BF4-9960-E1C80E27ABA0\"], "
                  "[null,null,null,null,null]]') "
                  "WITH (T NVARCHAR(MAX) '$[0]', D NVARCHAR(MAX) '$[1]', I NVARCHAR(MAX) '$[2]', "
                  "F NVARCHAR(MAX) '$[3]', G NVARCHAR(MAX) '$[4]')"}),
              inserts());
}

TEST_F(RowsAsJson, ATextThatNeedsAnEscapeGoesAsALiteral) {
    contract::Transaction transaction(connection);
    BulkWriter writer(connection, table(), {"NOME"}, RowForm::json);
    for (const char* text : {"a", "\"b\"", "c\\", "d"})
        writer.append({text});
    writer.finish();
    const std::string with = " WITH (NOME NVARCHAR(MAX) '$[0]')";
    EXPECT_EQ((std::vector<std::string>{"INSERT INTO PROVA (NOME) SELECT NOME FROM OPENJSON(N'[[\"a\"]]')" + with,
                                        "INSERT INTO PROVA (NOME) VALUES (N'\"b\"')",
                                        "INSERT INTO PROVA (NOME) VALUES (N'c\\')",
                                        "INSERT INTO PROVA (NOME) SELECT NOME FROM OPENJSON(N'[[\"d\"]]')" + with}),
              inserts());
    EXPECT_EQ(4U, writer.rowCount());
}

TEST_F(RowsAsJson, ABadByteBecomesTheReplacementCharacter) {
    contract::Transaction transaction(connection);
    BulkWriter writer(connection, table(), {"NOME"}, RowForm::json);
    EXPECT_NO_THROW(writer.append({"a\xFFz"}));
    EXPECT_NO_THROW(writer.finish());
    EXPECT_EQ(1U, inserts().size());
}

TEST_F(RowsAsJson, AreChosenWhereTheServerReadsThem) {
    script().answer = [](const std::string& text) {
        scripted::Answer answer;
        if (text.find("OPENJSON") != std::string::npos) {
            answer.columns = {{"V", SQL_WVARCHAR}};
            answer.rows = {{u"1"}};
        }
        return answer;
    };
    EXPECT_EQ(RowForm::json, platform::odbc::fastestRowForm(connection));
    failWith({{"42000", 208, "[FreeTDS][SQL Server]Invalid object name 'OPENJSON'."}});
    EXPECT_EQ(RowForm::values, platform::odbc::fastestRowForm(connection));
}

constexpr const char* hostileText = "Città 🦄 'x' \\\n?{fn now()}--";

/// Writes 1500 rows of every kind and reads them again.
void writeAndRead(Connection& connection, RowForm form) {
    connection.BeginTrans();
    BulkWriter writer(connection, table(), {"ID", "CODICE", "CONTO", "NOME", "DAL", "IMPORTO", "ATTIVO"}, form);
    for (int i = 1; i <= 1500; ++i)
        writer.append({std::int64_t{i}, i == 3 ? Value::null() : Value(std::int64_t{-i}), std::int64_t{123456789012},
                       i == 4 ? hostileText : "nome", *contract::Date::of(2024, 2, 29), contract::Decimal{"12.50"},
                       i == 5});
    writer.finish();
    connection.CommitTrans();
    contract::Snapshot rows;
    connection.Read("SELECT * FROM PROVA ORDER BY ID"_sql, rows);
    ASSERT_EQ(1500U, rows.rowCount());
    EXPECT_EQ(-1500, rows.column(1).integer(1499));
    EXPECT_TRUE(rows.column(1).isNull(2));
    EXPECT_EQ(123456789012, rows.column(2).integer(0));
    EXPECT_STREQ(hostileText, std::string(rows.column(3).text(3)).c_str());
    EXPECT_EQ("nome", rows.column(3).text(1499));
    EXPECT_EQ(Value(*contract::Date::of(2024, 2, 29)), rows.column(4).value(1234));
    EXPECT_EQ("12.50", rows.column(5).value(0).text());
    EXPECT_EQ(0, rows.column(6).integer(0));
    EXPECT_EQ(1, rows.column(6).integer(4));
}

class OdbcBulkIntoSqlite : public SqliteOdbcTest {};

TEST_F(OdbcBulkIntoSqlite, RowsArriveAsTheyAre) {
    EXPECT_EQ(RowForm::values, platform::odbc::fastestRowForm(connection));
    writeAndRead(connection, RowForm::values);
}

TEST(OdbcBulkIntoServer, RowsArriveAsTheyAre) {
    const auto text = serverString();
    if (!text)
        GTEST_SKIP() << "no database server";
    const int lock = lockServer();
    Connection connection(*text);
    connection.Open();
    // Twice in the one form where the server reads no other.
    for (const RowForm form : {RowForm::values, platform::odbc::fastestRowForm(connection)}) {
        dropTables(connection, contract_suites::suiteSchema());
        platform::odbc::createTables(connection, contract_suites::suiteSchema());
        writeAndRead(connection, form);
    }
    dropTables(connection, contract_suites::suiteSchema());
    unlockServer(lock);
}

} // namespace
} // namespace odbc_test
