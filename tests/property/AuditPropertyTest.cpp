// The audit of random tables, imperfect in every way, finds what a plain checker finds that holds each link against
// every other one.

#include "component/data/Schema.h"
#include "component/maintenance/Verifica.h"
#include "platform/sqlite/BulkWriter.h"
#include "platform/sqlite/DatabaseFile.h"
#include "property/AuditModel.h"
#include "sqlite/SqliteFixture.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using namespace property::audit;
using contract::Date;
using contract::Value;
using platform::sqlite::BulkWriter;
using platform::sqlite::Connection;

class Quiet : public contract::Progress {
public:
    void reached(std::string_view, std::uint64_t, std::optional<std::uint64_t>) override { ++steps; }
    int steps = 0;
};

class Drawing {
public:
    explicit Drawing(std::uint32_t seed) : random_(seed) {}

    World world() {
        World world;
        world.distinte = {{1, {1, 0}}, {2, {1, 0}}, {3, {1, 1}}, {4, {2, 0}}, {5, {1, 0, below(2) == 0}}};
        for (std::int64_t account = 1; account <= accounts_; ++account)
            for (std::int64_t kind = 0; kind < 2; ++kind)
                if (!oneIn(8))
                    world.registry.emplace(kind, account);
        const auto count = 1 + below(40);
        for (std::int64_t i = 0; i < count; ++i)
            world.links.push_back(link(i, count));
        return world;
    }

private:
    std::int64_t below(std::int64_t bound) {
        return static_cast<std::int64_t>(random_() % static_cast<std::uint64_t>(bound));
    }
    bool oneIn(std::int64_t count) { return below(count) == 0; }
    /// Ids far apart in some worlds.
    std::int64_t id(std::int64_t place) const { return 10 + place * distance_; }

    std::optional<Date> day() {
        if (oneIn(25))
            return std::nullopt;
        if (oneIn(25))
            return Date::of(1899, 12, 30);
        return Date::of(2024, 1, 1)->plusDays(static_cast<std::int32_t>(below(60)));
    }

    Link link(std::int64_t place, std::int64_t count) {
        Link link;
        link.id = id(place);
        link.distinta = 1 + below(oneIn(6) ? 6 : 2);
        if (oneIn(30))
            link.distinta.reset();
        if (!oneIn(3))
            link.parent = oneIn(12) ? 5 : id(below(count));
        link.company = oneIn(8) ? 2 : 1;
        link.kind = oneIn(8) ? 1 : 0;
        if (oneIn(30))
            link.kind.reset();
        if (!oneIn(12))
            link.account = 1 + below(accounts_);
        link.start = day();
        link.end = oneIn(10) || !link.start ? day() : link.start->plusDays(static_cast<std::int32_t>(below(20)));
        if (!oneIn(12))
            link.guid = (oneIn(2) ? "abcdef00-0000-0000-0000-0000000000" : "ABCDEF00-0000-0000-0000-0000000000") +
                        std::to_string(10 + below(80));
        if (oneIn(20))
            link.guid = "no guid";
        return link;
    }

    std::mt19937 random_;
    std::int64_t accounts_ = 1 + below(12);
    std::int64_t distance_ = oneIn(3) ? 1'000'000'007 : 1;
};

Value orNull(const std::optional<std::int64_t>& number) {
    return number ? Value(*number) : Value::null();
}
Value orNull(const std::optional<Date>& day) {
    return day ? Value(*day) : Value::null();
}

void write(Connection& connection, const World& world) {
    BulkWriter types(connection, "QZ01_TIPODISTINTA",
                     {"QZ01_ID", "QZ01_DITTA_CG18", "QZ01_CODICE", "QZ01_INDTIPOSOGG"});
    for (const auto& [id, distinta] : world.distinte)
        types.append({id, distinta.company, distinta.hasCode ? Value("D") : Value::null(), orNull(distinta.kind)});
    BulkWriter registry(connection, "CG16_ANAGGEN", {"CG16_CODICE", "CG16_RAGSOANAG"});
    registry.append({std::int64_t{1}, "Rossi"});
    BulkWriter accounts(connection, "CG44_CLIFOR",
                        {"CG44_DITTA_CG18", "CG44_TIPOCF", "CG44_CLIFOR", "CG44_CODICE_CG16"});
    for (const auto& [kind, account] : world.registry)
        accounts.append({std::int64_t{1}, kind, account, std::int64_t{1}});
    BulkWriter links(connection, "QZ02_DISTINTA",
                     {"QZ02_ID", "QZ02_ID_QZ01", "QZ02_IDPARENT_QZ02", "QZ02_DITTA_CG18", "QZ02_TIPOCF_CG44",
                      "QZ02_CLIFOR_CG44", "QZ02_DATAINIZIOVAL", "QZ02_DATAFINEVAL", "QZ02_GUID"});
    for (const auto& link : world.links)
        links.append({link.id, orNull(link.distinta), orNull(link.parent), orNull(link.company), orNull(link.kind),
                      orNull(link.account), orNull(link.start), orNull(link.end),
                      link.guid.empty() ? Value::null() : Value(link.guid)});
}

std::string lines(const std::multiset<std::string>& findings) {
    std::string all;
    for (const auto& finding : findings)
        all += finding + "\n";
    return all;
}

TEST(AuditProperty, FindsWhatAPlainCheckerFinds) {
    std::map<std::string, int> seen;
    for (std::uint32_t seed = 1; seed <= 200; ++seed) {
        const World world = Drawing(seed).world();
        const sqlite_test::TemporaryFolder folder;
        const std::string file = folder.file("prova.db");
        platform::sqlite::createDatabase(file, qz::schema(), [&](Connection& filled) { write(filled, world); });
        Connection connection(sqlite_test::connectionStringOf(file));
        connection.Open();
        Quiet quiet;
        const auto result = qz::verificaDistinte(connection, 1, quiet);
        EXPECT_LT(0, quiet.steps);
        std::multiset<std::string> found;
        for (const auto& one : result.rilievi) {
            const auto finding = qz::composto(result, one);
            const std::string rule(qz::regoleVerifica()[finding.rule].name);
            ++seen[rule];
            found.insert(rule + " " + std::to_string(finding.node.value_or(0)));
            // A whole sentence, whatever the row holds.
            EXPECT_TRUE(finding.text.ends_with('.')) << finding.text;
            EXPECT_EQ(std::string::npos, finding.text.find("  ")) << finding.text;
            EXPECT_EQ(std::string::npos, finding.text.find("-9223372036854775808")) << finding.text;
        }
        ASSERT_EQ(lines(findings(world)), lines(found)) << "seed " << seed;
        // The most severe first, by rule and by node within a distinta.
        for (std::size_t i = 1; i < result.rilievi.size(); ++i)
            ASSERT_LE(result.rilievi[i - 1].regola, result.rilievi[i].regola);
    }
    // The worlds must have shown every rule but the one that is about no link.
    EXPECT_EQ(qz::regoleVerifica().size() - 1, seen.size());
}

TEST(AuditProperty, EndsWhereTheUserGivesUp) {
    class GivesUp : public contract::Progress {
    public:
        void reached(std::string_view, std::uint64_t, std::optional<std::uint64_t>) override {
            if (--left_ == 0)
                throw contract::Cancelled();
        }
        int left_ = 1;
    };
    const World world = Drawing(7).world();
    const sqlite_test::TemporaryFolder folder;
    const std::string file = folder.file("prova.db");
    platform::sqlite::createDatabase(file, qz::schema(), [&](Connection& filled) { write(filled, world); });
    Connection connection(sqlite_test::connectionStringOf(file));
    connection.Open();
    for (int step = 1; step <= 5; ++step) {
        GivesUp user;
        user.left_ = step;
        EXPECT_THROW(qz::verificaDistinte(connection, 1, user), contract::Cancelled) << step;
        EXPECT_FALSE(connection.InTransaction());
    }
}

} // namespace
