#include "e2e/Database.h"
#include "e2e/Program.h"
#include "e2e/Texts.h"

#include <gtest/gtest.h>

using namespace e2e;

namespace {

const QString startColumn = QStringLiteral("trQZ02_DATAINIZIOVAL");
const QString endColumn = QStringLiteral("trQZ02_DATAFINEVAL");

class Edit : public ::testing::Test {
protected:
    void SetUp() override { place_.makeForest(); }

    static QJsonObject edit(Dialogue& program, int id, const QString& column, const char* value) {
        const auto reply = program.ask({{QStringLiteral("do"), QStringLiteral("edit")},
                                        {QStringLiteral("control"), destTree},
                                        {QStringLiteral("id"), id},
                                        {QStringLiteral("column"), column},
                                        {QStringLiteral("value"), QLatin1String(value)}});
        EXPECT_TRUE(reply.value(QLatin1String("ok")).toBool()) << json(reply);
        return reply;
    }

    static std::string dates(Dialogue& program, int id) {
        return program.cell(destTree, id, startColumn) + " " + program.cell(destTree, id, endColumn);
    }

    std::string stored(int id) {
        const auto row = Database(place_).rows(
            "SELECT QZ02_DATAINIZIOVAL,QZ02_DATAFINEVAL FROM QZ02_DISTINTA WHERE QZ02_ID = " + std::to_string(id));
        return row.at(0).at(0) + " " + row.at(0).at(1);
    }

    Workplace place_;
};

TEST_F(Edit, AnAcceptedEditIsStored) {
    Dialogue program(place_);
    const auto reply = edit(program, 5, endColumn, "30/06/2050");
    EXPECT_EQ("true", text(reply.value(QLatin1String("editable"))));
    EXPECT_TRUE(messages(reply).empty());
    EXPECT_EQ("01/01/2020 30/06/2050", dates(program, 5));
    EXPECT_EQ("2020-01-01 2050-06-30", stored(5));
    const std::vector<std::string> audit{QDate::currentDate().toString(Qt::ISODate).toStdString(), "ADMIN", "ADMIN"};
    EXPECT_EQ(audit,
              Database(place_)
                  .rows("SELECT QZ02_DATAVAR, QZ02_GRUPPOVAR, QZ02_UTENTEVAR FROM QZ02_DISTINTA WHERE QZ02_ID = 5")
                  .at(0));
    EXPECT_EQ("30/06/2050", text(program.state().value(QLatin1String("DataFineNodoDest"))));
    // The origin shows the same distinta: it was read again.
    EXPECT_EQ("30/06/2050", program.cell(origTree, 5, QStringLiteral("QZ02_DATAFINEVAL")));
    EXPECT_TRUE(messages(edit(program, 5, startColumn, "30/06/2050")).empty()); // the same day is accepted
    EXPECT_EQ("2050-06-30 2050-06-30", stored(5));
}

TEST_F(Edit, OtherColumnsAreNotEditable) {
    Dialogue program(place_);
    EXPECT_EQ("false", text(edit(program, 5, QStringLiteral("RagioneSociale"), "X").value(QLatin1String("editable"))));
    EXPECT_EQ("Gialli", program.cell(destTree, 5, QStringLiteral("RagioneSociale")));
    const auto orig = program.must(
        R"({"do":"edit","control":"TRW_ELEMDISTINTAORIG","id":5,"column":"trQZ02_DATAINIZIOVAL","value":"01/01/2021"})");
    EXPECT_EQ("false", text(orig.value(QLatin1String("editable"))));
    EXPECT_EQ("2020-01-01 2099-12-31", stored(5));
}

TEST_F(Edit, BothDatesAreObligatory) {
    Dialogue program(place_);
    auto shown = onlyMessage(edit(program, 5, startColumn, ""));
    EXPECT_EQ("Attenzione la data validità inizio è obbligatoria", text(shown.value(QLatin1String("text"))));
    EXPECT_EQ("0", text(shown.value(QLatin1String("style"))));
    EXPECT_EQ("01/01/2020 31/12/2099", dates(program, 5));
    shown = onlyMessage(edit(program, 5, endColumn, ""));
    EXPECT_EQ("Attenzione la data validità fine è obbligatoria", text(shown.value(QLatin1String("text"))));
    EXPECT_EQ("01/01/2020 31/12/2099", dates(program, 5));
    EXPECT_EQ("2020-01-01 2099-12-31", stored(5));
}

TEST_F(Edit, TheEndMayNotComeBeforeTheStart) {
    Dialogue program(place_);
    const auto shown = onlyMessage(edit(program, 5, endColumn, "31/12/2019"));
    EXPECT_EQ("Attenzione data validità inizio deve essere inferiore di data validità fine",
              text(shown.value(QLatin1String("text"))));
    EXPECT_EQ("0", text(shown.value(QLatin1String("style"))));
    EXPECT_EQ("01/01/2020 31/12/2099", dates(program, 5));
    EXPECT_EQ("2020-01-01 2099-12-31", stored(5));
}

TEST_F(Edit, AnOverlapIsRefusedWithItsPlace) {
    Dialogue program(place_);
    const auto shown = onlyMessage(edit(program, 4, endColumn, "01/01/2025")); // touching on one day overlaps
    EXPECT_EQ("Anagrafica non modificata:\nCliente 120 già legato alla distinta ZN: Nodo padre 200 - Nord nel periodo "
              "dal 01/01/2025 al 31/12/2099\n",
              text(shown.value(QLatin1String("text"))));
    EXPECT_EQ("64", text(shown.value(QLatin1String("style"))));
    EXPECT_EQ("01/01/2024 31/12/2024", dates(program, 4));
    EXPECT_EQ("2024-01-01 2024-12-31", stored(4));
}

TEST_F(Edit, AnOverlappingRootLinkIsNotReported) {
    Database(place_).run("UPDATE QZ02_DISTINTA SET QZ02_IDPARENT_QZ02 = NULL WHERE QZ02_ID = 24");
    Dialogue program(place_);
    EXPECT_TRUE(messages(edit(program, 4, endColumn, "31/12/2025")).empty());
    EXPECT_EQ("2024-01-01 2025-12-31", stored(4));
}

TEST_F(Edit, TheAccountOfTheParentIsRefused) {
    Database(place_).run("UPDATE QZ02_DISTINTA SET QZ02_CLIFOR_CG44 = 130 WHERE QZ02_ID = 6");
    Dialogue program(place_);
    const auto shown = onlyMessage(edit(program, 6, endColumn, "31/12/2050"));
    EXPECT_EQ("Anagrafica non modificata:\nCliente 130 uguale al nodo padre, non è possibile salvare la struttura.\n",
              text(shown.value(QLatin1String("text"))));
}

TEST_F(Edit, ARowChangedMeanwhileIsNotOverwritten) {
    Dialogue program(place_);
    program.focus(destTree, 5);
    Database(place_).run("UPDATE QZ02_DISTINTA SET QZ02_DATAFINEVAL = '2077-07-07' WHERE QZ02_ID = 5");
    const auto shown = onlyMessage(edit(program, 5, endColumn, "30/06/2050"));
    EXPECT_EQ("error", text(shown.value(QLatin1String("kind"))));
    EXPECT_EQ("01/01/2020 07/07/2077", dates(program, 5));
    EXPECT_EQ("2020-01-01 2077-07-07", stored(5));
}

TEST_F(Edit, WhatIsNoDateIsRefusedByTheField) {
    Dialogue program(place_);
    program.trace();
    edit(program, 5, endColumn, "31/02/2050");
    EXPECT_EQ("01/01/2020 31/12/2099", dates(program, 5));
    EXPECT_TRUE(beginningWith(program.trace(), {"UPDATE"}).empty());
    EXPECT_EQ("2020-01-01 2099-12-31", stored(5));
}

class EditWithBonus : public Edit {
protected:
    void SetUp() override {
        Edit::SetUp();
        settle(2);
    }

    /// A settlement of this state, due on 30/06/2025, for node 5.
    void settle(int state) {
        Database(place_).run("DELETE FROM QZ13_PREMI; DELETE FROM QZ14_SOGGCONTR; DELETE FROM QZ18_LIQUIDAZIONE;"
                             "INSERT INTO QZ13_PREMI (QZ13_ID,QZ13_DITTA_CG18) VALUES (1,1);"
                             "INSERT INTO QZ14_SOGGCONTR VALUES (1,5,1,10,1,3);"
                             "INSERT INTO QZ18_LIQUIDAZIONE (QZ18_ID_QZ13,QZ18_DATASCADENZA,QZ18_STATOSCADENZA) VALUES "
                             "(1,'2025-06-30'," +
                             std::to_string(state) + ")");
    }

    static bool startLocked(Dialogue& program) {
        const auto columns = program.read(destTree).value(QLatin1String("columns")).toArray();
        for (const auto& column : columns) {
            if (column[QLatin1String("name")] == startColumn)
                return column[QLatin1String("locked")].toBool();
        }
        ADD_FAILURE() << "no column for the start";
        return false;
    }
};

TEST_F(EditWithBonus, LocksTheStartOfANodeWithADefinitiveBonus) {
    Dialogue program(place_);
    EXPECT_FALSE(startLocked(program));
    program.trace();
    program.focus(destTree, 5);
    EXPECT_TRUE(startLocked(program));
    const auto checks = beginningWith(program.trace(), {"SELECT TOP 1 *  "});
    ASSERT_FALSE(checks.empty());
    EXPECT_EQ("SELECT TOP 1 *   FROM  QZ18_LIQUIDAZIONE INNER JOIN       QZ13_PREMI ON "
              "QZ18_LIQUIDAZIONE.QZ18_ID_QZ13 = QZ13_PREMI.QZ13_ID        INNER JOIN        QZ14_SOGGCONTR ON "
              "QZ13_PREMI.QZ13_ID = QZ14_SOGGCONTR.QZ14_ID_QZ13 WHERE QZ13_DITTA_CG18    = 1   AND QZ14_ID_QZ02       "
              "= 5   AND QZ18_STATOSCADENZA >= 2    AND QZ14_ID_QZ02 NOT IN (                            SELECT "
              "QZ27_ID_QZ02                               FROM QZ27_SOGGCONTRDISAB                              WHERE "
              "QZ27_DITTA_CG18     = QZ14_DITTA_CG18                                    AND QZ27_CODCONTR_QZ10  = "
              "QZ14_CODCONTR_QZ10                                 AND QZ27_VERCONTR_QZ10  = QZ14_VERCONTR_QZ10         "
              "                        AND QZ27_PROGRCOND_QZ13 = QZ14_PROGRCOND_QZ13                             )   ",
              checks.front());
    EXPECT_EQ("false", text(edit(program, 5, startColumn, "01/01/2021").value(QLatin1String("editable"))));
    EXPECT_EQ("01/01/2020 31/12/2099", dates(program, 5));
    program.focus(destTree, 4);
    EXPECT_FALSE(startLocked(program));
}

TEST_F(EditWithBonus, RefusesAnEndBeforeTheSettlementIsDue) {
    Dialogue program(place_);
    const auto shown = onlyMessage(edit(program, 5, endColumn, "29/06/2025"));
    EXPECT_TRUE(startsWith(text(shown.value(QLatin1String("text"))),
                           "Anagrafica non modificata:\nLa data fine è inferiore alla data scadenza di un premio "
                           "definitivo"))
        << json(shown);
    EXPECT_EQ("2020-01-01 2099-12-31", stored(5));
    EXPECT_TRUE(messages(edit(program, 5, endColumn, "30/06/2025")).empty());
    EXPECT_EQ("2020-01-01 2025-06-30", stored(5));
}

TEST_F(EditWithBonus, AProvisionalSettlementBlocksNothing) {
    settle(1);
    Dialogue program(place_);
    program.focus(destTree, 5);
    EXPECT_FALSE(startLocked(program));
    EXPECT_TRUE(messages(edit(program, 5, endColumn, "01/01/2024")).empty());
}

TEST_F(EditWithBonus, AnExcludedSubjectBlocksNothing) {
    Database(place_).run("INSERT INTO QZ27_SOGGCONTRDISAB VALUES (5,1,10,1,3)");
    Dialogue program(place_);
    program.focus(destTree, 5);
    EXPECT_FALSE(startLocked(program));
    EXPECT_TRUE(messages(edit(program, 5, endColumn, "01/01/2024")).empty());
}

} // namespace
