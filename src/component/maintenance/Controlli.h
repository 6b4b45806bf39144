#pragma once

#include "component/maintenance/CodaLimitata.h"
#include "component/maintenance/Letture.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace qz {

// The checks that keep a distinta without cycles and overlaps. Each gives the reason for which it refuses, ending with
// a line feed, or nothing. Database errors come through.

using Motivo = std::optional<std::string>;

/// Where a move's checks look.
struct AmbitoSpostamento {
    std::int64_t ditta = 0;
    DistintaId da;
    DistintaId a;
    TipoCF tipoDa; ///< names the accounts in the reasons
    TipoCF tipoA;
};

/// Whether account a may hang under account b in the destination: refused if b is a or hangs below a. A missing account
/// equals nothing.
Motivo ControllaRicorsione(Letture& letture, const AmbitoSpostamento& ambito, std::optional<CodiceAccount> a,
                           std::optional<CodiceAccount> b);

/// Whether a node may hang under another one: refused, in the words of ControllaRicorsione, if it stands above it. That
/// one compares accounts, and of several links of an account only the first; this one follows the links themselves,
/// so that no branch ever closes into a ring, which no tree would show. A ring that stands already ends the way.
Motivo ControllaDiscendenza(Letture& letture, const AmbitoSpostamento& ambito, const NodoLetto& nodo,
                            NodoId destinazione);

/// Rows of the origin distinta of the company, plus one.
std::int64_t ContaNodiDitta(Letture& letture, const AmbitoSpostamento& ambito);

/// Queues every parent account.
void AccodaPadri(std::span<const std::optional<CodiceAccount>> padri, CodaLimitata<std::optional<CodiceAccount>>& coda);

/// Node of the destination that stands for a node of the origin; with a start date, the copy that starts on it. Nothing
/// when there is none.
std::optional<PadreDecodificato> DecodificaPadre(Letture& letture, NodoId nodo, std::optional<contract::Date> inizio);

/// Link whose period and parent are tested.
struct LegameDaControllare {
    std::int64_t dittaDelPadre = 0;
    std::optional<NodoId> padre; ///< a missing one is looked for as node 0
    std::int64_t ditta = 0;
    TipoCF tipo{0};
    CodiceAccount account{0};
    TipoCF tipoOrigine{0}; ///< names the account in the reasons
    contract::Date inizio;
    std::string fine;             ///< "dd/mm/yyyy"
    std::optional<NodoId> nodo{}; ///< the edited node, in the mode "Edit"; nothing in the mode "Sposta"
};

/// Whether the link may be saved.
Motivo ControllaLegami(Letture& letture, const LegameDaControllare& legame);

/// Why the start of a link with a definitive bonus stays as it is.
inline constexpr std::string_view dataInizioBloccata =
    "La data inizio non può essere modificata perchè è presente un premio definitivo";

/// Whether a definitive bonus blocks a change of a node's validity. Only an end date looks at the date ("dd/mm/yyyy").
Motivo PremioDefinitivo(Letture& letture, std::int64_t ditta, NodoId nodo, bool dataFine, std::string_view data);

} // namespace qz
