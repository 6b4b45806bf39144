#pragma once

// The promises of contract::Connection, to be kept by every adapter. Instantiate it with a maker of databases:
//
// Its cases are in this header: include it in one source file of a test program only.
//
//   INSTANTIATE_TEST_SUITE_P(Name, ConnectionSuite, testing::Values(&makeMyDatabase), parameterName("Database"));

#include "contract/Connection.h"
#include "contract/Recordset.h"
#include "contract/RuntimeError.h"
#include "contract_suites/ParameterName.h"
#include "contract_suites/Sql.h"
#include "contract_suites/SuiteSchema.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace contract_suites {

/// A fresh database with the tables of suiteSchema(), dropped with the object.
class TestDatabase {
public:
    TestDatabase() = default;
    TestDatabase(const TestDatabase&) = delete;
    TestDatabase& operator=(const TestDatabase&) = delete;
    virtual ~TestDatabase() = default;

    /// Another connection to it, not open.
    virtual std::unique_ptr<contract::Connection> connect() = 0;
};

/// Makes one; null when there is no server to make it on, and the case is skipped.
using DatabaseMaker = std::unique_ptr<TestDatabase> (*)();

class ConnectionSuite : public testing::TestWithParam<DatabaseMaker> {
protected:
    void SetUp() override {
        database_ = GetParam()();
        if (!database_)
            GTEST_SKIP() << "no database server";
        connection_ = database_->connect();
        connection_->Open();
    }
    void TearDown() override {
        connection_.reset();
        database_.reset();
    }

    contract::Connection& connection() { return *connection_; }
    std::unique_ptr<contract::Connection> another() {
        auto connection = database_->connect();
        connection->Open();
        return connection;
    }

    std::int64_t insert(contract::Connection& connection, std::int64_t code, std::string_view name) {
        contract::Statement statement;
        statement << "INSERT INTO PROVA (CODICE, NOME) VALUES (";
        statement.number(code) << ", '";
        statement.text(name) << "')";
        return connection.Execute(statement);
    }
    std::int64_t count(contract::Connection& connection) {
        contract::Recordset rows;
        rows.Open("SELECT Count(*) AS Conta FROM PROVA"_sql, connection);
        return rows["Conta"].integer().value_or(-1);
    }
    contract::Value single(const contract::Statement& statement) {
        contract::Recordset rows;
        rows.Open(statement, connection());
        return rows.Fields(0).Value();
    }
    template <class Step> std::string failureOf(Step step, int number = contract::RuntimeError::database) {
        try {
            step();
        } catch (const contract::RuntimeError& error) {
            EXPECT_EQ(error.number(), number) << error.description();
            return error.description();
        }
        ADD_FAILURE() << "no error";
        return {};
    }
    contract::ErrorCategory category() {
        return connection().Errors().empty() ? contract::ErrorCategory::other : connection().Errors().front().category;
    }

private:
    std::unique_ptr<TestDatabase> database_;
    std::unique_ptr<contract::Connection> connection_;
};

TEST_P(ConnectionSuite, AClosedConnectionRefusesWork) {
    connection().Close();
    EXPECT_FALSE(connection().IsOpen());
    EXPECT_FALSE(failureOf([&] { connection().Execute("DELETE FROM PROVA"_sql); }).empty());
    contract::Snapshot rows;
    EXPECT_FALSE(failureOf([&] { connection().Read("SELECT * FROM PROVA"_sql, rows); }).empty());
    EXPECT_FALSE(failureOf([&] { connection().BeginTrans(); }).empty());
    connection().Close();
    connection().RollbackTrans();
    connection().Open();
    EXPECT_TRUE(connection().IsOpen());
    EXPECT_EQ(count(connection()), 0);
}

TEST_P(ConnectionSuite, TheConnectionStringIsSetBeforeOpeningOnly) {
    const auto text = connection().ConnectionString();
    EXPECT_FALSE(text.empty());
    failureOf([&] { connection().SetConnectionString("x"); }, contract::RuntimeError::invalidCall);
    connection().Close();
    connection().SetConnectionString(text);
    connection().Open();
    EXPECT_EQ(connection().ConnectionString(), text);
}

TEST_P(ConnectionSuite, ValuesComeBackAsTheyWent) {
    contract::Statement statement;
    statement << "INSERT INTO PROVA (CODICE, CONTO, NOME, DAL, IMPORTO, ATTIVO) VALUES (";
    statement.number(-7) << ", ";
    statement.number(123456789012) << ", '";
    statement.text("Città d'Angiò \"€\"") << "', CONVERT(DateTime,'";
    statement.date(*contract::Date::of(2024, 2, 29)) << "',103), ";
    statement.bare(contract::Value(contract::Decimal{"1234.50"})) << ", ";
    statement.number(1) << ")";
    EXPECT_EQ(connection().Execute(statement), 1);
    contract::Recordset rows;
    rows.Open("SELECT * FROM PROVA"_sql, connection());
    ASSERT_EQ(rows.RecordCount(), 1U);
    ASSERT_EQ(rows.FieldCount(), 7U);
    EXPECT_EQ(rows["ID"].integer(), 1);
    EXPECT_EQ(rows["codice"].integer(), -7);
    EXPECT_EQ(rows["CONTO"].integer(), 123456789012);
    EXPECT_EQ(rows["NOME"].text(), "Città d'Angiò \"€\"");
    EXPECT_EQ(rows["DAL"], contract::Value(*contract::Date::of(2024, 2, 29)));
    EXPECT_EQ(rows["IMPORTO"].text(), "1234.50");
    EXPECT_EQ(rows["ATTIVO"].integer(), 1);
    EXPECT_EQ(rows.Fields("IMPORTO").NumericScale(), 2);
    EXPECT_EQ(rows.Fields("DAL").Type(), contract::FieldType::date);
    EXPECT_EQ(rows.Fields("NOME").Type(), contract::FieldType::varWChar);
}

TEST_P(ConnectionSuite, NullsAreNull) {
    connection().Execute("INSERT INTO PROVA (CODICE) VALUES (1)"_sql);
    contract::Recordset rows;
    rows.Open("SELECT NOME, DAL, IMPORTO, ATTIVO, CONTO FROM PROVA"_sql, connection());
    for (std::size_t i = 0; i < rows.FieldCount(); ++i)
        EXPECT_TRUE(rows.Fields(i).Value().isNull()) << rows.Fields(i).Name();
}

TEST_P(ConnectionSuite, ExecuteCountsTheChangedRows) {
    insert(connection(), 1, "a");
    insert(connection(), 1, "b");
    insert(connection(), 2, "c");
    EXPECT_EQ(connection().Execute("UPDATE PROVA SET NOME = 'x' WHERE CODICE = 1"_sql), 2);
    EXPECT_EQ(connection().Execute("UPDATE PROVA SET NOME = 'x' WHERE CODICE = 9"_sql), 0);
    EXPECT_EQ(connection().Execute("DELETE FROM PROVA"_sql), 3);
}

TEST_P(ConnectionSuite, ResultsHaveTheNamesOfTheServer) {
    contract::Recordset rows;
    rows.Open("SELECT CODICE, PROVA.NOME, CODICE AS COD, ISNULL(NOME,'') Testo FROM PROVA WHERE 1=0"_sql, connection());
    ASSERT_EQ(rows.FieldCount(), 4U);
    const char* names[] = {"CODICE", "NOME", "COD", "Testo"};
    for (std::size_t i = 0; i < rows.FieldCount(); ++i)
        EXPECT_EQ(rows.Fields(i).Name(), names[i]);
    contract::Recordset counted;
    counted.Open("SELECT Count(*) AS Conta FROM PROVA"_sql, connection());
    EXPECT_EQ(counted.Fields(0).Name(), "Conta");
}

TEST_P(ConnectionSuite, AnEmptyResultStillHasItsFields) {
    contract::Recordset rows;
    rows.Open("SELECT * FROM PROVA WHERE 1=0 "_sql, connection());
    EXPECT_TRUE(rows.Empty());
    EXPECT_TRUE(rows.Bof());
    EXPECT_TRUE(rows.Eof());
    EXPECT_EQ(rows.FieldCount(), 7U);
}

TEST_P(ConnectionSuite, ReadReplacesWhatTheSnapshotHeld) {
    insert(connection(), 1, "a");
    contract::Snapshot rows;
    connection().Read("SELECT CODICE, NOME FROM PROVA"_sql, rows);
    EXPECT_EQ(rows.rowCount(), 1U);
    connection().Read("SELECT NOME FROM PROVA WHERE CODICE = 1"_sql, rows);
    EXPECT_EQ(rows.fields().size(), 1U);
    EXPECT_EQ(rows.column(0).text(0), "a");
    failureOf([&] { connection().Read("SELECT * FROM NONESISTE"_sql, rows); });
    EXPECT_EQ(rows.rowCount(), 0U);
    EXPECT_TRUE(rows.fields().empty());
}

TEST_P(ConnectionSuite, TheSameShapeRunsWithOtherArguments) {
    for (int i = 0; i < 20; ++i)
        insert(connection(), i, "nome " + std::to_string(i));
    for (int i = 0; i < 20; ++i) {
        contract::Statement statement;
        statement << "SELECT NOME FROM PROVA WHERE CODICE = ";
        statement.number(i);
        EXPECT_EQ(single(statement).text(), "nome " + std::to_string(i));
    }
}

TEST_P(ConnectionSuite, QuotesInTextsAreCharacters) {
    for (const std::string_view name : {"O'Brien", "''", "'; DELETE FROM PROVA; --", "a\"b", "\\"}) {
        insert(connection(), 5, name);
        contract::Statement statement;
        statement << "SELECT Count(*) AS Conta FROM PROVA WHERE NOME = '";
        statement.text(name) << "'";
        EXPECT_EQ(single(statement).integer(), 1) << name;
    }
    EXPECT_EQ(count(connection()), 5);
}

TEST_P(ConnectionSuite, LongTexts) {
    std::string text(10U << 20U, 'x');
    text += "è";
    insert(connection(), 1, text);
    EXPECT_EQ(single("SELECT NOME FROM PROVA"_sql).text(), text);
}

TEST_P(ConnectionSuite, TextsCompareWithoutRegardToCase) {
    insert(connection(), 1, "Rossi");
    EXPECT_EQ(single("SELECT Count(*) AS Conta FROM PROVA WHERE NOME = 'ROSSI'"_sql).integer(), 1);
}

TEST_P(ConnectionSuite, DatesAtTheirBounds) {
    // From the first day that every server's columns hold, over the last one that would fit a count of nanoseconds.
    for (const auto* day : {"1753-01-01", "1899-12-30", "1900-01-01", "2000-02-29", "2262-04-11", "2262-04-12",
                            "2263-01-01", "9999-12-31"}) {
        const auto date = *contract::Date::parseIso(day);
        connection().Execute("DELETE FROM PROVA"_sql);
        contract::Statement statement;
        statement << "INSERT INTO PROVA (DAL) VALUES (CONVERT(DateTime,'";
        statement.date(date) << "',103))";
        connection().Execute(statement);
        EXPECT_EQ(single("SELECT DAL FROM PROVA"_sql), contract::Value(date));
    }
}

TEST_P(ConnectionSuite, DatesBefore1900CompareByTheCalendar) {
    connection().Execute("INSERT INTO PROVA (CODICE, DAL) VALUES (1, CONVERT(DateTime,'30/12/1899',103))"_sql);
    connection().Execute("INSERT INTO PROVA (CODICE, DAL) VALUES (2, CONVERT(DateTime,'01/01/1900',103))"_sql);
    contract::Statement before;
    before << "SELECT CODICE FROM PROVA WHERE DAL < CONVERT(DateTime,'";
    before.text("31/12/1899") << "',103)";
    EXPECT_EQ(single(before).integer(), 1);
    contract::Statement after;
    after << "SELECT CODICE FROM PROVA WHERE DAL > CONVERT(DateTime,'";
    after.date(*contract::Date::of(1899, 12, 31)) << "',103)";
    EXPECT_EQ(single(after).integer(), 2);
}

TEST_P(ConnectionSuite, DateConditionsAndDefaults) {
    connection().Execute("INSERT INTO PROVA (CODICE, DAL) VALUES (1, CONVERT(DateTime,'30/06/2024',103))"_sql);
    connection().Execute("INSERT INTO PROVA (CODICE) VALUES (2)"_sql);
    contract::Statement statement;
    statement << "SELECT CODICE FROM PROVA WHERE CONVERT(DateTime,'";
    statement.text("30/06/2024") << "',103) BETWEEN DAL AND DAL";
    EXPECT_EQ(single(statement).integer(), 1);
    EXPECT_EQ(single("SELECT ISNULL(DAL,'01/01/2000') AS D FROM PROVA WHERE CODICE = 2"_sql),
              contract::Value(*contract::Date::of(2000, 1, 1)));
}

TEST_P(ConnectionSuite, ATextThatIsNoDateFailsInADatesPlace) {
    connection().Execute("INSERT INTO PROVA (CODICE, DAL) VALUES (1, CONVERT(DateTime,'30/06/2024',103))"_sql);
    contract::Statement statement;
    statement << "SELECT CODICE FROM PROVA WHERE DAL = CONVERT(DateTime,'";
    statement.text("31/02/2024") << "',103)";
    contract::Snapshot rows;
    EXPECT_FALSE(failureOf([&] { connection().Read(statement, rows); }).empty());
}

TEST_P(ConnectionSuite, NumbersBetweenQuotesMeetNumberColumns) {
    insert(connection(), 12, "dodici");
    contract::Statement statement;
    statement << "SELECT NOME FROM PROVA WHERE CODICE = '";
    statement.text("12") << "'";
    EXPECT_EQ(single(statement).text(), "dodici");
    contract::Statement blank;
    blank << "SELECT Count(*) AS Conta FROM PROVA WHERE CODICE = '";
    blank.text("") << "'";
    EXPECT_EQ(single(blank).integer(), 0);
    contract::Statement wrong;
    wrong << "SELECT NOME FROM PROVA WHERE CODICE = '";
    wrong.text("dodici") << "'";
    contract::Snapshot rows;
    EXPECT_FALSE(failureOf([&] { connection().Read(wrong, rows); }).empty());
}

TEST_P(ConnectionSuite, TopAndOrder) {
    insert(connection(), 3, "c");
    insert(connection(), 1, "a");
    insert(connection(), 2, "b");
    EXPECT_EQ(single("SELECT TOP 1 NOME FROM PROVA ORDER BY CODICE DESC"_sql).text(), "c");
    contract::Recordset rows;
    rows.Open("SELECT TOP 2 CODICE FROM PROVA ORDER BY CODICE"_sql, connection());
    EXPECT_EQ(rows.RecordCount(), 2U);
}

TEST_P(ConnectionSuite, ConcatenationIsNullWhereAPartIs) {
    connection().Execute("INSERT INTO PROVA (CODICE, NOME) VALUES (1, 'x  ')"_sql);
    connection().Execute("INSERT INTO PROVA (CODICE) VALUES (2)"_sql);
    EXPECT_EQ(
        single("SELECT RTrim(CAST(CODICE AS Char)) + ' ' + RTrim(NOME) AS T FROM PROVA WHERE CODICE = 1"_sql).text(),
        "1 x");
    EXPECT_TRUE(single("SELECT CAST(CODICE AS Char) + NOME AS T FROM PROVA WHERE CODICE = 2"_sql).isNull());
}

TEST_P(ConnectionSuite, ACommitKeepsAndARollbackDrops) {
    connection().BeginTrans();
    EXPECT_TRUE(connection().InTransaction());
    insert(connection(), 1, "a");
    connection().CommitTrans();
    EXPECT_FALSE(connection().InTransaction());
    connection().BeginTrans();
    insert(connection(), 2, "b");
    EXPECT_EQ(count(connection()), 2);
    connection().RollbackTrans();
    EXPECT_FALSE(connection().InTransaction());
    EXPECT_EQ(count(connection()), 1);
}

TEST_P(ConnectionSuite, TransactionsDoNotNest) {
    connection().BeginTrans();
    failureOf([&] { connection().BeginTrans(); }, contract::RuntimeError::invalidCall);
    EXPECT_TRUE(connection().InTransaction());
    connection().RollbackTrans();
}

TEST_P(ConnectionSuite, CommitNeedsATransactionAndRollbackDoesNot) {
    EXPECT_FALSE(failureOf([&] { connection().CommitTrans(); }).empty());
    connection().RollbackTrans();
    EXPECT_FALSE(connection().InTransaction());
}

TEST_P(ConnectionSuite, TheTransactionObjectRollsBackUnlessCommitted) {
    {
        contract::Transaction transaction(connection());
        insert(connection(), 1, "a");
    }
    EXPECT_EQ(count(connection()), 0);
    {
        contract::Transaction transaction(connection());
        insert(connection(), 1, "a");
        transaction.commit();
    }
    EXPECT_EQ(count(connection()), 1);
    EXPECT_FALSE(connection().InTransaction());
}

TEST_P(ConnectionSuite, ClosingRollsBack) {
    connection().BeginTrans();
    insert(connection(), 1, "a");
    connection().Close();
    connection().Open();
    EXPECT_FALSE(connection().InTransaction());
    EXPECT_EQ(count(connection()), 0);
}

TEST_P(ConnectionSuite, AFailedStatementLeavesTheTransactionToItsOwner) {
    connection().BeginTrans();
    insert(connection(), 1, "a");
    failureOf([&] { connection().Execute("UPDATE NONESISTE SET X = 1"_sql); });
    connection().RollbackTrans();
    EXPECT_EQ(count(connection()), 0);
}

TEST_P(ConnectionSuite, AnotherConnectionSeesWhatWasCommitted) {
    insert(connection(), 1, "a");
    const auto other = another();
    EXPECT_EQ(count(*other), 1);
    insert(*other, 2, "b");
    EXPECT_EQ(count(connection()), 2);
}

TEST_P(ConnectionSuite, ErrorsAreKeptByCategory) {
    EXPECT_TRUE(connection().Errors().empty());
    const auto missing = failureOf([&] { connection().Execute("DELETE FROM NONESISTE"_sql); });
    EXPECT_EQ(category(), contract::ErrorCategory::missingTable);
    // A server may write the name in small letters.
    EXPECT_TRUE(missing.find("NONESISTE") != std::string::npos || missing.find("nonesiste") != std::string::npos)
        << missing;
    EXPECT_NE(connection().Errors().front().nativeError, 0);

    failureOf([&] { connection().Execute("UPDATE PROVA SET NONESISTE = 1"_sql); });
    EXPECT_EQ(category(), contract::ErrorCategory::syntax);
    failureOf([&] { connection().Execute("UPDATE PROVA WHERE"_sql); });
    EXPECT_EQ(category(), contract::ErrorCategory::syntax);

    connection().Execute("INSERT INTO CHIAVI (CHIAVE) VALUES (1)"_sql);
    failureOf([&] { connection().Execute("INSERT INTO CHIAVI (CHIAVE) VALUES (1)"_sql); });
    EXPECT_EQ(category(), contract::ErrorCategory::duplicate);

    // They stay until the next failure.
    connection().Execute("DELETE FROM PROVA"_sql);
    connection().RollbackTrans();
    EXPECT_EQ(category(), contract::ErrorCategory::duplicate);
}

} // namespace contract_suites
