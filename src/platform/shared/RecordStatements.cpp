#include "platform/shared/RecordStatements.h"

#include "contract/RuntimeError.h"

namespace platform::shared {

using contract::RuntimeError;
using contract::Statement;
using contract::Value;

namespace {

void appendValue(Statement& statement, const Value& value) {
    if (value.isMissing()) {
        statement << "NULL";
    } else if (const auto* date = value.as<contract::Date>()) {
        statement << "CONVERT(DateTime,'";
        statement.date(*date);
        statement << "',103)";
    } else if (const auto* text = value.as<std::string>()) {
        statement << "'";
        statement.text(*text);
        statement << "'";
    } else if (const auto number = value.integer()) {
        statement.number(*number);
    } else {
        statement.bare(value);
    }
}

void appendKey(Statement& statement, const ColumnValues& key) {
    if (key.empty())
        throw RuntimeError(RuntimeError::invalidCall, "Alla tabella da scrivere manca la chiave.");
    bool first = true;
    for (const auto& [column, value] : key) {
        if (first)
            statement << " WHERE ";
        else
            statement << " AND ";
        first = false;
        statement.identifier(column);
        if (value.isMissing()) {
            statement << " IS NULL";
        } else {
            statement << " = ";
            appendValue(statement, value);
        }
    }
}

void requireColumns(const ColumnValues& values) {
    if (values.empty())
        throw RuntimeError(RuntimeError::invalidCall, "Nessun campo da scrivere.");
}

} // namespace

Statement composeUpdate(std::string_view table, const ColumnValues& values, const ColumnValues& key) {
    requireColumns(values);
    Statement statement("UPDATE ");
    statement.identifier(table);
    statement << " SET ";
    bool first = true;
    for (const auto& [column, value] : values) {
        if (!first)
            statement << ", ";
        first = false;
        statement.identifier(column);
        statement << " = ";
        appendValue(statement, value);
    }
    appendKey(statement, key);
    return statement;
}

Statement composeInsert(std::string_view table, const ColumnValues& values) {
    requireColumns(values);
    Statement statement("INSERT INTO ");
    statement.identifier(table);
    statement << " (";
    bool first = true;
    for (const auto& [column, value] : values) {
        if (!first)
            statement << ", ";
        first = false;
        statement.identifier(column);
    }
    statement << ") VALUES (";
    first = true;
    for (const auto& [column, value] : values) {
        if (!first)
            statement << ", ";
        first = false;
        appendValue(statement, value);
    }
    statement << ")";
    return statement;
}

Statement composeDelete(std::string_view table, const ColumnValues& key) {
    Statement statement("DELETE FROM ");
    statement.identifier(table);
    appendKey(statement, key);
    return statement;
}

} // namespace platform::shared
