#pragma once

#include "contract/Snapshot.h"
#include "contract/Value.h"

#include <string>

namespace qz {

/// A field's value as the detail grid shows it: numbers grouped the Italian way ("." between thousands, "," before two
/// decimals when the field has a numeric scale, none otherwise, rounded half away from zero), dates as "dd/mm/yyyy",
/// everything else as text without blanks at its ends. Empty for a missing value.
std::string formattaValore(contract::FieldType tipo, int decimali, const contract::Value& valore);

} // namespace qz
