#include "contract/Date.h"

#include "contract/RuntimeError.h"
#include "contract/TypedDate.h"

#include <gtest/gtest.h>

using contract::Date;

namespace {

TEST(Date, StartsOnTheFirstDayThatCanBeTyped) {
    EXPECT_EQ(Date().text(), "01/01/1900");
    EXPECT_EQ(Date(), Date::of(1900, 1, 1));
}

TEST(Date, KnowsItsNumbers) {
    const auto date = Date::of(2024, 2, 29);
    ASSERT_TRUE(date);
    EXPECT_EQ(date->year(), 2024);
    EXPECT_EQ(date->month(), 2);
    EXPECT_EQ(date->day(), 29);
}

TEST(Date, CountsDaysFromThe1stOfJanuary1970) {
    EXPECT_EQ(Date::of(1970, 1, 1)->days(), 0);
    EXPECT_EQ(Date::of(1969, 12, 31)->days(), -1);
    EXPECT_EQ(Date::of(2000, 3, 1)->days(), 11017);
    EXPECT_EQ(Date::fromDays(11017)->text(), "01/03/2000");
}

TEST(Date, HasLeapDaysByTheCalendar) {
    EXPECT_TRUE(Date::of(2024, 2, 29));
    EXPECT_TRUE(Date::of(2000, 2, 29));
    EXPECT_FALSE(Date::of(2023, 2, 29));
    EXPECT_FALSE(Date::of(1900, 2, 29));
    EXPECT_FALSE(Date::of(2100, 2, 29));
    EXPECT_FALSE(Date::of(2024, 2, 30));
}

TEST(Date, RefusesWhatIsNoDay) {
    EXPECT_FALSE(Date::of(2024, 0, 1));
    EXPECT_FALSE(Date::of(2024, 13, 1));
    EXPECT_FALSE(Date::of(2024, 1, 0));
    EXPECT_FALSE(Date::of(2024, 1, 32));
    EXPECT_FALSE(Date::of(2024, 4, 31));
}

TEST(Date, ReachesFromTheYear1To9999) {
    EXPECT_TRUE(Date::of(1, 1, 1));
    EXPECT_FALSE(Date::of(0, 12, 31));
    EXPECT_TRUE(Date::of(9999, 12, 31));
    EXPECT_FALSE(Date::of(10000, 1, 1));
    const auto first = Date::of(1, 1, 1)->days();
    const auto last = Date::of(9999, 12, 31)->days();
    EXPECT_TRUE(Date::fromDays(first));
    EXPECT_FALSE(Date::fromDays(first - 1));
    EXPECT_TRUE(Date::fromDays(last));
    EXPECT_FALSE(Date::fromDays(last + 1));
}

TEST(Date, ReadsItsOwnTextAndNothingElse) {
    EXPECT_EQ(Date::parse("29/02/2024"), Date::of(2024, 2, 29));
    EXPECT_EQ(Date::parse("  31/12/2099\t"), Date::of(2099, 12, 31));
    for (const auto* text :
         {"", "   ", "1/1/2024", "01-01-2024", "2024-01-01", "01/01/24", "31/02/2024", "01/13/2024", "31/12/0000",
          "aa/bb/cccc", "01/01/2024x", "01/01/20244", "+1/01/2024", "01/ 1/2024", "00/01/2024"})
        EXPECT_FALSE(Date::parse(text)) << text;
}

TEST(Date, ReadsIsoWithoutBlanks) {
    EXPECT_EQ(Date::parseIso("2024-02-29"), Date::of(2024, 2, 29));
    for (const auto* text :
         {"", " 2024-02-29", "2024-02-29 ", "2024-2-9", "29/02/2024", "2023-02-29", "2024-02-29T00:00:00"})
        EXPECT_FALSE(Date::parseIso(text)) << text;
}

TEST(Date, WritesBothForms) {
    const auto date = *Date::of(2024, 5, 9);
    EXPECT_EQ(date.text(), "09/05/2024");
    EXPECT_EQ(date.iso(), "2024-05-09");
}

TEST(Date, GoesDayByDayAcrossMonthsAndYears) {
    EXPECT_EQ(Date::of(2024, 2, 28)->plusDays(1).text(), "29/02/2024");
    EXPECT_EQ(Date::of(2023, 2, 28)->plusDays(1).text(), "01/03/2023");
    EXPECT_EQ(Date::of(2024, 12, 31)->plusDays(1).text(), "01/01/2025");
    EXPECT_EQ(Date::of(2024, 3, 1)->plusDays(-1).text(), "29/02/2024");
    try {
        static_cast<void>(Date::of(9999, 12, 31)->plusDays(1));
        FAIL();
    } catch (const contract::RuntimeError& error) {
        EXPECT_EQ(error.number(), contract::RuntimeError::overflow);
    }
    EXPECT_THROW(static_cast<void>(Date::of(1, 1, 1)->plusDays(-1)), contract::RuntimeError);
}

TEST(Date, RoundTripsEveryDayOfTwentyThreeCenturies) {
    for (auto days = Date::of(1, 1, 1)->days(); days <= Date::of(2300, 12, 31)->days(); ++days) {
        const auto date = *Date::fromDays(days);
        ASSERT_EQ(Date::parse(date.text()), date);
        ASSERT_EQ(Date::parseIso(date.iso()), date);
        ASSERT_EQ(Date::of(date.year(), date.month(), date.day()), date);
    }
}

TEST(Date, ReadsTheZeroOfOldPrograms) {
    EXPECT_EQ(Date::parse("30/12/1899"), Date::of(1899, 12, 30));
    EXPECT_EQ(Date::parseIso("0001-01-01")->text(), "01/01/0001");
    EXPECT_EQ(Date::of(1, 1, 1)->iso(), "0001-01-01");
}

TEST(Date, WhatIsTypedBeginsIn1900UnlessItStoodThere) {
    const auto old = Date::of(1899, 12, 31);
    const auto first = Date::of(1900, 1, 1);
    EXPECT_FALSE(contract::canBeTyped(*old));
    EXPECT_TRUE(contract::canBeTyped(*first));
    EXPECT_EQ(contract::typedOver(first, std::nullopt), first);
    EXPECT_EQ(contract::typedOver(old, std::nullopt), std::nullopt);
    EXPECT_EQ(contract::typedOver(old, first), std::nullopt);
    EXPECT_EQ(contract::typedOver(old, old), old);
    EXPECT_EQ(contract::typedOver(std::nullopt, old), std::nullopt);
}

TEST(Date, OrdersByTheCalendar) {
    EXPECT_LT(*Date::parse("30/12/1899"), *Date::parse("01/01/1900"));
    EXPECT_LT(*Date::parse("31/12/2023"), *Date::parse("01/01/2024"));
    EXPECT_GT(*Date::parse("02/01/2024"), *Date::parse("01/12/2023"));
}

TEST(Date, TodayIsADayOfThisMachine) {
    EXPECT_GE(Date::today(), *Date::of(2024, 1, 1));
    EXPECT_LE(Date::today(), *Date::of(2200, 1, 1));
}

} // namespace
