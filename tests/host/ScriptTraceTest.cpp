// What a script is told of statements and calls that nobody read in time.

#include "TestSession.h"
#include "host/database/DatabaseAccess.h"
#include "host/database/RecentItems.h"
#include "host/script/ScriptCommands.h"
#include "host/script/ScriptRequest.h"
#include "host/start/HostSession.h"
#include "host/windows/MainWindow.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace {

class ScriptTrace : public testing::Test {
protected:
    ScriptTrace() {
        host::createDatabase(host::embeddedDatabase(file), host_test::component().schema(), 40);
        settings.connectionString = host::embeddedDatabase(file);
        settings.scripted = true;
        settings.logFile = QString::fromStdString(folder.file("errori.log"));
        session = std::make_unique<host::HostSession>(settings, host_test::component(), window.area(), &window);
        session->openDatabase();
        session->trace().setRecording(true);
        session->journal().setRecording(true);
    }

    QJsonObject reply(const char* line) {
        QJsonObject members;
        host::ScriptCommands(*session, &window).run(host::ScriptRequest::parse(line), members);
        return members;
    }

    struct Application {
        Application() { host_test::needApplication(); }
    } application; // before the window
    host_test::Folder folder;
    std::string file = folder.file("prova.sqlite");
    host::SessionSettings settings;
    host::MainWindow window{nullptr};
    std::unique_ptr<host::HostSession> session;
};

TEST_F(ScriptTrace, SaysHowManyStatementsAreMissing) {
    for (std::size_t i = 0; i < host::RecentItems<int>::most + 7; ++i)
        session->trace().add("BeginTrans");
    auto told = reply(R"({"do":"trace"})");
    EXPECT_EQ(100'000, told.value("statements").toArray().size());
    EXPECT_EQ(7, told.value("missing").toInt());
    session->trace().add("CommitTrans");
    told = reply(R"({"do":"trace"})");
    EXPECT_EQ(1, told.value("statements").toArray().size());
    EXPECT_FALSE(told.contains("missing"));
}

TEST_F(ScriptTrace, SaysHowManyCallsAreMissing) {
    for (std::size_t i = 0; i < host::RecentItems<int>::most + 1; ++i)
        session->journal().record(QStringLiteral("S"), QStringLiteral("O"));
    auto told = reply(R"({"do":"services"})");
    EXPECT_EQ(100'000, told.value("calls").toArray().size());
    EXPECT_EQ(1, told.value("missing").toInt());
    told = reply(R"({"do":"services"})");
    EXPECT_TRUE(told.value("calls").toArray().isEmpty());
    EXPECT_FALSE(told.contains("missing"));
}

} // namespace
