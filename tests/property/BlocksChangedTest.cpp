// A block that touches another number of rows than planned: nothing of the move is kept, and the user is told.

#include "platform/sqlite/Connection.h"
#include "property/Program.h"
#include "property/SmallWorld.h"

#include <gtest/gtest.h>

#include <string>

namespace property {

namespace {

/// What disturbs the database under a move, and what the user then reads.
struct Disturbance {
    const char* name;
    Work work;
    const char* trigger;
    int touched;
    int planned;
};

void PrintTo(const Disturbance& disturbance, std::ostream* out) {
    *out << disturbance.name;
}

class BlocksChanged : public ::testing::TestWithParam<Disturbance> {
protected:
    static void run(const Program& program, const std::string& text) {
        platform::sqlite::Connection connection(std::string(platform::sqlite::Connection::scheme) + program.file());
        connection.Open();
        connection.runNative(text);
    }
};

TEST_P(BlocksChanged, KeepsNothingAndSaysSo) {
    const auto& [name, work, trigger, touched, planned] = GetParam();
    Program program;
    program.state().nodiPerBlocchi = 0;
    program.write(smallWorld());
    run(program, std::string("CREATE TRIGGER DISTURBO ") + trigger);
    ASSERT_TRUE(program.focus(moveOf(work)));

    program.press(moveOf(work), {contract::message::answerAbort});
    ASSERT_EQ(program.host->errors.size(), 1U);
    EXPECT_EQ(program.host->errors.front().text,
              "I dati della distinta sono cambiati durante lo spostamento: " + std::to_string(touched) +
                  " righe modificate invece di " + std::to_string(planned) + ". Spostamento annullato.");
    EXPECT_EQ(program.rows(), smallWorld().rows);
    EXPECT_FALSE(program.connection->InTransaction());

    // The same move goes on where nothing disturbs it any more.
    run(program, "DROP TRIGGER DISTURBO");
    ASSERT_TRUE(program.focus(moveOf(work)));
    program.press(moveOf(work));
    EXPECT_TRUE(program.host->errors.empty());
    EXPECT_EQ(withoutMarks(program.rows()), rowsAfter(work));
}

constexpr Disturbance disturbances[] = {
    {"ADescendantStays", Work::structure,
     "BEFORE UPDATE OF QZ02_ID_QZ01 ON QZ02_DISTINTA WHEN OLD.QZ02_ID = 4 BEGIN SELECT RAISE(IGNORE); END", 1, 2},
    {"TheMovedNodeStays", Work::structure,
     "BEFORE UPDATE OF QZ02_ID_QZ01 ON QZ02_DISTINTA WHEN OLD.QZ02_ID = 2 BEGIN SELECT RAISE(IGNORE); END", 0, 1},
    {"ALinkStaysOpen", Work::validity,
     "BEFORE UPDATE OF QZ02_DATAFINEVAL ON QZ02_DISTINTA WHEN OLD.QZ02_ID = 4 BEGIN SELECT RAISE(IGNORE); END", 1, 2},
    {"ALinkIsNotInserted", Work::validity,
     "BEFORE INSERT ON QZ02_DISTINTA WHEN NEW.QZ02_CLIFOR_CG44 = 105 BEGIN SELECT RAISE(IGNORE); END", 0, 1},
    {"ANewLinkIsNotFoundAgain", Work::validity,
     "AFTER INSERT ON QZ02_DISTINTA WHEN NEW.QZ02_CLIFOR_CG44 = 102 BEGIN UPDATE QZ02_DISTINTA SET QZ02_GUID = "
     "'00000000-0000-0000-0000-000000000000' WHERE QZ02_ID = NEW.QZ02_ID; END",
     0, 1},
};

std::string nameOfCase(const ::testing::TestParamInfo<Disturbance>& info) {
    return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(Rows, BlocksChanged, ::testing::ValuesIn(disturbances), nameOfCase);

} // namespace

} // namespace property
