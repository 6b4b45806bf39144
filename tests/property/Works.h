#pragma once

#include "property/Program.h"
#include "property/SmallWorld.h"

#include <vector>

namespace property {

/// Does the work on screens that show both sides; error displays get the answers given.
inline void doWork(Program& program, Work work, const std::vector<int>& answers = {}) {
    if (work == Work::edit)
        program.edit(12, "trQZ02_DATAFINEVAL", "31/12/2030", answers);
    else
        program.press(moveOf(work), answers);
}

} // namespace property
