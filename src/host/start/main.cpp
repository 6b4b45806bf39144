#include "host/audit/CheckTask.h"
#include "host/comparison/CompareTask.h"
#include "host/database/DatabaseAccess.h"
#include "host/database/DatabaseSetup.h"
#include "host/moves/MoveFile.h"
#include "host/moves/MoveReport.h"
#include "host/script/ScriptReader.h"
#include "host/script/ScriptRunner.h"
#include "host/start/CommandLine.h"
#include "host/start/ComponentLibrary.h"
#include "host/start/HostSession.h"
#include "host/start/QuietWork.h"
#include "host/start/StartFailure.h"
#include "host/start/StartWindow.h"
#include "host/start/ToolkitTexts.h"
#include "host/start/UserFolders.h"
#include "host/start/UserSettings.h"
#include "host/windows/AppIcon.h"
#include "host/windows/MainWindow.h"
#include "platform/odbc/ConnectionString.h"
#include "platform/qt/look/Appearance.h"

#include <QApplication>
#include <QLibraryInfo>
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

host::ComponentLibrary loadComponent() {
    return host::ComponentLibrary::load(host::programFolder(), host::componentRegistryFile());
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

/// Does a task that needs no screen.
template <class Task> int workQuietly(const CommandLine& line, Task task) {
    auto component = loadComponent();
    const std::string database = databaseOf(line, component.schema());
    std::optional<host::QuietWork> work;
    unattended(database, [&] { work.emplace(line, component, database); });
    return task(*work);
}

int check(const CommandLine& line) {
    return workQuietly(line, [&](host::QuietWork& work) {
        return host::checkDistinte(work, line.severity, line.format.value_or(CommandLine::Format::text), std::cout);
    });
}

void useItalian(QApplication& application) {
    QLocale::setDefault(QLocale(QLocale::Italian, QLocale::Italy));
    QApplication::installTranslator(new host::ToolkitTexts(&application));
    // All texts of Qt's own, where the machine has them.
    auto* translator = new QTranslator(&application);
    if (translator->load(QStringLiteral("qtbase_it"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(translator);
}

host::SessionSettings sessionSettings(const CommandLine& line, const contract::Schema& schema) {
    host::SessionSettings settings;
    settings.connectionString = databaseOf(line, schema);
    settings.company = line.company;
    settings.user = line.user;
    settings.group = line.group;
    settings.traceFile = QString::fromLocal8Bit(line.trace.value_or(""));
    settings.logFile = QString::fromLocal8Bit(line.log.value_or(host::defaultErrorLog().string()));
    settings.scripted = line.action != CommandLine::Action::window;
    return settings;
}

void dress(QApplication& application) {
    QGuiApplication::setDesktopFileName(QStringLiteral("distinte"));
    QApplication::setApplicationName(QStringLiteral("distinte"));
    QApplication::setApplicationDisplayName(QString());
    QApplication::setWindowIcon(host::applicationIcon());
    useItalian(application);
}

/// What was asked for and not done, once more where it is found later.
void reportAtEnd(host::HostSession& session) {
    for (const auto& notice : session.notices().all())
        if (notice.atEnd)
            report(notice.sentence.toStdString());
}

int workForAScript(const CommandLine& line, int& argc, char** argv) {
    QString reason;
    const auto reader = host::ScriptReader::open(QString::fromLocal8Bit(line.script), reason);
    if (!reader)
        throw StartFailure(ExitStatus::usage, reason.toStdString());
    chooseDisplay(line);
    auto component = loadComponent();
    const auto settings = sessionSettings(line, component.schema());
    host::quietToolkit();
    QApplication application(argc, argv);
    dress(application);
    // What one person has set must not change what a script sees.
    platform::qt::Appearance::instance().apply();
    host::MainWindow window(nullptr);
    host::HostSession session(settings, component, window.area(), &window);
    unattended(settings.connectionString, [&] { session.openDatabase(); });
    window.attach(session);
    window.show();
    const int status = host::runScript(session, &window, *reader);
    reportAtEnd(session);
    return status;
}

int workOnMoves(const CommandLine& line, int& argc, char** argv) {
    std::vector<contract::MoveLine> lines;
    try {
        lines = host::readMoveFile(QString::fromLocal8Bit(line.moves));
    } catch (const contract::RuntimeError& error) {
        throw StartFailure(ExitStatus::usage, error.description());
    }
    if (!isSet("QT_QPA_PLATFORM"))
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
    auto component = loadComponent();
    const auto settings = sessionSettings(line, component.schema());
    host::quietToolkit();
    QApplication application(argc, argv);
    dress(application);
    host::MainWindow window(nullptr);
    host::HostSession session(settings, component, window.area(), &window);
    unattended(settings.connectionString, [&] { session.openDatabase(); });
    const auto plan = host::moveLines(session, lines, line.apply);
    std::cout << (line.format == CommandLine::Format::json ? host::planAsJsonLines(plan) : host::planAsCsv(plan))
              << std::flush;
    if (!plan.refused.empty())
        report(plan.refused);
    reportAtEnd(session);
    return static_cast<int>(plan.refused.empty() ? ExitStatus::success : ExitStatus::refused);
}

int workForAPerson(const CommandLine& line, host::UserSettings& remembered) {
    auto component = loadComponent();
    const auto settings = sessionSettings(line, component.schema());
    host::MainWindow window(&remembered);
    host::HostSession session(settings, component, window.area(), &window);
    if (host::hasScreen())
        host::openForAPerson(session, remembered, line.database || line.odbc || isSet("DISTINTE_ODBC"));
    else
        unattended(settings.connectionString, [&] { session.openDatabase(); });
    window.attach(session);
    window.show();
    if (const QString refusal = session.openForm(); !refusal.isEmpty())
        report(refusal.toStdString());
    const int status = QApplication::exec();
    reportAtEnd(session);
    return status;
}

int workInAWindow(const CommandLine& line, int& argc, char** argv) {
    chooseDisplay(line);
    host::quietToolkit();
    QApplication application(argc, argv);
    dress(application);
    host::UserSettings remembered;
    remembered.restoreAppearance();
    platform::qt::Appearance::instance().apply();
    const bool seen = host::hasScreen();
    const auto show = [&](const std::string& reason) {
        if (seen)
            host::StartWindow(QString::fromUtf8(reason), {}, host::StartWindow::Offer::nothing).exec();
    };
    try {
        return workForAPerson(line, remembered);
    } catch (const StartFailure& failure) {
        if (!failure.shown())
            show(failure.what());
        throw;
    } catch (const std::exception& error) {
        show(error.what());
        throw;
    }
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
        return workForAScript(line, argc, argv);
    case CommandLine::Action::check:
        return check(line);
    case CommandLine::Action::compare:
        return workQuietly(line, [&](host::QuietWork& work) { return host::compareDistinte(work, line, std::cout); });
    case CommandLine::Action::moves:
        return workOnMoves(line, argc, argv);
    case CommandLine::Action::window:
        break;
    }
    return workInAWindow(line, argc, argv);
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
