#pragma once

#include "contract/Schema.h"
#include "platform/sqlite/Connection.h"

#include <cstdint>
#include <functional>
#include <string>

namespace platform::sqlite {

/// Makes the schema's tables in a database file, which is made, for its owner alone, when it is not there, and lets
/// fill write its first rows (it may be empty), all in one transaction: whatever goes wrong, the process killed
/// included, leaves a file without any of the tables, and no file where there was none unless the process was killed.
///
/// Throws RuntimeError (database) when one of the tables exists, when the file is no database or cannot be written, and
/// whatever fill throws.
void createDatabase(const std::string& path, const contract::Schema& schema,
                    const std::function<void(Connection&)>& fill = {});

/// Whether a file serves as a database of this schema: throws RuntimeError (database) that says which table or column
/// is missing, or why the file is no database. Optional tables are passed over. Writes nothing.
void checkDatabase(const std::string& path, const contract::Schema& schema);

/// The same for a connection that is open.
void checkDatabase(Connection& connection, const contract::Schema& schema);

/// The tables of a schema that an open database does not have, or not with all their columns.
contract::Schema missingTables(Connection& connection, const contract::Schema& schema);

/// Makes the schema's tables in an open database, outside of a transaction: all of them or none. Throws RuntimeError
/// (database), also where there is one of them.
void addTables(Connection& connection, const contract::Schema& schema);

/// Makes an empty file for its owner alone. Throws RuntimeError (database), also where there is one already.
void makeEmptyFile(const std::string& path);

/// A whole number that a file keeps for the program that works on it; 0 in a new one. Set within a transaction it is
/// committed with it.
std::int32_t markOf(Connection& connection);
void setMark(Connection& connection, std::int32_t mark);

/// Version of the engine that runs, "3.40.1".
std::string engineVersion();

} // namespace platform::sqlite
