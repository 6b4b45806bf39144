#include "host/windows/ExportCommands.h"

#include "host/start/HostSession.h"
#include "host/tables/DistintaList.h"
#include "host/windows/ExportWindow.h"
#include "host/windows/PrintWindow.h"

#include <QAction>
#include <QKeySequence>

#include <memory>

namespace host {

namespace {

/// Which tree, and how much of it: as the user chose in a window, at first the side that has or had the keyboard.
struct Choices {
    QComboBox* side = nullptr;
    QComboBox* rows = nullptr;
};

std::function<TitledTable()> listOf(HostSession& session, const std::shared_ptr<Choices>& choices, Side usual) {
    return [&session, choices, usual]() -> TitledTable {
        const Side side = choices->side != nullptr ? static_cast<Side>(choices->side->currentIndex()) : usual;
        const auto rows = choices->rows != nullptr && choices->rows->currentIndex() == 1 ? TreeTable::Rows::shown
                                                                                         : TreeTable::Rows::all;
        return distintaList(session, side, rows);
    };
}

template <class Window> void addChoices(Window& window, Choices& choices, Side usual) {
    choices.side = window.addChoice(QStringLiteral("CMB_LATO"), QStringLiteral("&Distinta:"),
                                    {QStringLiteral("Origine"), QStringLiteral("Destinazione")}, int(usual));
    choices.rows = window.addChoice(QStringLiteral("CMB_RIGHE"), QStringLiteral("&Righe:"),
                                    {QStringLiteral("Intera"), QStringLiteral("Come mostrata")}, 0);
}

/// The session with its form open; null, and told, without.
HostSession* openSession(const ToolContext& context) {
    auto* session = context.session();
    if (session != nullptr && session->formOpen())
        return session;
    context.say(QStringLiteral("Prima si apre il programma: Programmi › Manutenzione distinte."));
    return nullptr;
}

Side usualSide(const HostSession& session) {
    return session.side() == QLatin1String("Dest") ? Side::destination : Side::origin;
}

void exportDistinta(const ToolContext& context) {
    auto* session = openSession(context);
    if (session == nullptr)
        return;
    const Side usual = usualSide(*session);
    const auto choices = std::make_shared<Choices>();
    ExportWindow window(listOf(*session, choices, usual), context.window);
    addChoices(window, *choices, usual);
    window.run();
    if (!window.written().isEmpty())
        session->say(window.written());
}

void printDistinta(const ToolContext& context) {
    auto* session = openSession(context);
    if (session == nullptr)
        return;
    const Side usual = usualSide(*session);
    const auto choices = std::make_shared<Choices>();
    PrintWindow window(listOf(*session, choices, usual), context.window);
    addChoices(window, *choices, usual);
    window.run();
}

} // namespace

void addExportCommands(QMenu& menu, const ToolContext& context) {
    menu.addSeparator();
    auto* write = menu.addAction(QStringLiteral("Esp&orta la distinta…"));
    write->setObjectName(QStringLiteral("mnuEsporta"));
    QObject::connect(write, &QAction::triggered, context.window, [context] { exportDistinta(context); });
    auto* print = menu.addAction(QStringLiteral("S&tampa la distinta…"));
    print->setObjectName(QStringLiteral("mnuStampa"));
    print->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_P));
    QObject::connect(print, &QAction::triggered, context.window, [context] { printDistinta(context); });
}

} // namespace host
