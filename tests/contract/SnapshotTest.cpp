#include "contract/Snapshot.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <memory>
#include <span>
#include <string>
#include <vector>

using contract::Column;
using contract::Date;
using contract::Decimal;
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

TEST(Column, TakesBlocksOfNulls) {
    for (const auto type : {FieldType::integer, FieldType::doublePrecision, FieldType::date, FieldType::varChar})
        for (const std::size_t before : {0U, 1U, 63U, 64U, 65U})
            for (const std::size_t nulls : {0U, 1U, 62U, 63U, 64U, 65U, 127U, 128U, 1000U}) {
                Column blocks(type);
                Column single(type);
                for (std::size_t row = 0; row < before; ++row)
                    for (auto* column : {&blocks, &single})
                        column->append(Value("x"));
                blocks.appendNulls(nulls);
                for (std::size_t row = 0; row < nulls; ++row)
                    single.appendNull();
                for (auto* column : {&blocks, &single}) {
                    column->append(Value("y"));
                    column->appendNull();
                }
                ASSERT_EQ(single.size(), blocks.size());
                for (std::size_t row = 0; row < single.size(); ++row)
                    ASSERT_EQ(single.value(row), blocks.value(row)) << row << " after " << before << ", " << nulls;
            }
}

TEST(Column, TakesBlocksOfNumbers) {
    const std::vector<std::int64_t> whole = {1, -2, std::numeric_limits<std::int64_t>::max()};
    const std::vector<double> real = {0.5, -1e300};
    for (const auto type : {FieldType::bigInt, FieldType::doublePrecision, FieldType::varChar}) {
        Column column(type);
        column.append(std::span(whole));
        column.append(std::span(whole).first(0));
        column.append(std::span(real));
        ASSERT_EQ(5U, column.size());
        for (std::size_t row = 0; row < whole.size(); ++row)
            EXPECT_EQ(Value(whole[row]), column.value(row));
        EXPECT_EQ(Value(0.5), column.value(3));
        EXPECT_EQ(Value(-1e300), column.value(4));
    }
}

TEST(Column, TakesATextWrittenInItsRoom) {
    Column column(FieldType::varWChar);
    column.expect(3);
    for (const std::string text : {"", "è", "un testo più lungo della stanza"}) {
        std::memcpy(column.textRoom(3 * text.size() + 1), text.data(), text.size());
        column.appendWritten(text.size());
    }
    ASSERT_EQ(3U, column.size());
    EXPECT_EQ("", column.text(0));
    EXPECT_EQ("è", column.text(1));
    EXPECT_EQ("un testo più lungo della stanza", column.text(2));
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
