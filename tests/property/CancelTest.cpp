// A move that its user gives up at each of its operations: the rows are as before or, too late, as after; nothing is
// shown, no transaction stays open, and the next move is carried out.

#include "property/Program.h"
#include "property/SmallWorld.h"

#include <gtest/gtest.h>

#include <string>

namespace property {

namespace {

struct Kind {
    bool withValidity;
    bool inBlocks;
};

std::string nameOfKind(const ::testing::TestParamInfo<Kind>& info) {
    return std::string(info.param.withValidity ? "Validity" : "Structure") + (info.param.inBlocks ? "InBlocks" : "");
}

class CancelTest : public ::testing::TestWithParam<Kind> {};

} // namespace

TEST_P(CancelTest, LeavesTheRowsAsBeforeAtEveryOperation) {
    const auto [withValidity, inBlocks] = GetParam();
    const auto move = moveOf(withValidity ? Work::validity : Work::structure);
    Program program(Where::embedded);
    program.state().nodiPerBlocchi = inBlocks ? 0 : -1;
    const auto world = smallWorld();
    auto moved = world;
    ASSERT_TRUE(model::apply(moved, move).kept);

    std::size_t cancelled = 0;
    std::size_t tooLate = 0;
    for (std::size_t at = 1; tooLate < 3; ++at) {
        SCOPED_TRACE(at);
        ASSERT_LT(at, 500U);
        program.write(world);
        ASSERT_TRUE(program.focus(move));
        const auto distinta = program.state().destinazione.dati;
        program.connection->failAt(at, Fault::cancelled);
        program.press(move);
        program.connection->neverFail();
        EXPECT_TRUE(program.host->errors.empty());
        EXPECT_FALSE(program.connection->InTransaction());
        if (program.rows() == moved.rows) {
            ++tooLate;
            EXPECT_NE(program.state().esito.testo, contract::Cancelled().what());
            continue;
        }
        ++cancelled;
        EXPECT_EQ(0U, tooLate);
        ASSERT_EQ(program.rows(), world.rows);
        EXPECT_EQ(program.state().esito.testo, contract::Cancelled().what());
        EXPECT_EQ(distinta, program.state().destinazione.dati) << "the trees were not loaded again";
        program.press(move);
        EXPECT_EQ(program.rows(), moved.rows);
    }
    EXPECT_GT(cancelled, inBlocks ? 8U : 12U);
}

INSTANTIATE_TEST_SUITE_P(EveryKind, CancelTest,
                         ::testing::Values(Kind{false, false}, Kind{false, true}, Kind{true, false}, Kind{true, true}),
                         nameOfKind);

} // namespace property
