// The request that compares the two distinte on the screen.

#include "contract/RuntimeError.h"
#include "host/comparison/ComparisonCommand.h"
#include "host/comparison/ComparisonTable.h"
#include "host/script/ScriptCommands.h"
#include "host/services/Text.h"

#include <QJsonArray>

namespace host {

void ScriptCommands::compare(const ScriptRequest& request, QJsonObject& reply) {
    const auto day = optionalDay(request);
    refuseOverDialog();
    mainForm();
    std::shared_ptr<const contract::ComparisonReport> report;
    try {
        report = showComparison(session_, hostWindow_, day);
    } catch (const contract::RuntimeError& error) {
        throw ScriptRefusal(toQt(error.description()));
    }
    if (!report)
        throw ScriptRefusal(QStringLiteral("il confronto non è riuscito"));
    QJsonArray rows;
    for (std::size_t i = 0; i < report->size(); ++i)
        rows.append(comparisonRowJson(report->row(i)));
    reply.insert(QStringLiteral("rows"), rows);
}

} // namespace host
