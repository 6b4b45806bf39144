#include "TestSession.h"
#include "contract/RuntimeError.h"
#include "host/services/AccountReader.h"
#include "host/services/HostGlobal.h"
#include "host/services/HostServices.h"
#include "host/windows/LookupWindow.h"
#include "platform/qt/look/Appearance.h"

#include <QLabel>
#include <QTableWidget>

#include <QTest>

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

    void openCard() {
        contract::ParameterObject parameters;
        parameters.flag = true;
        parameters.accountCode = 1200;
        parameters.company = 1;
        global.openProgram("SchedaClienti", parameters);
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

/// Across, of a column's heading and of a text below it.
Qt::Alignment alignment(const QTableWidgetItem* item) {
    return Qt::Alignment(item->textAlignment()) & Qt::AlignHorizontal_Mask;
}

TEST_F(HostWindows, HeadingsStandAsTheTextsBelowThem) {
    const auto expectAligned = [](FormWindow& form, const char* list, const std::vector<Qt::Alignment>& expected) {
        const auto* table = form.window()->findChild<QTableWidget*>(QLatin1String(list));
        ASSERT_NE(nullptr, table);
        ASSERT_LT(0, table->rowCount());
        ASSERT_EQ(expected.size(), static_cast<std::size_t>(table->columnCount()));
        for (int column = 0; column < table->columnCount(); ++column) {
            EXPECT_EQ(expected[static_cast<std::size_t>(column)], alignment(table->horizontalHeaderItem(column)));
            EXPECT_EQ(expected[static_cast<std::size_t>(column)], alignment(table->item(0, column)));
        }
    };
    whenOpened([&](FormWindow& form) { expectAligned(form, "GRD_ELENCO", {Qt::AlignRight, Qt::AlignLeft}); });
    global.IDLookup(request(), *database.context->connection);
    whenOpened([&](FormWindow& form) {
        expectAligned(form, "GRD_DISTINTE", {Qt::AlignLeft, Qt::AlignLeft, Qt::AlignHCenter, Qt::AlignHCenter});
    });
    openCard();
    EXPECT_EQ(2U, opened.size());
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
    whenOpened([](FormWindow& form) {
        EXPECT_EQ(QStringLiteral("Cliente 1200 – Rossi S.p.A."),
                  form.control("LBL_CONTO")->read()["caption"].toString());
        EXPECT_EQ((QJsonArray{QJsonArray{"ZN-Zone", "3100 Nord-Ovest", "01/02/2020", "31/12/2099"}}),
                  form.control("GRD_DISTINTE")->read()["rows"].toArray());
    });
    openCard();
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

TEST_F(HostWindows, ACardCutsANameThatHasNoRoomAndSaysSo) {
    Statement name("UPDATE CG16_ANAGGEN SET CG16_RAGSOANAG = '");
    name.text(std::string(10'485'760, 'N')) << "'";
    database.context->connection->Execute(name);
    whenOpened([](FormWindow& form) {
        const QString caption = form.control("LBL_CONTO")->read()["caption"].toString();
        EXPECT_EQ(QStringLiteral("Cliente 1200 – ") + QString(400, QLatin1Char('N')) +
                      QStringLiteral("… (testo tagliato: in tutto 10.485.760 caratteri)"),
                  caption.left(600));
        EXPECT_LT(form.control("GRD_DISTINTE")->read()["rows"].toArray().at(0).toArray().at(1).toString().size(), 600);
    });
    openCard();
    EXPECT_EQ(1U, opened.size());
}

QRect placeOf(const QLabel* label, const QWidget* window) {
    return {label->mapTo(window, label->contentsRect().topLeft()), label->contentsRect().size()};
}

const QLabel* labelWith(const QWidget* window, const QString& text) {
    for (const auto* label : window->findChildren<QLabel*>())
        if (label->text() == text)
            return label;
    return nullptr;
}

TEST_F(HostWindows, ACardHasOneColumnForItsValuesAndNoGapAboveItsList) {
    for (const int points : {8, 14}) {
        platform::qt::Appearance::instance().setZoom(points);
        whenOpened([&](FormWindow& form) {
            QApplication::processEvents();
            const auto* window = form.window();
            const auto* city = labelWith(window, QStringLiteral("Torino (TO)"));
            const auto* terms = labelWith(window, QStringLiteral("RB30 Ricevuta"));
            ASSERT_NE(nullptr, city);
            ASSERT_NE(nullptr, terms);
            EXPECT_EQ(placeOf(city, window).left(), placeOf(terms, window).left()) << points;
            const auto* caption = labelWith(window, QStringLiteral("Distinte in cui il conto compare"));
            ASSERT_NE(nullptr, caption);
            const int gap = placeOf(caption, window).top() - placeOf(terms, window).bottom();
            EXPECT_GT(gap, 0) << points;
            EXPECT_LT(gap, 2 * platform::qt::Appearance::instance().rowHeight()) << points;
        });
        openCard();
    }
    platform::qt::Appearance::instance().setZoom(10);
    EXPECT_EQ(2U, opened.size());
}

TEST_F(HostWindows, AProgramThatIsNotThereIsRefused) {
    whenOpened([](FormWindow&) {});
    EXPECT_THROW(global.openProgram("SchedaMarziani", {}), contract::RuntimeError);
    EXPECT_TRUE(opened.empty());
}

TEST_F(HostWindows, TheAccountLinkOpensForCustomersAndSuppliers) {
    whenOpened([](FormWindow& form) {
        EXPECT_EQ("Fornitore 1200", form.control("LBL_CONTO")->read()["caption"].toString());
        EXPECT_EQ(QStringLiteral("Il conto non è collegato all'anagrafica generale."),
                  form.control("LBL_COLLEGAMENTO")->read()["caption"].toString());
    });
    const auto link = global.newAccountLink();
    link->setAccountCode(1200);
    link->linkSupplier();
    EXPECT_EQ(std::vector<QString>{"CollegamentoAnagrafica"}, opened);
    EXPECT_EQ((QJsonObject{{"service", "AccountLink"}, {"operation", "linkSupplier"}, {"accountCode", 1200}}),
              database.context->journal.take()[0].toObject());
}

TEST_F(HostWindows, TheAccountLinkShowsTheRegistrysEntryAndNotTheCardAgain) {
    database.context->connection->Execute(
        Statement("INSERT INTO CG44_CLIFOR (CG44_DITTA_CG18, CG44_TIPOCF, CG44_CLIFOR, CG44_CODICE_CG16) "
                  "VALUES (2, 1, 77, 10)"));
    whenOpened([](FormWindow& form) {
        EXPECT_EQ(QStringLiteral("Cliente 1200 – Rossi S.p.A."),
                  form.control("LBL_CONTO")->read()["caption"].toString());
        EXPECT_EQ(QStringLiteral("Il conto è collegato all'anagrafica generale 10:"),
                  form.control("LBL_COLLEGAMENTO")->read()["caption"].toString());
        EXPECT_EQ((QJsonArray{QJsonArray{"1", "Cliente", "1200"}, QJsonArray{"2", "Fornitore", "77"}}),
                  form.control("GRD_CONTI")->read()["rows"].toArray());
        EXPECT_EQ(nullptr, form.control("GRD_DISTINTE"));
    });
    const auto link = global.newAccountLink();
    link->setAccountCode(1200);
    link->linkCustomer();
    EXPECT_EQ(1U, opened.size());
}

TEST_F(HostWindows, LettersGoToTheNextStateThatBeginsSo) {
    whenOpened([](FormWindow& form) {
        auto* list = form.window()->findChild<QTableWidget*>(QStringLiteral("GRD_ELENCO"));
        list->setFocus();
        EXPECT_EQ(0, list->currentRow());
        QTest::keyClicks(list, QStringLiteral("ch"));
        EXPECT_EQ(1, list->currentRow());
        QTest::keyClick(list, Qt::Key_Return);
    });
    EXPECT_EQ(7, global.IDLookup(request(), *database.context->connection));
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
