#include "host/windows/RegistryCommands.h"

#include "contract/Host.h"
#include "contract/RuntimeError.h"
#include "host/services/Text.h"
#include "host/start/HostSession.h"
#include "host/windows/RegistryWindow.h"

#include <QAction>

namespace host {

namespace {

namespace message = contract::message;

constexpr std::string_view title = "Registro degli spostamenti";
const QString windowCaption = QStringLiteral("Re&gistro degli spostamenti…");
const QString missingCaption = QStringLiteral("Re&gistro degli spostamenti (mancano le tabelle)…");

void tellError(HostSession& session, const contract::RuntimeError& error) {
    session.dialogs().showMessage(title, error.description(), message::critical);
}

void showWindow(HostSession& session, QWidget* parent) {
    if (!session.hasRegistry()) {
        session.dialogs().showMessage(title,
                                      "Nel database mancano le tabelle del registro: spostamenti e modifiche non "
                                      "vengono annotati. Si aggiungono con «Strumenti › Aggiungi le tabelle del "
                                      "registro…».",
                                      message::information);
        return;
    }
    if (session.registry() == nullptr) {
        session.dialogs().showMessage(title, "Il registro si apre sopra la maschera: aprirla dal menu «Programmi».",
                                      message::information);
        return;
    }
    try {
        RegistryWindow(session, parent).run();
    } catch (const contract::RuntimeError& error) {
        tellError(session, error);
    }
}

void addTables(HostSession& session, const std::function<void(const QString&)>& say) {
    if (session.hasRegistry()) {
        session.dialogs().showMessage(title, "Il database ha già le tabelle del registro.", message::information);
        return;
    }
    const auto answer = session.dialogs().showMessage(
        title, "Aggiungere al database le tabelle del registro degli spostamenti?", message::yesNo,
        "Si aggiungono QZ90_REGISTRO e QZ91_REGISTRORIGHE; nessun'altra tabella cambia. Da allora ogni spostamento e "
        "ogni modifica delle date vi resta scritto e si può annullare.");
    if (answer != message::answerYes)
        return;
    try {
        session.addRegistry();
        say(QStringLiteral("Tabelle del registro aggiunte: da ora gli spostamenti vi restano scritti."));
    } catch (const contract::RuntimeError& error) {
        tellError(session, error);
    }
}

} // namespace

void addRegistryCommands(QMenu& menu, const ToolContext& context) {
    auto* window = menu.addAction(windowCaption);
    window->setObjectName(QStringLiteral("mnuRegistro"));
    window->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_R));
    auto* tables = menu.addAction(QStringLiteral("Aggiungi le ta&belle del registro…"));
    tables->setObjectName(QStringLiteral("mnuAggiungiRegistro"));
    QObject::connect(window, &QAction::triggered, context.window, [context] {
        if (auto* session = context.session())
            showWindow(*session, context.window);
    });
    QObject::connect(tables, &QAction::triggered, context.window, [context] {
        if (auto* session = context.session())
            addTables(*session, context.say);
    });
    QObject::connect(&menu, &QMenu::aboutToShow, context.window, [context, window, tables] {
        const auto* session = context.session();
        const bool missing = session != nullptr && !session->hasRegistry();
        window->setText(missing ? missingCaption : windowCaption);
        tables->setVisible(missing);
    });
}

} // namespace host
