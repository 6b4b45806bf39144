#pragma once

#include "contract/Schema.h"
#include "contract/Value.h"
#include "platform/odbc/Connection.h"

#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace platform::odbc {

/// How the rows of a statement are written.
enum class RowForm : std::uint8_t {
    values, ///< literals after VALUES; every engine reads them
    json    ///< one literal with an array of arrays, read by OPENJSON: SQL Server from compatibility level 130
};

/// What the open connection's server reads fastest. Tries it out with a statement that may fail, so outside a
/// transaction only. Throws nothing: where the trial fails, whatever for, it is values.
RowForm fastestRowForm(Connection& connection);

/// Inserts many rows into one table with statements of many rows, their values as literals. The rows belong to the
/// transaction that is open on the connection.
///
/// Literals, and not arrays of parameters: drivers send such an array as so many statements, and servers pay for each
/// parameter. Measured beside them, rows as JSON were five times as fast.
///
/// Rows wait in the writer until there are enough of them: what was appended is in the table after finish() only.
class BulkWriter {
public:
    /// Rows of one statement, at most. SQL Server takes a thousand after VALUES, and plans a long list slowly.
    static constexpr std::size_t statementRows = 200;
    static constexpr std::size_t jsonRows = 1000;
    /// Bytes after which a statement takes no further row.
    static constexpr std::size_t statementBytes = std::size_t{60} * 1024;

    /// Throws RuntimeError 5 without an open transaction or for a column that the table does not have. Both must
    /// outlive the writer.
    BulkWriter(Connection& connection, const contract::TableDef& table, const std::vector<std::string>& columns,
               RowForm form = RowForm::values);

    /// One row: a value for each column, in their order; a missing value is a null. Throws RuntimeError 5 for another
    /// count of values, 13 for a value that is not of its column's kind (the row is then left out), the database's
    /// error where a statement is refused; none of its rows is written then.
    void append(std::span<const contract::Value> row);
    void append(std::initializer_list<contract::Value> row) { append(std::span(row.begin(), row.size())); }

    /// Writes the rows that wait. Throws the database's error as append() does.
    void finish();

    std::size_t rowCount() const { return rows_; }

private:
    std::string literals(std::span<const contract::Value> row) const;
    std::string json(std::span<const contract::Value> row) const;
    std::string characters(const contract::ColumnDef& column, const contract::Value& value) const;
    void appendText(std::string_view characters, std::string& text) const;
    void write(const std::string& rows);
    void setIdentityInsert(bool on);

    Connection& connection_;
    RowForm form_;
    std::string table_;
    std::string operation_;
    std::vector<contract::ColumnDef> columns_;
    std::string insert_;   ///< every statement's start
    std::string openJson_; ///< before rows as JSON
    std::string with_;     ///< after rows as JSON
    std::string waiting_;  ///< rows, separated by commas
    std::size_t waitingRows_ = 0;
    std::size_t rows_ = 0;
    bool identity_ = false; ///< a column that the server counts by itself is written
};

} // namespace platform::odbc
