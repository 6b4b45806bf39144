#pragma once

#include "contract/Snapshot.h"

namespace platform::shared {

/// Whether a column of that type holds days.
bool holdsDate(contract::FieldType type);

/// Whether a column of that type holds exact numbers or a flag.
bool holdsNumber(contract::FieldType type);

/// Whether a database can compare a column of that type with a literal for equality.
bool comparable(contract::FieldType type);

} // namespace platform::shared
