#include "host/script/ScriptPreview.h"

#include "host/script/ScriptCommands.h"
#include "host/services/Text.h"
#include "host/windows/PreviewCommands.h"

#include <QJsonArray>

namespace host {

namespace {

QString outcomeName(contract::MoveOutcome outcome) {
    switch (outcome) {
    case contract::MoveOutcome::moves:
        return QStringLiteral("moves");
    case contract::MoveOutcome::copies:
        return QStringLiteral("copies");
    case contract::MoveOutcome::closes:
        return QStringLiteral("closes");
    case contract::MoveOutcome::stays:
        return QStringLiteral("stays");
    case contract::MoveOutcome::refused:
        break;
    }
    return QStringLiteral("refused");
}

QJsonValue number(const std::optional<std::int64_t>& value) {
    return value ? QJsonValue(static_cast<qint64>(*value)) : QJsonValue();
}
QJsonValue day(const std::optional<contract::Date>& value) {
    return value ? QJsonValue(toQt(value->text())) : QJsonValue();
}
QJsonValue textOrNull(const std::string& text) {
    return text.empty() ? QJsonValue() : QJsonValue(toQt(text));
}

QJsonValue link(const contract::MoveRow& row, const contract::MoveLink& link) {
    if (!row.id)
        return QJsonValue::Null;
    return QJsonObject{{QStringLiteral("type"), number(link.type)},
                       {QStringLiteral("parent"), number(link.parent)},
                       {QStringLiteral("start"), day(link.start)},
                       {QStringLiteral("end"), day(link.end)}};
}

} // namespace

QJsonObject planRowJson(const contract::MoveRow& row) {
    QJsonObject object{{QStringLiteral("id"), number(row.id)},
                       {QStringLiteral("account"), number(row.account)},
                       {QStringLiteral("name"), toQt(row.name)},
                       {QStringLiteral("outcome"), outcomeName(row.outcome)},
                       {QStringLiteral("reason"), textOrNull(row.reason)},
                       {QStringLiteral("before"), link(row, row.before)},
                       {QStringLiteral("after"), link(row, row.after)},
                       {QStringLiteral("copy"), QJsonValue::Null}};
    if (row.copy)
        object.insert(QStringLiteral("copy"),
                      QJsonObject{{QStringLiteral("type"), number(row.copy->type)},
                                  {QStringLiteral("parent_account"), number(row.copy->parentAccount)},
                                  {QStringLiteral("start"), day(row.copy->start)},
                                  {QStringLiteral("end"), day(row.copy->end)}});
    if (row.line)
        object.insert(QStringLiteral("line"), number(row.line));
    return object;
}

QJsonObject planJson(const contract::MovePlan& plan) {
    QJsonArray rows;
    QJsonObject counts;
    for (const auto& row : plan.rows) {
        rows.append(planRowJson(row));
        const QString outcome = outcomeName(row.outcome);
        counts.insert(outcome, counts.value(outcome).toInt() + 1);
    }
    return {{QStringLiteral("refused"), textOrNull(plan.refused)},
            {QStringLiteral("rows"), rows},
            {QStringLiteral("counts"), counts}};
}

namespace {

bool flag(const ScriptRequest& request, const QString& name) {
    if (!request.has(name))
        return false;
    const QJsonValue value = request.value(name);
    if (!value.isBool())
        throw ScriptRefusal(QStringLiteral("\"%1\" vuole true o false").arg(name));
    return value.toBool();
}

void insertPlan(QJsonObject& reply, const contract::MovePlan& plan) {
    const QJsonObject members = planJson(plan);
    for (auto member = members.begin(); member != members.end(); ++member)
        reply.insert(member.key(), member.value());
}

} // namespace

void ScriptCommands::preview(const ScriptRequest& request, QJsonObject& reply) {
    const contract::MoveManner manner{flag(request, QStringLiteral("validity")), optionalDay(request)};
    refuseOverDialog();
    mainForm();
    insertPlan(reply, showPreview(session_, hostWindow_, manner));
}

void ScriptCommands::moves(const ScriptRequest& request, QJsonObject& reply) {
    const bool apply = flag(request, QStringLiteral("apply"));
    const bool selected = flag(request, QStringLiteral("selected"));
    const auto file = request.optionalText(QStringLiteral("file"));
    if (selected == file.has_value() || (file && file->isEmpty()))
        throw ScriptRefusal(QStringLiteral("serve \"file\", con il nome di un elenco, oppure \"selected\": true"));
    const contract::MoveManner manner{flag(request, QStringLiteral("validity")), optionalDay(request)};
    refuseOverDialog();
    mainForm();
    insertPlan(reply, selected ? showSelected(session_, hostWindow_, manner, apply)
                               : showMoveList(session_, hostWindow_, *file, apply));
}

} // namespace host
