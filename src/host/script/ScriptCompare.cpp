// The request that compares the two distinte on the screen.

#include "contract/RuntimeError.h"
#include "host/comparison/ComparisonCommand.h"
#include "host/comparison/ComparisonTable.h"
#include "host/script/ScriptCommands.h"
#include "host/services/Text.h"

#include <QJsonArray>

namespace host {

namespace {

std::optional<contract::Date> dayOf(const ScriptRequest& request) {
    const auto text = request.optionalText(QStringLiteral("date"));
    if (!text)
        return std::nullopt;
    const auto day = contract::Date::parse(text->toStdString());
    if (!day)
        throw ScriptRefusal(QStringLiteral("\"date\" vuole un giorno gg/mm/aaaa, non \"%1\"").arg(*text));
    return day;
}

} // namespace

void ScriptCommands::compare(const ScriptRequest& request, QJsonObject& reply) {
    const auto day = dayOf(request);
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
