#include "host/services/HostServices.h"

#include "TestSession.h"
#include "contract/RuntimeError.h"
#include "contract/Snapshot.h"
#include "host/services/HostGlobal.h"
#include "host/services/ObjectModels.h"

#include <QJsonDocument>

#include <gtest/gtest.h>

namespace {

namespace message = contract::message;
using contract::ErrorCategory;
using contract::RuntimeError;
using host::RefuseClose;
using host::ShownMessage;

class Services : public testing::Test {
protected:
    host_test::ContextOnDatabase database;
    std::shared_ptr<host::HostContext> context = database.context;
    host::HostGlobal global{context, nullptr};

    QJsonObject onlyCall() {
        const QJsonArray calls = context->journal.take();
        EXPECT_EQ(1, calls.size());
        return calls.isEmpty() ? QJsonObject() : calls[0].toObject();
    }

    std::vector<QJsonObject> logged() const {
        std::vector<QJsonObject> entries;
        std::istringstream lines(host_test::contentOf(database.folder.file("errori.log")));
        for (std::string line; std::getline(lines, line);)
            entries.push_back(QJsonDocument::fromJson(QByteArray::fromStdString(line)).object());
        return entries;
    }
};

TEST_F(Services, TellConnectionCompanyAndUser) {
    EXPECT_EQ("embedded:" + database.file, global.connectionService()->ConnectionString());
    EXPECT_EQ(1, global.companyService()->Company().integer());
    EXPECT_EQ("ROSSI", global.userService()->UserCode());
    EXPECT_EQ("VENDITE", global.userService()->GroupCode());
    context->company = 9;
    EXPECT_EQ(9, global.companyService()->Company().integer());
}

TEST_F(Services, TheProvidersConnectionIsClosedAndTraced) {
    context->trace.setRecording(true);
    const auto connection = global.newConnectionProvider()->newConnection();
    EXPECT_FALSE(connection->IsOpen());
    connection->SetConnectionString(global.connectionService()->ConnectionString());
    connection->Open();
    contract::Snapshot rows;
    connection->Read(contract::Statement("SELECT * FROM QZ02_DISTINTA WHERE 1=0 "), rows);
    EXPECT_EQ(QStringList{"SELECT * FROM QZ02_DISTINTA WHERE 1=0 "}, context->trace.take());
}

TEST_F(Services, AnErrorIsShownAndRecorded) {
    const auto log = global.newLogClass();
    log->vbError(RuntimeError(RuntimeError::database, "Il database è bloccato."));
    log->ADOError({{"HY000", 5, "database is locked", ErrorCategory::locked}});
    context->dialogs.queueAnswers({message::answerRetry});
    EXPECT_EQ(message::answerRetry,
              log->ShowError("QZUO", "Manutenzione distinte", "Form_Activate", message::errorDisplay));
    const auto shown = context->dialogs.takeShown();
    ASSERT_EQ(1U, shown.size());
    EXPECT_EQ(ShownMessage::Kind::error, shown[0].kind);
    EXPECT_EQ("Form_Activate", shown[0].procedure);
    EXPECT_EQ("Manutenzione distinte", shown[0].caption);
    EXPECT_EQ(-2147217900, shown[0].number);
    EXPECT_EQ(QStringLiteral("Il database è bloccato."), shown[0].description);
    EXPECT_EQ(4370, shown[0].style);
    EXPECT_EQ(4, shown[0].answer);

    const auto entries = logged();
    ASSERT_EQ(1U, entries.size());
    EXPECT_EQ("QZUO", entries[0]["application"].toString());
    EXPECT_EQ("Manutenzione distinte", entries[0]["caption"].toString());
    EXPECT_EQ("Form_Activate", entries[0]["procedure"].toString());
    EXPECT_EQ(-2147217900, entries[0]["number"].toInt());
    EXPECT_EQ(QStringLiteral("Il database è bloccato."), entries[0]["description"].toString());
    EXPECT_EQ(4, entries[0]["answer"].toInt());
    EXPECT_FALSE(entries[0]["time"].toString().isEmpty());
    const QJsonObject record = entries[0]["records"].toArray()[0].toObject();
    EXPECT_EQ("HY000", record["state"].toString());
    EXPECT_EQ(5, record["number"].toInt());
    EXPECT_EQ("database is locked", record["description"].toString());
    EXPECT_EQ("locked", record["category"].toString());
}

TEST_F(Services, DatabaseRecordsCountForTheNextErrorOnly) {
    const auto log = global.newLogClass();
    log->vbError(RuntimeError(5, "primo"));
    log->ADOError({{"HY000", 5, "locked", ErrorCategory::locked}});
    log->ShowError("QZUO", "F", "A", message::errorDisplay);
    log->vbError(RuntimeError(13, "secondo"));
    log->ShowError("QZUO", "F", "B", message::errorDisplay);
    const auto entries = logged();
    ASSERT_EQ(2U, entries.size());
    EXPECT_EQ(1, entries[0]["records"].toArray().size());
    EXPECT_EQ(0, entries[1]["records"].toArray().size());
    EXPECT_EQ(13, entries[1]["number"].toInt());
}

TEST_F(Services, AnErrorLogThatCanNotBeWrittenStopsNothing) {
    host_test::write(database.folder.file("file"), "");
    context->errorLog.setFile(QString::fromStdString(database.folder.file("file/errori.log")));
    const auto log = global.newLogClass();
    log->vbError(RuntimeError(5, "guasto"));
    EXPECT_EQ(message::answerAbort, log->ShowError("QZUO", "F", "A", message::errorDisplay));
}

TEST_F(Services, UnqueuedAnswersAreNoAbortAndOk) {
    const auto log = global.newLogClass();
    EXPECT_EQ(7, log->ShowMessage("T", "Spostare?", message::yesNo));
    EXPECT_EQ(1, log->ShowMessage("T", "Fatto", message::information));
    EXPECT_EQ(1, log->ShowMessage("T", "Male", message::critical));
    EXPECT_EQ(1, log->ShowMessage("T", "Nulla", message::ok));
    log->vbError(RuntimeError(5, "x"));
    EXPECT_EQ(3, log->ShowError("A", "C", "P", message::errorDisplay));
    EXPECT_EQ(5U, context->dialogs.takeShown().size());
    EXPECT_TRUE(context->dialogs.takeShown().empty());
}

TEST_F(Services, QueuedAnswersAreGivenInOrderWhateverTheBoxHas) {
    const auto log = global.newLogClass();
    context->dialogs.queueAnswers({9});
    context->dialogs.queueAnswers({6, 42});
    EXPECT_EQ(6, log->ShowMessage("T", "a", message::yesNo));
    EXPECT_EQ(42, log->ShowMessage("T", "b", message::ok));
    EXPECT_EQ(7, log->ShowMessage("T", "c", message::yesNo));
}

TEST_F(Services, TheThemeRefusesAColourItDoesNotHave) {
    const auto theme = global.newTheme();
    EXPECT_NO_THROW(theme->color("GridHeaderColor"));
    try {
        theme->color("Fantasia");
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(5, error.number());
    }
}

TEST_F(Services, TheFrameHandlerRefusesTheNextCloseWhenTold) {
    const auto handler = global.newVirtualFrame()->newFieldList();
    EXPECT_TRUE(handler->closeQuery(true));
    context->refuseClose = RefuseClose::frame;
    EXPECT_FALSE(handler->closeQuery(true));
    EXPECT_TRUE(handler->closeQuery(true));
    context->refuseClose = RefuseClose::script;
    EXPECT_TRUE(handler->closeQuery(true));
}

TEST_F(Services, TheScriptModelRefusesTheNextCloseWhenTold) {
    const host::HostNavigator navigator(context);
    EXPECT_FALSE(navigator.script()->close());
    context->refuseClose = RefuseClose::script;
    EXPECT_TRUE(navigator.script()->close());
    EXPECT_FALSE(navigator.script()->close());
    context->refuseClose = RefuseClose::frame;
    EXPECT_FALSE(navigator.script()->close());
}

TEST_F(Services, NavigatorCallsStandInTheJournal) {
    host::HostNavigator navigator(context);
    navigator.setStatus(2);
    EXPECT_EQ((QJsonObject{{"service", "Navigator"}, {"operation", "setStatus"}, {"status", 2}}), onlyCall());
    navigator.refreshState();
    EXPECT_EQ((QJsonObject{{"service", "Navigator"}, {"operation", "refreshState"}}), onlyCall());
    navigator.script()->runFormEvent("tsOpen");
    EXPECT_EQ((QJsonObject{{"service", "ScriptObjectModel"}, {"operation", "runFormEvent"}, {"event", "tsOpen"}}),
              onlyCall());
    contract::Form* form = nullptr;
    navigator.layout()->registerForm("Distinta", form);
    EXPECT_EQ((QJsonObject{{"service", "LayoutObjectModel"},
                           {"operation", "registerForm"},
                           {"name", "Distinta"},
                           {"form", QJsonValue::Null}}),
              onlyCall());
    navigator.script()->registerObject("FrameDistinte", std::make_shared<host::HostFrame>());
    EXPECT_EQ("registerObject", onlyCall()["operation"].toString());
    navigator.releaseObjectModels();
    EXPECT_EQ("releaseObjectModels", onlyCall()["operation"].toString());
    EXPECT_TRUE(context->journal.take().isEmpty());
}

TEST_F(Services, TheJournalIsOffForAPerson) {
    context->journal.setRecording(false);
    host::HostNavigator(context).refreshState();
    EXPECT_TRUE(context->journal.take().isEmpty());
}

TEST_F(Services, TheStatusBarHandsItsTextToTheWindow) {
    QString seen;
    context->statusText = [&](const QString& text) { seen = text; };
    host::HostStatusBar(context).setText("Sposta: 1200 Società");
    EXPECT_EQ(QStringLiteral("Sposta: 1200 Società"), seen);
    context->statusText = {};
    host::HostStatusBar(context).setText("nessuno ascolta");
    EXPECT_EQ(QStringLiteral("Sposta: 1200 Società"), seen);
}

TEST_F(Services, TheFrameHasItsName) {
    EXPECT_EQ("FrameDistinte", host::HostFrame().Name());
}

} // namespace
