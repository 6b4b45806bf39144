#pragma once

#include "concurrent/Journal.h"
#include "property/MoveModel.h"

namespace concurrent {

/// Applies what a transaction asked for to the world by the independent model, as one user alone after the other would
/// meet it; a node that is no longer as the screen showed it refuses it. True when it
/// is kept.
bool apply(model::World& world, const Entry& entry);

} // namespace concurrent
