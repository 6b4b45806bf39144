// Two programs on one database, moving, editing and looking at screens that have grown old. Whatever they did, the
// embedded database must hold what the independent model says of the same transactions one after the other: then the
// two together broke nothing that one alone could not have broken.
//
// A server has an order too, but it shows to nobody, and what looks broken one alone may have done as well. There it is
// checked that no row is lost or changed its account, that every refusal is readable, that no transaction stays open
// and that nobody waits for ever. That two can not make a cycle of what each alone may do is CycleTest's.
//
// The run is short; DISTINTE_LOAD_SECONDS and DISTINTE_LOAD_USERS make it longer and more crowded.

#include "concurrent/Journal.h"
#include "concurrent/Process.h"
#include "concurrent/Replay.h"
#include "concurrent/User.h"
#include "property/RandomWorld.h"
#include "property/WorldDatabase.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <iostream>
#include <random>
#include <string>
#include <thread>

namespace concurrent {

namespace {

using Kind = Entry::Kind;
using property::Where;
using property::WorldDatabase;

int setting(const char* variable, int otherwise) {
    const char* text = std::getenv(variable);
    return text != nullptr ? std::atoi(text) : otherwise;
}

int draw(std::mt19937& random, int from, int to) {
    return std::uniform_int_distribution<int>(from, to)(random);
}

/// One user's random work.
class Worker {
public:
    Worker(int number, const WorldDatabase& database, Journal& journal)
        : number_(number), journal_(journal), random_(static_cast<unsigned>(7001 + number)),
          connection_(std::make_shared<OrderedConnection>(database.connect(), journal)),
          user_(database.connectionString(), connection_) {}

    void act() {
        ++journal_.counters().actions;
        // Often enough the screens stay as they are, however old.
        for (const bool destination : {false, true})
            if (!loaded_[destination] || draw(random_, 1, 3) == 1)
                load(destination);
        if (!focusAny(false) || !focusAny(true))
            return;
        // Thinking it over, while the others work.
        std::this_thread::sleep_for(std::chrono::milliseconds(draw(random_, 0, 20)));
        const int what = draw(random_, 1, 5);
        if (what <= 2)
            move(Kind::structure);
        else if (what <= 4)
            move(Kind::validity);
        else
            edit();
        if (connection_->InTransaction())
            ++journal_.counters().open;
    }

private:
    void load(bool destination) {
        user_.load(destination, draw(random_, 1, 3));
        note();
        loaded_[destination] = true;
    }

    bool focusAny(bool destination) {
        auto& tree = user_.tree(destination);
        const auto count = static_cast<int>(tree.nodeCount());
        if (count == 0)
            return false;
        const bool done = user_.focus(destination, tree.key({draw(random_, 0, count - 1)}));
        note();
        return done;
    }

    static std::int32_t days(const contract::Value& date) { return date.date().value_or(contract::Date()).days(); }
    contract::Date someDay() {
        return contract::Date::of(2020 + draw(random_, 0, 9), draw(random_, 1, 12), draw(random_, 1, 28))
            .value_or(contract::Date());
    }

    void move(Kind kind) {
        auto& state = user_.state();
        Entry entry;
        entry.kind = kind;
        entry.user = number_;
        entry.origin = contract::Value(state.origine.IdDistinta).integer().value_or(0);
        entry.destination = contract::Value(state.destinazione.IdDistinta).integer().value_or(0);
        entry.node = user_.tree(false).key(user_.tree(false).focused());
        entry.target = user_.tree(true).key(user_.tree(true).focused());
        model::Move move;
        if (kind == Kind::validity) {
            move.withValidity = true;
            move.closing =
                std::max((*state.origine.dati)["QZ02_DATAINIZIOVAL"].date().value_or(contract::Date()), someDay());
            move.fixedEnd = draw(random_, 1, 2) == 1
                                ? std::max(move.closing.plusDays(1), someDay())
                                : (*state.origine.dati)["QZ02_DATAFINEVAL"].date().value_or(contract::Date());
            entry.closing = move.closing.days();
            entry.fixedEnd = move.fixedEnd->days();
        }
        connection_->announce(entry);
        user_.press(move);
        note();
    }

    void edit() {
        auto& rows = *user_.state().destinazione.dati;
        Entry entry;
        entry.kind = Kind::edit;
        entry.user = number_;
        entry.node = user_.tree(true).key(user_.tree(true).focused());
        entry.oldStart = entry.newStart = days(rows["QZ02_DATAINIZIOVAL"]);
        entry.oldEnd = entry.newEnd = days(rows["QZ02_DATAFINEVAL"]);
        const bool end = draw(random_, 1, 2) == 1;
        const auto date = someDay();
        (end ? entry.newEnd : entry.newStart) = date.days();
        connection_->announce(entry);
        user_.edit(end, date);
        note();
    }

    /// What the user read while the last step ran.
    void note() {
        auto& counters = journal_.counters();
        for (const auto& message : user_.host->messages)
            if (message.style != contract::message::yesNo) {
                ++counters.refusals;
                if (message.text.size() < 10)
                    ++counters.unreadable;
                if (message.text.find("da un altro utente") != std::string::npos)
                    ++counters.stale;
            }
        for (const auto& error : user_.host->errors) {
            ++counters.errors;
            if (error.text.find("da un altro utente") != std::string::npos)
                ++counters.stale;
            // A sentence, not a number.
            if (error.text.size() < 20 || error.text.find(' ') == std::string::npos)
                ++counters.unreadable;
        }
        user_.host->messages.clear();
        user_.host->errors.clear();
    }

    int number_;
    Journal& journal_;
    std::mt19937 random_;
    std::shared_ptr<OrderedConnection> connection_;
    User user_;
    bool loaded_[2] = {false, false};
};

/// A world that is rich enough: the largest of the first hundred.
model::World someWorld(unsigned seed) {
    model::World best;
    for (unsigned i = 0; i < 100; ++i) {
        std::mt19937 random(seed + i);
        auto world = property::randomWorld(random);
        if (world.rows.size() > best.rows.size())
            best = std::move(world);
    }
    return best;
}

std::string name(const Entry& entry) {
    static const char* const kinds[] = {"-", "structure", "validity", "edit"};
    return std::string(kinds[static_cast<int>(entry.kind)]) + " of " + std::to_string(entry.node) + " under " +
           std::to_string(entry.target) + " by user " + std::to_string(entry.user);
}

const model::Row* byId(const std::vector<model::Row>& rows, std::int64_t id) {
    const auto at = std::find_if(rows.begin(), rows.end(), [id](const auto& row) { return row.id == id; });
    return at == rows.end() ? nullptr : &*at;
}

struct Totals {
    std::int64_t transactions = 0, kept = 0, stale = 0, refusals = 0, errors = 0;
};

/// What no user may have met, wherever the database is.
void checkMeetings(Journal& journal, Totals& totals) {
    auto& counters = journal.counters();
    totals.stale += counters.stale;
    totals.refusals += counters.refusals;
    totals.errors += counters.errors;
    EXPECT_EQ(counters.unreadable, 0);
    EXPECT_EQ(counters.open, 0) << "a transaction was left open";
}

/// The journal's transactions, one after the other, must lead to the database's rows.
void replay(const Journal& journal, model::World& world, WorldDatabase& database, Totals& totals) {
    for (std::size_t i = 0; i < journal.size(); ++i) {
        const auto& entry = journal.at(i);
        const bool expected = apply(world, entry);
        ASSERT_EQ(entry.committed, expected) << "transaction " << i << ": " << name(entry);
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

} // namespace

TEST_P(TwoUsers, TogetherDoWhatOneAfterTheOtherWouldHaveDone) {
    const auto seconds = std::chrono::seconds(setting("DISTINTE_LOAD_SECONDS", GetParam() == Where::odbc ? 3 : 6));
    const int users = setting("DISTINTE_LOAD_USERS", 2);
    const auto started = std::chrono::steady_clock::now();
    constexpr std::int64_t enough = 200;
    Totals totals;
    WorldDatabase database(GetParam(), true);
    for (unsigned round = 0; totals.transactions < enough || std::chrono::steady_clock::now() < started + seconds;
         ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        auto world = someWorld(1000 * round + 1);
        database.write(world);
        Journal journal;
        std::vector<pid_t> processes;
        processes.reserve(static_cast<std::size_t>(users));
        for (int number = 1; number <= users; ++number)
            processes.push_back(start([&] {
                Worker worker(number + static_cast<int>(round) * 100, database, journal);
                for (int i = 0; i < 60; ++i)
                    worker.act();
                return 0;
            }));
        for (const auto process : processes) {
            const auto ending = waitFor(process);
            ASSERT_EQ(ending.status, 0) << "signal " << ending.signal;
        }
        if (onServer())
            checkRows(journal, world, database, totals);
        else
            replay(journal, world, database, totals);
        checkMeetings(journal, totals);
        if (HasFailure())
            return;
    }
    // Both ends must be well represented for the agreement to mean something.
    EXPECT_GT(totals.kept, 20);
    EXPECT_GT(totals.transactions - totals.kept, 20);
    const auto took = std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count();
    std::cout << users << " users, " << took << " s: " << totals.transactions << " transactions, " << totals.kept
              << " kept, " << totals.stale << " refused on an old screen, " << totals.errors << " errors shown\n";
}

INSTANTIATE_TEST_SUITE_P(Over, TwoUsers, testing::Values(Where::embedded, Where::odbc, Where::server), nameOfWhere);

} // namespace concurrent
