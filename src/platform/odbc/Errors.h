#pragma once

#include "contract/Connection.h"
#include "platform/odbc/Handles.h"

#include <string>
#include <string_view>
#include <vector>

namespace platform::odbc {

/// What stands behind the driver, as far as the adapter treats it differently.
enum class Engine {
    server, ///< understands the server's dialect: its texts go through unchanged
    sqlite  ///< SQLite: the dialect is translated in front of it, and its driver has narrow functions only (UTF-8)
};

/// All diagnostic records of a handle, in the driver's order, each with its category.
contract::ErrorList recordsOf(SQLSMALLINT type, SQLHANDLE handle, Engine engine);

/// The category of a record by SQLSTATE, the engine's own number and its text.
contract::ErrorCategory categoryOf(Engine engine, std::string_view state, std::int64_t native, std::string_view text);

/// Whether a failure with these records took the connection with it. A statement that timed out counts: the driver may
/// have left its answer on the way.
bool endsConnection(const contract::ErrorList& records);

/// What a user reads: the operation, the database, what went wrong in Italian and the server's own message.
std::string describe(std::string_view operation, std::string_view database, const contract::ErrorList& records);

/// The text without the driver's "[...]" marks in front.
std::string_view withoutMarks(std::string_view text);

/// Puts a failure that the adapter itself has found into errors and throws the RuntimeError that describes it; the
/// description is in Italian and ends without a point.
[[noreturn]] void fail(contract::ErrorList& errors, contract::ErrorCategory category, std::string_view description,
                       std::string_view operation, std::string_view database);

} // namespace platform::odbc
