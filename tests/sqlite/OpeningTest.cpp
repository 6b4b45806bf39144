// Files that cannot be opened, and what a connection leaves beside a file.

#include "sqlite/SqliteFixture.h"

#include <fstream>

#include <sys/stat.h>

namespace sqlite_test {
namespace {

using contract::ErrorCategory;

class OpeningTest : public testing::Test {
protected:
    std::string failureToOpen(const std::string& connectionString, ErrorCategory category) {
        Connection connection(connectionString);
        const auto description = failureOf([&] { connection.Open(); });
        EXPECT_FALSE(connection.IsOpen());
        EXPECT_FALSE(connection.Errors().empty());
        if (!connection.Errors().empty()) {
            EXPECT_EQ(connection.Errors().front().category, category) << description;
        }
        return description;
    }

    TemporaryFolder folder;
};

TEST_F(OpeningTest, AMissingFileIsNotMade) {
    const auto file = folder.file("manca.db");
    EXPECT_TRUE(has(failureToOpen(connectionStringOf(file), ErrorCategory::notADatabase), "non esiste"));
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(OpeningTest, WhyAFileIsNotReachedIsSaid) {
    const auto circle = folder.file("giro.db");
    std::filesystem::create_symlink(circle, circle);
    EXPECT_TRUE(has(failureToOpen(connectionStringOf(circle), ErrorCategory::notADatabase), "gira in tondo"));
    const auto endless = folder.file(std::string(300, 'a'));
    EXPECT_TRUE(has(failureToOpen(connectionStringOf(endless), ErrorCategory::notADatabase), "troppo lungo"));
}

TEST_F(OpeningTest, AFolderIsNoDatabase) {
    EXPECT_TRUE(
        has(failureToOpen(connectionStringOf(folder.path().string()), ErrorCategory::notADatabase), "cartella"));
}

TEST_F(OpeningTest, AForeignFileIsNoDatabase) {
    const auto file = folder.file("testo.db");
    std::ofstream(file) << std::string(5000, 'x');
    const auto description = failureToOpen(connectionStringOf(file), ErrorCategory::notADatabase);
    EXPECT_TRUE(has(description, file)) << description;
    EXPECT_TRUE(has(description, "non è un database")) << description;
}

TEST_F(OpeningTest, ATruncatedFileIsReportedAsDamaged) {
    const auto file = folder.file("tronco.db");
    platform::sqlite::createDatabase(file, contract_suites::suiteSchema());
    std::filesystem::resize_file(file, 4096);
    const auto description = failureToOpen(connectionStringOf(file), ErrorCategory::notADatabase);
    EXPECT_TRUE(has(description, "danneggiato")) << description;
}

TEST_F(OpeningTest, ConnectionStringsThatSayNothing) {
    EXPECT_TRUE(has(failureToOpen("file.db", ErrorCategory::other), "embedded:"));
    EXPECT_TRUE(has(failureToOpen("embedded:", ErrorCategory::other), "file"));
    EXPECT_TRUE(has(failureToOpen("embedded:x;busy=presto", ErrorCategory::other), "attesa"));
}

TEST_F(OpeningTest, FileNamesThatTheEngineWouldTakeForSomethingElse) {
    for (const std::string name : {":memory:", "file:a?mode=memory", "a;b.db", "spazi e àccenti.db"}) {
        const auto file = folder.file(name);
        platform::sqlite::createDatabase(file, contract_suites::suiteSchema());
        EXPECT_TRUE(std::filesystem::exists(file));
        Connection connection(connectionStringOf(file, ";busy=10"));
        connection.Open();
        EXPECT_EQ(connection.file(), file);
    }
}

TEST_F(OpeningTest, NothingStaysBesideTheFile) {
    const auto file = folder.file("prova.db");
    platform::sqlite::createDatabase(file, contract_suites::suiteSchema());
    Connection connection(connectionStringOf(file));
    connection.Open();
    connection.Execute("INSERT INTO PROVA (CODICE) VALUES (1)"_sql);
    connection.Close();
    std::size_t files = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(folder.path()))
        ++files;
    EXPECT_EQ(files, 1U);
}

TEST_F(OpeningTest, AFileInAnotherJournalModeIsTurnedBack) {
    const auto file = folder.file("wal.db");
    platform::sqlite::createDatabase(file, contract_suites::suiteSchema());
    {
        Connection connection(connectionStringOf(file));
        connection.Open();
        connection.runNative("PRAGMA journal_mode = WAL");
        connection.Execute("INSERT INTO PROVA (CODICE) VALUES (1)"_sql);
    }
    Connection connection(connectionStringOf(file));
    connection.Open();
    EXPECT_EQ(connection.Execute("UPDATE PROVA SET CODICE = 2"_sql), 1);
    EXPECT_FALSE(std::filesystem::exists(file + "-wal"));
}

class ReadOnlyTest : public OpeningTest {
protected:
    void SetUp() override {
        file = folder.file("sola.db");
        platform::sqlite::createDatabase(file, contract_suites::suiteSchema(), [](Connection& connection) {
            connection.Execute("INSERT INTO PROVA (CODICE) VALUES (1)"_sql);
        });
        ::chmod(file.c_str(), 0444);
        // The administrator may write every file, so the case is played as somebody else.
        if (::geteuid() == 0) {
            std::filesystem::permissions(folder.path(), std::filesystem::perms::all);
            ASSERT_EQ(::seteuid(65534), 0);
            changed = true;
        }
    }
    void TearDown() override {
        if (changed) {
            EXPECT_EQ(::seteuid(0), 0);
        }
    }

    std::string file;
    bool changed = false;
};

TEST_F(ReadOnlyTest, CanBeReadAndNotWritten) {
    Connection connection(connectionStringOf(file));
    connection.Open();
    EXPECT_TRUE(connection.isReadOnly());
    contract::Recordset rows;
    rows.Open("SELECT CODICE FROM PROVA"_sql, connection);
    EXPECT_EQ(rows["CODICE"].integer(), 1);
    const auto description = failureOf([&] { connection.Execute("UPDATE PROVA SET CODICE = 2"_sql); });
    EXPECT_EQ(connection.Errors().front().category, ErrorCategory::readOnly);
    EXPECT_TRUE(has(description, "sola lettura")) << description;
    failureOf([&] { connection.BeginTrans(); });
    EXPECT_FALSE(connection.InTransaction());
}

} // namespace
} // namespace sqlite_test
