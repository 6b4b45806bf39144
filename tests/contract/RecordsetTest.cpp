#include "contract/Recordset.h"

#include "contract/RuntimeError.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>

using contract::FieldList;
using contract::FieldType;
using contract::Recordset;
using contract::RuntimeError;
using contract::Value;

namespace {

Recordset threeRows() {
    Recordset records;
    auto& rows = records.fill();
    rows.start(std::make_shared<const FieldList>(
        FieldList{{"ID", FieldType::integer, 10, 0}, {"IMPORTO", FieldType::numeric, 18, 2}}));
    for (int id = 1; id <= 3; ++id) {
        rows.column(0).append(std::int64_t{id});
        rows.column(1).append(Value(contract::Decimal{"1.50"}));
        rows.rowDone();
    }
    records.MoveFirst();
    return records;
}

int errorOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const RuntimeError& error) {
        return error.number();
    }
    return 0;
}

TEST(Recordset, IsEmptyBeforeItIsOpened) {
    const Recordset records;
    EXPECT_TRUE(records.Bof());
    EXPECT_TRUE(records.Eof());
    EXPECT_TRUE(records.Empty());
    EXPECT_FALSE(records.IsOpen());
    EXPECT_FALSE(records.Row());
    EXPECT_EQ(records.FieldCount(), 0U);
}

TEST(Recordset, GoesFromBeginningToEndAndBack) {
    auto records = threeRows();
    EXPECT_FALSE(records.Bof());
    for (const int id : {1, 2, 3}) {
        ASSERT_FALSE(records.Eof());
        EXPECT_EQ(records["id"], Value(id));
        records.MoveNext();
    }
    EXPECT_TRUE(records.Eof());
    EXPECT_FALSE(records.Bof());
    EXPECT_FALSE(records.Row());
    records.MovePrevious();
    EXPECT_EQ(records["ID"], Value(3));
    records.MoveFirst();
    records.MovePrevious();
    EXPECT_TRUE(records.Bof());
    EXPECT_FALSE(records.Eof());
}

TEST(Recordset, RefusesToGoBeyondItsEnds) {
    auto records = threeRows();
    records.MoveEnd();
    EXPECT_EQ(errorOf([&] { records.MoveNext(); }), RuntimeError::noCurrentRecord);
    EXPECT_EQ(errorOf([&] { static_cast<void>(records["ID"]); }), RuntimeError::noCurrentRecord);
    EXPECT_EQ(errorOf([&] { records.MoveTo(3); }), RuntimeError::noCurrentRecord);
    records.MoveFirst();
    records.MovePrevious();
    EXPECT_EQ(errorOf([&] { records.MovePrevious(); }), RuntimeError::noCurrentRecord);
}

TEST(Recordset, StandsOnARowByNumber) {
    auto records = threeRows();
    records.MoveTo(2);
    EXPECT_EQ(records["ID"], Value(3));
    EXPECT_EQ(records.Row(), 2U);
}

TEST(Recordset, DescribesItsFields) {
    const auto records = threeRows();
    EXPECT_EQ(records.Fields(0).Name(), "ID");
    EXPECT_EQ(records.Fields("importo").Type(), FieldType::numeric);
    EXPECT_EQ(records.Fields("IMPORTO").NumericScale(), 2);
    EXPECT_EQ(errorOf([&] { static_cast<void>(records.Fields("NIENTE")); }), RuntimeError::itemNotFound);
}

TEST(Recordset, ChangesItsOwnCopyOnly) {
    auto records = threeRows();
    records.SetValue(0, 0, 9);
    EXPECT_EQ(records["ID"], Value(9));
    EXPECT_EQ(errorOf([&] { records.SetValue(3, 0, 9); }), RuntimeError::noCurrentRecord);
}

TEST(Recordset, NeedsAConnectionToOpen) {
    Recordset records;
    records.SetSource(contract::Statement("SELECT 1"));
    EXPECT_EQ(errorOf([&] { records.Open(); }), RuntimeError::objectNotSet);
    EXPECT_TRUE(records.Empty());
}

TEST(Recordset, IsEmptyAgainWhenClosed) {
    auto records = threeRows();
    records.Close();
    EXPECT_TRUE(records.Bof() && records.Eof());
    EXPECT_EQ(records.FieldCount(), 0U);
}

} // namespace
