#pragma once

#include <QPoint>
#include <QString>
#include <QWidget>

#include <functional>

namespace platform::qt {

/// Sends a widget the events that a person's mouse and keyboard would, through the application's own delivery.
namespace input {

/// The reason, in the user's language, why a person could not use the widget now; empty when they could.
QString obstacle(const QWidget* widget);

/// Moves to the point (in the widget's own pixels), presses and releases the button there.
void click(QWidget* widget, QPoint point, Qt::MouseButton button = Qt::LeftButton,
           Qt::KeyboardModifiers modifiers = Qt::NoModifier);

/// Gives the widget the keyboard; where the window system does not, the widget is told all the same.
void enter(QWidget* widget);
/// Takes the keyboard away from the widget, as the Tab key does.
void leave(QWidget* widget);

/// Presses and releases a key: shortcuts of the window first, then the widget.
void press(QWidget* widget, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, const QString& text = {});
/// Presses and releases the key of a script's code (13 Enter, 27 Esc, ...); false for a code that is no key.
bool pressCode(QWidget* widget, int code, Qt::KeyboardModifiers modifiers);
/// Types a text, key by key.
void type(QWidget* widget, const QString& text);
/// Pastes a text over what is marked.
void paste(QWidget* widget, const QString& text);
/// Marks what a field holds and types over it, or pastes what is longer than 1,000 characters; an empty text clears the
/// field.
void replaceText(QWidget* field, const QString& text);

} // namespace input

} // namespace platform::qt
