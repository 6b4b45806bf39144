// The embedded database keeps the promises of every connection.

#include "contract_suites/ConnectionSuite.h"
#include "sqlite/SqliteFixture.h"

namespace contract_suites {
namespace {

class EmbeddedDatabase : public TestDatabase {
public:
    EmbeddedDatabase() { platform::sqlite::createDatabase(file(), suiteSchema()); }

    std::unique_ptr<contract::Connection> connect() override {
        return std::make_unique<platform::sqlite::Connection>(sqlite_test::connectionStringOf(file()));
    }

private:
    std::string file() const { return folder_.file("suite.db"); }

    sqlite_test::TemporaryFolder folder_;
};

std::unique_ptr<TestDatabase> makeEmbedded() {
    return std::make_unique<EmbeddedDatabase>();
}

INSTANTIATE_TEST_SUITE_P(Embedded, ConnectionSuite, testing::Values(&makeEmbedded), parameterName("File"));

} // namespace
} // namespace contract_suites
