#pragma once

#include "plugin/contract/Schema.h"

#include <cstdint>
#include <string>

namespace host {

/// Makes the tables and the demo companies in a database file that is empty or not there, and their workflow states in
/// the host's file beside it: all of it, or nothing. Throws RuntimeError (database).
void createDemoDatabase(const std::string& path, const contract::Schema& schema, std::int64_t largest);

} // namespace host
