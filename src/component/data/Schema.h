#pragma once

#include "contract/Schema.h"

namespace qz {

/// Every table and column that the component reads or writes: its own, and those of the host.
const contract::Schema& schema();

} // namespace qz
