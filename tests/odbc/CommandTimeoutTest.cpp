// StatementTimeout over all the statements of one command.

#include "odbc/ScriptedServer.h"
#include "platform/shared/Waiting.h"

namespace odbc_test {
namespace {

using contract::ErrorCategory;
using platform::shared::Waiting;
using namespace std::chrono_literals;

class CommandTimeout : public ScriptedServer {
protected:
    void SetUp() override {
        ScriptedServer::SetUp();
        connection.Close();
        connection.SetConnectionString(string(";StatementTimeout=7"));
        connection.Open();
        script().calls.clear();
    }
    void TearDown() override {
        Waiting::instance().boundCommands(false);
        ScriptedServer::TearDown();
    }
};

TEST_F(CommandTimeout, AStatementGetsWhatItsCommandMayStillWait) {
    Waiting::instance().boundCommands(true);
    run();
    EXPECT_EQ(7U, script().queryTimeout);
    Waiting::instance().add(4500ms);
    run();
    EXPECT_EQ(3U, script().queryTimeout);
    Waiting::instance().commandBegins();
    run();
    EXPECT_EQ(7U, script().queryTimeout);
}

TEST_F(CommandTimeout, ACommandThatHasWaitedLongEnoughAsksTheServerNothingMore) {
    Waiting::instance().boundCommands(true);
    connection.BeginTrans();
    run();
    Waiting::instance().add(7s);
    script().calls.clear();
    const auto said = failureOf([&] { run(); });
    EXPECT_TRUE(has(said, "StatementTimeout")) << said;
    EXPECT_EQ(ErrorCategory::timeout, connection.Errors().front().category);
    EXPECT_TRUE(script().calls.empty());
    EXPECT_TRUE(connection.InTransaction()) << "the connection stands";
    connection.RollbackTrans();
    EXPECT_EQ(1U, callsOf("rollback"));
    Waiting::instance().commandBegins();
    EXPECT_NO_THROW(run());
}

TEST_F(CommandTimeout, WithoutCommandsEachStatementHasItsOwn) {
    Waiting::instance().add(20s);
    EXPECT_NO_THROW(run());
    EXPECT_EQ(7U, script().queryTimeout);
}

} // namespace
} // namespace odbc_test
