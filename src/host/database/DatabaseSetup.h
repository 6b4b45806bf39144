#pragma once

#include "contract/Schema.h"
#include "host/start/CommandLine.h"

#include <optional>
#include <string>

namespace host {

// Which database the program works on, and how one is made. All throw StartFailure. A connection string is one of
// DatabaseAccess.h.

/// The connection string of the database that the command line, the environment (DISTINTE_ODBC) or the saved connection
/// asks for, in this order; nothing for the default file.
std::optional<std::string> wantedDatabase(const CommandLine& line, const std::optional<std::string>& saved);

/// The default file, made with the demo companies when it is not there yet: under another name, which is given up once
/// it is whole.
std::string prepareDefaultDatabase(const contract::Schema& schema);

/// Makes the tables and the host's own for workflow states, with or without the demo companies, in a file that is empty
/// or not there, or in a server's database. Status 1 when one of the tables exists, 3 when the database
/// can not be opened or made.
void createDatabase(const std::string& connectionString, const contract::Schema& schema,
                    std::optional<std::int64_t> demoSize);

} // namespace host
