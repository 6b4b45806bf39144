#pragma once

#include "component/shared/StatoForm.h"
#include "contract/Statement.h"

#include <cstdint>

namespace qz {

/// The company's link parameters, with the defaults of null columns.
contract::Statement istruzioneParametri(std::int64_t ditta);

/// (Re)reads the company's row into the form's link parameters. A read that fails leaves them as they were.
void CaricaParametri(StatoForm& stato);

/// A flag column's value: zero is false, any other number true. Throws RuntimeError 13 for what is no number, null
/// included.
bool valoreFlag(const contract::Value& valore);

/// A short whole number, -32768 to 32767. Throws RuntimeError 13 for what is no whole number, null included, and 6
/// beyond the bounds.
std::int16_t interoBreve(const contract::Value& valore);

} // namespace qz
