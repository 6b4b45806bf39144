#pragma once

#include "contract/MovePreview.h"
#include "host/windows/ToolCommands.h"

namespace host {

/// Shows the preview of a move of the focused nodes until it is left, and does what it was left for: runs the form's
/// command, or shows a node in its tree. The plan that the window showed last. Throws RuntimeError with the reason
/// where there is no form or no plan.
contract::MovePlan showPreview(HostSession& session, QWidget* window, const contract::MoveManner& manner);

/// The same for the topmost checked nodes. apply: moves them at once, as who answers yes, unless the plan is refused.
contract::MovePlan showSelected(HostSession& session, QWidget* window, const contract::MoveManner& manner, bool apply);

/// The same for a list; without a file the window waits for one. Throws RuntimeError also where the file can not be
/// read or is no list.
contract::MovePlan showMoveList(HostSession& session, QWidget* window, const QString& file, bool apply);

/// The previews and lists of moves in the menu "Strumenti".
void addPreviewCommands(QMenu& menu, const ToolContext& context);

} // namespace host
