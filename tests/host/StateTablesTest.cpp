// The host's states in the database of the links: one transaction with them, and taken in from where they stood before.

#include "TestSession.h"
#include "contract/RuntimeError.h"
#include "contract/Snapshot.h"
#include "host/database/DatabaseAccess.h"
#include "host/services/HostServices.h"
#include "host/services/HostWorkflowState.h"

#include <gtest/gtest.h>

namespace {

using contract::Statement;
using host::StateStore;
using platform::sqlite::Connection;

const std::string one = "11111111-1111-4111-8111-111111111111";
const std::string two = "22222222-2222-4222-8222-222222222222";

std::int64_t count(const std::string& file, contract::Fragment table) {
    Connection connection("embedded:" + file);
    connection.Open();
    contract::Snapshot rows;
    Statement text("SELECT Count(*) FROM ");
    connection.Read(text << table, rows);
    return rows.column(0).integer(0).value_or(-1);
}

/// As a session has it: the component's connection, and a store that knows of it.
class StatesOfAMove : public testing::Test {
protected:
    StatesOfAMove() {
        auto& context = *database.context;
        context.states = std::make_unique<StateStore>(
            database.file, [this](std::function<void()> action) { later.push_back(std::move(action)); },
            [&context] { return context.formConnections.inTransaction(); });
        form = host::HostConnectionProvider(database.context).newConnection();
        form->Open();
        context.trace.setRecording(true);
    }

    std::int64_t rows() { return count(database.file, "QZ02_DISTINTA"); }
    std::int64_t states() { return count(database.file, "STATI_LEGAME"); }
    std::int64_t history() { return count(database.file, "STATI_STORIA"); }
    void insertRow() { form->Execute(Statement("INSERT INTO QZ02_DISTINTA (QZ02_ID_QZ01) VALUES (1)")); }

    host_test::ContextOnDatabase database;
    std::vector<std::function<void()>> later;
    std::shared_ptr<contract::Connection> form;
};

TEST_F(StatesOfAMove, AreKeptWithItsRows) {
    form->BeginTrans();
    insertRow();
    database.context->states->setState(one, 7, "ROSSI");
    EXPECT_EQ(7, database.context->states->state(one)) << "seen within the move";
    EXPECT_EQ(0, states());
    form->CommitTrans();
    EXPECT_TRUE(later.empty()) << "nothing waits";
    EXPECT_EQ(1, rows());
    EXPECT_EQ(1, states());
    EXPECT_EQ(1, history());
    EXPECT_EQ((QStringList{"BeginTrans", "INSERT INTO QZ02_DISTINTA (QZ02_ID_QZ01) VALUES (1)", "CommitTrans"}),
              database.context->trace.take());
}

TEST_F(StatesOfAMove, AreTakenBackWithItsRows) {
    database.context->states->setState(one, 3, "ROSSI");
    form->BeginTrans();
    EXPECT_EQ(1, states()) << "what waited is committed before a move begins";
    insertRow();
    database.context->states->setState(one, 7, "ROSSI");
    database.context->states->setState(two, 7, "ROSSI", one);
    form->RollbackTrans();
    EXPECT_EQ(0, rows());
    EXPECT_EQ(1, states());
    EXPECT_EQ(1, history());
    EXPECT_EQ(3, database.context->states->state(one));
}

TEST_F(StatesOfAMove, OutsideOfOneDoNotKeepTheFormWaiting) {
    database.context->states->setState(one, 3, "ROSSI");
    ASSERT_EQ(1U, later.size());
    insertRow(); // would wait for the host's own transaction for ever
    EXPECT_EQ(1, states());
    later.front()();
    EXPECT_EQ(1, history());
}

TEST_F(StatesOfAMove, ThatCanNotBeWrittenEndTheMove) {
    form->BeginTrans();
    insertRow();
    Connection other("embedded:" + database.file);
    auto* raw = database.context->formConnections.inTransaction();
    dynamic_cast<Connection&>(*raw).runNative("DROP TABLE STATI_STORIA");
    EXPECT_THROW(database.context->states->setState(one, 7, "ROSSI"), contract::RuntimeError);
    form->RollbackTrans();
    EXPECT_EQ(0, rows());
    EXPECT_EQ(0, states());
}

TEST_F(StatesOfAMove, AreWrittenAgainWhereTheDatabaseTookThemBack) {
    auto& store = *database.context->states;
    store.setState(one, 3, "ROSSI");
    store.setState(two, 3, "ROSSI");
    Connection reader("embedded:" + database.file);
    reader.Open();
    // A reader keeps the commit from being made; whatever happened to the transaction, trying again must write.
    reader.runNative("BEGIN; SELECT Count(*) FROM STATI_LEGAME");
    EXPECT_THROW(store.commit(), contract::RuntimeError);
    reader.runNative("COMMIT");
    store.commit();
    EXPECT_EQ(2, states());
    EXPECT_EQ(2, history());
}

TEST_F(StatesOfAMove, GivenUpAreNotWrittenLater) {
    auto& store = *database.context->states;
    store.setState(one, 3, "ROSSI");
    store.giveUp();
    store.setState(two, 3, "ROSSI");
    store.commit();
    EXPECT_EQ(1, states());
    EXPECT_FALSE(store.state(one).has_value());
}

/// An embedded database as an earlier version of the program left it: without the tables, the states in a file beside.
class TakingIn : public testing::Test {
protected:
    TakingIn() {
        platform::sqlite::createDatabase(file, host_test::component().schema());
        makeCompanion(7);
    }

    void makeCompanion(std::int64_t state) {
        platform::sqlite::createDatabase(companion, host::stateSchema());
        StateStore old(companion);
        old.setState(one, state, "ROSSI");
        old.setState(two, state, "ROSSI", one);
    }
    std::unique_ptr<StateStore> open() {
        Connection connection("embedded:" + file);
        connection.Open();
        return host::openStates("embedded:" + file, connection, {}, {});
    }
    bool there(const std::string& ending) const { return std::filesystem::exists(file + ending); }

    host_test::Folder folder;
    const std::string file = folder.file("prova.sqlite");
    const std::string companion = host::stateCompanionOf(file);
};

TEST_F(TakingIn, HappensOnceAndKeepsTheFileUnderAnotherName) {
    EXPECT_EQ(7, open()->state(two));
    EXPECT_FALSE(there(".stati"));
    EXPECT_TRUE(there(".stati.acquisito"));
    EXPECT_EQ(2, count(file, "STATI_LEGAME"));
    EXPECT_EQ(2, count(file, "STATI_STORIA"));
    open()->setState(one, 9, "BIANCHI");
    // Who puts the same file back gives nothing away that was written since.
    std::filesystem::copy(file + ".stati.acquisito", companion);
    EXPECT_EQ(9, open()->state(one));
    EXPECT_EQ(3, count(file, "STATI_STORIA"));
    EXPECT_FALSE(there(".stati"));
    EXPECT_TRUE(there(".stati.acquisito2")) << "and no kept file is replaced";
}

TEST_F(TakingIn, ALinkKeepsTheStateThatItHasInTheDatabase) {
    open()->setState(one, 9, "BIANCHI");
    makeCompanion(5);
    EXPECT_EQ(9, open()->state(one));
    EXPECT_EQ(5U, static_cast<unsigned>(count(file, "STATI_STORIA"))) << "the history has both";
}

TEST_F(TakingIn, WaitsWhereNothingMayBeWrittenAndReadsTheFileMeanwhile) {
    Connection other("embedded:" + file);
    other.Open();
    other.BeginTrans();
    const auto states = std::make_unique<StateStore>(file);
    EXPECT_EQ(7, states->state(one));
    other.RollbackTrans();
    states->setState(one, 9, "BIANCHI");
    EXPECT_EQ(9, states->state(one));
    EXPECT_EQ(7, states->state(two));
    EXPECT_FALSE(there(".stati"));
}

TEST_F(TakingIn, IsWholeOrNotAtAll) {
    {
        Connection broken("embedded:" + file);
        broken.Open();
        broken.runNative("CREATE TABLE STATI_STORIA (STORIA_ID INTEGER PRIMARY KEY)");
    }
    EXPECT_THROW(StateStore(file).prepare(), contract::RuntimeError);
    EXPECT_TRUE(there(".stati"));
    Connection connection("embedded:" + file);
    connection.Open();
    EXPECT_EQ(nullptr, connection.catalog().columns("STATI_LEGAME"));
}

TEST_F(TakingIn, SaysWhatToDoWithAFileThatIsNone) {
    host_test::write(companion, std::string(5000, 'x'));
    try {
        open();
        FAIL() << "opened";
    } catch (const contract::RuntimeError& error) {
        EXPECT_NE(std::string::npos, error.description().find(companion)) << error.description();
        EXPECT_NE(std::string::npos, error.description().find("Spostando il file altrove")) << error.description();
    }
    EXPECT_TRUE(there(".stati"));
}

TEST_F(TakingIn, AnEmptyFileIsNothing) {
    std::filesystem::remove(companion);
    host_test::write(companion, "");
    EXPECT_FALSE(open()->state(one).has_value());
    EXPECT_EQ(0, count(file, "STATI_LEGAME"));
}

TEST_F(TakingIn, AFileOfAnEarlierDatabaseOfThatNameIsLeftOut) {
    const std::string fresh = folder.file("nuovo.sqlite");
    std::filesystem::copy(companion, host::stateCompanionOf(fresh));
    host::createDatabase("embedded:" + fresh, host_test::component().schema(), std::nullopt);
    EXPECT_TRUE(std::filesystem::exists(fresh + ".stati.vecchio"));
    Connection connection("embedded:" + fresh);
    connection.Open();
    EXPECT_FALSE(host::openStates("embedded:" + fresh, connection, {}, {})->state(one).has_value());
}

} // namespace
