#pragma once

#include "component/shared/StatoForm.h"
#include "contract/MovePreview.h"

namespace qz {

/// Why a destination without nodes takes none.
inline constexpr std::string_view senzaCapostipiti =
    "La distinta di destinazione selezionata non contiene nodi capostipite!";

/// What a move of the focused nodes would do, refusals of the command itself included. Nothing is written, no
/// transaction begun, and the state stays as it is. Database errors come through; RuntimeError 6 for a day that none
/// follows.
contract::MovePlan anteprima(const StatoForm& stato, const contract::MoveManner& modo);

/// The last day of the closed links that the form would take by itself: that of its end-of-link text, or today.
contract::Date fineProposta(const StatoForm& stato);

/// Puts the focus on a node, in the origin's tree or else in the destination's. False when neither shows it.
bool mostraNodo(StatoForm& stato, std::int64_t nodo);

} // namespace qz
