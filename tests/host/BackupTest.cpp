#include "host/database/Backup.h"

#include "TestSession.h"
#include "contract/RuntimeError.h"
#include "contract/Snapshot.h"
#include "host/start/HostSession.h"
#include "host/windows/MainWindow.h"
#include "platform/sqlite/Connection.h"

#include <QAction>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QTimer>

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include <csignal>
#include <sys/stat.h>
#include <sys/wait.h>

namespace {

using contract::Statement;
using platform::sqlite::Connection;

std::int64_t number(const std::string& file, contract::Fragment text) {
    Connection connection("embedded:" + file);
    connection.Open();
    contract::Snapshot rows;
    connection.Read(Statement(text), rows);
    return rows.column(0).integer(0).value_or(-1);
}

std::string refusal(const std::string& database, const std::string& destination) {
    try {
        host::backUp(database, destination);
    } catch (const contract::RuntimeError& error) {
        return error.description();
    }
    return {};
}

class BackupTest : public testing::Test {
protected:
    BackupTest() { host::createDatabase("embedded:" + file, host_test::component().schema(), 3000); }

    host_test::Folder folder;
    const std::string file = folder.file("prova.sqlite");
    const std::string copy = folder.file("copia.sqlite");
};

TEST_F(BackupTest, HoldsRowsAndStatesAndTellsItsSize) {
    int last = -1;
    EXPECT_EQ(std::filesystem::file_size(file), host::backUp(file, copy, [&](int percent) {
                  EXPECT_GE(percent, last);
                  last = percent;
              }));
    EXPECT_EQ(100, last);
    for (const contract::Fragment text : {contract::Fragment("SELECT Count(*) FROM QZ02_DISTINTA"),
                                          contract::Fragment("SELECT Count(*) FROM STATI_LEGAME"),
                                          contract::Fragment("SELECT Count(*) FROM STATI_STORIA")}) {
        EXPECT_GT(number(copy, text), 0);
        EXPECT_EQ(number(file, text), number(copy, text));
    }
    EXPECT_EQ(std::filesystem::perms(0600), std::filesystem::status(copy).permissions());
    EXPECT_EQ(2U, folder.entries());
}

TEST_F(BackupTest, ReplacesAnEarlierCopyOnceItIsWhole) {
    host_test::write(copy, "una copia vecchia");
    EXPECT_GT(host::backUp(file, copy), 100000U);
    EXPECT_GT(number(copy, "SELECT Count(*) FROM QZ02_DISTINTA"), 0);
    EXPECT_EQ(2U, folder.entries());
}

TEST_F(BackupTest, NeverWritesOnTheDatabaseOrItsFiles) {
    const std::string before = host_test::contentOf(file);
    std::filesystem::create_symlink(file, folder.file("altro-nome"));
    std::filesystem::create_hard_link(file, folder.file("stesso-file"));
    for (const std::string& name : {file, file + "-journal", file + ".stati", folder.file("altro-nome"),
                                    folder.file("stesso-file"), folder.path().string() + "/./prova.sqlite"})
        EXPECT_NE(std::string::npos, refusal(file, name).find("scegliere un altro nome")) << name;
    EXPECT_NE(std::string::npos, refusal(file, folder.path().string()).find("è una cartella"));
    EXPECT_NE(std::string::npos, refusal(file, folder.file("manca/copia.sqlite")).find("non si può creare"));
    EXPECT_EQ(before, host_test::contentOf(file));
}

TEST_F(BackupTest, IsNotWrittenBesideAJournalThatWouldBePlayedIntoIt) {
    host_test::write(copy + "-journal", "x");
    EXPECT_NE(std::string::npos, refusal(file, copy).find("copia.sqlite-journal"));
    EXPECT_FALSE(std::filesystem::exists(copy));
    EXPECT_EQ("x", host_test::contentOf(copy + "-journal"));
}

TEST_F(BackupTest, IsNotWrittenOnWhatIsNoFileNorWhereNobodyMayLook) {
    ASSERT_EQ(0, ::mkfifo(copy.c_str(), 0600));
    EXPECT_NE(std::string::npos, refusal(file, copy).find("non è un file"));
    EXPECT_TRUE(std::filesystem::is_fifo(copy));
    // Such a name can not even be asked about.
    EXPECT_NE(std::string::npos, refusal(file, folder.file(std::string(300, 'a'))).find("non si può scrivere"));
}

TEST_F(BackupTest, IsOfOneMomentWhileAnotherWrites) {
    // Two tables that every transaction changes together, far apart in the file: more than one part of the copy.
    {
        Connection connection("embedded:" + file);
        connection.Open();
        connection.runNative(
            "CREATE TABLE A (N INTEGER); INSERT INTO A VALUES (0); CREATE TABLE B (X BLOB); INSERT INTO "
            "B VALUES (zeroblob(20000000)); CREATE TABLE Z (N INTEGER); INSERT INTO Z VALUES (0)");
    }
    const pid_t writer = ::fork();
    if (writer == 0) {
        Connection connection("embedded:" + file);
        connection.Open();
        for (;;) {
            connection.runNative("BEGIN IMMEDIATE; UPDATE A SET N = N + 1; UPDATE Z SET N = N + 1; COMMIT");
            std::this_thread::sleep_for(std::chrono::milliseconds(3));
        }
    }
    while (number(file, "SELECT N FROM A") == 0)
        std::this_thread::yield();
    std::int64_t last = -1;
    for (int times = 0; times < 2; ++times) {
        host::backUp(file, copy);
        const auto n = number(copy, "SELECT N FROM A");
        EXPECT_EQ(n, number(copy, "SELECT N FROM Z"));
        EXPECT_GE(n, last);
        last = n;
        Connection connection("embedded:" + copy);
        connection.Open();
        EXPECT_NO_THROW(platform::sqlite::checkDatabase(connection, host::withStates(host_test::component().schema())));
    }
    ::kill(writer, SIGKILL);
    ::waitpid(writer, nullptr, 0);
    EXPECT_GT(last, 0);
    EXPECT_LE(last, number(file, "SELECT N FROM A"));
}

TEST_F(BackupTest, TakesAlongStatesThatStillStandBesideTheDatabase) {
    const std::string old = folder.file("vecchio.sqlite");
    platform::sqlite::createDatabase(old, host_test::component().schema());
    platform::sqlite::createDatabase(old + ".stati", host::stateSchema());
    host::StateStore(old + ".stati").setState("11111111-1111-4111-8111-111111111111", 7, "ROSSI");
    host::backUp(old, copy);
    EXPECT_EQ(1, number(copy, "SELECT Count(*) FROM STATI_LEGAME"));
    EXPECT_TRUE(std::filesystem::exists(old + ".stati")) << "and the database is as it was";
    EXPECT_FALSE(std::filesystem::exists(copy + ".stati"));
    EXPECT_EQ(4U, folder.entries());
}

TEST_F(BackupTest, TheMenuAsksWhereAndSaysWhereAndHowLarge) {
    host_test::needApplication();
    host::SessionSettings settings;
    settings.connectionString = "embedded:" + file;
    settings.logFile = QString::fromStdString(folder.file("errori.log"));
    settings.scripted = true;
    host::MainWindow window(nullptr);
    host::HostSession session(settings, host_test::component(), window.area(), &window);
    session.openDatabase();
    window.attach(session);
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QString said;
    QTimer answers;
    QObject::connect(&answers, &QTimer::timeout, [&] {
        auto* modal = QApplication::activeModalWidget();
        if (auto* box = qobject_cast<QMessageBox*>(modal)) {
            said = box->text();
            box->accept();
        } else if (auto* dialog = qobject_cast<QFileDialog*>(modal)) {
            dialog->findChild<QLineEdit*>()->setText(QString::fromStdString(copy));
            QMetaObject::invokeMethod(dialog, "accept");
        }
    });
    answers.start(50);
    auto* action = window.findChild<QAction*>("mnuCopiaSicurezza");
    ASSERT_NE(nullptr, action);
    action->trigger();
    EXPECT_TRUE(said.startsWith(
        QStringLiteral("Copia di sicurezza fatta, con gli stati dei legami: «%1», ").arg(QString::fromStdString(copy))))
        << said.toStdString();
    EXPECT_TRUE(said.endsWith(QStringLiteral("B."))) << said.toStdString();
    EXPECT_GT(number(copy, "SELECT Count(*) FROM STATI_LEGAME"), 0);
}

} // namespace
