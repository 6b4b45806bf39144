#pragma once

#include "component/shared/StatoForm.h"

#include <string_view>

namespace qz {

/// Loads an account's registry and commercial data into a detail grid, with a division's overrides unless it is empty
/// or blank. The account kind is the origin's on both sides, which relies on both holding the same.
void CaricaDatiAnagrafici(StatoForm& stato, const contract::Value& codice, contract::DetailGrid& griglia,
                          std::string_view divisione);

/// Clears a grid with the form locked against redrawing.
void SvuotaFlex(StatoForm& stato, contract::DetailGrid& griglia);

} // namespace qz
