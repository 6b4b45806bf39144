#include "host/windows/ToolCommands.h"

#include "host/audit/AuditCommand.h"
#include "host/comparison/ComparisonCommand.h"
#include "host/windows/BackupCommand.h"
#include "host/windows/ExportCommands.h"
#include "host/windows/PreviewCommands.h"
#include "host/windows/RegistryCommands.h"

namespace host {

void addToolCommands(QMenu& menu, const ToolContext& context) {
    addAuditCommands(menu, context);
    addComparisonCommands(menu, context);
    addPreviewCommands(menu, context);
    addBackupCommand(menu, *context.window, context.session, context.say);
    addExportCommands(menu, context);
    addRegistryCommands(menu, context);
}

} // namespace host
