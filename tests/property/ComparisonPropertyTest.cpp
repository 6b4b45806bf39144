// The comparison of two random distinte on a day beside a plain one: each account's links by themselves.

#include "component/data/Schema.h"
#include "component/plugin/ClasseConfronto.h"
#include "platform/sqlite/BulkWriter.h"
#include "platform/sqlite/DatabaseFile.h"
#include "sqlite/SqliteFixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <set>
#include <tuple>

namespace {

using contract::ComparisonOutcome;
using contract::Date;
using contract::Value;
using platform::sqlite::BulkWriter;
using platform::sqlite::Connection;

struct Link {
    std::int64_t id = 0;
    std::int64_t distinta = 1;
    std::optional<std::int64_t> parent;
    std::int64_t kind = 0;
    std::optional<std::int64_t> account;
    std::optional<Date> start, end;
};

/// A difference in a line: outcome, account, and the nodes on both sides.
using Lines = std::multiset<std::string>;

std::string line(ComparisonOutcome outcome, std::int64_t account, std::optional<std::int64_t> left,
                 std::optional<std::int64_t> right) {
    return std::to_string(static_cast<int>(outcome)) + " of " + std::to_string(account) + ": " +
           std::to_string(left.value_or(0)) + " " + std::to_string(right.value_or(0));
}

class Model {
public:
    Model(std::vector<Link> links, Date day) : links_(std::move(links)), day_(day) {}

    const Link* parentOf(const Link& link) const {
        for (const auto& other : links_)
            if (link.parent == other.id && shown(other) && other.distinta == link.distinta)
                return &other;
        return nullptr;
    }

    std::optional<std::int64_t> parentAccount(const Link& link) const {
        const auto* parent = parentOf(link);
        return parent != nullptr ? parent->account : std::nullopt;
    }

    /// The links of an account on a side, in the order in which they are paired.
    std::vector<const Link*> linksOf(std::int64_t account, std::int64_t distinta) const {
        std::vector<const Link*> found;
        for (const auto& link : links_)
            if (shown(link) && link.distinta == distinta && link.account == account && link.start && link.end &&
                *link.start <= day_ && day_ <= *link.end)
                found.push_back(&link);
        std::sort(found.begin(), found.end(), [this](const Link* a, const Link* b) {
            return std::make_tuple(parentAccount(*a).value_or(-1), *a->start, *a->end, a->id) <
                   std::make_tuple(parentAccount(*b).value_or(-1), *b->start, *b->end, b->id);
        });
        return found;
    }

    Lines differences() const {
        std::set<std::int64_t> accounts;
        for (const auto& link : links_)
            if (link.account)
                accounts.insert(*link.account);
        Lines lines;
        for (const auto account : accounts) {
            auto left = linksOf(account, 1);
            auto right = linksOf(account, 2);
            pair(left, right, [this](const Link& a, const Link& b) {
                return parentAccount(a) == parentAccount(b) && a.start == b.start && a.end == b.end;
            });
            for (const auto& [a, b] :
                 pair(left, right, [this](const Link&a, const Link&b) { return parentAccount(a) == parentAccount(b); }))
                lines.insert(line(ComparisonOutcome::period, account, a->id, b->id));
            for (const auto& [a, b] : pair(left, right, [](const Link&, const Link&) { return true; }))
                lines.insert(line(ComparisonOutcome::parent, account, a->id, b->id));
            for (const auto* link : left)
                lines.insert(line(ComparisonOutcome::left, account, link->id, {}));
            for (const auto* link : right)
                lines.insert(line(ComparisonOutcome::right, account, {}, link->id));
        }
        return lines;
    }

private:
    static bool shown(const Link& link) { return link.kind == 0 && link.account; }

    /// Takes out of both lists each link of the left with the first of the right that suits it.
    template <class Suits>
    static std::vector<std::pair<const Link*, const Link*>> pair(std::vector<const Link*>& left,
                                                                 std::vector<const Link*>& right, Suits suits) {
        std::vector<std::pair<const Link*, const Link*>> pairs;
        for (auto a = left.begin(); a != left.end();) {
            const auto b =
                std::find_if(right.begin(), right.end(), [&](const Link* link) { return suits(**a, *link); });
            if (b == right.end()) {
                ++a;
                continue;
            }
            pairs.emplace_back(*a, *b);
            right.erase(b);
            a = left.erase(a);
        }
        return pairs;
    }

    std::vector<Link> links_;
    Date day_;
};

class Quiet : public contract::Progress {
public:
    void reached(std::string_view, std::uint64_t, std::optional<std::uint64_t>) override {}
};

class Drawing {
public:
    explicit Drawing(std::uint32_t seed) : random_(seed) {}

    std::vector<Link> links() {
        std::vector<Link> links;
        const auto count = 1 + below(30);
        for (std::int64_t i = 0; i < count; ++i) {
            Link link;
            link.id = i + 1;
            link.distinta = 1 + below(2);
            if (!oneIn(3))
                link.parent = 1 + below(count + 1);
            link.kind = oneIn(15) ? 1 : 0;
            if (!oneIn(15))
                link.account = 1 + below(6);
            if (!oneIn(20))
                link.start = day(below(4));
            if (!oneIn(20))
                link.end = day(below(5) + 2);
            links.push_back(link);
        }
        return links;
    }

    static Date day(std::int64_t number) { return Date::of(2024, 1, 1)->plusDays(static_cast<std::int32_t>(number)); }

private:
    std::int64_t below(std::int64_t bound) {
        return static_cast<std::int64_t>(random_() % static_cast<std::uint64_t>(bound));
    }
    bool oneIn(std::int64_t count) { return below(count) == 0; }
    std::mt19937 random_;
};

Value orNull(const std::optional<std::int64_t>& number) {
    return number ? Value(*number) : Value::null();
}
Value orNull(const std::optional<Date>& day) {
    return day ? Value(*day) : Value::null();
}

void write(Connection& connection, const std::vector<Link>& links) {
    BulkWriter types(connection, "QZ01_TIPODISTINTA", {"QZ01_ID", "QZ01_DITTA_CG18", "QZ01_INDTIPOSOGG"});
    types.append({std::int64_t{1}, std::int64_t{1}, std::int64_t{0}});
    types.append({std::int64_t{2}, std::int64_t{1}, std::int64_t{0}});
    BulkWriter rows(connection, "QZ02_DISTINTA",
                    {"QZ02_ID", "QZ02_ID_QZ01", "QZ02_IDPARENT_QZ02", "QZ02_DITTA_CG18", "QZ02_TIPOCF_CG44",
                     "QZ02_CLIFOR_CG44", "QZ02_DATAINIZIOVAL", "QZ02_DATAFINEVAL"});
    for (const auto& link : links)
        rows.append({link.id, link.distinta, orNull(link.parent), std::int64_t{1}, link.kind, orNull(link.account),
                     orNull(link.start), orNull(link.end)});
}

/// The way from the root as the model climbs it: up to where it ends, or to the first link of a cycle.
std::vector<std::int64_t> wayTo(const Model& model, const Link& link) {
    const auto onCycle = [&](const Link& at) {
        std::set<const Link*> passed;
        for (const auto* up = model.parentOf(at); up != nullptr && passed.insert(up).second; up = model.parentOf(*up))
            if (up == &at)
                return true;
        return false;
    };
    std::vector<std::int64_t> way;
    const Link* at = &link;
    for (;;) {
        way.insert(way.begin(), *at->account);
        const auto* parent = model.parentOf(*at);
        if (parent == nullptr || onCycle(*at))
            return way;
        at = parent;
    }
}

TEST(ComparisonProperty, TellsWhatAPlainComparisonTells) {
    std::map<ComparisonOutcome, int> seen;
    for (std::uint32_t seed = 1; seed <= 120; ++seed) {
        const auto links = Drawing(seed).links();
        const sqlite_test::TemporaryFolder folder;
        const std::string file = folder.file("prova.db");
        platform::sqlite::createDatabase(file, qz::schema(), [&](Connection& filled) { write(filled, links); });
        Connection connection(sqlite_test::connectionStringOf(file));
        connection.Open();
        qz::ClasseConfronto comparison;
        Quiet quiet;
        for (int number = 0; number < 6; ++number) {
            const Date day = Drawing::day(number);
            const Model model(links, day);
            const auto report = comparison.compare(connection, 1, 1, 2, day, quiet);
            Lines told;
            for (std::size_t i = 0; i < report->size(); ++i) {
                const auto row = report->row(i);
                ++seen[row.outcome];
                EXPECT_EQ(report->outcome(i), row.outcome);
                told.insert(line(row.outcome, row.account, row.left ? std::optional(row.left->node) : std::nullopt,
                                 row.right ? std::optional(row.right->node) : std::nullopt));
                for (const auto& side : {row.left, row.right})
                    if (side) {
                        EXPECT_EQ(row.account, side->path.back());
                    }
            }
            ASSERT_EQ(model.differences(), told) << "seed " << seed << ", day " << day.text();
        }
    }
    EXPECT_EQ(4U, seen.size());
}

TEST(ComparisonProperty, ShowsATreeAsItStood) {
    for (std::uint32_t seed = 1; seed <= 60; ++seed) {
        const auto links = Drawing(seed).links();
        const sqlite_test::TemporaryFolder folder;
        const std::string file = folder.file("prova.db");
        platform::sqlite::createDatabase(file, qz::schema(), [&](Connection& filled) { write(filled, links); });
        Connection connection(sqlite_test::connectionStringOf(file));
        connection.Open();
        qz::ClasseConfronto comparison;
        Quiet quiet;
        const Date day = Drawing::day(3);
        const Model model(links, day);
        const auto report = comparison.treeOn(connection, 1, 1, day, quiet);
        std::map<std::int64_t, std::vector<std::int64_t>> ways;
        for (std::size_t i = 0; i < report->size(); ++i) {
            const auto row = report->row(i);
            ASSERT_TRUE(row.left && !row.right);
            EXPECT_TRUE(ways.emplace(row.left->node, row.left->path).second) << "twice: " << row.left->node;
        }
        std::map<std::int64_t, std::vector<std::int64_t>> expected;
        for (const auto& link : links)
            if (link.account)
                for (const auto* held : model.linksOf(*link.account, 1))
                    if (held->id == link.id) {
                        // Over the model's own links, whose addresses tell them apart.
                        expected.emplace(link.id, wayTo(model, *held));
                    }
        ASSERT_EQ(expected, ways) << "seed " << seed;
    }
}

} // namespace
