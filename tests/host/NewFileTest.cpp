// The first start: two programs at once, and what a killed one leaves.

#include "host/database/NewFile.h"

#include "TestFolder.h"
#include "TestSchema.h"
#include "host/database/DatabaseAccess.h"
#include "host/database/DatabaseSetup.h"
#include "host/start/StartFailure.h"
#include "host/start/UserFolders.h"

#include <gtest/gtest.h>

#include <chrono>
#include <set>
#include <vector>

#include <sys/stat.h>
#include <sys/wait.h>

namespace {

using host_test::Environment;
using host_test::Folder;

ino_t inodeOf(const std::string& file) {
    struct stat status = {};
    return ::stat(file.c_str(), &status) == 0 ? status.st_ino : 0;
}

TEST(NewFile, NeverTakesTheNameOfOneThatIsThere) {
    const Folder folder;
    host_test::write(folder.file("nuovo"), "nuovo");
    EXPECT_TRUE(host::nameWhereNone(folder.file("nuovo"), folder.file("a")));
    host_test::write(folder.file("altro"), "altro");
    EXPECT_FALSE(host::nameWhereNone(folder.file("altro"), folder.file("a")));
    EXPECT_EQ("nuovo", host_test::contentOf(folder.file("a")));
    EXPECT_THROW(host::nameWhereNone(folder.file("manca"), folder.file("b")), std::filesystem::filesystem_error);
}

TEST(NewFile, LeftOversOfAKilledStartAreRemovedAndNothingElse) {
    const Folder folder;
    const std::string file = folder.file("demo.sqlite");
    const pid_t gone = ::fork();
    if (gone == 0)
        ::_exit(0);
    ::waitpid(gone, nullptr, 0);
    const std::string mine = host::makingName(file);
    const std::string dead = mine.substr(0, mine.rfind('-') + 1) + std::to_string(gone);
    const std::string old = file + ".nuovo-altrove-12";
    const std::set<std::string> kept = {file,
                                        mine,
                                        file + ".nuovo-altrove-13",
                                        file + ".nuovo",
                                        file + ".stati",
                                        folder.file("demo.sqlite.nuova-copia")};
    const std::set<std::string> left = {dead, dead + "-journal", file + ".nuovo" + std::to_string(gone), old};
    for (const auto& names : {kept, left})
        for (const auto& name : names)
            host_test::write(name, "x");
    std::filesystem::last_write_time(old, std::filesystem::file_time_type::clock::now() - std::chrono::hours(25));
    host::removeLeftOvers(file);
    for (const auto& name : kept)
        EXPECT_TRUE(std::filesystem::exists(name)) << name;
    for (const auto& name : left)
        EXPECT_FALSE(std::filesystem::exists(name)) << name;
}

TEST(NewFile, ProgramsThatStartAtOnceKeepTheDatabaseOfTheFirst) {
    const Folder folder;
    const contract::Schema& schema = host_test::component().schema();
    const Environment data("XDG_DATA_HOME", folder.path().c_str());
    const std::string file = host::defaultDatabase().string();
    std::vector<pid_t> programs;
    for (int i = 0; i < 3; ++i) {
        programs.push_back(::fork());
        if (programs.back() == 0) {
            try {
                ::_exit(host::prepareDefaultDatabase(schema) == file ? 0 : 1);
            } catch (...) {
                ::_exit(2);
            }
        }
    }
    ino_t first = 0;
    for (std::size_t ended = 0; ended < programs.size();) {
        int status = 0;
        const pid_t program = ::waitpid(-1, &status, WNOHANG);
        if (program > 0) {
            ++ended;
            EXPECT_EQ(0, status);
        }
        const ino_t now = inodeOf(file);
        if (first == 0)
            first = now;
        ASSERT_EQ(first, now) << "a database that stood was replaced";
    }
    EXPECT_NE(0U, first);
    EXPECT_EQ(1, std::distance(std::filesystem::directory_iterator(folder.file("distinte")),
                               std::filesystem::directory_iterator()));
}

TEST(NewFile, NothingIsMadeBesideAJournalThatWouldBePlayedIntoIt) {
    const Folder folder;
    const Environment data("XDG_DATA_HOME", folder.path().c_str());
    const auto& schema = host_test::component().schema();
    const std::string file = host::defaultDatabase().string();
    std::filesystem::create_directories(folder.file("distinte"));
    host_test::write(file + "-journal", "x");
    const auto expectRefused = [&](auto action) {
        try {
            action();
            ADD_FAILURE() << "made";
        } catch (const host::StartFailure& failure) {
            EXPECT_NE(std::string::npos, std::string(failure.what()).find("demo.sqlite-journal")) << failure.what();
        }
        EXPECT_FALSE(std::filesystem::exists(file));
        EXPECT_EQ("x", host_test::contentOf(file + "-journal"));
    };
    expectRefused([&] { host::prepareDefaultDatabase(schema); });
    expectRefused([&] { host::createDatabase(host::embeddedDatabase(file), schema, std::nullopt); });
    // An empty one holds nothing.
    host_test::write(file + "-journal", "");
    EXPECT_EQ(file, host::prepareDefaultDatabase(schema));
}

} // namespace
