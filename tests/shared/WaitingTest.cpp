#include "platform/shared/Waiting.h"

#include <gtest/gtest.h>

namespace {

using platform::shared::Waiting;
using namespace std::chrono_literals;

TEST(Waiting, EveryOperationWaitsForItselfWhereCommandsAreNotKnown) {
    Waiting waiting;
    waiting.operationWaits();
    waiting.add(700ms);
    EXPECT_EQ(300ms, waiting.left(1s));
    waiting.operationWaits();
    EXPECT_EQ(1s, waiting.left(1s));
}

TEST(Waiting, OperationsOfOneCommandWaitOnceTogether) {
    Waiting waiting;
    waiting.boundCommands(true);
    waiting.operationWaits();
    waiting.add(700ms);
    waiting.operationWaits();
    EXPECT_EQ(300ms, waiting.left(1s));
    waiting.add(700ms);
    EXPECT_EQ(0ms, waiting.left(1s));
    EXPECT_EQ(600ms, waiting.left(2s));
    waiting.commandBegins();
    EXPECT_EQ(1s, waiting.left(1s));
}

} // namespace
