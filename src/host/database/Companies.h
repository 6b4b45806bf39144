#pragma once

#include "contract/Connection.h"

#include <cstdint>
#include <vector>

namespace host {

/// Companies in an open database, ascending: those of its distinte, else of its parameters, else of its accounts.
/// Outside of transactions.
std::vector<std::int64_t> companiesOf(contract::Connection& connection);

} // namespace host
