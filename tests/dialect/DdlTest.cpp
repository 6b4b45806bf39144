// Tables and indexes of a schema in each engine's language.

#include "platform/dialect/Ddl.h"

#include <gtest/gtest.h>

namespace dialect_test {
namespace {

using contract::ColumnType;
using platform::dialect::createStatements;
using platform::dialect::Engine;

contract::Schema schema() {
    contract::Schema result;
    result.tables.push_back({"NODI",
                             {{"ID", ColumnType::identity, false},
                              {"PADRE", ColumnType::integer},
                              {"CONTO", ColumnType::number},
                              {"IMPORTO", ColumnType::amount},
                              {"ATTIVO", ColumnType::flag},
                              {"NOME", ColumnType::text, false, 30},
                              {"NOTE", ColumnType::text},
                              {"GUIDA", ColumnType::guid},
                              {"DAL", ColumnType::date}},
                             {"ID"},
                             {{"IX_PADRE", {"PADRE", "CONTO"}}}});
    result.tables.push_back(
        {"VISTA", {{"A", ColumnType::number}, {"B", ColumnType::text, true, 5}}, {"A", "B"}, {}, true});
    result.tables.push_back({"SENZACHIAVE", {{"A", ColumnType::number}}, {}, {}});
    return result;
}

TEST(Ddl, Sqlite) {
    EXPECT_EQ(createStatements(schema(), Engine::sqlite),
              (std::vector<std::string>{
                  "CREATE TABLE NODI (ID INTEGER PRIMARY KEY AUTOINCREMENT, PADRE INTEGER, CONTO INTEGER, IMPORTO "
                  "NUMERIC, ATTIVO INTEGER, NOME TEXT COLLATE NOCASE, NOTE TEXT COLLATE NOCASE, GUIDA TEXT COLLATE "
                  "NOCASE, DAL DATE)",
                  "CREATE INDEX IX_PADRE ON NODI (PADRE, CONTO)",
                  "CREATE TABLE VISTA (A INTEGER, B TEXT COLLATE NOCASE, PRIMARY KEY (A, B))",
                  "CREATE TABLE SENZACHIAVE (A INTEGER)"}));
}

TEST(Ddl, SqlServer) {
    EXPECT_EQ(createStatements(schema(), Engine::sqlServer),
              (std::vector<std::string>{
                  "CREATE TABLE NODI (ID INTEGER IDENTITY(1,1) NOT NULL, PADRE INTEGER NULL, CONTO NUMERIC(18,0) NULL, "
                  "IMPORTO NUMERIC(18,2) NULL, ATTIVO BIT NULL, NOME NVARCHAR(30) NOT NULL, NOTE NVARCHAR(MAX) NULL, "
                  "GUIDA UNIQUEIDENTIFIER NULL, DAL DATETIME NULL, PRIMARY KEY (ID))",
                  "CREATE INDEX IX_PADRE ON NODI (PADRE, CONTO)",
                  "CREATE TABLE VISTA (A NUMERIC(18,0) NOT NULL, B NVARCHAR(5) NOT NULL, PRIMARY KEY (A, B))",
                  "CREATE TABLE SENZACHIAVE (A NUMERIC(18,0) NULL)"}));
}

} // namespace
} // namespace dialect_test
