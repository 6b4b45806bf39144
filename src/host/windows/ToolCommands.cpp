#include "host/windows/ToolCommands.h"

#include "host/windows/BackupCommand.h"
#include "host/windows/PreviewCommands.h"
#include "host/windows/RegistryCommands.h"

namespace host {

void addToolCommands(QMenu& menu, const ToolContext& context) {
    addPreviewCommands(menu, context);
    addBackupCommand(menu, *context.window, context.session, context.say);
    addRegistryCommands(menu, context);
}

} // namespace host
