#include "contract/Statement.h"

#include "contract/RuntimeError.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

using contract::Date;
using contract::Decimal;
using contract::RuntimeError;
using contract::Statement;
using contract::Value;
using Kind = contract::Statement::Kind;

namespace {

Statement byId(std::int64_t id) {
    Statement statement(" WHERE ID = ");
    return statement.number(id);
}

int refusal(const Value& value) {
    Statement statement;
    try {
        statement.bare(value);
    } catch (const RuntimeError& error) {
        return error.number();
    }
    return 0;
}

TEST(Statement, IsEmptyAtFirst) {
    EXPECT_TRUE(Statement().empty());
    EXPECT_EQ(Statement().text(), "");
}

TEST(Statement, WritesItsFragmentsAndArgumentsToTheBlank) {
    Statement statement("UPDATE T ");
    statement << " SET A = ";
    statement.number(-5) << ", B = '";
    statement.text("x") << "', C = CONVERT(DateTime,'";
    statement.date(*Date::of(2024, 5, 9)) << "',103)";
    EXPECT_EQ(statement.text(), "UPDATE T  SET A = -5, B = 'x', C = CONVERT(DateTime,'09/05/2024',103)");
}

TEST(Statement, DoublesTheQuotesOfATextAndNothingElse) {
    Statement statement("'");
    statement.text("O'Brien; DROP 'x'") << "'";
    EXPECT_EQ(statement.text(), "'O''Brien; DROP ''x'''");
    EXPECT_EQ(statement.argument(statement.pieces()[1]), Value("O'Brien; DROP 'x'"));
}

TEST(Statement, WritesNumbersToTheEndsOfTheirRangeWithoutGrouping) {
    EXPECT_EQ(byId(std::numeric_limits<std::int64_t>::min()).text(), " WHERE ID = -9223372036854775808");
    EXPECT_EQ(byId(1'234'567).text(), " WHERE ID = 1234567");
}

TEST(Statement, WritesBareValues) {
    const auto bare = [](const Value& value) {
        Statement statement("[");
        return (statement.bare(value) << "]").text();
    };
    EXPECT_EQ(bare(Value()), "[]");
    EXPECT_EQ(bare(Value::null()), "[]");
    EXPECT_EQ(bare(7), "[7]");
    EXPECT_EQ(bare(true), "[1]");
    EXPECT_EQ(bare(false), "[0]");
    EXPECT_EQ(bare(" 42 "), "[42]");
    EXPECT_EQ(bare(Decimal{"12.00"}), "[12]");
    EXPECT_EQ(bare(Decimal{"12.50"}), "[12.50]");
    EXPECT_EQ(bare(0.25), "[0.25]");
}

TEST(Statement, RefusesToWriteBareWhatIsNoNumber) {
    EXPECT_EQ(refusal("1 OR 1=1"), RuntimeError::typeMismatch);
    EXPECT_EQ(refusal(""), RuntimeError::typeMismatch);
    EXPECT_EQ(refusal(*Date::of(2024, 1, 1)), RuntimeError::typeMismatch);
}

TEST(Statement, TakesNamesOfLettersDigitsAndUnderscoresOnly) {
    Statement statement("SELECT ");
    EXPECT_EQ(statement.identifier("QZ02_ID").text(), "SELECT QZ02_ID");
    for (const auto* name : {"", "A B", "A;", "A'", "[A]", "È"})
        EXPECT_THROW(statement.identifier(name), RuntimeError) << name;
}

TEST(Statement, HasTheShapeOfItsFragmentsAndKinds) {
    EXPECT_TRUE(byId(1).sameShape(byId(2)));
    EXPECT_EQ(byId(1).shape(), byId(2).shape());
    Statement other(" WHERE ID = ");
    other.text("1");
    EXPECT_FALSE(byId(1).sameShape(other));
    Statement longer = byId(1);
    longer << " ";
    EXPECT_FALSE(byId(1).sameShape(longer));
    Statement text(" WHERE ID = 1");
    EXPECT_EQ(text.text(), byId(1).text());
    EXPECT_FALSE(byId(1).sameShape(text));
}

TEST(Statement, KeepsTheShapeOfTwoWritings) {
    Statement here("SELECT 1");
    static constexpr char elsewhere[] = "SELECT 1";
    Statement there{contract::Fragment(elsewhere)};
    EXPECT_TRUE(here.sameShape(there));
}

TEST(Statement, TakesAnotherOneInWithItsArguments) {
    Statement first("A '");
    first.text("one'") << "' ";
    Statement second("B '");
    second.text("two") << "'";
    first << second << byId(3);
    EXPECT_EQ(first.text(), "A 'one''' B 'two' WHERE ID = 3");
    EXPECT_EQ(second.text(), "B 'two'");
}

TEST(Statement, CanBeDoubled) {
    Statement statement("x'");
    statement.text("y");
    const Statement copy = statement;
    statement << copy;
    EXPECT_EQ(statement.text(), "x'yx'y");
}

TEST(Statement, HandsItsPiecesOver) {
    Statement statement("a");
    statement.number(1).text("t").date(*Date::of(2024, 5, 9)).bare(Decimal{"1.5"});
    ASSERT_EQ(statement.pieces().size(), 5U);
    EXPECT_EQ(statement.characters(statement.pieces()[0]), "a");
    EXPECT_EQ(statement.pieces()[1].kind, Kind::number);
    EXPECT_EQ(statement.argument(statement.pieces()[1]), Value(std::int64_t{1}));
    EXPECT_EQ(statement.argument(statement.pieces()[2]), Value("t"));
    EXPECT_EQ(statement.argument(statement.pieces()[3]), Value(*Date::of(2024, 5, 9)));
    EXPECT_EQ(statement.argument(statement.pieces()[4]), Value(Decimal{"1.5"}));
}

} // namespace
