// The registry of moves, read and gone back through its window.

#include "host/script/ScriptCommands.h"
#include "host/services/Text.h"
#include "host/windows/RegistryWindow.h"

#include <QJsonArray>

namespace host {

namespace {

using contract::OperationKind;
using contract::RowOutcome;

QString nameOf(OperationKind kind) {
    switch (kind) {
    case OperationKind::structure:
        return QStringLiteral("structure");
    case OperationKind::validity:
        return QStringLiteral("validity");
    case OperationKind::edit:
        return QStringLiteral("edit");
    case OperationKind::list:
        return QStringLiteral("list");
    case OperationKind::undo:
        return QStringLiteral("undo");
    }
    return {};
}

QString nameOf(RowOutcome outcome) {
    switch (outcome) {
    case RowOutcome::moves:
        return QStringLiteral("moves");
    case RowOutcome::copies:
        return QStringLiteral("copies");
    case RowOutcome::opens:
        return QStringLiteral("opens");
    case RowOutcome::stays:
        return QStringLiteral("stays");
    case RowOutcome::edits:
        return QStringLiteral("edits");
    case RowOutcome::restores:
        return QStringLiteral("restores");
    case RowOutcome::deletes:
        return QStringLiteral("deletes");
    }
    return {};
}

QJsonValue number(std::optional<std::int64_t> value) {
    return value ? QJsonValue(static_cast<qint64>(*value)) : QJsonValue(QJsonValue::Null);
}

QJsonValue values(const std::optional<contract::RowValues>& row) {
    if (!row)
        return QJsonValue::Null;
    QJsonObject object;
    for (const auto& [column, value] : *row)
        object.insert(toQt(column), toJson(value));
    return object;
}

QJsonObject asJson(const contract::Operation& operation) {
    return {{QStringLiteral("id"), static_cast<qint64>(operation.id)},
            {QStringLiteral("day"), toQt(operation.day.text())},
            {QStringLiteral("time"), toQt(operation.time)},
            {QStringLiteral("user"), toQt(operation.user)},
            {QStringLiteral("group"), toQt(operation.group)},
            {QStringLiteral("kind"), nameOf(operation.kind)},
            {QStringLiteral("description"), toQt(operation.description)},
            {QStringLiteral("undoes"), number(operation.undoes)},
            {QStringLiteral("undone_by"), number(operation.undoneBy)},
            {QStringLiteral("rows"), static_cast<qint64>(operation.rows)}};
}

QJsonObject asJson(const contract::OperationRow& row) {
    return {{QStringLiteral("row"), static_cast<qint64>(row.row)}, {QStringLiteral("id"), static_cast<qint64>(row.id)},
            {QStringLiteral("account"), number(row.account)},      {QStringLiteral("outcome"), nameOf(row.outcome)},
            {QStringLiteral("before"), values(row.before)},        {QStringLiteral("after"), values(row.after)}};
}

QJsonObject asJson(const contract::Obstacle& obstacle) {
    return {{QStringLiteral("id"), number(obstacle.id)},
            {QStringLiteral("account"), number(obstacle.account)},
            {QStringLiteral("reason"), toQt(obstacle.reason)}};
}

template <class Items> QJsonArray list(const Items& items) {
    QJsonArray array;
    for (const auto& item : items)
        array.append(asJson(item));
    return array;
}

void refuseWithout(const HostSession& session) {
    if (!session.hasRegistry())
        throw ScriptRefusal(QStringLiteral("il database non ha le tabelle del registro degli spostamenti"));
    if (session.registry() == nullptr)
        throw ScriptRefusal(QStringLiteral("la maschera %1 non è aperta").arg(QLatin1String(HostSession::mainForm)));
}

void chooseOperation(RegistryWindow& window, qint64 id) {
    if (!window.choose(id))
        throw ScriptRefusal(QStringLiteral("il registro degli spostamenti non contiene l'operazione %1").arg(id));
}

} // namespace

void ScriptCommands::registry(const ScriptRequest& request, QJsonObject& reply) {
    const auto id = request.optionalInteger(QStringLiteral("id"));
    refuseOverDialog();
    refuseWithout(session_);
    RegistryWindow window(session_, hostWindow_);
    if (id)
        chooseOperation(window, *id);
    QJsonArray operations;
    for (const auto& operation : window.operations())
        if (!id || operation.id == *id)
            operations.append(asJson(operation));
    reply.insert(QStringLiteral("operations"), operations);
    if (id)
        reply.insert(QStringLiteral("rows"), list(window.rows()));
}

void ScriptCommands::undo(const ScriptRequest& request, QJsonObject& reply) {
    const auto id = request.integer(QStringLiteral("id"));
    const bool preview = request.has(QStringLiteral("preview")) && request.value(QStringLiteral("preview")).toBool();
    refuseOverDialog();
    refuseWithout(session_);
    RegistryWindow window(session_, hostWindow_);
    chooseOperation(window, id);
    const auto outcome = preview ? session_.registry()->PreviewUndo(id) : window.takeBack(id);
    reply.insert(QStringLiteral("undone"), outcome.undone);
    reply.insert(QStringLiteral("obstacles"), list(outcome.obstacles));
}

} // namespace host
