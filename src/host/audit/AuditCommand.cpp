#include "host/audit/AuditCommand.h"

#include "contract/RuntimeError.h"
#include "host/audit/AuditWindow.h"
#include "host/start/HostSession.h"
#include "host/windows/NodePlace.h"
#include "host/windows/WorkProgress.h"

#include <QAction>

namespace host {

AuditResult showAudit(HostSession& session, QWidget* window) {
    const auto component = session.newClass();
    const auto audit = [&]() -> AuditResult {
        if (!component)
            throw contract::RuntimeError(contract::RuntimeError::objectNotSet, "Il componente non si lascia creare.");
        WorkProgress work("legami");
        return auditDistinte(*component, session.connection(), session.company(), work);
    };
    AuditWindow shown(session.company(), audit, window);
    shown.refresh();
    shown.run();
    if (const auto& wanted = shown.wanted())
        if (const QString reason = showNode(session, *wanted->type, *wanted->node); !reason.isEmpty())
            emit session.statusText(
                QStringLiteral("Il nodo %1 non si può mostrare: %2.").arg(*wanted->node).arg(reason));
    return shown.result();
}

void addAuditCommands(QMenu& menu, const ToolContext& context) {
    auto* audit = menu.addAction(QStringLiteral("&Verifica delle distinte…"));
    audit->setObjectName(QStringLiteral("mnuVerifica"));
    QObject::connect(audit, &QAction::triggered, context.window, [context] {
        if (auto* session = context.session())
            showAudit(*session, context.window);
    });
}

} // namespace host
