#pragma once

#include "host/demo/DemoModel.h"
#include "host/demo/DemoTarget.h"

namespace host {

// Both leave the rows in the target, whose owner finishes it.

void writeDemoData(const DemoData& data, DemoTarget& target);
/// The nodes' workflow states into the host's own tables.
void writeDemoStates(const DemoData& data, DemoTarget& target);

} // namespace host
