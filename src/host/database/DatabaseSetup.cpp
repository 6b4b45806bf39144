#include "host/database/DatabaseSetup.h"

#include "contract/RuntimeError.h"
#include "host/database/DatabaseAccess.h"
#include "host/database/NewFile.h"
#include "host/database/StateTables.h"
#include "host/demo/DemoDatabase.h"
#include "host/start/StartFailure.h"
#include "host/start/UserFolders.h"
#include "platform/odbc/Connection.h"
#include "platform/odbc/DatabaseTables.h"
#include "platform/shared/SystemReason.h"
#include "platform/sqlite/Connection.h"
#include "platform/sqlite/DatabaseFile.h"
#include "platform/sqlite/FilePlace.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace host {

namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(const std::string& reason) {
    throw StartFailure(ExitStatus::database, reason);
}

void refuseExistingTables(const std::string& path, const contract::Schema& schema) {
    std::error_code error;
    if (!fs::exists(path, error) || (fs::is_regular_file(path, error) && fs::file_size(path, error) == 0))
        return;
    platform::sqlite::Connection connection(std::string(platform::sqlite::Connection::scheme) + path);
    connection.Open();
    for (const auto& table : schema.tables)
        if (connection.catalog().columns(table.name))
            throw StartFailure(ExitStatus::refused,
                               "il database \"" + path + "\" contiene già la tabella " + std::string(table.name));
}

void createInFile(const std::string& path, const contract::Schema& schema, std::optional<std::int64_t> demoSize) {
    const contract::Schema all = withStates(schema);
    refuseExistingTables(path, all);
    if (demoSize)
        createDemoDatabase(path, schema, *demoSize);
    else
        platform::sqlite::createDatabase(path, all);
    leaveStateCompanion(path);
}

void createOnServer(const std::string& connectionString, const contract::Schema& schema,
                    std::optional<std::int64_t> demoSize) {
    platform::odbc::Connection connection(connectionString);
    connection.Open();
    const contract::Schema all = withStates(schema);
    if (const auto table = platform::odbc::existingTable(connection, all))
        throw StartFailure(ExitStatus::refused,
                           "il database \"" + connection.name() + "\" contiene già la tabella " + *table);
    if (demoSize)
        createDemoDatabase(connection, schema, *demoSize);
    else
        platform::odbc::createTables(connection, all);
}

} // namespace

std::optional<std::string> wantedDatabase(const CommandLine& line, const std::optional<std::string>& saved) {
    if (line.database)
        return embeddedDatabase(*line.database);
    if (line.odbc)
        return line.odbc;
    if (const char* odbc = std::getenv("DISTINTE_ODBC"); odbc != nullptr && odbc[0] != '\0')
        return odbc;
    return saved;
}

std::string prepareDefaultDatabase(const contract::Schema& schema) {
    const fs::path path = defaultDatabase();
    std::error_code error;
    if (fs::exists(path, error))
        return path.string();
    fs::create_directories(path.parent_path(), error);
    if (error)
        fail("la cartella \"" + path.parent_path().string() +
             "\" non si può creare: " + platform::systemReason(error.value()));
    // Looked for again after it: the journal of a program that has started meanwhile has its database.
    if (const auto why = platform::sqlite::strayJournal(path.string()); why && !fs::exists(path, error))
        fail("il database \"" + path.string() + "\" non si può creare: " + *why);
    removeLeftOvers(path);
    const fs::path making = makingName(path);
    const auto discard = [&] {
        std::error_code ignored;
        for (const std::string& file : {making.string(), making.string() + "-journal"})
            fs::remove(file, ignored);
    };
    try {
        createDatabase(embeddedDatabase(making.string()), schema, CommandLine::defaultDemoSize);
        leaveStateCompanion(path.string());
        // Who was quicker has made the same; it may have been worked on already.
        if (!nameWhereNone(making, path))
            discard();
    } catch (const StartFailure&) {
        discard();
        throw;
    } catch (const fs::filesystem_error& failure) {
        discard();
        fail("il database \"" + path.string() +
             "\" non si può creare: " + platform::systemReason(failure.code().value()));
    }
    return path.string();
}

void createDatabase(const std::string& connectionString, const contract::Schema& schema,
                    std::optional<std::int64_t> demoSize) {
    try {
        if (isEmbedded(connectionString))
            createInFile(embeddedPath(connectionString), schema, demoSize);
        else
            createOnServer(connectionString, schema, demoSize);
    } catch (const contract::RuntimeError& error) {
        fail(error.description());
    }
}

} // namespace host
