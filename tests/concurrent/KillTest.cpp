// A program that is killed with no chance to clean up, before and after every operation of a move and of an edit and at
// moments drawn at random: the rows are as before or as after, the file is sound, and the next program works at once.

#include "concurrent/DeadlyConnection.h"
#include "concurrent/Process.h"
#include "concurrent/User.h"
#include "property/SmallWorld.h"

#include <gtest/gtest.h>

#include <csignal>
#include <iostream>
#include <random>
#include <string>
#include <tuple>

#include <unistd.h>

namespace concurrent {

namespace {

using property::moveOf;
using property::rowsAfter;
using property::smallWorld;
using property::Where;
using property::Work;
using property::WorldDatabase;

/// Does the work once; the connection may be armed when everything stands ready.
template <class Armed> void workOnce(User& user, Work work, const Armed& armed) {
    const auto move = moveOf(work);
    user.load(false, move.origin);
    user.load(true, move.destination);
    user.focus(false, move.node);
    user.focus(true, move.target);
    armed();
    if (work == Work::edit)
        user.edit(true, property::dateOf("31/12/2030"));
    else
        user.press(move);
}

std::shared_ptr<DeadlyConnection> deadly(const WorldDatabase& database) {
    return std::make_shared<DeadlyConnection>(database.connect());
}

using Case = std::tuple<Where, Work>;

std::string nameOfCase(const testing::TestParamInfo<Case>& info) {
    return property::nameOf(std::get<Where>(info.param)) + property::nameOf(std::get<Work>(info.param));
}

std::string nameOfWhere(const testing::TestParamInfo<Where>& info) {
    return property::nameOf(info.param);
}

void skipWithout(Where where) {
    if (const auto why = WorldDatabase::missing(where))
        GTEST_SKIP() << *why;
}

class KillTest : public testing::TestWithParam<Case> {
protected:
    void SetUp() override { skipWithout(std::get<Where>(GetParam())); }
};

class KillAtRandom : public testing::TestWithParam<Where> {
protected:
    void SetUp() override { skipWithout(GetParam()); }
};

} // namespace

TEST_P(KillTest, AtEveryOperationLeavesTheRowsAsBeforeOrAsAfter) {
    const auto where = std::get<Where>(GetParam());
    const auto work = std::get<Work>(GetParam());
    const auto before = smallWorld().rows;
    const auto after = rowsAfter(work);
    WorldDatabase database(where, true);
    int killed = 0;
    int kept = 0;
    bool reached = true;
    for (int at = 1; reached; ++at) {
        for (const bool late : {false, true}) {
            // A server can not tell the end after one operation from the end before the next.
            if (!late && where == Where::server)
                continue;
            database.write(smallWorld());
            const auto ending = waitFor(start([&] {
                const auto connection = deadly(database);
                User user(database.connectionString(), connection);
                workOnce(user, work, [&] { connection->dieAt(at, late); });
                return 0;
            }));
            const auto rows = property::withoutMarks(database.rows());
            if (ending.signal == 0) {
                ASSERT_EQ(ending.status, 0);
                EXPECT_EQ(rows, after);
                reached = false;
                break;
            }
            ASSERT_EQ(ending.signal, SIGKILL);
            ++killed;
            kept += rows == after ? 1 : 0;
            if (rows != after) {
                ASSERT_EQ(rows, before) << "operation " << at << (late ? " (after it)" : " (before it)");
            }
            EXPECT_TRUE(database.sound());
            if (rows == before) {
                // Nobody waits for the dead.
                User next(database.connectionString(), deadly(database));
                workOnce(next, work, [] {});
                EXPECT_TRUE(next.host->errors.empty()) << "operation " << at;
                const auto later = property::withoutMarks(database.rows());
                EXPECT_EQ(later, after) << "operation " << at << "\n" << property::describe(later);
            }
        }
        ASSERT_LT(at, 500);
    }
    EXPECT_GT(killed, (work == Work::edit ? 6 : 40) / (where == Where::server ? 2 : 1));
    EXPECT_GT(kept, 0);
    std::cout << killed << " processes killed\n";
}

const auto everywhere = testing::Values(Where::embedded, Where::odbc, Where::server);
INSTANTIATE_TEST_SUITE_P(EveryKind, KillTest,
                         testing::Combine(everywhere, testing::Values(Work::structure, Work::validity, Work::edit)),
                         nameOfCase);

TEST_P(KillAtRandom, InTheMiddleOfMovesAndTheirCommits) {
    std::mt19937 random(11);
    WorldDatabase database(GetParam(), true);
    const auto before = smallWorld().rows;
    const auto after = rowsAfter(Work::structure);
    int asBefore = 0;
    int asAfter = 0;
    for (int round = 0; round < 40; ++round) {
        database.write(smallWorld());
        int ready[2];
        ASSERT_EQ(::pipe(ready), 0);
        const auto child = start([&] {
            const auto connection = deadly(database);
            User user(database.connectionString(), connection);
            const auto there = moveOf(Work::structure);
            auto back = there;
            std::swap(back.origin, back.destination);
            back.target = 1;
            for (bool out = true;; out = !out) {
                const auto& move = out ? there : back;
                user.load(false, move.origin);
                user.load(true, move.destination);
                user.focus(false, move.node);
                user.focus(true, move.target);
                if (out && ::write(ready[1], "x", 1) != 1)
                    return 1;
                user.press(move);
            }
            return 0;
        });
        char sign = 0;
        ASSERT_EQ(::read(ready[0], &sign, 1), 1);
        // Every other time ten times as long, for a machine that has other work.
        const int longest = round % 2 == 0 ? 30'000 : 300'000;
        ::usleep(static_cast<useconds_t>(std::uniform_int_distribution<int>(0, longest)(random)));
        ::kill(child, SIGKILL);
        const auto ending = waitFor(child);
        ::close(ready[0]);
        ::close(ready[1]);
        ASSERT_EQ(ending.signal, SIGKILL);
        const auto rows = property::withoutMarks(database.rows());
        asBefore += rows == before ? 1 : 0;
        asAfter += rows == after ? 1 : 0;
        ASSERT_TRUE(rows == before || rows == after) << "round " << round << "\n" << property::describe(rows);
        EXPECT_TRUE(database.sound());
    }
    EXPECT_GT(asBefore, 0);
    EXPECT_GT(asAfter, 0);
}

INSTANTIATE_TEST_SUITE_P(EveryKind, KillAtRandom, everywhere, nameOfWhere);

} // namespace concurrent
