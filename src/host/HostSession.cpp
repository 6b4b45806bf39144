#include "host/HostSession.h"

#include "host/ClassProperties.h"
#include "host/ComponentLibrary.h"
#include "host/DataEntryReports.h"
#include "host/DatabaseAccess.h"
#include "host/ErrorReport.h"
#include "host/HostGlobal.h"
#include "host/HostServices.h"
#include "host/ObjectModels.h"
#include "host/StartFailure.h"
#include "host/Text.h"
#include "host/TracingConnection.h"
#include "platform/qt/Appearance.h"
#include "platform/qt/DataEntryHooks.h"
#include "platform/qt/QtControlFactory.h"
#include "plugin/contract/Form.h"
#include "plugin/contract/Snapshot.h"

#include <QTimer>

#include <array>

namespace host {

using contract::Fragment;
using contract::Statement;
using platform::qt::Session;

namespace {

const QString notOpen = QStringLiteral("la maschera FRMQZ_COPIADISTINTA non è aperta");

/// Commands of the component that stand in the menu bar: name and caption.
struct MenuCommand {
    const char* name;
    const char* caption;
};
constexpr std::array<MenuCommand, 1> menuCommands{{{"mnuDettagli", "&Dettagli"}}};

const MenuCommand* findCommand(const QString& name) {
    for (const auto& command : menuCommands)
        if (name == QLatin1String(command.name))
            return &command;
    return nullptr;
}

} // namespace

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
    context_->errorLog.setFile(settings_.logFile);
    context_->statusText = [this](const QString& text) { emit statusText(text); };
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
        context_->connection = connection;
        context_->states = openStates(
            context_->connectionString, *connection, [context = std::weak_ptr(context_)](std::function<void()> action) {
                QTimer::singleShot(0, qApp, [context, action = std::move(action)] { keepStates(context, action); });
            });
        const auto all = settings_.company ? std::vector<std::int64_t>{*settings_.company} : companies();
        context_->company = all.empty() ? 1 : all.front();
    } catch (const contract::RuntimeError& error) {
        throw StartFailure(ExitStatus::database, error.description());
    }
    global_ = std::make_shared<HostGlobal>(context_, std::make_shared<platform::qt::QtControlFactory>(area_, window_));
    connectDataEntry(context_, global_);
}

platform::qt::FormWindow* HostSession::formWindow() const {
    return Session::instance().find(QString::fromLatin1(mainForm));
}

bool HostSession::formOpen() const {
    return formWindow() != nullptr;
}

QString HostSession::openForm(const QJsonObject& properties) {
    if (formOpen())
        return QStringLiteral("la maschera FRMQZ_COPIADISTINTA è già aperta");
    releaseClass();
    class_ = component_.newClass(contract::copiaDistintaClassId);
    if (!class_)
        return QStringLiteral("il componente non conosce la classe %1")
            .arg(QLatin1String(contract::copiaDistintaClassId));
    modelsRegistered_ = false;
    try {
        giveContext();
    } catch (const contract::RuntimeError& error) {
        class_.reset();
        return toQt(error.description());
    }
    for (auto at = properties.begin(); at != properties.end(); ++at) {
        if (const QString refusal = writeProperty(class_->plugin(), at.key(), at.value()); !refusal.isEmpty()) {
            class_.reset();
            return refusal;
        }
    }
    // A modal form keeps ShowForm from returning until it goes; its models are handed over from the loop inside.
    if (class_->plugin().WindowModal())
        QTimer::singleShot(0, this, &HostSession::registerModels);
    showing_ = true;
    class_->plugin().ShowForm();
    showing_ = false;
    if (!formOpen()) {
        const bool modal = class_ && class_->plugin().WindowModal();
        releaseClass();
        emit formClosed();
        return modal ? QString() : QStringLiteral("la maschera FRMQZ_COPIADISTINTA non si è aperta");
    }
    registerModels();
    watchForm();
    emit formOpened();
    return {};
}

void HostSession::giveContext() {
    auto& plugin = class_->plugin();
    auto traced = std::make_shared<TracingConnection>(newConnection(context_->connectionString), context_->trace);
    traced->Open();
    plugin.Connection(traced);
    plugin.ClsGlobal(global_);
    plugin.StatusBar(std::make_shared<HostStatusBar>(context_));
    plugin.ActiveFrame(std::make_shared<HostFrame>());
    plugin.ActiveNavigator(std::make_shared<HostNavigator>(context_));
    plugin.ClsVoceMenu(std::make_shared<HostMenuEntry>("Manutenzione distinte"));
    plugin.Caption("Manutenzione distinte");
    plugin.MenuModulo("QZ");
    plugin.MenuPadre("Programmi");
    plugin.MenuProg("Manutenzione distinte");
    plugin.CanDelete(true);
    plugin.CanInsert(true);
    plugin.CanQbe(true);
    plugin.CanUpdate(true);
    plugin.IsActive(true);
    constexpr std::int16_t maximised = 2;
    if (!settings_.scripted)
        plugin.WindowState(maximised);
    class_->DataTransfer = [context = context_](const contract::Value& data) {
        context->journal.record(QStringLiteral("CLSQZ_COPIADISTINTA"), QStringLiteral("DataTransfer"),
                                {{QStringLiteral("data"), toJson(data)}});
    };
}

void HostSession::registerModels() {
    if (modelsRegistered_ || !class_ || !formOpen())
        return;
    modelsRegistered_ = true;
    const auto navigator = class_->plugin().ActiveNavigator();
    if (!navigator)
        return;
    class_->navigator().InitializeLayoutObjectModel(navigator->layout());
    class_->navigator().InitializeScriptObjectModel(navigator->script());
}

void HostSession::watchForm() {
    // The user's close button unloads the form without the host's doing; the class goes once the form has gone.
    const auto* form = formWindow();
    if (form == nullptr)
        return;
    connect(
        const_cast<platform::qt::FormWindow*>(form)->window(), &QObject::destroyed, this,
        [this] {
            if (formOpen() || !class_)
                return;
            releaseClass();
            emit formClosed();
        },
        Qt::QueuedConnection);
}

QString HostSession::closeForm(bool& gone) {
    gone = false;
    if (!class_ || !formOpen())
        return notOpen;
    gone = class_->plugin().CloseForm() == contract::Value(true);
    if (gone) {
        releaseClass();
        emit formClosed();
    }
    return {};
}

void HostSession::releaseClass() {
    if (!class_ || showing_)
        return;
    // Handed over first: what the class tells the host while it goes must find no class.
    const auto going = std::move(class_);
    going->DestroyClass();
}

QString HostSession::activateForm() {
    auto* window = formWindow();
    if (window == nullptr || window->form() == nullptr)
        return notOpen;
    contract::fire(window->form()->Activate);
    return {};
}

QString HostSession::state(std::vector<std::pair<std::string, contract::Value>>& values) const {
    if (!class_ || !formOpen())
        return notOpen;
    values = class_->state();
    return {};
}

QString HostSession::getClassProperty(const QString& name, QJsonValue& value) const {
    return class_ ? readProperty(class_->plugin(), name, value) : notOpen;
}

QString HostSession::setClassProperty(const QString& name, const QJsonValue& value) {
    return class_ ? writeProperty(class_->plugin(), name, value) : notOpen;
}

QString HostSession::callClass(const QString& name, const QJsonValue& argument, QJsonValue& result) {
    if (!class_)
        return notOpen;
    result = QJsonValue::Null;
    if (name == QLatin1String("TransferData")) {
        const auto data = fromJson(argument);
        if (!data)
            return QStringLiteral("TransferData vuole un testo, un numero, un booleano o null");
        result = toJson(class_->plugin().TransferData(*data));
        return {};
    }
    const auto navigator = class_->plugin().ActiveNavigator();
    if (name == QLatin1String("BeforeExportToOffice"))
        class_->navigator().BeforeExportToOffice(nullptr);
    else if (name == QLatin1String("InitializeLayoutObjectModel"))
        class_->navigator().InitializeLayoutObjectModel(navigator ? navigator->layout() : nullptr);
    else if (name == QLatin1String("InitializeScriptObjectModel"))
        class_->navigator().InitializeScriptObjectModel(navigator ? navigator->script() : nullptr);
    else if (name == QLatin1String("DestroyClass"))
        class_->DestroyClass();
    else
        return QStringLiteral("la classe non ha il metodo \"%1\"").arg(name);
    return {};
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
    // Whichever table names a company first: distinte, then parameters, then accounts.
    constexpr std::array<Fragment, 3> sources = {
        Fragment("SELECT DISTINCT QZ01_DITTA_CG18 FROM QZ01_TIPODISTINTA ORDER BY QZ01_DITTA_CG18"),
        Fragment("SELECT QZ03_DITTA_CG18 FROM QZ03_PARAMETRI ORDER BY QZ03_DITTA_CG18"),
        Fragment("SELECT DISTINCT CG44_DITTA_CG18 FROM CG44_CLIFOR ORDER BY CG44_DITTA_CG18"),
    };
    std::vector<std::int64_t> found;
    for (const auto& source : sources) {
        contract::Snapshot rows;
        readAgainWhenLost(*context_->connection, Statement(source), rows);
        for (std::size_t row = 0; row < rows.rowCount(); ++row)
            if (const auto company = rows.column(0).integer(row))
                found.push_back(*company);
        if (!found.empty())
            break;
    }
    return found;
}

QString HostSession::databaseName() const {
    return toQt(databaseLabel(settings_.connectionString));
}
QString HostSession::logFile() const {
    return settings_.logFile;
}

QStringList HostSession::menuEntries() const {
    QStringList names;
    for (const auto& command : menuCommands)
        names.append(QString::fromLatin1(command.name));
    return names;
}

QString HostSession::chooseMenuEntry(const QString& name) {
    if (findCommand(name) == nullptr)
        return QStringLiteral("la barra dei menu non ha la voce \"%1\"").arg(name);
    if (!class_ || !formOpen())
        return notOpen;
    if (!class_->menuCommand(name.toStdString()))
        return QStringLiteral("il programma non conosce la voce \"%1\"").arg(name);
    emit menuEntryChosen(name);
    return {};
}

QString HostSession::menuEntryCaption(const QString& name) const {
    const auto* command = findCommand(name);
    return command != nullptr ? QString::fromUtf8(command->caption) : QString();
}

bool HostSession::menuEntryEnabled(const QString& name) const {
    return findCommand(name) != nullptr && formOpen();
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

} // namespace host
