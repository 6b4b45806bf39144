#include "host/script/ScriptRunner.h"

#include "contract/RuntimeError.h"
#include "host/database/CommandWaits.h"
#include "host/script/ScriptCancel.h"
#include "host/start/StartFailure.h"
#include "platform/shared/SystemReason.h"

#include <QCoreApplication>
#include <QEvent>
#include <QJsonDocument>
#include <QtGlobal>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <string>
#include <utility>

namespace host {

namespace {

using platform::qt::FormWindow;
using platform::qt::Scriptable;
using platform::qt::Session;

constexpr int refusalsTold = 20;
constexpr int lettersTold = 400; // of each

/// Qt ends the program when no display answers; that is told in one line, with the status of a start that can not be.
[[noreturn]] void endWithoutDisplay() {
    std::string wanted;
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        if (const char* value = std::getenv(name); value != nullptr && value[0] != '\0')
            wanted += std::string(wanted.empty() ? "" : ", ") + name + "=" + value;
    std::fprintf(stderr, "distinte: lo schermo non risponde (%s)\n", wanted.c_str());
    std::_Exit(static_cast<int>(ExitStatus::usage));
}

/// Qt's remarks about a machine without a desktop; standard error is for the program's one line.
void dropToolkitChatter(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    const bool qtsOwn =
        QLatin1String(context.category != nullptr ? context.category : "").startsWith(QLatin1String("qt.")) ||
        text.startsWith(QLatin1String("QStandardPaths:")) ||
        text.startsWith(QLatin1String("This plugin does not support"));
    if (type == QtFatalMsg && text.contains(QLatin1String("no Qt platform plugin could be initialized")))
        endWithoutDisplay();
    if (type == QtFatalMsg || type == QtCriticalMsg || !qtsOwn)
        std::fprintf(stderr, "%s\n", qFormatLogMessage(type, context, text).toUtf8().constData());
}

bool stands(const FormWindow* form) {
    const auto& forms = Session::instance().forms();
    return std::find(forms.begin(), forms.end(), form) != forms.end();
}

void closePopup() {
    if (auto* popup = Session::instance().popup())
        popup->dismiss();
}

/// Reads a request. An open popup menu stays open for a `menu` only.
ScriptRequest parseClosingPopup(const std::function<ScriptRequest()>& parse) {
    try {
        ScriptRequest request = parse();
        if (request.verb() != QLatin1String("menu"))
            closePopup();
        return request;
    } catch (const ScriptRefusal&) {
        closePopup();
        throw;
    }
}

QJsonObject messageObject(const ShownMessage& shown) {
    QJsonObject object{{QStringLiteral("style"), shown.style},
                       {QStringLiteral("answer"), shown.answer},
                       {QStringLiteral("detail"), shown.detail}};
    if (shown.kind == ShownMessage::Kind::message) {
        object.insert(QStringLiteral("kind"), QStringLiteral("message"));
        object.insert(QStringLiteral("title"), shown.title);
        object.insert(QStringLiteral("text"), shown.text);
    } else {
        object.insert(QStringLiteral("kind"), QStringLiteral("error"));
        object.insert(QStringLiteral("procedure"), shown.procedure);
        object.insert(QStringLiteral("caption"), shown.caption);
        object.insert(QStringLiteral("number"), shown.number);
        object.insert(QStringLiteral("description"), shown.description);
    }
    return object;
}

} // namespace

ScriptRunner::ScriptRunner(HostSession& session, QWidget* hostWindow, Output output)
    : session_(session), commands_(session, hostWindow), output_(std::move(output)) {
    session_.dialogs().setScripted(true);
    session_.journal().setRecording(true);
    session_.trace().setRecording(true);
    Session::instance().modalOpened = [this](FormWindow& form) { standModal(form); };
}

ScriptRunner::~ScriptRunner() {
    Session::instance().modalOpened = nullptr;
}

void ScriptRunner::run(ScriptReader& reader) {
    reader_ = &reader;
    serve([] { return false; });
    if (!reader.failure().isEmpty())
        refusals_.append(QStringLiteral("lettura interrotta, %1").arg(reader.failure()));
    reader_ = nullptr;
}

void ScriptRunner::serve(const std::function<bool()>& over) {
    while (!finished_ && !over()) {
        const auto line = reader_->next([] { QCoreApplication::processEvents(); });
        if (!line) {
            finished_ = true;
            return;
        }
        runLine(*line);
    }
}

void ScriptRunner::runLine(const ScriptLine& line) {
    Turn turn;
    turn.place = QStringLiteral("riga %1").arg(line.number);
    turns_.append(&turn);
    CommandWaits::commandBegins();
    QJsonObject reply = carryOut([&] { return ScriptRequest::parse(line.text); }, turn.place);
    ScriptCancel::lineEnds();
    collectMessages(turn);
    if (!turn.answered)
        write(std::move(reply), turn);
    turns_.removeLast();
    // Windows that went are deleted once nothing of theirs can still be running.
    if (turns_.isEmpty())
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

QJsonObject ScriptRunner::runStep(const QJsonObject& step, const QString& place) {
    Turn turn;
    turn.place = place;
    turns_.append(&turn);
    QJsonObject reply = carryOut([&] { return ScriptRequest(step); }, place);
    collectMessages(turn);
    turns_.removeLast();
    reply.insert(QStringLiteral("messages"), turn.messages);
    reply.insert(QStringLiteral("modal"), turn.modal);
    return reply;
}

QJsonObject ScriptRunner::carryOut(const std::function<ScriptRequest()>& parse, const QString& place) {
    QJsonObject reply;
    QString refusal;
    try {
        const ScriptRequest request = parseClosingPopup(parse);
        execute(request, reply);
    } catch (const ScriptRefusal& error) {
        refusal = error.reason();
    } catch (const contract::RuntimeError& error) {
        refusal = QString::fromStdString(error.description());
    } catch (const std::exception& error) {
        refusal = QString::fromUtf8(error.what());
    }
    settle();

    if (!refusal.isEmpty()) {
        // What a request had gathered before it was refused is no answer.
        reply = QJsonObject{{QStringLiteral("error"), refusal}};
        const bool whole = refusal.size() <= lettersTold;
        const QString told = whole ? refusal : refusal.left(lettersTold) + QStringLiteral("…");
        refusals_.append(QStringLiteral("%1: %2").arg(place, told).replace(QChar::Null, QLatin1Char(' ')).simplified());
    }
    reply.insert(QStringLiteral("ok"), refusal.isEmpty());
    return reply;
}

void ScriptRunner::execute(const ScriptRequest& request, QJsonObject& reply) {
    if (turns_.size() == 1)
        ScriptCancel::lineBegins(request);
    if (request.verb() == QLatin1String("when"))
        queueSteps(request);
    else if (request.verb() == QLatin1String("quit"))
        finished_ = true;
    else
        commands_.run(request, reply);
}

void ScriptRunner::queueSteps(const ScriptRequest& request) {
    const QString form = request.text(QStringLiteral("form"));
    const QJsonArray steps = request.array(QStringLiteral("steps"));
    if (!std::all_of(steps.begin(), steps.end(), [](const QJsonValue& step) { return step.isObject(); }))
        throw ScriptRefusal(QStringLiteral("\"steps\" deve essere un elenco di oggetti"));
    queued_[form].append(steps);
}

void ScriptRunner::standModal(FormWindow& form) {
    if (turns_.isEmpty())
        return;
    Turn& turn = *turns_.last();
    const QString name = form.formName();
    const bool mainForm = name == QLatin1String(HostSession::mainForm);
    if (mainForm)
        session_.registerModels();
    settle();
    collectMessages(turn);

    QJsonObject entry{{QStringLiteral("form"), name}};
    QJsonArray replies;
    auto& openings = queued_[name];
    if (!openings.isEmpty()) {
        const QJsonArray steps = openings.takeFirst();
        int number = 0;
        for (const auto& step : steps) {
            const QString place = QStringLiteral("%1, passo %2 in %3").arg(turn.place).arg(++number).arg(name);
            replies.append(runStep(step.toObject(), place));
            if (finished_)
                break;
        }
    } else if (mainForm) {
        turn.modal.append(QJsonObject{{QStringLiteral("form"), name}, {QStringLiteral("replies"), replies}});
        serveModalMainForm(turn);
        return;
    }
    entry.insert(QStringLiteral("replies"), replies);
    turn.modal.append(entry);
}

void ScriptRunner::serveModalMainForm(Turn& turn) {
    const FormWindow* form = session_.formWindow();
    write(QJsonObject{{QStringLiteral("ok"), true}}, turn);
    turn.answered = true;
    serve([form] { return !stands(form); });
}

void ScriptRunner::settle() {
    QCoreApplication::processEvents();
    const auto forms = Session::instance().forms();
    for (FormWindow* form : forms) {
        if (!stands(form))
            continue;
        const QStringList names = form->controlNames();
        for (const QString& name : names) {
            // What follows a tree's rest may close its form.
            if (!stands(form))
                break;
            if (Scriptable* control = form->control(name))
                control->settle();
        }
    }
    QCoreApplication::processEvents();
}

void ScriptRunner::collectMessages(Turn& turn) {
    const auto shown = session_.dialogs().takeShown();
    for (const ShownMessage& message : shown)
        turn.messages.append(messageObject(message));
}

void ScriptRunner::write(QJsonObject reply, Turn& turn) {
    reply.insert(QStringLiteral("messages"), turn.messages);
    reply.insert(QStringLiteral("modal"), turn.modal);
    if (!output_(QJsonDocument(reply).toJson(QJsonDocument::Compact)))
        finished_ = true;
}

QString ScriptRunner::refusals() const {
    QStringList told = refusals_.mid(0, refusalsTold);
    if (refusals_.size() > refusalsTold)
        told.append(QStringLiteral("e altre %1").arg(refusals_.size() - refusalsTold));
    return told.join(QStringLiteral("; "));
}

void quietToolkit() {
    qInstallMessageHandler(dropToolkitChatter);
}

int runScript(HostSession& session, QWidget* hostWindow, ScriptReader& reader) {
    // Who reads the replies may leave early: that ends the script, not the program.
    std::signal(SIGPIPE, SIG_IGN);
    int unwritten = 0;
    ScriptRunner runner(session, hostWindow, [&unwritten](const QByteArray& reply) {
        const auto length = static_cast<std::size_t>(reply.size());
        errno = 0;
        const bool written = std::fwrite(reply.constData(), 1, length, stdout) == length &&
                             std::fputc('\n', stdout) != EOF && std::fflush(stdout) == 0;
        if (!written)
            unwritten = errno;
        return written;
    });
    runner.run(reader);
    if (unwritten != 0 && unwritten != EPIPE) {
        std::fprintf(stderr, "distinte: script \"%s\" interrotto, risposta non scritta: %s\n",
                     reader.name().toUtf8().constData(), platform::systemReason(unwritten).c_str());
        return static_cast<int>(ExitStatus::refused);
    }
    const QString refusals = runner.refusals();
    if (refusals.isEmpty())
        return 0;
    std::fprintf(stderr, "distinte: righe rifiutate dello script \"%s\": %s\n", reader.name().toUtf8().constData(),
                 refusals.toUtf8().constData());
    return 1;
}

} // namespace host
