#pragma once

#include "component/shared/StatoForm.h"

namespace qz {

/// Reads both distinte again. The focused nodes, the closed branches, the levels on the buttons and the uppermost rows
/// stay where they still exist; what is new is open. Errors are reported by the loads. Whether all that is loaded was
/// read.
bool AggiornaDistinte(StatoForm& stato);

} // namespace qz
