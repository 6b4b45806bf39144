#include "host/windows/PreviewCommands.h"

#include "contract/RuntimeError.h"
#include "host/services/Text.h"
#include "host/start/HostSession.h"
#include "host/windows/PreviewWindow.h"
#include "host/windows/Prompts.h"

#include <QAction>

namespace host {

namespace {

const QString title = QStringLiteral("Anteprima dello spostamento");

contract::MovePreview& previewOf(const HostSession& session) {
    auto* preview = session.formOpen() ? session.capability<contract::MovePreview>() : nullptr;
    if (preview == nullptr)
        throw contract::RuntimeError(contract::RuntimeError::objectNotSet,
                                     session.formOpen() ? "Il componente non fa anteprime degli spostamenti."
                                                        : "Il programma non è aperto.");
    return *preview;
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
    auto& preview = previewOf(session);
    contract::MoveManner asked = manner;
    if (!asked.end)
        asked.end = preview.proposedEnd();
    PreviewWindow shown(preview, asked, window);
    shown.run();
    if (!shown.failure().isEmpty())
        throw contract::RuntimeError(contract::RuntimeError::invalidCall, shown.failure().toStdString());
    auto plan = shown.plan();
    if (shown.moveWanted())
        preview.move(shown.manner());
    else if (const auto node = shown.nodeWanted(); node && !preview.show(*node))
        session.say(QStringLiteral("Il nodo non è nelle distinte visualizzate."));
    return plan;
}

void addPreviewCommands(QMenu& menu, const ToolContext& context) {
    menu.addSeparator();
    auto* preview = menu.addAction(QStringLiteral("A&nteprima dello spostamento…"));
    preview->setObjectName(QStringLiteral("mnuAnteprima"));
    preview->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_P));
    QObject::connect(preview, &QAction::triggered, context.window, [context] {
        told(context, [&](HostSession& session) { showPreview(session, context.window, {}); });
    });
}

} // namespace host
