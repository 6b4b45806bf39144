#include "host/database/DatabaseSetup.h"

#include "TestFolder.h"
#include "TestSchema.h"
#include "contract/Snapshot.h"
#include "host/database/DatabaseAccess.h"
#include "host/database/StateStore.h"
#include "host/database/StateTables.h"
#include "host/demo/DemoModel.h"
#include "host/start/StartFailure.h"
#include "host/start/UserFolders.h"
#include "platform/sqlite/Connection.h"
#include "platform/sqlite/DatabaseFile.h"

#include <gtest/gtest.h>

#include <chrono>

namespace {

using host::CommandLine;
using host::ExitStatus;
using host::StartFailure;
using host_test::Environment;
using host_test::Folder;

const contract::Schema& schema() {
    return host_test::component().schema();
}

template <class Action> std::pair<ExitStatus, std::string> failureOf(Action action) {
    try {
        action();
    } catch (const StartFailure& failure) {
        return {failure.status(), failure.what()};
    }
    return {ExitStatus::success, ""};
}

std::int64_t firstNumber(const std::string& file, contract::Fragment text) {
    platform::sqlite::Connection connection("embedded:" + file);
    connection.Open();
    contract::Snapshot rows;
    connection.Read(contract::Statement(text), rows);
    return rows.column(0).integer(0).value_or(-1);
}

class DatabaseSetup : public testing::Test {
protected:
    Folder folder;
    const std::string file = folder.file("prova.sqlite");
};

TEST_F(DatabaseSetup, MakesTheTablesInAFileThatIsNotThere) {
    host::createDatabase(host::embeddedDatabase(file), schema(), std::nullopt);
    EXPECT_NO_THROW(platform::sqlite::checkDatabase(file, host::withStates(schema())));
    EXPECT_EQ(0, firstNumber(file, "SELECT COUNT(*) FROM QZ02_DISTINTA"));
    EXPECT_EQ(1U, folder.entries());
}

TEST_F(DatabaseSetup, MakesTheTablesInAnEmptyFile) {
    host_test::write(file, "");
    host::createDatabase(host::embeddedDatabase(file), schema(), std::nullopt);
    EXPECT_NO_THROW(platform::sqlite::checkDatabase(file, schema()));
}

TEST_F(DatabaseSetup, RefusesTablesThatExistAndLeavesThemAlone) {
    host::createDatabase(host::embeddedDatabase(file), schema(), 20);
    const std::string before = host_test::contentOf(file);
    for (const auto demo : {std::optional<std::int64_t>(), std::optional<std::int64_t>(5)}) {
        const auto [status, reason] =
            failureOf([&] { host::createDatabase(host::embeddedDatabase(file), schema(), demo); });
        EXPECT_EQ(ExitStatus::refused, status);
        EXPECT_NE(std::string::npos, reason.find(file));
        EXPECT_EQ(before, host_test::contentOf(file));
    }
}

TEST_F(DatabaseSetup, RefusesAFileThatIsNoDatabase) {
    host_test::write(file, std::string(5000, 'x'));
    const auto [status, reason] =
        failureOf([&] { host::createDatabase(host::embeddedDatabase(file), schema(), std::nullopt); });
    EXPECT_EQ(ExitStatus::database, status);
    EXPECT_NE(std::string::npos, reason.find(file));
    EXPECT_EQ(std::string(5000, 'x'), host_test::contentOf(file));
}

TEST_F(DatabaseSetup, RefusesAFolderThatIsNotThere) {
    const std::string lost = folder.file("manca/prova.sqlite");
    const auto [status, reason] = failureOf([&] { host::createDatabase(host::embeddedDatabase(lost), schema(), 10); });
    EXPECT_EQ(ExitStatus::database, status);
    EXPECT_NE(std::string::npos, reason.find(lost));
    EXPECT_EQ(0U, folder.entries());
}

TEST_F(DatabaseSetup, RefusesAFolderInThePlaceOfTheFile) {
    EXPECT_EQ(
        ExitStatus::database,
        failureOf([&] { host::createDatabase(host::embeddedDatabase(folder.path().string()), schema(), 10); }).first);
    EXPECT_EQ(0U, folder.entries());
}

TEST_F(DatabaseSetup, WritesTheDemoDataAsTheyWereMade) {
    host::createDatabase(host::embeddedDatabase(file), schema(), 300);
    const auto data = host::makeDemoData(300);
    EXPECT_EQ(static_cast<std::int64_t>(data.nodes.size()), firstNumber(file, "SELECT COUNT(*) FROM QZ02_DISTINTA"));
    EXPECT_EQ(static_cast<std::int64_t>(data.types.size()),
              firstNumber(file, "SELECT COUNT(*) FROM QZ01_TIPODISTINTA"));
    EXPECT_EQ(static_cast<std::int64_t>(data.accounts.size()), firstNumber(file, "SELECT COUNT(*) FROM CG44_CLIFOR"));
    EXPECT_EQ(1, firstNumber(file, "SELECT COUNT(*) FROM QZ03_PARAMETRI"));
    EXPECT_EQ(1, firstNumber(file, "SELECT QZ03_DITTA_CG18 FROM QZ03_PARAMETRI"));
    EXPECT_GT(firstNumber(file, "SELECT COUNT(*) FROM VCO1C_CLIFOR"), 0);
    host::StateStore states(file);
    for (const auto& node : data.nodes)
        EXPECT_EQ(node.state, states.state(node.guid).value_or(0)) << node.guid;
    EXPECT_EQ(1U, folder.entries());
}

TEST_F(DatabaseSetup, GivesTheSameDatabaseEveryTime) {
    const std::string other = folder.file("altra.sqlite");
    host::createDatabase(host::embeddedDatabase(file), schema(), 100);
    host::createDatabase(host::embeddedDatabase(other), schema(), 100);
    EXPECT_EQ(host_test::contentOf(file), host_test::contentOf(other));
}

TEST_F(DatabaseSetup, MakesTheDefaultDatabaseOnce) {
    schema(); // the component registers itself when it is loaded, and not into this test's folder
    const Environment data("XDG_DATA_HOME", folder.path().c_str());
    const std::string path = host::prepareDefaultDatabase(schema());
    EXPECT_EQ(folder.file("distinte/demo.sqlite"), path);
    EXPECT_NO_THROW(platform::sqlite::checkDatabase(path, schema()));
    const auto written = std::filesystem::last_write_time(path);
    EXPECT_EQ(path, host::prepareDefaultDatabase(schema()));
    EXPECT_EQ(written, std::filesystem::last_write_time(path));
    EXPECT_EQ(1, std::distance(std::filesystem::directory_iterator(folder.file("distinte")),
                               std::filesystem::directory_iterator()));
}

TEST_F(DatabaseSetup, SaysWhyTheDefaultDatabaseCanNotBeMade) {
    host_test::write(folder.file("distinte"), "a file where the folder should be");
    const Environment data("XDG_DATA_HOME", folder.path().c_str());
    const auto [status, reason] = failureOf([] { host::prepareDefaultDatabase(schema()); });
    EXPECT_EQ(ExitStatus::database, status);
    EXPECT_NE(std::string::npos, reason.find(folder.file("distinte")));
}

TEST(WantedDatabase, TakesTheOrderOfTheOptions) {
    CommandLine line;
    {
        const Environment none("DISTINTE_ODBC", nullptr);
        EXPECT_FALSE(host::wantedDatabase(line, std::nullopt).has_value());
        EXPECT_EQ("embedded:salvato", host::wantedDatabase(line, "embedded:salvato"));
    }
    const Environment odbc("DISTINTE_ODBC", "DSN=ambiente");
    EXPECT_EQ("DSN=ambiente", host::wantedDatabase(line, "embedded:salvato"));
    line.odbc = "DSN=riga";
    EXPECT_EQ("DSN=riga", host::wantedDatabase(line, "embedded:salvato"));
    line.odbc.reset();
    line.database = "chiesto";
    EXPECT_EQ("embedded:chiesto", host::wantedDatabase(line, "embedded:salvato"));
}

} // namespace
