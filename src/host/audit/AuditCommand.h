#pragma once

#include "host/audit/Audits.h"
#include "host/windows/ToolCommands.h"

namespace host {

/// Audits the session's company and shows the window with the findings until it is left; then shows the node that it
/// was left for. What was found; no report where the audit failed or was given up, which the window has told.
AuditResult showAudit(HostSession& session, QWidget* window);

/// The audit in the menu "Strumenti".
void addAuditCommands(QMenu& menu, const ToolContext& context);

} // namespace host
