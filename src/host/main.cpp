#include "host/AppIcon.h"
#include "host/CommandLine.h"
#include "host/ComponentLibrary.h"
#include "host/ConnectionDialog.h"
#include "host/DatabaseAccess.h"
#include "host/DatabaseSetup.h"
#include "host/HostSession.h"
#include "host/MainWindow.h"
#include "host/Prompts.h"
#include "host/ScriptReader.h"
#include "host/ScriptRunner.h"
#include "host/StartFailure.h"
#include "host/Text.h"
#include "host/ToolkitTexts.h"
#include "host/UserFolders.h"
#include "host/UserSettings.h"
#include "platform/odbc/ConnectionString.h"
#include "platform/qt/Appearance.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLineEdit>
#include <QLocale>
#include <QTranslator>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

#include <sys/stat.h>

namespace {

using host::CommandLine;
using host::ExitStatus;
using host::StartFailure;

/// One line on standard error, whatever line ends the reason holds.
void report(std::string reason) {
    std::replace(reason.begin(), reason.end(), '\n', ' ');
    std::cerr << "distinte: " << reason << std::endl;
}

/// Overwrites the passwords in the arguments: the process's own title shows them to every user of the machine, and a
/// session manager keeps them to start the program again.
void hidePasswords(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        const std::size_t room = std::strlen(argv[i]);
        const std::string shown = platform::odbc::withoutPasswords(argv[i], {}).substr(0, room);
        std::fill(std::copy(shown.begin(), shown.end(), argv[i]), argv[i] + room, '\0');
    }
}

bool isSet(const char* variable) {
    const char* value = std::getenv(variable);
    return value != nullptr && value[0] != '\0';
}

void chooseDisplay(const CommandLine& line) {
    if (isSet("QT_QPA_PLATFORM"))
        return;
    const bool x11 = isSet("DISPLAY");
    const bool wayland = isSet("WAYLAND_DISPLAY");
    if (line.action == CommandLine::Action::script) {
        // One by one, until a display answers: the variables may be left over from a session that has ended.
        const std::string platforms = std::string(x11 ? "xcb;" : "") + (wayland ? "wayland;" : "") + "offscreen";
        setenv("QT_QPA_PLATFORM", platforms.c_str(), 1);
    } else if (!x11 && !wayland) {
        throw StartFailure(ExitStatus::usage, "nessuno schermo (DISPLAY o WAYLAND_DISPLAY): senza schermo il "
                                              "programma esegue soltanto script, con --script");
    }
}

std::filesystem::path programFolder() {
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::filesystem::current_path() : program.parent_path();
}

host::ComponentLibrary loadComponent() {
    return host::ComponentLibrary::load(programFolder(), host::componentRegistryFile());
}

/// Puts the password of the environment into a connection string that names a user without one.
std::string withPasswordOfEnvironment(const std::string& connectionString) {
    const char* password = std::getenv("DISTINTE_ODBC_PASSWORD");
    if (password == nullptr || password[0] == '\0' || !host::wantsPassword(connectionString))
        return connectionString;
    return host::withPassword(connectionString, password);
}

std::string databaseOf(const CommandLine& line, const contract::Schema& schema) {
    const auto wanted = host::wantedDatabase(line, host::UserSettings().savedConnection());
    return wanted ? withPasswordOfEnvironment(*wanted) : host::embeddedDatabase(host::prepareDefaultDatabase(schema));
}

/// Opens or makes a database where nobody can be asked for its password.
template <class Action> void unattended(const std::string& database, Action action) {
    try {
        action();
    } catch (const StartFailure& failure) {
        if (failure.status() != ExitStatus::database)
            throw;
        throw StartFailure(failure.status(), failure.what() + host::passwordHint(database));
    }
}

int create(const CommandLine& line) {
    const auto component = loadComponent();
    auto database = host::wantedDatabase(line, host::UserSettings().savedConnection());
    if (!database) {
        std::error_code ignored;
        std::filesystem::create_directories(host::dataFolder(), ignored);
        database = host::embeddedDatabase(host::defaultDatabase().string());
    }
    const bool demo = line.action == CommandLine::Action::createDemo;
    const std::string complete = withPasswordOfEnvironment(*database);
    unattended(complete, [&] {
        host::createDatabase(complete, component.schema(), demo ? std::optional(line.demoSize) : std::nullopt);
    });
    return static_cast<int>(ExitStatus::success);
}

void useItalian(QApplication& application) {
    QLocale::setDefault(QLocale(QLocale::Italian, QLocale::Italy));
    QApplication::installTranslator(new host::ToolkitTexts(&application));
    // All texts of Qt's own, where the machine has them.
    auto* translator = new QTranslator(&application);
    if (translator->load(QStringLiteral("qtbase_it"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(translator);
}

/// Asks for the password where a user is named without one.
void askPassword(host::HostSession& session) {
    const std::string& database = session.connectionString();
    if (!host::wantsPassword(database))
        return;
    auto* password = new QLineEdit;
    password->setEchoMode(QLineEdit::Password);
    // A name may hold the mark of a mnemonic.
    const QString label = host::toQt(host::databaseLabel(database)).replace(QLatin1Char('&'), QLatin1String("&&"));
    host::FieldDialog dialog(QStringLiteral("Manutenzione distinte"), QStringLiteral("Password per %1:").arg(label),
                             password, nullptr);
    if (dialog.exec() != QDialog::Accepted)
        throw StartFailure(ExitStatus::database,
                           "connessione a \"" + host::databaseLabel(database) + "\" annullata: password non data");
    session.setDatabase(host::withPassword(database, password->text().toStdString()));
}

/// A database that was saved, or is the default, may be exchanged for another one when it does not open; one that the
/// command line or the environment names may not.
void openForAPerson(host::HostSession& session, const CommandLine& line, host::UserSettings& remembered) {
    const bool named = line.database || line.odbc || isSet("DISTINTE_ODBC");
    for (;;) {
        try {
            askPassword(session);
            session.openDatabase();
            return;
        } catch (const StartFailure& failure) {
            if (named || failure.status() != ExitStatus::database)
                throw;
            host::tell(QMessageBox::Critical, QStringLiteral("Manutenzione distinte"),
                       host::asSentence(QString::fromUtf8(failure.what())), nullptr);
            host::ConnectionDialog dialog(
                session.connectionString(), [&](const std::string& text) { return session.tryDatabase(text); },
                nullptr);
            if (dialog.exec() != QDialog::Accepted)
                throw;
            remembered.saveConnection(dialog.connectionString());
            session.setDatabase(dialog.connectionString());
        }
    }
}

int work(const CommandLine& line, int& argc, char** argv) {
    const bool scripted = line.action == CommandLine::Action::script;
    std::unique_ptr<host::ScriptReader> reader;
    if (scripted) {
        QString reason;
        reader = host::ScriptReader::open(QString::fromLocal8Bit(line.script), reason);
        if (!reader)
            throw StartFailure(ExitStatus::usage, reason.toStdString());
    }
    chooseDisplay(line);
    auto component = loadComponent();

    host::SessionSettings settings;
    settings.connectionString = databaseOf(line, component.schema());
    settings.company = line.company;
    settings.user = line.user;
    settings.group = line.group;
    settings.traceFile = QString::fromLocal8Bit(line.trace.value_or(""));
    settings.logFile = QString::fromLocal8Bit(line.log.value_or(host::defaultErrorLog().string()));
    settings.scripted = scripted;

    host::quietToolkit();
    QApplication application(argc, argv);
    QGuiApplication::setDesktopFileName(QStringLiteral("distinte"));
    QApplication::setApplicationName(QStringLiteral("distinte"));
    QApplication::setApplicationDisplayName(QString());
    QApplication::setWindowIcon(host::applicationIcon());
    useItalian(application);
    // What one person has set must not change what a script sees.
    host::UserSettings remembered;
    if (!scripted)
        remembered.restoreAppearance();
    platform::qt::Appearance::instance().apply();

    host::MainWindow window(scripted ? nullptr : &remembered);
    host::HostSession session(settings, component, window.area(), &window);
    if (scripted)
        unattended(settings.connectionString, [&] { session.openDatabase(); });
    else
        openForAPerson(session, line, remembered);
    window.attach(session);
    window.show();
    if (scripted)
        return host::runScript(session, &window, *reader);
    if (const QString refusal = session.openForm(); !refusal.isEmpty())
        report(refusal.toStdString());
    return QApplication::exec();
}

int run(int& argc, char** argv) {
    const CommandLine line = host::readCommandLine(std::vector<std::string>(argv + 1, argv + argc));
    hidePasswords(argc, argv);
    switch (line.action) {
    case CommandLine::Action::version:
        std::cout << "distinte " DISTINTE_VERSION << std::endl;
        return 0;
    case CommandLine::Action::help:
        std::cout << host::helpText() << std::flush;
        return 0;
    case CommandLine::Action::create:
    case CommandLine::Action::createDemo:
        return create(line);
    case CommandLine::Action::script:
    case CommandLine::Action::window:
        break;
    }
    return work(line, argc, argv);
}

} // namespace

int main(int argc, char** argv) {
    // Databases, journals, settings, logs and traces hold customers' data: what is made here is its owner's alone.
    ::umask(S_IRWXG | S_IRWXO);
    try {
        return run(argc, argv);
    } catch (const StartFailure& failure) {
        report(failure.what());
        return static_cast<int>(failure.status());
    } catch (const std::exception& error) {
        report(error.what());
        return static_cast<int>(ExitStatus::database);
    }
}
