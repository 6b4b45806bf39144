// What a person meets when the database can not do what the program asks: words, unchanged rows, and a program that
// goes on.

#include "e2e/Database.h"
#include "e2e/Program.h"
#include "e2e/Texts.h"
#include "e2e/Works.h"

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

TEST_F(Faults, StatesThatCanNotBeKeptAreToldAndTriedAgainOrGivenUp) {
    const auto giveState = [&](Dialogue& program, const char* answers) {
        program.must(answers);
        program.must(R"({"do":"when","form":"lkp_Stati","steps":[{"do":"choose","value":20}]})");
        program.must(R"({"do":"mouse","control":"TRW_ELEMDISTINTADEST","id":4,"column":"RagioneSociale",)"
                     R"("button":"right"})");
        return program.must(R"({"do":"menu","item":"mnuStatoLegame"})");
    };
    Dialogue program(place_);
    // Who reads keeps a commit waiting, and the write before it not.
    Database states(place_.database());
    states.run("BEGIN; SELECT Count(*) FROM STATI_LEGAME");
    const auto said = errorOf(giveState(program, R"({"do":"answer","values":[3]})"));
    EXPECT_TRUE(contains(said, "prova.sqlite")) << said;
    states.run("COMMIT");
    EXPECT_EQ(states.value("SELECT Count(*) FROM STATI_LEGAME"), "0");
    // The program goes on, and the next command finds the file free.
    states.run("BEGIN IMMEDIATE; ROLLBACK");
    EXPECT_TRUE(messages(giveState(program, R"({"do":"answer","values":[]})")).empty());
    EXPECT_EQ(states.value("SELECT Count(*) FROM STATI_LEGAME"), "1");
    EXPECT_EQ(program.finish(), 0) << program.err().toStdString();
}

TEST_F(Faults, AMoveWhoseStatesCanNotBeWrittenIsNoMove) {
    Database database(place_.database());
    database.run("INSERT INTO STATI_LEGAME (STATI_GUID, STATI_ID_WF02) VALUES "
                 "('22222222-0000-0000-0000-000000000002', 20); CREATE TRIGGER NIENTE BEFORE INSERT ON STATI_STORIA "
                 "BEGIN SELECT RAISE(ABORT, 'niente'); END");
    const auto before = database.nodes();
    Dialogue program(place_);
    e2e::aim(program, Work::validity);
    const auto said = errors(doWork(program, Work::validity));
    ASSERT_EQ(said.size(), 1U);
    EXPECT_TRUE(contains(said.front(), "niente")) << said.front();
    EXPECT_EQ(database.nodes(), before);
    EXPECT_EQ(database.value("SELECT Count(*) FROM STATI_LEGAME"), "1");
    // What the host writes is no statement of the component's.
    for (const auto& statement : program.trace())
        EXPECT_FALSE(contains(statement, "STATI_")) << statement;
    database.run("DROP TRIGGER NIENTE");
    e2e::aim(program, Work::validity);
    EXPECT_TRUE(errors(doWork(program, Work::validity)).empty());
    EXPECT_EQ(database.value("SELECT Count(*) FROM STATI_LEGAME"), "3");
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

TEST_F(Faults, ACommandWaitsForALockOnceAndEachNextOneAgain) {
    Dialogue program(place_);
    aim(program);
    Database other(place_.database());
    other.run("BEGIN EXCLUSIVE");
    // The list of the distinte, the trees and the details are all read, and all in vain.
    program.must(R"({"do":"answer","values":[4,3]})");
    const auto all = errors(program.select(origList, QStringLiteral("C2")));
    EXPECT_GE(all.size(), 2U);
    for (const auto& said : all)
        EXPECT_TRUE(contains(said, "Lo occupa «test_e2e» (processo ")) << said;
    other.run("ROLLBACK");
    EXPECT_TRUE(errors(program.select(origList, QStringLiteral("C1"))).empty());
    EXPECT_EQ(program.finish(), 0);
}
