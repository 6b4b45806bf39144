#include "platform/shared/LongWork.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>

namespace {

using platform::shared::LongWork;
using namespace std::chrono_literals;

/// The user's side is asked at most every so often.
void pass() {
    std::this_thread::sleep_for(25ms);
}

class LongWorkTest : public testing::Test {
protected:
    LongWork work;
    int asked = 0;
    int told = 0;
    void SetUp() override {
        work.working = [this] { ++asked; };
        work.changed = [this] { ++told; };
    }
};

TEST_F(LongWorkTest, OnlyWhatMayBeGivenUpIsGivenUp) {
    work.cancel();
    EXPECT_NO_THROW(work.check());
    work.begin();
    EXPECT_NO_THROW(work.check()) << "what was not heard is forgotten";
    work.cancel();
    EXPECT_THROW(work.check(), contract::Cancelled);
    EXPECT_THROW(work.check(), contract::Cancelled) << "until the work has ended";
    work.end();
    EXPECT_NO_THROW(work.check());
    work.begin();
    EXPECT_NO_THROW(work.check());
    work.end();
}

TEST_F(LongWorkTest, APartEndsWithTheWholeWork) {
    work.begin();
    work.begin();
    work.cancel();
    work.end();
    EXPECT_TRUE(work.cancelled());
    work.end();
    EXPECT_FALSE(work.cancelled());
    EXPECT_EQ(2, told);
}

TEST_F(LongWorkTest, WhatIsKeptIsNotGivenUpAnyMore) {
    work.begin();
    work.begin();
    work.cancel();
    work.kept();
    EXPECT_NO_THROW(work.check());
    work.cancel();
    work.end();
    EXPECT_NO_THROW(work.reached("Rilettura", 1, {}));
    EXPECT_FALSE(work.cancellable());
    work.end();
    work.kept(); // of no work: the next one is another
    work.begin();
    EXPECT_TRUE(work.cancellable());
    work.end();
}

TEST_F(LongWorkTest, AsksNowAndThenAndHearsAtOnce) {
    work.working = [this] {
        ++asked;
        work.cancel();
    };
    EXPECT_NO_THROW(work.check());
    EXPECT_EQ(1, asked) << "also of what can not be given up, to show it";
    work.begin();
    EXPECT_NO_THROW(work.check());
    EXPECT_EQ(1, asked);
    pass();
    EXPECT_THROW(work.check(), contract::Cancelled);
    EXPECT_EQ(2, asked);
    work.end();
}

TEST_F(LongWorkTest, NobodyIsAskedWhileSomebodyIsAsked) {
    work.begin();
    work.working = [this] {
        ++asked;
        pass();
        work.cancel();
        EXPECT_NO_THROW(work.check());
        EXPECT_TRUE(work.withinStatement());
    };
    EXPECT_TRUE(work.stops(true));
    EXPECT_EQ(1, asked);
    EXPECT_FALSE(work.withinStatement());
    work.end();
}

TEST_F(LongWorkTest, AScriptGivesUpAfterSoManyStatements) {
    work.cancelAfter(2);
    work.begin();
    for (int statement = 0; statement < 2; ++statement) {
        EXPECT_NO_THROW(work.check());
        work.statementDone();
    }
    EXPECT_THROW(work.check(), contract::Cancelled);
    work.end();
    work.cancelAfter({});
    work.begin();
    EXPECT_NO_THROW(work.check());
    work.end();
}

TEST_F(LongWorkTest, TellsHowFarItIs) {
    work.begin();
    work.counts("nodi");
    work.reached("Spostamento", 3, 10);
    EXPECT_EQ("Spostamento", work.step().what);
    EXPECT_EQ(3U, work.step().done);
    EXPECT_EQ(10U, work.step().total);
    EXPECT_EQ("nodi", work.step().unit);
    work.cancel();
    EXPECT_THROW(work.reached("Spostamento", 4, 10), contract::Cancelled);
    work.end();
    EXPECT_EQ("", work.step().what);
    EXPECT_EQ("", work.step().unit);
}

TEST(LongWorkThreads, AnotherThreadHasAnotherWork) {
    LongWork::instance().begin();
    LongWork::instance().cancel();
    std::thread([] { EXPECT_NO_THROW(LongWork::instance().check()); }).join();
    EXPECT_THROW(LongWork::instance().check(), contract::Cancelled);
    LongWork::instance().end();
}

} // namespace
