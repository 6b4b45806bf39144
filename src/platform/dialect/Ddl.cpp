#include "platform/dialect/Ddl.h"

#include <algorithm>

namespace platform::dialect {

namespace {

using contract::ColumnDef;
using contract::ColumnType;
using contract::TableDef;

constexpr int longestText = 4000; // characters of a NVARCHAR with a length

bool isKey(const TableDef& table, const ColumnDef& column) {
    return std::find(table.key.begin(), table.key.end(), column.name) != table.key.end();
}

bool isOnlyKey(const TableDef& table, const ColumnDef& column) {
    return table.key.size() == 1 && isKey(table, column);
}

std::string sqliteColumn(const TableDef& table, const ColumnDef& column) {
    switch (column.type) {
    case ColumnType::identity:
        return isOnlyKey(table, column) ? "INTEGER PRIMARY KEY AUTOINCREMENT" : "INTEGER";
    case ColumnType::integer:
    case ColumnType::number:
    case ColumnType::flag:
        return "INTEGER";
    case ColumnType::amount:
        return "NUMERIC";
    case ColumnType::date:
        return "DATE";
    case ColumnType::text:
    case ColumnType::guid:
        break;
    }
    return "TEXT COLLATE NOCASE";
}

std::string serverType(const ColumnDef& column) {
    switch (column.type) {
    case ColumnType::identity:
        return "INTEGER IDENTITY(1,1)";
    case ColumnType::integer:
        return "INTEGER";
    case ColumnType::number:
        return "NUMERIC(18,0)";
    case ColumnType::amount:
        return "NUMERIC(18,2)";
    case ColumnType::flag:
        return "BIT";
    case ColumnType::date:
        return "DATETIME";
    case ColumnType::guid:
        return "UNIQUEIDENTIFIER";
    case ColumnType::text:
        break;
    }
    return column.length > 0 && column.length <= longestText ? "NVARCHAR(" + std::to_string(column.length) + ")"
                                                             : "NVARCHAR(MAX)";
}

std::string serverColumn(const TableDef& table, const ColumnDef& column) {
    return serverType(column) + (column.nullable && !isKey(table, column) ? " NULL" : " NOT NULL");
}

template <class Names> std::string listed(const Names& names) {
    std::string text;
    for (const auto& name : names) {
        if (!text.empty())
            text += ", ";
        text += name;
    }
    return text;
}

std::string createTable(const TableDef& table, Engine engine) {
    std::string text = "CREATE TABLE " + std::string(table.name) + " (";
    bool keyWritten = table.key.empty();
    for (const auto& column : table.columns) {
        if (&column != &table.columns.front())
            text += ", ";
        text += column.name;
        text += ' ';
        text += engine == Engine::sqlite ? sqliteColumn(table, column) : serverColumn(table, column);
        if (engine == Engine::sqlite && column.type == ColumnType::identity && isOnlyKey(table, column))
            keyWritten = true;
    }
    if (!keyWritten)
        text += ", PRIMARY KEY (" + listed(table.key) + ")";
    return text + ")";
}

} // namespace

std::vector<std::string> createStatements(const contract::Schema& schema, Engine engine) {
    std::vector<std::string> statements;
    for (const auto& table : schema.tables) {
        statements.push_back(createTable(table, engine));
        for (const auto& index : table.indexes)
            statements.push_back("CREATE INDEX " + std::string(index.name) + " ON " + std::string(table.name) + " (" +
                                 listed(index.columns) + ")");
    }
    return statements;
}

} // namespace platform::dialect
