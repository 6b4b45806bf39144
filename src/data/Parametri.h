#pragma once

#include "form/shared/StatoForm.h"
#include "plugin/contract/Statement.h"

#include <cstdint>

namespace qz {

/// The company's link parameters, with the defaults of null columns.
contract::Statement istruzioneParametri(std::int64_t ditta);

/// (Re)reads the company's row into the form's link parameters. A read that fails leaves them as they were.
void CaricaParametri(StatoForm& stato);

} // namespace qz
