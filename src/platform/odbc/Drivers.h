#pragma once

#include <string>
#include <vector>

namespace platform::odbc {

/// The names of the drivers that this machine's driver manager knows, in its order; none where it knows none.
std::vector<std::string> installedDrivers();

} // namespace platform::odbc
