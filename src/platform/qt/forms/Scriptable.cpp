#include "platform/qt/forms/Scriptable.h"

#include "platform/qt/forms/InputEvents.h"

namespace platform::qt {

namespace {

QString unknownTo(QWidget* widget, const char* request) {
    const QString name = widget != nullptr ? widget->objectName() : QString();
    return QStringLiteral("il controllo \"%1\" non conosce \"%2\"").arg(name, QLatin1String(request));
}

} // namespace

QString Scriptable::click() {
    return unknownTo(widget(), "click");
}

QString Scriptable::select(const QString&) {
    return unknownTo(widget(), "select");
}

QString Scriptable::chooseItem(const QString&) {
    return unknownTo(widget(), "menu");
}

QString Scriptable::set(const QJsonValue&) {
    return unknownTo(widget(), "set");
}

QString Scriptable::key(int code, Qt::KeyboardModifiers modifiers) {
    QWidget* target = widget();
    if (QString reason = input::obstacle(target); !reason.isEmpty())
        return reason;
    if (target->focusProxy() != nullptr)
        target = target->focusProxy();
    if (target->focusPolicy() == Qt::NoFocus)
        return unknownTo(widget(), "key");
    input::enter(target);
    if (!input::pressCode(target, code, modifiers))
        return QStringLiteral("il codice %1 non è un tasto").arg(code);
    return {};
}

QString Scriptable::focusNode(qint64, const std::optional<QString>&) {
    return unknownTo(widget(), "focus");
}

QString Scriptable::mouse(const std::optional<qint64>&, const QString&, Qt::MouseButton) {
    return unknownTo(widget(), "mouse");
}

QString Scriptable::hyperlink(qint64, const QString&) {
    return unknownTo(widget(), "hyperlink");
}

QString Scriptable::check(qint64, int) {
    return unknownTo(widget(), "check");
}

QString Scriptable::edit(qint64, const QString&, const QString&, bool& editable) {
    editable = false;
    return unknownTo(widget(), "edit");
}

void Scriptable::settle() {
}

} // namespace platform::qt
