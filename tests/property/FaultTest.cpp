// An error, a transaction ended by the server and a lost connection at every operation of a move: the rows are as
// before or as after, no transaction stays open, and the form goes on working.

#include "property/Program.h"
#include "property/SmallWorld.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace property {

namespace {

struct Case {
    Where where;
    bool withValidity;
    Fault fault;
    bool inBlocks;
};

std::string nameOf(Fault fault) {
    switch (fault) {
    case Fault::error:
        return "Error";
    case Fault::endedByServer:
        return "EndedByServer";
    case Fault::lostConnection:
    case Fault::cancelled:
        break;
    }
    return "LostConnection";
}

std::string nameOfCase(const ::testing::TestParamInfo<Case>& info) {
    return nameOf(info.param.where) + (info.param.withValidity ? "Validity" : "Structure") +
           (info.param.inBlocks ? "InBlocks" : "") + nameOf(info.param.fault);
}

class FaultTest : public ::testing::TestWithParam<Case> {
protected:
    void SetUp() override {
        if (const auto why = WorldDatabase::missing(GetParam().where))
            GTEST_SKIP() << *why;
    }
};
// A lost connection has to be reopened first, so it is none of these.
class RetryTest : public FaultTest {};

std::vector<Case> cases(const std::vector<Fault>& faults) {
    std::vector<Case> all;
    for (const auto where : {Where::embedded, Where::odbc, Where::server})
        for (const bool withValidity : {false, true})
            for (const auto fault : faults)
                for (const bool inBlocks : {false, true})
                    all.push_back({where, withValidity, fault, inBlocks});
    return all;
}

} // namespace

TEST_P(FaultTest, LeavesTheRowsAsBeforeAtEveryOperation) {
    const auto [where, withValidity, fault, inBlocks] = GetParam();
    const auto move = moveOf(withValidity ? Work::validity : Work::structure);
    Program program(where);
    program.state().nodiPerBlocchi = inBlocks ? 0 : -1;
    const auto world = smallWorld();
    auto moved = world;
    ASSERT_TRUE(model::apply(moved, move).kept);

    std::size_t injected = 0;
    for (std::size_t at = 1;; ++at) {
        program.connection->reconnect();
        program.write(world);
        ASSERT_TRUE(program.focus(move));
        program.connection->failAt(at, fault);
        program.press(move, {contract::message::answerAbort, contract::message::answerAbort,
                             contract::message::answerAbort, contract::message::answerAbort});
        program.connection->neverFail();
        const bool failed = !program.host->errors.empty();
        const auto rows = program.rows();
        EXPECT_FALSE(program.connection->InTransaction()) << "operation " << at;
        if (rows == moved.rows) {
            // The operation that failed came after the commit, in the loading of the trees, or none failed.
            if (!failed)
                break;
        } else {
            ASSERT_EQ(rows, world.rows) << "operation " << at;
            EXPECT_TRUE(failed) << "operation " << at;
        }
        ++injected;

        // The form goes on: the same move, without a fault, is carried out.
        program.connection->reconnect();
        if (rows == world.rows) {
            ASSERT_TRUE(program.focus(move));
            program.press(move);
            EXPECT_TRUE(program.host->errors.empty()) << "operation " << at;
            EXPECT_EQ(program.rows(), moved.rows) << "operation " << at;
        }
        ASSERT_LT(at, 500U);
    }
    EXPECT_GT(injected, 20U);
    RecordProperty("faults", static_cast<int>(injected));
}

TEST_P(RetryTest, TryingAgainRunsTheWholeMoveInANewTransaction) {
    const auto [where, withValidity, fault, inBlocks] = GetParam();
    const auto move = moveOf(withValidity ? Work::validity : Work::structure);
    Program program(where);
    program.state().nodiPerBlocchi = inBlocks ? 0 : -1;
    const auto world = smallWorld();
    auto moved = world;
    ASSERT_TRUE(model::apply(moved, move).kept);
    for (std::size_t at = 1; at <= 20; ++at) {
        program.write(world);
        ASSERT_TRUE(program.focus(move));
        program.connection->failAt(at, fault);
        program.press(move, {contract::message::answerRetry, contract::message::answerRetry});
        EXPECT_EQ(program.host->errors.size(), 1U) << "operation " << at;
        EXPECT_EQ(program.rows(), moved.rows) << "operation " << at;
        EXPECT_FALSE(program.connection->InTransaction());
    }
}

INSTANTIATE_TEST_SUITE_P(EveryKind, FaultTest,
                         ::testing::ValuesIn(cases({Fault::error, Fault::endedByServer, Fault::lostConnection})),
                         nameOfCase);

INSTANTIATE_TEST_SUITE_P(EveryKind, RetryTest, ::testing::ValuesIn(cases({Fault::error, Fault::endedByServer})),
                         nameOfCase);

} // namespace property
