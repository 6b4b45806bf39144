#include "host/database/DatabaseAccess.h"

#include "contract/RuntimeError.h"
#include "host/database/StateTables.h"
#include "platform/odbc/Connection.h"
#include "platform/odbc/DataSource.h"
#include "platform/odbc/DatabaseTables.h"
#include "platform/sqlite/Connection.h"
#include "platform/sqlite/DatabaseFile.h"

#include <algorithm>
#include <filesystem>

#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace host {

namespace {

constexpr std::string_view scheme = platform::sqlite::Connection::scheme;

} // namespace

std::string embeddedDatabase(std::string_view path) {
    return std::string(scheme) + std::string(path);
}

bool isEmbedded(std::string_view connectionString) {
    return connectionString.substr(0, scheme.size()) == scheme;
}

std::string embeddedPath(std::string_view connectionString) {
    return isEmbedded(connectionString) ? std::string(connectionString.substr(scheme.size())) : std::string();
}

std::string fileOf(const contract::Connection& connection) {
    if (const auto* embedded = dynamic_cast<const platform::sqlite::Connection*>(&connection))
        return embedded->file();
    const auto* server = dynamic_cast<const platform::odbc::Connection*>(&connection);
    return server != nullptr && server->engine() == platform::odbc::Engine::sqlite ? server->databaseName()
                                                                                   : std::string();
}

std::string databaseLabel(std::string_view connectionString) {
    if (isEmbedded(connectionString))
        return std::filesystem::path(embeddedPath(connectionString)).filename().string();
    return platform::odbc::labelOf(platform::odbc::ConnectionString(connectionString));
}

QString placeOf(std::string_view connectionString) {
    if (!isEmbedded(connectionString))
        return QString::fromStdString(databaseLabel(connectionString));
    std::error_code error;
    const auto whole = std::filesystem::absolute(embeddedPath(connectionString), error);
    return QString::fromStdString(error ? embeddedPath(connectionString) : whole.lexically_normal().string());
}

std::string withoutSecrets(std::string_view connectionString) {
    if (isEmbedded(connectionString))
        return std::string(connectionString);
    platform::odbc::ConnectionString string(connectionString);
    string.removeSecrets();
    return string.text();
}

bool wantsPassword(std::string_view connectionString) {
    if (isEmbedded(connectionString))
        return false;
    const platform::odbc::ConnectionString string(connectionString);
    const bool user = !string.value("UID").value_or(string.value("User ID").value_or("")).empty();
    return user && string.passwords().empty();
}

std::string passwordHint(std::string_view connectionString) {
    return wantsPassword(connectionString) ? " La stringa di connessione nomina un utente e nessuna password; se ne "
                                             "serve una, si dà con la variabile DISTINTE_ODBC_PASSWORD."
                                           : "";
}

std::string withPassword(std::string_view connectionString, std::string_view password) {
    platform::odbc::ConnectionString string(connectionString);
    string.set("PWD", password);
    return string.text();
}

std::unique_ptr<contract::Connection> newConnection(std::string_view connectionString) {
    if (isEmbedded(connectionString))
        return std::make_unique<platform::sqlite::Connection>(connectionString);
    return std::make_unique<platform::odbc::Connection>(connectionString);
}

void readAgainWhenLost(contract::Connection& connection, const contract::Statement& statement,
                       contract::Snapshot& rows) {
    try {
        connection.Read(statement, rows);
    } catch (const contract::RuntimeError&) {
        const auto records = connection.Errors();
        const auto has = [&records](contract::ErrorCategory category) {
            return std::any_of(records.begin(), records.end(),
                               [category](const auto& record) { return record.category == category; });
        };
        // With a time-out the connection goes too, but who asks again only waits again.
        const bool lost = has(contract::ErrorCategory::lostConnection) && !has(contract::ErrorCategory::timeout);
        if (!lost || connection.InTransaction())
            throw;
        connection.Read(statement, rows);
    }
}

void checkTables(contract::Connection& connection, const contract::Schema& schema) {
    if (auto* embedded = dynamic_cast<platform::sqlite::Connection*>(&connection))
        platform::sqlite::checkDatabase(*embedded, schema);
    else if (auto* server = dynamic_cast<platform::odbc::Connection*>(&connection))
        platform::odbc::checkDatabase(*server, schema);
}

contract::Schema optionalTables(const contract::Schema& schema) {
    contract::Schema optional;
    for (const auto& table : schema.tables)
        if (table.isOptional)
            optional.tables.push_back(table);
    return optional;
}

bool hasTables(contract::Connection& connection, const contract::Schema& schema) {
    if (auto* embedded = dynamic_cast<platform::sqlite::Connection*>(&connection))
        return platform::sqlite::missingTables(*embedded, schema).tables.empty();
    auto* server = dynamic_cast<platform::odbc::Connection*>(&connection);
    return server != nullptr && platform::odbc::missingTables(*server, schema).tables.empty();
}

void addTables(contract::Connection& connection, const contract::Schema& schema) {
    if (auto* embedded = dynamic_cast<platform::sqlite::Connection*>(&connection))
        platform::sqlite::addTables(*embedded, platform::sqlite::missingTables(*embedded, schema));
    else if (auto* server = dynamic_cast<platform::odbc::Connection*>(&connection))
        platform::odbc::createTables(*server, platform::odbc::missingTables(*server, schema));
}

std::string embeddedEngineVersion() {
    return platform::sqlite::engineVersion();
}

std::string whyNotWritable(contract::Connection& connection) {
    if (const auto* embedded = dynamic_cast<platform::sqlite::Connection*>(&connection)) {
        if (embedded->isReadOnly())
            return "il file è di sola lettura";
        // The journal of a transaction is made beside the file.
        std::error_code error;
        const auto folder = std::filesystem::absolute(embedded->file(), error).parent_path();
        return ::faccessat(AT_FDCWD, folder.c_str(), W_OK, AT_EACCESS) != 0 ? "nella cartella non si può scrivere" : "";
    }
    const auto* server = dynamic_cast<platform::odbc::Connection*>(&connection);
    if (server == nullptr || server->engine() != platform::odbc::Engine::server)
        return {};
    constexpr contract::Fragment question("SELECT DATABASEPROPERTYEX(DB_NAME(),'Updateability') AS Stato");
    try {
        contract::Snapshot rows;
        readAgainWhenLost(connection, contract::Statement(question), rows);
        if (rows.rowCount() == 1 && rows.column(0).text(0) == "READ_ONLY")
            return "sul server è di sola lettura";
    } catch (const contract::RuntimeError&) {
        // A server that does not tell is asked by the first change.
    }
    return {};
}

std::string transportWarning(std::string_view connectionString) {
    if (isEmbedded(connectionString))
        return {};
    const auto target = platform::odbc::targetOf(platform::odbc::ConnectionString(connectionString));
    if (platform::odbc::protectionOf(target) != platform::odbc::Protection::plain)
        return {};
    return "Il collegamento con " + databaseLabel(connectionString) +
           " non è cifrato: chi sta sulla rete può leggere i dati. Si cifra da «Strumenti › Connessione…».";
}

std::unique_ptr<StateStore> openStates(std::string_view connectionString, contract::Connection& connection,
                                       std::function<void(std::function<void()>)> later,
                                       StateStore::UnderWay underWay) {
    const std::string path = fileOf(connection);
    if (path.empty())
        return std::make_unique<StateStore>(std::make_unique<platform::odbc::Connection>(connectionString));
    openStateCompanion(path); // one that can not be read is better said now than when a state is looked for
    auto states = std::make_unique<StateStore>(path, std::move(later), std::move(underWay));
    try {
        states->prepare();
    } catch (const contract::RuntimeError&) {
        // Another program is at work, or nothing may be written: it is tried again, and said, before the first write.
    }
    return states;
}

} // namespace host
