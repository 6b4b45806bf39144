// A file that another program keeps locked: a command waits for it once, and says for whom.

#include "platform/sqlite/BusyWait.h"
#include "sqlite/SqliteFixture.h"

#include <string>
#include <vector>

#include <csignal>
#include <sys/wait.h>

namespace sqlite_test {
namespace {

using platform::shared::Waiting;

class BusyWaitTest : public SqliteTest {
protected:
    BusyWaitTest() {
        auto& waiting = Waiting::instance();
        waiting.boundCommands(true);
        waiting.told = [this](std::string_view database, std::string_view holder) {
            told.push_back(std::string(database) + ": " + std::string(holder));
        };
        other.SetConnectionString(connectionStringOf(file(), ";busy=700"));
        other.Open();
    }
    ~BusyWaitTest() override {
        Waiting::instance().told = {};
        Waiting::instance().boundCommands(false);
    }

    std::vector<std::string> told;
    Connection other;
};

TEST_F(BusyWaitTest, ACommandWaitsOnceHoweverManyOfItsOperationsMeetTheLock) {
    connection.runNative("BEGIN EXCLUSIVE");
    EXPECT_TRUE(has(failureOf([&] { count(other); }), "occupato da un altro programma"));
    const auto first = told.size();
    EXPECT_GT(first, 0U);
    EXPECT_EQ(0, Waiting::instance().left(Waiting::Time(700)).count());
    for (int times = 0; times < 8; ++times)
        failureOf([&] { count(other); });
    EXPECT_EQ(first, told.size());
    EXPECT_EQ(0, Waiting::instance().left(Waiting::Time(700)).count());
    Waiting::instance().commandBegins();
    failureOf([&] { count(other); });
    EXPECT_GT(told.size(), first) << "the next one waits again";
    connection.runNative("COMMIT");
    Waiting::instance().commandBegins();
    EXPECT_EQ(0, count(other));
}

TEST_F(BusyWaitTest, AnotherProgramIsNamed) {
    int ready[2];
    ASSERT_EQ(0, ::pipe(ready));
    const pid_t child = ::fork();
    if (child == 0) {
        Connection writer(connectionStringOf(file()));
        writer.Open();
        writer.BeginTrans();
        insert(writer, 1);
        [[maybe_unused]] const auto written = ::write(ready[1], "x", 1);
        for (;;)
            ::pause();
    }
    char letter = 0;
    ASSERT_EQ(1, ::read(ready[0], &letter, 1));
    const std::string who = "test_sqlite» (processo " + std::to_string(child);
    const auto said = failureOf([&] { other.BeginTrans(); });
    EXPECT_TRUE(has(said, " Lo occupa «" + who)) << said;
    ASSERT_FALSE(told.empty());
    EXPECT_TRUE(has(told.front(), "prova.db: «" + who)) << told.front();
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    ::close(ready[0]);
    ::close(ready[1]);
    EXPECT_EQ("", platform::sqlite::lockHolder(file()));
}

} // namespace
} // namespace sqlite_test
