// ODBC connections keep the promises of every connection: over SQLite's driver, and on a server where
// DISTINTE_TEST_ODBC holds its connection string.

#include "contract_suites/ConnectionSuite.h"
#include "odbc/OdbcFixture.h"
#include "odbc/ServerLock.h"

namespace contract_suites {
namespace {

/// Fresh tables behind a connection string.
class OdbcDatabase : public TestDatabase {
public:
    explicit OdbcDatabase(std::string connectionString) : connectionString_(std::move(connectionString)) {
        platform::odbc::Connection connection(connectionString_);
        connection.Open();
        odbc_test::dropTables(connection, suiteSchema());
        platform::odbc::createTables(connection, suiteSchema());
    }
    ~OdbcDatabase() override {
        platform::odbc::Connection connection(connectionString_);
        connection.Open();
        odbc_test::dropTables(connection, suiteSchema());
    }

    std::unique_ptr<contract::Connection> connect() override {
        return std::make_unique<platform::odbc::Connection>(connectionString_);
    }

private:
    std::string connectionString_;
};

class OdbcFile : public TestDatabase {
public:
    explicit OdbcFile(const std::string& driver) : tables_(odbc_test::sqliteString(driver, folder_.file("suite.db"))) {}

    std::unique_ptr<contract::Connection> connect() override { return tables_.connect(); }

private:
    odbc_test::TemporaryFolder folder_;
    OdbcDatabase tables_;
};

std::unique_ptr<TestDatabase> makeFile() {
    const auto driver = odbc_test::sqliteDriver();
    return driver ? std::make_unique<OdbcFile>(*driver) : nullptr;
}

class OdbcServer : public TestDatabase {
public:
    explicit OdbcServer(const std::string& connectionString)
        : lock_(odbc_test::lockServer()), tables_(std::make_unique<OdbcDatabase>(connectionString)) {}
    ~OdbcServer() override {
        tables_.reset();
        odbc_test::unlockServer(lock_);
    }

    std::unique_ptr<contract::Connection> connect() override { return tables_->connect(); }

private:
    int lock_;
    std::unique_ptr<OdbcDatabase> tables_;
};

std::unique_ptr<TestDatabase> makeServer() {
    const auto text = odbc_test::serverString();
    return text ? std::make_unique<OdbcServer>(*text) : nullptr;
}

INSTANTIATE_TEST_SUITE_P(OdbcSqlite, ConnectionSuite, testing::Values(&makeFile), parameterName("File"));
INSTANTIATE_TEST_SUITE_P(OdbcServer, ConnectionSuite, testing::Values(&makeServer), parameterName("Server"));

} // namespace
} // namespace contract_suites
