// An error, a transaction ended by the server and a lost connection at every operation of a date edited in place: the
// row is as before or as after, the cells show nothing that the row does not hold, and the form goes on working.

#include "property/Program.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

namespace property {

namespace {

constexpr const char* startColumn = "trQZ02_DATAINIZIOVAL";
constexpr const char* endColumn = "trQZ02_DATAFINEVAL";
constexpr std::int64_t edited = 3;
constexpr const char* start = "01/01/2020";
constexpr const char* oldEnd = "31/12/2099";
constexpr const char* newEnd = "31/12/2030";
constexpr const char* otherEnd = "30/06/2040";

contract::Date date(const char* text) {
    return contract::Date::parse(text).value_or(contract::Date());
}

model::World oneBranch() {
    model::World world;
    world.namedDistinte = {1, 2, 3};
    const auto add = [&](std::int64_t id, std::optional<std::int64_t> parent) {
        world.rows.push_back({id, 1, parent, 100 + id, date(start), date(oldEnd)});
        world.registered.insert(100 + id);
    };
    add(1, std::nullopt);
    add(2, 1);
    add(3, 2);
    add(4, 3);
    world.nextId = 20;
    return world;
}

/// The rows with another end of the edited one; by this program, with its audit values.
std::vector<model::Row> withEnd(std::vector<model::Row> rows, const char* end, bool byThisProgram) {
    for (auto& row : rows)
        if (row.id == edited) {
            row.end = date(end);
            row.moved = byThisProgram; // the audit columns of a change, date included
        }
    return rows;
}

/// Both sides show the distinta, so that an accepted pair loads the origin again.
model::Move bothOn(std::int64_t node) {
    model::Move sides;
    sides.origin = 1;
    sides.destination = 1;
    sides.node = 4;
    sides.target = node;
    return sides;
}

const std::vector<int> abortAll(8, contract::message::answerAbort);

using Case = std::tuple<Where, Fault>;

class EditFaultTest : public ::testing::TestWithParam<Case> {
protected:
    void SetUp() override {
        if (const auto why = WorldDatabase::missing(where()))
            GTEST_SKIP() << *why;
    }
    static Where where() { return std::get<Where>(GetParam()); }
    static Fault fault() { return std::get<Fault>(GetParam()); }
};
// A lost connection has to be reopened first.
class EditRetryTest : public EditFaultTest {};

std::string nameOfCase(const ::testing::TestParamInfo<Case>& info) {
    static const char* const faults[] = {"Error", "EndedByServer", "LostConnection"};
    return nameOf(std::get<Where>(info.param)) + faults[static_cast<int>(std::get<Fault>(info.param))];
}

} // namespace

TEST_P(EditFaultTest, LeavesTheRowAsBeforeOrAsAfter) {
    Program program(where());
    const auto world = oneBranch();
    const auto after = withEnd(world.rows, newEnd, true);
    std::size_t injected = 0;
    for (std::size_t at = 1;; ++at) {
        SCOPED_TRACE("operation " + std::to_string(at));
        ASSERT_LT(at, 100U);
        program.connection->reconnect();
        program.write(world);
        ASSERT_TRUE(program.focus(bothOn(edited)));
        program.connection->failAt(at, fault());
        ASSERT_TRUE(program.edit(edited, endColumn, newEnd, abortAll));
        program.connection->neverFail();
        const bool failed = !program.host->errors.empty();
        const auto rows = program.rows();
        EXPECT_FALSE(program.connection->InTransaction());
        EXPECT_EQ(program.cell(edited, startColumn), start);
        if (rows == after) {
            EXPECT_EQ(program.cell(edited, endColumn), newEnd);
            // What failed came after the write, in the loading of the origin, or nothing failed.
            if (!failed)
                break;
        } else {
            ASSERT_EQ(rows, world.rows);
            EXPECT_TRUE(failed);
            EXPECT_EQ(program.cell(edited, endColumn), oldEnd);
            EXPECT_EQ(program.state().DataFineNodoDest, date(oldEnd));
        }
        ++injected;

        // The form goes on: the same edit, without a fault, is written.
        program.connection->reconnect();
        if (rows == world.rows) {
            ASSERT_TRUE(program.edit(edited, endColumn, newEnd));
            EXPECT_TRUE(program.host->errors.empty());
            EXPECT_EQ(program.rows(), after);
            EXPECT_EQ(program.cell(edited, endColumn), newEnd);
        }
        program.reload();
        EXPECT_EQ(program.cell(edited, endColumn), newEnd);
        EXPECT_TRUE(program.host->errors.empty() || rows == after);
    }
    // The transaction, parent, overlaps, bonus, write, commit, and what loads the origin.
    EXPECT_GE(injected, 8U);
    RecordProperty("faults", static_cast<int>(injected));
}

TEST_P(EditFaultTest, NeverOverwritesAnotherUsersDates) {
    Program program(where());
    const auto world = oneBranch();
    const auto theirs = withEnd(world.rows, otherEnd, false);
    std::size_t injected = 0;
    for (std::size_t at = 1;; ++at) {
        SCOPED_TRACE("operation " + std::to_string(at));
        ASSERT_LT(at, 100U);
        program.connection->reconnect();
        program.write(world);
        ASSERT_TRUE(program.focus(bothOn(edited)));
        program.changeEnd(edited, date(otherEnd));
        program.connection->failAt(at, fault());
        ASSERT_TRUE(program.edit(edited, endColumn, newEnd, abortAll));
        const bool reached = program.connection->operations() >= at;
        program.connection->neverFail();
        EXPECT_FALSE(program.host->errors.empty());
        EXPECT_EQ(program.rows(), theirs);
        EXPECT_NE(program.cell(edited, endColumn), newEnd);
        EXPECT_FALSE(program.connection->InTransaction());
        program.connection->reconnect();
        if (!reached) {
            EXPECT_EQ(program.cell(edited, endColumn), otherEnd);
            // The next edit starts from what is shown now.
            ASSERT_TRUE(program.edit(edited, endColumn, newEnd));
            EXPECT_TRUE(program.host->errors.empty());
            EXPECT_EQ(program.rows(), withEnd(world.rows, newEnd, true));
            break;
        }
        ++injected;
    }
    // The transaction, parent, overlaps, bonus, write, and the question for the dates of now.
    EXPECT_EQ(injected, 6U);
    RecordProperty("faults", static_cast<int>(injected));
}

TEST_P(EditRetryTest, TryingAgainWritesThePair) {
    Program program(where());
    const auto world = oneBranch();
    const auto after = withEnd(world.rows, newEnd, true);
    // The transaction, parent, overlaps, bonus, write and commit.
    for (std::size_t at = 1; at <= 6; ++at) {
        SCOPED_TRACE("operation " + std::to_string(at));
        program.write(world);
        ASSERT_TRUE(program.focus(bothOn(edited)));
        program.connection->failAt(at, fault());
        ASSERT_TRUE(program.edit(edited, endColumn, newEnd, {contract::message::answerRetry}));
        EXPECT_EQ(program.host->errors.size(), 1U);
        EXPECT_EQ(program.rows(), after);
        EXPECT_EQ(program.cell(edited, endColumn), newEnd);
    }
}

const auto everywhere = ::testing::Values(Where::embedded, Where::odbc, Where::server);
INSTANTIATE_TEST_SUITE_P(EveryKind, EditFaultTest,
                         ::testing::Combine(everywhere, ::testing::Values(Fault::error, Fault::endedByServer,
                                                                          Fault::lostConnection)),
                         nameOfCase);
INSTANTIATE_TEST_SUITE_P(EveryKind, EditRetryTest,
                         ::testing::Combine(everywhere, ::testing::Values(Fault::error, Fault::endedByServer)),
                         nameOfCase);

} // namespace property
