#include "platform/odbc/BulkWriter.h"

#include "odbc/ScriptedServer.h"
#include "odbc/ServerLock.h"

namespace odbc_test {
namespace {

using contract::Value;
using platform::odbc::BulkWriter;

const contract::TableDef& table() {
    static const contract::Schema schema = contract_suites::suiteSchema();
    return schema.tables.front();
}

class OdbcBulk : public ScriptedServer {
protected:
    static Value row(int i) { return {std::int64_t{i}}; }
};

TEST_F(OdbcBulk, SendsArraysOfAThousandRows) {
    contract::Transaction transaction(connection);
    BulkWriter writer(connection, table(), {"CODICE", "NOME"});
    for (int i = 0; i < 2500; ++i)
        writer.append({row(i), "nome " + std::to_string(i)});
    writer.finish();
    transaction.commit();
    // Two arrays of a thousand rows and the rest, 25 rows a statement.
    EXPECT_EQ(3, script().executions);
    ASSERT_EQ(100U, script().inserted.size());
    const auto& statement = script().inserted[49].second;
    ASSERT_EQ(50U, statement.size());
    EXPECT_EQ(u"1234", statement[18]);
    EXPECT_EQ(u"nome 1234", statement[19]);
    EXPECT_EQ(1U, callsOf("prepare INSERT INTO PROVA (CODICE, NOME) VALUES (?, ?)"));
    EXPECT_EQ(0U, callsOf("SET IDENTITY_INSERT PROVA ON"));
}

TEST_F(OdbcBulk, WhatDoesNotFillAStatementGoesByRow) {
    contract::Transaction transaction(connection);
    BulkWriter writer(connection, table(), {"CODICE"});
    for (int i = 0; i < 203; ++i)
        writer.append({row(i)});
    writer.finish();
    EXPECT_EQ(2, script().executions);
    ASSERT_EQ(11U, script().inserted.size());
    EXPECT_EQ(u"199", script().inserted[7].second[24]);
    EXPECT_EQ((std::vector<scripted::Cell>{u"200"}), script().inserted[8].second);
    EXPECT_EQ((std::vector<scripted::Cell>{u"202"}), script().inserted[10].second);
}

TEST_F(OdbcBulk, SendsRowByRowWhereTheDriverTakesNoArrays) {
    script().arrays = false;
    contract::Transaction transaction(connection);
    BulkWriter writer(connection, table(), {"CODICE"});
    for (int i = 0; i < 5; ++i)
        writer.append({row(i)});
    writer.finish();
    EXPECT_EQ(5, script().executions);
    EXPECT_EQ(u"4", script().inserted[4].second[0]);
}

TEST_F(OdbcBulk, ValuesOfEveryKindAndNulls) {
    contract::Transaction transaction(connection);
    BulkWriter writer(connection, table(), {"CONTO", "NOME", "DAL", "IMPORTO", "ATTIVO"});
    writer.append(
        {std::int64_t{123456789012}, "Città 🦄", *contract::Date::of(2024, 2, 29), contract::Decimal{"1.50"}, true});
    writer.append({Value::null(), Value::null(), Value::null(), Value::null(), Value::null()});
    writer.finish();
    ASSERT_EQ(2U, script().inserted.size());
    EXPECT_EQ((std::vector<scripted::Cell>{u"123456789012", u"Citt\u00e0 \U0001F984", u"2024-2-29", u"1.50", u"1"}),
              script().inserted[0].second);
    for (const auto& cell : script().inserted[1].second)
        EXPECT_FALSE(cell.has_value());
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
    writer.append({"testo"});
    EXPECT_TRUE(has(failureOf([&] { writer.finish(); }, contract::RuntimeError::typeMismatch), "CODICE"));
}

TEST_F(OdbcBulk, ARowThatIsRefusedFailsTheWriter) {
    contract::Transaction transaction(connection);
    BulkWriter writer(connection, table(), {"CODICE"});
    writer.append({row(1)});
    failWith({{"23000", 2627, "[FreeTDS][SQL Server]duplicate"}});
    EXPECT_TRUE(has(failureOf([&] { writer.finish(); }), "PROVA"));
    EXPECT_EQ(contract::ErrorCategory::duplicate, connection.Errors().front().category);
}

/// Writes 1500 rows of every kind and reads them again.
void writeAndRead(Connection& connection) {
    connection.BeginTrans();
    BulkWriter writer(connection, table(), {"ID", "CODICE", "CONTO", "NOME", "DAL", "IMPORTO", "ATTIVO"});
    for (int i = 1; i <= 1500; ++i)
        writer.append({std::int64_t{i}, i == 3 ? Value::null() : Value(std::int64_t{-i}), std::int64_t{123456789012},
                       i == 4 ? "Città 🦄 'x'" : "nome", *contract::Date::of(2024, 2, 29),
                       contract::Decimal{"12.50"}, i == 5});
    writer.finish();
    connection.CommitTrans();
    contract::Snapshot rows;
    connection.Read("SELECT * FROM PROVA ORDER BY ID"_sql, rows);
    ASSERT_EQ(1500U, rows.rowCount());
    EXPECT_EQ(-1500, rows.column(1).integer(1499));
    EXPECT_TRUE(rows.column(1).isNull(2));
    EXPECT_EQ(123456789012, rows.column(2).integer(0));
    EXPECT_EQ("Città 🦄 'x'", rows.column(3).text(3));
    EXPECT_EQ("nome", rows.column(3).text(1499));
    EXPECT_EQ(Value(*contract::Date::of(2024, 2, 29)), rows.column(4).value(1234));
    EXPECT_EQ("12.50", rows.column(5).value(0).text());
    EXPECT_EQ(0, rows.column(6).integer(0));
    EXPECT_EQ(1, rows.column(6).integer(4));
}

class OdbcBulkIntoSqlite : public SqliteOdbcTest {};

TEST_F(OdbcBulkIntoSqlite, RowsArriveAsTheyAre) {
    writeAndRead(connection);
}

TEST(OdbcBulkIntoServer, RowsArriveAsTheyAre) {
    const auto text = serverString();
    if (!text)
        GTEST_SKIP() << "no database server";
    const int lock = lockServer();
    Connection connection(*text);
    connection.Open();
    dropTables(connection, contract_suites::suiteSchema());
    platform::odbc::createTables(connection, contract_suites::suiteSchema());
    writeAndRead(connection);
    dropTables(connection, contract_suites::suiteSchema());
    unlockServer(lock);
}

} // namespace
} // namespace odbc_test
