#pragma once

#include "contract/Schema.h"

#include <cstdint>
#include <string>

namespace platform::odbc {
class Connection;
}

namespace host {

/// Makes the tables and the demo companies in a database file that is empty or not there, and their workflow states in
/// the host's tables there: all of it, or nothing. Throws RuntimeError (database).
void createDemoDatabase(const std::string& path, const contract::Schema& schema, std::int64_t largest);

/// The same in the database of an open connection, the workflow states in the host's tables there.
void createDemoDatabase(platform::odbc::Connection& connection, const contract::Schema& schema, std::int64_t largest);

} // namespace host
