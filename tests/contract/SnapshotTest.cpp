#include "plugin/contract/Snapshot.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

using contract::Column;
using contract::Date;
using contract::Decimal;
using contract::FieldInfo;
using contract::FieldList;
using contract::FieldType;
using contract::Snapshot;
using contract::Value;

namespace {

TEST(Column, GivesValuesOfTheKindOfItsType) {
    const auto stored = [](FieldType type, const Value& value) {
        Column column(type);
        column.append(value);
        return column.value(0);
    };
    EXPECT_EQ(stored(FieldType::smallInt, 7), Value(std::int16_t{7}));
    EXPECT_EQ(stored(FieldType::integer, 7), Value(7));
    EXPECT_EQ(stored(FieldType::bigInt, 7), Value(std::int64_t{7}));
    EXPECT_EQ(stored(FieldType::boolean, 1), Value(true));
    EXPECT_EQ(stored(FieldType::doublePrecision, 1.5), Value(1.5));
    EXPECT_EQ(stored(FieldType::numeric, Decimal{"1.50"}), Value(Decimal{"1.50"}));
    EXPECT_EQ(stored(FieldType::dbTimeStamp, *Date::of(2024, 5, 9)), Value(*Date::of(2024, 5, 9)));
    EXPECT_EQ(stored(FieldType::varChar, "x"), Value("x"));
}

TEST(Column, KeepsAsideWhatIsOfAnotherKind) {
    Column column(FieldType::integer);
    column.append(std::int64_t{1});
    column.append(std::string_view("due"));
    column.append(std::int64_t{3});
    column.append(2.5);
    EXPECT_EQ(column.value(0), Value(1));
    EXPECT_EQ(column.value(1), Value("due"));
    EXPECT_EQ(column.text(1), "due");
    EXPECT_EQ(column.integer(1), std::nullopt);
    EXPECT_EQ(column.integer(2), 3);
    EXPECT_EQ(column.value(3), Value(2.5));
    EXPECT_EQ(column.size(), 4U);
}

TEST(Column, KnowsItsNulls) {
    for (const auto type : {FieldType::integer, FieldType::doublePrecision, FieldType::date, FieldType::varChar}) {
        Column column(type);
        for (int row = 0; row < 200; ++row) {
            if (row % 67 == 3)
                column.appendNull();
            else
                column.append(Value("x"));
        }
        for (std::size_t row = 0; row < 200; ++row) {
            EXPECT_EQ(column.isNull(row), row % 67 == 3) << row;
            EXPECT_EQ(column.value(row).isNull(), row % 67 == 3) << row;
        }
        EXPECT_EQ(column.text(3), "");
        EXPECT_EQ(column.integer(3), std::nullopt);
    }
}

TEST(Column, GivesTextsAsTheyWereStored) {
    Column column(FieldType::varWChar);
    for (const auto* text : {"", "è", "a'b", "  "})
        column.append(std::string_view(text));
    EXPECT_EQ(column.text(0), "");
    EXPECT_EQ(column.text(1), "è");
    EXPECT_EQ(column.text(2), "a'b");
    EXPECT_EQ(column.text(3), "  ");
}

TEST(Column, CanBeChangedInPlace) {
    Column column(FieldType::date);
    column.append(*Date::of(2024, 1, 1));
    column.append(*Date::of(2024, 1, 2));
    column.set(0, Value::null());
    EXPECT_TRUE(column.isNull(0));
    column.set(0, *Date::of(2025, 1, 1));
    EXPECT_EQ(column.value(0), Value(*Date::of(2025, 1, 1)));
    column.set(1, "forse");
    EXPECT_EQ(column.value(1), Value("forse"));
    column.set(1, *Date::of(2026, 1, 1));
    EXPECT_EQ(column.value(1), Value(*Date::of(2026, 1, 1)));
}

TEST(Column, CanBeChangedInPlaceWhateverItHolds) {
    Column texts(FieldType::varChar);
    texts.append(std::string_view("uno"));
    texts.append(std::string_view("due"));
    texts.set(0, "nuovo e più lungo");
    EXPECT_EQ(texts.text(0), "nuovo e più lungo");
    EXPECT_EQ(texts.text(1), "due");
    Column numbers(FieldType::integer);
    numbers.append(std::int64_t{1});
    numbers.set(0, 9);
    EXPECT_EQ(numbers.value(0), Value(9));
    Column reals(FieldType::doublePrecision);
    reals.append(0.5);
    reals.set(0, 1.5);
    EXPECT_EQ(reals.value(0), Value(1.5));
}

TEST(Column, ReadsWholeNumbersHeldInAnyForm) {
    Column texts(FieldType::varChar);
    texts.append(std::string_view(" 12 "));
    EXPECT_EQ(texts.integer(0), 12);
    Column decimals(FieldType::numeric);
    decimals.append(Value(Decimal{"12.00"}));
    EXPECT_EQ(decimals.integer(0), 12);
}

TEST(Column, IsCompact) {
    Column numbers(FieldType::integer);
    Column dates(FieldType::date);
    numbers.reserve(10'000);
    dates.reserve(10'000);
    for (int row = 0; row < 10'000; ++row) {
        numbers.append(std::int64_t{row});
        dates.append(*Date::of(2024, 1, 1));
    }
    EXPECT_LE(numbers.memory(), 80'100U);
    EXPECT_LE(dates.memory(), 40'100U);
}

TEST(Snapshot, FindsFieldsWithoutRegardToCase) {
    Snapshot rows;
    rows.start(std::make_shared<const FieldList>(
        FieldList{{"QZ02_GUID", FieldType::guid, 0, 0}, {"RagSoc", FieldType::varChar, 0, 0}}));
    EXPECT_EQ(rows.find("qz02_guid"), 0U);
    EXPECT_EQ(rows.find("RAGSOC"), 1U);
    EXPECT_FALSE(rows.find("RagSo"));
    EXPECT_EQ(rows.columnCount(), 2U);
}

TEST(Snapshot, ForgetsEverything) {
    Snapshot rows;
    rows.start(std::make_shared<const FieldList>(FieldList{{"A", FieldType::integer, 0, 0}}));
    rows.column(0).append(std::int64_t{1});
    rows.rowDone();
    rows.clear();
    EXPECT_EQ(rows.rowCount(), 0U);
    EXPECT_EQ(rows.columnCount(), 0U);
    EXPECT_TRUE(rows.fields().empty());
}

} // namespace
