#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QString>

#include <cstdint>
#include <functional>

namespace host {

/// Tells the user of a command that runs longer than a second: which one, for how long, and how many statements it has
/// run.
///
/// A command is known by the caption of the button or menu entry that was used last in the main window; what a dialog
/// asks in between belongs to it.
///
/// The program has one thread, so nothing can tick while a command works; the command's own statements are the clock.
/// What the user types or clicks meanwhile is dropped, lest it land on what the command leaves behind: while the
/// display stands, and after whatever took longer than dropAfter, with a display or without.
class BusyIndicator : public QObject {
    Q_OBJECT
public:
    static constexpr int patience = 1000;       ///< milliseconds before anything is shown
    static constexpr int dropAfter = 400;       ///< milliseconds of work after which waiting input is dropped
    static constexpr int repaintInterval = 200; ///< milliseconds between two repaints at least

    /// show paints a text at once, without handling events; an empty text ends the display.
    BusyIndicator(std::function<void(const QString&)> show, QObject* parent);

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

    std::function<void(const QString&)> show_;
    QElapsedTimer command_; ///< since the last input, or since the event loop last woke up from rest
    QElapsedTimer painted_;
    bool working_ = false;
    bool showing_ = false;
    bool fresh_ = false;    ///< an input was handed on since the last rest
    bool stale_ = false;    ///< and it took long: what comes until the next rest had to wait for it
    bool dropping_ = false; ///< what waits is taken out of the queue
    QString name_;
    std::uint64_t statements_ = 0; ///< of the session
    std::uint64_t before_ = 0;     ///< of the session when the command began
};

} // namespace host
