// What the check of a server's history must find, on histories written by hand.

#include "concurrent/HistoryCheck.h"
#include "property/SmallWorld.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace concurrent {

namespace {

using property::dateOf;
using Rows = std::vector<model::Row>;

constexpr const char* start = "01/01/2020";
constexpr const char* end = "31/12/2099";

/// A root with 2 and 3 below it, each with a child.
model::World twoBranches() {
    model::World world;
    world.namedDistinte = {1, 2, 3};
    const auto add = [&](std::int64_t id, std::optional<std::int64_t> parent) {
        world.rows.push_back({id, 1, parent, 100 + id, dateOf(start), dateOf(end)});
        world.registered.insert(100 + id);
    };
    add(1, std::nullopt);
    add(2, 1);
    add(3, 1);
    add(4, 2);
    add(5, 3);
    return world;
}

Entry move(std::int64_t node, std::int64_t target) {
    Entry entry;
    entry.kind = Entry::Kind::structure;
    entry.origin = entry.destination = 1;
    entry.node = node;
    entry.target = target;
    return entry;
}

/// A move that copies; the new links run to the end of time.
Entry moveWithValidity(std::int64_t node, std::int64_t target) {
    auto entry = move(node, target);
    entry.kind = Entry::Kind::validity;
    entry.closing = dateOf("30/06/2024").days();
    entry.fixedEnd = dateOf(end).days();
    return entry;
}

Entry edit(const model::Row& row, const char* newStart, const char* newEnd) {
    Entry entry;
    entry.kind = Entry::Kind::edit;
    entry.node = row.id;
    entry.oldStart = row.start.days();
    entry.oldEnd = row.end.days();
    entry.newStart = dateOf(newStart).days();
    entry.newEnd = dateOf(newEnd).days();
    return entry;
}

Entry committed(Entry entry, std::uint32_t commit, std::uint32_t seen) {
    entry.committed = true;
    entry.commit = commit;
    entry.seenAtLeast = entry.seenAtMost = seen;
    return entry;
}

Entry refused(Entry entry, std::uint32_t seen) {
    entry.seenAtLeast = entry.seenAtMost = seen;
    return entry;
}

Rows withParent(Rows rows, std::int64_t id, std::int64_t parent) {
    for (auto& row : rows)
        if (row.id == id)
            row.parent = parent;
    return rows;
}

Rows withPeriod(Rows rows, std::int64_t id, const char* newStart, const char* newEnd) {
    for (auto& row : rows)
        if (row.id == id) {
            row.start = dateOf(newStart);
            row.end = dateOf(newEnd);
        }
    return rows;
}

bool says(const Verdict& verdict, const std::string& words) {
    return verdict.problem.find(words) == 0;
}

} // namespace

TEST(HistoryCheck, TakesWhatOneAfterTheOtherDoes) {
    const auto world = twoBranches();
    const auto first = withParent(world.rows, 2, 3);
    const auto second = withParent(first, 5, 1);
    const std::vector<Rows> states = {world.rows, first, second};
    const auto verdict =
        checkHistory(world, states, {committed(move(5, 1), 2, 1), refused(move(3, 2), 1), committed(move(2, 3), 1, 0)});
    EXPECT_EQ(verdict.problem, "");
    EXPECT_EQ(verdict.overlapping, 0U);
    EXPECT_EQ(verdict.outOfTurn, 0U);
}

TEST(HistoryCheck, AMoveFromAnOldScreenIsRefused) {
    const auto world = twoBranches();
    const auto first = withParent(world.rows, 2, 3);
    const std::vector<Rows> states = {world.rows, first};
    auto again = move(2, 1);
    again.nodeShown = {true, 1, dateOf(start).days(), dateOf(end).days()};
    EXPECT_EQ(checkHistory(world, states, {committed(move(2, 3), 1, 0), refused(again, 1)}).problem, "");
    again.nodeShown.parent = 3;
    const auto wrong = checkHistory(world, states, {committed(move(2, 3), 1, 0), refused(again, 1)});
    EXPECT_TRUE(says(wrong, "not what the model refuses")) << wrong.problem;
}

TEST(HistoryCheck, AnEditIsCheckedAgainstTheParentOnItsScreen) {
    auto world = twoBranches();
    world.rows.push_back({6, 1, 4, 104, dateOf("01/01/2010"), dateOf("31/12/2010")}); // below a link of its account
    const auto moved = withParent(world.rows, 6, 3);
    const std::vector<Rows> states = {world.rows, moved};
    auto old = edit(world.rows.back(), "01/01/2011", "31/12/2011");
    old.nodeShown = {true, 4, old.oldStart, old.oldEnd};
    EXPECT_EQ(checkHistory(world, states, {committed(move(6, 3), 1, 0), refused(old, 1)}).problem, "");
    old.nodeShown.parent = 3;
    const auto wrong = checkHistory(world, states, {committed(move(6, 3), 1, 0), refused(old, 1)});
    EXPECT_TRUE(says(wrong, "not what the model refuses")) << wrong.problem;
}

TEST(HistoryCheck, GivesCopiesTheDatabasesNumbers) {
    const auto world = twoBranches();
    auto copied = world.rows;
    for (const auto id : {2, 4})
        copied[static_cast<std::size_t>(id - 1)].end = dateOf("30/06/2024");
    // Numbers that rolled back moves have used up are not given again.
    copied.push_back({77, 1, 3, 102, dateOf("01/07/2024"), dateOf(end)});
    copied.push_back({79, 1, 77, 104, dateOf("01/07/2024"), dateOf(end)});
    const std::vector<Rows> states = {world.rows, copied, withParent(copied, 79, 1)};
    const auto verdict =
        checkHistory(world, states, {committed(moveWithValidity(2, 3), 1, 0), committed(move(79, 1), 2, 1)});
    EXPECT_EQ(verdict.problem, "");

    auto elsewhere = copied;
    elsewhere.back().parent = 3;
    const auto wrong = checkHistory(world, {world.rows, elsewhere}, {committed(moveWithValidity(2, 3), 1, 0)});
    EXPECT_TRUE(says(wrong, "not what the model does")) << wrong.problem;
}

TEST(HistoryCheck, FindsARefusalThatNobodyAloneMeets) {
    const auto world = twoBranches();
    const auto moved = withParent(world.rows, 2, 3);
    // On the rows as they were nothing forbids it; on those after the other's commit something does.
    const auto wrong = checkHistory(world, {world.rows, moved}, {committed(move(2, 3), 1, 0), refused(move(3, 2), 0)});
    EXPECT_TRUE(says(wrong, "not what the model refuses")) << wrong.problem;
    const auto right = checkHistory(world, {world.rows, moved}, {committed(move(2, 3), 1, 0), refused(move(3, 2), 1)});
    EXPECT_EQ(right.problem, "");
}

TEST(HistoryCheck, FindsALostUpdate) {
    const auto world = twoBranches();
    const auto first = withParent(world.rows, 2, 3);
    // The second has written back what the first had changed.
    const std::vector<Rows> states = {world.rows, first, withParent(world.rows, 5, 1)};
    const auto verdict = checkHistory(world, states, {committed(move(2, 3), 1, 0), committed(move(5, 1), 2, 0)});
    EXPECT_TRUE(says(verdict, "not what the model does")) << verdict.problem;
}

TEST(HistoryCheck, FindsWhatEachAloneMayDoAndBothMayNot) {
    const auto world = twoBranches();
    const auto first = withParent(world.rows, 2, 3);
    const std::vector<Rows> states = {world.rows, first, withParent(first, 3, 2)};
    // Neither has seen the other: a cycle.
    const auto verdict = checkHistory(world, states, {committed(move(2, 3), 1, 0), committed(move(3, 2), 2, 0)});
    EXPECT_TRUE(says(verdict, "one after the other can not have done it")) << verdict.problem;
    EXPECT_EQ(verdict.overlapping, 1U);
}

TEST(HistoryCheck, FindsAnOrderThatIsNotThatOfTheCommits) {
    // One account as a root of distinta 1 and as a child in distinta 2: the child's period refuses the root's, and not
    // the other way round.
    auto world = twoBranches();
    world.rows.push_back({11, 2, std::nullopt, 111, dateOf(start), dateOf(end)});
    world.rows.push_back({12, 2, 11, 101, dateOf("01/01/2025"), dateOf("31/12/2026")});
    world.rows.front().end = dateOf("31/12/2021");
    const auto child = edit(world.rows.back(), "01/01/2022", "31/12/2026");
    const auto root = edit(world.rows.front(), start, "31/12/2023");
    const auto first = withPeriod(world.rows, 12, "01/01/2022", "31/12/2026");
    const std::vector<Rows> states = {world.rows, first, withPeriod(first, 1, start, "31/12/2023")};
    const auto verdict = checkHistory(world, states, {committed(child, 1, 0), committed(root, 2, 0)});
    EXPECT_EQ(verdict.problem, "");
    EXPECT_EQ(verdict.outOfTurn, 1U);

    // Who began when the other was over comes after it.
    const auto late = checkHistory(world, states, {committed(child, 1, 0), committed(root, 2, 1)});
    EXPECT_TRUE(says(late, "not what the model does")) << late.problem;
}

TEST(HistoryCheck, TakesACommitUnderWayThatCameToNothing) {
    const auto world = twoBranches();
    auto own = committed(move(2, 3), 1, 0);
    auto refusal = refused(move(3, 2), 1);
    own.seenAtMost = 1;
    refusal.seenAtMost = 2;
    EXPECT_EQ(checkHistory(world, {world.rows, withParent(world.rows, 2, 3)}, {own, refusal}).problem, "");
    own.seenAtLeast = 1;
    EXPECT_TRUE(says(checkHistory(world, {world.rows, withParent(world.rows, 2, 3)}, {own}), "no commit of its own"));
}

TEST(HistoryCheck, FindsCommitsThatAreNobodys) {
    const auto world = twoBranches();
    const std::vector<Rows> states = {world.rows, withParent(world.rows, 2, 3)};
    auto failed = refused(move(2, 3), 0);
    failed.failed = true;
    EXPECT_TRUE(says(checkHistory(world, states, {failed}), "nobody's commit 1"));
    EXPECT_EQ(checkHistory(world, {world.rows}, {failed}).problem, "");
    auto both = committed(move(2, 3), 1, 0);
    both.failed = true;
    EXPECT_TRUE(says(checkHistory(world, states, {both}), "neither kept nor refused"));
}

} // namespace concurrent
