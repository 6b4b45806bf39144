// Statements that their user gives up: a call of the driver runs in a thread of its own meanwhile.

#include "contract_suites/ImpatientUser.h"
#include "odbc/ScriptedServer.h"

#include <atomic>
#include <thread>

namespace odbc_test {
namespace {

using contract::Cancellable;
using contract::Cancelled;
using contract::Transaction;
using contract_suites::ImpatientUser;
using namespace std::chrono_literals;

constexpr auto soon = 2s;

class CancelOverSqlite : public SqliteOdbcTest {
protected:
    void SetUp() override {
        SqliteOdbcTest::SetUp();
        if (IsSkipped())
            return;
        connection.BeginTrans();
        for (int code = 1; code <= 1500; ++code) {
            contract::Statement statement;
            statement << "INSERT INTO PROVA (CODICE) VALUES (";
            statement.number(code) << ")";
            connection.Execute(statement);
        }
        connection.CommitTrans();
    }
    std::string count() { return read("SELECT Count(*) AS Conta FROM PROVA"_sql).column(0).value(0).text(); }
};

TEST_F(CancelOverSqlite, AReadIsLeftInTheMiddle) {
    const ImpatientUser user(100ms);
    {
        const Cancellable cancellable(connection);
        EXPECT_THROW(read("SELECT Count(*) AS Conta FROM PROVA AS A INNER JOIN PROVA AS B ON A.ID <> B.ID INNER JOIN "
                          "PROVA AS C ON A.CODICE <> C.CODICE"_sql),
                     Cancelled);
        EXPECT_LT(user.sinceGivingUp(), soon);
    }
    EXPECT_EQ("1500", count());
}

TEST_F(CancelOverSqlite, AChangeIsTakenBackWithItsTransaction) {
    const ImpatientUser user(100ms);
    {
        Transaction transaction(connection);
        connection.Execute("INSERT INTO PROVA (CODICE) VALUES (1501)"_sql);
        EXPECT_THROW(
            connection.Execute("DELETE FROM PROVA WHERE ID IN (SELECT A.ID FROM PROVA AS A INNER JOIN PROVA AS "
                               "B ON A.ID <> B.ID INNER JOIN PROVA AS C ON A.CODICE <> C.CODICE)"_sql),
            Cancelled);
        EXPECT_LT(user.sinceGivingUp(), soon);
    }
    EXPECT_FALSE(connection.InTransaction());
    EXPECT_EQ("1500", count());
    Transaction again(connection);
    connection.Execute("INSERT INTO PROVA (CODICE) VALUES (1501)"_sql);
    again.commit();
    EXPECT_EQ("1501", count());
}

/// A server on which every statement works until it is cancelled.
class CancelOnServer : public ScriptedServer {
protected:
    void SetUp() override {
        ScriptedServer::SetUp();
        script().cancelled = [this] { stop = true; };
    }
    void workUntilCancelled() {
        script().answer = [this](const std::string&) {
            while (!stop)
                std::this_thread::sleep_for(1ms);
            scripted::Answer answer;
            answer.failure = {{"HY008", 0, "[Scripted]Operation canceled"}};
            return answer;
        };
    }
    std::atomic<bool> stop = false;
};

TEST_F(CancelOnServer, TheServerIsToldToStop) {
    workUntilCancelled();
    const ImpatientUser user(100ms);
    {
        Transaction transaction(connection);
        EXPECT_THROW(run(), Cancelled);
        EXPECT_TRUE(connection.InTransaction()) << "until it is rolled back";
    }
    EXPECT_TRUE(stop);
    EXPECT_EQ(1U, callsOf("rollback"));
    EXPECT_EQ(0U, callsOf("disconnect")) << "the connection serves on";
    EXPECT_TRUE(connection.Errors().empty());
    succeed();
    EXPECT_NO_THROW(run());
}

TEST_F(CancelOnServer, OneThatFinishesAllTheSameIsNotKept) {
    script().answer = [this](const std::string&) {
        while (!stop)
            std::this_thread::sleep_for(1ms);
        return scripted::Answer();
    };
    const ImpatientUser user(100ms);
    {
        Transaction transaction(connection);
        EXPECT_THROW(run(), Cancelled);
    }
    EXPECT_EQ(1U, callsOf("rollback"));
    EXPECT_EQ(0U, callsOf("commit"));
}

TEST_F(CancelOnServer, ACommitIsNotGivenUp) {
    Transaction transaction(connection);
    run();
    const ImpatientUser user(0ms);
    transaction.commit();
    EXPECT_EQ(1U, callsOf("commit"));
    EXPECT_FALSE(stop);
}

TEST_F(CancelOnServer, ErrorsComeThroughFromTheOtherThread) {
    const ImpatientUser user(1h);
    failWith({{"42000", 102, "[Scripted]Incorrect syntax"}});
    EXPECT_TRUE(has(failureOf([&] { run(); }), "Incorrect syntax"));
    EXPECT_FALSE(connection.Errors().empty());
}

} // namespace
} // namespace odbc_test
