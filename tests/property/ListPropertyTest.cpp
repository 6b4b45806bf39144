// Random lists of moves over random forests: the preview says what the list then does, each line through what the lines
// before it did, and an independent model says the same.

#include "contract/MoveLists.h"
#include "property/Program.h"
#include "property/RandomWorld.h"
#include "property/SmallWorld.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace property {

namespace {

using contract::MoveLine;
using contract::MoveOutcome;
using contract::MovePlan;

int draw(std::mt19937& random, int from, int to) {
    return std::uniform_int_distribution<int>(from, to)(random);
}

const contract::Date today = *contract::Date::parse("15/06/2024");

/// The row of an account in a distinta that a line means: that of the day, or else the last one; nothing where it
/// stands there twice in one period, or not at all.
const model::Row* meant(const std::vector<model::Row>& rows, std::int64_t distinta, std::int64_t account,
                        contract::Date day) {
    std::vector<const model::Row*> found;
    for (const auto& row : rows)
        if (row.distinta == distinta && row.account == account)
            found.push_back(&row);
    const model::Row* best = nullptr;
    for (const auto* row : found) {
        for (const auto* other : found)
            if (row != other && row->start <= other->end && other->start <= row->end)
                return nullptr;
        const bool holds = row->start <= day && day <= row->end;
        const bool bestHolds = best != nullptr && best->start <= day && day <= best->end;
        if (best == nullptr || (!bestHolds && (holds || row->start > best->start)))
            best = row;
    }
    return best;
}

std::vector<MoveLine> randomLines(const model::World& world, std::mt19937& random) {
    std::vector<MoveLine> lines;
    const auto any = [&] {
        return world.rows[static_cast<std::size_t>(draw(random, 0, static_cast<int>(world.rows.size()) - 1))];
    };
    const int count = draw(random, 1, 4);
    const bool mixed = draw(random, 1, 3) == 1;
    bool validity = draw(random, 1, 2) == 1;
    const auto end = contract::Date::of(draw(random, 2020, 2026), draw(random, 1, 12), 28);
    for (int i = 0; i < count; ++i) {
        MoveLine line;
        line.line = i + 2;
        const auto node = any();
        const auto target = any();
        line.account = node.account.value_or(99);
        line.parentAccount = target.account.value_or(98);
        line.originCode = "D" + std::to_string(draw(random, 1, 6) == 1 ? draw(random, 1, 3) : node.distinta);
        line.destinationCode = "d" + std::to_string(target.distinta);
        if (mixed)
            validity = draw(random, 1, 2) == 1;
        line.manner.validity = validity;
        if (validity)
            line.manner.end = end;
        lines.push_back(line);
    }
    return lines;
}

/// Whether two plans say the same, but for the ids that only a written link has.
void expectSameButForNewIds(const MovePlan& supposed, const MovePlan& done) {
    EXPECT_EQ(supposed.refused, done.refused);
    ASSERT_EQ(supposed.rows.size(), done.rows.size());
    for (std::size_t i = 0; i < done.rows.size(); ++i) {
        auto one = supposed.rows[i];
        auto other = done.rows[i];
        const auto blank = [](std::optional<std::int64_t>& id, std::optional<std::int64_t>& written) {
            if (!id)
                written.reset();
        };
        blank(one.id, other.id);
        for (auto link : {&contract::MoveRow::before, &contract::MoveRow::after}) {
            blank((one.*link).parent, (other.*link).parent);
            // The name of a parent that has no row yet is not read.
            (one.*link).parentName.clear();
            (other.*link).parentName.clear();
        }
        EXPECT_EQ(one, other) << "row " << i;
    }
}

/// What the rows are after the plan's changes, in its order.
void expectReplayed(const MovePlan& done, std::vector<model::Row> rows, const std::vector<model::Row>& after) {
    std::size_t copied = rows.size();
    std::map<std::int64_t, std::size_t> places;
    for (std::size_t i = 0; i < after.size(); ++i)
        places[after[i].id] = i;
    rows.resize(after.size());
    std::set<std::pair<std::int64_t, std::int64_t>> seen;
    for (const auto& row : done.rows) {
        ASSERT_TRUE(row.id && places.contains(*row.id));
        // On a ring the walk comes to the moved node again.
        if (!seen.insert({row.line.value_or(0), *row.id}).second)
            continue;
        auto& held = rows[places[*row.id]];
        EXPECT_EQ(row.before.type, held.distinta);
        EXPECT_EQ(row.before.parent, held.parent);
        EXPECT_EQ(row.before.end, held.end);
        held.distinta = row.after.type.value_or(0);
        held.parent = row.after.parent;
        held.end = row.after.end.value_or(held.end);
        if (!row.copy)
            continue;
        ASSERT_LT(copied, after.size());
        auto& made = rows[copied];
        made = after[copied];
        EXPECT_EQ(row.account, made.account);
        EXPECT_EQ(row.copy->start, made.start);
        made.distinta = row.copy->type.value_or(0);
        made.end = row.copy->end.value_or(made.end);
        ++copied;
    }
    for (std::size_t i = 0; i < after.size(); ++i) {
        EXPECT_EQ(rows[i].distinta, after[i].distinta) << after[i].id;
        EXPECT_EQ(rows[i].end, after[i].end) << after[i].id;
        if (i < copied) {
            EXPECT_EQ(rows[i].parent, after[i].parent) << after[i].id;
        }
    }
}

/// The model's list, line by line; nothing where a line is refused.
std::optional<std::vector<model::Row>> modelled(model::World world, const std::vector<MoveLine>& lines) {
    for (const auto& line : lines) {
        const auto day = line.manner.validity ? *line.manner.end : today;
        model::Move move;
        move.origin = std::stoll(line.originCode.substr(1));
        move.destination = std::stoll(line.destinationCode.substr(1));
        const auto* node = meant(world.rows, move.origin, line.account, day);
        const auto* target =
            meant(world.rows, move.destination, line.parentAccount, line.manner.validity ? day.plusDays(1) : day);
        if (node == nullptr || target == nullptr || (line.manner.validity && day < node->start))
            return std::nullopt;
        move.node = node->id;
        move.target = target->id;
        move.withValidity = line.manner.validity;
        move.closing = day;
        if (!model::apply(world, move).kept)
            return std::nullopt;
    }
    return world.rows;
}

} // namespace

TEST(ListProperty, ThePreviewAndTheModelSayWhatAListDoes) {
    Program program;
    auto& lists = dynamic_cast<contract::MoveLists&>(*program.component);
    int kept = 0;
    int refused = 0;
    int several = 0; ///< of those kept, with more than one line
    int copied = 0;
    int again = 0; ///< of those kept, a node more than once
    for (unsigned seed = 300'001; (kept < 400 || several < 100) && !HasFailure(); ++seed) {
        std::mt19937 random(seed);
        const auto world = randomWorld(random);
        const auto lines = randomLines(world, random);
        program.write(world);
        program.connection->begun = 0;
        const auto plan = lists.planList(lines, contract::Unnamed::whereItStands);
        EXPECT_EQ(program.connection->begun, 0);
        const auto expected = modelled(world, lines);
        std::string where = "seed " + std::to_string(seed) + "\n" + describe(world.rows);
        for (const auto& line : lines)
            where += std::to_string(line.account) + " in " + line.originCode + " under " +
                     std::to_string(line.parentAccount) + " in " + line.destinationCode +
                     (line.manner.validity ? " after " + line.manner.end->text() : "") + "\n";
        EXPECT_EQ(expected.has_value(), plan.refused.empty()) << where << plan.refused;
        if (!plan.refused.empty()) {
            // One in many is tried: nothing is written.
            if (++refused % 20 == 0) {
                EXPECT_EQ(lists.moveList(lines, contract::Unnamed::whereItStands), plan) << where;
                EXPECT_EQ(program.rows(), world.rows) << where;
                EXPECT_EQ(program.connection->begun, 0) << where;
            }
            continue;
        }
        const auto before = program.rows();
        EXPECT_EQ(before, world.rows) << where;
        const auto done = lists.moveList(lines, contract::Unnamed::whereItStands);
        const auto after = program.rows();
        expectSameButForNewIds(plan, done);
        expectReplayed(done, before, after);
        if (expected) {
            EXPECT_EQ(withoutMarks(*expected), withoutMarks(after)) << where << "after:\n" << describe(after);
        }
        EXPECT_EQ(program.connection->begun, 1) << where;
        EXPECT_FALSE(program.connection->InTransaction()) << where;
        EXPECT_TRUE(program.host->errors.empty()) << where << program.host->errors.front().text;
        ++kept;
        several += lines.size() > 1;
        copied += after.size() > before.size();
        std::map<std::int64_t, int> times;
        again += std::any_of(done.rows.begin(), done.rows.end(),
                             [&](const auto& row) { return ++times[row.id.value_or(0)] > 1; });
        if (HasFailure())
            ADD_FAILURE() << where;
    }
    std::printf("kept %d (several lines %d, copies %d, a node again %d), refused %d\n", kept, several, copied, again,
                refused);
    EXPECT_GT(refused, 100);
    EXPECT_GT(copied, 50);
    EXPECT_GT(again, 5);
}

/// Two lines, one of each kind, of which the second goes under what the first moved.
std::vector<MoveLine> smallList() {
    return {{2, 103, 112, "D1", "D2", {}, {}},
            {3, 104, 103, "D1", "D2", {true, contract::Date::parse("30/06/2024")}, {}}};
}

TEST(ListProperty, AFaultAtEveryStatementLeavesNothingHalfWritten) {
    const auto world = smallWorld();
    for (const auto fault : {Fault::error, Fault::endedByServer, Fault::lostConnection}) {
        Program program;
        auto& lists = dynamic_cast<contract::MoveLists&>(*program.component);
        program.write(world);
        const auto done = lists.moveList(smallList(), contract::Unnamed::whereItStands);
        ASSERT_EQ(done.refused, "");
        const auto moved = program.rows();
        ASSERT_NE(moved, world.rows);
        std::size_t injected = 0;
        for (std::size_t at = 1;; ++at) {
            program.connection->reconnect();
            program.write(world);
            program.host->errors.clear();
            program.host->answers.assign(8, contract::message::answerAbort);
            program.connection->failAt(at, fault);
            bool failed = false;
            try {
                lists.moveList(smallList(), contract::Unnamed::whereItStands);
            } catch (const contract::RuntimeError&) {
                failed = true;
            }
            program.connection->neverFail();
            const auto rows = program.rows();
            EXPECT_FALSE(program.connection->InTransaction()) << at;
            if (failed)
                ASSERT_EQ(rows, world.rows) << "operation " << at;
            else
                ASSERT_EQ(rows.size(), moved.size()) << "operation " << at;
            // The last ones fail in the loading of the trees, where the form says so.
            if (!failed && program.host->errors.empty())
                break;
            ++injected;
            ASSERT_LT(at, 500U);
        }
        EXPECT_GT(injected, 20U);
    }
}

} // namespace property
