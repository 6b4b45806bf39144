// What the program makes holds customers' data: nobody but its owner may read it, whatever the user's mask allows.

#include "e2e/Database.h"
#include "e2e/Program.h"
#include "e2e/Works.h"

#include <gtest/gtest.h>

#include <filesystem>

#include <sys/stat.h>

using namespace e2e;

namespace {

namespace fs = std::filesystem;

unsigned modeOf(const fs::path& path) {
    return static_cast<unsigned>(fs::status(path).permissions() & fs::perms::mask);
}

class Privacy : public ::testing::Test {
protected:
    Privacy() : mask_(::umask(0)) {}
    ~Privacy() override { ::umask(mask_); }

    Workplace place_{Workplace::Where::file};

private:
    mode_t mask_;
};

} // namespace

TEST_F(Privacy, FilesAndFoldersAreTheirOwnersAlone) {
    const QString script = place_.write("prova.jsonl", R"({"do":"open"}
{"do":"screenshot","file":"foto.png"}
{"do":"select","control":"TRW_DISTINTEORIG","key":"C1"}
)");
    // The default database, its folder and the registry; a new one; a log and a trace.
    ASSERT_EQ(0, place_.run({"--script", script}).status);
    const QString file = place_.path("nuovo.sqlite");
    ASSERT_EQ(0, place_.run({"--database", file, "--create-demo", "--demo-size", "5"}).status);
    ASSERT_EQ(0, place_
                     .run({"--database", file, "--script", script, "--trace", place_.path("traccia"), "--log",
                           place_.path("registri/errori.log")})
                     .status);
    Database(file).run("DROP TABLE CG16_ANAGGEN");
    place_.run({"--database", file, "--script", place_.write("guasta.jsonl", R"({"do":"open"}
{"do":"select","control":"TRW_DISTINTEORIG","key":"C1"}
)"),
                "--log", place_.path("registri/errori.log")});
    int files = 0;
    for (const auto& entry : fs::recursive_directory_iterator(place_.path("").toStdString())) {
        const std::string ending = entry.path().extension().string();
        if (ending == ".jsonl" || entry.is_symlink() || entry.is_socket())
            continue;
        ++files;
        EXPECT_EQ(entry.is_directory() ? 0700U : 0600U, modeOf(entry.path())) << entry.path();
    }
    EXPECT_GE(files, 7);
    for (const char* name : {"data/distinte/demo.sqlite", "data/distinte/components", "nuovo.sqlite", "traccia"})
        EXPECT_TRUE(fs::exists(place_.path(name).toStdString())) << name;
}

TEST_F(Privacy, AJournalIsAsOpenAsItsDatabase) {
    place_.makeForest();
    place_.setVariable("LD_PRELOAD", FAULTY_DISK);
    place_.setVariable("FAULTY_DISK_FILES", place_.database());
    place_.setVariable("FAULTY_DISK_ORDER", place_.write("ordine", "kill 10"));
    EXPECT_EQ(-1, place_
                      .runScript(R"({"do":"open"}
{"do":"select","control":"TRW_DISTINTEDEST","key":"C1"}
{"do":"edit","control":"TRW_ELEMDISTINTADEST","id":5,"column":"trQZ02_DATAFINEVAL","value":"30/06/2050"}
)")
                      .status);
    const fs::path journal = place_.database().toStdString() + "-journal";
    ASSERT_TRUE(fs::exists(journal));
    EXPECT_EQ(0600U, modeOf(journal));
}
