#include "platform/headless/ScriptedConnection.h"

#include "contract/Recordset.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using contract::ErrorCategory;
using contract::Recordset;
using contract::RuntimeError;
using contract::Statement;
using platform::headless::rows;
using platform::headless::ScriptedConnection;

namespace {

const contract::DatabaseErrorRecord broken{"HY000", 1, "guasto", ErrorCategory::other};

class ScriptedConnectionTest : public testing::Test {
protected:
    ScriptedConnectionTest() { connection.Open(); }

    std::size_t read(contract::Fragment text) {
        records.Open(Statement(text), connection);
        return records.RecordCount();
    }
    std::int64_t execute(contract::Fragment text) { return connection.Execute(Statement(text)); }

    ScriptedConnection connection;
    Recordset records;
};

TEST_F(ScriptedConnectionTest, AnswersByTheRuleGivenLast) {
    connection.answer("SELECT", rows({"A"}, {{1}}));
    connection.answer("SELECT B", rows({"B"}, {{1}, {2}}));
    connection.answerExactly("SELECT B", rows({"B"}));
    EXPECT_EQ(read("SELECT A"), 1U);
    EXPECT_EQ(read("SELECT B, C"), 2U);
    EXPECT_EQ(read("SELECT B"), 0U);
    EXPECT_EQ(read("OTHER"), 0U);
}

TEST_F(ScriptedConnectionTest, GivesFieldsTheKindOfTheirFirstValue) {
    connection.answer("S", rows({"N", "T", "V"}, {{contract::Value::null(), "x", contract::Value::null()}, {7}}));
    ASSERT_EQ(read("S"), 2U);
    EXPECT_EQ(records.Fields("N").Type(), contract::FieldType::integer);
    EXPECT_EQ(records.Fields("T").Type(), contract::FieldType::varChar);
    EXPECT_EQ(records.Fields("V").Type(), contract::FieldType::variant);
    EXPECT_TRUE(records["N"].isNull());
    records.MoveNext();
    EXPECT_TRUE(records["T"].isNull());
}

TEST_F(ScriptedConnectionTest, WritesDownStatementsAndTransactions) {
    connection.BeginTrans();
    EXPECT_TRUE(connection.InTransaction());
    EXPECT_EQ(execute("UPDATE"), 1);
    connection.CommitTrans();
    EXPECT_FALSE(connection.InTransaction());
    EXPECT_EQ(connection.take(), (std::vector<std::string>{"BeginTrans", "UPDATE", "CommitTrans"}));
    EXPECT_TRUE(connection.take().empty());
}

TEST_F(ScriptedConnectionTest, FailsWhenAsked) {
    connection.failNth(2, broken);
    EXPECT_NO_THROW(execute("A"));
    EXPECT_THROW(execute("B"), RuntimeError);
    EXPECT_EQ(connection.Errors().at(0).description, "guasto");
    EXPECT_NO_THROW(execute("C"));
    connection.fail("D", broken);
    EXPECT_THROW(read("D E"), RuntimeError);
    EXPECT_TRUE(records.Empty());
    connection.forget();
    EXPECT_NO_THROW(read("D E"));
}

TEST_F(ScriptedConnectionTest, LosesTheConnectionForGood) {
    connection.BeginTrans();
    connection.loseConnectionAt(1);
    EXPECT_THROW(execute("A"), RuntimeError);
    EXPECT_FALSE(connection.InTransaction());
    EXPECT_NO_THROW(connection.RollbackTrans());
    EXPECT_THROW(connection.BeginTrans(), RuntimeError);
    EXPECT_EQ(connection.Errors().at(0).category, ErrorCategory::lostConnection);
}

TEST_F(ScriptedConnectionTest, KeepsTheFirstErrorThroughAQuietRollback) {
    connection.endTransactionOnError(true);
    connection.BeginTrans();
    connection.failNth(1, broken);
    EXPECT_THROW(execute("A"), RuntimeError);
    connection.RollbackTrans();
    EXPECT_EQ(connection.Errors().at(0).description, "guasto");
}

TEST_F(ScriptedConnectionTest, DoesNotNestTransactionsAndNeedsToBeOpen) {
    connection.BeginTrans();
    EXPECT_THROW(connection.BeginTrans(), RuntimeError);
    connection.Close();
    EXPECT_FALSE(connection.InTransaction());
    EXPECT_THROW(execute("A"), RuntimeError);
}

TEST_F(ScriptedConnectionTest, TellsOfTransactionsThatEnded) {
    std::vector<std::string> words;
    connection.transaction = [&](std::string_view word) { words.emplace_back(word); };
    { contract::Transaction transaction(connection); }
    {
        contract::Transaction transaction(connection);
        transaction.commit();
    }
    EXPECT_EQ(words, (std::vector<std::string>{"BeginTrans", "RollbackTrans", "BeginTrans", "CommitTrans"}));
}

TEST_F(ScriptedConnectionTest, RollsBackATransactionWhoseCommitFails) {
    connection.failNth(2, broken);
    try {
        contract::Transaction transaction(connection);
        transaction.commit();
        FAIL();
    } catch (const RuntimeError&) {
        EXPECT_FALSE(connection.InTransaction());
    }
    EXPECT_EQ(connection.statements().back(), "RollbackTrans");
}

} // namespace
