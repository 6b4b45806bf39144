#pragma once

#include "component/shared/StatoForm.h"
#include "contract/MoveLists.h"

#include <vector>

namespace qz {

/// What is moved together.
struct Insieme {
    std::vector<contract::MoveLine> righe; ///< of a list
    contract::Unnamed senzaNome = contract::Unnamed::onScreen;
    bool selezionati =
        false; ///< instead of lines, the topmost checked nodes of the origin under the destination's node
    contract::MoveManner modo; ///< of the checked nodes
};

/// What the moves would do, each through the changes of those before it. Nothing is written, no transaction begun, and
/// the state stays as it is. Database errors come through.
contract::MovePlan anteprima(const StatoForm& stato, const Insieme& insieme);

/// Does the moves in one transaction, all or nothing, and loads both trees again. Database errors come through with
/// nothing written; the trees are not loaded again then.
contract::MovePlan esegui(StatoForm& stato, const Insieme& insieme);

} // namespace qz
