#pragma once

#include "component/maintenance/Scritture.h"
#include "contract/Statement.h"
#include "contract/Value.h"

#include <optional>
#include <string_view>

namespace qz {

/// The two nodes that a move would join, as the database holds them now: where they hang and their periods. The
/// destination may be missing.
contract::Statement istruzioneRilettura(const contract::Value& idOrigine, const contract::Value& idDestinazione);

/// The moved node gets its new parent, distinta and audit values. A missing id is written as nothing, which the
/// database refuses.
contract::Statement istruzioneSpostaNodo(std::optional<NodoId> nodo, std::optional<NodoId> sotto, DistintaId da,
                                         DistintaId a, const Autore& autore);

/// Rows of a distinta.
contract::Statement istruzioneContaNodi(DistintaId distinta);

/// Children of a node within a distinta.
contract::Statement istruzioneFigli(NodoId padre, DistintaId distinta);

/// A descendant gets the destination distinta.
contract::Statement istruzioneAggiornaDistinta(NodoId nodo, DistintaId da, DistintaId a);

/// Closes a link at a date, or on its own start day when it starts later; a link that already ends by then stays.
contract::Statement istruzioneChiudiLegame(NodoId nodo, DistintaId distinta, contract::Date fine, const Autore& autore);

/// The parts of an insertion: up to "VALUES", and the values of one row between their brackets.
void aggiungiColonneLegame(contract::Statement& s, const NodoDaCopiare& nodo);
void aggiungiValoriLegame(contract::Statement& s, const NodoDaCopiare& nodo, const NuovoLegame& legame,
                          std::string_view guid, const Autore& autore);

/// Opens a link under the GUID that the host made for it.
contract::Statement istruzioneInserisciLegame(const NodoDaCopiare& nodo, const NuovoLegame& legame,
                                              std::string_view guid, const Autore& autore);

} // namespace qz
