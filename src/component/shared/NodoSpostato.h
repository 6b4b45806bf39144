#pragma once

#include "component/shared/Identificativi.h"
#include "contract/Date.h"

#include <cstdint>
#include <optional>
#include <string>

namespace qz {

/// The node of the last move that was kept, as it is found again in the destination.
struct NodoSpostato {
    NodoId id;                            ///< its row; after a move with validity the one that was closed
    std::optional<CodiceAccount> account; ///< nothing where the row has none
    NodoId sotto;                         ///< its new parent
    std::optional<contract::Date> inizio; ///< first day of the new link; nothing after a structural move
};

/// What the last command did, as the status line says it until the next one. Loading the trees again raises focus
/// events; it is over when the user has moved one of the two since.
struct EsitoInVista {
    std::string testo; ///< empty for none
    std::optional<std::int64_t> fuocoOrigine;
    std::optional<std::int64_t> fuocoDestinazione;
};

} // namespace qz
