#include "platform/odbc/ConnectionString.h"

#include <gtest/gtest.h>

namespace {

using platform::odbc::ConnectionString;
using platform::odbc::withoutPasswords;

TEST(OdbcConnectionString, ReadsKeywordsWithoutRegardToCase) {
    const ConnectionString string("Driver={ODBC Driver 18 for SQL Server}; SERVER = erp ;Database=Contabilità;");
    EXPECT_EQ("ODBC Driver 18 for SQL Server", string.value("DRIVER"));
    EXPECT_EQ("erp", string.value("server"));
    EXPECT_EQ("Contabilità", string.value("Database"));
    EXPECT_FALSE(string.value("UID").has_value());
}

TEST(OdbcConnectionString, BracesHoldSemicolonsAndBracesWrittenTwice) {
    const ConnectionString string("UID=sa;PWD={a;b}}c=d};Server=erp");
    EXPECT_EQ("a;b}c=d", string.value("pwd"));
    EXPECT_EQ("erp", string.value("Server"));
    EXPECT_EQ("UID=sa;PWD={a;b}}c=d};Server=erp", string.text());
}

TEST(OdbcConnectionString, WritesBracesWhereTheValueNeedsThem) {
    ConnectionString string("Server=a");
    string.set("PWD", "x;}y");
    string.set("server", "b");
    EXPECT_EQ("Server=b;PWD={x;}}y}", string.text());
    EXPECT_EQ("x;}y", ConnectionString(string.text()).value("PWD"));
    string.remove("pwd");
    EXPECT_EQ("Server=b", string.text());
}

TEST(OdbcConnectionString, MasksEveryPassword) {
    for (const std::string text : {"DSN=erp;PWD=segreto", "DSN=erp;pwd=segreto;", "Password={seg;reto};DSN=erp",
                                   "DSN=erp; PaSsWoRd = segreto", "DSN=erp;PWD={segreto", "PWD={a}}segreto};DSN=erp"}) {
        const std::string masked = ConnectionString(text).masked();
        EXPECT_EQ(std::string::npos, masked.find("reto")) << masked;
        EXPECT_NE(std::string::npos, masked.find("***")) << masked;
        EXPECT_EQ(std::string::npos, ConnectionString(text).name().find("reto"));
        EXPECT_EQ(std::string::npos, withoutPasswords("detto: " + text + "; fine", {}).find("reto"));
    }
}

TEST(OdbcConnectionString, APasswordWithinAnotherValueGoesWithIt) {
    for (const std::string text : {"UID=sa;Driver={FreeTDS;PWD=segreto", "UID=sa;{PWD=segreto",
                                   "UID=sa;x{y;pwd =segreto", "UID=sa;App={a;Password=segreto}"}) {
        ConnectionString string(text);
        EXPECT_EQ(std::string::npos, string.masked().find("segreto")) << string.masked();
        EXPECT_EQ(std::string::npos, string.name().find("segreto")) << string.name();
        string.removeSecrets();
        EXPECT_EQ(std::string::npos, string.text().find("segreto")) << string.text();
        EXPECT_EQ("sa", string.value("UID"));
    }
}

TEST(OdbcConnectionString, PasswordsGoFromWhatADriverRepeats) {
    EXPECT_EQ("login of sa with *** failed", withoutPasswords("login of sa with segreto failed", {"segreto"}));
    EXPECT_EQ("*** and ***", withoutPasswords("segreto and segreto", {"segreto"}));
    // A short one could be any part of a text, and goes with its keyword only.
    EXPECT_EQ("a table is missing", withoutPasswords("a table is missing", {"a"}));
    EXPECT_EQ("UID=sa;PWD=***;x", withoutPasswords("UID=sa;PWD=a;x", {"a"}));
    EXPECT_EQ("no password given", withoutPasswords("no password given", {}));
}

TEST(OdbcConnectionString, NamesTheDatabase) {
    EXPECT_EQ("erp/Conti", ConnectionString("Driver=x;Server=erp;Database=Conti;PWD=a").name());
    EXPECT_EQ("erp:1433/Conti", ConnectionString("Server=erp;Port=1433;Database=Conti").name());
    EXPECT_EQ("sorgente", ConnectionString("DSN=sorgente;UID=a;PWD=b").name());
    EXPECT_EQ("/tmp/a.db", ConnectionString("Driver=SQLite3;Database=/tmp/a.db").name());
    EXPECT_EQ("ODBC", ConnectionString("UID=a;PWD=b").name());
    EXPECT_EQ("ODBC", ConnectionString("").name());
}

TEST(OdbcConnectionString, ADriverSeesItsOwnKeywordsOnly) {
    EXPECT_EQ("Driver=x;Server=a;", ConnectionString("Driver=x;statementTimeout=7;Server=a").driverText(7));
    EXPECT_EQ("Driver=FreeTDS;Server=a;", ConnectionString("Driver=FreeTDS;StatementTimeout=0;Server=a").driverText(0));
    for (const std::string driver : {"Driver={FreeTDS}", "Driver=/usr/lib/odbc/libtdsodbc.so"}) {
        EXPECT_EQ(driver + ";Server=a;Timeout=7;",
                  ConnectionString(driver + ";StatementTimeout=7;Server=a").driverText(7));
        EXPECT_EQ(driver + ";timeout=3;", ConnectionString(driver + ";timeout=3").driverText(7));
    }
}

TEST(OdbcConnectionString, FreeTdsTakesBracesAsTheyAreUpToASemicolon) {
    ConnectionString string("Driver=FreeTDS;Server=erp");
    string.set("PWD", "a}b;{c}");
    EXPECT_EQ("Driver=FreeTDS;Server=erp;PWD={a}}b;{c}}}", string.text());
    EXPECT_EQ("Driver=FreeTDS;Server=erp;PWD={a}b;{c}};", string.driverText(0));
    ConnectionString other("Driver={ODBC Driver 18 for SQL Server};Server=erp");
    other.set("PWD", "a}b");
    EXPECT_EQ("Driver={ODBC Driver 18 for SQL Server};Server=erp;PWD={a}}b};", other.driverText(0));
}

TEST(OdbcConnectionString, ASecretIsMoreThanAPassword) {
    for (const std::string secret :
         {"KeystoreSecret=segreto", "keystoresecret={seg;reto}", "AccessToken=segreto",
          "ClientKey={file:/k.pem,password:segreto}", "ClientCertificate={file:/c.pfx,password:segreto}",
          "TrustStorePassword=segreto", "AEKeyStoreClientSecret=segreto", "OldPwd=segreto"}) {
        ConnectionString string("Server=erp;" + secret + ";Database=Conti");
        EXPECT_EQ(std::string::npos, string.masked().find("reto")) << string.masked();
        EXPECT_FALSE(string.secrets().empty()) << secret;
        EXPECT_EQ(std::string::npos, withoutPasswords("detto: " + secret, {}).find("reto")) << secret;
        string.removeSecrets();
        EXPECT_EQ("Server=erp;Database=Conti", string.text()) << secret;
        // None of them is the login's password.
        EXPECT_TRUE(ConnectionString(secret).passwords().empty()) << secret;
    }
    ConnectionString open("Server=erp;ClientCertificate=file:/c.pem;ServerCertificate=/s.pem;KeystorePrincipalId=a");
    const std::string text = open.text();
    open.removeSecrets();
    EXPECT_EQ(text, open.text());
}

TEST(OdbcConnectionString, FreeTdsNeverSeesAValueThatEndsBeforeItsEnd) {
    ConnectionString string("Driver=FreeTDS;Server=erp");
    string.set("PWD", "x};Server=altrove");
    EXPECT_NE(std::string::npos, string.refusal(string.driver()).find("PWD"));
    EXPECT_EQ(std::string::npos, string.refusal(string.driver()).find("altrove"));
    // A data source's driver may be this one.
    string.remove("Driver");
    EXPECT_NE("", string.refusal(string.driver()));
    string.set("Driver", "ODBC Driver 18 for SQL Server");
    EXPECT_EQ("", string.refusal(string.driver()));
    for (const char* password : {"a}b", "a}b;{c}", "a;b", "};x}", "}"}) {
        ConnectionString other("Driver=FreeTDS;Server=erp");
        other.set("PWD", password);
        EXPECT_EQ(std::string(password) == "};x}", !other.refusal(other.driver()).empty()) << password;
    }
}

TEST(OdbcConnectionString, TheDriverTakesWhatTheNameShows) {
    // Some drivers take the last of two, some the first; what is no keyword would hide the one behind it.
    const ConnectionString twice("Driver=FreeTDS;erp;Server=erp;Database=Conti;=x;server=altrove;database=Altri");
    EXPECT_EQ("erp/Conti", twice.name());
    EXPECT_EQ("Driver=FreeTDS;Server=erp;Database=Conti;", twice.driverText(0));
    // Braces that do not end where the value ends are written anew.
    EXPECT_EQ("Driver=FreeTDS;App={a};Server=erp;",
              ConnectionString("Driver=FreeTDS;App={a}x;Server=erp").driverText(0));
    EXPECT_EQ("Driver={ODBC Driver 18 for SQL Server};App={a}}};Server=erp;",
              ConnectionString("Driver={ODBC Driver 18 for SQL Server};App={a}}};Server=erp").driverText(0));
    // An address leads Microsoft's driver elsewhere; FreeTDS's does not know the word.
    const std::string both = "Server=erp;Address=10.0.0.9;Port=1500;Database=Conti";
    EXPECT_EQ("10.0.0.9/Conti", ConnectionString("Driver={ODBC Driver 18 for SQL Server};" + both).name());
    EXPECT_EQ("erp:1500/Conti", ConnectionString("Driver=FreeTDS;" + both).name());
    EXPECT_EQ("sorgente/Conti", ConnectionString("DSN=sorgente;Database=Conti").name());
    EXPECT_EQ("sorgente (erp/Conti)", ConnectionString("DSN=sorgente;Server=erp;Database=Conti").name());
}

TEST(OdbcConnectionString, KeepsWhatIsNoKeyword) {
    EXPECT_EQ("erp;Server=a", ConnectionString("erp;;Server=a").text());
    EXPECT_EQ("", ConnectionString(";;").text());
}

} // namespace
