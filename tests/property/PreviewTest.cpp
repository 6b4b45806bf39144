// Random forests and random moves: the preview says, row by row, what the move then does.

#include "contract/MovePreview.h"
#include "property/Program.h"
#include "property/RandomWorld.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace property {

namespace {

using contract::MoveOutcome;

struct Tally {
    int kept = 0;
    int refused = 0;
    int byCommand = 0; ///< of the refused ones, before any link was looked at
    int stayed = 0;    ///< of those kept, with nodes that stayed
    int copied = 0;    ///< of those kept, with copies
};

std::int64_t accountOf(const std::vector<model::Row>& rows, const std::optional<std::int64_t>& id) {
    for (const auto& row : rows)
        if (id && row.id == *id)
            return row.account.value_or(0);
    return -1;
}

/// What the database must hold after a move of which this is the plan. New rows come by ascending id, in the order of
/// the plan.
void expectDone(const contract::MovePlan& plan, const std::vector<model::Row>& before,
                const std::vector<model::Row>& after) {
    std::map<std::int64_t, const contract::MoveRow*> planned;
    std::vector<const contract::MoveRow*> copies;
    for (const auto& row : plan.rows) {
        ASSERT_TRUE(row.id);
        EXPECT_TRUE(planned.emplace(*row.id, &row).second || row.outcome != MoveOutcome::moves) << *row.id;
        EXPECT_EQ(row.copy.has_value(), row.outcome == MoveOutcome::copies);
        if (row.copy)
            copies.push_back(&row);
    }
    ASSERT_EQ(after.size(), before.size() + copies.size());
    for (std::size_t i = 0; i < before.size(); ++i) {
        const auto at = planned.find(before[i].id);
        if (at == planned.end()) {
            EXPECT_EQ(before[i], after[i]);
            continue;
        }
        const auto& row = *at->second;
        EXPECT_EQ(row.account, before[i].account);
        EXPECT_EQ(row.before.type, before[i].distinta);
        EXPECT_EQ(row.before.parent, before[i].parent);
        EXPECT_EQ(row.before.start, before[i].start);
        EXPECT_EQ(row.before.end, before[i].end);
        EXPECT_EQ(row.after.type, after[i].distinta) << before[i].id;
        EXPECT_EQ(row.after.parent, after[i].parent) << before[i].id;
        EXPECT_EQ(row.after.start, after[i].start) << before[i].id;
        EXPECT_EQ(row.after.end, after[i].end) << before[i].id;
        if (row.outcome == MoveOutcome::stays) {
            EXPECT_EQ(before[i], after[i]);
        }
    }
    for (std::size_t i = 0; i < copies.size(); ++i) {
        const auto& row = after[before.size() + i];
        EXPECT_EQ(copies[i]->account, row.account);
        EXPECT_EQ(copies[i]->copy->type, row.distinta);
        EXPECT_EQ(copies[i]->copy->parentAccount.value_or(0), accountOf(after, row.parent));
        EXPECT_EQ(copies[i]->copy->start, row.start);
        EXPECT_EQ(copies[i]->copy->end, row.end);
    }
}

Tally agree(unsigned firstSeed, int moves, bool withValidity, int nodesForBlocks) {
    Program program;
    program.state().nodiPerBlocchi = nodesForBlocks;
    auto& preview = dynamic_cast<contract::MovePreview&>(*program.component);
    Tally tally;
    for (unsigned seed = firstSeed; tally.kept + tally.refused < moves; ++seed) {
        std::mt19937 random(seed);
        const model::World world = randomWorld(random);
        auto move = randomMove(world, random, withValidity);
        if (seed % 12 == 0)
            move.closing = *contract::Date::parse("31/12/2019"); // before the start of most links
        program.write(world);
        if (!program.focus(move))
            continue;
        program.state().parametri.TipoCaricaDATA = move.fixedEnd ? 1 : 0;
        program.state().parametri.DataFissaFINE = move.fixedEnd;
        const auto before = program.rows();
        const auto state = program.component->state();
        program.connection->begun = 0;
        const auto plan = preview.plan({withValidity, move.closing});

        const std::string where = "seed " + std::to_string(seed) + ": node " + std::to_string(move.node) + " under " +
                                  std::to_string(move.target) + ", " + std::to_string(move.origin) + " to " +
                                  std::to_string(move.destination) + "\nbefore:\n" + describe(before);
        EXPECT_EQ(program.connection->begun, 0) << where;
        EXPECT_EQ(program.component->state(), state) << where;
        EXPECT_EQ(program.rows(), before) << where;
        program.press(move);
        EXPECT_EQ(program.message(), plan.refused) << where;
        const auto after = program.rows();
        if (!plan.refused.empty()) {
            EXPECT_EQ(before, after) << where;
            ++tally.refused;
            tally.byCommand += plan.refused.starts_with("Attenzione");
            EXPECT_FALSE(plan.rows.empty()) << where;
        } else {
            expectDone(plan, before, after);
            ++tally.kept;
            const auto some = [&](MoveOutcome outcome) {
                for (const auto& row : plan.rows)
                    if (row.outcome == outcome)
                        return true;
                return false;
            };
            EXPECT_FALSE(some(MoveOutcome::refused)) << where;
            tally.stayed += some(MoveOutcome::stays);
            tally.copied += some(MoveOutcome::copies);
        }
        if (::testing::Test::HasFailure()) {
            ADD_FAILURE() << where << "after:\n" << describe(after);
            return tally;
        }
    }
    return tally;
}

constexpr int never = -1;
constexpr int always = 0;

} // namespace

TEST(PreviewProperty, SaysWhatAStructuralMoveDoes) {
    for (const int nodes : {never, always}) {
        const auto tally = agree(nodes == never ? 200001 : 210001, 1000, false, nodes);
        EXPECT_GT(tally.kept, 200);
        EXPECT_GT(tally.refused, 100);
        EXPECT_GT(tally.stayed, 10);
        EXPECT_EQ(tally.copied, 0);
    }
}

TEST(PreviewProperty, SaysWhatAMoveWithValidityDoes) {
    for (const int nodes : {never, always}) {
        const auto tally = agree(nodes == never ? 220001 : 230001, 1000, true, nodes);
        EXPECT_GT(tally.kept, 150);
        EXPECT_GT(tally.refused, 200);
        EXPECT_GT(tally.byCommand, 20);
        EXPECT_GT(tally.stayed, 3);
        EXPECT_EQ(tally.copied, tally.kept);
    }
}

} // namespace property
