// Statements that their user gives up.

#include "contract_suites/ImpatientUser.h"
#include "sqlite/SqliteFixture.h"

#include <memory>
#include <string>

namespace sqlite_test {
namespace {

using contract::Cancellable;
using contract::Cancelled;
using contract::Transaction;
using contract_suites::ImpatientUser;
using namespace std::chrono_literals;

constexpr auto soon = 1s; // at -O0 with sanitizers; the engine itself is asked every few microseconds

class CancelTest : public SqliteTest {
protected:
    void SetUp() override {
        connection.BeginTrans();
        for (int code = 1; code <= 1500; ++code)
            insert(connection, code);
        connection.CommitTrans();
    }

    // Thousands of millions of pairs: nobody would wait for their end.
    void readForEver() {
        contract::Snapshot rows;
        connection.Read("SELECT Count(*) AS Conta FROM PROVA AS A INNER JOIN PROVA AS B ON A.ID <> B.ID "
                        "INNER JOIN PROVA AS C ON A.CODICE <> C.CODICE"_sql,
                        rows);
    }
    void writeForEver() {
        connection.Execute("DELETE FROM PROVA WHERE ID IN (SELECT A.ID FROM PROVA AS A INNER JOIN PROVA AS B ON A.ID "
                           "<> B.ID INNER JOIN PROVA AS C ON A.CODICE <> C.CODICE)"_sql);
    }
};

TEST_F(CancelTest, AReadIsLeftInTheMiddle) {
    const ImpatientUser user(100ms);
    {
        const Cancellable cancellable(connection);
        EXPECT_THROW(readForEver(), Cancelled);
        EXPECT_LT(user.sinceGivingUp(), soon);
        EXPECT_TRUE(user.lookedWithin());
        EXPECT_THROW(count(connection), Cancelled) << "the work has not ended";
    }
    EXPECT_EQ(1500, count(connection));
    EXPECT_TRUE(connection.Errors().empty()) << "it is no error";
}

TEST_F(CancelTest, AChangeIsTakenBackWithItsTransaction) {
    const ImpatientUser user(100ms);
    {
        Transaction transaction(connection);
        insert(connection, 1501);
        EXPECT_THROW(writeForEver(), Cancelled);
        EXPECT_LT(user.sinceGivingUp(), soon);
    }
    EXPECT_FALSE(connection.InTransaction());
    EXPECT_EQ(1500, count(connection));
    Transaction again(connection);
    insert(connection, 1501);
    again.commit();
    EXPECT_EQ(1501, count(connection));
}

TEST_F(CancelTest, TheWaitForALockIsLeft) {
    Connection other(connectionStringOf(file()));
    other.Open();
    other.BeginTrans();
    const ImpatientUser user(100ms);
    EXPECT_THROW(const Transaction transaction(connection), Cancelled);
    EXPECT_LT(user.sinceGivingUp(), soon);
    EXPECT_FALSE(connection.InTransaction());
    other.RollbackTrans();
    Transaction transaction(connection);
    insert(connection, 1501);
    transaction.commit();
}

TEST_F(CancelTest, BetweenTwoStatements) {
    const ImpatientUser user(0ms);
    { EXPECT_THROW(const Transaction transaction(connection), Cancelled); }
    EXPECT_FALSE(connection.InTransaction());
    EXPECT_TRUE(user.gaveUp());
}

TEST_F(CancelTest, WhatMayNotBeGivenUpGoesOn) {
    const ImpatientUser user(0ms);
    for (int times = 0; times < 50; ++times)
        EXPECT_EQ(1500, count(connection));
    connection.BeginTrans();
    insert(connection, 1501);
    connection.CommitTrans();
    EXPECT_EQ(1501, count(connection));
    EXPECT_GT(user.looked(), 0);
}

TEST_F(CancelTest, ACommitIsNotGivenUp) {
    Transaction transaction(connection);
    insert(connection, 1501);
    {
        const ImpatientUser user(0ms);
        transaction.commit();
    }
    EXPECT_EQ(1501, count(connection));
}

} // namespace
} // namespace sqlite_test
