#pragma once

#include "component/shared/Identificativi.h"
#include "contract/Date.h"
#include "contract/Value.h"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace qz {

/// Who changes rows, and when.
struct Autore {
    std::string utente;
    std::string gruppo;
    contract::Date oggi;
};

/// What a row of QZ02_DISTINTA says of its link.
struct Legame {
    std::optional<DistintaId> distinta;
    std::optional<NodoId> padre; ///< nothing for a root link
    std::optional<contract::Date> inizio;
    std::optional<contract::Date> fine;

    friend bool operator==(const Legame&, const Legame&) = default;
};

/// Invoicing account and its kind, structure, localised structure, promotion flag, as a new link gets them from the old
/// one; missing ones are left out.
using Facoltativi = std::array<contract::Value, 5>;

/// A row of QZ02_DISTINTA, as far as a move looks at it.
struct NodoLetto {
    NodoId id;
    std::optional<std::int64_t> ditta;
    std::optional<TipoCF> tipo;
    std::optional<CodiceAccount> account;
    Legame legame;
    /// Nothing where all five are missing.
    std::shared_ptr<const Facoltativi> facoltativi;
};

/// The company's rules for the new links of a move with validity.
struct ParametriLegame {
    std::int64_t stato = 0; ///< WF02_ID
    bool dateFisse = false; ///< the new links end at the fixed date, otherwise where the moved node's link ends
    std::optional<contract::Date> fineFissa;
};

/// How a move with validity parts old links from new ones.
struct Validita {
    contract::Date fine;   ///< last day of the closed links
    contract::Date inizio; ///< first day of the new links
    std::string guid;      ///< whose workflow state the new links get; empty for the default one
};

/// What is asked of a move: the origin's node goes, with everything below it, under the destination's node.
struct Richiesta {
    NodoLetto nodo;
    NodoId sotto;
    std::optional<CodiceAccount> accountSotto;
    DistintaId da;
    DistintaId a;
    std::int64_t ditta = 0;
    TipoCF tipoDa; ///< kind of the origin's accounts
    TipoCF tipoA;
    std::optional<Validita> validita; ///< nothing for a structural move
    Autore autore;
    ParametriLegame parametri;
};

/// What a move does with a node.
enum class Esito : std::uint8_t {
    siSposta,  ///< the row itself goes over
    siCopia,   ///< the link is closed and opened anew in the destination
    resta,     ///< left behind, with the reason where a check gave one
    rifiutato, ///< the node for which the whole move is refused
};

/// A link that a move opens.
struct LegameNuovo {
    std::optional<CodiceAccount> accountPadre;
    Legame legame;
    std::int64_t ditta = 0;
    TipoCF tipo{0};
    std::string guid{}; ///< under which it was written; empty where it is only supposed
};

/// A node that the walk came to.
struct RigaPiano {
    NodoId nodo;
    std::optional<CodiceAccount> account;
    Esito esito;
    std::string motivo; ///< the check's own text, without its line's end; empty where there is none
    Legame prima;
    Legame dopo;
    std::optional<LegameNuovo> copia;
};

/// What a move did or would do.
struct Piano {
    /// In the order of the walk, the moved node first.
    std::vector<RigaPiano> righe;
    /// The move message; where it is more than blanks, nothing of the move may be kept.
    std::string messaggio;
    /// The end of the new links, as the form's end-of-link text gets it; nothing while it is not fixed.
    std::optional<std::string> fineNuoviLegami;

    /// Whether the move must not be kept.
    bool rifiutato() const;
};

} // namespace qz
