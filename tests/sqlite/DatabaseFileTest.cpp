// Making, checking and filling database files.

#include "platform/sqlite/BulkWriter.h"
#include "sqlite/SqliteFixture.h"

#include <fstream>

#include <csignal>
#include <sys/wait.h>

namespace sqlite_test {
namespace {

using contract::Value;
using contract_suites::suiteSchema;
using platform::sqlite::BulkWriter;
using platform::sqlite::checkDatabase;
using platform::sqlite::createDatabase;

class DatabaseFileTest : public testing::Test {
protected:
    TemporaryFolder folder;
    std::string file = folder.file("nuovo.db");
};

TEST_F(DatabaseFileTest, MadeThenChecked) {
    createDatabase(file, suiteSchema());
    checkDatabase(file, suiteSchema());
}

TEST_F(DatabaseFileTest, TablesThatExistAreRefused) {
    createDatabase(file, suiteSchema());
    EXPECT_TRUE(has(failureOf([&] { createDatabase(file, suiteSchema()); }), "PROVA"));
    checkDatabase(file, suiteSchema());
}

TEST_F(DatabaseFileTest, OneTableThatExistsIsEnoughAndNothingIsMade) {
    std::ofstream(file).close();
    {
        Connection connection(connectionStringOf(file));
        connection.Open();
        connection.runNative("CREATE TABLE chiavi (X)");
    }
    EXPECT_TRUE(has(failureOf([&] { createDatabase(file, suiteSchema()); }), "CHIAVI"));
    Connection connection(connectionStringOf(file));
    connection.Open();
    EXPECT_EQ(connection.catalog().columns("PROVA"), nullptr);
}

TEST_F(DatabaseFileTest, AnEmptyFileIsFilled) {
    std::ofstream(file).close();
    createDatabase(file, suiteSchema());
    checkDatabase(file, suiteSchema());
}

TEST_F(DatabaseFileTest, AForeignFileIsLeftAlone) {
    std::ofstream(file) << std::string(3000, 'x');
    failureOf([&] { createDatabase(file, suiteSchema()); });
    EXPECT_EQ(std::filesystem::file_size(file), 3000U);
}

TEST_F(DatabaseFileTest, AFolderThatIsNotThere) {
    EXPECT_TRUE(has(failureOf([&] { createDatabase(folder.file("manca/x.db"), suiteSchema()); }), "creare"));
}

TEST_F(DatabaseFileTest, AFailureWhileFillingLeavesNoFile) {
    EXPECT_THROW(createDatabase(file, suiteSchema(),
                                [](Connection& connection) {
                                    connection.Execute("INSERT INTO PROVA (CODICE) VALUES (1)"_sql);
                                    throw std::runtime_error("x");
                                }),
                 std::runtime_error);
    EXPECT_FALSE(std::filesystem::exists(file));
    EXPECT_FALSE(std::filesystem::exists(file + "-journal"));
}

TEST_F(DatabaseFileTest, AKilledProcessLeavesNoTables) {
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0)
        createDatabase(file, suiteSchema(), [](Connection& connection) {
            connection.runNative("PRAGMA cache_size = 1");
            for (int i = 0; i < 3000; ++i)
                connection.Execute("INSERT INTO PROVA (NOME) VALUES ('una riga che occupa il suo posto')"_sql);
            ::raise(SIGKILL);
        });
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status));
    createDatabase(file, suiteSchema());
    checkDatabase(file, suiteSchema());
    Connection connection(connectionStringOf(file));
    connection.Open();
    contract::Recordset rows;
    rows.Open("SELECT Count(*) AS Conta FROM PROVA"_sql, connection);
    EXPECT_EQ(rows["Conta"].integer(), 0);
}

TEST_F(DatabaseFileTest, ChecksNameWhatIsMissing) {
    createDatabase(file, suiteSchema());
    auto schema = suiteSchema();
    schema.tables[1].columns.push_back({"NUOVA", contract::ColumnType::text});
    auto description = failureOf([&] { checkDatabase(file, schema); });
    EXPECT_TRUE(has(description, "NUOVA") && has(description, "CHIAVI")) << description;
    schema.tables.insert(schema.tables.begin(), {"MANCA", {{"X", contract::ColumnType::text}}, {}, {}});
    description = failureOf([&] { checkDatabase(file, schema); });
    EXPECT_TRUE(has(description, "MANCA")) << description;
    EXPECT_TRUE(has(failureOf([&] { checkDatabase(folder.file("altro.db"), suiteSchema()); }), "non esiste"));
}

class BulkWriterTest : public SqliteTest {};

TEST_F(BulkWriterTest, RowsOfEveryKind) {
    connection.BeginTrans();
    BulkWriter writer(connection, "PROVA", {"CODICE", "CONTO", "NOME", "DAL", "IMPORTO", "ATTIVO"});
    writer.append({1, std::int64_t{2}, "D'Angiò", *contract::Date::of(2024, 1, 2), contract::Decimal{"3.50"}, true});
    writer.append({Value::null(), Value(), Value::null(), Value::null(), 2.5, false});
    EXPECT_EQ(writer.rowCount(), 2U);
    connection.CommitTrans();
    contract::Recordset rows;
    rows.Open("SELECT CODICE, CONTO, NOME, DAL, IMPORTO, ATTIVO FROM PROVA ORDER BY ID"_sql, connection);
    EXPECT_EQ(rows["CODICE"].integer(), 1);
    EXPECT_EQ(rows["CONTO"].integer(), 2);
    EXPECT_EQ(rows["NOME"].text(), "D'Angiò");
    EXPECT_EQ(rows["DAL"], Value(*contract::Date::of(2024, 1, 2)));
    EXPECT_EQ(rows["IMPORTO"].text(), "3.50");
    EXPECT_EQ(rows["ATTIVO"].integer(), 1);
    rows.MoveNext();
    EXPECT_TRUE(rows["CODICE"].isNull() && rows["CONTO"].isNull() && rows["NOME"].isNull() && rows["DAL"].isNull());
    EXPECT_EQ(rows["IMPORTO"].text(), "2.50");
    EXPECT_EQ(rows["ATTIVO"].integer(), 0);
}

TEST_F(BulkWriterTest, Misuse) {
    failureOf([&] { BulkWriter(connection, "PROVA", {"CODICE"}); }, contract::RuntimeError::invalidCall);
    connection.BeginTrans();
    EXPECT_TRUE(has(failureOf([&] { BulkWriter(connection, "MANCA", {"CODICE"}); }), "MANCA"));
    BulkWriter writer(connection, "CHIAVI", {"CHIAVE"});
    failureOf([&] { writer.append({1, 2}); }, contract::RuntimeError::invalidCall);
    writer.append({1});
    failureOf([&] { writer.append({1}); });
    EXPECT_EQ(connection.Errors().front().category, contract::ErrorCategory::duplicate);
    writer.append({2});
    EXPECT_EQ(writer.rowCount(), 2U);
    connection.RollbackTrans();
}

} // namespace
} // namespace sqlite_test
