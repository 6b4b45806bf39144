#include "host/start/HostSession.h"

#include "contract/Snapshot.h"
#include "host/database/AppendedFile.h"
#include "host/database/Companies.h"
#include "host/database/DatabaseAccess.h"
#include "host/services/DataEntryReports.h"
#include "host/services/ErrorReport.h"
#include "host/services/HostContext.h"
#include "host/services/HostGlobal.h"
#include "host/services/Text.h"
#include "host/start/ComponentLibrary.h"
#include "host/start/StartFailure.h"
#include "platform/qt/fields/DataEntryHooks.h"
#include "platform/qt/forms/QtControlFactory.h"
#include "platform/qt/look/Appearance.h"

#include <QCoreApplication>
#include <QTimer>

namespace host {

using contract::Fragment;
using contract::Statement;

HostSession::HostSession(SessionSettings settings, ComponentLibrary& component, QMdiArea* area, QWidget* window)
    : settings_(std::move(settings)), component_(component), area_(area), window_(window),
      context_(std::make_shared<HostContext>()) {
    context_->window = window;
    context_->user = settings_.user;
    context_->group = settings_.group;
    context_->dialogs.setWindow(window);
    context_->dialogs.setScripted(settings_.scripted);
    context_->journal.setRecording(settings_.scripted);
    context_->trace.setRecording(settings_.scripted);
    refuseDatabaseAs(settings_.logFile, settings_.connectionString, "registro degli errori");
    refuseDatabaseAs(settings_.traceFile, settings_.connectionString, "file di traccia");
    context_->errorLog.setFile(settings_.logFile);
    context_->statusText = [this](const QString& text) { emit statusText(text); };
    context_->trace.cut = [this](const QString& reason) { context_->notices.add({notice::traceCut, reason, true}); };
    if (!context_->errorLog.writable())
        context_->notices.add({notice::logCut, context_->errorLog.complaint(), true});
    if (!settings_.traceFile.isEmpty()) {
        try {
            context_->trace.openFile(settings_.traceFile);
        } catch (const contract::RuntimeError& error) {
            throw StartFailure(ExitStatus::usage, error.description());
        }
    }
}

HostSession::~HostSession() {
    releaseClass();
    platform::qt::DataEntryHooks::instance() = {};
    context_->statusText = {};
    context_->trace.afterFinished = {};
    context_->trace.cut = {};
    context_->notices.changed = {};
    context_->states.reset();
    context_->connection.reset();
}

QString HostSession::tryDatabase(const std::string& connectionString) {
    try {
        const auto connection = newConnection(connectionString);
        connection->Open();
        checkTables(*connection, component_.schema());
    } catch (const contract::RuntimeError& error) {
        return toQt(error.description());
    }
    return {};
}

void HostSession::openDatabase() {
    context_->connectionString = settings_.connectionString;
    try {
        std::shared_ptr<contract::Connection> connection = newConnection(context_->connectionString);
        connection->Open();
        checkTables(*connection, component_.schema());
        hasRegistry_ = hasTables(*connection, optionalTables(component_.schema()));
        context_->connection = connection;
        context_->states = openStates(
            context_->connectionString, *connection,
            [context = std::weak_ptr(context_)](std::function<void()> action) {
                QTimer::singleShot(0, qApp, [context, action = std::move(action)] { keepStates(context, action); });
            },
            [context = std::weak_ptr(context_)]() -> contract::Connection* {
                const auto held = context.lock();
                return held ? held->formConnections.inTransaction() : nullptr;
            });
        const auto all = settings_.company ? std::vector<std::int64_t>{*settings_.company} : companies();
        context_->company = all.empty() ? 1 : all.front();
    } catch (const contract::RuntimeError& error) {
        throw StartFailure(ExitStatus::database, error.description());
    }
    noteDatabase();
    global_ = std::make_shared<HostGlobal>(context_, std::make_shared<platform::qt::QtControlFactory>(area_, window_));
    connectDataEntry(context_, global_);
}

// What the user of a database must know from the start.
void HostSession::noteDatabase() {
    auto& notices = context_->notices;
    notices.remove(notice::readOnly);
    notices.remove(notice::plain);
    if (const auto reason = whyNotWritable(*context_->connection); !reason.empty())
        notices.add(
            {notice::readOnly,
             QStringLiteral("Il database %1 si può guardare ma non modificare: %2.").arg(databaseName(), toQt(reason)),
             false});
    if (const auto warning = transportWarning(context_->connectionString); !warning.empty())
        notices.add({notice::plain, toQt(warning), false});
}

QString HostSession::setHostProperty(const QString& name, const QJsonValue& value) {
    auto& appearance = platform::qt::Appearance::instance();
    const QString text = value.toString();
    if (name == QLatin1String("theme")) {
        if (text != QLatin1String("chiaro") && text != QLatin1String("scuro"))
            return QStringLiteral("\"theme\" vuole \"chiaro\" o \"scuro\"");
        appearance.setTheme(text == QLatin1String("scuro") ? platform::qt::ThemeKind::dark
                                                           : platform::qt::ThemeKind::light);
        return {};
    }
    if (name == QLatin1String("zoom")) {
        const auto points = wholeNumber(value).value_or(0);
        if (points != 8 && points != 10 && points != 12 && points != 14)
            return QStringLiteral("\"zoom\" vuole 8, 10, 12 o 14");
        appearance.setZoom(static_cast<int>(points));
        return {};
    }
    if (name == QLatin1String("refuse_close")) {
        if (text == QLatin1String("frame"))
            context_->refuseClose = RefuseClose::frame;
        else if (text == QLatin1String("script"))
            context_->refuseClose = RefuseClose::script;
        else if (value.isNull() || (value.isString() && text.isEmpty()))
            context_->refuseClose = RefuseClose::nobody;
        else
            return QStringLiteral("\"refuse_close\" vuole \"frame\", \"script\" o un testo vuoto");
        return {};
    }
    return QStringLiteral("l'ospite non ha \"%1\"").arg(name);
}

std::int64_t HostSession::company() const {
    return context_->company;
}

void HostSession::setCompany(std::int64_t company) {
    context_->company = company;
    if (class_ && formOpen()) {
        class_->companyChanged();
        if (!formOpen()) {
            releaseClass();
            emit formClosed();
        }
    }
    emit contextChanged();
}

QString HostSession::user() const {
    return toQt(context_->user);
}
QString HostSession::group() const {
    return toQt(context_->group);
}

void HostSession::setUser(const QString& user, const QString& group) {
    context_->user = user.toStdString();
    context_->group = group.toStdString();
    emit contextChanged();
}

std::vector<std::int64_t> HostSession::companies() {
    return companiesOf(*context_->connection);
}

std::unique_ptr<contract::PluginClass> HostSession::newClass() const {
    return component_.newClass(contract::copiaDistintaClassId);
}

contract::Connection& HostSession::connection() {
    return *context_->connection;
}

std::vector<CompanyChoice::Company> HostSession::companiesByName() {
    std::vector<CompanyChoice::Company> found;
    for (const auto number : companies())
        found.push_back({number, {}});
    contract::Snapshot rows;
    constexpr Fragment text(
        "SELECT QZ01_DITTA_CG18, QZ01_DESCR FROM QZ01_TIPODISTINTA ORDER BY QZ01_DITTA_CG18, QZ01_ID");
    readAgainWhenLost(*context_->connection, Statement(text), rows);
    for (std::size_t row = 0; row < rows.rowCount(); ++row)
        for (auto& company : found)
            if (const QString name = toQt(rows.column(1).text(row)).trimmed();
                rows.column(0).integer(row) == company.number && !name.isEmpty())
                company.distinte += (company.distinte.isEmpty() ? QString() : QStringLiteral(", ")) + name;
    return found;
}

QString HostSession::databasePlace() const {
    return placeOf(settings_.connectionString);
}
QString HostSession::databaseName() const {
    return toQt(databaseLabel(settings_.connectionString));
}
std::string HostSession::databaseFile() const {
    return context_->connection ? fileOf(*context_->connection) : std::string();
}
QString HostSession::logFile() const {
    return settings_.logFile;
}

UserDialogs& HostSession::dialogs() {
    return context_->dialogs;
}
ServiceJournal& HostSession::journal() {
    return context_->journal;
}
TraceLog& HostSession::trace() {
    return context_->trace;
}
Notices& HostSession::notices() {
    return context_->notices;
}

} // namespace host
