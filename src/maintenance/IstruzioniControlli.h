#pragma once

#include "plugin/contract/Date.h"
#include "plugin/contract/Statement.h"
#include "plugin/contract/Value.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace qz {

/// Count of a distinta's rows, of a company.
contract::Statement istruzioneContaDitta(std::int64_t ditta, std::string_view idDistinta);

/// Accounts of the parent links of every link that an account has in a distinta, over all periods.
contract::Statement istruzionePadri(std::int64_t ditta, std::int64_t account, std::int64_t tipoCF,
                                    std::string_view idDistinta);

/// Node of the destination that stands for a node of the origin: a link of the same account, in whatever distinta; with
/// a start date only one that starts on it.
contract::Statement istruzioneDecodificaPadre(std::int64_t idNodo, std::optional<contract::Date> inizio);

/// A node by its id.
contract::Statement istruzioneNodo(std::int64_t ditta, std::int64_t idNodo);

/// The links of an account whose period overlaps a new one, both ends included; one node may be left out.
struct RicercaSovrapposti {
    std::int64_t ditta = 0;
    std::int64_t tipoCF = 0;
    contract::Value account;
    contract::Date inizio;
    std::string_view fine; ///< "dd/mm/yyyy"
    std::optional<std::int64_t> nodoEscluso{};
};
contract::Statement istruzioneSovrapposti(const RicercaSovrapposti& ricerca);

/// A definitive settlement of a node's bonuses; with a date only one that falls due after it ("dd/mm/yyyy").
contract::Statement istruzionePremio(std::int64_t ditta, std::int64_t idNodo,
                                     std::optional<std::string_view> scadenzaDopo);

} // namespace qz
