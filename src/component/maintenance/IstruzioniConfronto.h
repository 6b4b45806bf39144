#pragma once

#include "contract/Statement.h"

#include <cstdint>

namespace qz {

/// A company's distinte: id, kind, code, description.
contract::Statement istruzioneDistinteDellaDitta(std::int64_t ditta);

/// The links that a distinta's tree shows: id, parent, account, start, end, name of the account.
contract::Statement istruzioneLegamiDistinta(std::int64_t ditta, std::int64_t tipo, std::int64_t distinta);

} // namespace qz
