#pragma once

#include "host/windows/ToolCommands.h"

namespace host {

/// In the menu "Strumenti": the distinte of the form into a file ("mnuEsporta") and onto paper ("mnuStampa").
void addExportCommands(QMenu& menu, const ToolContext& context);

} // namespace host
