#pragma once

#include "host/CommandLine.h"
#include "plugin/contract/Schema.h"

#include <optional>
#include <string>

namespace host {

// Which database the program works on, and how one is made. All throw StartFailure.

/// The embedded database that the command line, the environment or the saved connection asks for; nothing for the
/// default file. Status 3 for a connection over ODBC, which this build has no adapter for.
std::optional<std::string> wantedDatabase(const CommandLine& line, const std::optional<std::string>& saved);

/// The default file, made with the demo companies when it is not there yet: under another name, which is given up once
/// it is whole.
std::string prepareDefaultDatabase(const contract::Schema& schema);

/// Makes the tables, with or without the demo companies, in a file that is empty or not there. Status 1 when one of the
/// tables exists, 3 when the file is no database or can not be made.
void createDatabaseFile(const std::string& path, const contract::Schema& schema, std::optional<std::int64_t> demoSize);

} // namespace host
