#pragma once

#include "component/maintenance/Piano.h"
#include "contract/MoveRegistry.h"
#include "contract/Statement.h"

#include <span>

namespace qz {

// Statements that take an operation back. Values are those of the registry, their columns those of QZ02_DISTINTA.

/// Rows get values back. One to elementiPerIstruzione rows; at least one value.
contract::Statement istruzioneRipristina(std::span<const NodoId> nodi, const contract::RowValues& valori);

/// Rows go. One to elementiPerIstruzione rows.
contract::Statement istruzioneElimina(std::span<const NodoId> nodi);

/// A row that was deleted comes back under its own id.
contract::Statement istruzioneReinserisci(NodoId nodo, const contract::RowValues& valori);

/// Whether rows may be inserted under an id that the caller gives.
contract::Statement istruzioneIdScelti(bool consentiti);

} // namespace qz
