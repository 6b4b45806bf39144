#include "e2e/Database.h"
#include "e2e/Program.h"
#include "e2e/Texts.h"

#include <gtest/gtest.h>

using namespace e2e;

namespace {

const QString moveButton = QStringLiteral("CMD_SPOSTAVALID");

class MoveValidity : public ::testing::Test {
protected:
    void SetUp() override { place_.makeForest(); }

    static void aim(Dialogue& program, int from, int under) {
        program.select(destList, QStringLiteral("C2"));
        program.focus(origTree, from);
        program.focus(destTree, under);
        program.trace();
        program.services();
    }

    /// Gives the dialog this date and moves, saying yes.
    static QJsonObject moveAt(Dialogue& program, const QByteArray& date) {
        program.must(R"({"do":"when","form":"FRMQZ_DATAFINELEGAME","steps":[)"
                     R"({"do":"set","control":"TXT_DATACHIUSURALEGAME","value":")" +
                     date + R"("},{"do":"click","control":"CMD_ESEGUI"}]})");
        program.must(R"({"do":"answer","values":[6]})");
        return program.click(moveButton);
    }

    std::vector<std::string> row(const std::string& columns, const std::string& where) {
        const auto rows = Database(place_).rows("SELECT " + columns + " FROM QZ02_DISTINTA WHERE " + where);
        EXPECT_EQ(1U, rows.size()) << where;
        return rows.empty() ? std::vector<std::string>{} : rows.front();
    }

    Workplace place_;
};

TEST_F(MoveValidity, ClosesTheOldLinksAndInsertsNewOnes) {
    {
        Dialogue program(place_);
        aim(program, 2, 21);
        const auto moved = moveAt(program, "30/06/2024");
        EXPECT_EQ((std::vector<std::string>{"FRMQZ_DATAFINELEGAME"}), modalForms(moved));
        EXPECT_EQ((std::vector<std::string>{"Spostare il nodo 110 e tutti i suoi figli?"}), messages(moved));
        // Without parameters the new links end where the moved node ended.
        EXPECT_EQ("31/12/2099", text(program.state().value(QLatin1String("DataFineLegame"))));
        EXPECT_EQ((std::vector<int>{1, 2, 3, 4, 5, 6}), program.ids(origTree));
        EXPECT_EQ("30/06/2024", program.cell(origTree, 2, QStringLiteral("QZ02_DATAFINEVAL")));
    }
    const std::string links = "QZ02_IDPARENT_QZ02,QZ02_DATAINIZIOVAL,QZ02_DATAFINEVAL,QZ02_INDREGPROV,QZ02_ID_WF02,"
                              "QZ02_UTENTECRE,QZ02_GRUPPOCRE,QZ02_UTENTEVAR,QZ02_CLIFORFATT_CG44";
    const auto copy = row("QZ02_ID", "QZ02_ID_QZ01 = 2 AND QZ02_CLIFOR_CG44 = 110");
    EXPECT_EQ((std::vector<std::string>{"21", "2024-07-01", "2099-12-31", "0", "0", "ADMIN", "ADMIN", "ADMIN", "null"}),
              row(links, "QZ02_ID_QZ01 = 2 AND QZ02_CLIFOR_CG44 = 110"));
    EXPECT_EQ(
        (std::vector<std::string>{copy.at(0), "2024-07-01", "2099-12-31", "0", "0", "ADMIN", "ADMIN", "ADMIN", "null"}),
        row(links, "QZ02_ID_QZ01 = 2 AND QZ02_CLIFOR_CG44 = 111"));
    for (const char* id : {"2", "3"})
        EXPECT_EQ((std::vector<std::string>{"1", "2024-06-30", "ADMIN", "null"}),
                  row("QZ02_ID_QZ01,QZ02_DATAFINEVAL,QZ02_UTENTEVAR,QZ02_DATAVAR", std::string("QZ02_ID = ") + id));
    Database database(place_);
    EXPECT_EQ("17", database.value("SELECT COUNT(DISTINCT QZ02_GUID) FROM QZ02_DISTINTA"));
}

TEST_F(MoveValidity, SendsTheseStatements) {
    Dialogue program(place_);
    aim(program, 4, 25); // account 120: valid in 2024
    moveAt(program, "30/06/2024");
    const auto transaction = stretch(program.trace(), "BeginTrans", "CommitTrans");
    EXPECT_EQ((std::vector<std::string>{
                  "UPDATE QZ02_DISTINTA  SET QZ02_DATAFINEVAL = (CASE WHEN QZ02_DATAINIZIOVAL > "
                  "CONVERT(DateTime,'30/06/2024',103)                              THEN QZ02_DATAINIZIOVAL             "
                  "                  ELSE CONVERT(DateTime,'30/06/2024',103)                         END),     "
                  "QZ02_GRUPPOVAR = 'ADMIN',     QZ02_UTENTEVAR = 'ADMIN' WHERE QZ02_ID_QZ01 = '1'   AND QZ02_ID = 4   "
                  "AND QZ02_DATAFINEVAL > CONVERT(DateTime,'30/06/2024',103)"}),
              beginningWith(transaction, {"UPDATE"}));
    const auto inserts = beginningWith(transaction, {"INSERT"});
    ASSERT_EQ(1U, inserts.size());
    const std::string start =
        "INSERT INTO QZ02_DISTINTA  (  QZ02_ID_QZ01,  QZ02_IDPARENT_QZ02,  QZ02_DITTA_CG18,  QZ02_TIPOCF_CG44,  "
        "QZ02_CLIFOR_CG44,  QZ02_INDREGPROV,  QZ02_ID_WF02,  QZ02_DATAINIZIOVAL,  QZ02_DATAFINEVAL,  QZ02_DATACRE,  "
        "QZ02_GRUPPOCRE,  QZ02_UTENTECRE,  QZ02_DATAVAR,  QZ02_GRUPPOVAR,  QZ02_UTENTEVAR , QZ02_GUID  ) VALUES ( "
        "'2',  25,  1,  0,  120,  0,  0,  CONVERT(DateTime,'01/07/2024',103),  CONVERT(DateTime,'31/12/2024',103),  "
        "CONVERT(DateTime,'" +
        today() + "',103),  'ADMIN',  'ADMIN',  CONVERT(DateTime,'" + today() + "',103),  'ADMIN',  'ADMIN', '";
    EXPECT_TRUE(startsWith(inserts[0], start)) << inserts[0];
    EXPECT_EQ(start.size() + 36 + std::string("'  )").size(), inserts[0].size()) << inserts[0];
    EXPECT_TRUE(inserts[0].ends_with("'  )")) << inserts[0];
}

TEST_F(MoveValidity, FixedDatesEndTheNewLinks) {
    Database(place_).run(
        "INSERT INTO QZ03_PARAMETRI (QZ03_DITTA_CG18,QZ03_ID_WF02,QZ03_TIPOCARICODATA,QZ03_DATAFINEVAL) VALUES "
        "(1,20,1,'2030-12-31')");
    {
        Dialogue program(place_);
        aim(program, 2, 21);
        moveAt(program, "30/06/2024");
        EXPECT_EQ("31/12/2030", text(program.state().value(QLatin1String("DataFineLegame"))));
    }
    EXPECT_EQ((std::vector<std::string>{"2024-07-01", "2030-12-31", "0"}), // the state of the row is never read
              row("QZ02_DATAINIZIOVAL,QZ02_DATAFINEVAL,QZ02_ID_WF02", "QZ02_ID_QZ01 = 2 AND QZ02_CLIFOR_CG44 = 111"));
}

TEST_F(MoveValidity, OptionalValuesAreCopiedWhereTheyAre) {
    Database(place_).run("UPDATE QZ02_DISTINTA SET QZ02_CLIFORFATT_CG44 = 200, QZ02_INDEREPROMO = 1 WHERE QZ02_ID = 4");
    {
        Dialogue program(place_);
        aim(program, 4, 25);
        moveAt(program, "30/06/2024");
        const auto inserts = beginningWith(program.trace(), {"INSERT"});
        ASSERT_EQ(1U, inserts.size());
        EXPECT_TRUE(contains(inserts[0], "  QZ02_UTENTEVAR, QZ02_CLIFORFATT_CG44 , QZ02_INDEREPROMO  , QZ02_GUID  ) "
                                         "VALUES ( '2',"))
            << inserts[0];
        EXPECT_TRUE(contains(inserts[0], "  'ADMIN',200,1, '")) << inserts[0];
    }
    EXPECT_EQ((std::vector<std::string>{"200", "1", "null"}),
              row("QZ02_CLIFORFATT_CG44,QZ02_INDEREPROMO,QZ02_TIPOANAGFATT", "QZ02_IDPARENT_QZ02 = 25"));
}

TEST_F(MoveValidity, TheStateOfTheNewLinksIsAskedOfTheHost) {
    Dialogue program(place_);
    aim(program, 4, 25);
    moveAt(program, "30/06/2024");
    std::string calls;
    for (const auto& call : program.services())
        calls += text(call[QLatin1String("operation")]) + " ";
    EXPECT_TRUE(contains(calls, "GetNewGUID")) << calls;
    EXPECT_TRUE(contains(calls, "DuplicaStato") || contains(calls, "ConfermaStato")) << calls;
}

TEST_F(MoveValidity, NoLinkIsOpenedThatEndsBeforeItStarts) {
    const std::string all = "SELECT * FROM QZ02_DISTINTA ORDER BY QZ02_ID";
    Dialogue program(place_);
    const auto before = Database(place_).rows(all);
    aim(program, 4, 25); // account 120: valid in 2024
    EXPECT_EQ((std::vector<std::string>{"Spostare il nodo 120 e tutti i suoi figli?",
                                        "Il nuovo legame finirebbe il 31/12/2024, prima del suo inizio il 01/07/2025. "
                                        "Spostamento annullato.\n"}),
              messages(moveAt(program, "30/06/2025")));
    EXPECT_TRUE(beginningWith(program.trace(), {"UPDATE", "INSERT", "CommitTrans"}).empty());
    EXPECT_EQ("31/12/2024", text(program.state().value(QLatin1String("DataFineLegame"))));
    EXPECT_EQ(before, Database(place_).rows(all));

    Database(place_).run("INSERT INTO QZ03_PARAMETRI (QZ03_DITTA_CG18,QZ03_TIPOCARICODATA,QZ03_DATAFINEVAL) VALUES "
                         "(1,1,'2022-06-30')");
    program.focus(origTree, 2);
    program.focus(origTree, 4);
    EXPECT_EQ((std::vector<std::string>{"Spostare il nodo 120 e tutti i suoi figli?",
                                        "Il nuovo legame finirebbe il 30/06/2022, prima del suo inizio il 01/07/2024. "
                                        "Spostamento annullato.\n"}),
              messages(moveAt(program, "30/06/2024")));
    EXPECT_EQ(before, Database(place_).rows(all));
}

TEST_F(MoveValidity, WithoutADateItSaysSo) {
    Dialogue program(place_);
    aim(program, 2, 21);
    const auto clicked = program.click(moveButton); // the dialog is closed by its close button
    EXPECT_EQ((std::vector<std::string>{"FRMQZ_DATAFINELEGAME"}), modalForms(clicked));
    const auto shown = onlyMessage(clicked);
    EXPECT_EQ("Data fine legame non impostata!", text(shown.value(QLatin1String("text"))));
    EXPECT_EQ("48", text(shown.value(QLatin1String("style"))));
    EXPECT_TRUE(program.trace().empty());
}

TEST_F(MoveValidity, ADateBeforeTheLinkIsRefusedTheSameDayIsNot) {
    Dialogue program(place_);
    aim(program, 2, 21);
    EXPECT_EQ((std::vector<std::string>{"Attenzione la data di fine legame inserita è minore della data inizio legame "
                                        "del nodo di origine."}),
              messages(moveAt(program, "31/12/2019")));
    EXPECT_TRUE(beginningWith(program.trace(), {"BeginTrans"}).empty());
    EXPECT_EQ((std::vector<std::string>{"Spostare il nodo 110 e tutti i suoi figli?"}),
              messages(moveAt(program, "01/01/2020")));
    EXPECT_EQ((std::vector<std::string>{"2020-01-01"}), row("QZ02_DATAFINEVAL", "QZ02_ID = 2"));
}

TEST_F(MoveValidity, CancellingKeepsTheDateOfTheMoveBefore) {
    Dialogue program(place_);
    aim(program, 4, 25);
    moveAt(program, "30/06/2024"); // leaves 31/12/2024
    program.focus(origTree, 2);
    program.focus(destTree, 21);
    program.must(R"({"do":"when","form":"FRMQZ_DATAFINELEGAME","steps":[{"do":"click","control":"CMD_ANNULLA"}]})");
    program.must(R"({"do":"answer","values":[6]})");
    EXPECT_EQ((std::vector<std::string>{"Spostare il nodo 110 e tutti i suoi figli?"}),
              messages(program.click(moveButton)));
    EXPECT_EQ((std::vector<std::string>{"2024-12-31"}), row("QZ02_DATAFINEVAL", "QZ02_ID = 2"));
}

TEST_F(MoveValidity, ALinkThatBeginsLaterEndsOnItsOwnFirstDay) {
    Database(place_).run("UPDATE QZ02_DISTINTA SET QZ02_DATAINIZIOVAL = '2025-03-01' WHERE QZ02_ID = 3;"
                         "INSERT INTO QZ03_PARAMETRI (QZ03_DITTA_CG18,QZ03_TIPOCARICODATA,QZ03_DATAFINEVAL) VALUES "
                         "(1,1,'2024-12-31')");
    {
        Dialogue program(place_);
        aim(program, 2, 21);
        EXPECT_EQ(1U, messages(moveAt(program, "30/06/2024")).size());
    }
    EXPECT_EQ((std::vector<std::string>{"2025-03-01", "2025-03-01"}),
              row("QZ02_DATAINIZIOVAL,QZ02_DATAFINEVAL", "QZ02_ID = 3"));
    EXPECT_EQ((std::vector<std::string>{"2024-07-01", "2024-12-31"}),
              row("QZ02_DATAINIZIOVAL,QZ02_DATAFINEVAL", "QZ02_ID_QZ01 = 2 AND QZ02_CLIFOR_CG44 = 111"));
}

TEST_F(MoveValidity, ALinkClosedInsideTheNewPeriodOverlapsIt) {
    Database database(place_);
    database.run("UPDATE QZ02_DISTINTA SET QZ02_DATAINIZIOVAL = '2025-03-01' WHERE QZ02_ID = 3");
    const std::string before = database.nodes();
    Dialogue program(place_);
    aim(program, 2, 21);
    const auto shown = messages(moveAt(program, "30/06/2024"));
    ASSERT_EQ(2U, shown.size());
    EXPECT_EQ("Cliente 111 già legato alla distinta AG: Nodo padre 110 - Bianchi S.r.l. nel periodo dal 01/03/2025 al "
              "01/03/2025\n",
              shown[1]);
    EXPECT_EQ(before, database.nodes());
}

TEST_F(MoveValidity, ALinkThatEndedBeforeKeepsItsEnd) {
    Database(place_).run("UPDATE QZ02_DISTINTA SET QZ02_DATAFINEVAL = '2024-01-31' WHERE QZ02_ID = 3");
    {
        Dialogue program(place_);
        aim(program, 2, 21);
        moveAt(program, "30/06/2024");
    }
    EXPECT_EQ((std::vector<std::string>{"2024-01-31", "null"}), row("QZ02_DATAFINEVAL,QZ02_UTENTEVAR", "QZ02_ID = 3"));
    EXPECT_EQ((std::vector<std::string>{"2024-07-01", "2099-12-31"}),
              row("QZ02_DATAINIZIOVAL,QZ02_DATAFINEVAL", "QZ02_ID_QZ01 = 2 AND QZ02_CLIFOR_CG44 = 111"));
}

TEST_F(MoveValidity, AllTheOverlapsAreTold) {
    Database database(place_);
    database.run("UPDATE QZ02_DISTINTA SET QZ02_CLIFOR_CG44 = 111 WHERE QZ02_ID = 22;"
                 "UPDATE QZ02_DISTINTA SET QZ02_CLIFOR_CG44 = 110, QZ02_IDPARENT_QZ02 = 20 WHERE QZ02_ID = 25");
    const std::string before = database.nodes();
    Dialogue program(place_);
    aim(program, 1, 21); // 110 and 120 below it, 111 below 110, which has no copy: its children are skipped
    const auto shown = messages(moveAt(program, "30/06/2024"));
    ASSERT_EQ(2U, shown.size());
    EXPECT_EQ(
        "Cliente 110 già legato alla distinta ZN: Nodo padre 200 - Nord nel periodo dal 01/01/2020 al 31/12/2099\n"
        "Cliente 120 già legato alla distinta ZN: Nodo padre 200 - Nord nel periodo dal 01/01/2025 al "
        "31/12/2099\n",
        shown[1]);
    EXPECT_EQ(before, database.nodes());
}

TEST_F(MoveValidity, AnOverlapRollsTheWholeMoveBack) {
    // Account 111, the child, stands in the destination already, for ever.
    Database database(place_);
    database.run("UPDATE QZ02_DISTINTA SET QZ02_CLIFOR_CG44 = 111 WHERE QZ02_ID = 22");
    const std::string before = database.nodes();
    Dialogue program(place_);
    aim(program, 2, 25);
    const auto shown = messages(moveAt(program, "30/06/2024"));
    ASSERT_EQ(2U, shown.size());
    EXPECT_EQ("Cliente 111 già legato alla distinta ZN: Nodo padre 210 - Ovest nel periodo dal 01/01/2020 al "
              "31/12/2099\n",
              shown[1]);
    EXPECT_FALSE(stretch(program.trace(), "BeginTrans", "RollbackTrans").empty());
    EXPECT_EQ(before, database.nodes());
}

TEST_F(MoveValidity, DifferentKindsAndEmptyDestinationsStopWithoutAWord) {
    Dialogue program(place_);
    program.select(destList, QStringLiteral("F3"));
    EXPECT_TRUE(messages(moveAt(program, "30/06/2024")).empty());
    program.select(destList, QStringLiteral("C4"));
    EXPECT_TRUE(messages(moveAt(program, "30/06/2024")).empty());
    EXPECT_TRUE(beginningWith(program.trace(), {"BeginTrans"}).empty());
}

TEST_F(MoveValidity, EnterOnADateThatIsNoneNeverRunsWithTheOneBefore) {
    Dialogue program(place_);
    aim(program, 2, 21);
    program.must(R"({"do":"when","form":"FRMQZ_DATAFINELEGAME","steps":[)"
                 R"({"do":"set","control":"TXT_DATACHIUSURALEGAME","value":"30/06/2027"},)"
                 R"({"do":"read","control":"LBL_SIGNIFICATO"},)"
                 R"({"do":"set","control":"TXT_DATACHIUSURALEGAME","value":"31/02/2028"},)"
                 R"({"do":"key","control":"TXT_DATACHIUSURALEGAME","code":13},)"
                 R"({"do":"read","control":"TXT_DATACHIUSURALEGAME"},{"do":"click","control":"CMD_ESEGUI"},)"
                 R"({"do":"read","control":"TXT_DATACHIUSURALEGAME"},{"do":"click","control":"CMD_ANNULLA"}]})");
    const auto clicked = program.click(moveButton);
    const auto replies = clicked.value(QLatin1String("modal"))[0][QLatin1String("replies")].toArray();
    ASSERT_EQ(8, replies.size());
    EXPECT_EQ("ultimo giorno del legame attuale; il nuovo inizia il 01/07/2027",
              text(replies.at(1)[QLatin1String("caption")]));
    for (const int at : {4, 6}) {
        EXPECT_EQ("31/02/2028", text(replies.at(at)[QLatin1String("value")]));
        EXPECT_EQ("31/02/2028 non è una data", text(replies.at(at)[QLatin1String("error")]));
    }
    EXPECT_EQ((std::vector<std::string>{"Data fine legame non impostata!"}), messages(clicked));
    EXPECT_EQ("", text(program.state().value(QLatin1String("DataFineLegame"))));
}

TEST_F(MoveValidity, TheDialogStaysOpenWithoutAValidDate) {
    Dialogue program(place_);
    aim(program, 2, 21);
    program.must(R"({"do":"when","form":"FRMQZ_DATAFINELEGAME","steps":[)"
                 R"({"do":"read","control":"FRMQZ_DATAFINELEGAME"},{"do":"click","control":"CMD_ESEGUI"},)"
                 R"({"do":"set","control":"TXT_DATACHIUSURALEGAME","value":"31/02/2024"},)"
                 R"({"do":"click","control":"CMD_ESEGUI"},{"do":"read","control":"CMD_ESEGUI"},)"
                 R"({"do":"read","control":"KVT_LABEL1"},{"do":"read","control":"CMD_ANNULLA"},{"do":"dismiss"}]})");
    const auto clicked = program.click(moveButton);
    const auto replies = clicked.value(QLatin1String("modal"))[0][QLatin1String("replies")].toArray();
    ASSERT_EQ(8, replies.size());
    EXPECT_EQ("true", text(replies.at(0)[QLatin1String("visible")]));
    EXPECT_EQ("&Esegui", text(replies.at(4)[QLatin1String("caption")]));
    EXPECT_EQ("Data fine legame", text(replies.at(5)[QLatin1String("caption")]));
    EXPECT_EQ("&Annulla", text(replies.at(6)[QLatin1String("caption")]));
    EXPECT_EQ("true", text(replies.at(7)[QLatin1String("ok")]));
    for (const auto& reply : replies)
        EXPECT_TRUE(reply[QLatin1String("messages")].toArray().isEmpty());
    EXPECT_EQ((std::vector<std::string>{"Data fine legame non impostata!"}), messages(clicked));
}

} // namespace
