#pragma once

#include "contract/Cinterface.h"
#include "contract/MoveRegistry.h"
#include "contract/Value.h"
#include "host/database/TraceLog.h"
#include "host/services/Notices.h"
#include "host/services/ServiceJournal.h"
#include "host/windows/CompanyChoice.h"
#include "host/windows/UserDialogs.h"
#include "platform/qt/forms/Session.h"

#include <QJsonObject>
#include <QJsonValue>
#include <QMdiArea>
#include <QObject>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace host {

class ComponentLibrary;
class HostGlobal;
struct HostContext;

/// With what a session starts.
struct SessionSettings {
    std::string connectionString;        ///< of a database that exists
    std::optional<std::int64_t> company; ///< nothing: the lowest one in the database
    std::string user = "ADMIN";
    std::string group = "ADMIN";
    QString traceFile; ///< empty: none
    QString logFile;   ///< the host's error log
    bool scripted = false;
};

/// The host's work with one database and one component: creates the component's class, gives it its context, shows and
/// closes its form. The window around it is MainWindow's.
///
/// Operations that a script may ask for answer with the reason of a refusal in the user's language, empty when they
/// were carried out.
class HostSession : public QObject {
    Q_OBJECT
public:
    /// Name of the component's main form.
    static constexpr const char* mainForm = "FRMQZ_COPIADISTINTA";

    /// Forms stand in the area, dialogs over the window. Throws StartFailure when the trace file can not be written.
    HostSession(SessionSettings settings, ComponentLibrary& component, QMdiArea* area, QWidget* window);
    ~HostSession() override;

    /// The database to be opened, in the place of the one it was made with.
    void setDatabase(const std::string& connectionString) { settings_.connectionString = connectionString; }
    const std::string& connectionString() const { return settings_.connectionString; }
    /// Whether a database would serve: opens it, looks for the component's tables and closes it. The reason of a
    /// failure, empty when it serves.
    QString tryDatabase(const std::string& connectionString);
    /// Opens the database and checks that it has the component's tables. Throws StartFailure (exit status 3).
    void openDatabase();

    // The component's form

    /// Creates the class, sets its context with these properties by name on top, and shows the form. With the property
    /// WindowModal it returns when the form has gone.
    QString openForm(const QJsonObject& context = {});
    bool formOpen() const;
    platform::qt::FormWindow* formWindow() const;
    /// Calls CloseForm and, when the form went, releases the class. Refused where no form is open.
    QString closeForm(bool& gone);
    /// Activates the form again.
    QString activateForm();
    /// Hands the object models over, once for each form, after its first activation. openForm() does it; for a modal
    /// form who waits for it does, as soon as it stands. Further calls do nothing.
    void registerModels();
    /// The form's shared state by name. Refused where no form is open.
    QString state(std::vector<std::pair<std::string, contract::Value>>& values) const;

    /// Another object of the component's class, without form and context, for what needs neither.
    std::unique_ptr<contract::PluginClass> newClass() const;
    /// The host's own connection, open, for its own windows; nothing of it is traced.
    contract::Connection& connection();
    /// An interface that the component's class offers beside the plug-in contract; null where it offers none, or while
    /// there is no class.
    template <class Capability> Capability* capability() const { return dynamic_cast<Capability*>(class_.get()); }
    /// Shows a text in the status line until the next one.
    void say(const QString& text) { emit statusText(text); }

    // The class's properties, by their names in the contract (exact case)

    QString getClassProperty(const QString& name, QJsonValue& value) const;
    QString setClassProperty(const QString& name, const QJsonValue& value);
    /// "TransferData" with its argument, "BeforeExportToOffice", and the class's other methods and hooks.
    QString callClass(const QString& name, const QJsonValue& argument, QJsonValue& result);

    // The host's own settings

    /// "theme" ("chiaro", "scuro"), "zoom" (8, 10, 12, 14), "refuse_close" ("frame", "script", empty).
    QString setHostProperty(const QString& name, const QJsonValue& value);
    std::int64_t company() const;
    /// Changes the working company and tells the form, which closes.
    void setCompany(std::int64_t company);
    /// The side of the form that has or had the keyboard, as the component's commands name it: "Orig" or "Dest".
    QString side() const { return side_; }
    QString user() const;
    QString group() const;
    void setUser(const QString& user, const QString& group);
    /// Companies in the database, ascending.
    std::vector<std::int64_t> companies();
    /// The same with what a person knows them by.
    std::vector<CompanyChoice::Company> companiesByName();
    QString databaseName() const;
    /// The file of an embedded database, also of one that SQLite's driver opens; empty on a server.
    std::string databaseFile() const;
    /// Where the database is: a file's whole path, or the server.
    QString databasePlace() const;
    QString logFile() const;

    // Entries of the menu bar that act on the form ("mnuDettagli")

    QStringList menuEntries() const;
    /// Refused where there is no such entry, or no form to act on.
    QString chooseMenuEntry(const QString& name);
    /// Empty for a name that is no entry.
    static QString menuEntryCaption(const QString& name);
    bool menuEntryEnabled(const QString& name) const;

    // The registry of moves

    /// Whether the database has the registry's tables.
    bool hasRegistry() const { return hasRegistry_; }
    /// Makes them; from then on moves are written into it. Throws RuntimeError.
    void addRegistry();
    /// The component's; null where no form is open, and for a component without one.
    contract::MoveRegistry* registry() const;

    UserDialogs& dialogs();
    ServiceJournal& journal();
    TraceLog& trace();
    Notices& notices();

signals:
    void statusText(const QString& text);
    /// What stands in the status line for a while; empty: the last statusText() again.
    void statusHint(const QString& text);
    void formOpened();
    void formClosed();
    void contextChanged(); ///< company, user or group
    void menuEntryChosen(const QString& name);

private slots:
    void focusMoved(QWidget*, QWidget* now) { rememberSide(now); }

private:
    void noteDatabase();
    void giveContext();
    void keepRegistry();
    void releaseClass();
    void watchForm();
    void rememberSide(const QWidget* focused);

    SessionSettings settings_;
    ComponentLibrary& component_;
    QMdiArea* area_;
    QWidget* window_;
    std::shared_ptr<HostContext> context_;
    std::shared_ptr<HostGlobal> global_;
    std::unique_ptr<contract::PluginClass> class_;
    QString side_ = QStringLiteral("Orig"); ///< as the component's commands name it
    bool modelsRegistered_ = false;
    bool hasRegistry_ = false;
    bool showing_ = false; ///< ShowForm runs: the class must outlive it, even when a modal form has gone
};

} // namespace host
