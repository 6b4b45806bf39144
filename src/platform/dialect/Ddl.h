#pragma once

#include "contract/Schema.h"

#include <string>
#include <vector>

namespace platform::dialect {

enum class Engine { sqlite, sqlServer };

/// The statements that make the tables and indexes of a schema, in order, in the engine's own language.
///
/// SQLite: whole numbers and flags are INTEGER, amounts NUMERIC, dates DATE (kept as text "yyyy-mm-dd"), texts and
/// global identifiers TEXT without regard to case, as the server compares them; no column is forced to have a value,
/// so that an outside program may fill in only the columns it knows. SQL Server: keys and columns that are not
/// nullable are NOT NULL. Neither gets foreign keys: the ERP's database has none on these tables.
std::vector<std::string> createStatements(const contract::Schema& schema, Engine engine);

} // namespace platform::dialect
