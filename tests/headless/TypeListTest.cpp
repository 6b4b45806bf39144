#include "contract/RuntimeError.h"
#include "platform/headless/HeadlessTypeList.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

using contract::RuntimeError;
using platform::headless::HeadlessTypeList;

namespace {

class TypeListTest : public testing::Test {
protected:
    TypeListTest() {
        for (const auto& [key, parent] : std::vector<std::pair<std::string, std::string>>{
                 {"P0", ""}, {"P1", ""}, {"C1", "P0"}, {"F1", "P1"}, {"C2", "P0"}, {"X", "C1"}})
            list.add({key, "text " + key, parent, "close", "open"});
    }

    template <class Action> static int errorOf(Action action) {
        try {
            action();
        } catch (const RuntimeError& error) {
            return error.number();
        }
        return 0;
    }

    platform::headless::FormContext context;
    HeadlessTypeList list{"LIST", context};
};

TEST_F(TypeListTest, StandsInDisplayOrder) {
    std::vector<std::string> keys;
    for (std::size_t position = 1; position <= list.count(); ++position)
        keys.push_back(list.entry(position).key);
    EXPECT_EQ(keys, (std::vector<std::string>{"P0", "C1", "X", "C2", "P1", "F1"}));
}

TEST_F(TypeListTest, RefusesKnownKeysUnknownParentsAndPositionsOutside) {
    EXPECT_EQ(errorOf([&] { list.add({"C1", "", "P0", "", ""}); }), 457);
    EXPECT_EQ(errorOf([&] { list.add({"Y", "", "NONE", "", ""}); }), 35601);
    EXPECT_EQ(errorOf([&] { static_cast<void>(list.entry(std::size_t{0})); }), 35600);
    EXPECT_EQ(errorOf([&] { static_cast<void>(list.entry(std::size_t{7})); }), 35600);
    EXPECT_EQ(errorOf([&] { static_cast<void>(list.entry("NONE")); }), 35601);
    EXPECT_EQ(errorOf([&] { list.select(7); }), 35600);
    EXPECT_EQ(list.count(), 6U);
}

TEST_F(TypeListTest, TellsTheUsersChoiceOnly) {
    int clicks = 0;
    list.Click = [&] { ++clicks; };
    EXPECT_FALSE(list.selected());
    list.select(2);
    EXPECT_EQ(list.selected()->key, "C1");
    EXPECT_EQ(clicks, 0);
    EXPECT_TRUE(list.clickEntry("F1"));
    EXPECT_EQ(list.selected()->key, "F1");
    EXPECT_EQ(clicks, 1);
    EXPECT_FALSE(list.clickEntry("NONE"));
    list.setVisible(false);
    EXPECT_FALSE(list.clickEntry("C1"));
    EXPECT_EQ(clicks, 1);
}

TEST_F(TypeListTest, ForgetsItsChoiceWhenCleared) {
    list.select(1);
    list.clear();
    EXPECT_EQ(list.count(), 0U);
    EXPECT_FALSE(list.selected());
}

} // namespace
