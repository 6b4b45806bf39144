#pragma once

#include "contract/MovePreview.h"
#include "host/windows/ToolCommands.h"

namespace host {

/// Shows the preview of a move of the focused nodes until it is left, and does what it was left for: runs the form's
/// command, or shows a node in its tree. The plan that the window showed last. Throws RuntimeError with the reason
/// where there is no form or no plan.
contract::MovePlan showPreview(HostSession& session, QWidget* window, const contract::MoveManner& manner);

/// The previews and lists of moves in the menu "Strumenti".
void addPreviewCommands(QMenu& menu, const ToolContext& context);

} // namespace host
