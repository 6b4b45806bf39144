// One user moves A under B while another, looking at the same tree, moves B under A.

#include "concurrent/Process.h"
#include "concurrent/User.h"
#include "property/WorldDatabase.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>

#include <unistd.h>

namespace concurrent {

namespace {

using property::describe;
using property::Where;
using property::WorldDatabase;

contract::Date date(const char* text) {
    return contract::Date::parse(text).value_or(contract::Date());
}

constexpr std::int64_t a = 2;
constexpr std::int64_t b = 3;

/// A root with A and B below it, each with a child.
model::World twoBranches() {
    model::World world;
    world.namedDistinte = {1, 2, 3};
    const auto add = [&](std::int64_t id, std::optional<std::int64_t> parent) {
        world.rows.push_back({id, 1, parent, 100 + id, date("01/01/2020"), date("31/12/2099")});
        world.registered.insert(100 + id);
    };
    add(1, std::nullopt);
    add(a, 1);
    add(b, 1);
    add(4, a);
    add(5, b);
    world.nextId = 20;
    return world;
}

model::Move move(std::int64_t node, std::int64_t target, bool withValidity) {
    model::Move wanted;
    wanted.origin = wanted.destination = 1;
    wanted.node = node;
    wanted.target = target;
    wanted.withValidity = withValidity;
    wanted.closing = date("30/06/2024");
    return wanted;
}

class Screen {
public:
    explicit Screen(const WorldDatabase& database) : user(database.connectionString(), database.connect()) {}
    void look(std::int64_t node, std::int64_t target) {
        user.load(false, 1);
        user.load(true, 1);
        user.focus(false, node);
        user.focus(true, target);
    }
    User user;
};

/// Whether following parents from every row comes to an end, as one day looks at them.
bool withoutCycle(const std::vector<model::Row>& rows) {
    for (const auto& row : rows) {
        std::optional<std::int64_t> above = row.parent;
        for (std::size_t steps = 0; above; ++steps) {
            if (steps > rows.size())
                return false;
            const auto at = std::find_if(rows.begin(), rows.end(), [&](const auto& r) { return r.id == *above; });
            above = at == rows.end() ? std::nullopt : at->parent;
        }
    }
    return true;
}

/// Whether no account stands above itself, whatever the period.
bool noAccountAboveItself(const std::vector<model::Row>& rows) {
    for (const auto& row : rows)
        for (std::optional<std::int64_t> above = row.parent; above;) {
            const auto at = std::find_if(rows.begin(), rows.end(), [&](const auto& r) { return r.id == *above; });
            if (at == rows.end())
                break;
            if (at->account == row.account)
                return false;
            above = at->parent;
        }
    return true;
}

using Case = std::tuple<Where, bool>;

std::string nameOfCase(const testing::TestParamInfo<Case>& info) {
    return property::nameOf(std::get<Where>(info.param)) + (std::get<bool>(info.param) ? "Validity" : "Structure");
}

class CycleTest : public testing::TestWithParam<Case> {
protected:
    void SetUp() override {
        if (const auto why = WorldDatabase::missing(where()))
            GTEST_SKIP() << *why;
    }
    static Where where() { return std::get<Where>(GetParam()); }
    static bool withValidity() { return std::get<bool>(GetParam()); }
};

} // namespace

TEST_P(CycleTest, AnOldScreenIsRefused) {
    WorldDatabase database(where(), true);
    database.write(twoBranches());
    Screen first(database);
    Screen second(database);
    first.look(a, b);
    second.look(b, a);
    first.user.press(move(a, b, withValidity()));
    const auto kept = property::withoutMarks(database.rows());
    ASSERT_NE(kept, twoBranches().rows);
    second.user.press(move(b, a, withValidity()));
    EXPECT_EQ(property::withoutMarks(database.rows()), kept);
    ASSERT_FALSE(second.user.host->messages.empty());
    EXPECT_EQ(second.user.host->messages.back().text,
              "Il nodo 102 è stato modificato da un altro utente: premere F5 per aggiornare. Spostamento annullato.\n");
    EXPECT_EQ(second.user.host->messages.back().style, contract::message::critical);
    // The trees were read again; pressed once more, the checks refuse what the first user made a ring of.
    second.user.press(move(b, a, withValidity()));
    EXPECT_EQ(property::withoutMarks(database.rows()), kept);
    // With validity the old link of A still hangs where it hung, and the new one is met as a child of B.
    EXPECT_EQ(second.user.host->messages.back().text.find(withValidity()
                                                              ? "Cliente 102 già legato alla distinta D1"
                                                              : "Cliente 103: legame presente in un nodo padre"),
              0U);
    EXPECT_EQ(second.user.host->messages.back().style, contract::message::critical);
    EXPECT_TRUE(withoutCycle(property::withoutMarks(database.rows())));
}

TEST_P(CycleTest, AtTheSameTimeOneOfThemIsRefused) {
    WorldDatabase database(where(), true);
    for (int round = 0; round < 8; ++round) {
        database.write(twoBranches());
        int gate[2];
        int looking[2];
        ASSERT_EQ(::pipe(gate), 0);
        ASSERT_EQ(::pipe(looking), 0);
        const auto run = [&](std::int64_t node, std::int64_t target) {
            return start([&, node, target] {
                ::close(gate[1]);
                Screen screen(database);
                screen.look(node, target);
                char nothing = 0;
                if (::write(looking[1], "x", 1) != 1 || ::read(gate[0], &nothing, 1) != 0)
                    return 1;
                screen.user.press(move(node, target, withValidity()));
                // Refused, by a check or by the server, or done: the question alone was shown.
                return screen.user.host->messages.size() > 1 || !screen.user.host->errors.empty() ? 2 : 0;
            });
        };
        const auto one = run(a, b);
        const auto other = run(b, a);
        ::close(gate[0]);
        ::close(looking[1]);
        char sign = 0;
        for (int user = 0; user < 2; ++user)
            EXPECT_EQ(::read(looking[0], &sign, 1), 1);
        ::close(looking[0]);
        ::close(gate[1]);
        const int first = waitFor(one).status;
        const int second = waitFor(other).status;
        EXPECT_EQ(std::min(first, second), 0);
        EXPECT_EQ(std::max(first, second), 2);
        const auto rows = property::withoutMarks(database.rows());
        EXPECT_TRUE(withoutCycle(rows)) << describe(rows);
        EXPECT_TRUE(noAccountAboveItself(rows)) << describe(rows);
    }
}

INSTANTIATE_TEST_SUITE_P(BothKinds, CycleTest,
                         testing::Combine(testing::Values(Where::embedded, Where::odbc, Where::server),
                                          testing::Bool()),
                         nameOfCase);

} // namespace concurrent
