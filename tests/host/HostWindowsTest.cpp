#include "TestSession.h"
#include "host/AccountReader.h"
#include "host/HostGlobal.h"
#include "host/HostServices.h"
#include "host/LookupWindow.h"
#include "plugin/contract/RuntimeError.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using contract::Statement;
using platform::qt::FormWindow;
using platform::qt::Session;

void fillAccounts(platform::sqlite::Connection& connection) {
    for (const auto& statement : {
             Statement("INSERT INTO CG16_ANAGGEN (CG16_CODICE, CG16_RAGSOANAG, CG16_CITTA, CG16_PROV) "
                       "VALUES (10, 'Rossi S.p.A.', 'Torino', 'TO')"),
             Statement("INSERT INTO CG16_ANAGGEN (CG16_CODICE, CG16_RAGSOANAG) VALUES (11, 'Nord-Ovest')"),
             Statement("INSERT INTO CG44_CLIFOR (CG44_DITTA_CG18, CG44_TIPOCF, CG44_CLIFOR, CG44_CODICE_CG16, "
                       "CG44_CODPAG_CG62) VALUES (1, 0, 1200, 10, 'RB30')"),
             Statement("INSERT INTO CG44_CLIFOR (CG44_DITTA_CG18, CG44_TIPOCF, CG44_CLIFOR, CG44_CODICE_CG16) "
                       "VALUES (1, 0, 3100, 11)"),
             Statement("INSERT INTO CG44_CLIFOR (CG44_DITTA_CG18, CG44_TIPOCF, CG44_CLIFOR) VALUES (1, 1, 1200)"),
             Statement("INSERT INTO CG62_CONDPAGDES (CG62_CODPAG, CG62_DESCPAG) VALUES ('RB30', 'Ricevuta')"),
             Statement("INSERT INTO QZ01_TIPODISTINTA (QZ01_ID, QZ01_DITTA_CG18, QZ01_CODICE, QZ01_DESCR, "
                       "QZ01_INDTIPOSOGG) VALUES (1, 1, 'ZN', 'Zone', 0)"),
             Statement("INSERT INTO QZ02_DISTINTA (QZ02_ID, QZ02_ID_QZ01, QZ02_DITTA_CG18, QZ02_TIPOCF_CG44, "
                       "QZ02_CLIFOR_CG44, QZ02_DATAINIZIOVAL, QZ02_DATAFINEVAL) VALUES (1, 1, 1, 0, 3100, "
                       "CONVERT(DateTime,'01/01/2020',103), CONVERT(DateTime,'31/12/2099',103))"),
             Statement("INSERT INTO QZ02_DISTINTA (QZ02_ID, QZ02_ID_QZ01, QZ02_IDPARENT_QZ02, QZ02_DITTA_CG18, "
                       "QZ02_TIPOCF_CG44, QZ02_CLIFOR_CG44, QZ02_DATAINIZIOVAL, QZ02_DATAFINEVAL) VALUES (2, 1, 1, 1, "
                       "0, 1200, CONVERT(DateTime,'01/02/2020',103), CONVERT(DateTime,'31/12/2099',103))"),
             Statement("INSERT INTO WF02_STATI (WF02_ID, WF02_DESCR) VALUES (3, 'Aperto')"),
             Statement("INSERT INTO WF02_STATI (WF02_ID, WF02_DESCR) VALUES (7, 'Chiuso')"),
         })
        connection.Execute(statement);
}

/// Windows as a script meets them: the action runs where a person would be waited for.
class HostWindows : public testing::Test {
protected:
    HostWindows() { host_test::needApplication(); }
    ~HostWindows() override { Session::instance().modalOpened = {}; }

    void whenOpened(std::function<void(FormWindow&)> action) {
        Session::instance().modalOpened = [this, action = std::move(action)](FormWindow& form) {
            opened.push_back(form.formName());
            EXPECT_EQ(&form, Session::instance().front());
            EXPECT_TRUE(form.window()->isVisible());
            action(form);
        };
    }

    static contract::LookupRequest request() {
        return {"lkp_Stati",
                "Stati",
                Statement("SELECT WF02_ID, WF02_DESCR FROM WF02_STATI ORDER BY WF02_ID "),
                {"Codice", "Descrizione"}};
    }

    host_test::ContextOnDatabase database{fillAccounts};
    host::HostGlobal global{database.context, nullptr};
    std::vector<QString> opened;
};

TEST_F(HostWindows, ALookupAnswersTheCodeThatWasChosen) {
    whenOpened([](FormWindow& form) {
        EXPECT_EQ("Stati", form.formCaption());
        EXPECT_EQ((QJsonArray{QJsonArray{"3", "Aperto"}, QJsonArray{"7", "Chiuso"}}),
                  form.control("GRD_ELENCO")->read()["rows"].toArray());
        EXPECT_EQ("", form.control(form.formName())->chooseItem("7"));
    });
    EXPECT_EQ(7, global.IDLookup(request(), *database.context->connection));
    EXPECT_EQ(std::vector<QString>{"lkp_Stati"}, opened);
    EXPECT_EQ(nullptr, Session::instance().front());
}

TEST_F(HostWindows, ALookupRefusesACodeItDoesNotShow) {
    whenOpened([](FormWindow& form) { EXPECT_NE("", form.control(form.formName())->chooseItem("4")); });
    EXPECT_FALSE(global.IDLookup(request(), *database.context->connection).has_value());
}

TEST_F(HostWindows, ALookupThatIsLeftAnswersNothing) {
    whenOpened([](FormWindow& form) { EXPECT_TRUE(form.pressClose()); });
    EXPECT_FALSE(global.IDLookup(request(), *database.context->connection).has_value());
    whenOpened([](FormWindow& form) { EXPECT_EQ("", form.control("CMD_ANNULLA")->click()); });
    EXPECT_FALSE(global.IDLookup(request(), *database.context->connection).has_value());
    whenOpened([](FormWindow&) {});
    EXPECT_FALSE(global.IDLookup(request(), *database.context->connection).has_value());
}

TEST_F(HostWindows, ALookupSearchesAllItsColumns) {
    whenOpened([](FormWindow& form) {
        EXPECT_EQ("", form.control("TXT_CERCA")->set("chi"));
        EXPECT_EQ((QJsonArray{QJsonArray{"7", "Chiuso"}}), form.control("GRD_ELENCO")->read()["rows"].toArray());
        EXPECT_EQ("", form.control("CMD_SCEGLI")->click());
    });
    EXPECT_EQ(7, global.IDLookup(request(), *database.context->connection));
}

TEST_F(HostWindows, ALookupWhoseSearchFindsNothingCanNotBeConfirmed) {
    whenOpened([](FormWindow& form) {
        EXPECT_EQ("", form.control("TXT_CERCA")->set("zzz"));
        EXPECT_NE("", form.control("CMD_SCEGLI")->click());
    });
    EXPECT_FALSE(global.IDLookup(request(), *database.context->connection).has_value());
}

TEST_F(HostWindows, TheStateChosenIsTheOneConfirmed) {
    const auto workflow = global.newWorkflowState();
    workflow->GetDescrizioneStatoFromGUID("11111111-1111-4111-8111-111111111111");
    whenOpened([](FormWindow& form) { form.control(form.formName())->chooseItem("7"); });
    EXPECT_EQ(7, global.chooseState());
    workflow->ConfermaStato();
    EXPECT_EQ(7, database.context->states->state("11111111-1111-4111-8111-111111111111"));
}

TEST_F(HostWindows, ACardShowsTheAccountAndIsJournaled) {
    contract::ParameterObject parameters;
    parameters.flag = true;
    parameters.accountCode = 1200;
    parameters.company = 1;
    whenOpened([](FormWindow& form) {
        EXPECT_EQ(QStringLiteral("Cliente 1200 – Rossi S.p.A."),
                  form.control("LBL_CONTO")->read()["caption"].toString());
        EXPECT_EQ((QJsonArray{QJsonArray{"ZN-Zone", "3100 Nord-Ovest", "01/02/2020", "31/12/2099"}}),
                  form.control("GRD_DISTINTE")->read()["rows"].toArray());
    });
    global.openProgram("SchedaClienti", parameters);
    EXPECT_EQ(std::vector<QString>{"SchedaClienti"}, opened);
    const QJsonArray calls = database.context->journal.take();
    ASSERT_EQ(1, calls.size());
    EXPECT_EQ((QJsonObject{{"service", "ClsGlobal"},
                           {"operation", "openProgram"},
                           {"program", "SchedaClienti"},
                           {"flag", true},
                           {"accountKind", 0},
                           {"accountCode", 1200},
                           {"company", 1}}),
              calls[0].toObject());
}

TEST_F(HostWindows, AProgramThatIsNotThereIsRefused) {
    whenOpened([](FormWindow&) {});
    EXPECT_THROW(global.openProgram("SchedaMarziani", {}), contract::RuntimeError);
    EXPECT_TRUE(opened.empty());
}

TEST_F(HostWindows, TheAccountLinkOpensForCustomersAndSuppliers) {
    whenOpened(
        [](FormWindow& form) { EXPECT_EQ("Fornitore 1200", form.control("LBL_CONTO")->read()["caption"].toString()); });
    const auto link = global.newAccountLink();
    link->setAccountCode(1200);
    link->linkSupplier();
    EXPECT_EQ(std::vector<QString>{"CollegamentoAnagrafica"}, opened);
    EXPECT_EQ((QJsonObject{{"service", "AccountLink"}, {"operation", "linkSupplier"}, {"accountCode", 1200}}),
              database.context->journal.take()[0].toObject());
}

TEST_F(HostWindows, WhatTheyReadIsNotTraced) {
    database.context->trace.setRecording(true);
    whenOpened([](FormWindow&) {});
    const auto link = global.newAccountLink();
    link->setAccountCode(1200);
    link->linkCustomer();
    EXPECT_TRUE(database.context->trace.take().isEmpty());
}

TEST_F(HostWindows, AnAccountThatDoesNotExistIsSaidToBeMissing) {
    const auto sheet = host::readAccount(*database.context->connection, {1, 0, 99});
    EXPECT_FALSE(sheet.found);
    EXPECT_TRUE(sheet.links.empty());
}

} // namespace
