#pragma once

#include "platform/odbc/Connection.h"
#include "plugin/contract/Schema.h"
#include "plugin/contract/Value.h"

#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace platform::odbc {

/// Inserts many rows into one table with one prepared statement, in arrays of many rows where the driver takes them and
/// row by row where it does not. The rows belong to the transaction that is open on the connection.
///
/// Rows wait in the writer until there are enough of them: what was appended is in the table after finish() only.
class BulkWriter {
public:
    /// Rows of one array.
    static constexpr std::size_t arrayRows = 1000;

    /// Throws RuntimeError 5 without an open transaction or for a column that the table does not have, the database's
    /// error where the statement is refused. Both must outlive the writer.
    BulkWriter(Connection& connection, const contract::TableDef& table, const std::vector<std::string>& columns);

    /// One row: a value for each column, in their order; a missing value is a null. Throws RuntimeError 5 for another
    /// count of values, 13 for a value that is not of its column's kind, the database's error when a row is refused.
    void append(std::span<const contract::Value> row);
    void append(std::initializer_list<contract::Value> row) { append(std::span(row.begin(), row.size())); }

    /// Writes the rows that wait.
    void finish();

    std::size_t rowCount() const { return rows_; }
    /// Rows that go to the server together.
    std::size_t rowsPerArray() const { return rowsPerArray_; }

private:
    /// The values of one column of the rows that wait, as the driver takes them.
    struct Parameter {
        std::string_view name;
        contract::ColumnType type = contract::ColumnType::text;
        std::vector<char> values;
        std::vector<SQLLEN> lengths;
    };

    void write(std::size_t first, std::size_t count);
    void bind(std::size_t column, std::size_t first, std::size_t count);
    template <class T, class Convert>
    void pack(std::size_t column, std::size_t first, std::size_t count, SQLSMALLINT cType, SQLSMALLINT type,
              SQLULEN size, SQLSMALLINT scale, Convert convert);
    void packText(std::size_t column, std::size_t first, std::size_t count);
    const contract::Value& pending(std::size_t row, std::size_t column) const {
        return pending_[row * parameters_.size() + column];
    }
    void setIdentityInsert(bool on);
    void check(SQLRETURN result);

    Connection& connection_;
    std::string table_;
    std::string operation_;
    StatementHandle statement_;
    std::vector<Parameter> parameters_;
    std::vector<contract::Value> pending_; ///< row by row
    std::size_t rowsPerArray_ = 1;
    std::size_t rows_ = 0;
    bool identity_ = false; ///< a column that the server counts by itself is written
};

} // namespace platform::odbc
