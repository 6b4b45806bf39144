// What a person meets when the database can not do what the program asks: words, unchanged rows, and a program that
// goes on.

#include "e2e/Database.h"
#include "e2e/Program.h"
#include "e2e/Texts.h"

#include <gtest/gtest.h>

#include <QFile>

using namespace e2e;

namespace {

const QString moveButton = QStringLiteral("CMD_SPOSTASTRU");

class Faults : public ::testing::Test {
protected:
    void SetUp() override { place_.makeForest(); }

    static void aim(Dialogue& program) {
        program.select(destList, QStringLiteral("C2"));
        program.focus(origTree, 3);
        program.focus(destTree, 25);
    }

    /// What the first error display of a reply says.
    static std::string errorOf(const QJsonObject& reply) {
        const QJsonArray shown = reply.value(QStringLiteral("messages")).toArray();
        for (const QJsonValue& value : shown)
            if (const QJsonObject message = value.toObject(); message.value(QStringLiteral("kind")) == "error")
                return text(message.value(QStringLiteral("description")));
        ADD_FAILURE() << "no error: " << json(reply);
        return {};
    }

    Workplace place_{Workplace::Where::file};
};

} // namespace

TEST_F(Faults, ALockedDatabaseIsWaitedForAndThenSaidSo) {
    Dialogue program(place_);
    aim(program);
    Database other(place_.database());
    const auto before = other.nodes();
    other.run("BEGIN EXCLUSIVE");
    program.must(R"({"do":"answer","values":[6,3]})");
    const auto said = errorOf(program.click(moveButton));
    EXPECT_TRUE(contains(said, "occupato da un altro programma")) << said;
    EXPECT_TRUE(contains(said, "prova.sqlite")) << said;
    other.run("ROLLBACK");
    EXPECT_EQ(other.nodes(), before);

    aim(program);
    program.must(R"({"do":"answer","values":[6]})");
    EXPECT_EQ(messages(program.click(moveButton)).size(), 1U);
    EXPECT_EQ(other.value("SELECT QZ02_ID_QZ01 FROM QZ02_DISTINTA WHERE QZ02_ID = 3"), "2");
    EXPECT_EQ(program.finish(), 0);
}

TEST_F(Faults, AFullDiskLeavesTheRowsAndTheProgramUsable) {
    Database database(place_.database());
    const auto before = database.nodes();
    place_.limitFiles(512);
    Dialogue program(place_);
    aim(program);
    for (int times = 0; times < 2; ++times) {
        program.must(R"({"do":"answer","values":[6,3]})");
        const auto said = errorOf(program.click(moveButton));
        EXPECT_TRUE(contains(said, "scrittura")) << said;
        EXPECT_EQ(database.nodes(), before);
    }
    // Reading goes on.
    program.select(origList, QStringLiteral("C2"));
    EXPECT_FALSE(program.ids(origTree).empty());
    program.must(R"({"do":"close"})");
    EXPECT_EQ(program.finish(), 0) << program.err().toStdString();
}

TEST_F(Faults, StatesThatCanNotBeKeptAreToldAndGivenUp) {
    const QString demo = place_.path(QStringLiteral("demo.sqlite"));
    ASSERT_EQ(0, place_.run({"--database", demo, "--create-demo", "--demo-size", "5"}).status);
    const QString file = place_.database() + ".stati";
    ASSERT_TRUE(QFile::copy(demo + ".stati", file));
    Database states(file);
    states.run("DELETE FROM STATI_LEGAME; INSERT INTO STATI_LEGAME (STATI_GUID, STATI_ID_WF02) VALUES "
               "('22222222-0000-0000-0000-000000000002', 20)");
    Dialogue program(place_);
    const auto copy = [&](const char* answers) {
        program.select(destList, QStringLiteral("C2"));
        program.focus(origTree, 2);
        program.focus(destTree, 21);
        program.must(R"({"do":"when","form":"FRMQZ_DATAFINELEGAME","steps":[)"
                     R"({"do":"set","control":"TXT_DATACHIUSURALEGAME","value":"30/06/2024"},)"
                     R"({"do":"click","control":"CMD_ESEGUI"}]})");
        program.must(answers);
        return program.click(QStringLiteral("CMD_SPOSTAVALID"));
    };
    // Who reads keeps a commit waiting, and the write before it not.
    states.run("BEGIN; SELECT Count(*) FROM STATI_LEGAME");
    const auto said = errorOf(copy(R"({"do":"answer","values":[6,3]})"));
    EXPECT_TRUE(contains(said, "prova.sqlite.stati")) << said;
    states.run("COMMIT");
    EXPECT_EQ(states.value("SELECT Count(*) FROM STATI_LEGAME"), "1");
    // The program goes on, and the next command finds the states free.
    states.run("BEGIN IMMEDIATE; ROLLBACK");
    EXPECT_EQ(program.finish(), 0) << program.err().toStdString();
}

TEST_F(Faults, AFileThatMayOnlyBeReadIsReadAndNotWritten) {
    QFile file(place_.database());
    ASSERT_TRUE(file.setPermissions(QFileDevice::ReadOwner));
    if (QFile(place_.database()).open(QIODevice::ReadWrite))
        GTEST_SKIP() << "this user may write every file";
    Dialogue program(place_);
    aim(program);
    program.must(R"({"do":"answer","values":[6,3]})");
    const auto said = errorOf(program.click(moveButton));
    EXPECT_TRUE(contains(said, "lettura")) << said;
    EXPECT_EQ(program.finish(), 0);
}

TEST_F(Faults, AListOfStatesThatCanNotBeReadSaysSo) {
    const QByteArray press = R"({"do":"mouse","control":"TRW_ELEMDISTINTADEST","id":4,"column":"RagioneSociale",)"
                             R"("button":"right"})";
    Dialogue program(place_);
    Database database(place_.database());
    database.run("ALTER TABLE WF02_STATI RENAME TO ALTROVE");
    program.must(press);
    const auto said = errorOf(program.must(R"({"do":"menu","item":"mnuStatoLegame"})"));
    EXPECT_TRUE(contains(said, "WF02_STATI")) << said;
    database.run("ALTER TABLE ALTROVE RENAME TO WF02_STATI");
    program.must(R"({"do":"when","form":"lkp_Stati","steps":[{"do":"choose","value":20}]})");
    program.must(press);
    program.must(R"({"do":"menu","item":"mnuStatoLegame"})");
    EXPECT_EQ("Approvato", program.cell(destTree, 4, QStringLiteral("Stato")));
    EXPECT_EQ(program.finish(), 0);
}

TEST_F(Faults, ATableThatIsGoneIsNamed) {
    Dialogue program(place_);
    aim(program);
    Database database(place_.database());
    database.run("ALTER TABLE CG16_ANAGGEN RENAME TO ALTROVE");
    program.must(R"({"do":"answer","values":[3,3,3,3,3,3]})");
    const auto reply = program.select(origList, QStringLiteral("C2"));
    EXPECT_TRUE(contains(json(reply), "CG16_ANAGGEN")) << json(reply);
    database.run("ALTER TABLE ALTROVE RENAME TO CG16_ANAGGEN");
    program.select(origList, QStringLiteral("C1"));
    program.select(origList, QStringLiteral("C2"));
    EXPECT_FALSE(program.ids(origTree).empty());
    EXPECT_EQ(program.finish(), 0);
}
