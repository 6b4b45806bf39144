#pragma once

#include <QLineEdit>
#include <QPointer>

class QCalendarWidget;

namespace platform::qt {

class FieldNote;

/// A line for a date as "dd/mm/yyyy", with a calendar that F4, Alt+Down or its button opens.
///
/// What is no date stays when the field is left, in a red frame and with a sentence that says so, also to a screen
/// reader. A date may be typed as "31122024", "31.12.2024", "1/2/24" or with blanks around it.
class CalendarEdit : public QLineEdit {
    Q_OBJECT
public:
    explicit CalendarEdit(QWidget* parent = nullptr);

    /// What the field holds is a date; blanks around it do not matter. False when it is empty.
    bool hasValidDate() const;
    /// Does what leaving the field does: writes a date typed in short in full, says so of what is none. A date with
    /// blanks around it stays as it was typed; nothing but blanks is the empty field. What the program gave is its own
    /// business.
    void complete();
    /// The sentence that stands at the field; empty where there is none.
    QString error() const { return error_; }
    void openCalendar();

    QSize sizeHint() const override;

signals:
    /// The text changed, by the user or the program.
    void changed(const QString& text);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void refreshLook();
    void setError(const QString& sentence);
    void showNote();

    QAction* button_;
    QPointer<QWidget> popup_;
    QPointer<FieldNote> note_;
    QString stood_; ///< what the program set last
    QString error_;
    QString description_; // for a screen reader, while there is no error
};

} // namespace platform::qt
