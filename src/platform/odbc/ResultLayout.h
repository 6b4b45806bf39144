#pragma once

#include "contract/Snapshot.h"
#include "platform/dialect/Translator.h"
#include "platform/odbc/Errors.h"
#include "platform/odbc/Handles.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace platform::odbc {

/// The form in which a column's values are fetched.
enum class Form : std::uint8_t {
    whole,     ///< SQLBIGINT
    real,      ///< SQLDOUBLE
    timestamp, ///< SQL_TIMESTAMP_STRUCT
    guid,      ///< SQLGUID
    wide,      ///< UTF-16
    narrow,    ///< ASCII or UTF-8 characters
};

/// ODBC's C type of a form.
SQLSMALLINT cTypeOf(Form form);

/// How one column of a result is fetched.
struct BoundColumn {
    Form form = Form::wide;
    bool sqlite = false;    ///< characters of a value that may be of any kind
    bool amount = false;    ///< SQLite only: a number with decimals is kept as its decimal form
    std::size_t width = 0;  ///< bytes of one value in an array, a final zero included
    std::size_t offset = 0; ///< of its array in the block

    /// The date read last in the column, as the driver gave it: neighbouring rows often hold the same one.
    char lastBytes[sizeof(SQL_TIMESTAMP_STRUCT)] = {};
    contract::Date lastDate;
    bool dateRead = false;
};

/// The columns of an open result: the fields they become, and how they are fetched.
struct ResultLayout {
    /// Reads the description of the columns from the statement; known: what a translation tells of them. False when
    /// that failed.
    bool describe(SQLHSTMT statement, SQLSMALLINT count, Engine engine,
                  const std::optional<std::vector<dialect::ResultColumn>>& known);

    std::shared_ptr<const contract::FieldList> fields;
    std::vector<BoundColumn> columns;
};

} // namespace platform::odbc
