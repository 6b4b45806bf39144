#pragma once

#include "component/maintenance/Piano.h"
#include "component/shared/StatoForm.h"

#include <string_view>

namespace qz {

/// Moves the origin's focused node with its subtree under the destination's focused node, in one transaction;
/// structural or with validity. Ends with both trees loaded again and scrolled back, whether it committed or showed the
/// move message and rolled back. Database errors, and contract::Cancelled, come through with nothing of the move kept
/// and no transaction open; the trees are not loaded again then.
void EseguiSpostamento(StatoForm& stato, bool validita);

/// The move that the form would ask for now. Throws RuntimeError 3021 where a side stands on no record, 13 where the
/// end-of-link text is no date or a distinta's id no number.
Richiesta richiestaDiSpostamento(const StatoForm& stato, bool validita);
/// The same with another end-of-link text than the form's.
Richiesta richiestaDiSpostamento(const StatoForm& stato, bool validita, std::string_view fineLegame);

} // namespace qz
