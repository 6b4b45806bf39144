// The whole program over an ODBC connection: through the SQLite driver, whose file an outside program can look into.

#include "e2e/Database.h"
#include "e2e/Program.h"
#include "e2e/Texts.h"
#include "e2e/Works.h"
#include "odbc/OdbcFixture.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>

#include <gtest/gtest.h>

using namespace e2e;

namespace {

class Odbc : public ::testing::Test {
protected:
    void SetUp() override {
        const auto driver = odbc_test::sqliteDriver();
        if (!driver)
            GTEST_SKIP() << "libsqliteodbc is not installed";
        driver_ = QString::fromStdString(*driver);
    }

    QString string(const QString& more = {}) const {
        return QStringLiteral("Driver=%1;Database=%2;Timeout=2000%3").arg(driver_, place_.database(), more);
    }
    QStringList over(const QStringList& arguments) const {
        return QStringList{QStringLiteral("--odbc"), string()} + arguments;
    }
    QString script(const QByteArray& lines) { return place_.write(QStringLiteral("s.jsonl"), lines); }

    Workplace place_{Workplace::Where::file};
    QString driver_;
};

const QByteArray move = R"({"do":"open"}
{"do":"select","control":"TRW_DISTINTEORIG","key":"C1"}
{"do":"select","control":"TRW_DISTINTEDEST","key":"C2"}
{"do":"focus","control":"TRW_ELEMDISTINTAORIG","id":4}
{"do":"focus","control":"TRW_ELEMDISTINTADEST","id":25}
{"do":"answer","values":[6]}
{"do":"click","control":"CMD_SPOSTASTRU"}
{"do":"trace"}
)";

TEST_F(Odbc, MovesANodeInAFileMadeByTheEmbeddedDatabase) {
    place_.makeForest();
    const auto outcome = place_.run(over({"--script", script(move)}));
    EXPECT_EQ(0, outcome.status) << outcome.err.toStdString() << outcome.out.toStdString();
    Database database(place_.database());
    EXPECT_EQ("25", database.value("SELECT QZ02_IDPARENT_QZ02 FROM QZ02_DISTINTA WHERE QZ02_ID = 4"));
    EXPECT_EQ("2", database.value("SELECT QZ02_ID_QZ01 FROM QZ02_DISTINTA WHERE QZ02_ID = 4"));
    // What the component composed stands in the trace, not what the driver got.
    EXPECT_TRUE(outcome.out.contains("CONVERT(DateTime,'"));
}

/// The lines of a script's answer, the statements of the registry left out: they bear the time of day.
std::string withoutRegistry(const QByteArray& answers) {
    std::string kept;
    for (const QByteArray& line : answers.split('\n')) {
        QJsonObject reply = QJsonDocument::fromJson(line).object();
        const QString statements = QStringLiteral("statements");
        if (reply.contains(statements)) {
            QJsonArray others;
            const QJsonArray sent = reply.value(statements).toArray();
            for (const auto& statement : sent)
                if (!isOfRegistry(text(statement)))
                    others.append(statement);
            reply.insert(statements, others);
        }
        kept += json(reply) + '\n';
    }
    return kept;
}

TEST_F(Odbc, SendsTheSameStatementsAsTheEmbeddedDatabase) {
    place_.makeForest();
    ASSERT_TRUE(QFile::copy(place_.database(), place_.path("copia.sqlite")));
    const auto one = place_.run({"--database", place_.path("copia.sqlite"), "--script", script(move)});
    const auto other = place_.run(over({"--script", script(move)}));
    EXPECT_TRUE(one.out.contains("BeginTrans"));
    EXPECT_EQ(withoutRegistry(one.out), withoutRegistry(other.out));
}

TEST_F(Odbc, TheEnvironmentNamesTheDatabase) {
    place_.makeForest();
    place_.setVariable(QStringLiteral("DISTINTE_ODBC"), string());
    EXPECT_EQ(0, place_.run({"--script", script(move)}).status);
    EXPECT_EQ("25",
              Database(place_.database()).value("SELECT QZ02_IDPARENT_QZ02 FROM QZ02_DISTINTA WHERE QZ02_ID = 4"));
}

TEST_F(Odbc, CreatesTablesOnce) {
    EXPECT_EQ(0, place_.run(over({"--create"})).status);
    EXPECT_EQ("0", Database(place_.database()).value("SELECT COUNT(*) FROM QZ02_DISTINTA"));
    for (const char* option : {"--create", "--create-demo"}) {
        const auto again = place_.run(over({QLatin1String(option)}));
        EXPECT_EQ(1, again.status) << option;
        EXPECT_EQ(1, again.err.count(QLatin1Char('\n'))) << again.err.toStdString();
    }
    EXPECT_EQ(0, place_.run(over({"--script", script("{\"do\":\"open\"}\n")})).status);
}

TEST_F(Odbc, MakesTheSameDemoDataAsTheEmbeddedDatabase) {
    ASSERT_EQ(0, place_.run(over({"--create-demo", "--demo-size", "300"})).status);
    ASSERT_EQ(0, place_.run({"--database", place_.path("altra.sqlite"), "--create-demo", "--demo-size", "300"}).status);
    Database database(place_.database());
    Database other(place_.path("altra.sqlite"));
    EXPECT_EQ(other.nodes(), database.nodes());
    const std::string accounts = "SELECT * FROM CG44_CLIFOR ORDER BY CG44_DITTA_CG18, CG44_TIPOCF, CG44_CLIFOR";
    EXPECT_EQ(other.rows(accounts), database.rows(accounts));
    const std::string states = "SELECT * FROM STATI_LEGAME ORDER BY STATI_GUID";
    EXPECT_EQ(other.rows(states), database.rows(states));
}

TEST_F(Odbc, ADatabaseMustBeThereAndHaveTheTables) {
    const QString open = script("{\"do\":\"open\"}\n");
    const auto empty = place_.run(over({"--script", open}));
    EXPECT_EQ(3, empty.status);
    EXPECT_EQ(1, empty.err.count(QLatin1Char('\n'))) << empty.err.toStdString();
    EXPECT_TRUE(empty.err.contains(QLatin1String("QZ01_TIPODISTINTA"))) << empty.err.toStdString();
    const auto driverless = place_.run({"--odbc", "Driver=NonEsiste;Server=erp;UID=sa;PWD=segreto", "--script", open});
    EXPECT_EQ(3, driverless.status);
    EXPECT_EQ(1, driverless.err.count(QLatin1Char('\n'))) << driverless.err.toStdString();
    EXPECT_FALSE(driverless.err.contains(QLatin1String("segreto"))) << driverless.err.toStdString();
    EXPECT_TRUE(driverless.err.contains(QLatin1String("erp"))) << driverless.err.toStdString();
}

TEST_F(Odbc, NoPasswordStandsInWhatIsWritten) {
    place_.makeForest();
    const QString log = place_.path("errori.log");
    const QString trace = place_.path("traccia.txt");
    const QByteArray lines = R"({"do":"open"}
{"do":"menu","control":"MenuCercaDest","key":"Codice"}
{"do":"class","get":"Connection"}
{"do":"services"}
)";
    const auto outcome = place_.run({"--odbc", string(";UID=sa;PWD={seg;reto};Password=segreto"), "--log", log,
                                     "--trace", trace, "--script", script(lines)});
    EXPECT_EQ(4, outcome.out.count('\n')) << outcome.out.toStdString() << outcome.err.toStdString();
    QByteArray all = outcome.out + outcome.err.toUtf8();
    for (const QString& name : {log, trace}) {
        QFile file(name);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
        all += file.readAll();
    }
    EXPECT_FALSE(all.contains("reto")) << all.toStdString();
}

TEST_F(Odbc, NoPasswordStaysInTheTitleOfTheProcess) {
    place_.makeForest();
    QProcess process;
    place_.prepare(process);
    process.setArguments({"--odbc", string(";UID=sa;PWD={seg;reto};x=y"), "--script", "-"});
    process.start();
    ASSERT_TRUE(process.waitForStarted());
    process.write("{\"do\":\"services\"}\n");
    ASSERT_TRUE(process.waitForReadyRead(30000));
    QFile title(QStringLiteral("/proc/%1/cmdline").arg(process.processId()));
    ASSERT_TRUE(title.open(QIODevice::ReadOnly));
    const QByteArray shown = title.readAll();
    EXPECT_TRUE(shown.contains("--odbc") && shown.contains("UID=sa;PWD=***")) << shown.toStdString();
    EXPECT_FALSE(shown.contains("reto")) << shown.toStdString();
    process.closeWriteChannel();
    EXPECT_TRUE(process.waitForFinished(30000));
    EXPECT_EQ(0, process.exitCode());
}

TEST_F(Odbc, NoPasswordStandsInARefusal) {
    const QString secret = string(";UID=sa;PWD={seg;reto}");
    const QString open = script("{\"do\":\"open\"}\n");
    for (const QStringList& arguments :
         {QStringList{secret}, QStringList{"--database", secret, "--script", open}, QStringList{"--script", secret},
          QStringList{"--company", secret}, over({"--script", open, "--trace", "/manca/" + secret})}) {
        const auto outcome = place_.run(arguments);
        EXPECT_NE(0, outcome.status);
        EXPECT_EQ(1, outcome.err.count(QLatin1Char('\n'))) << outcome.err.toStdString();
        EXPECT_FALSE(outcome.err.contains(QLatin1String("reto"))) << outcome.err.toStdString();
    }
}

TEST_F(Odbc, AFullDiskLeavesTheRowsAndTheProgramUsable) {
    place_.makeForest();
    Database database(place_.database());
    const auto before = database.nodes();
    place_.connectBy(string().toStdString());
    place_.limitFiles(512);
    Dialogue program(place_);
    for (const auto work : {Work::structure, Work::edit, Work::structure}) {
        aim(program, work);
        const auto said = errors(doWork(program, work));
        ASSERT_FALSE(said.empty()) << nameOf(work);
        EXPECT_TRUE(contains(said.front(), "scrittura")) << said.front();
        EXPECT_EQ(database.nodes(), before);
    }
    // Reading goes on.
    EXPECT_TRUE(errors(program.select(origList, QStringLiteral("C2"))).empty());
    EXPECT_FALSE(program.ids(origTree).empty());
    program.must(R"({"do":"close"})");
    EXPECT_EQ(program.finish(), 0) << program.err().toStdString();
}

TEST_F(Odbc, MovesWithValidityAndCarriesTheStateOver) {
    place_.makeForest();
    const QByteArray lines = R"({"do":"open"}
{"do":"select","control":"TRW_DISTINTEDEST","key":"C2"}
{"do":"focus","control":"TRW_ELEMDISTINTAORIG","id":2}
{"do":"focus","control":"TRW_ELEMDISTINTADEST","id":21}
{"do":"when","form":"FRMQZ_DATAFINELEGAME","steps":[{"do":"set","control":"TXT_DATACHIUSURALEGAME","value":"30/06/2024"},{"do":"click","control":"CMD_ESEGUI"}]}
{"do":"answer","values":[6]}
{"do":"click","control":"CMD_SPOSTAVALID"}
)";
    Database(place_.database())
        .run("INSERT INTO STATI_LEGAME (STATI_GUID, STATI_ID_WF02) VALUES ('22222222-0000-0000-0000-000000000002', "
             "20)");
    const auto outcome = place_.run(over({"--script", script(lines)}));
    EXPECT_EQ(0, outcome.status) << outcome.err.toStdString() << outcome.out.toStdString();
    Database database(place_.database());
    EXPECT_EQ("2024-06-30", database.value("SELECT QZ02_DATAFINEVAL FROM QZ02_DISTINTA WHERE QZ02_ID = 2"));
    const std::string copies = " FROM QZ02_DISTINTA WHERE QZ02_ID_QZ01 = 2 AND QZ02_CLIFOR_CG44 = 110";
    EXPECT_EQ("2024-07-01", database.value("SELECT QZ02_DATAINIZIOVAL" + copies));
    EXPECT_EQ("20", database.value("SELECT STATI_ID_WF02 FROM STATI_LEGAME WHERE STATI_GUID = '" +
                                   database.value("SELECT QZ02_GUID" + copies) + "'"));
}

} // namespace
