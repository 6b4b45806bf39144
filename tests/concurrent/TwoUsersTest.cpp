// Two programs on one database, moving, editing and looking at screens that have grown old. Whatever they did, the
// embedded database must hold what the independent model says of the same transactions one after the other: then the
// two together broke nothing that one alone could not have broken.
//
// A server does not tell its order. Where its serialisable transactions read from a snapshot, the order of the commits
// and what each made of the rows is written down, and the model must find an order of one after the other that does the
// same (see HistoryCheck.h). On one that locks instead it is checked only that no row is lost or changed its account;
// that every refusal is readable, that no transaction stays open and that nobody waits for ever, everywhere.
//
// The run is short; DISTINTE_LOAD_SECONDS and DISTINTE_LOAD_USERS make it longer and more crowded.

#include "concurrent/History.h"
#include "concurrent/HistoryCheck.h"
#include "concurrent/Process.h"
#include "concurrent/Replay.h"
#include "concurrent/Worker.h"
#include "contract/RuntimeError.h"
#include "platform/odbc/Connection.h"
#include "property/RandomWorld.h"
#include "property/WorldDatabase.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <random>
#include <set>
#include <string>

namespace concurrent {

namespace {

using property::Where;
using property::WorldDatabase;

int setting(const char* variable, int otherwise) {
    const char* text = std::getenv(variable);
    return text != nullptr ? std::atoi(text) : otherwise;
}

/// How rich a world is. Where the statements leave an order to the database, one with many accounts has fewer rows
/// whose order matters.
std::size_t worth(const model::World& world, bool manyAccounts) {
    if (!manyAccounts)
        return world.rows.size();
    std::set<std::int64_t> accounts;
    for (const auto& row : world.rows)
        accounts.insert(row.account.value_or(0));
    return accounts.size();
}

/// The richest of a hundred.
model::World someWorld(unsigned seed, bool onServer) {
    model::World best;
    for (unsigned i = 0; i < 100; ++i) {
        std::mt19937 random(seed + i);
        auto world = property::randomWorld(random);
        if (worth(world, onServer) > worth(best, onServer))
            best = std::move(world);
    }
    return best;
}

const model::Row* byId(const std::vector<model::Row>& rows, std::int64_t id) {
    const auto at = std::find_if(rows.begin(), rows.end(), [id](const auto& row) { return row.id == id; });
    return at == rows.end() ? nullptr : &*at;
}

struct Totals {
    std::int64_t transactions = 0, kept = 0, stale = 0, refusals = 0, errors = 0, otherWords = 0;
    std::string errorsTold;
    std::size_t conflicts = 0, overlapping = 0, outOfTurn = 0, otherRowOrder = 0;
};

/// What no user may have met, wherever the database is.
void checkMeetings(Journal& journal, Totals& totals) {
    auto& counters = journal.counters();
    SCOPED_TRACE(journal.errorsTold());
    totals.errorsTold += journal.errorsTold();
    totals.stale += counters.stale;
    totals.refusals += counters.refusals;
    totals.errors += counters.errors;
    EXPECT_EQ(counters.unreadable, 0);
    EXPECT_EQ(counters.open, 0) << "a transaction was left open";
    EXPECT_EQ(counters.failedAlone, 0) << "a transaction failed that can have been in no conflict";
    totals.otherWords += counters.otherWords;
}

/// The journal's transactions, one after the other, must lead to the database's rows.
void replay(const Journal& journal, model::World& world, WorldDatabase& database, Totals& totals) {
    for (std::size_t i = 0; i < journal.size(); ++i) {
        const auto& entry = journal.at(i);
        const bool expected = apply(world, entry);
        ASSERT_EQ(entry.committed, expected) << "transaction " << i << ": " << describe(entry) << "\n"
                                             << journal.toldAround(i);
        ++totals.transactions;
        totals.kept += expected ? 1 : 0;
    }
    const auto expected = property::withoutMarks(world.rows);
    const auto found = property::withoutMarks(database.rows());
    ASSERT_EQ(found, expected) << "model:\n"
                               << property::describe(expected) << "database:\n"
                               << property::describe(found);
    EXPECT_TRUE(database.sound());
}

/// The rows that were there are there, of the same accounts.
void checkRows(const Journal& journal, const model::World& world, WorldDatabase& database, Totals& totals) {
    for (std::size_t i = 0; i < journal.size(); ++i) {
        ++totals.transactions;
        totals.kept += journal.at(i).committed ? 1 : 0;
    }
    const auto found = database.rows();
    EXPECT_GE(found.size(), world.rows.size());
    for (const auto& row : world.rows) {
        const auto* now = byId(found, row.id);
        ASSERT_NE(now, nullptr) << row.id;
        EXPECT_EQ(now->account, row.account) << row.id;
    }
}

/// The transactions must be what the model does one after the other, in an order that fits what each has seen.
void checkOrder(const Journal& journal, const History& history, const model::World& world, WorldDatabase& database,
                Totals& totals) {
    std::vector<Entry> entries;
    for (std::size_t i = 0; i < journal.size(); ++i) {
        entries.push_back(journal.at(i));
        totals.conflicts += entries.back().failed ? 1U : 0U;
    }
    std::vector<std::vector<model::Row>> states;
    for (std::size_t commits = 0; commits <= history.finished(); ++commits)
        states.push_back(history.state(commits));
    const auto connection = database.connect();
    connection->Open();
    EXPECT_EQ(property::withoutMarks(property::rowsAsTheyLie(*connection)), states.back());
    const auto verdict = checkHistory(world, states, entries);
    EXPECT_EQ(verdict.problem, "");
    totals.overlapping += verdict.overlapping;
    totals.outOfTurn += verdict.outOfTurn;
    totals.otherRowOrder += verdict.otherRowOrder;
}

/// How a transaction is kept from what others do meanwhile.
enum class Isolation {
    snapshot, ///< it goes on seeing the rows as they were
    locks,    ///< the others wait
    none      ///< it sees what they do
};

Isolation isolationOf(WorldDatabase& database) {
    const auto reader = database.connect();
    reader->Open();
    platform::odbc::Connection writer(database.connectionString() + ";StatementTimeout=3");
    writer.Open();
    const contract::Transaction transaction(*reader);
    const auto before = property::rowsAsTheyLie(*reader);
    try {
        writer.Execute(contract::Statement("UPDATE QZ02_DISTINTA SET QZ02_CLIFOR_CG44 = 1 + QZ02_CLIFOR_CG44"));
    } catch (const contract::RuntimeError&) {
        return Isolation::locks;
    }
    return property::rowsAsTheyLie(*reader) == before ? Isolation::snapshot : Isolation::none;
}

class TwoUsers : public testing::TestWithParam<Where> {
protected:
    void SetUp() override {
        if (const auto why = WorldDatabase::missing(GetParam()))
            GTEST_SKIP() << *why;
    }
    static bool onServer() { return GetParam() == Where::server; }
};

std::string nameOfWhere(const testing::TestParamInfo<Where>& info) {
    return property::nameOf(info.param);
}

/// Lets the users work at the same time, each over a connection that it makes.
void letWork(int users, unsigned round, const WorldDatabase& database, Journal& journal,
             const std::function<std::shared_ptr<RecordingConnection>()>& connect) {
    std::vector<pid_t> processes;
    processes.reserve(static_cast<std::size_t>(users));
    for (int number = 1; number <= users; ++number)
        processes.push_back(start([&] {
            Worker worker(number + static_cast<int>(round) * 100, database.connectionString(), connect(), journal);
            for (int i = 0; i < 60; ++i)
                worker.act();
            return 0;
        }));
    for (const auto process : processes) {
        const auto ending = waitFor(process);
        EXPECT_EQ(ending.status, 0) << "signal " << ending.signal;
    }
}

} // namespace

TEST_P(TwoUsers, TogetherDoWhatOneAfterTheOtherWouldHaveDone) {
    const auto seconds = std::chrono::seconds(setting("DISTINTE_LOAD_SECONDS", GetParam() == Where::odbc ? 3 : 6));
    const int users = setting("DISTINTE_LOAD_USERS", 2);
    const auto started = std::chrono::steady_clock::now();
    constexpr std::int64_t enough = 200;
    Totals totals;
    WorldDatabase database(GetParam(), true);
    bool snapshots = false;
    if (onServer()) {
        database.write(someWorld(1, true));
        const auto isolation = isolationOf(database);
        ASSERT_NE(isolation, Isolation::none) << "a transaction sees what others do meanwhile";
        snapshots = isolation == Isolation::snapshot;
        std::cout << (snapshots ? "the server's transactions read from snapshots: their order is checked\n"
                                : "the server's transactions lock what they read: their order is not checked\n");
    }
    for (unsigned round = 0; totals.transactions < enough || std::chrono::steady_clock::now() < started + seconds;
         ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        auto world = someWorld(1000 * round + 1, onServer());
        database.write(world);
        Journal journal;
        History history;
        if (snapshots) {
            const auto connection = database.connect();
            connection->Open();
            history.start(property::rowsAsTheyLie(*connection));
        }
        letWork(users, round, database, journal, [&]() -> std::shared_ptr<RecordingConnection> {
            if (!snapshots)
                return std::make_shared<OrderedConnection>(database.connect(), journal);
            auto reader = database.connect();
            reader->Open();
            return std::make_shared<SnapshotConnection>(database.connect(), std::move(reader), journal, history);
        });
        if (HasFailure())
            return;
        if (onServer())
            checkRows(journal, world, database, totals);
        else
            replay(journal, world, database, totals);
        if (snapshots)
            checkOrder(journal, history, world, database, totals);
        checkMeetings(journal, totals);
        if (HasFailure())
            return;
    }
    // Both ends must be well represented for the agreement to mean something.
    EXPECT_GT(totals.kept, 20);
    EXPECT_GT(totals.transactions - totals.kept, 20);
    const auto took = std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count();
    std::cout << users << " users, " << took << " s: " << totals.transactions << " transactions, " << totals.kept
              << " kept, " << totals.stale << " refused on an old screen, " << totals.errors << " errors shown\n"
              << totals.errorsTold;
    if (snapshots)
        std::cout << totals.conflicts << " ended in a conflict (" << totals.otherWords << " in other words), "
                  << totals.overlapping << " kept without having seen the commit before, " << totals.outOfTurn
                  << " of these before another in the order found, " << totals.otherRowOrder
                  << " told with rows in another order\n";
}

INSTANTIATE_TEST_SUITE_P(Over, TwoUsers, testing::Values(Where::embedded, Where::odbc, Where::server), nameOfWhere);

} // namespace concurrent
