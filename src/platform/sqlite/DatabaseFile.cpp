#include "platform/sqlite/DatabaseFile.h"

#include "contract/RuntimeError.h"
#include "platform/dialect/Ddl.h"
#include "platform/dialect/Token.h"
#include "platform/shared/SystemReason.h"
#include "platform/sqlite/Errors.h"
#include "platform/sqlite/FilePlace.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <sqlite3.h>
#include <unistd.h>

namespace platform::sqlite {

namespace {

using contract::RuntimeError;

std::string connectionStringOf(const std::string& path) {
    return std::string(Connection::scheme) + path;
}

[[noreturn]] void refuse(const std::string& path, const std::string& why) {
    throw RuntimeError(RuntimeError::database, "Il database «" + path + "» " + why + ".");
}

/// A new, empty file, which goes again unless it was kept.
class NewFile {
public:
    /// Makes nothing where there is a file already.
    explicit NewFile(std::string path) : path_(std::move(path)) {
        const int file = ::open(path_.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
        if (file < 0 && errno != EEXIST)
            refuse(path_, "non si può creare: " + platform::systemReason(errno));
        made_ = file >= 0;
        if (!made_)
            return;
        ::close(file);
        if (const auto why = strayJournal(path_)) {
            ::unlink(path_.c_str());
            refuse(path_, "non si può creare: " + *why);
        }
    }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;
    ~NewFile() {
        if (made_)
            ::unlink(path_.c_str());
    }
    void keep() { made_ = false; }

private:
    std::string path_;
    bool made_ = false;
};

void makeTables(Connection& connection, const contract::Schema& schema) {
    for (const auto& table : schema.tables)
        if (connection.catalog().columns(table.name))
            refuse(connection.file(), "contiene già la tabella " + std::string(table.name));
    for (const auto& text : dialect::createStatements(schema, dialect::Engine::sqlite))
        connection.runNative(text);
}

bool hasColumn(const dialect::Catalog::Columns& columns, std::string_view name) {
    return std::any_of(columns.begin(), columns.end(),
                       [&](const auto& have) { return dialect::sameName(have.name, name); });
}

bool hasColumns(const dialect::Catalog::Columns& columns, const contract::TableDef& table) {
    return std::all_of(table.columns.begin(), table.columns.end(),
                       [&](const auto& column) { return hasColumn(columns, column.name); });
}

} // namespace

void createDatabase(const std::string& path, const contract::Schema& schema,
                    const std::function<void(Connection&)>& fill) {
    NewFile file(path);
    Connection connection(connectionStringOf(path));
    connection.Open();
    contract::Transaction transaction(connection);
    makeTables(connection, schema);
    if (fill)
        fill(connection);
    transaction.commit();
    file.keep();
}

void checkDatabase(const std::string& path, const contract::Schema& schema) {
    Connection connection(connectionStringOf(path));
    connection.Open();
    checkDatabase(connection, schema);
}

void checkDatabase(Connection& connection, const contract::Schema& schema) {
    for (const auto& table : schema.tables) {
        if (table.isOptional)
            continue;
        const auto* columns = connection.catalog().columns(table.name);
        if (!columns)
            refuse(connection.file(), "non contiene la tabella " + std::string(table.name));
        for (const auto& column : table.columns)
            if (!hasColumn(*columns, column.name))
                refuse(connection.file(), "non contiene la colonna " + std::string(column.name) + " della tabella " +
                                              std::string(table.name));
    }
}

contract::Schema missingTables(Connection& connection, const contract::Schema& schema) {
    contract::Schema missing;
    for (const auto& table : schema.tables) {
        const auto* columns = connection.catalog().columns(table.name);
        if (columns == nullptr || !hasColumns(*columns, table))
            missing.tables.push_back(table);
    }
    return missing;
}

void addTables(Connection& connection, const contract::Schema& schema) {
    contract::Transaction transaction(connection);
    makeTables(connection, schema);
    transaction.commit();
}

void makeEmptyFile(const std::string& path) {
    const int file = ::open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (file < 0)
        refuse(path, "non si può creare: " + std::system_category().message(errno));
    ::close(file);
}

std::int32_t markOf(Connection& connection) {
    sqlite3_stmt* raw = nullptr;
    int code = sqlite3_prepare_v2(connection.handle(), "PRAGMA user_version", -1, &raw, nullptr);
    const StatementHandle statement(raw);
    if (code == SQLITE_OK)
        code = sqlite3_step(raw);
    if (code != SQLITE_ROW)
        connection.fail(code, "Lettura");
    return sqlite3_column_int(raw, 0);
}

void setMark(Connection& connection, std::int32_t mark) {
    connection.runNative("PRAGMA user_version = " + std::to_string(mark));
}

std::string engineVersion() {
    return sqlite3_libversion();
}

} // namespace platform::sqlite
