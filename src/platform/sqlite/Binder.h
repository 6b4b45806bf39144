#pragma once

#include "contract/Value.h"
#include "platform/sqlite/StatementCache.h"

#include <string>

namespace platform::sqlite {

/// Binds a statement's arguments to the prepared statement of its shape. The statement must live, unchanged, until the
/// prepared one was run. Returns SQLite's result code; throws RuntimeError 13 where an argument cannot be converted as
/// its place demands, with a description in Italian.
int bindArguments(PreparedStatement& prepared, const contract::Statement& statement);

/// Binds one value as this database stores it: dates as text "yyyy-mm-dd", booleans as 1 and 0. The value must live
/// until the statement was run.
int bindValue(sqlite3_stmt* statement, int parameter, const contract::Value& value);

} // namespace platform::sqlite
