#include "contract/Value.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

using contract::Date;
using contract::Decimal;
using contract::Value;

namespace {

const Value day = *Date::of(2024, 5, 9);

TEST(Value, TellsEmptyNullAndBlankApart) {
    EXPECT_TRUE(Value().isEmpty());
    EXPECT_FALSE(Value().isNull());
    EXPECT_TRUE(Value::null().isNull());
    EXPECT_FALSE(Value::null().isEmpty());
    EXPECT_FALSE(Value("").isMissing());
    EXPECT_NE(Value(), Value::null());
    EXPECT_NE(Value(), Value(""));
    EXPECT_NE(Value::null(), Value(""));
}

TEST(Value, KeepsItsKind) {
    EXPECT_NE(Value(std::int16_t{7}), Value(std::int32_t{7}));
    EXPECT_NE(Value(7), Value("7"));
    EXPECT_NE(Value(true), Value(1));
    EXPECT_EQ(Value(7), Value(7));
    EXPECT_EQ(Value(Decimal{"1.50"}), Value(Decimal{"1.50"}));
}

TEST(Value, KnowsNumbers) {
    for (const auto& number :
         {Value(std::int16_t{1}), Value(1), Value(std::int64_t{1}), Value(1.5), Value(Decimal{"1"})})
        EXPECT_TRUE(number.isNumber());
    for (const auto& other : {Value(), Value::null(), Value(true), Value("1"), day})
        EXPECT_FALSE(other.isNumber());
}

TEST(Value, GivesTheWholeNumberItHolds) {
    EXPECT_EQ(Value(std::int16_t{-3}).integer(), -3);
    EXPECT_EQ(Value(std::int64_t{1} << 40).integer(), std::int64_t{1} << 40);
    EXPECT_EQ(Value(true).integer(), 1);
    EXPECT_EQ(Value(false).integer(), 0);
    EXPECT_EQ(Value(12.0).integer(), 12);
    EXPECT_EQ(Value(Decimal{"-7.00"}).integer(), -7);
    EXPECT_EQ(Value(" 42\t").integer(), 42);
}

TEST(Value, HasNoWholeNumberOtherwise) {
    for (const auto& value :
         {Value(), Value::null(), Value(""), Value("  "), Value("4 2"), Value("4.0"), Value("x"), Value(1.5),
          Value(std::numeric_limits<double>::infinity()), Value(1e30), Value(Decimal{"1.01"}), day})
        EXPECT_FALSE(value.integer()) << value.text();
}

TEST(Value, GivesADateOrTheTextOfOne) {
    EXPECT_EQ(day.date(), Date::of(2024, 5, 9));
    EXPECT_EQ(Value(" 09/05/2024 ").date(), Date::of(2024, 5, 9));
    EXPECT_FALSE(Value("9/5/2024").date());
    EXPECT_FALSE(Value(45000).date());
    EXPECT_FALSE(Value::null().date());
}

TEST(Value, WritesItself) {
    EXPECT_EQ(Value().text(), "");
    EXPECT_EQ(Value::null().text(), "");
    EXPECT_EQ(Value(1234567).text(), "1234567");
    EXPECT_EQ(Value(-0.5).text(), "-0.5");
    EXPECT_EQ(Value(Decimal{"1234.50"}).text(), "1234.50");
    EXPECT_EQ(day.text(), "09/05/2024");
    EXPECT_EQ(Value(true).text(), "True");
    EXPECT_EQ(Value(false).text(), "False");
    EXPECT_EQ(Value(" a ").text(), " a ");
}

} // namespace
