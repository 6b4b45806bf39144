#pragma once

#include <QAbstractButton>
#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QSize>
#include <QString>

#include <cstdint>
#include <functional>
#include <memory>

namespace host {

class WorkBar;

/// Tells the user of a command that runs longer than a second: which one, for how long, and how far it is or how many
/// statements it has run; and lets him give it up.
///
/// A command is known by the caption of the button or menu entry that was used last in the main window; what a dialog
/// asks in between belongs to it.
///
/// The program has one thread, so nothing can tick while a command works; the command's own statements are the clock,
/// and what long ones tell within (platform::shared::LongWork). What the user types or clicks meanwhile is dropped,
/// lest it land on what the command leaves behind: while the display stands, and after whatever took longer than
/// dropAfter, with a display or without. A click on "Annulla" and the key Esc alone are heard, while the work may be
/// given up; nothing of the component runs meanwhile.
class BusyIndicator : public QObject {
    Q_OBJECT
public:
    static constexpr int patience = 1000;       ///< milliseconds before anything is shown
    static constexpr int dropAfter = 400;       ///< milliseconds of work after which waiting input is dropped
    static constexpr int repaintInterval = 200; ///< milliseconds between two repaints at least

    /// show paints a text at once, without handling events; an empty text ends the display.
    BusyIndicator(std::function<void(const QString&)> show, QObject* parent);
    ~BusyIndicator() override;

    /// The program's window, what in it is not painted while the user is listened to, and its button "Annulla". Other
    /// windows that stand in front get a bar of their own.
    void setSurroundings(QWidget* window, QWidget* still, QAbstractButton* cancel);

    /// A statement has run; statements: so far in the session.
    void statementDone(std::uint64_t statements);
    /// Shows a text of its own in this place at once, until the command ends or its next statement has run.
    void tell(const QString& text);
    bool showing() const { return showing_; }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void atRest();
    void rememberCommand(QObject* used);
    void commandBegins();
    void dropWaitingInput();
    QString description() const;
    void working();
    void show(const QString& text);
    void endShow();
    void offer();
    void listen();
    bool hold(QObject* watched, QEvent* event);
    bool press(const QPoint& at, bool down);
    void giveUp();

    std::function<void(const QString&)> show_;
    QElapsedTimer command_; ///< since the last input, or since the event loop last woke up from rest
    QElapsedTimer painted_;
    QElapsedTimer told_; ///< since tell(); invalid when its text is no longer the one to show
    bool working_ = false;
    bool showing_ = false;
    bool fresh_ = false;     ///< an input was handed on since the last rest
    bool stale_ = false;     ///< and it took long: what comes until the next rest had to wait for it
    bool dropping_ = false;  ///< what waits is taken out of the queue
    bool listening_ = false; ///< the same in the middle of a work, for a click on the button
    QString name_;
    std::uint64_t statements_ = 0; ///< of the session
    std::uint64_t before_ = 0;     ///< of the session when the command began
    QPointer<QWidget> window_;
    QPointer<QWidget> still_;
    QSize resizedFrom_; ///< what still_ has not been told of yet; invalid for nothing
    QPointer<QAbstractButton> cancel_;
    QPointer<QAbstractButton> pressed_;
    QPointer<WorkBar> bar_;
};

} // namespace host
