#include "host/services/HostWorkflowState.h"

#include "TestSession.h"
#include "host/services/ErrorReport.h"

#include <gtest/gtest.h>

#include <regex>

namespace {

using contract::Statement;
using host::HostWorkflowState;
using host::StateStore;

const std::string one = "11111111-1111-4111-8111-111111111111";
const std::string two = "22222222-2222-4222-8222-222222222222";

void fillStates(platform::sqlite::Connection& connection) {
    connection.Execute(Statement("INSERT INTO WF02_STATI (WF02_ID, WF02_DESCR) VALUES (7, 'Chiuso')"));
    connection.Execute(Statement("INSERT INTO WF02_STATI (WF02_ID, WF02_DESCR) VALUES (3, 'Aperto')"));
}

class Workflow : public testing::Test {
protected:
    host_test::ContextOnDatabase database{fillStates};
    HostWorkflowState workflow{database.context};
};

TEST_F(Workflow, MakesIdentifiersOf36CharactersThatDiffer) {
    const std::string guid = workflow.GetNewGUID();
    EXPECT_TRUE(std::regex_match(guid, std::regex("[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}"))) << guid;
    EXPECT_NE(guid, workflow.GetNewGUID());
}

TEST_F(Workflow, ALinkThatNobodyGaveAStateHasNone) {
    EXPECT_EQ("", workflow.GetDescrizioneStatoFromGUID(one));
    EXPECT_EQ("", workflow.GetDescrizioneStatoFromGUID(""));
}

TEST_F(Workflow, TheDefaultStateIsTheOneOfTheLowestNumber) {
    const std::string guid = workflow.GetNewGUID();
    workflow.GetDefaultFlussoStato();
    workflow.ConfermaStato();
    EXPECT_EQ("Aperto", workflow.GetDescrizioneStatoFromGUID(guid));
}

TEST_F(Workflow, ConfirmsForTheLinkAskedForLast) {
    const std::string fresh = workflow.GetNewGUID();
    workflow.GetDescrizioneStatoFromGUID(one);
    workflow.GetDefaultFlussoStato();
    workflow.ConfermaStato();
    EXPECT_EQ("Aperto", workflow.GetDescrizioneStatoFromGUID(one));
    EXPECT_EQ("", workflow.GetDescrizioneStatoFromGUID(fresh));
}

TEST_F(Workflow, DescriptionsForAListLeaveTheLinkThatIsWorkedOn) {
    workflow.GetDescrizioneStatoFromGUID(one);
    EXPECT_EQ((std::vector<std::string>{"", ""}), workflow.descriptions({two, ""}));
    workflow.GetDefaultFlussoStato();
    workflow.ConfermaStato();
    EXPECT_EQ((std::vector<std::string>{"", "Aperto"}), workflow.descriptions({two, one}));
}

TEST_F(Workflow, ConfirmsNothingWithoutASelection) {
    workflow.GetDescrizioneStatoFromGUID(one);
    workflow.ConfermaStato();
    EXPECT_EQ("", workflow.GetDescrizioneStatoFromGUID(one));
}

TEST_F(Workflow, SelectsNothingWhereThereAreNoStates) {
    const host_test::ContextOnDatabase empty;
    HostWorkflowState none(empty.context);
    none.GetDescrizioneStatoFromGUID(one);
    none.GetDefaultFlussoStato();
    none.ConfermaStato();
    EXPECT_FALSE(empty.context->states->state(one).has_value());
}

TEST_F(Workflow, GivesTheStateOfOneLinkToAnother) {
    database.context->states->setState(one, 7, "ROSSI");
    workflow.DuplicaStato(one, two);
    EXPECT_EQ("Chiuso", workflow.GetDescrizioneStatoFromGUID(two));
    EXPECT_EQ("Chiuso", workflow.GetDescrizioneStatoFromGUID(one));
}

TEST_F(Workflow, ALinkWithoutStateHasNoneToGive) {
    database.context->states->setState(two, 7, "ROSSI");
    workflow.DuplicaStato(one, two);
    EXPECT_EQ("Chiuso", workflow.GetDescrizioneStatoFromGUID(two));
}

TEST_F(Workflow, AStateTheUserChoseIsConfirmedOnce) {
    workflow.GetDescrizioneStatoFromGUID(one);
    workflow.select(7);
    workflow.ConfermaStato();
    workflow.GetDescrizioneStatoFromGUID(two);
    workflow.ConfermaStato();
    EXPECT_EQ("Chiuso", workflow.GetDescrizioneStatoFromGUID(one));
    EXPECT_EQ("", workflow.GetDescrizioneStatoFromGUID(two));
}

TEST_F(Workflow, ItsOperationsStandInTheJournal) {
    workflow.DuplicaStato(one, two);
    workflow.descriptions({one});
    const QJsonArray calls = database.context->journal.take();
    ASSERT_EQ(1, calls.size()) << "lists are read for the screen only";
    EXPECT_EQ((QJsonObject{{"service", "WorkflowState"},
                           {"operation", "DuplicaStato"},
                           {"from", QString::fromStdString(one)},
                           {"to", QString::fromStdString(two)}}),
              calls[0].toObject());
}

TEST_F(Workflow, NothingOfItIsTraced) {
    database.context->trace.setRecording(true);
    workflow.GetDescrizioneStatoFromGUID(one);
    workflow.GetDefaultFlussoStato();
    workflow.ConfermaStato();
    EXPECT_TRUE(database.context->trace.take().isEmpty());
}

TEST_F(Workflow, ACommitOfStatesThatFailsIsTriedAgainOrGivenUp) {
    int tries = 0;
    const auto commit = [&] {
        if (++tries < 3)
            throw contract::RuntimeError(contract::RuntimeError::database, "disco pieno");
    };
    host::keepStates(database.context, commit);
    EXPECT_EQ(1, tries) << "unanswered, it is not tried again";
    tries = 0;
    database.context->dialogs.queueAnswers({4, 4, 3});
    host::keepStates(database.context, commit);
    EXPECT_EQ(3, tries);
    EXPECT_NE(std::string::npos, host_test::contentOf(database.folder.file("errori.log")).find("disco pieno"));
    tries = 0;
    database.context->states.reset();
    host::keepStates(database.context, commit);
    host::keepStates({}, commit);
    EXPECT_EQ(2, tries) << "nobody is left to ask";
}

class States : public testing::Test {
protected:
    States() { platform::sqlite::createDatabase(file, host::stateSchema()); }
    const host_test::Folder folder;
    const std::string file = folder.file("a.sqlite");
};

TEST_F(States, OutliveTheProgramAndKeepTheirHistory) {
    {
        StateStore states(file);
        states.setState(one, 1, "ROSSI");
        states.setState(one, 2, "BIANCHI");
        states.setState(two, 2, "BIANCHI", one);
    }
    StateStore states(file);
    EXPECT_EQ(2, states.state(one));
    EXPECT_EQ(2U, states.changes(one));
    EXPECT_EQ(1U, states.changes(two));
}

TEST_F(States, DoNotMindHowAnIdentifierIsWritten) {
    StateStore states(file);
    states.setState("abcdefab-0000-4000-8000-00000000000a", 4, "ROSSI");
    EXPECT_EQ(4, states.state(" ABCDEFAB-0000-4000-8000-00000000000A "));
}

TEST_F(States, OfOneCommandAreCommittedTogether) {
    std::vector<std::function<void()>> later;
    StateStore states(file, [&](std::function<void()> action) { later.push_back(std::move(action)); });
    states.setState(one, 1, "ROSSI");
    states.setState(two, 1, "ROSSI");
    ASSERT_EQ(1U, later.size());
    EXPECT_EQ(1, states.state(two)) << "seen at once by the one who wrote it";
    EXPECT_FALSE(StateStore(file).state(two).has_value());
    later.front()();
    EXPECT_EQ(1, StateStore(file).state(two));
    states.setState(two, 5, "ROSSI");
    EXPECT_EQ(2U, later.size());
}

TEST_F(States, WhatWaitsIsWrittenAtTheEnd) {
    std::function<void()> later;
    {
        StateStore states(file, [&](std::function<void()> action) { later = std::move(action); });
        states.setState(one, 1, "ROSSI");
    }
    EXPECT_EQ(1, StateStore(file).state(one));
    later(); // after the store has gone: nothing to do, and no harm
}

TEST(WorkflowStateOnServer, IsWrittenWithItsHistoryOrNotAtAll) {
    std::string today = contract::Date::today().iso();
    std::erase(today, '-');
    EXPECT_EQ(
        "SET XACT_ABORT ON; BEGIN TRANSACTION; UPDATE STATI_LEGAME SET STATI_ID_WF02 = 20 WHERE STATI_GUID = 'A1'; "
        "IF @@ROWCOUNT = 0 INSERT INTO STATI_LEGAME (STATI_GUID, STATI_ID_WF02) VALUES ('A1', 20); "
        "INSERT INTO STATI_STORIA (STORIA_GUID, STORIA_ID_WF02, STORIA_GUIDORIG, STORIA_DATA, STORIA_UTENTE) "
        "VALUES ('A1', 20, 'B2', '" +
            today + "', N'D''È'); COMMIT TRANSACTION",
        host::StateStore::serverText("A1", 20, "D'È", "B2"));
    EXPECT_NE(std::string::npos, host::StateStore::serverText("A1", 20, "X", "").find("('A1', 20, NULL, '"));
}

} // namespace
