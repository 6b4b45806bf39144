// What the adapter does with a server: the texts it sends, the values it takes, and the failures that no server has on
// demand.

#include "odbc/ScriptedServer.h"

namespace odbc_test {
namespace {

using contract::ErrorCategory;
using contract::FieldType;
using Calls = std::vector<std::string>;

const std::vector<scripted::Diagnostic> deadlock = {
    {"40001", 1205, "[FreeTDS][SQL Server]Transaction was deadlocked and has been chosen as the victim."}};
const std::vector<scripted::Diagnostic> lost = {{"08S01", 20006, "[FreeTDS][SQL Server]Write to the server failed"}};
const std::vector<scripted::Diagnostic> timedOut = {{"HYT00", 20003, "[FreeTDS][SQL Server]Timeout expired"},
                                                    {"08S01", 20047, "[FreeTDS][SQL Server]DBPROCESS is dead"}};

class OdbcServer : public ScriptedServer {};

TEST_F(OdbcServer, TextsGoUnchangedInOnePiece) {
    contract::Statement statement(" SELECT   A+B  AS [x y] FROM T WHERE N = '");
    statement.text("O'Brien è \n?") << "' AND D = CONVERT(DateTime,'31/12/2099',103)";
    connection.Execute(statement);
    EXPECT_EQ((Calls{" SELECT   A+B  AS [x y] FROM T WHERE N = 'O''Brien \\u232 \n?' AND D = "
                     "CONVERT(DateTime,'31/12/2099',103)"}),
              script().calls);
}

TEST_F(OdbcServer, TheTimeOuts) {
    EXPECT_EQ(10U, script().loginTimeout);
    EXPECT_EQ(0U, script().queryTimeout);
    EXPECT_EQ(0U, script().connectionTimeout) << "nothing is cut where nobody asked for it";
    Connection other(string(";statementtimeout=7"));
    other.Open();
    EXPECT_EQ(7U, script().queryTimeout);
    EXPECT_EQ(7U, script().connectionTimeout);
    EXPECT_FALSE(has(script().connectionString, "imeout")) << script().connectionString;
    Connection wrong(string(";StatementTimeout=poco"));
    EXPECT_TRUE(has(failureOf([&] { wrong.Open(); }), "StatementTimeout"));
}

TEST_F(OdbcServer, TheServerIsAskedToCountChangedRows) {
    Connection other(string());
    other.Open();
    EXPECT_EQ((Calls{"connect", "SET NOCOUNT OFF"}), script().calls);
    script().answer = [](const std::string&) {
        scripted::Answer answer;
        answer.changed = 3;
        return answer;
    };
    EXPECT_EQ(3, other.Execute("UPDATE PROVA SET CODICE = 1"_sql));
    failWith({{"42000", 50000, "[FreeTDS][SQL Server]refused"}});
    Connection refused(string());
    EXPECT_TRUE(has(failureOf([&] { refused.Open(); }), "refused"));
    EXPECT_FALSE(refused.IsOpen());
    EXPECT_EQ("disconnect", script().calls.back());
}

TEST_F(OdbcServer, AConnectionStringThatNoDriverCanTakeIsRefused) {
    // The first length that a driver would take for a text ended by a zero.
    Connection other(string(";App=" + std::string(65533, 'x')).substr(0, 65533));
    EXPECT_TRUE(has(failureOf([&] { other.Open(); }), "troppo lunga"));
    EXPECT_TRUE(script().calls.empty());
}

TEST_F(OdbcServer, NoResultStaysOpen) {
    script().answer = [](const std::string&) { return oneRow({{"N", SQL_INTEGER, 10, 0}}, {u"1"}); };
    Connection other(string());
    other.Open();
    contract::Snapshot rows;
    for (auto* used : {&connection, &other}) {
        used->Read("SELECT N FROM PROVA"_sql, rows);
        EXPECT_EQ(0, script().openResults);
        used->Execute("SELECT N FROM PROVA"_sql);
        EXPECT_EQ(0, script().openResults);
    }
}

TEST_F(OdbcServer, TransactionsAreSerialisableAndTheDriversOwn) {
    connection.BeginTrans();
    run();
    connection.CommitTrans();
    EXPECT_EQ((Calls{"serializable", "autocommit off", "UPDATE PROVA SET CODICE = 1", "commit", "autocommit on",
                     "read committed"}),
              script().calls);
    script().calls.clear();
    connection.BeginTrans();
    connection.RollbackTrans();
    EXPECT_EQ((Calls{"serializable", "autocommit off", "rollback", "autocommit on", "read committed"}), script().calls);
}

TEST_F(OdbcServer, ATransactionThatDoesNotBeginLeavesStatementsAsTheyWere) {
    script().served = [](const std::string& call) {
        return call == "autocommit off" ? std::vector<scripted::Diagnostic>{{"HY000", 0, "[FreeTDS]not now"}}
                                        : std::vector<scripted::Diagnostic>();
    };
    EXPECT_TRUE(has(failureOf([&] { connection.BeginTrans(); }), "not now"));
    EXPECT_FALSE(connection.InTransaction());
    EXPECT_TRUE(has(connection.Errors().front().description, "not now"));
    run();
    EXPECT_EQ(
        (Calls{"serializable", "autocommit off", "autocommit on", "read committed", "UPDATE PROVA SET CODICE = 1"}),
        script().calls);
    script().served = nullptr;
    connection.BeginTrans();
    EXPECT_TRUE(connection.InTransaction());
}

TEST_F(OdbcServer, EveryRecordIsKept) {
    failWith({{"01000", 3621, "[FreeTDS][SQL Server]The statement has been terminated."},
              {"23000", 2627, "[FreeTDS][SQL Server]Violation of PRIMARY KEY constraint."}});
    const auto description = failureOf([&] { run(); });
    ASSERT_EQ(2U, connection.Errors().size());
    EXPECT_EQ("01000", connection.Errors()[0].sqlState);
    EXPECT_EQ(3621, connection.Errors()[0].nativeError);
    EXPECT_EQ("[FreeTDS][SQL Server]Violation of PRIMARY KEY constraint.", connection.Errors()[1].description);
    EXPECT_EQ(ErrorCategory::duplicate, connection.Errors()[1].category);
    EXPECT_TRUE(has(description, "PRIMARY KEY")) << description;
    EXPECT_TRUE(has(description, "erp/Conti")) << description;
}

TEST_F(OdbcServer, ATransactionThatTheServerEndedTakesNoMoreWrites) {
    connection.BeginTrans();
    failWith(deadlock, 0);
    failureOf([&] { run(); });
    EXPECT_FALSE(connection.InTransaction());
    succeed();
    const std::size_t before = script().calls.size();
    EXPECT_TRUE(has(failureOf([&] { run(); }), "già stata annullata"));
    EXPECT_TRUE(has(failureOf([&] { connection.CommitTrans(); }), "già stata annullata"));
    EXPECT_EQ(before, script().calls.size()) << "nothing was sent";
    script().rollbackFailure = {{"42000", 3903,
                                 "[FreeTDS][SQL Server]The ROLLBACK TRANSACTION request has no "
                                 "corresponding BEGIN TRANSACTION."}};
    connection.RollbackTrans();
    EXPECT_EQ(ErrorCategory::deadlock, connection.Errors().front().category) << "the first error stays";
    run();
    connection.BeginTrans();
    EXPECT_TRUE(connection.InTransaction());
}

TEST_F(OdbcServer, ARollbackWithoutTransactionOnTheServerIsQuiet) {
    connection.BeginTrans();
    script().rollbackFailure = {{"25000", 3903, "[FreeTDS][SQL Server]no transaction"}};
    connection.RollbackTrans();
    EXPECT_FALSE(connection.InTransaction());
    EXPECT_TRUE(connection.Errors().empty());
    EXPECT_EQ(0U, callsOf("disconnect"));
}

TEST_F(OdbcServer, ATransactionThatTheServerKeptGoesOn) {
    connection.BeginTrans();
    failWith({{"23000", 2627, "duplicate"}}, 1);
    failureOf([&] { run(); });
    EXPECT_TRUE(connection.InTransaction());
    succeed();
    run();
    connection.CommitTrans();
    EXPECT_EQ(1U, callsOf("commit"));
}

TEST_F(OdbcServer, ALostConnectionIsOpenedByTheNextCommand) {
    failWith(lost);
    failureOf([&] { run(); });
    EXPECT_EQ(ErrorCategory::lostConnection, connection.Errors().front().category);
    EXPECT_TRUE(connection.IsOpen());
    succeed();
    script().calls.clear();
    run();
    EXPECT_EQ((Calls{"connect", "SET NOCOUNT OFF", "UPDATE PROVA SET CODICE = 1"}), script().calls);
}

TEST_F(OdbcServer, AServerThatStaysAwayIsTriedAgainAtEachCommand) {
    failWith(lost);
    failureOf([&] { run(); });
    succeed();
    script().connectFailure = {{"08001", 20009, "[FreeTDS]Unable to connect: Adaptive Server is unavailable"}};
    for (int i = 0; i < 2; ++i)
        EXPECT_TRUE(has(failureOf([&] { run(); }), "Unable to connect"));
    script().connectFailure.clear();
    run();
    EXPECT_EQ(3U, callsOf("connect"));
}

TEST_F(OdbcServer, AStatementThatTimedOutTakesTheConnectionWithIt) {
    failWith(timedOut);
    const auto description = failureOf([&] { run(); });
    EXPECT_TRUE(has(description, "tempo massimo")) << description;
    EXPECT_TRUE(has(description, "si riapre al prossimo comando")) << description;
    EXPECT_EQ(ErrorCategory::timeout, connection.Errors().front().category);
    EXPECT_EQ(2U, connection.Errors().size());
    EXPECT_EQ(1U, callsOf("disconnect"));
    succeed();
    run();
    EXPECT_EQ(1U, callsOf("connect"));
}

TEST_F(OdbcServer, ATransactionThatCouldNotBeginInTimeIsNone) {
    script().served = [](const std::string& call) {
        return call == "autocommit off" ? timedOut : std::vector<scripted::Diagnostic>();
    };
    EXPECT_TRUE(has(failureOf([&] { connection.BeginTrans(); }), "tempo massimo"));
    EXPECT_FALSE(connection.InTransaction());
    script().served = nullptr;
    script().calls.clear();
    connection.BeginTrans();
    connection.RollbackTrans();
    EXPECT_EQ((Calls{"connect", "SET NOCOUNT OFF", "serializable", "autocommit off", "rollback", "autocommit on",
                     "read committed"}),
              script().calls);
}

TEST_F(OdbcServer, NoConnectionIsOpenedWithinATransaction) {
    for (const auto& failure : {lost, timedOut}) {
        connection.BeginTrans();
        run();
        failWith(failure);
        EXPECT_TRUE(has(failureOf([&] { run(); }), "La transazione è annullata"));
        succeed();
        script().calls.clear();
        contract::Snapshot rows;
        failureOf([&] { run(); });
        failureOf([&] { connection.Read("SELECT 1"_sql, rows); });
        failureOf([&] { connection.CommitTrans(); });
        EXPECT_FALSE(connection.InTransaction());
        EXPECT_TRUE(script().calls.empty());
        connection.RollbackTrans();
        EXPECT_TRUE(script().calls.empty());
        run();
        EXPECT_EQ((Calls{"connect", "SET NOCOUNT OFF", "UPDATE PROVA SET CODICE = 1"}), script().calls);
    }
}

TEST_F(OdbcServer, ACommitThatNobodyAnsweredIsToldAsUncertain) {
    connection.BeginTrans();
    script().commitFailure = lost;
    EXPECT_TRUE(has(failureOf([&] { connection.CommitTrans(); }), "Non è certo"));
    EXPECT_FALSE(connection.InTransaction());
    connection.RollbackTrans();
    run();
    EXPECT_EQ(1U, callsOf("connect"));
}

TEST_F(OdbcServer, ARightThatIsMissingLeavesTheTransactionToItsOwner) {
    connection.BeginTrans();
    for (const int number : {229, 230}) {
        failWith({{"42000", number, "[FreeTDS][SQL Server]The UPDATE permission was denied on the object 'PROVA'."}});
        const auto description = failureOf([&] { run(); });
        EXPECT_EQ(ErrorCategory::permission, connection.Errors().front().category);
        EXPECT_TRUE(has(description, "l'utente del database non ha il permesso")) << description;
        EXPECT_TRUE(has(description, "'PROVA'")) << description;
        EXPECT_TRUE(connection.InTransaction());
    }
    connection.RollbackTrans();
    EXPECT_EQ(1U, callsOf("rollback"));
    EXPECT_EQ(0U, callsOf("disconnect"));
}

TEST_F(OdbcServer, NoPasswordStandsInAnError) {
    failWith({{"28000", 18456, "[FreeTDS][SQL Server]Login failed for sa with segreto; PWD=segreto"}});
    EXPECT_FALSE(has(failureOf([&] { run(); }), "segreto"));
    EXPECT_FALSE(has(connection.Errors().front().description, "segreto"));
    Connection other(string());
    script().connectFailure = {{"28000", 18456, "[FreeTDS][SQL Server]Login failed: UID=sa;PWD={segreto}"}};
    const auto description = failureOf([&] { other.Open(); });
    EXPECT_FALSE(has(description, "segreto")) << description;
    EXPECT_TRUE(has(description, "erp/Conti")) << description;
    EXPECT_EQ(ErrorCategory::permission, other.Errors().front().category);
    EXPECT_FALSE(other.IsOpen());
}

TEST_F(OdbcServer, AnUnknownErrorOfADeadConnectionIsALostOne) {
    failWith({{"HY000", 0, "[FreeTDS][SQL Server]Unknown error"}});
    script().dead = true;
    const std::string text = failureOf([&] { run(); });
    EXPECT_TRUE(has(text, "il collegamento con il server non c'è o si è interrotto")) << text;
    ASSERT_FALSE(connection.Errors().empty());
    EXPECT_EQ(ErrorCategory::lostConnection, connection.Errors().front().category);
    script().dead = false;
    succeed();
    run();
    EXPECT_EQ(1U, callsOf("connect"));
}

} // namespace
} // namespace odbc_test
