#pragma once

#include "host/windows/ToolCommands.h"

#include <QMenu>

namespace host {

/// The commands of the registry of moves: its window, and the tables where the database lacks them. The context is
/// copied.
void addRegistryCommands(QMenu& menu, const ToolContext& context);

} // namespace host
