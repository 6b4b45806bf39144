#pragma once

#include "contract/Snapshot.h"
#include "platform/odbc/ResultLayout.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace platform::odbc {

/// Reads the rows of a statement's open result into snapshots, in blocks of many rows into arrays bound column by
/// column. One reader serves all the statements of a connection, so that its arrays are made once.
class RowReader {
public:
    /// Rows of a block; fewer where they are very long.
    static constexpr std::size_t blockRows = 1000;

    enum class Outcome : std::uint8_t {
        complete,
        failed,  ///< the statement holds the records
        tooLong, ///< a text of unbounded length did not fit into its array: read(..., byRow) the statement run again
        noResult
    };

    /// How the rows are fetched.
    enum class Fetch : std::uint8_t {
        byBlock,
        byRow ///< each value by itself: for texts of any length
    };

    /// known: what a translation tells of the result's columns. The statement's bindings are the caller's to reset.
    Outcome read(SQLHSTMT statement, Engine engine, const std::optional<std::vector<dialect::ResultColumn>>& known,
                 Fetch fetch, contract::Snapshot& rows);

private:
    bool bind(SQLHSTMT statement);
    void arrange();
    Outcome readBlocks(SQLHSTMT statement, contract::Snapshot& rows);
    Outcome readByRow(SQLHSTMT statement, contract::Snapshot& rows);
    bool appendBlock(contract::Column& column, std::size_t field, std::size_t count);
    bool appendRun(contract::Column& column, BoundColumn& bound, const char* values, const SQLLEN* lengths,
                   std::size_t count);
    bool hasFailedRows(std::size_t count) const;
    void append(contract::Column& column, BoundColumn& bound, const char* value, SQLLEN length);
    static void appendDate(contract::Column& column, BoundColumn& bound, const char* value);
    static void appendSqlite(contract::Column& column, BoundColumn& bound, std::string_view text);
    bool getValue(SQLHSTMT statement, std::size_t field, std::string& value, bool& null);
    SQLLEN* indicators(std::size_t column) { return indicators_.data() + column * rowsPerBlock_; }
    const SQLLEN* indicators(std::size_t column) const { return indicators_.data() + column * rowsPerBlock_; }

    ResultLayout layout_;
    std::size_t rowsPerBlock_ = blockRows;
    std::vector<SQLLEN> indicators_;
    std::vector<SQLUSMALLINT> states_; ///< of the rows of a block
    std::unique_ptr<char[]> arrays_;
    std::size_t capacity_ = 0; ///< bytes of arrays_
    SQLULEN fetched_ = 0;
    std::string scratch_;
};

} // namespace platform::odbc
