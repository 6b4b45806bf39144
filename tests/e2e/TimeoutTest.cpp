// A statement that takes longer than its time-out, on the server that DISTINTE_TEST_ODBC names: rows that another user
// keeps locked.

#include "e2e/Database.h"
#include "e2e/Program.h"
#include "e2e/Texts.h"
#include "e2e/Works.h"
#include "platform/odbc/Connection.h"

#include <gtest/gtest.h>

using namespace e2e;

namespace {

constexpr int abandon = 3;
constexpr int retry = 4;

class Timeout : public ::testing::TestWithParam<Work> {
protected:
    void SetUp() override {
        if (!place_.onServer())
            GTEST_SKIP() << "DISTINTE_TEST_ODBC names no server";
        place_.makeForest();
        platform::odbc::ConnectionString string(place_.server());
        string.set(platform::odbc::ConnectionString::statementTimeout, "2");
        place_.connectBy(string.text());
    }

    /// Every row of the nodes, until released.
    void lockRows() {
        other_.SetConnectionString(place_.server());
        other_.Open();
        other_.BeginTrans();
        other_.runNative("UPDATE QZ02_DISTINTA SET QZ02_DESCR = 'occupato'");
    }
    void releaseRows() { other_.Close(); }

    Workplace place_;
    platform::odbc::Connection other_;
};

} // namespace

TEST_P(Timeout, IsSaidAndChangesNothingAndTheNextCommandConnectsAgain) {
    Database database(place_);
    const auto before = database.nodes();
    Dialogue program(place_);
    aim(program, GetParam());
    lockRows();
    const auto said = errors(doWork(program, GetParam(), {retry, abandon}));
    releaseRows();
    // Trying again connects, and waits once more.
    ASSERT_GE(said.size(), 2U);
    for (const auto& text : {said[0], said[1]}) {
        EXPECT_TRUE(contains(text, "il tempo massimo è scaduto e la connessione è stata chiusa con l'istruzione; si "
                                   "riapre al prossimo comando"))
            << text;
        EXPECT_TRUE(contains(text, "La transazione è annullata.")) << text;
    }
    EXPECT_EQ(database.nodes(), before);
    aim(program, GetParam());
    EXPECT_FALSE(program.ids(origTree).empty());
    const auto after = errors(doWork(program, GetParam()));
    EXPECT_TRUE(after.empty()) << after.front();
    EXPECT_TRUE(isDone(database, GetParam()));
    program.must(R"({"do":"close"})");
    EXPECT_EQ(program.finish(), 0) << program.err().toStdString();
}

INSTANTIATE_TEST_SUITE_P(EveryKind, Timeout, ::testing::Values(Work::structure, Work::validity, Work::edit),
                         nameOfCase);
