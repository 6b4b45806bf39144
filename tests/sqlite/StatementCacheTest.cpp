// A shape is translated and prepared once.

#include "sqlite/SqliteFixture.h"

namespace sqlite_test {
namespace {

class StatementCacheTest : public SqliteTest {
protected:
    contract::Statement byCode(std::int64_t code) {
        contract::Statement statement;
        statement << "SELECT NOME FROM PROVA WHERE CODICE = ";
        return statement.number(code);
    }
};

TEST_F(StatementCacheTest, TheSecondUseOfAShapeFindsIt) {
    contract::Snapshot rows;
    connection.Read(byCode(1), rows);
    const auto first = rows.fields().data();
    connection.Read(byCode(2), rows);
    connection.Read(byCode(3), rows);
    EXPECT_EQ(connection.statements().misses(), 1U);
    EXPECT_EQ(connection.statements().hits(), 2U);
    EXPECT_EQ(connection.statements().size(), 1U);
    EXPECT_EQ(rows.fields().data(), first) << "the columns are described once";
}

TEST_F(StatementCacheTest, OtherKindsOfArgumentsAreAnotherShape) {
    contract::Statement text;
    text << "SELECT NOME FROM PROVA WHERE CODICE = '";
    text.text("1") << "'";
    contract::Statement number;
    number << "SELECT NOME FROM PROVA WHERE CODICE = '";
    number.number(1) << "'";
    contract::Snapshot rows;
    connection.Read(text, rows);
    connection.Read(number, rows);
    EXPECT_EQ(connection.statements().size(), 2U);
}

TEST_F(StatementCacheTest, ItIsBounded) {
    contract::Snapshot rows;
    for (std::size_t i = 0; i < platform::sqlite::StatementCache::capacity + 50; ++i) {
        contract::Statement statement;
        statement << "SELECT NOME AS ";
        statement.identifier("C" + std::to_string(i)) << " FROM PROVA";
        connection.Read(statement, rows);
        connection.Read(byCode(1), rows); // always in use, so never the one to go
    }
    EXPECT_EQ(connection.statements().size(), platform::sqlite::StatementCache::capacity);
    const auto hits = connection.statements().hits();
    connection.Read(byCode(1), rows);
    EXPECT_EQ(connection.statements().hits(), hits + 1);
}

TEST_F(StatementCacheTest, AShapeKeepsNoArguments) {
    contract::Statement statement;
    statement << "SELECT Count(*) AS C FROM PROVA WHERE NOME = '";
    statement.text(std::string(1000000, 'x')) << "'";
    const auto shape = statement.withoutValues();
    EXPECT_TRUE(shape.sameShape(statement));
    EXPECT_EQ(shape.shape(), statement.shape());
    EXPECT_EQ(shape.text(), "SELECT Count(*) AS C FROM PROVA WHERE NOME = ''");
}

TEST_F(StatementCacheTest, AChangedTableIsReadAsItIsNow) {
    insert(connection, 1);
    contract::Recordset rows;
    const contract::Statement statement("SELECT * FROM PROVA"_sql);
    rows.Open(statement, connection);
    EXPECT_EQ(rows.FieldCount(), 7U);
    Connection other(connectionStringOf(file()));
    other.Open();
    other.runNative("ALTER TABLE PROVA ADD COLUMN NUOVA TEXT DEFAULT 'x'");
    rows.Open(statement, connection);
    ASSERT_EQ(rows.FieldCount(), 8U);
    EXPECT_EQ(rows["NUOVA"].text(), "x");
    EXPECT_EQ(rows["CODICE"].integer(), 1);
}

TEST_F(StatementCacheTest, AFailedStatementCanRunAgain) {
    connection.Execute("INSERT INTO CHIAVI (CHIAVE) VALUES (1)"_sql);
    failureOf([&] { connection.Execute("INSERT INTO CHIAVI (CHIAVE) VALUES (1)"_sql); });
    connection.Execute("DELETE FROM CHIAVI"_sql);
    EXPECT_EQ(connection.Execute("INSERT INTO CHIAVI (CHIAVE) VALUES (1)"_sql), 1);
}

} // namespace
} // namespace sqlite_test
