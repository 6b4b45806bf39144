#include "platform/qt/RecordStatements.h"
#include "plugin/contract/RuntimeError.h"

#include <gtest/gtest.h>

namespace qt_tests {

namespace {

using contract::Date;
using contract::RuntimeError;
using contract::Value;

Value day(const char* text) {
    return *Date::parse(text);
}

TEST(RecordStatements, AnUpdateNamesItsColumnsAndItsKey) {
    EXPECT_EQ(
        platform::qt::composeUpdate(
            "QZ03_PARAMETRI",
            {{"A", std::int64_t{1}}, {"B", Value::null()}, {"C", day("31/12/2024")}, {"D", "l'anno"}, {"E", true}},
            {{"K", std::int64_t{7}}})
            .text(),
        "UPDATE QZ03_PARAMETRI SET A = 1, B = NULL, C = CONVERT(DateTime,'31/12/2024',103), D = 'l''anno', "
        "E = 1 WHERE K = 7");
}

TEST(RecordStatements, AnInsertAndADelete) {
    EXPECT_EQ(platform::qt::composeInsert("T", {{"A", std::int64_t{-1}}, {"B", day("01/02/2023")}}).text(),
              "INSERT INTO T (A, B) VALUES (-1, CONVERT(DateTime,'01/02/2023',103))");
    EXPECT_EQ(platform::qt::composeDelete("T", {{"A", std::int64_t{2}}, {"B", Value::null()}}).text(),
              "DELETE FROM T WHERE A = 2 AND B IS NULL");
}

TEST(RecordStatements, NamesThatAreNoneAndMissingKeysAreRefused) {
    EXPECT_THROW(platform::qt::composeInsert("T; DROP", {{"A", std::int64_t{1}}}), RuntimeError);
    EXPECT_THROW(platform::qt::composeUpdate("T", {{"A B", std::int64_t{1}}}, {{"K", std::int64_t{1}}}), RuntimeError);
    EXPECT_THROW(platform::qt::composeUpdate("T", {{"A", std::int64_t{1}}}, {}), RuntimeError);
    EXPECT_THROW(platform::qt::composeDelete("T", {}), RuntimeError);
    EXPECT_THROW(platform::qt::composeInsert("T", {}), RuntimeError);
}

} // namespace

} // namespace qt_tests
