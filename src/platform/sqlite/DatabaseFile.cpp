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

} // namespace

void createDatabase(const std::string& path, const contract::Schema& schema,
                    const std::function<void(Connection&)>& fill) {
    NewFile file(path);
    Connection connection(connectionStringOf(path));
    connection.Open();
    contract::Transaction transaction(connection);
    for (const auto& table : schema.tables)
        if (connection.catalog().columns(table.name))
            refuse(path, "contiene già la tabella " + std::string(table.name));
    for (const auto& text : dialect::createStatements(schema, dialect::Engine::sqlite))
        connection.runNative(text);
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
        const auto* columns = connection.catalog().columns(table.name);
        if (!columns)
            refuse(connection.file(), "non contiene la tabella " + std::string(table.name));
        for (const auto& column : table.columns)
            if (std::none_of(columns->begin(), columns->end(),
                             [&](const auto& have) { return dialect::sameName(have.name, column.name); }))
                refuse(connection.file(), "non contiene la colonna " + std::string(column.name) + " della tabella " +
                                              std::string(table.name));
    }
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
