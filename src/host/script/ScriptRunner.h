#pragma once

#include "host/script/ScriptCommands.h"
#include "host/script/ScriptReader.h"
#include "host/script/ScriptRequest.h"
#include "host/start/HostSession.h"
#include "platform/qt/forms/Session.h"

#include <QByteArray>
#include <QHash>
#include <QJsonArray>
#include <QJsonObject>
#include <QList>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <functional>

namespace host {

/// Runs a script: answers each of its lines with one JSON object, and stands in for the user wherever the program would
/// wait for one. One at a time; the application object exists and no event loop needs to run.
class ScriptRunner {
public:
    /// Takes one reply without an end of line; false when nobody listens any more, which ends the script.
    using Output = std::function<bool(const QByteArray& reply)>;

    ScriptRunner(HostSession& session, QWidget* hostWindow, Output output);
    ScriptRunner(const ScriptRunner&) = delete;
    ScriptRunner& operator=(const ScriptRunner&) = delete;
    ~ScriptRunner();

    /// Runs the lines to their end or to a `quit`.
    void run(ScriptReader& reader);

    /// The refusals so far, in one line for standard error: which lines, and why; empty when none was refused.
    QString refusals() const;

private:
    /// What is gathered while one line, or one queued step, runs.
    struct Turn {
        QString place; ///< for refusals: which line or step
        QJsonArray messages;
        QJsonArray modal;
        bool answered = false; ///< the reply was written while the line still ran
    };

    void serve(const std::function<bool()>& over);
    void runLine(const ScriptLine& line);
    QJsonObject runStep(const QJsonObject& step, const QString& place);
    /// Carries a request out and gives its reply without messages and modal forms, which gather in the turn.
    QJsonObject carryOut(const std::function<ScriptRequest()>& parse, const QString& place);
    void execute(const ScriptRequest& request, QJsonObject& reply);
    void queueSteps(const ScriptRequest& request);
    void standModal(platform::qt::FormWindow& form);
    void serveModalMainForm(Turn& turn);

    void settle();
    void collectMessages(Turn& turn);
    void write(QJsonObject reply, Turn& turn);

    HostSession& session_;
    ScriptCommands commands_;
    Output output_;
    ScriptReader* reader_ = nullptr;
    QList<Turn*> turns_;                       ///< innermost last
    QHash<QString, QList<QJsonArray>> queued_; ///< step lists by modal form, in the order of its openings
    QStringList refusals_;
    bool finished_ = false;
};

/// Keeps the remarks that Qt makes about a machine without a desktop from standard error, and lets a display that does
/// not answer end the program with exit status 2; before the application object is made.
void quietToolkit();

/// Runs a script with its replies on standard output; the exit status: 0, or 1 with a line on standard error when lines
/// were refused or replies could not be written. Who stops listening ends the script without a word.
int runScript(HostSession& session, QWidget* hostWindow, ScriptReader& reader);

} // namespace host
