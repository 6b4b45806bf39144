// The request that audits the company.

#include "host/audit/AuditCommand.h"
#include "host/audit/AuditTable.h"
#include "host/script/ScriptCommands.h"

#include <QJsonArray>

namespace host {

void ScriptCommands::audit(const ScriptRequest&, QJsonObject& reply) {
    refuseOverDialog();
    const auto result = showAudit(session_, hostWindow_);
    if (!result.report)
        throw ScriptRefusal(QStringLiteral("la verifica non è riuscita"));
    QJsonArray findings;
    for (std::size_t i = 0; i < result.report->size(); ++i)
        findings.append(findingJson(result, i));
    reply.insert(QStringLiteral("findings"), findings);
}

} // namespace host
