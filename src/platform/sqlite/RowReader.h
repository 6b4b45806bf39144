#pragma once

#include "contract/Snapshot.h"
#include "platform/dialect/Translator.h"

#include <memory>
#include <optional>
#include <vector>

struct sqlite3_stmt;

namespace platform::sqlite {

/// Reads the rows of one prepared statement into snapshots. The description of its columns is made once.
class RowReader {
public:
    RowReader() = default;
    /// known: what the translation tells of the result's columns.
    RowReader(sqlite3_stmt* statement, std::optional<std::vector<dialect::ResultColumn>> known);

    /// Steps the statement to its end. Returns SQLite's last result code: SQLITE_DONE, or that of the failure.
    int read(sqlite3_stmt* statement, contract::Snapshot& rows);

    const std::shared_ptr<const contract::FieldList>& fields() const { return fields_; }

private:
    /// The date read last in a column: neighbouring rows often hold the same one.
    struct LastDate {
        char text[10] = {};
        contract::Date date;
    };

    void describe(sqlite3_stmt* statement);
    void appendText(contract::Column& column, std::size_t field, std::string_view text);

    std::shared_ptr<const contract::FieldList> fields_;
    std::optional<std::vector<dialect::ResultColumn>> known_;
    std::vector<LastDate> dates_;
    std::vector<bool> amounts_; ///< by field: a number with decimals is kept as its decimal form
};

} // namespace platform::sqlite
