#pragma once

#include "contract/Recordset.h"
#include "contract/RuntimeError.h"
#include "contract_suites/Sql.h"
#include "contract_suites/SuiteSchema.h"
#include "platform/odbc/Connection.h"
#include "platform/odbc/DatabaseTables.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>

#include <stdlib.h>

namespace odbc_test {

using contract_suites::operator""_sql;
using platform::odbc::Connection;

/// A folder of its own for the files of one test, removed with the object.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "distinte-odbc-XXXXXX").string();
        EXPECT_NE(nullptr, ::mkdtemp(name.data()));
        path_ = name;
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    std::string file(const std::string& name) const { return (path_ / name).string(); }

private:
    std::filesystem::path path_;
};

/// Debian's SQLite driver, by the library's own path: it needs no registration. Nothing where it is not installed.
inline std::optional<std::string> sqliteDriver() {
    std::error_code ignored;
    for (const auto& folder : std::filesystem::directory_iterator("/usr/lib", ignored)) {
        const auto library = folder.path() / "odbc" / "libsqlite3odbc.so";
        if (std::filesystem::exists(library, ignored))
            return library.string();
    }
    return std::nullopt;
}

inline std::string sqliteString(const std::string& driver, const std::string& file) {
    // The driver waits for another connection's lock that many milliseconds.
    return "Driver=" + driver + ";Database=" + file + ";Timeout=2000";
}

/// The connection string of a server to test on, if there is one.
inline std::optional<std::string> serverString() {
    const char* text = std::getenv("DISTINTE_TEST_ODBC");
    return text != nullptr && text[0] != '\0' ? std::optional<std::string>(text) : std::nullopt;
}

/// Drops the tables of a schema where they are there.
inline void dropTables(Connection& connection, const contract::Schema& schema) {
    for (const auto& table : schema.tables)
        if (platform::odbc::columnsOf(connection, table.name))
            connection.runNative("DROP TABLE " + std::string(table.name));
}

/// An open connection over the SQLite driver to a new database with the tables of the contract suite.
class SqliteOdbcTest : public testing::Test {
protected:
    void SetUp() override {
        const auto driver = sqliteDriver();
        if (!driver)
            GTEST_SKIP() << "libsqliteodbc is not installed";
        connection.SetConnectionString(sqliteString(*driver, folder.file("prova.db")));
        connection.Open();
        platform::odbc::createTables(connection, contract_suites::suiteSchema());
    }

    contract::Snapshot read(const contract::Statement& statement) {
        contract::Snapshot rows;
        connection.Read(statement, rows);
        return rows;
    }

    TemporaryFolder folder;
    Connection connection;
};

/// The description of the RuntimeError that a step throws; fails the test when there is none.
template <class Step> std::string failureOf(Step step, int number = contract::RuntimeError::database) {
    try {
        step();
    } catch (const contract::RuntimeError& error) {
        EXPECT_EQ(error.number(), number) << error.description();
        return error.description();
    }
    ADD_FAILURE() << "no error";
    return {};
}

inline bool has(const std::string& text, std::string_view part) {
    return text.find(part) != std::string::npos;
}

} // namespace odbc_test
