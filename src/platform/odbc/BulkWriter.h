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

/// Inserts many rows into one table with prepared statements: several rows a statement, and many statements an array
/// where the driver takes arrays. The rows belong to the transaction that is open on the connection.
///
/// Rows wait in the writer until there are enough of them: what was appended is in the table after finish() only.
class BulkWriter {
public:
    /// Rows that go to the server together.
    static constexpr std::size_t arrayRows = 1000;
    /// Rows and parameters of one statement, at most. Servers differ in what a statement and what a parameter costs
    /// them, and some look a parameter up among all of them: this is between the two.
    static constexpr std::size_t statementRows = 25;
    static constexpr std::size_t mostParameters = 100;

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

private:
    struct Prepared {
        StatementHandle handle;
        std::size_t rows = 1; ///< of one execution
    };
    /// The values of one parameter, one for each execution, as the driver takes them.
    struct Parameter {
        std::vector<char> values;
        std::vector<SQLLEN> lengths;
    };
    /// Which of the rows that wait go into a parameter: those of one place in each execution.
    struct Place {
        SQLHSTMT statement;
        SQLUSMALLINT number; ///< of the parameter, counted from 1
        std::size_t column;
        std::size_t first; ///< row of the first execution
        std::size_t step;  ///< rows of an execution
        std::size_t count; ///< executions
    };

    Prepared prepare(std::size_t rows);
    void write(Prepared& prepared, std::size_t first, std::size_t executions);
    void bind(const Place& place, Parameter& parameter);
    template <class T, class Convert>
    void pack(const Place& place, Parameter& parameter, SQLSMALLINT cType, SQLSMALLINT type, SQLULEN size,
              SQLSMALLINT scale, Convert convert);
    void packText(const Place& place, Parameter& parameter);
    const contract::Value& pending(const Place& place, std::size_t execution) const {
        return pending_[(place.first + execution * place.step) * columns_.size() + place.column];
    }
    void setIdentityInsert(bool on);
    void check(SQLHSTMT statement, SQLRETURN result);

    Connection& connection_;
    std::string table_;
    std::string operation_;
    std::vector<contract::ColumnDef> columns_;
    Prepared many_; ///< several rows an execution
    Prepared one_;  ///< the rows that are left
    std::vector<Parameter> parameters_;
    std::vector<contract::Value> pending_; ///< row by row
    bool arrays_ = false;                  ///< the driver takes arrays
    std::size_t rows_ = 0;
    bool identity_ = false; ///< a column that the server counts by itself is written
};

} // namespace platform::odbc
