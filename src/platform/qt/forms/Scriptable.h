#pragma once

#include <QJsonObject>
#include <QJsonValue>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <optional>

namespace platform::qt {

/// What a script can do with a control. Every operation goes through the widget's own events, as a person's mouse and
/// keyboard do, and answers with the reason for a refusal, empty when it was carried out. What a kind of control does
/// not know, it refuses.
class Scriptable {
public:
    Scriptable() = default;
    Scriptable(const Scriptable&) = delete;
    Scriptable& operator=(const Scriptable&) = delete;
    virtual ~Scriptable() = default;

    virtual QWidget* widget() = 0;

    /// The members that a read of this kind answers besides visible, enabled and the geometry.
    virtual QJsonObject read() const = 0;

    virtual QString click();
    /// Clicks the entry of that key in a type list.
    virtual QString select(const QString& key);
    /// Chooses an item of a menu button.
    virtual QString chooseItem(const QString& key);
    /// Types a text, sets a check box or picks a combo item.
    virtual QString set(const QJsonValue& value);
    /// Presses and releases a key; code as in the script interface (13 Enter, 27 Esc, 9 Tab, 32 Space, 33 to 40 the
    /// navigation keys, 46 Delete, 112 to 123 F1 to F12, else the character's code).
    virtual QString key(int code, Qt::KeyboardModifiers modifiers);

    // Trees

    virtual QString focusNode(qint64 id, const std::optional<QString>& column);
    /// Presses a button over a cell, or below the last node.
    virtual QString mouse(const std::optional<qint64>& id, const QString& column, Qt::MouseButton button);
    virtual QString hyperlink(qint64 id, const QString& column);
    virtual QString check(qint64 id, int state);
    /// editable: false where the column is locked or not editable; nothing is typed then, and it is no refusal.
    virtual QString edit(qint64 id, const QString& column, const QString& value, bool& editable);
    /// Cuts short what waits for the focus to come to rest.
    virtual void settle();
};

} // namespace platform::qt
