// What a move would do, seen before it: by request, and in the window.

#include "e2e/Database.h"
#include "e2e/Program.h"

#include <gtest/gtest.h>

#include <QJsonDocument>
#include <sqlite3.h>

using namespace e2e;

namespace {

QJsonObject object(const char* text) {
    return QJsonDocument::fromJson(text).object();
}

class Preview : public ::testing::Test {
protected:
    void SetUp() override { place_.makeForest(); }

    /// The first customer distinta on the left, another one on the right, a node of each in focus.
    static void aim(Dialogue& program, int from, int under, const char* destType = "C2") {
        program.select(origList, QStringLiteral("C1"));
        program.select(destList, QLatin1String(destType));
        program.focus(origTree, from);
        if (under > 0)
            program.focus(destTree, under);
        program.trace();
    }

    /// Node 2 gets a child that a check leaves behind, and one after it that goes.
    void addOneThatStays() {
        Database(place_).run(R"(
INSERT INTO QZ02_DISTINTA (QZ02_ID,QZ02_ID_QZ01,QZ02_IDPARENT_QZ02,QZ02_DITTA_CG18,QZ02_TIPOCF_CG44,QZ02_CLIFOR_CG44,
                           QZ02_DATAINIZIOVAL,QZ02_DATAFINEVAL)
VALUES (8,1,2,1,0,110,'2020-01-01','2099-12-31'),(9,1,2,1,0,130,'2010-01-01','2011-12-31');)");
    }

    Workplace place_{Workplace::Where::file};
};

TEST_F(Preview, TellsAStructuralMoveRowByRow) {
    Dialogue program(place_);
    aim(program, 2, 21);
    const auto before = Database(place_).nodes();
    const auto reply = program.must(R"({"do":"preview","validity":false})");
    EXPECT_TRUE(reply.value(QStringLiteral("refused")).isNull());
    EXPECT_EQ(json(object(R"({"moves":2})")), json(reply.value(QStringLiteral("counts")).toObject()));
    const auto rows = reply.value(QStringLiteral("rows")).toArray();
    ASSERT_EQ(2, rows.size());
    EXPECT_EQ(json(object(R"({"id":2,"account":110,"name":"Bianchi S.r.l.","outcome":"moves","reason":null,
        "before":{"type":1,"parent":1,"start":"01/01/2020","end":"31/12/2099"},
        "after":{"type":2,"parent":21,"start":"01/01/2020","end":"31/12/2099"},"copy":null})")),
              json(rows[0].toObject()));
    EXPECT_EQ(json(object(R"({"id":3,"account":111,"name":"Verdi & C.","outcome":"moves","reason":null,
        "before":{"type":1,"parent":2,"start":"01/01/2020","end":"31/12/2099"},
        "after":{"type":2,"parent":2,"start":"01/01/2020","end":"31/12/2099"},"copy":null})")),
              json(rows[1].toObject()));
    EXPECT_EQ(std::vector<std::string>{"AnteprimaSpostamento"}, modalForms(reply));
    EXPECT_TRUE(messages(reply).empty());
    for (const auto& statement : program.trace())
        EXPECT_EQ("SELECT", statement.substr(statement.find_first_not_of(' '), 6)) << statement;
    EXPECT_EQ(before, Database(place_).nodes());
}

TEST_F(Preview, TellsAMoveWithValidityAndLeavesTheStateAlone) {
    Dialogue program(place_);
    aim(program, 2, 21);
    const auto state = program.state();
    const auto reply = program.must(R"({"do":"preview","validity":true,"date":"30/06/2024"})");
    EXPECT_TRUE(reply.value(QStringLiteral("refused")).isNull());
    EXPECT_EQ(json(object(R"({"copies":2})")), json(reply.value(QStringLiteral("counts")).toObject()));
    const auto rows = reply.value(QStringLiteral("rows")).toArray();
    ASSERT_EQ(2, rows.size());
    EXPECT_EQ(json(object(R"({"id":2,"account":110,"name":"Bianchi S.r.l.","outcome":"copies","reason":null,
        "before":{"type":1,"parent":1,"start":"01/01/2020","end":"31/12/2099"},
        "after":{"type":1,"parent":1,"start":"01/01/2020","end":"30/06/2024"},
        "copy":{"type":2,"parent_account":210,"start":"01/07/2024","end":"31/12/2099"}})")),
              json(rows[0].toObject()));
    EXPECT_EQ(json(object(R"({"type":2,"parent_account":110,"start":"01/07/2024","end":"31/12/2099"})")),
              json(rows[1].toObject().value(QStringLiteral("copy")).toObject()));
    EXPECT_EQ(json(state), json(program.state()));
    EXPECT_EQ("", text(program.state().value(QStringLiteral("DataFineLegame"))));
}

TEST_F(Preview, NamesTheNodesThatACheckLeavesBehind) {
    addOneThatStays();
    Dialogue program(place_);
    aim(program, 2, 21);
    const auto reply = program.must(R"({"do":"preview","validity":false})");
    EXPECT_EQ(json(object(R"({"moves":3,"stays":1})")), json(reply.value(QStringLiteral("counts")).toObject()));
    const auto stays = reply.value(QStringLiteral("rows")).toArray()[2].toObject();
    EXPECT_EQ(8, stays.value(QStringLiteral("id")).toInt());
    EXPECT_EQ("Cliente 110 coincide con la destinazione. Spostamento annullato.",
              text(stays.value(QStringLiteral("reason"))));
    EXPECT_EQ(json(stays.value(QStringLiteral("before")).toObject()),
              json(stays.value(QStringLiteral("after")).toObject()));
    // After the move the status line says so, and no box more is shown.
    program.must(R"({"do":"answer","values":[6]})");
    EXPECT_EQ(1U, messages(program.click(QStringLiteral("CMD_SPOSTASTRU"))).size());
    EXPECT_EQ("Spostati 3 nodi sotto 210 Ovest; 1 nodo resta dov'era",
              text(program.read(QStringLiteral("StatusBar")).value(QStringLiteral("value"))));
}

TEST_F(Preview, IsRefusedAsTheMoveWouldBe) {
    Dialogue program(place_);
    aim(program, 2, 3, "C1");
    auto reply = program.must(R"({"do":"preview","validity":false})");
    const char* const inside = "Cliente 110: legame presente in un nodo padre nella struttura.";
    EXPECT_EQ(inside + std::string("\n"), text(reply.value(QStringLiteral("refused"))));
    auto rows = reply.value(QStringLiteral("rows")).toArray();
    ASSERT_EQ(1, rows.size());
    EXPECT_EQ("refused", text(rows[0].toObject().value(QStringLiteral("outcome"))));
    EXPECT_EQ(inside, text(rows[0].toObject().value(QStringLiteral("reason"))));

    aim(program, 2, 21);
    reply = program.must(R"({"do":"preview","validity":true,"date":"31/12/2019"})");
    EXPECT_EQ("Attenzione la data di fine legame inserita è minore della data inizio legame del nodo di origine.",
              text(reply.value(QStringLiteral("refused"))));
    EXPECT_EQ(json(object(R"({"refused":1})")), json(reply.value(QStringLiteral("counts")).toObject()));
    // Its own first day is late enough.
    reply = program.must(R"({"do":"preview","validity":true,"date":"01/01/2020"})");
    EXPECT_TRUE(reply.value(QStringLiteral("refused")).isNull());

    aim(program, 2, 31, "F3");
    for (const char* request :
         {R"({"do":"preview","validity":false})", R"({"do":"preview","validity":true,"date":"30/06/2024"})"}) {
        reply = program.must(request);
        EXPECT_EQ("Non è consentito effettuare la manutenzione tra distinte di tipologia diversa(cliente/fornitore).",
                  text(reply.value(QStringLiteral("refused"))));
    }
    aim(program, 2, 0, "C4");
    reply = program.must(R"({"do":"preview","validity":false})");
    EXPECT_EQ("La distinta di destinazione selezionata non contiene nodi capostipite!",
              text(reply.value(QStringLiteral("refused"))));
    program.select(origList, QStringLiteral("C4"));
    reply = program.must(R"({"do":"preview","validity":false})");
    EXPECT_EQ("Scegliere un nodo nella distinta di origine.", text(reply.value(QStringLiteral("refused"))));
    EXPECT_TRUE(reply.value(QStringLiteral("rows")).toArray().isEmpty());
}

TEST_F(Preview, SeesWhatAnotherUserHasChanged) {
    Dialogue program(place_);
    aim(program, 2, 21);
    Database(place_).run("UPDATE QZ02_DISTINTA SET QZ02_IDPARENT_QZ02 = 5 WHERE QZ02_ID = 2");
    const auto reply = program.must(R"({"do":"preview","validity":false})");
    EXPECT_EQ("Il nodo 110 è stato modificato da un altro utente: premere F5 per aggiornare. Spostamento annullato.\n",
              text(reply.value(QStringLiteral("refused"))));
}

TEST_F(Preview, WorksBesideAnotherWritersLock) {
    Dialogue program(place_);
    aim(program, 2, 21);
    sqlite3* other = nullptr;
    ASSERT_EQ(SQLITE_OK, sqlite3_open(place_.database().toUtf8().constData(), &other));
    ASSERT_EQ(SQLITE_OK, sqlite3_exec(other,
                                      "BEGIN IMMEDIATE; UPDATE QZ02_DISTINTA SET QZ02_UTENTEVAR = 'X' WHERE "
                                      "QZ02_ID = 50",
                                      nullptr, nullptr, nullptr));
    const auto reply = program.must(R"({"do":"preview","validity":true,"date":"30/06/2024"})");
    EXPECT_EQ(2, reply.value(QStringLiteral("rows")).toArray().size());
    sqlite3_exec(other, "ROLLBACK", nullptr, nullptr, nullptr);
    sqlite3_close(other);
}

TEST_F(Preview, RefusesARequestThatIsNone) {
    Dialogue program(place_);
    EXPECT_NE("", program.refusal(R"({"do":"preview","validity":true,"date":"31/02/2024"})"));
    EXPECT_NE("", program.refusal(R"({"do":"preview","validity":1})"));
    program.must(R"({"do":"close"})");
    EXPECT_NE("", program.refusal(R"({"do":"preview","validity":false})"));
    EXPECT_EQ(1, program.finish());
}

QJsonArray repliesOf(const QJsonObject& reply, const char* form) {
    const auto opened = reply.value(QStringLiteral("modal")).toArray();
    for (const auto& value : opened)
        if (text(value.toObject().value(QStringLiteral("form"))) == form)
            return value.toObject().value(QStringLiteral("replies")).toArray();
    ADD_FAILURE() << form << " did not open";
    return {};
}

TEST_F(Preview, WindowCountsFiltersAndMoves) {
    addOneThatStays();
    Dialogue program(place_);
    aim(program, 2, 21);
    program.must(R"({"do":"when","form":"AnteprimaSpostamento","steps":[)"
                 R"({"do":"read","control":"LBL_TITOLO"},{"do":"read","control":"GRD_RIGHE"},)"
                 R"({"do":"set","control":"CHK_RESTA","value":true},{"do":"read","control":"GRD_RIGHE"},)"
                 R"({"do":"read","control":"TXT_DATA"},{"do":"click","control":"CMD_SPOSTA"}]})");
    program.must(R"({"do":"answer","values":[6]})");
    const auto reply = program.must(R"({"do":"menu","item":"mnuAnteprima"})");
    const auto replies = repliesOf(reply, "AnteprimaSpostamento");
    ASSERT_EQ(6, replies.size());
    EXPECT_EQ("4 nodi: 3 si spostano, 1 resta", text(replies[0].toObject().value(QStringLiteral("caption"))));
    const auto first = replies[1].toObject().value(QStringLiteral("rows")).toArray()[0].toArray();
    EXPECT_EQ("110", text(first[0]));
    EXPECT_EQ("Bianchi S.r.l.", text(first[1]));
    EXPECT_EQ("si sposta", text(first[2]));
    EXPECT_EQ("AG, sotto 100 Rossi S.p.A., dal 01/01/2020 al 31/12/2099", text(first[3]));
    EXPECT_EQ("ZN, sotto 210 Ovest, dal 01/01/2020 al 31/12/2099", text(first[4]));
    const auto staying = replies[3].toObject().value(QStringLiteral("rows")).toArray();
    ASSERT_EQ(1, staying.size());
    EXPECT_EQ("resta: Cliente 110 coincide con la destinazione. Spostamento annullato.", text(staying[0].toArray()[2]));
    EXPECT_FALSE(replies[4].toObject().value(QStringLiteral("enabled")).toBool());
    EXPECT_EQ(std::vector<std::string>{"Spostare il nodo 110 e tutti i suoi figli?"}, messages(reply));
    EXPECT_EQ("21", Database(place_).value("SELECT QZ02_IDPARENT_QZ02 FROM QZ02_DISTINTA WHERE QZ02_ID = 2"));
}

TEST_F(Preview, WindowMovesWithValidityThroughTheFormsDialogWithThatDay) {
    Dialogue program(place_);
    aim(program, 2, 21);
    program.must(R"({"do":"when","form":"AnteprimaSpostamento","steps":[)"
                 R"({"do":"click","control":"RDB_VALIDITA"},{"do":"set","control":"TXT_DATA","value":"30/06/2024"},)"
                 R"({"do":"read","control":"LBL_TITOLO"},{"do":"read","control":"GRD_RIGHE"},)"
                 R"({"do":"click","control":"CMD_SPOSTA"}]})");
    program.must(R"({"do":"when","form":"FRMQZ_DATAFINELEGAME","steps":[)"
                 R"({"do":"read","control":"TXT_DATACHIUSURALEGAME"},{"do":"click","control":"CMD_ESEGUI"}]})");
    program.must(R"({"do":"answer","values":[6]})");
    const auto reply = program.must(R"({"do":"menu","item":"mnuAnteprima"})");
    const auto replies = repliesOf(reply, "AnteprimaSpostamento");
    ASSERT_EQ(5, replies.size());
    EXPECT_EQ("2 nodi: 2 si chiudono e si copiano", text(replies[2].toObject().value(QStringLiteral("caption"))));
    EXPECT_EQ("ZN, sotto 210 Ovest, dal 01/07/2024 al 31/12/2099",
              text(replies[3].toObject().value(QStringLiteral("rows")).toArray()[0].toArray()[4]));
    EXPECT_EQ("30/06/2024",
              text(repliesOf(reply, "FRMQZ_DATAFINELEGAME")[0].toObject().value(QStringLiteral("value"))));
    EXPECT_EQ(1U, messages(reply).size());
    EXPECT_EQ("2024-06-30", Database(place_).value("SELECT QZ02_DATAFINEVAL FROM QZ02_DISTINTA WHERE QZ02_ID = 2"));
    // The next dialog is empty again.
    program.must(R"({"do":"when","form":"FRMQZ_DATAFINELEGAME","steps":[)"
                 R"({"do":"read","control":"TXT_DATACHIUSURALEGAME"},{"do":"dismiss"}]})");
    const auto again = program.click(QStringLiteral("CMD_SPOSTAVALID"));
    EXPECT_EQ("", text(repliesOf(again, "FRMQZ_DATAFINELEGAME")[0].toObject().value(QStringLiteral("value"))));
}

TEST_F(Preview, WindowShowsANodeInItsTree) {
    Dialogue program(place_);
    aim(program, 2, 21);
    program.must(R"({"do":"when","form":"AnteprimaSpostamento","steps":[)"
                 R"({"do":"select","control":"GRD_RIGHE","key":"1"},)"
                 R"({"do":"key","control":"GRD_RIGHE","code":13}]})");
    const auto before = Database(place_).nodes();
    program.must(R"({"do":"menu","item":"mnuAnteprima"})");
    EXPECT_EQ(3, program.read(origTree).value(QStringLiteral("focused")).toInt());
    EXPECT_EQ(before, Database(place_).nodes());
}

} // namespace
