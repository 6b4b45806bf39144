#include "host/windows/PreviewCommands.h"

#include "contract/Host.h"
#include "contract/RuntimeError.h"
#include "host/services/Text.h"
#include "host/start/HostSession.h"
#include "host/tables/PlanTable.h"
#include "host/windows/MoveListWindow.h"
#include "host/windows/PreviewWindow.h"
#include "host/windows/Prompts.h"

#include <QAction>

#include <set>

namespace host {

namespace {

const QString title = QStringLiteral("Anteprima dello spostamento");

/// What the component offers beside the plug-in contract. Throws RuntimeError where it offers none, or no form is open.
template <class Capability> Capability& capabilityOf(const HostSession& session) {
    auto* offered = session.formOpen() ? session.capability<Capability>() : nullptr;
    if (offered == nullptr)
        throw contract::RuntimeError(contract::RuntimeError::objectNotSet,
                                     session.formOpen() ? "Il componente non fa anteprime degli spostamenti."
                                                        : "Il programma non è aperto.");
    return *offered;
}

/// The manner with the day that the form would take by itself where none is given.
contract::MoveManner completed(const HostSession& session, contract::MoveManner manner) {
    if (!manner.end)
        manner.end = capabilityOf<contract::MovePreview>(session).proposedEnd();
    return manner;
}

void failWithoutPlan(const PlanWindow& window) {
    if (!window.failure().isEmpty())
        throw contract::RuntimeError(contract::RuntimeError::invalidCall, window.failure().toStdString());
}

void showNode(HostSession& session, const PlanWindow& window) {
    const auto node = window.nodeWanted();
    if (node && !capabilityOf<contract::MovePreview>(session).show(*node))
        session.say(QStringLiteral("Il nodo non è nelle distinte visualizzate."));
}

QString question(const contract::MovePlan& plan) {
    std::set<std::int64_t> lines;
    for (const auto& row : plan.rows)
        lines.insert(row.line.value_or(0));
    return lines.size() == 1 ? QStringLiteral("Eseguire lo spostamento?")
                             : QStringLiteral("Eseguire i %1 spostamenti?").arg(lines.size());
}

/// Shows a plan of several moves and makes them when the user, or the request that stands for one, says so.
template <class Move>
contract::MovePlan showMoves(HostSession& session, PlanWindow& window, bool apply, Move&& moveAll) {
    window.run();
    const bool asked = apply || window.moveWanted();
    if (!asked || !window.plan().refused.empty() || !window.failure().isEmpty()) {
        showNode(session, window);
        return window.plan();
    }
    if (!apply &&
        session.dialogs().showMessage(window.windowTitle().toStdString(), question(window.plan()).toStdString(),
                                      contract::message::yesNo,
                                      countsText(window.plan()).toStdString()) != contract::message::answerYes)
        return window.plan();
    const contract::MovePlan done = moveAll();
    if (!done.refused.empty() && !apply)
        session.dialogs().showMessage(window.windowTitle().toStdString(), done.refused, contract::message::critical);
    return done;
}

/// Runs a command; what it throws is told.
template <class Command> void told(const ToolContext& context, Command&& command) {
    auto* session = context.session();
    if (session == nullptr)
        return;
    try {
        command(*session);
    } catch (const contract::RuntimeError& error) {
        tell(QMessageBox::Warning, title, toQt(error.description()), context.window);
    }
}

} // namespace

contract::MovePlan showPreview(HostSession& session, QWidget* window, const contract::MoveManner& manner) {
    auto& preview = capabilityOf<contract::MovePreview>(session);
    PreviewWindow shown(
        QLatin1String(PreviewWindow::name), title,
        [&preview](const contract::MoveManner& chosen) { return preview.plan(chosen); }, completed(session, manner),
        false, window);
    shown.run();
    failWithoutPlan(shown);
    auto plan = shown.plan();
    if (shown.moveWanted())
        preview.move(shown.manner());
    else
        showNode(session, shown);
    return plan;
}

contract::MovePlan showSelected(HostSession& session, QWidget* window, const contract::MoveManner& manner, bool apply) {
    auto& lists = capabilityOf<contract::MoveLists>(session);
    PreviewWindow shown(
        QLatin1String(PreviewWindow::nameOfSelected), QStringLiteral("Spostamento dei selezionati"),
        [&lists](const contract::MoveManner& chosen) { return lists.planSelected(chosen); }, completed(session, manner),
        true, window);
    auto plan = showMoves(session, shown, apply, [&] { return lists.moveSelected(shown.manner()); });
    failWithoutPlan(shown);
    return plan;
}

contract::MovePlan showMoveList(HostSession& session, QWidget* window, const QString& file, bool apply) {
    auto& lists = capabilityOf<contract::MoveLists>(session);
    MoveListWindow shown(lists, file, window);
    auto plan =
        showMoves(session, shown, apply, [&] { return lists.moveList(shown.lines(), contract::Unnamed::onScreen); });
    if (!file.isEmpty())
        failWithoutPlan(shown);
    return plan;
}

void addPreviewCommands(QMenu& menu, const ToolContext& context) {
    menu.addSeparator();
    const auto add = [&](const QString& caption, const char* name, auto command) {
        auto* action = menu.addAction(caption);
        action->setObjectName(QLatin1String(name));
        QObject::connect(action, &QAction::triggered, context.window, [context, command] {
            told(context, [&](HostSession& session) { command(session, context.window); });
        });
        return action;
    };
    add(QStringLiteral("A&nteprima dello spostamento…"), "mnuAnteprima", [](HostSession& session, QWidget* window) {
        showPreview(session, window, {});
    })->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_P));
    add(QStringLiteral("Sposta i &selezionati…"), "mnuSpostaSelezionati",
        [](HostSession& session, QWidget* window) { showSelected(session, window, {}, false); });
    add(QStringLiteral("Sposta da &elenco…"), "mnuSpostaElenco",
        [](HostSession& session, QWidget* window) { showMoveList(session, window, {}, false); });
    menu.addSeparator();
}

} // namespace host
