#pragma once

#include "contract/Connection.h"

#include <string>
#include <string_view>

struct sqlite3;

namespace platform::sqlite {

/// The diagnostic record of a result code of SQLite (extended or not) and the message that came with it.
contract::DatabaseErrorRecord recordOf(int code, std::string_view message);

/// What a user reads: the operation, the file, what went wrong in Italian and SQLite's own message.
std::string describe(std::string_view operation, std::string_view file, const contract::DatabaseErrorRecord& record);

/// Puts the database's last error into errors and throws the RuntimeError that describes it. With a null database the
/// code alone tells.
[[noreturn]] void fail(contract::ErrorList& errors, sqlite3* database, int code, std::string_view operation,
                       std::string_view file);

/// The same for a failure that the adapter itself has found; the description is in Italian and ends without a point.
[[noreturn]] void fail(contract::ErrorList& errors, contract::ErrorCategory category, std::string_view description,
                       std::string_view operation, std::string_view file);

} // namespace platform::sqlite
