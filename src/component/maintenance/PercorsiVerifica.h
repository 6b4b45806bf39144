#pragma once

#include "component/maintenance/LegamiVerifica.h"

#include <cstdint>
#include <vector>

namespace qz {

/// Where the way from a link up over its parents ends.
enum class Percorso : std::uint8_t {
    ignoto,
    inCorso,
    radice,      ///< at a link without parent
    orfano,      ///< at once: the link's own parent does not exist
    anello,      ///< at the link itself
    senzaRadice, ///< above, on a cycle or at a parent that does not exist
};

/// The ways of all links, in their order. Every link is walked over once.
std::vector<Percorso> percorsiDi(const std::vector<LegameVerifica>& righe);

} // namespace qz
