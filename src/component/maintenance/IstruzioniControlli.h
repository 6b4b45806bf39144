#pragma once

#include "component/maintenance/Letture.h"
#include "contract/Statement.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace qz {

/// Count of a distinta's rows, of a company.
contract::Statement istruzioneContaDitta(std::int64_t ditta, DistintaId distinta);

/// Accounts of the parent links of every link that an account has in a distinta, over all periods.
contract::Statement istruzionePadri(const Soggetto& soggetto, DistintaId distinta);

/// Node of the destination that stands for a node of the origin: a link of the same account, in whatever distinta; with
/// a start date only one that starts on it.
contract::Statement istruzioneDecodificaPadre(NodoId nodo, std::optional<contract::Date> inizio);

/// A node by its id.
contract::Statement istruzioneNodo(std::int64_t ditta, NodoId nodo);

/// The links of an account whose period overlaps a new one, both ends included; one node may be left out.
contract::Statement istruzioneSovrapposti(const Soggetto& soggetto, const Periodo& periodo,
                                          std::optional<NodoId> escluso);

/// A definitive settlement of a node's bonuses; with a date only one that falls due after it ("dd/mm/yyyy").
contract::Statement istruzionePremio(std::int64_t ditta, NodoId nodo, std::optional<std::string_view> scadenzaDopo);

} // namespace qz
