// A file that goes, or is replaced, while it is open, and a folder in which nothing may be written.

#include "sqlite/SqliteFixture.h"

#include <fstream>

#include <unistd.h>

namespace sqlite_test {
namespace {

namespace fs = std::filesystem;

class FilePlaceTest : public SqliteTest {
protected:
    /// Every way to the database says so.
    void expectSaid(std::string_view words) {
        for (const auto& said : {failureOf([&] { count(connection); }), failureOf([&] { insert(connection, 1); }),
                                 failureOf([&] { connection.BeginTrans(); })})
            EXPECT_TRUE(has(said, words)) << said;
        EXPECT_FALSE(connection.InTransaction());
    }
};

TEST_F(FilePlaceTest, AFileThatWasDeletedOrMovedIsMissed) {
    const std::string away = folder.file("altrove.db");
    fs::rename(file(), away);
    expectSaid("cancellato o spostato mentre era aperto; rimetterlo al suo posto");
    fs::rename(away, file());
    insert(connection, 1);
    EXPECT_EQ(1, count(connection)) << "once it is back, work goes on";
    fs::remove(file());
    expectSaid("cancellato o spostato");
}

TEST_F(FilePlaceTest, AFileThatWasReplacedIsNotWrittenTo) {
    const std::string other = folder.file("altra.db");
    fs::copy(file(), other);
    fs::rename(other, file());
    expectSaid("sostituito da un altro mentre era aperto; per lavorare sul nuovo chiudere");
    Connection fresh(connectionStringOf(file()));
    fresh.Open();
    EXPECT_EQ(0, count(fresh));
}

TEST_F(FilePlaceTest, AMoveOnAFileThatGoesIsNotKept) {
    connection.BeginTrans();
    fs::rename(file(), folder.file("altrove.db"));
    const auto said = failureOf([&] {
        insert(connection, 1);
        connection.CommitTrans();
    });
    EXPECT_TRUE(has(said, "cancellato o spostato mentre era aperto")) << said;
}

TEST_F(FilePlaceTest, AFolderThatCanNotBeWrittenIsNamed) {
    const bool everything = ::geteuid() == 0;
    fs::permissions(folder.path(), fs::perms(0555));
    fs::permissions(file(), fs::perms(0666));
    if (everything) {
        ASSERT_EQ(0, ::seteuid(65534));
    }
    Connection other(connectionStringOf(file()));
    other.Open();
    other.BeginTrans();
    const auto said = failureOf([&] { insert(other, 1); });
    other.RollbackTrans();
    other.Close();
    if (everything) {
        ASSERT_EQ(0, ::seteuid(0));
    }
    fs::permissions(folder.path(), fs::perms(0755));
    EXPECT_TRUE(has(said, "nella cartella «" + folder.path().string() + "» non si può scrivere")) << said;
    EXPECT_TRUE(has(said, "chiedere il permesso di scrivere nella cartella")) << said;
}

} // namespace
} // namespace sqlite_test
