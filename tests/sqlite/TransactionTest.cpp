// Two programs on one file, full disks and killed processes.

#include "sqlite/SqliteFixture.h"

#include <chrono>
#include <thread>

#include <csignal>
#include <sys/wait.h>

namespace sqlite_test {
namespace {

using contract::ErrorCategory;
using Clock = std::chrono::steady_clock;

class SqliteTransactionTest : public SqliteTest {
protected:
    std::unique_ptr<Connection> another(const std::string& options) {
        auto other = std::make_unique<Connection>(connectionStringOf(file(), options));
        other->Open();
        return other;
    }
};

TEST_F(SqliteTransactionTest, ASecondWriterWaitsThenFailsThenSucceeds) {
    const auto other = another(";busy=300");
    connection.BeginTrans();
    insert(connection, 1);
    const auto start = Clock::now();
    const auto description = failureOf([&] { other->BeginTrans(); });
    const auto waited = std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - start).count();
    EXPECT_GE(waited, 250);
    EXPECT_LT(waited, 5000);
    EXPECT_EQ(other->Errors().front().category, ErrorCategory::locked);
    EXPECT_TRUE(has(description, "occupato da un altro programma")) << description;
    EXPECT_FALSE(other->InTransaction());
    // Readers are not kept out, and see the rows as they were.
    EXPECT_EQ(count(*other), 0);
    connection.CommitTrans();
    other->BeginTrans();
    insert(*other, 2);
    other->CommitTrans();
    EXPECT_EQ(count(connection), 2);
}

TEST_F(SqliteTransactionTest, TheWaitEndsAsSoonAsTheOtherIsDone) {
    connection.BeginTrans();
    std::thread waiting([&] {
        const auto other = another(";busy=5000");
        contract::Transaction transaction(*other);
        insert(*other, 2);
        transaction.commit();
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(150));
    insert(connection, 1);
    connection.CommitTrans();
    waiting.join();
    EXPECT_EQ(count(connection), 2);
}

TEST_F(SqliteTransactionTest, AFullDatabaseEndsTheTransactionAndNothingFollowsOnItsOwn) {
    insert(connection, 1);
    connection.runNative("PRAGMA max_page_count = 12");
    connection.BeginTrans();
    const std::string text(200000, 'x');
    contract::Statement big;
    big << "INSERT INTO PROVA (NOME) VALUES ('";
    big.text(text) << "')";
    const auto description = failureOf([&] { connection.Execute(big); });
    EXPECT_EQ(connection.Errors().front().category, ErrorCategory::full);
    EXPECT_TRUE(has(description, "spazio")) << description;
    if (!connection.InTransaction()) {
        // The user may go on with the next step: it must not be written outside the transaction.
        EXPECT_TRUE(has(failureOf([&] { insert(connection, 2); }), "già stata annullata"));
        EXPECT_TRUE(has(failureOf([&] { connection.CommitTrans(); }), "già stata annullata"));
        EXPECT_EQ(connection.Errors().front().category, ErrorCategory::full);
    }
    connection.RollbackTrans();
    EXPECT_EQ(connection.Errors().front().category, ErrorCategory::full);
    EXPECT_EQ(count(connection), 1);
    connection.BeginTrans();
    insert(connection, 3);
    connection.CommitTrans();
    EXPECT_EQ(count(connection), 2);
}

TEST_F(SqliteTransactionTest, AnEndedTransactionIsNotContinued) {
    connection.BeginTrans();
    insert(connection, 1);
    // As the engine does by itself on an input or output error.
    connection.runNative("ROLLBACK");
    EXPECT_FALSE(connection.InTransaction());
    EXPECT_TRUE(has(failureOf([&] { insert(connection, 2); }), "già stata annullata"));
    EXPECT_EQ(count(connection), 0);
    connection.RollbackTrans();
    insert(connection, 3);
    EXPECT_EQ(count(connection), 1);
}

TEST_F(SqliteTransactionTest, AKilledProcessLeavesTheRowsAsTheyWere) {
    insert(connection, 1);
    connection.Close();
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        Connection victim(connectionStringOf(file()));
        victim.Open();
        victim.runNative("PRAGMA cache_size = 1"); // so that changed pages reach the file before the end
        victim.BeginTrans();
        victim.Execute("UPDATE PROVA SET CODICE = 99"_sql);
        for (int i = 0; i < 2000; ++i)
            insert(victim, i);
        ::raise(SIGKILL);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);
    EXPECT_TRUE(std::filesystem::exists(file() + "-journal"));
    connection.Open();
    contract::Recordset rows;
    rows.Open("SELECT CODICE FROM PROVA"_sql, connection);
    ASSERT_EQ(rows.RecordCount(), 1U);
    EXPECT_EQ(rows["CODICE"].integer(), 1);
}

TEST_F(SqliteTransactionTest, ReadersSeeAChangeOnlyWhole) {
    const auto other = another("");
    insert(connection, 1);
    insert(connection, 1);
    connection.BeginTrans();
    connection.Execute("UPDATE PROVA SET CODICE = 2"_sql);
    contract::Recordset rows;
    rows.Open("SELECT Count(*) AS Conta FROM PROVA WHERE CODICE = 2"_sql, *other);
    EXPECT_EQ(rows["Conta"].integer(), 0);
    connection.CommitTrans();
    rows.Open("SELECT Count(*) AS Conta FROM PROVA WHERE CODICE = 2"_sql, *other);
    EXPECT_EQ(rows["Conta"].integer(), 2);
}

} // namespace
} // namespace sqlite_test
