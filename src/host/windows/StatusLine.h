#pragma once

#include <QAbstractButton>
#include <QLabel>
#include <QWidget>

namespace host {

/// What the status bar shows: a text on the left and the user's surroundings on the right, a notice between them. The
/// text is the more important one: where there is no room for both the surroundings go, and what still has no room ends
/// in dots and is shown whole by the tool tip.
class StatusLine : public QWidget {
public:
    /// By which scripts know it.
    static constexpr const char* name = "StatusBar";

    explicit StatusLine(QWidget* parent = nullptr);

    void setText(const QString& text);
    const QString& text() const { return text_; }
    void setContext(const QString& text);
    /// The button that gives up the work under way; whoever shows the work shows it.
    QAbstractButton* cancelButton() const { return cancel_; }
    /// What the user must not forget, between the two: a few words, and the whole in the tool tip. Empty: nothing.
    void setNotice(const QString& text, const QString& toolTip);

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool event(QEvent* event) override;

private:
    void arrange();

    QString text_;
    QLabel* shown_;
    QLabel* context_;
    QAbstractButton* cancel_;
    QLabel* notice_ = nullptr; ///< made with the first notice
};

} // namespace host
