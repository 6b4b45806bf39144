#include "host/DatabaseSetup.h"

#include "host/DemoDatabase.h"
#include "host/StartFailure.h"
#include "host/StateStore.h"
#include "host/UserFolders.h"
#include "platform/sqlite/Connection.h"
#include "platform/sqlite/DatabaseFile.h"
#include "plugin/contract/RuntimeError.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>

#include <unistd.h>

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

} // namespace

std::optional<std::string> wantedDatabase(const CommandLine& line, const std::optional<std::string>& saved) {
    constexpr auto noAdapter = ": questa versione non ha l'adattatore ODBC; indicare un database incorporato con "
                               "--database";
    if (line.database)
        return line.database;
    if (line.odbc)
        fail(std::string("connessione ODBC dell'opzione --odbc") + noAdapter); // not the string: it may hold a password
    if (const char* odbc = std::getenv("DISTINTE_ODBC"); odbc != nullptr && odbc[0] != '\0')
        fail(std::string("connessione ODBC della variabile DISTINTE_ODBC") + noAdapter);
    return saved;
}

std::string prepareDefaultDatabase(const contract::Schema& schema) {
    const fs::path path = defaultDatabase();
    std::error_code error;
    if (fs::exists(path, error))
        return path.string();
    fs::create_directories(path.parent_path(), error);
    if (error)
        fail("la cartella \"" + path.parent_path().string() + "\" non si può creare: " + error.message());
    const std::string making = path.string() + ".nuovo" + std::to_string(::getpid());
    const auto discard = [&] {
        std::error_code ignored;
        for (const std::string& file : {making, making + "-journal", StateStore::fileOf(making)})
            fs::remove(file, ignored);
    };
    try {
        createDatabaseFile(making, schema, CommandLine::defaultDemoSize);
    } catch (const StartFailure&) {
        discard();
        throw;
    }
    // The states first: a database that stands is complete.
    fs::rename(StateStore::fileOf(making), StateStore::fileOf(path.string()), error);
    if (!error)
        fs::rename(making, path, error);
    if (error) {
        discard();
        fail("il database \"" + path.string() + "\" non si può creare: " + error.message());
    }
    return path.string();
}

void createDatabaseFile(const std::string& path, const contract::Schema& schema, std::optional<std::int64_t> demoSize) {
    try {
        refuseExistingTables(path, schema);
        if (demoSize)
            createDemoDatabase(path, schema, *demoSize);
        else
            platform::sqlite::createDatabase(path, schema);
    } catch (const contract::RuntimeError& error) {
        fail(error.description());
    }
}

} // namespace host
