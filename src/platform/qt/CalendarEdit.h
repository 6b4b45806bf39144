#pragma once

#include <QLineEdit>
#include <QPointer>

class QCalendarWidget;

namespace platform::qt {

/// A line for a date as "dd/mm/yyyy", with a calendar that F4, Alt+Down or its button opens.
///
/// What is no date is refused when the field is left: the last date or the empty text comes back. A date may be typed
/// as "31122024", "31.12.2024", "1/2/24" or with blanks around it.
class CalendarEdit : public QLineEdit {
    Q_OBJECT
public:
    explicit CalendarEdit(QWidget* parent = nullptr);

    /// What the field holds is a date; blanks around it do not matter. False when it is empty.
    bool hasValidDate() const;
    /// Does what leaving the field does: writes a date typed in short in full, refuses what is none. A date with blanks
    /// around it stays as it was typed.
    void complete();
    void openCalendar();

    QSize sizeHint() const override;

signals:
    /// The text changed, by the user or the program.
    void changed(const QString& text);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void refreshLook();
    void remember();

    QAction* button_;
    QPointer<QWidget> popup_;
    QString accepted_; // the last date, or empty
};

} // namespace platform::qt
