#pragma once

#include <QAbstractButton>
#include <QFrame>
#include <QLabel>
#include <QString>

namespace host {

/// The button that gives up the work under way, wherever it stands: "Annulla", also for Esc. It never takes the
/// keyboard's focus.
QAbstractButton* newCancelButton(QWidget* parent);

/// A line at the foot of a window that says what the program is working on, above what stands there, with the button.
class WorkBar : public QFrame {
public:
    /// Shown at once.
    explicit WorkBar(QWidget& window);

    void setText(const QString& text);
    QString text() const { return text_->text(); }
    QAbstractButton* button() const { return button_; }

private:
    QLabel* text_;
    QAbstractButton* button_;
};

} // namespace host
