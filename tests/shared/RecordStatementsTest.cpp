#include "platform/shared/RecordStatements.h"
#include "contract/RuntimeError.h"

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
        platform::shared::composeUpdate(
            "QZ03_PARAMETRI",
            {{"A", std::int64_t{1}}, {"B", Value::null()}, {"C", day("31/12/2024")}, {"D", "l'anno"}, {"E", true}},
            {{"K", std::int64_t{7}}})
            .text(),
        "UPDATE QZ03_PARAMETRI SET A = 1, B = NULL, C = CONVERT(DateTime,'31/12/2024',103), D = 'l''anno', "
        "E = 1 WHERE K = 7");
}

TEST(RecordStatements, AnInsertAndADelete) {
    EXPECT_EQ(platform::shared::composeInsert("T", {{"A", std::int64_t{-1}}, {"B", day("01/02/2023")}}).text(),
              "INSERT INTO T (A, B) VALUES (-1, CONVERT(DateTime,'01/02/2023',103))");
    EXPECT_EQ(platform::shared::composeDelete("T", {{"A", std::int64_t{2}}, {"B", Value::null()}}).text(),
              "DELETE FROM T WHERE A = 2 AND B IS NULL");
}

TEST(RecordStatements, NamesThatAreNoneAndMissingKeysAreRefused) {
    EXPECT_THROW(platform::shared::composeInsert("T; DROP", {{"A", std::int64_t{1}}}), RuntimeError);
    EXPECT_THROW(platform::shared::composeUpdate("T", {{"A B", std::int64_t{1}}}, {{"K", std::int64_t{1}}}),
                 RuntimeError);
    EXPECT_THROW(platform::shared::composeUpdate("T", {{"A", std::int64_t{1}}}, {}), RuntimeError);
    EXPECT_THROW(platform::shared::composeDelete("T", {}), RuntimeError);
    EXPECT_THROW(platform::shared::composeInsert("T", {}), RuntimeError);
}

} // namespace

} // namespace qt_tests
