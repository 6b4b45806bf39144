// Passwords with every character that a connection string writes in a way of its own.

#include "contract/RuntimeError.h"
#include "odbc/ScriptedServer.h"
#include "odbc/ServerLock.h"
#include "platform/odbc/Connection.h"
#include "platform/odbc/ConnectionString.h"

#include <gtest/gtest.h>

namespace odbc_test {
namespace {

using platform::odbc::Connection;
using platform::odbc::ConnectionString;

class OdbcPassword : public testing::TestWithParam<const char*> {};

TEST_P(OdbcPassword, OpensTheServer) {
    const auto text = serverString();
    if (!text)
        GTEST_SKIP() << "no database server";
    const std::string login = "distinte_parola";
    const int lock = lockServer();
    Connection administrator(*text);
    administrator.Open();
    const auto tried = [&](const std::string& statement) {
        try {
            administrator.runNative(statement);
            return true;
        } catch (const contract::RuntimeError&) {
            return false;
        }
    };
    const auto drop = [&] {
        tried("DROP USER " + login);
        tried("DROP LOGIN " + login);
    };
    drop();
    if (!tried("CREATE LOGIN " + login + " WITH PASSWORD = N'" + GetParam() + "'")) {
        unlockServer(lock);
        GTEST_SKIP() << "the login may make no other one";
    }
    EXPECT_TRUE(tried("CREATE USER " + login + " FOR LOGIN " + login));

    ConnectionString string(*text);
    string.removeSecrets();
    string.set("UID", login);
    string.set("PWD", GetParam());
    Connection user(string.text());
    EXPECT_NO_THROW(user.Open());
    user.Close();
    string.set("PWD", std::string(GetParam()) + "x");
    EXPECT_THROW(Connection(string.text()).Open(), contract::RuntimeError);
    drop();
    unlockServer(lock);
}

INSTANTIATE_TEST_SUITE_P(Odd, OdbcPassword,
                         testing::Values("Pa@ss!w0rd?,", "Semi;Colon=9", "Brace{Open9", "Brace}Close9", "{Both}9Aa",
                                         "Blank in 9 it", "Trailing9;"));

} // namespace
} // namespace odbc_test
