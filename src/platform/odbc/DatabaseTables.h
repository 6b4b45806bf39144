#pragma once

#include "contract/Schema.h"
#include "platform/odbc/Connection.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform::odbc {

/// The names of a table's columns, nothing when there is no such table (or view). Throws RuntimeError (database).
std::optional<std::vector<std::string>> columnsOf(Connection& connection, std::string_view table);

/// The same for several tables, in their order, by one statement.
std::vector<std::optional<std::vector<std::string>>> columnsOf(Connection& connection,
                                                               const std::vector<std::string_view>& tables);

/// The first table of the schema that the database has already; nothing when it has none of them.
std::optional<std::string> existingTable(Connection& connection, const contract::Schema& schema);

/// Makes the schema's tables in the database of an open connection, and lets fill write their first rows (it may be
/// empty), all in one transaction: whatever goes wrong leaves none of the tables.
///
/// Throws RuntimeError (database) when one of the tables exists, and whatever fill throws.
void createTables(Connection& connection, const contract::Schema& schema,
                  const std::function<void(Connection&)>& fill = {});

/// The tables of a schema that the database does not have, or not with all their columns. Throws RuntimeError
/// (database).
contract::Schema missingTables(Connection& connection, const contract::Schema& schema);

/// Whether a database serves this schema: throws RuntimeError (database) that says which table or column is missing.
/// Optional tables are passed over. Writes nothing.
void checkDatabase(Connection& connection, const contract::Schema& schema);

} // namespace platform::odbc
