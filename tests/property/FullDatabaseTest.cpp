// No space left at every row that a move or an edit writes: the rows are as before, no transaction stays open, and the
// same form goes on once there is space again.

#include "platform/odbc/Connection.h"
#include "platform/sqlite/Connection.h"
#include "property/Works.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

namespace property {

namespace {

using Case = std::tuple<Where, Work>;

std::string nameOfCase(const ::testing::TestParamInfo<Case>& info) {
    return nameOf(std::get<Where>(info.param)) + nameOf(std::get<Work>(info.param));
}

class FullDatabaseTest : public ::testing::TestWithParam<Case> {
protected:
    void SetUp() override {
        if (const auto why = WorldDatabase::missing(where()))
            GTEST_SKIP() << *why;
        program = std::make_unique<Program>(where(), [this](const WorldDatabase& database) {
            auto made = database.connect();
            connection = made.get();
            return made;
        });
        run("CREATE TABLE SPAZIO (X BLOB)");
    }

    static Where where() { return std::get<Where>(GetParam()); }
    static Work work() { return std::get<Work>(GetParam()); }

    /// By the program's own connection: a limit holds for the connection that sets it.
    void run(const std::string& text) {
        if (auto* embedded = dynamic_cast<platform::sqlite::Connection*>(connection))
            embedded->runNative(text);
        else
            dynamic_cast<platform::odbc::Connection&>(*connection).runNative(text);
    }

    /// Every row written takes space from now on, and there is enough for so many.
    void leaveSpaceFor(int rows) {
        constexpr int pagesOfARow = 25; // of 4096 bytes
        for (const std::string event : {"UPDATE", "INSERT"})
            run("CREATE TRIGGER SPAZIO_" + event + " AFTER " + event +
                " ON QZ02_DISTINTA BEGIN INSERT INTO SPAZIO VALUES (zeroblob(102000)); END");
        const auto bytes = std::filesystem::file_size(program->file());
        run("PRAGMA max_page_count = " + std::to_string(bytes / 4096 + static_cast<unsigned>(rows * pagesOfARow + 5)));
    }
    void giveSpace() {
        run("PRAGMA max_page_count = 1000000");
        for (const std::string event : {"UPDATE", "INSERT"})
            run("DROP TRIGGER SPAZIO_" + event);
        run("DELETE FROM SPAZIO");
    }

    contract::Connection* connection = nullptr;
    std::unique_ptr<Program> program;
};

} // namespace

TEST_P(FullDatabaseTest, LeavesTheRowsAsBeforeAtEveryRowWritten) {
    int failures = 0;
    for (int space = 0;; ++space) {
        SCOPED_TRACE(space);
        program->write(smallWorld());
        ASSERT_TRUE(program->focus(moveOf(work())));
        leaveSpaceFor(space);
        doWork(*program, work(), std::vector<int>(4, contract::message::answerAbort));
        const auto said = program->host->errors;
        EXPECT_FALSE(program->connection->InTransaction());
        giveSpace();
        if (said.empty()) {
            EXPECT_EQ(withoutMarks(program->rows()), rowsAfter(work()));
            break;
        }
        ++failures;
        EXPECT_NE(said.front().text.find("non c'è più spazio"), std::string::npos) << said.front().text;
        EXPECT_EQ(withoutMarks(program->rows()), smallWorld().rows);
        // The same form, without a new start.
        ASSERT_TRUE(program->focus(moveOf(work())));
        doWork(*program, work());
        EXPECT_TRUE(program->host->errors.empty()) << program->host->errors.front().text;
        EXPECT_EQ(withoutMarks(program->rows()), rowsAfter(work()));
        ASSERT_LT(space, 50);
    }
    // A branch of four nodes, each closed and copied by a move with validity; one row of an edit.
    EXPECT_EQ(failures, work() == Work::edit ? 1 : (work() == Work::structure ? 4 : 8));
    RecordProperty("faults", failures);
}

INSTANTIATE_TEST_SUITE_P(EveryKind, FullDatabaseTest,
                         ::testing::Combine(::testing::Values(Where::embedded, Where::odbc),
                                            ::testing::Values(Work::structure, Work::validity, Work::edit)),
                         nameOfCase);

} // namespace property
