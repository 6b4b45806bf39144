// Each construct of the dialect, alone.

#include "dialect/DialectFixture.h"

namespace dialect_test {
namespace {

using platform::dialect::ValueKind;
using Bindings = std::vector<Binding>;
using Pieces = std::vector<std::size_t>;

class ConstructTest : public DialectTest {};

TEST_F(ConstructTest, SelectKeepsListAliasesAndWords) {
    EXPECT_EQ(textOf("SELECT K, N AS Numero, T Testo FROM A"), "SELECT K, N AS Numero, T AS Testo FROM A");
    EXPECT_EQ(textOf("select k from a where n = 1 order by k"), "SELECT k FROM a WHERE n = 1 ORDER BY k");
    EXPECT_EQ(textOf("  SELECT  *  FROM  A ;"), "SELECT * FROM A");
    EXPECT_EQ(textOf("SELECT A.*, B.K FROM A INNER JOIN B ON A.K = B.K"), "SELECT A.*, B.K FROM A JOIN B ON A.K = B.K");
    EXPECT_EQ(textOf("SELECT DISTINCT K FROM A"), "SELECT DISTINCT K FROM A");
    EXPECT_EQ(textOf("SELECT [K] FROM [A]"), "SELECT K FROM A");
}

TEST_F(ConstructTest, TopBecomesLimit) {
    EXPECT_EQ(textOf("SELECT TOP 1 * FROM A WHERE K = 1 ORDER BY N DESC"),
              "SELECT * FROM A WHERE K = 1 ORDER BY N DESC LIMIT 1");
    EXPECT_EQ(textOf("SELECT TOP (5) K FROM A"), "SELECT K FROM A LIMIT 5");
    Statement statement;
    statement << "SELECT TOP ";
    statement.number(3);
    statement << " K FROM A";
    EXPECT_EQ(translate(statement).text, "SELECT K FROM A LIMIT ?1");
}

TEST_F(ConstructTest, DateConversionOfAnArgument) {
    Statement statement;
    statement << "SELECT K FROM A WHERE G > CONVERT(DateTime,'";
    statement.date(*contract::Date::of(2024, 6, 30));
    statement << "',103)";
    const auto translation = translate(statement);
    EXPECT_EQ(translation.text, "SELECT K FROM A WHERE G > ?1");
    EXPECT_EQ(bindingsOf(translation), Bindings{Binding::date});
    EXPECT_EQ(piecesOf(translation), Pieces{1});
}

TEST_F(ConstructTest, DateConversionOfATextArgumentAndOfALiteral) {
    Statement statement;
    statement << "SELECT K FROM A WHERE CONVERT(DateTime,'";
    statement.text("30/06/2024");
    statement << "',103) BETWEEN G AND CONVERT( datetime , '31/12/2099' , 103 )";
    const auto translation = translate(statement);
    EXPECT_EQ(translation.text, "SELECT K FROM A WHERE ?1 BETWEEN G AND '2099-12-31'");
    EXPECT_EQ(bindingsOf(translation), Bindings{Binding::date});
}

TEST_F(ConstructTest, NullDefaultTakesTheTypeOfTheFirstArgument) {
    EXPECT_EQ(textOf("SELECT ISNULL(G,'01/01/2000') AS Inizio FROM A"),
              "SELECT ifnull(G, '2000-01-01') AS Inizio FROM A");
    EXPECT_EQ(textOf("SELECT isnull(T,'01/01/2000') FROM A"), "SELECT ifnull(T, '01/01/2000') FROM A");
    EXPECT_EQ(textOf("SELECT ISNULL(N,0) FROM A"), "SELECT ifnull(N, 0) FROM A");
    EXPECT_EQ(textOf("SELECT ISNULL(N,'') FROM A"), "SELECT ifnull(N, 0) FROM A");
    EXPECT_EQ(textOf("SELECT ISNULL(N,' 12 ') FROM A"), "SELECT ifnull(N, 12) FROM A");
}

TEST_F(ConstructTest, PlusJoinsTextsAndAddsNumbers) {
    EXPECT_EQ(textOf("SELECT T + '-' + T FROM A"), "SELECT T || '-' || T FROM A");
    EXPECT_EQ(textOf("SELECT N + 1 FROM A"), "SELECT N + 1 FROM A");
    EXPECT_EQ(textOf("SELECT RTrim(X) + Y FROM Ignota"), "SELECT rtrim(X) || Y FROM Ignota");
    EXPECT_EQ(textOf("SELECT RTrim(CAST(N AS Char)) + ' ' + ISNULL(T,'') FROM A"),
              "SELECT rtrim(CAST(N AS TEXT)) || ' ' || ifnull(T, '') FROM A");
    EXPECT_EQ(textOf("SELECT T + (T + T) FROM A"), "SELECT T || (T || T) FROM A");
    EXPECT_EQ(textOf("SELECT (N + 1) * 2 - -N FROM A"), "SELECT (N + 1) * 2 - - N FROM A");
    EXPECT_EQ(textOf("SELECT N - (N - 1) FROM A"), "SELECT N - (N - 1) FROM A");
    EXPECT_EQ(textOf("SELECT N * 2 + N / 3 % 4 FROM A"), "SELECT N * 2 + N / 3 % 4 FROM A");
}

TEST_F(ConstructTest, CastToTextAndToWholeNumber) {
    EXPECT_EQ(textOf("SELECT CAST(N AS Char) FROM A"), "SELECT CAST(N AS TEXT) FROM A");
    EXPECT_EQ(textOf("SELECT CAST(T AS VarChar(3)) FROM A"), "SELECT substr(T, 1, 3) FROM A");
    EXPECT_EQ(textOf("SELECT CAST(Q AS Int) FROM A"), "SELECT CAST(Q AS INTEGER) FROM A");
}

TEST_F(ConstructTest, Functions) {
    EXPECT_EQ(textOf("SELECT Count(*) as Conta FROM A"), "SELECT count(*) AS Conta FROM A");
    EXPECT_EQ(textOf("SELECT COUNT(DISTINCT K), Min(N), MAX(N), Sum(N) FROM A"),
              "SELECT count(DISTINCT K), min(N), max(N), sum(N) FROM A");
    EXPECT_EQ(textOf("SELECT LTrim(RTrim(T)), Upper(T), Lower(T) FROM A"),
              "SELECT ltrim(rtrim(T)), upper(T), lower(T) FROM A");
}

TEST_F(ConstructTest, Conditions) {
    EXPECT_EQ(textOf("SELECT K FROM A WHERE NOT (K = 1 OR N <> 2) AND T IS NOT NULL AND G IS NULL"),
              "SELECT K FROM A WHERE NOT (K = 1 OR N <> 2) AND T IS NOT NULL AND G IS NULL");
    EXPECT_EQ(textOf("SELECT K FROM A WHERE (K = 1 OR K = 2) AND (N < 3 AND N >= 1)"),
              "SELECT K FROM A WHERE (K = 1 OR K = 2) AND N < 3 AND N >= 1");
    EXPECT_EQ(textOf("SELECT K FROM A WHERE K = 1 OR K = 2 AND N = 3"),
              "SELECT K FROM A WHERE K = 1 OR K = 2 AND N = 3");
    EXPECT_EQ(textOf("SELECT K FROM A WHERE N NOT BETWEEN 1 AND 3 AND K != 4"),
              "SELECT K FROM A WHERE N NOT BETWEEN 1 AND 3 AND K != 4");
    EXPECT_EQ(textOf("SELECT K FROM A WHERE 1=0 "), "SELECT K FROM A WHERE 1 = 0");
    EXPECT_EQ(textOf("SELECT K FROM A WHERE K IN (1, 2) AND T NOT IN ('x')"),
              "SELECT K FROM A WHERE K IN (1, 2) AND T NOT IN ('x')");
    EXPECT_EQ(textOf("SELECT K FROM A WHERE K NOT IN (SELECT N FROM B WHERE B.K = A.K)"),
              "SELECT K FROM A WHERE K NOT IN (SELECT N FROM B WHERE B.K = A.K)");
}

TEST_F(ConstructTest, ATextBesideANumberIsComparedAsANumber) {
    EXPECT_EQ(textOf("SELECT K FROM A WHERE T = 5034"), "SELECT K FROM A WHERE CAST(T AS NUMERIC) = 5034");
    EXPECT_EQ(textOf("SELECT A.K FROM A INNER JOIN B ON A.N = B.T"),
              "SELECT A.K FROM A JOIN B ON A.N = CAST(B.T AS NUMERIC)");
    EXPECT_EQ(textOf("SELECT K FROM A WHERE T = '5034' AND T = X"), "SELECT K FROM A WHERE T = '5034' AND T = X");
}

TEST_F(ConstructTest, Cases) {
    EXPECT_EQ(textOf("SELECT (CASE WHEN N > 1 THEN T ELSE 'uno' END) AS X FROM A"),
              "SELECT CASE WHEN N > 1 THEN T ELSE 'uno' END AS X FROM A");
    EXPECT_EQ(textOf("SELECT CASE N WHEN 1 THEN 2 WHEN '3' THEN 4 END FROM A"),
              "SELECT CASE N WHEN 1 THEN 2 WHEN 3 THEN 4 END FROM A");
    EXPECT_EQ(textOf("SELECT CASE WHEN N = 1 THEN G ELSE '01/02/2003' END FROM A"),
              "SELECT CASE WHEN N = 1 THEN G ELSE '2003-02-01' END FROM A");
}

TEST_F(ConstructTest, SubqueryInTheSelectListWithAJoinInIt) {
    EXPECT_EQ(textOf("SELECT K, (SELECT B.T FROM B INNER JOIN C ON B.K = C.K AND A.N = B.N) AS X FROM A"),
              "SELECT K, (SELECT B.T FROM B JOIN C ON B.K = C.K AND A.N = B.N) AS X FROM A");
}

TEST_F(ConstructTest, Writes) {
    EXPECT_EQ(textOf("UPDATE A SET K = K + 1, T = 'x', G = CONVERT(DateTime,'01/02/2003',103) WHERE K = 1"),
              "UPDATE A SET K = K + 1, T = 'x', G = '2003-02-01' WHERE K = 1");
    EXPECT_EQ(textOf("INSERT INTO A (K, T) VALUES ('7', 'sette')"), "INSERT INTO A (K, T) VALUES (7, 'sette')");
    EXPECT_EQ(textOf("INSERT A (K) VALUES (1), (NULL)"), "INSERT INTO A (K) VALUES (1), (NULL)");
    EXPECT_EQ(textOf("INSERT INTO A VALUES ('1', 2, 'x', '01/02/2003', 1.5)"),
              "INSERT INTO A VALUES (1, 2, 'x', '2003-02-01', 1.5)");
    EXPECT_EQ(textOf("DELETE FROM A WHERE K = 1"), "DELETE FROM A WHERE K = 1");
    EXPECT_EQ(textOf("delete A"), "DELETE FROM A");
}

TEST_F(ConstructTest, TextLiteralsKeepTheirQuotesAndAccents) {
    EXPECT_EQ(textOf("SELECT K FROM A WHERE T = 'D''Angiò'"), "SELECT K FROM A WHERE T = 'D''Angiò'");
    EXPECT_EQ(textOf("SELECT K FROM A WHERE T = ''''"), "SELECT K FROM A WHERE T = ''''");
    EXPECT_EQ(textOf("SELECT K FROM A WHERE T = ''"), "SELECT K FROM A WHERE T = ''");
    EXPECT_EQ(textOf("SELECT K FROM A WHERE T = '-- /* SELECT'"), "SELECT K FROM A WHERE T = '-- /* SELECT'");
}

TEST_F(ConstructTest, ArgumentsBetweenQuotes) {
    Statement statement;
    statement << "SELECT K FROM A WHERE T = '";
    statement.text("O'Brien");
    statement << "' AND N = '";
    statement.text("12");
    statement << "' AND T <> 'prima ";
    statement.text("x");
    statement << " dopo' AND T = '";
    statement.number(5);
    statement << "'";
    const auto translation = translate(statement);
    EXPECT_EQ(translation.text,
              "SELECT K FROM A WHERE T = ?1 AND N = ?2 AND T <> ('prima ' || ?3 || ' dopo') AND T = ?4");
    EXPECT_EQ(bindingsOf(translation), (Bindings{Binding::text, Binding::whole, Binding::text, Binding::text}));
    EXPECT_EQ(piecesOf(translation), (Pieces{1, 3, 5, 7}));
}

TEST_F(ConstructTest, BareArgumentsAndNegativeOnes) {
    Statement statement;
    statement << "SELECT K FROM A WHERE N = ";
    statement.number(-5);
    statement << " AND Q > ";
    statement.bare(contract::Value(contract::Decimal{"12.50"}));
    statement << "   AND K IN (";
    statement.number(1);
    statement << ",";
    statement.number(2);
    statement << ")";
    const auto translation = translate(statement);
    EXPECT_EQ(translation.text, "SELECT K FROM A WHERE N = ?1 AND Q > ?2 AND K IN (?3, ?4)");
    EXPECT_EQ(bindingsOf(translation), Bindings(4, Binding::number));
}

TEST_F(ConstructTest, AQuotedArgumentBesideADateColumnIsADay) {
    Statement statement;
    statement << "SELECT K FROM A WHERE G >= '";
    statement.text("01/02/2003");
    statement << "'";
    EXPECT_EQ(bindingsOf(translate(statement)), Bindings{Binding::date});
}

TEST_F(ConstructTest, IdentifiersKnownAtRunTimeAreNames) {
    Statement statement;
    statement << "UPDATE ";
    statement.identifier("QZ02_DISTINTA");
    statement << " SET ";
    statement.identifier("QZ02_DATAFINEVAL");
    statement << " = NULL WHERE QZ02_ID = ";
    statement.number(1);
    EXPECT_EQ(translate(statement).text, "UPDATE QZ02_DISTINTA SET QZ02_DATAFINEVAL = NULL WHERE QZ02_ID = ?1");
}

TEST_F(ConstructTest, NamesThatTheEngineReservesAreBracketed) {
    EXPECT_EQ(textOf("SELECT Limit FROM [Order Details]"), "SELECT [Limit] FROM [Order Details]");
}

TEST_F(ConstructTest, ResultColumnsHaveNamesAndKinds) {
    const auto columns = translateText("SELECT K, A.T AS Testo, Count(*), ISNULL(G,'01/01/2000') AS D, T + T AS TT, "
                                       "Q, (SELECT T FROM B) AS S, Ignota FROM A")
                             .columns;
    ASSERT_TRUE(columns.has_value());
    ASSERT_EQ(columns->size(), 8U);
    const auto expect = [&](std::size_t i, std::string_view name, ValueKind kind) {
        EXPECT_EQ((*columns)[i].name, name);
        EXPECT_EQ((*columns)[i].kind, kind) << name;
    };
    expect(0, "K", ValueKind::whole);
    expect(1, "Testo", ValueKind::text);
    expect(2, "", ValueKind::whole);
    expect(3, "D", ValueKind::date);
    expect(4, "TT", ValueKind::text);
    expect(5, "Q", ValueKind::amount);
    expect(6, "S", ValueKind::text);
    expect(7, "Ignota", ValueKind::unknown);
}

TEST_F(ConstructTest, AStarOverAKnownTableGivesItsColumnsInOrder) {
    const auto columns = translateText("SELECT * FROM CG16_ANAGGEN").columns;
    ASSERT_TRUE(columns.has_value());
    ASSERT_EQ(columns->size(), 2U);
    EXPECT_EQ((*columns)[0].name, "CG16_CODICE");
    EXPECT_EQ((*columns)[1].name, "CG16_RAGSOANAG");
    EXPECT_FALSE(translateText("SELECT * FROM Ignota").columns.has_value());
    EXPECT_FALSE(translateText("DELETE FROM A").columns.has_value());
}

} // namespace
} // namespace dialect_test
