// The values that the adapter takes from a server: every type, its bounds, and rows in any number and length.

#include "odbc/ScriptedServer.h"

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace odbc_test {
namespace {

using contract::FieldType;
using contract::Value;

class OdbcServerValues : public ScriptedServer {};

TEST_F(OdbcServerValues, RowsComeInBlocksOfAThousand) {
    script().answer = [](const std::string&) {
        scripted::Answer answer;
        answer.columns = {{"ID", SQL_INTEGER, 10, 0}, {"NOME", SQL_WVARCHAR, 100, 0}};
        for (int i = 0; i < 2500; ++i) {
            const std::string digits = std::to_string(i);
            answer.rows.push_back({std::u16string(digits.begin(), digits.end()), u"nome"});
        }
        return answer;
    };
    contract::Snapshot rows;
    connection.Read("SELECT ID, NOME FROM PROVA"_sql, rows);
    ASSERT_EQ(2500U, rows.rowCount());
    EXPECT_EQ(2499, rows.column(0).integer(2499));
    EXPECT_EQ((std::vector<int>{1000, 1000, 1000, 1000}), script().fetchSizes);
}

TEST_F(OdbcServerValues, EveryTypeHasItsField) {
    script().answer = [](const std::string&) {
        return oneRow({{"A", SQL_BIT, 1, 0},
                       {"B", SQL_TINYINT, 3, 0},
                       {"C", SQL_SMALLINT, 5, 0},
                       {"D", SQL_INTEGER, 10, 0},
                       {"E", SQL_BIGINT, 19, 0},
                       {"F", SQL_REAL, 24, 0},
                       {"G", SQL_FLOAT, 53, 0},
                       {"H", SQL_NUMERIC, 18, 2},
                       {"I", SQL_DECIMAL, 19, 4},
                       {"J", SQL_TYPE_TIMESTAMP, 23, 3},
                       {"K", SQL_GUID, 36, 0},
                       {"L", SQL_WVARCHAR, 20, 0},
                       {"M", SQL_VARCHAR, 20, 0},
                       {"N", SQL_CHAR, 5, 0},
                       {"O", SQL_WVARCHAR, 0, 0}},
                      {u"1", u"255", u"-32768", u"2147483647", u"9223372036854775807", u"1.5", u"-2.25", u"-.50",
                       u"1234.5000", u"2024-02-29 00:00:00", u"6F9619FF-8B86-D011-B42D-00C04FC964FF",
                       u"Citt\u00e0 \u20ac \U0001F984", u"testo", u"ab   ", u"lungo"});
    };
    contract::Snapshot rows;
    connection.Read("SELECT * FROM T"_sql, rows);
    ASSERT_EQ(1U, rows.rowCount());
    const auto type = [&](std::size_t i) { return rows.fields()[i].type; };
    const auto value = [&](std::size_t i) { return rows.column(i).value(0); };
    EXPECT_EQ(Value(true), value(0));
    EXPECT_EQ(FieldType::boolean, type(0));
    EXPECT_EQ(255, value(1).integer());
    EXPECT_EQ(FieldType::unsignedTinyInt, type(1));
    EXPECT_EQ(Value(std::int16_t{-32768}), value(2));
    EXPECT_EQ(Value(2147483647), value(3));
    EXPECT_EQ(Value(std::int64_t{9223372036854775807}), value(4));
    EXPECT_EQ(Value(1.5), value(5));
    EXPECT_EQ(Value(-2.25), value(6));
    EXPECT_EQ(Value(contract::Decimal{"-0.50"}), value(7));
    EXPECT_EQ(18, rows.fields()[7].precision);
    EXPECT_EQ(2, rows.fields()[7].numericScale);
    EXPECT_EQ(Value(contract::Decimal{"1234.5000"}), value(8));
    EXPECT_EQ(4, rows.fields()[8].numericScale);
    EXPECT_EQ(Value(*contract::Date::of(2024, 2, 29)), value(9));
    EXPECT_EQ("6F9619FF-8B86-D011-B42D-00C04FC964FF", value(10).text());
    EXPECT_EQ(FieldType::guid, type(10));
    EXPECT_EQ("Città € 🦄", value(11).text());
    EXPECT_EQ(FieldType::varWChar, type(11));
    EXPECT_EQ(FieldType::varChar, type(12));
    EXPECT_EQ("ab   ", value(13).text());
    EXPECT_EQ(FieldType::varWChar, type(14));
    EXPECT_EQ("lungo", value(14).text());
}

// Columns are read in runs of nulls and of values, over the ends of blocks.
TEST_F(OdbcServerValues, NullsStandWhereTheyWere) {
    constexpr std::size_t count = 2100;
    const std::vector<scripted::ResultColumn> columns = {
        {"A", SQL_INTEGER, 10, 0},  {"B", SQL_DOUBLE, 53, 0}, {"C", SQL_TYPE_TIMESTAMP, 23, 3}, {"D", SQL_GUID, 36, 0},
        {"E", SQL_WVARCHAR, 20, 0}, {"F", SQL_DECIMAL, 9, 2}, {"G", SQL_WVARCHAR, 20, 0}};
    const auto isNull = [](std::size_t column, std::size_t row) {
        return column == 6 || (row / (column + 1)) % 2 == 1;
    };
    script().answer = [&](const std::string&) {
        scripted::Answer answer;
        answer.columns = columns;
        for (std::size_t row = 0; row < count; ++row) {
            const std::string digits = std::to_string(1000 + row);
            const std::u16string number(digits.begin(), digits.end());
            std::vector<scripted::Cell> cells = {number,
                                                 number + u".5",
                                                 u"2" + number.substr(1) + u"-02-28",
                                                 u"6F9619FF-8B86-D011-B42D-00C04FC9" + number,
                                                 u"è" + number,
                                                 number + u".25",
                                                 u""};
            for (std::size_t i = 0; i < cells.size(); ++i)
                if (isNull(i, row))
                    cells[i] = std::nullopt;
            answer.rows.push_back(std::move(cells));
        }
        return answer;
    };
    contract::Snapshot rows;
    connection.Read("SELECT * FROM T"_sql, rows);
    ASSERT_EQ(count, rows.rowCount());
    for (std::size_t row = 0; row < count; ++row) {
        const std::string number = std::to_string(1000 + row);
        const Value values[] = {Value(static_cast<std::int32_t>(1000 + row)),
                                Value(1000.5 + static_cast<double>(row)),
                                Value(*contract::Date::of(2000 + std::stoi(number.substr(1)), 2, 28)),
                                Value("6F9619FF-8B86-D011-B42D-00C04FC9" + number),
                                Value("è" + number),
                                Value(contract::Decimal{number + ".25"}),
                                Value("")};
        for (std::size_t i = 0; i < columns.size(); ++i)
            ASSERT_EQ(isNull(i, row) ? Value::null() : values[i], rows.column(i).value(row)) << i << " of " << row;
    }
}

TEST_F(OdbcServerValues, ValuesAtTheirBounds) {
    const std::u16string most(38, u'9');
    script().answer = [&](const std::string&) {
        auto answer = oneRow({{"A", SQL_BIGINT, 19, 0},
                              {"B", SQL_DECIMAL, 38, 0},
                              {"C", SQL_DECIMAL, 38, 4},
                              {"D", SQL_DECIMAL, 19, 4},
                              {"E", SQL_DOUBLE, 53, 0},
                              {"F", SQL_TYPE_TIMESTAMP, 27, 7},
                              {"G", SQL_TYPE_DATE, 10, 0},
                              {"H", SQL_WVARCHAR, 4000, 0},
                              {"I", SQL_VARCHAR, 8000, 0},
                              {"J", SQL_WCHAR, 6, 0},
                              {"K", SQL_WVARCHAR, 10, 0},
                              {"L", SQL_WVARCHAR, 10, 0},
                              {"M", SQL_WVARCHAR, 10, 0}},
                             {u"-9223372036854775808", u"-" + most, u"-" + most.substr(4) + u".9999",
                              u"-922337203685477.5808", u"-1e300", u"2024-02-29 23:59:59.9970000", u"9999-12-31",
                              std::u16string(4000, u'\u20ac'), std::u16string(8000, u'x'), u"ab    ", u"", std::nullopt,
                              std::u16string(u"a") + char16_t{0xD83D} + u"b" + char16_t{0xDE00}});
        return answer;
    };
    contract::Snapshot rows;
    connection.Read("SELECT * FROM T"_sql, rows);
    ASSERT_EQ(1U, rows.rowCount());
    const auto value = [&](std::size_t i) { return rows.column(i).value(0); };
    EXPECT_EQ(Value(std::numeric_limits<std::int64_t>::min()), value(0));
    EXPECT_EQ("-" + std::string(38, '9'), value(1).text());
    EXPECT_EQ("-" + std::string(34, '9') + ".9999", value(2).text());
    EXPECT_EQ(38, rows.fields()[2].precision);
    EXPECT_EQ(4, rows.fields()[2].numericScale);
    EXPECT_EQ(Value(contract::Decimal{"-922337203685477.5808"}), value(3));
    EXPECT_EQ(Value(-1e300), value(4));
    EXPECT_EQ(Value(*contract::Date::of(2024, 2, 29)), value(5)) << "the day, whatever the time";
    EXPECT_EQ(FieldType::date, rows.fields()[6].type);
    EXPECT_EQ(Value(*contract::Date::of(9999, 12, 31)), value(6));
    EXPECT_EQ(12000U, value(7).text().size());
    EXPECT_EQ(8000U, value(8).text().size());
    EXPECT_EQ("ab    ", value(9).text()) << "trailing blanks are the form's to trim";
    EXPECT_FALSE(rows.column(10).isNull(0)) << "an empty text is no null";
    EXPECT_EQ("", value(10).text());
    EXPECT_TRUE(rows.column(11).isNull(0));
    EXPECT_EQ("a\uFFFDb\uFFFD", value(12).text()) << "halves of a character";
}

// By blocks, and value by value beside a text that does not fit into a block.
TEST_F(OdbcServerValues, TypesOfTheServerAloneAreTexts) {
    constexpr int variant = -150;
    constexpr int xml = -152;
    constexpr int time2 = -154;
    constexpr int timestampOffset = -155;
    script().answer = [&](const std::string&) {
        return oneRow({{"A", time2, 16, 7},
                       {"B", timestampOffset, 34, 7},
                       {"C", xml, 0, 0},
                       {"D", variant, 8000, 0},
                       {"E", SQL_VARBINARY, 3, 0},
                       {"F", SQL_LONGVARBINARY, 0, 0}},
                      {u"23:59:59.9999999", u"9999-12-31 23:59:59.9999999 +14:00", std::u16string(3000, u'<'), u"1.5",
                       u"00FFAB", std::u16string(5000, u'0')});
    };
    contract::Snapshot rows;
    connection.Read("SELECT * FROM T"_sql, rows);
    ASSERT_EQ(1U, rows.rowCount());
    EXPECT_EQ("23:59:59.9999999", rows.column(0).value(0).text());
    EXPECT_EQ("9999-12-31 23:59:59.9999999 +14:00", rows.column(1).value(0).text());
    EXPECT_EQ(3000U, rows.column(2).value(0).text().size());
    EXPECT_EQ("1.5", rows.column(3).value(0).text());
    EXPECT_EQ(FieldType::varBinary, rows.fields()[4].type);
    EXPECT_EQ("00FFAB", rows.column(4).value(0).text());
    EXPECT_EQ(FieldType::longVarBinary, rows.fields()[5].type);
    EXPECT_EQ(5000U, rows.column(5).value(0).text().size());
}

TEST_F(OdbcServerValues, ATextOfAnyLengthIsReadWhole) {
    for (const std::size_t length : {512U, 513U, 4096U, 300000U}) {
        script().calls.clear();
        script().answer = [length](const std::string&) {
            auto answer = oneRow({{"ID", SQL_INTEGER, 10, 0}, {"T", SQL_WLONGVARCHAR, 0, 0}, {"U", SQL_NUMERIC, 5, 0}},
                                 {u"7", std::u16string(length, u'\u00e8'), u"12"});
            answer.rows.push_back({std::nullopt, std::nullopt, std::nullopt});
            return answer;
        };
        contract::Snapshot rows;
        connection.Read("SELECT ID, T, U FROM PROVA"_sql, rows);
        ASSERT_EQ(2U, rows.rowCount());
        EXPECT_EQ(2 * length, rows.column(1).text(0).size());
        EXPECT_EQ(7, rows.column(0).integer(0));
        EXPECT_EQ(12, rows.column(2).integer(0));
        for (std::size_t i = 0; i < 3; ++i)
            EXPECT_TRUE(rows.column(i).isNull(1));
        EXPECT_EQ(length > 512 ? 2U : 1U, script().calls.size());
    }
}

TEST_F(OdbcServerValues, NoStatementRunsTwiceThatMayChangeRows) {
    script().answer = [](const std::string&) {
        return oneRow({{"T", SQL_WLONGVARCHAR, 0, 0}}, {std::u16string(5000, u'x')});
    };
    contract::Snapshot rows;
    connection.Read("EXEC Qualcosa"_sql, rows);
    EXPECT_EQ(5000U, rows.column(0).text(0).size());
    EXPECT_EQ(1U, script().calls.size());
}

TEST_F(OdbcServerValues, ADayThatThisProgramDoesNotKnowIsShownAsItIs) {
    script().answer = [](const std::string&) {
        return oneRow({{"D", SQL_TYPE_TIMESTAMP, 23, 3}}, {u"0000-01-01 00:00:00"});
    };
    contract::Snapshot rows;
    connection.Read("SELECT D FROM PROVA"_sql, rows);
    EXPECT_EQ("0000-01-01", rows.column(0).value(0).text());
}

TEST_F(OdbcServerValues, DaysFromTheYear1To9999AreDates) {
    for (const auto* day : {"0001-01-01", "1752-12-31", "1899-12-30", "2262-04-12", "9999-12-31"}) {
        script().answer = [day](const std::string&) {
            const std::string time = std::string(day) + " 00:00:00";
            return oneRow({{"D", SQL_TYPE_TIMESTAMP, 23, 3}}, {std::u16string(time.begin(), time.end())});
        };
        contract::Snapshot rows;
        connection.Read("SELECT D FROM PROVA"_sql, rows);
        EXPECT_EQ(contract::Value(*contract::Date::parseIso(day)), rows.column(0).value(0)) << day;
    }
}

TEST(OdbcServerGuids, AreReadAsTheirText) {
    const auto text = serverString();
    if (!text)
        GTEST_SKIP() << "no database server";
    Connection connection(*text);
    connection.Open();
    for (const char* width : {"10", "5000"}) {
        contract::Snapshot rows;
        connection.readNative("SELECT CAST('6f9619ff-8b86-d011-b42d-00c04fc9640f' AS UNIQUEIDENTIFIER) AS G, "
                              "CAST(NULL AS UNIQUEIDENTIFIER) AS N, CAST(REPLICATE('x', " +
                                  std::string(width) + ") AS NVARCHAR(MAX)) AS T",
                              rows);
        ASSERT_EQ(1U, rows.rowCount());
        EXPECT_EQ(FieldType::guid, rows.fields()[0].type);
        EXPECT_EQ("6F9619FF-8B86-D011-B42D-00C04FC9640F", rows.column(0).text(0));
        EXPECT_TRUE(rows.column(1).isNull(0));
        EXPECT_EQ(std::stoul(width), rows.column(2).text(0).size());
    }
}

} // namespace
} // namespace odbc_test
