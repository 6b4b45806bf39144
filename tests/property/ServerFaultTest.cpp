// A server that refuses, chooses a victim, takes too long or goes away, at every call of a move and of an edit over
// ODBC: the rows are as before or as after, no transaction stays open, the first error is the one that is shown, and
// the same form goes on working once the server answers again.

#include "property/StandInServer.h"
#include "property/Works.h"

#include <gtest/gtest.h>

#include <iostream>
#include <memory>
#include <string>
#include <tuple>

namespace property {

namespace {

using Case = std::tuple<Work, ServerFault>;

const std::vector<int> abortAll(8, contract::message::answerAbort);
/// A server that is away lets the first try fail.
const std::vector<int> retryTwice = {contract::message::answerRetry, contract::message::answerRetry,
                                     contract::message::answerAbort, contract::message::answerAbort};

/// What the user reads at least.
std::string wordsOf(ServerFault fault) {
    switch (fault) {
    case ServerFault::refused:
        return "Refused by a trigger";
    case ServerFault::deadlock:
        return "in conflitto con quella di un altro utente";
    case ServerFault::timedOut:
        return "il tempo massimo è scaduto e la connessione è stata chiusa";
    case ServerFault::cut:
    case ServerFault::away:
    case ServerFault::answerLost:
        break;
    }
    return "il collegamento con il server non c'è o si è interrotto";
}

std::string nameOfCase(const ::testing::TestParamInfo<Case>& info) {
    static const char* const faults[] = {"Refused", "Deadlock", "TimedOut", "Cut", "Away", "AnswerLost"};
    return nameOf(std::get<Work>(info.param)) + faults[static_cast<int>(std::get<ServerFault>(info.param))];
}

class ServerFaultTest : public ::testing::TestWithParam<Case> {
protected:
    ServerFaultTest()
        : program(Where::embedded, [this](const WorldDatabase& database) {
              server = std::make_unique<StandInServer>(database.path());
              return StandInServer::connect();
          }) {}
    static Work work() { return std::get<Work>(GetParam()); }
    static ServerFault fault() { return std::get<ServerFault>(GetParam()); }

    /// The small world on both sides, with nothing open and nothing to fail.
    void show() {
        server->neverFail();
        program.host->errors.clear();
        program.write(smallWorld());
        ASSERT_TRUE(program.focus(moveOf(work())));
        ASSERT_TRUE(program.host->errors.empty()) << program.host->errors.front().text;
    }
    std::vector<model::Row> rows() { return withoutMarks(program.rows()); }
    /// The work with that call failing; the rows afterwards.
    std::vector<model::Row> rowsAfterFault(std::size_t at, const std::vector<int>& answers) {
        show();
        server->failAt(at, fault());
        doWork(program, work(), answers);
        server->neverFail();
        expectNothingOpen();
        return rows();
    }

    void expectShown() {
        ASSERT_FALSE(program.host->errors.empty());
        const auto& text = program.host->errors.front().text;
        EXPECT_NE(text.find(wordsOf(fault())), std::string::npos) << text;
        for (const auto& error : program.host->errors)
            EXPECT_EQ(error.text.find("3903"), std::string::npos) << error.text;
        if (server->failedAtCommit() && fault() != ServerFault::refused && fault() != ServerFault::deadlock) {
            EXPECT_NE(text.find("Non è certo che le modifiche siano state registrate"), std::string::npos) << text;
        }
        EXPECT_EQ(text.find("segreto"), std::string::npos) << text;
    }
    void expectNothingOpen() {
        EXPECT_FALSE(server->inTransaction());
        EXPECT_FALSE(program.connection->InTransaction());
    }

    std::unique_ptr<StandInServer> server;
    Program program;
};

} // namespace

TEST_P(ServerFaultTest, LeavesTheRowsAsBeforeOrAsAfterAndTheFormAtWork) {
    const auto before = smallWorld().rows;
    const auto after = rowsAfter(work());
    int injected = 0;
    for (std::size_t at = 1;; ++at) {
        SCOPED_TRACE("call " + std::to_string(at));
        ASSERT_LT(at, 500U);
        const auto found = rowsAfterFault(at, abortAll);
        ASSERT_FALSE(HasFatalFailure());
        if (program.host->errors.empty()) {
            EXPECT_EQ(found, after);
            break;
        }
        ++injected;
        expectShown();
        ASSERT_TRUE(found == before || found == after) << describe(found);
        if (found == after)
            continue;
        // Nothing is opened anew by hand.
        ASSERT_TRUE(program.focus(moveOf(work())));
        doWork(program, work(), abortAll);
        EXPECT_TRUE(program.host->errors.empty()) << program.host->errors.front().text;
        EXPECT_EQ(rows(), after);
        expectNothingOpen();
    }
    EXPECT_GT(injected, work() == Work::edit ? 5 : 20);
    std::cout << injected << " faults\n";
    RecordProperty("faults", injected);
}

TEST_P(ServerFaultTest, GoingOnWritesNothingOfWhatIsOver) {
    const auto before = smallWorld().rows;
    const auto after = rowsAfter(work());
    const std::vector<int> ignoreAll(8, contract::message::answerIgnore);
    int injected = 0;
    for (std::size_t at = 1;; ++at) {
        SCOPED_TRACE("call " + std::to_string(at));
        ASSERT_LT(at, 500U);
        const auto found = rowsAfterFault(at, ignoreAll);
        ASSERT_FALSE(HasFatalFailure());
        ASSERT_TRUE(found == before || found == after) << describe(found);
        if (program.host->errors.empty())
            break;
        ++injected;
        expectShown();
        if (found == after)
            continue;
        ASSERT_TRUE(program.focus(moveOf(work())));
        doWork(program, work(), abortAll);
        EXPECT_EQ(rows(), after);
    }
    EXPECT_GT(injected, work() == Work::edit ? 5 : 20);
    RecordProperty("faults", injected);
}

TEST_P(ServerFaultTest, TryingAgainReconnectsAndDoesTheWhole) {
    const auto after = rowsAfter(work());
    int injected = 0;
    for (std::size_t at = 1;; ++at) {
        SCOPED_TRACE("call " + std::to_string(at));
        ASSERT_LT(at, 500U);
        // What was committed unseen is not done a second time.
        EXPECT_EQ(rowsAfterFault(at, retryTwice), after);
        ASSERT_FALSE(HasFatalFailure());
        if (work() == Work::edit) {
            EXPECT_EQ(program.cell(12, "trQZ02_DATAFINEVAL"), "31/12/2030");
        }
        if (program.host->errors.empty())
            break;
        ++injected;
        expectShown();
        EXPECT_LE(program.host->errors.size(), 3U);
    }
    EXPECT_GT(injected, work() == Work::edit ? 5 : 20);
    RecordProperty("faults", injected);
}

INSTANTIATE_TEST_SUITE_P(EveryKind, ServerFaultTest,
                         ::testing::Combine(::testing::Values(Work::structure, Work::validity, Work::edit),
                                            ::testing::Values(ServerFault::refused, ServerFault::deadlock,
                                                              ServerFault::timedOut, ServerFault::cut,
                                                              ServerFault::away, ServerFault::answerLost)),
                         nameOfCase);

} // namespace property
