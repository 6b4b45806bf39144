#pragma once

#include "contract/Recordset.h"
#include "contract/RuntimeError.h"
#include "contract_suites/Sql.h"
#include "contract_suites/SuiteSchema.h"
#include "platform/sqlite/Connection.h"
#include "platform/sqlite/DatabaseFile.h"

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <string>

#include <unistd.h>

namespace sqlite_test {

using contract_suites::operator""_sql;
using platform::sqlite::Connection;

/// A folder of its own for the files of one test, removed with the object.
class TemporaryFolder {
public:
    TemporaryFolder() {
        static std::atomic<int> count = 0;
        path_ = std::filesystem::temp_directory_path() /
                ("distinte-" + std::to_string(::getpid()) + "-" + std::to_string(++count));
        std::filesystem::create_directories(path_);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    std::string file(const std::string& name) const { return (path_ / name).string(); }
    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

inline std::string connectionStringOf(const std::string& file, const std::string& options = {}) {
    return "embedded:" + file + options;
}

/// A database file with the tables of the contract suite, and an open connection to it.
class SqliteTest : public testing::Test {
protected:
    SqliteTest() {
        platform::sqlite::createDatabase(file(), contract_suites::suiteSchema());
        connection.SetConnectionString(connectionStringOf(file()));
        connection.Open();
    }

    std::string file() const { return folder.file("prova.db"); }

    std::int64_t count(contract::Connection& over) {
        contract::Recordset rows;
        rows.Open("SELECT Count(*) AS Conta FROM PROVA"_sql, over);
        return rows["Conta"].integer().value_or(-1);
    }
    void insert(contract::Connection& over, std::int64_t code) {
        contract::Statement statement;
        statement << "INSERT INTO PROVA (CODICE, NOME) VALUES (";
        statement.number(code) << ", 'nome')";
        over.Execute(statement);
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

} // namespace sqlite_test
