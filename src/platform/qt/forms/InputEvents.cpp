#include "platform/qt/forms/InputEvents.h"

#include <QCoreApplication>
#include <QDebug>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QRegularExpression>

#include <array>
#include <exception>
#include <optional>

// The one door by which a key that did not come from the window system reaches the window's shortcuts; declared in
// qtestkey.h only, which is no header for a product.
QT_BEGIN_NAMESPACE
Q_GUI_EXPORT bool qt_sendShortcutOverrideEvent(QObject* o, ulong timestamp, int k, Qt::KeyboardModifiers mods,
                                               const QString& text = QString(), bool autorep = false, ushort count = 1);
QT_END_NAMESPACE

namespace platform::qt {

namespace input {

namespace {

/// Nobody types more than that; key by key it would take its time.
constexpr qsizetype longestTyped = 1000;

struct Key {
    int key;
    QString text;
};

std::optional<Key> keyOf(int code, Qt::KeyboardModifiers modifiers) {
    switch (code) {
    case 8:
        return Key{Qt::Key_Backspace, QStringLiteral("\b")};
    case 9:
        return Key{modifiers.testFlag(Qt::ShiftModifier) ? Qt::Key_Backtab : Qt::Key_Tab, QStringLiteral("\t")};
    case 13:
        return Key{Qt::Key_Return, QStringLiteral("\r")};
    case 27:
        return Key{Qt::Key_Escape, QStringLiteral("\x1b")};
    case 32:
        return Key{Qt::Key_Space, QStringLiteral(" ")};
    case 46:
        return Key{Qt::Key_Delete, QStringLiteral("\x7f")};
    default:
        break;
    }
    constexpr std::array navigation{Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_End,   Qt::Key_Home,
                                    Qt::Key_Left,   Qt::Key_Up,       Qt::Key_Right, Qt::Key_Down};
    if (code >= 33 && code <= 40)
        return Key{navigation[static_cast<std::size_t>(code - 33)], {}};
    if (code >= 112 && code <= 123)
        return Key{Qt::Key_F1 + (code - 112), {}};
    if (code < 32 || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF))
        return std::nullopt;
    const auto character = static_cast<char32_t>(code);
    const QString text = QString::fromUcs4(&character, 1);
    const int key = code < 0x10000 ? text.toUpper().at(0).unicode() : 0;
    const bool control = modifiers.testFlag(Qt::ControlModifier) && key >= 0x40 && key < 0x60;
    return Key{key, control ? QString(QChar(key & 0x1F)) : text};
}

void send(QWidget* widget, QEvent& event) {
    QCoreApplication::sendEvent(widget, &event);
}

} // namespace

QString obstacle(const QWidget* widget) {
    if (widget == nullptr)
        return QStringLiteral("il controllo non ha un aspetto su cui agire");
    if (!widget->isVisibleTo(widget->window()))
        return QStringLiteral("il controllo \"%1\" è nascosto").arg(widget->objectName());
    if (!widget->isEnabled())
        return QStringLiteral("il controllo \"%1\" è disabilitato").arg(widget->objectName());
    return {};
}

void click(QWidget* widget, QPoint point, Qt::MouseButton button, Qt::KeyboardModifiers modifiers) {
    const QPointer<QWidget> alive(widget);
    const QPointF local(point);
    const QPointF inWindow(widget->mapTo(widget->window(), point));
    const QPointF global(widget->mapToGlobal(point));
    QMouseEvent move(QEvent::MouseMove, local, inWindow, global, Qt::NoButton, Qt::NoButton, modifiers);
    send(widget, move);
    if (!alive)
        return;
    QMouseEvent down(QEvent::MouseButtonPress, local, inWindow, global, button, button, modifiers);
    send(widget, down);
    if (!alive)
        return;
    QMouseEvent up(QEvent::MouseButtonRelease, local, inWindow, global, button, Qt::NoButton, modifiers);
    send(widget, up);
}

void enter(QWidget* widget) {
    widget->window()->activateWindow();
    // The window system answers in its own time, above all where another window has just gone; without it no shortcut
    // of this one is heard.
    if (!widget->isActiveWindow()) {
        const QPointer<QWidget> alive(widget);
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        if (!alive)
            return;
    }
    widget->setFocus(Qt::TabFocusReason);
    QWidget* target = widget->focusProxy() != nullptr ? widget->focusProxy() : widget;
    if (target->hasFocus())
        return;
    QFocusEvent event(QEvent::FocusIn, Qt::TabFocusReason);
    send(target, event);
}

void leave(QWidget* widget) {
    QWidget* target = widget->focusProxy() != nullptr ? widget->focusProxy() : widget;
    if (target->hasFocus()) {
        target->clearFocus();
        return;
    }
    QFocusEvent event(QEvent::FocusOut, Qt::TabFocusReason);
    send(target, event);
}

void press(QWidget* widget, int key, Qt::KeyboardModifiers modifiers, const QString& text) {
    const QPointer<QWidget> alive(widget);
    if (qt_sendShortcutOverrideEvent(widget, 0, key, modifiers, text) || !alive)
        return;
    QKeyEvent down(QEvent::KeyPress, key, modifiers, text);
    send(widget, down);
    if (!alive)
        return;
    QKeyEvent up(QEvent::KeyRelease, key, modifiers, text);
    send(widget, up);
}

bool pressCode(QWidget* widget, int code, Qt::KeyboardModifiers modifiers) {
    const auto key = keyOf(code, modifiers);
    if (!key)
        return false;
    press(widget, key->key, modifiers, key->text);
    return true;
}

void type(QWidget* widget, const QString& text) {
    const QPointer<QWidget> alive(widget);
    const auto characters = text.toUcs4();
    for (const auto character : characters) {
        if (!alive)
            return;
        const char32_t unit = character;
        const QString typed = QString::fromUcs4(&unit, 1);
        // A field of one line has no key for line ends; they would act as Enter.
        if (typed == QStringLiteral("\n") || typed == QStringLiteral("\r"))
            continue;
        const int key = character < 0x10000 ? typed.toUpper().at(0).unicode() : 0;
        press(widget, key, typed.at(0).isUpper() ? Qt::ShiftModifier : Qt::NoModifier, typed);
    }
}

/// The text comes as one piece, as from the clipboard, which stays the user's own.
void paste(QWidget* field, const QString& text) {
    static const QRegularExpression lineEnds(QStringLiteral("[\\r\\n]+"));
    QInputMethodEvent event;
    event.setCommitString(QString(text).remove(lineEnds));
    send(field, event);
}

void replaceText(QWidget* field, const QString& text) {
    const QPointer<QWidget> alive(field);
    press(field, Qt::Key_A, Qt::ControlModifier, QStringLiteral("\x01"));
    if (!alive)
        return;
    if (text.isEmpty())
        press(field, Qt::Key_Delete, Qt::NoModifier, QStringLiteral("\x7f"));
    else if (text.size() > longestTyped)
        paste(field, text);
    else
        type(field, text);
}

} // namespace input

} // namespace platform::qt
