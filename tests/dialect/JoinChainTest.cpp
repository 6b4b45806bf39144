// Join trees become chains that start at the preserved table, or are refused.

#include "dialect/DialectFixture.h"

namespace dialect_test {
namespace {

class JoinChainTest : public DialectTest {
protected:
    std::string fromOf(std::string_view joins) const {
        const std::string text = textOf("SELECT 1 AS X FROM " + std::string(joins));
        return text.substr(text.find(" FROM ") + 6);
    }
    std::string refusalOfJoins(std::string_view joins) const {
        return refusalOfText("SELECT 1 AS X FROM " + std::string(joins));
    }
};

TEST_F(JoinChainTest, ChainsStayAsTheyAre) {
    EXPECT_EQ(fromOf("A LEFT OUTER JOIN B ON A.K = B.K INNER JOIN C ON A.K = C.K"),
              "A LEFT JOIN B ON A.K = B.K JOIN C ON A.K = C.K");
    EXPECT_EQ(fromOf("A X JOIN A AS Y ON X.K = Y.N"), "A AS X JOIN A AS Y ON X.K = Y.N");
}

TEST_F(JoinChainTest, ARightJoinIsTurnedRound) {
    EXPECT_EQ(fromOf("A RIGHT JOIN B ON A.K = B.K"), "B LEFT JOIN A ON A.K = B.K");
    EXPECT_EQ(fromOf("A LEFT JOIN B ON A.K = B.K RIGHT OUTER JOIN C ON A.K = C.K"),
              "C LEFT JOIN A ON A.K = C.K LEFT JOIN B ON A.K = B.K");
}

TEST_F(JoinChainTest, OnClausesNestLikeParentheses) {
    const std::string expected = "A LEFT JOIN B ON A.K = B.K LEFT JOIN C ON B.N = C.N";
    EXPECT_EQ(fromOf("A LEFT JOIN (B LEFT JOIN C ON B.N = C.N) ON A.K = B.K"), expected);
    EXPECT_EQ(fromOf("A LEFT JOIN B LEFT JOIN C ON B.N = C.N ON A.K = B.K"), expected);
    EXPECT_EQ(fromOf("A LEFT JOIN C RIGHT JOIN B ON B.N = C.N ON A.K = B.K"), expected);
    EXPECT_EQ(fromOf("A LEFT JOIN D RIGHT JOIN C RIGHT JOIN B ON B.N = C.N ON D.K = B.K ON A.K = B.K"),
              "A LEFT JOIN B ON A.K = B.K LEFT JOIN C ON B.N = C.N LEFT JOIN D ON D.K = B.K");
    EXPECT_EQ(fromOf("A LEFT JOIN B LEFT JOIN C ON B.N = C.N LEFT JOIN D ON C.K = D.K ON A.K = B.K"),
              expected + " LEFT JOIN D ON C.K = D.K");
}

TEST_F(JoinChainTest, InnerJoinsOfBlocks) {
    EXPECT_EQ(fromOf("A INNER JOIN (B LEFT JOIN C ON B.N = C.N) ON A.K = B.K"),
              "A JOIN B ON A.K = B.K LEFT JOIN C ON B.N = C.N");
    EXPECT_EQ(fromOf("A INNER JOIN (B INNER JOIN C ON B.N = C.N) ON A.K = B.K"),
              "A JOIN B ON A.K = B.K JOIN C ON B.N = C.N");
}

TEST_F(JoinChainTest, ConditionsThatRejectNulls) {
    for (const std::string_view condition :
         {"B.N = C.N AND C.K > 0", "B.N < C.N OR B.K = C.K", "NOT (B.N = C.N)", "B.N + 1 = C.N", "B.N IS NOT NULL",
          "RTrim(B.T) = C.T", "ISNULL(B.N, B.K) = C.N", "B.N = C.N OR B.K IS NOT NULL"})
        EXPECT_EQ(fromOf("A LEFT JOIN (B LEFT JOIN C ON " + std::string(condition) + ") ON A.K = B.K").substr(0, 29),
                  "A LEFT JOIN B ON A.K = B.K LE")
            << condition;
}

TEST_F(JoinChainTest, ConditionsThatMayHoldForNullsAreRefused) {
    for (const std::string_view condition :
         {"C.K = 1", "B.N IS NULL", "ISNULL(B.N, 0) = C.N", "B.N = C.N OR C.K = 1", "NOT (B.N IS NOT NULL)",
          "CASE WHEN B.N = 1 THEN 1 ELSE 0 END = C.N", "C.N IN (1, 2)", "ISNULL(B.N, C.K) = C.N", "A.K = C.K"}) {
        const auto description =
            refusalOfJoins("A LEFT JOIN (B LEFT JOIN C ON " + std::string(condition) + ") ON A.K = B.K");
        EXPECT_NE(description.find("valori nulli"), std::string::npos) << condition << ": " << description;
    }
}

TEST_F(JoinChainTest, BlocksThatCannotBeTakenApartAreRefused) {
    EXPECT_NE(refusalOfJoins("A LEFT JOIN (B INNER JOIN C ON B.N = C.N) ON A.K = B.K").find("INNER JOIN"),
              std::string::npos);
    EXPECT_NE(refusalOfJoins("A LEFT JOIN (B LEFT JOIN C ON B.N = C.N) ON A.K = C.K").find("prima tabella"),
              std::string::npos);
    EXPECT_NE(refusalOfJoins("A INNER JOIN (B LEFT JOIN C ON B.N = C.N) ON A.K = C.K").find("prima tabella"),
              std::string::npos);
    // Whose column it is cannot be told without a catalog.
    EXPECT_NE(
        refusalOfJoins("A LEFT JOIN (Ignota LEFT JOIN Altra ON Ignota.N = Altra.N) ON A.K = Boh").find("prima tabella"),
        std::string::npos);
}

TEST_F(JoinChainTest, AStarKeepsTheOrderInWhichTheTablesWereWritten) {
    EXPECT_EQ(textOf("SELECT * FROM A RIGHT JOIN B ON A.K = B.K"), "SELECT A.*, B.* FROM B LEFT JOIN A ON A.K = B.K");
}

TEST_F(JoinChainTest, UnqualifiedColumnsAreFoundInTheCatalog) {
    EXPECT_EQ(fromOf("A LEFT JOIN (QZ02_DISTINTA LEFT JOIN QZ01_TIPODISTINTA ON QZ02_ID_QZ01 = QZ01_ID) "
                     "ON A.K = QZ02_ID"),
              "A LEFT JOIN QZ02_DISTINTA ON A.K = QZ02_ID LEFT JOIN QZ01_TIPODISTINTA ON QZ02_ID_QZ01 = QZ01_ID");
}

} // namespace
} // namespace dialect_test
