#pragma once

#include <QComboBox>
#include <QLineEdit>

namespace platform::qt {

/// A line of text that tells the characters typed into it.
class TextEdit : public QLineEdit {
    Q_OBJECT
public:
    explicit TextEdit(QWidget* parent);

signals:
    /// Before the field acts on the key; 13 for Enter.
    void characterPressed(int code);

protected:
    void keyPressEvent(QKeyEvent* event) override;
};

/// A line of text with a button that opens a list; F1, control and F1, and F4 open it too.
class LookupEdit : public TextEdit {
    Q_OBJECT
public:
    explicit LookupEdit(QWidget* parent);

signals:
    void listWanted();
    /// The user left the field for another one.
    void left();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
};

/// A list to pick one item from, drawn like the fields. The mouse wheel turns it only while it has the keyboard.
class PlainComboBox : public QComboBox {
    Q_OBJECT
public:
    explicit PlainComboBox(QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
};

} // namespace platform::qt
