#pragma once

#include "plugin/contract/Date.h"
#include "plugin/contract/Statement.h"
#include "plugin/contract/Value.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace qz {

/// Who changes rows, and when.
struct Autore {
    std::string utente;
    std::string gruppo;
    contract::Date oggi;
};

/// The two nodes that a move would join, as the database holds them now: where they hang and their periods. The
/// destination may be missing.
contract::Statement istruzioneRilettura(const contract::Value& idOrigine, const contract::Value& idDestinazione);

/// The moved node gets its new parent, distinta and audit values. A missing id is written as nothing, which the
/// database refuses.
struct SpostaNodo {
    contract::Value idNodo;
    contract::Value idNuovoPadre;
    std::string_view idDistintaOrig;
    std::string_view idDistintaDest;
};
contract::Statement istruzioneSpostaNodo(const SpostaNodo& nodo, const Autore& autore);

/// Rows of the origin distinta.
contract::Statement istruzioneContaNodi(std::string_view idDistintaOrig);

/// Children of a node within the origin distinta.
contract::Statement istruzioneFigli(std::int64_t idPadre, std::string_view idDistintaOrig);

/// A descendant gets the destination distinta.
contract::Statement istruzioneAggiornaDistinta(std::int64_t idNodo, std::string_view idDistintaOrig,
                                               std::string_view idDistintaDest);

/// Closes a link at a date, or on its own start day when it starts later; a link that already ends by then stays.
struct ChiudiLegame {
    contract::Value idNodo;
    std::string_view idDistintaOrig;
    contract::Date fine;
};
contract::Statement istruzioneChiudiLegame(const ChiudiLegame& legame, const Autore& autore);

/// A node that is copied, with what its new link gets from it.
struct NodoDaCopiare {
    contract::Value idNodo;
    contract::Value idNuovoPadre;
    std::int64_t ditta = 0;
    std::int64_t tipoCF = 0;
    contract::Value account;
    /// Invoicing account and its kind, structure, localised structure, promotion flag; missing ones are left out.
    std::array<contract::Value, 5> facoltativi{};
};

/// What every new link of one move has in common.
struct NuovoLegame {
    std::string_view idDistintaDest;
    std::int64_t stato = 0; ///< WF02_ID
    contract::Date inizio;
    std::string_view fine; ///< "dd/mm/yyyy"
    std::string_view guid;
};
contract::Statement istruzioneInserisciLegame(const NodoDaCopiare& nodo, const NuovoLegame& legame,
                                              const Autore& autore);

} // namespace qz
