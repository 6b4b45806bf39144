// What the machine's ODBC configuration adds to a connection string, and what both say of the way to the server.

#include "platform/odbc/DataSource.h"
#include "odbc/OdbcFixture.h"

#include <gtest/gtest.h>

#include <fstream>

#include <unistd.h>

namespace odbc_test {
namespace {

using platform::odbc::ConnectionString;
using platform::odbc::DriverKind;
using platform::odbc::labelOf;
using platform::odbc::Protection;
using platform::odbc::protectionOf;
using platform::odbc::targetOf;

Protection protectionIn(const std::string& text) {
    return protectionOf(targetOf(ConnectionString(text)));
}

TEST(OdbcProtection, OfFreeTdsIsItsOwnKeyword) {
    const std::string server = "Driver=FreeTDS;Server=erp.azienda.example;";
    EXPECT_EQ(Protection::encrypted, protectionIn(server + "Encryption=require"));
    EXPECT_EQ(Protection::encrypted, protectionIn(server + "encryption=Strict"));
    EXPECT_EQ(Protection::plain, protectionIn(server));
    EXPECT_EQ(Protection::plain, protectionIn(server + "Encryption=request"));
    EXPECT_EQ(Protection::plain, protectionIn(server + "Encrypt=yes"));
    EXPECT_EQ(Protection::plain, protectionIn(server + "Encryption=off;Encryption=require"));
    // Its configuration may ask for it.
    EXPECT_EQ(Protection::unknown, protectionIn("Driver=FreeTDS;Servername=erp"));
}

TEST(OdbcProtection, OfMicrosoftsDriverDependsOnItsVersion) {
    const std::string old = "Driver={ODBC Driver 17 for SQL Server};Server=erp.azienda.example;";
    const std::string recent = "Driver={ODBC Driver 18 for SQL Server};Server=erp.azienda.example;";
    EXPECT_EQ(Protection::plain, protectionIn(old));
    EXPECT_EQ(Protection::encrypted, protectionIn(old + "Encrypt=yes"));
    EXPECT_EQ(Protection::encrypted, protectionIn(recent));
    EXPECT_EQ(Protection::encrypted, protectionIn(recent + "Encrypt=strict"));
    EXPECT_EQ(Protection::plain, protectionIn(recent + "Encrypt=no"));
    EXPECT_EQ(Protection::plain, protectionIn(recent + "Encrypt=optional"));
    EXPECT_EQ(Protection::encrypted, protectionIn("Driver=/opt/libmsodbcsql-18.3.so.1.1;Server=erp"));
}

TEST(OdbcProtection, AServerOnThisMachineNeedsNone) {
    char own[256] = {};
    ASSERT_EQ(0, ::gethostname(own, sizeof own - 1));
    for (const std::string server : {"localhost", "127.0.0.1", "127.1.2.3", "::1", "(local)", ".", "tcp:localhost,1433",
                                     "LOCALHOST\\SQLEXPRESS", static_cast<const char*>(own)})
        EXPECT_EQ(Protection::local, protectionIn("Driver=FreeTDS;Server=" + server)) << server;
    for (const std::string server : {"erp", "10.0.0.1", "localhost.altrove.example", "1270.0.0.1"})
        EXPECT_EQ(Protection::plain, protectionIn("Driver=FreeTDS;Server=" + server)) << server;
    EXPECT_EQ(Protection::plain, protectionIn("Driver={ODBC Driver 17 for SQL Server};Server=localhost;Address=erp"));
    EXPECT_EQ(Protection::local, protectionIn("Driver=SQLite3;Database=/a.db"));
    EXPECT_EQ(Protection::unknown, protectionIn("Driver=altro;Server=erp"));
}

/// Configuration files of its own. The driver manager may remember what it has read: every name is used once.
class OdbcDataSource : public testing::Test {
protected:
    OdbcDataSource() {
        std::ofstream(folder.file("odbc.ini")) << "[f_paghe]\nDriver=FreeTDS\nServer=erp.azienda.example\nPort=1433\n"
                                                  "Database=Conti\n\n"
                                                  "[f_cifrata]\nDriver=FreeTDS\nServer=erp.azienda.example\n"
                                                  "Encryption=require\n\n"
                                                  "[f_altra]\nDriver=f_nostro\nServer=erp.azienda.example\n";
        std::ofstream(folder.file("odbcinst.ini")) << "[f_nostro]\nDriver=/usr/lib/odbc/libtdsodbc.so\n";
        ::setenv("ODBCINI", folder.file("odbc.ini").c_str(), 1);
        ::setenv("ODBCSYSINI", folder.file("").c_str(), 1);
    }
    ~OdbcDataSource() override {
        ::unsetenv("ODBCINI");
        ::unsetenv("ODBCSYSINI");
    }
    TemporaryFolder folder;
};

TEST_F(OdbcDataSource, TheLabelShowsWhereItLeads) {
    EXPECT_EQ("f_paghe (erp.azienda.example:1433/Conti)", labelOf(ConnectionString("DSN=f_paghe;UID=a;PWD=segreto")));
    EXPECT_EQ("f_paghe (erp.azienda.example:1433/Prova)", labelOf(ConnectionString("DSN=f_paghe;Database=Prova")));
    EXPECT_EQ("f_manca", labelOf(ConnectionString("DSN=f_manca")));
}

TEST_F(OdbcDataSource, ItsDriverAndItsEncryptionCount) {
    EXPECT_EQ(Protection::plain, protectionIn("DSN=f_paghe"));
    EXPECT_EQ(Protection::encrypted, protectionIn("DSN=f_cifrata"));
    EXPECT_EQ(Protection::unknown, protectionIn("DSN=f_manca"));
    EXPECT_EQ(DriverKind::freeTds, targetOf(ConnectionString("DSN=f_paghe")).driver);
}

TEST_F(OdbcDataSource, ADriverUnderAnotherNameIsKnownByItsLibrary) {
    // In a process of its own: the driver manager looks once for where its files are.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto known = [](const char* text) { return targetOf(ConnectionString(text)).driver == DriverKind::freeTds; };
    EXPECT_EXIT(std::exit(known("DSN=f_altra") && known("Driver=f_nostro;Server=erp") ? 0 : 1),
                testing::ExitedWithCode(0), "");
    EXPECT_EQ(DriverKind::other, targetOf(ConnectionString("Driver=f_manca;Server=erp")).driver);
}

TEST(OdbcOpening, AValueThatWouldBreakOutIsRefusedBeforeTheDriverSeesIt) {
    platform::odbc::Connection connection("Driver=FreeTDS;Server=127.0.0.1;Port=1;UID=a;PWD={x}};Server=altrove}");
    const std::string reason = failureOf([&] { connection.Open(); });
    EXPECT_TRUE(has(reason, "«};»")) << reason;
    EXPECT_TRUE(has(reason, "PWD")) << reason;
    EXPECT_FALSE(has(reason, "altrove")) << reason;
}

} // namespace
} // namespace odbc_test
