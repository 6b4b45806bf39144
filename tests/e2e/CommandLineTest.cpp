#include "e2e/Database.h"
#include "e2e/Program.h"
#include "e2e/Texts.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>

#include <gtest/gtest.h>

using namespace e2e;

namespace {

class CommandLine : public ::testing::Test {
protected:
    /// The status, after checking that exactly one line stands on standard error and none on standard output.
    int refused(const QStringList& arguments) {
        const auto outcome = place_.run(arguments);
        EXPECT_EQ(1, outcome.err.count(QLatin1Char('\n')))
            << arguments.join(QLatin1Char(' ')).toStdString() << ": " << outcome.err.toStdString();
        EXPECT_TRUE(outcome.out.isEmpty()) << outcome.out.toStdString();
        return outcome.status;
    }

    QString script(const QByteArray& lines) { return place_.write(QStringLiteral("s.jsonl"), lines); }

    Workplace place_{Workplace::Where::file};
};

TEST_F(CommandLine, TellsVersionAndHelp) {
    for (const char* option : {"--version", "--help"}) {
        const auto outcome = place_.run({QLatin1String(option)});
        EXPECT_EQ(0, outcome.status) << option;
        EXPECT_FALSE(outcome.out.isEmpty()) << option;
        EXPECT_EQ("", outcome.err.toStdString());
    }
}

TEST_F(CommandLine, RefusesWhatItDoesNotKnow) {
    EXPECT_EQ(2, refused({"--nothing"}));
    EXPECT_EQ(2, refused({"word"}));
    EXPECT_EQ(2, refused({"--database"}));
    EXPECT_EQ(2, refused({"--database", "a", "--odbc", "b"}));
    EXPECT_EQ(2, refused({"--database", "a", "--company", "x", "--script", "-"}));
    EXPECT_EQ(2, refused({"--database", place_.database(), "--create-demo", "--demo-size", "many"}));
    EXPECT_FALSE(QFileInfo::exists(place_.database()));
}

TEST_F(CommandLine, AnUnreadableScriptOpensNothing) {
    EXPECT_EQ(2, refused({"--database", place_.database(), "--script", place_.path("missing.jsonl")}));
    EXPECT_EQ(2, refused({"--database", place_.database(), "--script", place_.path("")}));
    EXPECT_FALSE(QFileInfo::exists(place_.database()));
}

TEST_F(CommandLine, AStandardInputThatCannotBeReadIsNoScript) {
    place_.makeForest();
    for (const char* input : {"<&-", "</"}) {
        QProcess process;
        place_.prepare(process);
        const QString program = process.program();
        process.setProgram(QStringLiteral("/bin/sh"));
        process.setArguments({"-c", QStringLiteral("exec \"$0\" \"$@\" ") + QLatin1String(input), program, "--database",
                              place_.database(), "--script", "-"});
        process.start();
        ASSERT_TRUE(process.waitForFinished()) << input;
        EXPECT_EQ(2, process.exitCode()) << input;
        EXPECT_EQ(1, process.readAllStandardError().count('\n')) << input;
    }
}

TEST_F(CommandLine, RepliesThatCannotBeWrittenAreTold) {
    place_.makeForest();
    QProcess process;
    place_.prepare(process);
    process.setArguments({"--database", place_.database(), "--script", script("{\"do\":\"open\"}\n")});
    process.setStandardOutputFile(QStringLiteral("/dev/full"));
    process.start();
    ASSERT_TRUE(process.waitForFinished());
    EXPECT_EQ(1, process.exitCode());
    EXPECT_EQ(1, process.readAllStandardError().count('\n'));
}

TEST_F(CommandLine, ADisplayThatDoesNotAnswerIsNone) {
    place_.makeForest();
    place_.setVariable(QStringLiteral("DISPLAY"), QStringLiteral(":4711"));
    const auto outcome = place_.runScript("{\"do\":\"open\"}\n");
    EXPECT_EQ(0, outcome.status) << outcome.err.toStdString();
    EXPECT_EQ("", outcome.err.toStdString());
    EXPECT_EQ(2, refused({"--database", place_.database()}));
    place_.setVariable(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("nessuna"));
    EXPECT_EQ(2, refused({"--database", place_.database(), "--script", script("{\"do\":\"open\"}\n")}));
}

TEST_F(CommandLine, WithoutADisplayThereIsNoWindow) {
    place_.makeForest();
    EXPECT_EQ(2, refused({"--database", place_.database()}));
}

TEST_F(CommandLine, CreatesTablesOnce) {
    const QStringList create{"--database", place_.database(), "--create"};
    EXPECT_EQ(0, place_.run(create).status);
    EXPECT_EQ("0", Database(place_.database()).value("SELECT COUNT(*) FROM QZ02_DISTINTA"));
    EXPECT_EQ(1, refused(create));
    EXPECT_EQ(1, refused({"--database", place_.database(), "--create-demo"}));
    EXPECT_EQ("0", Database(place_.database()).value("SELECT COUNT(*) FROM QZ02_DISTINTA"));
}

TEST_F(CommandLine, CreatesTablesInAnEmptyFile) {
    place_.write(QStringLiteral("prova.sqlite"), "");
    EXPECT_EQ(0, place_.run({"--database", place_.database(), "--create"}).status);
    EXPECT_EQ(0, place_.run({"--database", place_.database(), "--script", script("{\"do\":\"open\"}\n")}).status);
}

TEST_F(CommandLine, MakesDemoDataOfAnySize) {
    ASSERT_EQ(0, place_.run({"--database", place_.database(), "--create-demo", "--demo-size", "300"}).status);
    Database database(place_.database());
    EXPECT_EQ("300", database.value("SELECT MAX(n) FROM (SELECT COUNT(*) n FROM QZ02_DISTINTA GROUP BY QZ02_ID_QZ01)"));
    EXPECT_EQ("2", database.value("SELECT COUNT(DISTINCT QZ01_DITTA_CG18) FROM QZ01_TIPODISTINTA"));
}

TEST_F(CommandLine, ADatabaseMustBeThereAndBeOne) {
    const QString lines = script("{\"do\":\"open\"}\n");
    EXPECT_EQ(3, refused({"--database", place_.path("missing.sqlite"), "--script", lines}));
    EXPECT_FALSE(QFileInfo::exists(place_.path("missing.sqlite")));
    place_.write(QStringLiteral("text.sqlite"), QByteArray("This is no database at all.\n").repeated(100));
    EXPECT_EQ(3, refused({"--database", place_.path("text.sqlite"), "--script", lines}));
    EXPECT_EQ(3, refused({"--database", place_.path(""), "--script", lines}));
}

TEST_F(CommandLine, ADatabaseMustHaveTheTables) {
    place_.makeForest();
    Database(place_.database()).run("DROP TABLE QZ13_PREMI");
    const auto outcome = place_.run({"--database", place_.database(), "--script", script("{\"do\":\"open\"}\n")});
    EXPECT_EQ(3, outcome.status);
    EXPECT_TRUE(contains(outcome.err.toStdString(), "QZ13_PREMI")) << outcome.err.toStdString();
}

TEST_F(CommandLine, ATruncatedDatabaseIsToldNotRepaired) {
    place_.makeForest();
    QFile file(place_.database());
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.resize(2000));
    file.close();
    EXPECT_EQ(3, refused({"--database", place_.database(), "--script", script("{\"do\":\"open\"}\n")}));
    EXPECT_EQ(2000, QFileInfo(place_.database()).size());
}

TEST_F(CommandLine, WorksForTheCompanyUserAndGroupGiven) {
    place_.makeForest();
    Dialogue program(place_, {"--company", "2", "--user", "MARIO"});
    EXPECT_EQ("P1", text(program.read(origList).value(QLatin1String("selected"))));
    EXPECT_FALSE(
        beginningWith(program.trace(), {"SELECT *  FROM QZ01_TIPODISTINTA WHERE QZ01_DITTA_CG18 = 2 "}).empty());
}

TEST_F(CommandLine, TracesIntoAFile) {
    place_.makeForest();
    const QString file = place_.path(QStringLiteral("trace.txt"));
    std::vector<std::string> traced;
    {
        Dialogue program(place_, {"--trace", file});
        program.select(destList, QStringLiteral("C2"));
        program.focus(origTree, 4);
        program.focus(destTree, 25);
        program.must(R"({"do":"answer","values":[6]})");
        program.click(QStringLiteral("CMD_SPOSTASTRU"));
        traced = program.wholeTrace();
    }
    QFile written(file);
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    std::vector<std::string> lines;
    for (const QByteArray& line : written.readAll().split('\n')) {
        if (!line.isEmpty())
            lines.push_back(text(QJsonDocument::fromJson("[" + line + "]").array().at(0)));
    }
    EXPECT_FALSE(stretch(lines, "BeginTrans", "CommitTrans").empty());
    EXPECT_EQ(traced, lines);
}

TEST_F(CommandLine, ATraceOrALogThatCanNotBeWrittenIsToldAtTheEnd) {
    place_.makeForest();
    const QStringList files{"--trace", "/dev/full", "--log", place_.path(QString())};
    const auto outcome = place_.runScript(R"({"do":"open"})", files);
    EXPECT_EQ(0, outcome.status);
    const std::string err = outcome.err.toStdString();
    EXPECT_EQ(2, outcome.err.count(QStringLiteral("distinte: "))) << err;
    EXPECT_TRUE(contains(err, "Il file di traccia \"/dev/full\" non si può più scrivere: non c'è più spazio")) << err;
    EXPECT_TRUE(contains(err, "Il registro degli errori \"" + place_.path(QString()).toStdString())) << err;
}

TEST_F(CommandLine, RecordsErrorsInItsLog) {
    place_.makeForest();
    const QString file = place_.path(QStringLiteral("errors.log"));
    {
        Dialogue program(place_, {"--log", file});
        program.must(R"({"do":"menu","control":"MenuCercaDest","key":"Codice"})"); // a column that is not there
    }
    QFile written(file);
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    EXPECT_EQ(1, written.readAll().count('\n'));
}

} // namespace
