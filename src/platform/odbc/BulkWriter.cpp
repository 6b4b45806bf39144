#include "platform/odbc/BulkWriter.h"

#include "contract/RuntimeError.h"
#include "contract/Snapshot.h"
#include "platform/odbc/Literals.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace platform::odbc {

namespace {

using contract::ColumnType;
using contract::RuntimeError;
using contract::Value;

[[noreturn]] void refuse(const std::string& operation, const std::string& why) {
    throw RuntimeError(RuntimeError::invalidCall, operation + why);
}

const contract::ColumnDef& columnOf(const contract::TableDef& table, const std::string& name,
                                    const std::string& operation) {
    const auto at = std::find_if(table.columns.begin(), table.columns.end(),
                                 [&](const auto& column) { return column.name == name; });
    if (at == table.columns.end())
        refuse(operation, ": la tabella non ha la colonna " + name + ".");
    return *at;
}

bool isWhole(ColumnType type) {
    return type == ColumnType::identity || type == ColumnType::integer || type == ColumnType::number ||
           type == ColumnType::flag;
}

} // namespace

RowForm fastestRowForm(Connection& connection) {
    if (connection.engine() == Engine::sqlite)
        return RowForm::values;
    try {
        contract::Snapshot rows;
        connection.readNative("SELECT V FROM OPENJSON(N'[[1]]') WITH (V NVARCHAR(MAX) '$[0]')", rows);
        return rows.rowCount() == 1 ? RowForm::json : RowForm::values;
    } catch (const RuntimeError&) {
        return RowForm::values;
    }
}

BulkWriter::BulkWriter(Connection& connection, const contract::TableDef& table, const std::vector<std::string>& columns,
                       RowForm form)
    : connection_(connection), form_(form), table_(table.name), operation_("Inserimento nella tabella " + table_) {
    if (!connection.InTransaction())
        refuse(operation_, " non ammesso senza una transazione aperta.");
    std::string names;
    std::string places;
    for (const auto& name : columns) {
        // Read as texts, which become what the column is when they are written: a text that is too long is refused.
        places += (names.empty() ? "" : ", ") + name + " NVARCHAR(MAX) '$[" + std::to_string(columns_.size()) + "]'";
        names += (names.empty() ? "" : ", ") + name;
        columns_.push_back(columnOf(table, name, operation_));
        identity_ = identity_ || columns_.back().type == ColumnType::identity;
    }
    insert_ = "INSERT INTO " + table_ + " (" + names + ") ";
    with_ = ") WITH (" + places + ")";
    openJson_ = "SELECT " + names + " FROM OPENJSON(N";
}

void BulkWriter::append(std::span<const Value> row) {
    if (row.size() != columns_.size())
        refuse(operation_, ": il numero dei valori non è quello delle colonne.");
    const std::string text = form_ == RowForm::json ? json(row) : literals(row);
    // Not every server that reads JSON takes its escapes back: a text that needs one goes as a literal.
    if (form_ == RowForm::json && text.find('\\') != std::string::npos) {
        const std::string literal = literals(row);
        finish();
        write("VALUES " + literal);
        ++rows_;
        return;
    }
    if (waitingRows_ > 0)
        waiting_ += ", ";
    waiting_ += text;
    ++waitingRows_;
    ++rows_;
    if (waitingRows_ == (form_ == RowForm::json ? jsonRows : statementRows) || waiting_.size() >= statementBytes)
        finish();
}

void BulkWriter::finish() {
    if (waitingRows_ == 0)
        return;
    if (form_ == RowForm::json) {
        std::string rows;
        appendQuoted("[" + waiting_ + "]", rows);
        write(openJson_ + rows + with_);
    } else {
        write("VALUES " + waiting_);
    }
    waiting_.clear();
    waitingRows_ = 0;
}

void BulkWriter::write(const std::string& rows) {
    if (identity_)
        setIdentityInsert(true);
    connection_.runNative(insert_ + rows, operation_);
    if (identity_)
        setIdentityInsert(false);
}

// The server takes a value of a column that it counts by itself for one table at a time only.
void BulkWriter::setIdentityInsert(bool on) {
    if (connection_.engine() == Engine::server)
        connection_.runNative("SET IDENTITY_INSERT " + table_ + (on ? " ON" : " OFF"), operation_);
}

// A value's text, as every language setting of the engine reads it.
std::string BulkWriter::characters(const contract::ColumnDef& column, const Value& value) const {
    if (isWhole(column.type)) {
        if (const auto whole = value.integer())
            return std::to_string(*whole);
    } else if (column.type == ColumnType::date) {
        if (const auto date = value.date()) {
            return connection_.engine() == Engine::server ? serverDay(*date) : date->iso();
        }
    } else {
        return value.text();
    }
    throw RuntimeError(RuntimeError::typeMismatch, operation_ + ": il valore «" + value.text() +
                                                       "» non è del tipo della colonna " + std::string(column.name) +
                                                       ".");
}

std::string BulkWriter::json(std::span<const Value> row) const {
    auto values = nlohmann::json::array();
    for (std::size_t i = 0; i < row.size(); ++i)
        values.push_back(row[i].isMissing() ? nlohmann::json() : nlohmann::json(characters(columns_[i], row[i])));
    // A byte that is no character becomes the replacement character, as it does in every statement.
    return values.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

std::string BulkWriter::literals(std::span<const Value> row) const {
    std::string text;
    for (std::size_t i = 0; i < row.size(); ++i) {
        const auto& column = columns_[i];
        text += i == 0 ? "(" : ", ";
        if (row[i].isMissing())
            // Among rows that are all null the server takes it for a whole number, which becomes no identifier.
            text += connection_.engine() == Engine::server && column.type == ColumnType::guid
                        ? "CAST(NULL AS UNIQUEIDENTIFIER)"
                        : "NULL";
        else if (isWhole(column.type))
            text += characters(column, row[i]);
        else if (column.type == ColumnType::text || column.type == ColumnType::guid)
            appendText(characters(column, row[i]), text);
        else
            // The rows of a statement must agree in their kinds: every amount is a text.
            appendQuoted(characters(column, row[i]), text);
    }
    return text + ")";
}

void BulkWriter::appendText(std::string_view characters, std::string& text) const {
    if (connection_.engine() == Engine::sqlite) {
        appendQuoted(characters, text);
        return;
    }
    // Within a literal the server drops a backslash at the end of a line, and the line's end with it.
    for (std::size_t from = 0;;) {
        std::size_t to = characters.find('\\', from);
        while (to < characters.size() && characters.substr(to + 1, 1) != "\n" && characters.substr(to + 1, 1) != "\r")
            to = characters.find('\\', to + 1);
        text += 'N';
        if (to >= characters.size()) {
            appendQuoted(characters.substr(from), text);
            return;
        }
        appendQuoted(characters.substr(from, to + 1 - from), text);
        text += " + ";
        from = to + 1;
    }
}

} // namespace platform::odbc
