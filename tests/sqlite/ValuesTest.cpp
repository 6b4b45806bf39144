// What an outside program may have stored, and how it is read.

#include "sqlite/SqliteFixture.h"

namespace sqlite_test {
namespace {

using contract::FieldType;
using contract::Value;

class ValuesTest : public SqliteTest {
protected:
    Value single(const contract::Statement& statement) {
        contract::Recordset rows;
        rows.Open(statement, connection);
        return rows.Fields(0).Value();
    }
    FieldType typeOf(const contract::Statement& statement) {
        contract::Recordset rows;
        rows.Open(statement, connection);
        return rows.Fields(0).Type();
    }
};

TEST_F(ValuesTest, FieldTypesComeFromTheTablesAndFromTheExpressions) {
    EXPECT_EQ(typeOf("SELECT CODICE FROM PROVA"_sql), FieldType::integer);
    EXPECT_EQ(typeOf("SELECT ATTIVO FROM PROVA"_sql), FieldType::integer);
    EXPECT_EQ(typeOf("SELECT IMPORTO FROM PROVA"_sql), FieldType::numeric);
    EXPECT_EQ(typeOf("SELECT NOME FROM PROVA"_sql), FieldType::varWChar);
    EXPECT_EQ(typeOf("SELECT DAL FROM PROVA"_sql), FieldType::date);
    EXPECT_EQ(typeOf("SELECT Count(*) AS C FROM PROVA"_sql), FieldType::integer);
    EXPECT_EQ(typeOf("SELECT ISNULL(DAL,'01/01/2000') AS D FROM PROVA"_sql), FieldType::date);
    EXPECT_EQ(typeOf("SELECT ISNULL(ATTIVO,0) AS D FROM PROVA"_sql), FieldType::integer);
    EXPECT_EQ(typeOf("SELECT NOME + ' ' + NOME AS D FROM PROVA"_sql), FieldType::varWChar);
    EXPECT_EQ(typeOf("SELECT (SELECT CHIAVE FROM CHIAVI WHERE CHIAVE = CODICE) AS D FROM PROVA"_sql),
              FieldType::integer);
}

TEST_F(ValuesTest, WholeNumbersWiderThanTheirTypeStayWhatTheyAre) {
    connection.runNative("INSERT INTO PROVA (CODICE) VALUES (9007199254740993)");
    EXPECT_EQ(single("SELECT CODICE FROM PROVA"_sql), Value(std::int64_t{9007199254740993}));
}

TEST_F(ValuesTest, TextInANumberColumnIsKept) {
    connection.runNative("INSERT INTO PROVA (CODICE) VALUES ('dodici'), (12), ('13'), (1.5)");
    contract::Recordset rows;
    rows.Open("SELECT CODICE FROM PROVA ORDER BY ID"_sql, connection);
    ASSERT_EQ(rows.RecordCount(), 4U);
    EXPECT_EQ(rows["CODICE"].text(), "dodici");
    rows.MoveNext();
    EXPECT_EQ(rows["CODICE"].integer(), 12);
    rows.MoveNext();
    EXPECT_EQ(rows["CODICE"].integer(), 13);
    rows.MoveNext();
    EXPECT_EQ(rows["CODICE"], Value(1.5));
}

TEST_F(ValuesTest, DatesWithATimeAreCutAndOddOnesKept) {
    connection.runNative("INSERT INTO PROVA (DAL) VALUES ('2024-06-30 23:59:59'), ('2024-06-30T00:00:00'), "
                         "('30/06/2024'), ('2024-02-30'), (20240630), (''), ('2024-06-301')");
    contract::Recordset rows;
    rows.Open("SELECT DAL FROM PROVA ORDER BY ID"_sql, connection);
    const Value day(*contract::Date::of(2024, 6, 30));
    const Value expected[] = {day, day, "30/06/2024", "2024-02-30", std::int64_t{20240630}, "", "2024-06-301"};
    for (const auto& value : expected) {
        EXPECT_EQ(rows["DAL"], value);
        rows.MoveNext();
    }
}

TEST_F(ValuesTest, AmountsHaveTwoDecimalsAtLeast) {
    connection.runNative("INSERT INTO PROVA (IMPORTO) VALUES (12), (12.5), (12.345), (-0.05), ('x')");
    contract::Recordset rows;
    rows.Open("SELECT IMPORTO FROM PROVA ORDER BY ID"_sql, connection);
    for (const std::string_view text : {"12.00", "12.50", "12.345", "-0.05", "x"}) {
        EXPECT_EQ(rows["IMPORTO"].text(), text);
        rows.MoveNext();
    }
}

TEST_F(ValuesTest, TextsKeepBlanksAndLineEnds) {
    contract::Statement statement;
    statement << "INSERT INTO PROVA (NOME) VALUES ('";
    statement.text("  a\r\n\tb  ") << "')";
    connection.Execute(statement);
    EXPECT_EQ(single("SELECT NOME FROM PROVA"_sql).text(), "  a\r\n\tb  ");
}

TEST_F(ValuesTest, ManyRowsWithNullsKeepTheirPlaces) {
    connection.BeginTrans();
    for (int i = 0; i < 1000; ++i) {
        contract::Statement statement;
        if (i % 3 == 0)
            statement << "INSERT INTO PROVA (NOME) VALUES (NULL)";
        else {
            statement << "INSERT INTO PROVA (CODICE, NOME, DAL) VALUES (";
            statement.number(i) << ", '";
            statement.text("n" + std::to_string(i)) << "', CONVERT(DateTime,'";
            statement.date(contract::Date().plusDays(i)) << "',103))";
        }
        connection.Execute(statement);
    }
    connection.CommitTrans();
    contract::Snapshot rows;
    connection.Read("SELECT CODICE, NOME, DAL FROM PROVA ORDER BY ID"_sql, rows);
    ASSERT_EQ(rows.rowCount(), 1000U);
    for (std::size_t i = 0; i < rows.rowCount(); ++i) {
        if (i % 3 == 0) {
            EXPECT_TRUE(rows.column(0).isNull(i) && rows.column(1).isNull(i) && rows.column(2).isNull(i));
            continue;
        }
        EXPECT_EQ(rows.column(0).integer(i), static_cast<std::int64_t>(i));
        EXPECT_EQ(rows.column(1).text(i), "n" + std::to_string(i));
        EXPECT_EQ(rows.column(2).value(i), Value(contract::Date().plusDays(static_cast<std::int32_t>(i))));
    }
}

} // namespace
} // namespace sqlite_test
