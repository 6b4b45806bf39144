#include "host/database/TracingConnection.h"

#include "TestFolder.h"
#include "contract/RuntimeError.h"
#include "contract/Snapshot.h"
#include "host/services/ServiceJournal.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace {

using contract::Statement;
using host::TraceLog;
using host::TracingConnection;

/// Remembers what it was asked, and fails on demand.
class Inner : public contract::Connection {
public:
    explicit Inner(bool& fails) : fails_(fails) {}
    std::string ConnectionString() const override { return "interna"; }
    void SetConnectionString(std::string_view) override {}
    void Open() override { open_ = true; }
    void Close() noexcept override { open_ = false; }
    bool IsOpen() const override { return open_; }
    std::int64_t Execute(const Statement&) override {
        check();
        return 3;
    }
    void Read(const Statement&, contract::Snapshot&) override { check(); }
    void BeginTrans() override { check(); }
    void CommitTrans() override { check(); }
    void RollbackTrans() override {}
    bool InTransaction() const override { return false; }
    const contract::ErrorList& Errors() const override { return errors_; }

private:
    void check() const {
        if (fails_)
            throw contract::RuntimeError(contract::RuntimeError::database, "guasto");
    }
    bool& fails_;
    bool open_ = false;
    contract::ErrorList errors_{{"HY000", 7, "guasto", contract::ErrorCategory::other}};
};

class Tracing : public testing::Test {
protected:
    bool fails = false;
    TraceLog trace;
    TracingConnection connection{std::make_unique<Inner>(fails), trace};

    static Statement byName(std::string_view name) {
        Statement statement("SELECT * FROM T WHERE N = '");
        statement.text(name) << "' ";
        return statement;
    }
};

TEST_F(Tracing, HandsOverTheExactTextsInOrder) {
    trace.setRecording(true);
    contract::Snapshot rows;
    connection.BeginTrans();
    connection.Read(byName("D'Angelo"), rows);
    EXPECT_EQ(3, connection.Execute(Statement("UPDATE  T ")));
    connection.CommitTrans();
    connection.BeginTrans();
    connection.RollbackTrans();
    EXPECT_EQ((QStringList{"BeginTrans", "SELECT * FROM T WHERE N = 'D''Angelo' ", "UPDATE  T ", "CommitTrans",
                           "BeginTrans", "RollbackTrans"}),
              trace.take());
    EXPECT_TRUE(trace.take().isEmpty());
}

TEST_F(Tracing, KeepsTheLastHundredThousandAndCountsTheOthers) {
    trace.setRecording(true);
    for (int i = 0; i < 100'003; ++i)
        trace.add(std::to_string(i));
    const auto kept = trace.take();
    ASSERT_EQ(100'000, kept.size());
    EXPECT_EQ("3", kept.front().toStdString());
    EXPECT_EQ("100002", kept.back().toStdString());
    EXPECT_EQ(3U, trace.missing());
    trace.add("dopo");
    EXPECT_EQ(QStringList{"dopo"}, trace.take());
    EXPECT_EQ(0U, trace.missing());
}

TEST(ServiceCalls, TheLastHundredThousandAreKeptAndTheOthersCounted) {
    host::ServiceJournal journal;
    journal.setRecording(true);
    for (int i = 0; i < 100'002; ++i)
        journal.record(QStringLiteral("S"), QStringLiteral("O"), {{QStringLiteral("n"), i}});
    const auto kept = journal.take();
    ASSERT_EQ(100'000, kept.size());
    EXPECT_EQ(2, kept.first()[QLatin1String("n")].toInt());
    EXPECT_EQ(2U, journal.missing());
    EXPECT_TRUE(journal.take().isEmpty());
    EXPECT_EQ(0U, journal.missing());
}

TEST_F(Tracing, KeepsAStatementThatFails) {
    trace.setRecording(true);
    fails = true;
    EXPECT_THROW(connection.Execute(Statement("DELETE FROM T")), contract::RuntimeError);
    EXPECT_EQ(QStringList{"DELETE FROM T"}, trace.take());
    EXPECT_EQ("guasto", connection.Errors().front().description);
}

TEST_F(Tracing, CountsStatementsEvenWhenNobodyReadsThem) {
    contract::Snapshot rows;
    connection.Read(byName("A"), rows);
    connection.Execute(Statement("UPDATE T"));
    connection.BeginTrans();
    EXPECT_EQ(2U, trace.count());
    EXPECT_TRUE(trace.take().isEmpty());
}

TEST_F(Tracing, TellsAfterEachStatement) {
    int told = 0;
    trace.afterFinished = [&] { ++told; };
    connection.Execute(Statement("UPDATE T"));
    EXPECT_EQ(1, told);
    fails = true;
    EXPECT_THROW(connection.Execute(Statement("UPDATE T")), contract::RuntimeError);
    EXPECT_EQ(1, told);
}

TEST_F(Tracing, AppendsOneJsonStringALineToAFile) {
    const host_test::Folder folder;
    const std::string file = folder.file("traccia.jsonl");
    host_test::write(file, "\"prima\"\n");
    trace.openFile(QString::fromStdString(file));
    connection.BeginTrans();
    Statement statement("SELECT \"a\"\n+ '");
    statement.text("Società") << "'";
    connection.Execute(statement);
    // Flushed line by line: who watches the file sees what is under way.
    EXPECT_EQ("\"prima\"\n\"BeginTrans\"\n\"SELECT \\\"a\\\"\\n+ 'Società'\"\n", host_test::contentOf(file));
}

TEST_F(Tracing, AFileThatFillsUpEndsThereAndThatIsSaidOnce) {
    QStringList reasons;
    trace.cut = [&](const QString& reason) { reasons.append(reason); };
    trace.openFile(QStringLiteral("/dev/full"));
    EXPECT_TRUE(reasons.isEmpty());
    connection.BeginTrans();
    connection.CommitTrans();
    EXPECT_EQ(QStringList{QStringLiteral("Il file di traccia \"/dev/full\" non si può più scrivere: non c'è più spazio "
                                         "sul disco. Le istruzioni che seguono non vi sono.")},
              reasons);
}

TEST_F(Tracing, SaysWhichFileCanNotBeWritten) {
    try {
        trace.openFile(QStringLiteral("/non/esiste/traccia"));
        FAIL();
    } catch (const contract::RuntimeError& error) {
        EXPECT_NE(std::string::npos, error.description().find("il percorso non esiste")) << error.description();
        EXPECT_NE(std::string::npos, error.description().find("/non/esiste/traccia"));
    }
}

TEST_F(Tracing, PassesTheRestThrough) {
    EXPECT_FALSE(connection.IsOpen());
    connection.Open();
    EXPECT_TRUE(connection.IsOpen());
    EXPECT_EQ("interna", connection.ConnectionString());
    connection.Close();
    EXPECT_FALSE(connection.IsOpen());
}

} // namespace
