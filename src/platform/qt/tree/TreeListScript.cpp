#include "platform/qt/forms/Guarded.h"
#include "platform/qt/forms/InputEvents.h"
#include "platform/qt/tree/TreeListControl.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QLineEdit>
#include <QMouseEvent>

#include <algorithm>
#include <numeric>

namespace platform::qt {

using contract::TreeColumnKind;

namespace {

void send(QWidget* target, QEvent::Type type, QPoint point, Qt::MouseButton button, Qt::MouseButtons held) {
    QMouseEvent event(type, QPointF(point), QPointF(target->mapTo(target->window(), point)),
                      QPointF(target->mapToGlobal(point)), button, held, Qt::NoModifier);
    QCoreApplication::sendEvent(target, &event);
}

std::vector<std::int32_t> allPositions(const TreeModel& model) {
    std::vector<std::int32_t> all(static_cast<std::size_t>(model.count()));
    std::iota(all.begin(), all.end(), 0);
    return all;
}

} // namespace

void TreeListControl::fetchAllTexts() {
    for (int column = 0; column < model_->columnCount(); ++column)
        if (model_->column(column).kind == TreeColumnKind::state)
            model_->fetchTexts(column, allPositions(*model_));
}

QJsonObject TreeListControl::read() const {
    QJsonArray columns;
    std::vector<QString> names;
    const auto all = allPositions(*model_);
    for (std::size_t at = 0; at < model_->columns().size(); ++at) {
        const auto& column = model_->columns()[at];
        names.push_back(QString::fromStdString(column.name));
        columns.append(QJsonObject{{"name", names.back()},
                                   {"caption", QString::fromStdString(column.caption)},
                                   {"field", QString::fromStdString(column.field)},
                                   {"visible", column.visible},
                                   {"locked", model_->locked(at)}});
        if (column.kind == TreeColumnKind::state)
            model_->fetchTexts(static_cast<int>(at), all);
    }
    QJsonArray nodes;
    for (const auto position : all) {
        QJsonObject cells;
        for (std::size_t at = 0; at < names.size(); ++at)
            cells.insert(names[at], model_->text(position, static_cast<int>(at)));
        const auto above = model_->nodes().parent(position);
        nodes.append(QJsonObject{
            {"id", static_cast<qint64>(model_->key(position))},
            {"parent", above < 0 ? QJsonValue(QJsonValue::Null) : QJsonValue(static_cast<qint64>(model_->key(above)))},
            {"level", model_->nodes().level(position)},
            {"expanded", model_->isOpen(position)},
            {"cells", cells}});
    }
    const auto focus = focused();
    return QJsonObject{{"columns", columns},
                       {"nodes", nodes},
                       {"focused", focus ? QJsonValue(static_cast<qint64>(model_->key(focus.position)))
                                         : QJsonValue(QJsonValue::Null)},
                       {"top_row", topRow()},
                       {"error", view_->editError()}};
}

void TreeListControl::settle() {
    focus_.settle();
}

QString TreeListControl::key(int code, Qt::KeyboardModifiers modifiers) {
    if (QString reason = input::obstacle(view_); !reason.isEmpty())
        return reason;
    QWidget* target = view_->openEditor();
    if (target == nullptr) {
        target = view_;
        input::enter(target);
    }
    if (!input::pressCode(target, code, modifiers))
        return QStringLiteral("il codice %1 non è un tasto").arg(code);
    settle();
    return {};
}

std::int32_t TreeListControl::locate(qint64 id, const QString& column, int& columnAt, QString& reason) {
    reason = input::obstacle(view_);
    const auto node = byKey(id);
    columnAt = column.isEmpty() ? view_->treeColumn() : model_->findColumn(column.toStdString());
    if (!reason.isEmpty())
        return -1;
    if (!node)
        reason = QStringLiteral("l'albero \"%1\" non ha il nodo %2").arg(view_->objectName()).arg(id);
    else if (columnAt < 0)
        reason = QStringLiteral("l'albero \"%1\" non ha la colonna \"%2\"").arg(view_->objectName(), column);
    else if (view_->isColumnHidden(columnAt))
        reason = QStringLiteral("la colonna \"%2\" dell'albero \"%1\" è nascosta").arg(view_->objectName(), column);
    return reason.isEmpty() ? node.position : -1;
}

QString TreeListControl::focusNode(qint64 id, const std::optional<QString>& column) {
    QString reason;
    int at = -1;
    const auto position = locate(id, column.value_or(QString()), at, reason);
    if (position < 0)
        return reason;
    input::enter(view_);
    guarded([&] { focusRow(position, column ? std::optional(at) : std::nullopt); });
    guarded([&] { settle(); });
    return {};
}

QString TreeListControl::mouse(const std::optional<qint64>& id, const QString& column, Qt::MouseButton button) {
    QWidget* target = view_->viewport();
    QPoint point;
    if (id) {
        QString reason;
        int at = -1;
        const auto position = locate(*id, column, at, reason);
        if (position < 0)
            return reason;
        makeVisible({position});
        view_->scrollTo(model_->at(position, at));
        const QRect cell = view_->cellRect(position, at) & target->rect();
        if (cell.isEmpty())
            return QStringLiteral("l'albero \"%1\" è troppo piccolo per mostrare la cella").arg(view_->objectName());
        point = cell.center();
        // A press on the button would open or close the node; a person aims beside it.
        if (view_->buttonRect(position).contains(point))
            point.setX(view_->buttonRect(position).right() + 3);
    } else {
        if (QString reason = input::obstacle(view_); !reason.isEmpty())
            return reason;
        if (model_->count() > 0)
            view_->scrollToBottom();
        point = QPoint(target->width() / 2, view_->rowsBottom() + 4);
    }
    input::enter(view_);
    send(target, QEvent::MouseMove, point, Qt::NoButton, Qt::NoButton);
    send(target, QEvent::MouseButtonPress, point, button, button);
    // Let go elsewhere: a press is no click.
    send(target, QEvent::MouseButtonRelease, QPoint(-1, -1), button, Qt::NoButton);
    settle();
    return {};
}

QString TreeListControl::hyperlink(qint64 id, const QString& column) {
    QString reason;
    int at = -1;
    const auto position = locate(id, column, at, reason);
    if (position < 0)
        return reason;
    makeVisible({position});
    view_->scrollTo(model_->at(position, at));
    const QRect link = view_->linkRect(position, at) & view_->viewport()->rect();
    if (link.isEmpty())
        return QStringLiteral("la cella \"%1\" del nodo %2 non ha un collegamento").arg(column).arg(id);
    input::enter(view_);
    input::click(view_->viewport(), link.center(), Qt::LeftButton, Qt::ControlModifier);
    settle();
    return {};
}

QString TreeListControl::check(qint64 id, int state) {
    const int kind = model_->findKind(TreeColumnKind::check);
    if (kind < 0)
        return QStringLiteral("l'albero \"%1\" non ha caselle").arg(view_->objectName());
    QString reason;
    int at = -1;
    const auto position = locate(id, QString::fromStdString(model_->column(kind).name), at, reason);
    if (position < 0)
        return reason;
    if (model_->checked(position) == (state == 1))
        return {};
    makeVisible({position});
    view_->scrollTo(model_->at(position, at));
    const QRect box = view_->checkRect(position, at) & view_->viewport()->rect();
    if (box.isEmpty() || model_->locked(static_cast<std::size_t>(at)))
        return QStringLiteral("la casella del nodo %1 non si può cambiare").arg(id);
    input::enter(view_);
    input::click(view_->viewport(), box.center());
    settle();
    return {};
}

QString TreeListControl::edit(qint64 id, const QString& column, const QString& value, bool& editable) {
    QString reason;
    int at = -1;
    editable = false;
    const auto position = locate(id, column, at, reason);
    if (position < 0)
        return reason;
    input::enter(view_);
    guarded([&] { focusRow(position, at); });
    // What the form does when the focus comes may lock the column.
    guarded([&] { settle(); });
    if (focused().position != position || !model_->editable(at))
        return {};
    input::press(view_, Qt::Key_F2);
    auto* editor = view_->openEditor();
    if (editor == nullptr)
        return QStringLiteral("la cella \"%1\" del nodo %2 non si apre").arg(column).arg(id);
    editable = true;
    input::replaceText(editor, value);
    input::press(editor, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"));
    settle();
    return {};
}

} // namespace platform::qt
