#pragma once

#include "component/shared/Lato.h"
#include "contract/Statement.h"

#include <cstdint>
#include <string_view>

namespace qz {

/// A distinta's id, kept as text, where a statement writes it without quotes. Throws RuntimeError 13 unless the text is
/// a whole number.
std::int64_t idSenzaApici(std::string_view idDistinta);

/// The distinta types of a company, of one account kind (0 customers, 1 suppliers).
contract::Statement istruzioneTipi(std::int64_t ditta, int tipoCF);

/// Division of a type; on the side that reads it, its GUID too.
contract::Statement istruzioneDivisione(const DescrizioneLato& lato, std::string_view idTipo);

/// The nodes of a distinta, as a side loads them.
contract::Statement istruzioneNodi(const DescrizioneLato& lato, std::int64_t ditta, std::int64_t tipoCF,
                                   std::string_view idTipo);

} // namespace qz
