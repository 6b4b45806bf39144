#include "host/script/ScriptExport.h"

#include "host/audit/AuditCommand.h"
#include "host/comparison/ComparisonCommand.h"
#include "host/script/ScriptCommands.h"
#include "host/script/ScriptRequest.h"
#include "host/tables/DistintaList.h"
#include "host/windows/ListWindow.h"
#include "host/windows/PreviewCommands.h"
#include "platform/qt/forms/Session.h"

#include <QAction>

#include <optional>
#include <utility>

namespace host {

using platform::qt::FormWindow;
using platform::qt::Session;

namespace {

/// Chooses an entry of the window's menu bar, where it has that entry.
void choose(QWidget& window, const QString& entry) {
    if (auto* action = window.findChild<QAction*>(entry))
        action->trigger();
}

/// What is exported from a list window, and what shows it. A new one is a line here.
struct ListWindowSource {
    const char* what;
    void (*show)(HostSession& session, QWidget* window);
};
constexpr ListWindowSource windows[] = {
    {"preview", [](HostSession& session, QWidget* window) { showPreview(session, window, {}); }},
    {"registry", [](HostSession&, QWidget* window) { choose(*window, QStringLiteral("mnuRegistro")); }},
    {"audit", [](HostSession& session, QWidget* window) { showAudit(session, window); }},
    {"compare", [](HostSession& session, QWidget* window) { showComparison(session, window, std::nullopt); }},
};

/// Takes the whole list of the first list window that opens while it lives, and closes that window. Windows that ask
/// for something first are the script's to answer.
class ListTaker {
public:
    ListTaker() : before_(Session::instance().modalOpened) {
        Session::instance().modalOpened = [this](FormWindow& form) {
            auto* window = dynamic_cast<ListWindow*>(&form);
            if (window == nullptr || list_) {
                before_(form);
                return;
            }
            list_ = TitledTable{window->table(), {window->windowTitle(), window->heading()}};
            window->pressClose();
        };
    }
    ListTaker(const ListTaker&) = delete;
    ListTaker& operator=(const ListTaker&) = delete;
    ~ListTaker() { Session::instance().modalOpened = before_; }

    const std::optional<TitledTable>& list() const { return list_; }

private:
    std::function<void(FormWindow&)> before_;
    std::optional<TitledTable> list_;
};

TitledTable listOf(HostSession& session, QWidget* window, const QString& what) {
    if (what == QLatin1String("origin") || what == QLatin1String("destination")) {
        if (!session.formOpen())
            throw ScriptRefusal(
                QStringLiteral("la maschera %1 non è aperta").arg(QLatin1String(HostSession::mainForm)));
        const Side side = what == QLatin1String("origin") ? Side::origin : Side::destination;
        return distintaList(*session.formWindow(), side, TreeTable::Rows::all, session.company());
    }
    for (const auto& source : windows) {
        if (what != QLatin1String(source.what))
            continue;
        const ListTaker taker;
        source.show(session, window);
        if (!taker.list() || !taker.list()->table)
            throw ScriptRefusal(QStringLiteral("l'elenco \"%1\" non si è aperto").arg(what));
        return *taker.list();
    }
    throw ScriptRefusal(QStringLiteral("\"what\" deve essere origin, destination, preview, registry, audit o compare, "
                                       "non \"%1\"")
                            .arg(what));
}

} // namespace

void exportList(HostSession& session, QWidget* window, const QString& what, const QString& file) {
    if (!tableFormatOf(file))
        throw ScriptRefusal(QStringLiteral("il nome del file deve finire in .csv, .xlsx o .pdf, non \"%1\"").arg(file));
    const TitledTable list = listOf(session, window, what);
    if (const QString failure = writeTableFile(*list.table, list.title, file); !failure.isEmpty())
        throw ScriptRefusal(failure);
}

void ScriptCommands::exportTable(const ScriptRequest& request, QJsonObject&) {
    const QString what = request.text(QStringLiteral("what"));
    const QString file = request.text(QStringLiteral("file"));
    refuseOverDialog();
    exportList(session_, hostWindow_, what, file);
}

} // namespace host
