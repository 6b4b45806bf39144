// What the translator does not know it refuses, quoting the place.

#include "dialect/DialectFixture.h"

namespace dialect_test {
namespace {

class RefusalTest : public DialectTest {};

bool has(const std::string& text, std::string_view part) {
    return text.find(part) != std::string::npos;
}

TEST_F(RefusalTest, QuotesThePlace) {
    EXPECT_EQ(refusalOfText("SELECT K FROM A WHERE K LIKE 'x%'"), "Istruzione SQL non compresa presso «LIKE 'x%'».");
    EXPECT_EQ(refusalOfText("SELECT K FROM A WHERE K = "),
              "Istruzione SQL non compresa presso «SELECT K FROM A WHERE K = » (fine del testo).");
}

TEST_F(RefusalTest, AnEmptyPlaceOfAnArgument) {
    Statement missing;
    missing << "UPDATE QZ02_DISTINTA "
            << " SET QZ02_IDPARENT_QZ02 = ";
    missing.bare(contract::Value::null());
    missing << ","
            << "     QZ02_ID_QZ01 = 1";
    const auto description = refusalOf(missing);
    EXPECT_TRUE(has(description, "Istruzione SQL non compresa presso «,     QZ02_ID_QZ01 = 1»")) << description;

    Statement last;
    last << "SELECT  * FROM  QZ02_DISTINTA  WHERE QZ02_IDPARENT_QZ02 = ";
    last << "   AND QZ02_ID_QZ01 = ";
    last.number(1);
    EXPECT_TRUE(has(refusalOf(last), "«AND QZ02_ID_QZ01 = 1»"));
}

TEST_F(RefusalTest, QuotesArgumentsAsTheServerWouldReadThem) {
    Statement statement;
    statement << "SELECT K FROM A WHERE T = '";
    statement.text("D'Angiò");
    statement << "' UNION SELECT ";
    statement.number(12);
    EXPECT_TRUE(has(refusalOf(statement), "«UNION SELECT 12»"));
}

TEST_F(RefusalTest, TextsAndDatesOutsideQuotes) {
    Statement text;
    text << "SELECT K FROM A WHERE T = ";
    text.text("x OR 1=1");
    EXPECT_TRUE(has(refusalOf(text), "apici"));
    Statement date;
    date << "SELECT K FROM A WHERE G = ";
    date.date(contract::Date());
    EXPECT_TRUE(has(refusalOf(date), "apici"));
}

TEST_F(RefusalTest, ArgumentsThatTouchAWordOrANumber) {
    Statement statement;
    statement << "SELECT K FROM A WHERE N = 1";
    statement.number(2);
    EXPECT_TRUE(has(refusalOf(statement), "spazio"));
    Statement word;
    word << "SELECT K FROM A WHERE N = ";
    word.number(2);
    word << "AND K = 1";
    EXPECT_TRUE(has(refusalOf(word), "spazio"));
}

TEST_F(RefusalTest, ATextWithoutEnd) {
    Statement statement;
    statement << "SELECT K FROM A WHERE T = '";
    statement.text("x");
    EXPECT_TRUE(has(refusalOf(statement), "apice"));
}

TEST_F(RefusalTest, DatesThatAreNone) {
    EXPECT_TRUE(has(refusalOfText("SELECT CONVERT(DateTime,'31/02/2024',103) FROM A"), "data"));
    EXPECT_TRUE(has(refusalOfText("SELECT K FROM A WHERE G = 'ieri'"), "data"));
    EXPECT_TRUE(has(refusalOfText("SELECT CONVERT(DateTime,'01/02/2024',101) FROM A"), "103"));
    EXPECT_TRUE(has(refusalOfText("SELECT CONVERT(DateTime,'01/02/2024') FROM A"), "«)"));
    EXPECT_TRUE(has(refusalOfText("SELECT CONVERT(VarChar(10),G,103) FROM A"), "DateTime"));
    EXPECT_TRUE(has(refusalOfText("SELECT CONVERT(DateTime,T,103) FROM A"), "CONVERT"));
    EXPECT_TRUE(has(refusalOfText("SELECT CAST(G AS Char) FROM A"), "CAST"));
}

TEST_F(RefusalTest, NumbersThatAreNone) {
    EXPECT_TRUE(has(refusalOfText("SELECT K FROM A WHERE N = 'dodici'"), "numero"));
    EXPECT_TRUE(has(refusalOfText("SELECT K FROM A WHERE N = '1.5'"), "numero"));
}

TEST_F(RefusalTest, SumsOfWhoKnowsWhat) {
    EXPECT_TRUE(has(refusalOfText("SELECT X + Y FROM Ignota"), "«X + Y FROM Ignota»"));
    EXPECT_TRUE(has(refusalOfText("SELECT T + N FROM A"), "testo"));
    EXPECT_TRUE(has(refusalOfText("SELECT T + 1 FROM A"), "testo"));
    EXPECT_TRUE(has(refusalOfText("SELECT G + 1 FROM A"), "numero"));
    EXPECT_TRUE(has(refusalOfText("SELECT T * 2 FROM A"), "numero"));
}

TEST_F(RefusalTest, ValuesWhereConditionsBelongAndTheOtherWayRound) {
    EXPECT_TRUE(has(refusalOfText("SELECT K FROM A WHERE K"), "condizione"));
    EXPECT_TRUE(has(refusalOfText("SELECT K FROM A WHERE K = 1 AND N"), "condizione"));
    EXPECT_TRUE(has(refusalOfText("SELECT K = 1 FROM A"), "valore"));
    EXPECT_TRUE(has(refusalOfText("SELECT K FROM A WHERE (K = 1) = 2"), "valore"));
}

TEST_F(RefusalTest, ConstructsOutsideTheSubset) {
    for (const std::string_view text : {"SELECT K FROM A, B",
                                        "SELECT K FROM A CROSS JOIN B",
                                        "SELECT K FROM A FULL OUTER JOIN B ON A.K = B.K",
                                        "SELECT K FROM (SELECT K FROM A) X",
                                        "SELECT K FROM A GROUP BY K",
                                        "SELECT K FROM A UNION SELECT K FROM B",
                                        "SELECT K FROM dbo.A",
                                        "SELECT K FROM A WHERE EXISTS (SELECT 1 FROM B)",
                                        "SELECT GetDate()",
                                        "SELECT TOP 10 PERCENT K FROM A",
                                        "SELECT \"K\" FROM A",
                                        "SELECT K FROM A -- nota",
                                        "SELECT K /* x */ FROM A",
                                        "DROP TABLE A",
                                        "EXEC sp_who",
                                        "SELECT K FROM A; DELETE FROM A",
                                        "INSERT INTO A (K) SELECT K FROM B",
                                        "INSERT INTO A (K, N) VALUES (1)",
                                        "UPDATE A SET K = 1 FROM B",
                                        "SELECT K FROM A WHERE K = @p",
                                        "SELECT K FROM A WITH (NOLOCK)",
                                        "SELECT",
                                        "",
                                        "SELECT FROM A",
                                        "SELECT K FROM A WHERE (K = 1",
                                        "SELECT K FROM A WHERE K = 1)",
                                        "SELECT ISNULL(K) FROM A",
                                        "SELECT (SELECT K, N FROM B) FROM A",
                                        "SELECT K FROM A WHERE K IN (SELECT * FROM B)",
                                        "SELECT A.K FROM A INNER JOIN A ON 1 = 1",
                                        "SELECT 1a FROM A",
                                        "SELECT 1. FROM A",
                                        "SELECT [K FROM A",
                                        "SELECT CASE END FROM A",
                                        "SELECT ? FROM A"}) {
        const auto description = refusalOfText(text);
        EXPECT_TRUE(has(description, "Istruzione SQL non compresa presso «")) << text;
    }
}

TEST_F(RefusalTest, NestingWithoutEndDoesNotExhaustTheStack) {
    std::string text = "SELECT ";
    text.append(3000, '(');
    EXPECT_TRUE(has(refusalOfText(text), "annidati"));
    text = "SELECT K FROM A WHERE K = 1";
    for (int i = 0; i < 100000; ++i)
        text += " AND K = 1";
    EXPECT_TRUE(has(refusalOfText(text), "lunga"));
}

} // namespace
} // namespace dialect_test
