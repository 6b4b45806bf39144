#pragma once

#include "component/shared/StatoForm.h"

namespace qz {

/// Clears and fills both type lists, selects the initial entry and loads both trees.
void InizializzaDistinte(StatoForm& stato);

/// The user clicked an entry of a side's type list.
void TipoScelto(StatoForm& stato, Lato& lato);

} // namespace qz
