#pragma once

#include "contract/Statement.h"

#include <cstdint>

namespace qz {

/// Every link of every company: parents, cycles and GUIDs cross companies. The columns stand in the order of
/// colonna::Numero.
contract::Statement istruzioneTuttiILegami();

/// Every distinta of every company: id, company, code, kind.
contract::Statement istruzioneTutteLeDistinte();

/// The accounts of a company that have a registry entry: kind, account, name.
contract::Statement istruzioneAnagrafiche(std::int64_t ditta);

/// The state that a company's link parameters name, with the state itself: null where there is none of that number.
contract::Statement istruzioneStatoNeiParametri(std::int64_t ditta);

/// Columns of istruzioneTuttiILegami(), from 0.
namespace colonna {
enum Numero : std::uint8_t { id, distinta, padre, ditta, tipo, account, inizio, fine, guid };
}

} // namespace qz
