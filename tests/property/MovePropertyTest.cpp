// Random forests and random moves: what the component leaves in the database is what an independent model says.

#include "property/Program.h"
#include "property/RandomWorld.h"

#include <gtest/gtest.h>

#include <string>

namespace property {

namespace {

struct Tally {
    int kept = 0;
    int refused = 0;
    int inverted = 0; ///< of the refused ones, for an end before the start
};

/// Statement by statement, as moves of few nodes are made, or in blocks.
enum class Way { single, blocks };

Tally agree(unsigned firstSeed, int moves, bool withValidity, Way way) {
    Program program;
    program.state().nodiPerBlocchi = way == Way::blocks ? 0 : -1;
    Tally tally;
    for (unsigned seed = firstSeed; tally.kept + tally.refused < moves; ++seed) {
        std::mt19937 random(seed);
        model::World world = randomWorld(random);
        const auto move = randomMove(world, random, withValidity);
        program.write(world);
        if (!program.focus(move))
            continue; // a node without account, or on a cycle, is in no tree
        const auto before = world.rows;
        const auto expected = model::apply(world, move);
        program.press(move);

        const std::string where = "seed " + std::to_string(seed) + ": node " + std::to_string(move.node) + " under " +
                                  std::to_string(move.target) + ", " + std::to_string(move.origin) + " to " +
                                  std::to_string(move.destination) + "\nbefore:\n" + describe(before);
        EXPECT_TRUE(program.host->errors.empty()) << where << program.host->errors.front().text;
        EXPECT_EQ(program.message(), expected.message) << where;
        const auto after = program.rows();
        EXPECT_EQ(after, world.rows) << where << "model:\n" << describe(world.rows) << "database:\n" << describe(after);
        EXPECT_FALSE(program.connection->InTransaction()) << where;
        ++(expected.kept ? tally.kept : tally.refused);
        tally.inverted += expected.message.starts_with("Il nuovo legame finirebbe");
        if (::testing::Test::HasFailure())
            return tally;
    }
    return tally;
}

/// A server gives rows that nobody put in order as it likes: the model must agree with some order of theirs.
Tally agreeOnServer(unsigned firstSeed, int moves, bool withValidity) {
    constexpr std::uint32_t orders = 400;
    Program program(Where::server);
    Tally tally;
    for (unsigned seed = firstSeed; tally.kept + tally.refused < moves; ++seed) {
        std::mt19937 random(seed);
        const model::World world = randomWorld(random);
        if (!withAllParents(world))
            continue;
        const auto move = randomMove(world, random, withValidity);
        program.write(world);
        if (!program.focus(move))
            continue;
        program.press(move);
        const auto after = program.rows();
        bool agrees = false;
        for (std::uint32_t order = 0; order <= orders && !agrees; ++order) {
            auto expected = world;
            expected.indexed = false;
            expected.order = order;
            const auto outcome = model::apply(expected, move);
            agrees = outcome.message == program.message() && program.renumbered(expected.rows) == after;
            if (agrees)
                ++(outcome.kept ? tally.kept : tally.refused);
        }
        EXPECT_TRUE(agrees) << "seed " << seed << ": node " << move.node << " under " << move.target << ", "
                            << move.origin << " to " << move.destination << "\nbefore:\n"
                            << describe(world.rows) << program.message() << "database:\n"
                            << describe(after);
        EXPECT_TRUE(program.host->errors.empty()) << seed << program.host->errors.front().text;
        EXPECT_FALSE(program.connection->InTransaction()) << seed;
        if (::testing::Test::HasFailure())
            return tally;
    }
    return tally;
}

} // namespace

TEST(MoveProperty, AThousandStructuralMovesAgreeWithTheModel) {
    const auto tally = agree(1, 1000, false, Way::single);
    // Both ends must be well represented for the agreement to mean something.
    EXPECT_GT(tally.kept, 200);
    EXPECT_GT(tally.refused, 100);
}

TEST(MoveProperty, AThousandMovesWithValidityAgreeWithTheModel) {
    const auto tally = agree(50001, 1000, true, Way::single);
    EXPECT_GT(tally.kept, 150);
    EXPECT_GT(tally.refused, 150);
    EXPECT_GT(tally.inverted, 50);
}

TEST(MoveProperty, StructuralMovesInBlocksAgreeWithTheModel) {
    const auto tally = agree(100001, 1000, false, Way::blocks);
    EXPECT_GT(tally.kept, 200);
    EXPECT_GT(tally.refused, 100);
}

TEST(MoveProperty, MovesWithValidityInBlocksAgreeWithTheModel) {
    const auto tally = agree(150001, 1000, true, Way::blocks);
    EXPECT_GT(tally.kept, 150);
    EXPECT_GT(tally.refused, 150);
    EXPECT_GT(tally.inverted, 50);
}

TEST(MoveProperty, MovesOnAServerAgreeWithTheModel) {
    if (const auto why = WorldDatabase::missing(Where::server))
        GTEST_SKIP() << *why;
    for (const bool withValidity : {false, true}) {
        const auto tally = agreeOnServer(withValidity ? 70001 : 80001, 60, withValidity);
        EXPECT_GT(tally.kept, 5);
        EXPECT_GT(tally.refused, 5);
    }
}

} // namespace property
