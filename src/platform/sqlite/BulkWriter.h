#pragma once

#include "contract/Value.h"
#include "platform/sqlite/Connection.h"

#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace platform::sqlite {

/// Inserts many rows into one table with one prepared statement. The rows belong to the transaction that is open on the
/// connection, so that a table is filled whole or not at all.
class BulkWriter {
public:
    /// Throws RuntimeError 5 without an open transaction, the database's error for an unknown table or column. The
    /// connection must outlive the writer.
    BulkWriter(Connection& connection, std::string_view table, const std::vector<std::string>& columns);

    /// One row: a value for each column, in their order; a missing value is a null. Throws RuntimeError 5 for another
    /// count of values, the database's error when the row is refused.
    void append(std::span<const contract::Value> row);
    void append(std::initializer_list<contract::Value> row) { append(std::span(row.begin(), row.size())); }

    std::size_t rowCount() const { return rows_; }

private:
    Connection& connection_;
    StatementHandle statement_;
    std::string operation_;
    std::size_t columns_;
    std::size_t rows_ = 0;
};

} // namespace platform::sqlite
