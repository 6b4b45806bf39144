#pragma once

#include "component/maintenance/Piano.h"
#include "contract/Connection.h"
#include "contract/MoveLists.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace qz {

/// What the moves of a list have in common.
struct AmbitoElenco {
    std::int64_t ditta = 0;
    Autore autore;
    ParametriLegame parametri;
    std::optional<DistintaId> origine; ///< of lines that name none; nothing: the first one in which the account stands
    std::optional<DistintaId> destinazione;
};

/// A node of the screen that goes under another one, both by their ids and as the screen shows them.
struct NodoScelto {
    NodoId nodo{0};
    std::optional<CodiceAccount> account;
    Legame legame;
};

/// A line of a list: what it says of accounts, or a node that was chosen on the screen.
struct VoceElenco {
    contract::MoveLine scritta;
    std::optional<NodoScelto> scelto;
    std::optional<NodoScelto> sotto; ///< of a chosen node
};

/// A move of a list and what it did or would do.
struct SpostamentoElenco {
    std::int64_t riga = 0;
    std::optional<Richiesta> richiesta; ///< nothing where the line names no move
    std::optional<CodiceAccount> account;
    Piano piano;
};

/// Whether one of the moves is refused: nothing of the list may be kept then.
bool rifiutato(std::span<const SpostamentoElenco> spostamenti);

/// What the moves of a list would do, each through the changes of those before it that are not refused. Nothing is
/// written and no transaction begun. Database errors come through.
std::vector<SpostamentoElenco> supponiElenco(contract::Connection& database, const AmbitoElenco& ambito,
                                             std::span<const VoceElenco> voci);

/// Does one move; the plan grows while it is done.
using Esecutore = std::function<void(const Richiesta&, Piano&)>;

/// Does the moves of a list under the caller's transaction, up to the first one that is refused. Errors come through.
std::vector<SpostamentoElenco> eseguiElenco(contract::Connection& database, const AmbitoElenco& ambito,
                                            std::span<const VoceElenco> voci, const Esecutore& esegui);

/// Puts the moves into the words of the contract.
contract::MovePlan anteprimaElenco(std::span<const SpostamentoElenco> spostamenti, contract::Connection& database);

} // namespace qz
