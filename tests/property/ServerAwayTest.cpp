// A real server that goes away between two commands and comes back, and one that does not answer in time: through a
// proxy on the loopback, on the server that DISTINTE_TEST_ODBC names by Server= and Port=.

#include "odbc/OdbcFixture.h"
#include "platform/odbc/ConnectionString.h"
#include "property/Proxy.h"
#include "property/Works.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>

namespace property {

namespace {

class ServerAwayTest : public ::testing::TestWithParam<Work> {
protected:
    void SetUp() override {
        const auto text = odbc_test::serverString();
        if (!text)
            GTEST_SKIP() << *WorldDatabase::missing(Where::server);
        platform::odbc::ConnectionString string(*text);
        if (!string.value("Server") || !string.value("Port"))
            GTEST_SKIP() << "DISTINTE_TEST_ODBC names the server otherwise than by Server= and Port=";
        proxy = std::make_unique<Proxy>(*string.value("Server"), *string.value("Port"));
        string.set("Server", "127.0.0.1");
        string.set("Port", std::to_string(proxy->port()));
        string.set("StatementTimeout", "3");
        boundsItself = platform::odbc::ConnectionString(string.driverText(3)).value("Timeout").has_value();
        program = std::make_unique<Program>(Where::server, [&](const WorldDatabase&) {
            return std::make_unique<platform::odbc::Connection>(string.text());
        });
        program->write(smallWorld());
        ASSERT_TRUE(program->focus(moveOf(GetParam())));
    }
    void TearDown() override {
        program.reset();
        proxy.reset();
    }
    std::vector<model::Row> rows() { return withoutMarks(program->rows()); }

    /// The work ends in an error and changes nothing; the next one, on the same form, is done.
    void failThenWork(const std::string& words, void (*disturb)(Proxy&), void (*mend)(Proxy&)) {
        disturb(*proxy);
        const auto started = std::chrono::steady_clock::now();
        doWork(*program, GetParam(), std::vector<int>(8, contract::message::answerAbort));
        EXPECT_LT(std::chrono::steady_clock::now() - started, std::chrono::seconds(40));
        mend(*proxy);
        ASSERT_FALSE(program->host->errors.empty());
        EXPECT_NE(program->host->errors.front().text.find(words), std::string::npos)
            << program->host->errors.front().text;
        EXPECT_FALSE(program->connection->InTransaction());
        EXPECT_EQ(rows(), smallWorld().rows);
        doWork(*program, GetParam());
        EXPECT_TRUE(program->host->errors.empty()) << program->host->errors.front().text;
        EXPECT_EQ(rows(), rowsAfter(GetParam()));
    }

    std::unique_ptr<Proxy> proxy;
    std::unique_ptr<Program> program;
    bool boundsItself = false; ///< the driver, in what it asks the server without a statement
};

std::string nameOfWork(const ::testing::TestParamInfo<Work>& info) {
    return nameOf(info.param);
}

} // namespace

TEST_P(ServerAwayTest, AwayAndBackBetweenTwoCommands) {
    failThenWork(
        "il collegamento con il server non c'è o si è interrotto", [](Proxy& it) { it.goAway(); },
        [](Proxy& it) { it.comeBack(); });
}

TEST_P(ServerAwayTest, ACutConnectionIsMadeAgainByTryingAgain) {
    proxy->goAway();
    proxy->comeBack();
    doWork(*program, GetParam(), {contract::message::answerRetry, contract::message::answerAbort});
    EXPECT_EQ(program->host->errors.size(), 1U);
    EXPECT_EQ(rows(), rowsAfter(GetParam()));
    EXPECT_FALSE(program->connection->InTransaction());
}

// What the driver itself asks for when a transaction begins.
TEST_P(ServerAwayTest, ABeginningThatTakesTooLongEndsTheWork) {
    if (!boundsItself)
        GTEST_SKIP() << "the driver is not FreeTDS's";
    failThenWork(
        "il tempo massimo è scaduto", [](Proxy& it) { it.hold(true); }, [](Proxy& it) { it.hold(false); });
}

TEST_P(ServerAwayTest, AnAnswerThatTakesTooLongEndsTheStatement) {
    proxy->hold(true);
    const auto started = std::chrono::steady_clock::now();
    program->host->answers.assign(8, contract::message::answerAbort);
    program->component->form()->CaricaDistintaOrig("1");
    EXPECT_LT(std::chrono::steady_clock::now() - started, std::chrono::seconds(40));
    proxy->hold(false);
    ASSERT_FALSE(program->host->errors.empty());
    EXPECT_NE(program->host->errors.front().text.find("il tempo massimo è scaduto"), std::string::npos)
        << program->host->errors.front().text;
    ASSERT_TRUE(program->focus(moveOf(GetParam())));
    doWork(*program, GetParam());
    EXPECT_TRUE(program->host->errors.empty()) << program->host->errors.front().text;
    EXPECT_EQ(rows(), rowsAfter(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(EveryKind, ServerAwayTest, ::testing::Values(Work::structure, Work::validity, Work::edit),
                         nameOfWork);

} // namespace property
