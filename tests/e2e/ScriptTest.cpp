#include "e2e/Database.h"
#include "e2e/Program.h"
#include "e2e/Texts.h"

#include <QFileInfo>

#include <gtest/gtest.h>

using namespace e2e;

namespace {

class Script : public ::testing::Test {
protected:
    void SetUp() override { place_.makeForest(); }
    Workplace place_;
};

TEST_F(Script, AnswersEveryLineWithOneObject) {
    const auto outcome = place_.runScript("# a comment\n\n   \n"
                                          "{\"do\":\"open\"}\r\n"
                                          "{\"do\":\"read\",\"control\":\"CMD_SPOSTASTRU\"}\n"
                                          "{\"do\":\"close\"}");
    EXPECT_EQ(0, outcome.status);
    EXPECT_EQ("", outcome.err.toStdString());
    ASSERT_EQ(3U, outcome.replies.size());
    EXPECT_EQ(3, outcome.out.count('\n'));
    EXPECT_TRUE(outcome.out.endsWith('\n'));
    EXPECT_TRUE(outcome.replies[1].value(QLatin1String("caption")).isString());
    EXPECT_TRUE(outcome.replies[1].value(QLatin1String("tooltip")).isString());
    EXPECT_EQ("true", text(outcome.replies[2].value(QLatin1String("result"))));
}

TEST_F(Script, AnEmptyScriptIsAllRight) {
    const auto outcome = place_.runScript("");
    EXPECT_EQ(0, outcome.status);
    EXPECT_TRUE(outcome.out.isEmpty());
}

TEST_F(Script, GoesOnAfterARefusedLineAndTellsAtTheEnd) {
    const auto outcome = place_.runScript("{\"do\":\"click\",\"control\":\"CMD_SPOSTASTRU\"}\n{\"do\":\"open\"}\n"
                                          "{\"do\":\"read\",\"control\":\"CMD_NESSUNO\"}\n{\"do\":\"close\"}\n");
    EXPECT_EQ(1, outcome.status);
    ASSERT_EQ(4U, outcome.replies.size());
    EXPECT_EQ("falsetruefalsetrue", text(outcome.replies[0].value(QLatin1String("ok"))) +
                                        text(outcome.replies[1].value(QLatin1String("ok"))) +
                                        text(outcome.replies[2].value(QLatin1String("ok"))) +
                                        text(outcome.replies[3].value(QLatin1String("ok"))));
    const std::string told = outcome.err.toStdString();
    EXPECT_EQ(1, outcome.err.count(QLatin1Char('\n'))) << told;
    EXPECT_TRUE(contains(told, "riga 1")) << told;
    EXPECT_TRUE(contains(told, "riga 3")) << told;
    EXPECT_TRUE(contains(told, "CMD_NESSUNO")) << told;
}

TEST_F(Script, RefusesWhatIsNoRequest) {
    Dialogue program(place_);
    for (const char* line :
         {"x",
          "[]",
          "{}",
          R"({"do":1})",
          R"({"do":"nothing"})",
          R"({"do":"OPEN"})",
          R"({"do":"read"})",
          R"({"do":"read","control":7})",
          R"({"do":"click","control":"NESSUNO"})",
          R"({"do":"focus","control":"TRW_ELEMDISTINTAORIG","id":"2"})",
          R"({"do":"focus","control":"TRW_ELEMDISTINTAORIG","id":2.5})",
          R"({"do":"focus","control":"TRW_ELEMDISTINTAORIG","id":12345})",
          R"({"do":"focus","control":"TRW_ELEMDISTINTAORIG"})",
          R"({"do":"focus","control":"TRW_ELEMDISTINTAORIG","id":2,"column":"NESSUNA"})",
          R"({"do":"focus","control":"CMD_SPOSTASTRU","id":2})",
          R"({"do":"select","control":"TRW_DISTINTEORIG","key":"C99"})",
          R"({"do":"select","control":"TRW_DISTINTEORIG","key":1})",
          R"({"do":"mouse","control":"TRW_ELEMDISTINTAORIG","id":2,"column":"RagioneSociale","button":"middle"})",
          R"({"do":"mouse","control":"TRW_ELEMDISTINTAORIG","id":2,"column":"NESSUNA","button":"left"})",
          R"({"do":"hyperlink","control":"TRW_ELEMDISTINTAORIG","id":99,"column":"RagioneSociale"})",
          R"({"do":"hyperlink","control":"TRW_ELEMDISTINTAORIG","id":2,"column":"trQZ02_DATAINIZIOVAL"})",
          R"({"do":"check","control":"TRW_ELEMDISTINTAORIG","id":2,"state":"1"})",
          R"({"do":"check","control":"TRW_ELEMDISTINTADEST","id":2,"state":1})",
          R"({"do":"edit","control":"TRW_ELEMDISTINTADEST","id":99,"column":"trQZ02_DATAFINEVAL","value":""})",
          R"({"do":"edit","control":"TRW_ELEMDISTINTADEST","id":2,"column":"trQZ02_DATAFINEVAL","value":3})",
          R"({"do":"set","control":"txtCercaOrig"})",
          R"({"do":"set","control":"txtCercaOrig","value":3})",
          R"({"do":"key","control":"txtCercaOrig","code":"13"})",
          R"({"do":"key","control":"txtCercaOrig","code":13,"modifiers":["meta"]})",
          R"({"do":"key","control":"txtCercaOrig","code":13,"modifiers":"ctrl"})",
          R"({"do":"answer"})",
          R"({"do":"answer","values":["6"]})",
          R"({"do":"when","form":"X"})",
          R"({"do":"when","form":"X","steps":[1]})",
          R"({"do":"when","steps":[]})",
          R"({"do":"dismiss"})",
          R"({"do":"choose","value":3})",
          R"({"do":"menu","item":"mnuSchedaCFOrig"})",
          R"({"do":"menu"})",
          R"({"do":"company","value":"2"})",
          R"({"do":"resize","width":16000})",
          R"({"do":"resize","width":-1,"height":9600})",
          R"({"do":"host","set":"theme","value":"blu"})",
          R"({"do":"host","set":"zoom","value":9})",
          R"({"do":"host","set":"nulla","value":1})",
          R"({"do":"screenshot"})",
          R"({"do":"screenshot","file":"/nowhere/at/all.png"})",
          R"({"do":"open"})",
          R"({"do":"open","context":{"Nessuna":1}})",
          R"({"do":"open","context":[]})"}) {
        EXPECT_NE("", program.refusal(line)) << line;
    }
    EXPECT_EQ((std::vector<int>{1, 2, 3, 4, 5, 6}), program.ids(origTree)); // and works on
    EXPECT_EQ(1, program.finish());
    EXPECT_EQ(1, program.err().count(QLatin1Char('\n'))) << program.err().toStdString();
}

TEST_F(Script, WantsTheFormOpenForWhatActsOnIt) {
    Dialogue program(place_, {}, false);
    for (const char* line :
         {R"({"do":"close"})", R"({"do":"activate"})", R"({"do":"resize","width":16000,"height":9600})",
          R"({"do":"state"})", R"({"do":"read","control":"FRMQZ_COPIADISTINTA"})",
          R"({"do":"click","control":"CMD_SPOSTASTRU"})", R"({"do":"class","get":"Filtro"})",
          R"({"do":"menu","item":"mnuDettagli"})", R"({"do":"open","context":{"Nessuna":1}})",
          R"({"do":"open","context":{"Left":"x"}})"})
        EXPECT_NE("", program.refusal(line)) << line;
    EXPECT_TRUE(program.trace().empty());
    EXPECT_TRUE(program.services().isEmpty());
    program.open();
}

TEST_F(Script, AContextWithAnUnknownPropertyOpensNothing) {
    Dialogue program(place_, {}, false);
    EXPECT_TRUE(contains(program.refusal(R"({"do":"open","context":{"Top":5,"Nessuna":1}})"), "Nessuna"));
    EXPECT_NE("", program.refusal(R"({"do":"state"})"));
}

TEST_F(Script, HiddenAndDisabledControlsAreRefused) {
    Dialogue program(place_);
    program.click(QStringLiteral("CMD_VISTOPSX"));
    EXPECT_TRUE(contains(program.refusal(R"({"do":"select","control":"TRW_DISTINTEORIG","key":"C2"})"), "nascosto"));
    EXPECT_EQ("1", text(program.state().value(QLatin1String("IdDistintaOrig"))));
    EXPECT_EQ("C1", text(program.read(origList).value(QLatin1String("selected")))); // it can be read
}

TEST_F(Script, ReadsTheGeometryOfTheForm) {
    Dialogue program(place_);
    program.must(R"({"do":"resize","width":16000,"height":9600})");
    const auto form = program.read(QStringLiteral("FRMQZ_COPIADISTINTA"));
    EXPECT_EQ("16000", text(form.value(QLatin1String("width"))));
    EXPECT_EQ("9600", text(form.value(QLatin1String("height"))));
    const auto orig = program.read(origTree);
    const auto dest = program.read(destTree);
    EXPECT_GT(dest.value(QLatin1String("left")).toInt(), orig.value(QLatin1String("left")).toInt());
    EXPECT_EQ("true", text(orig.value(QLatin1String("visible"))));
    EXPECT_EQ("true", text(orig.value(QLatin1String("enabled"))));
}

TEST_F(Script, ReadsMenuEntries) {
    Dialogue program(place_);
    auto entry = program.read(QStringLiteral("mnuStatoLegame"));
    EXPECT_EQ("Gestione Stato", text(entry.value(QLatin1String("caption"))));
    entry = program.read(QStringLiteral("mnuSchedaCFOrig"));
    EXPECT_EQ("Collegamento scheda anagrafica", text(entry.value(QLatin1String("caption"))));
    entry = program.read(QStringLiteral("mnuAnagCFDest"));
    EXPECT_EQ("Collegamento ad anagrafica", text(entry.value(QLatin1String("caption"))));
    entry = program.read(QStringLiteral("mnuRilasciaFigli"));
    EXPECT_EQ("Imposta valore di stato sui figli", text(entry.value(QLatin1String("caption"))));
    entry = program.read(QStringLiteral("mnuDettagli"));
    EXPECT_EQ(
        "Dettagli",
        QString::fromStdString(text(entry.value(QLatin1String("caption")))).remove(QLatin1Char('&')).toStdString());
    EXPECT_EQ("true", text(entry.value(QLatin1String("enabled"))));
}

TEST_F(Script, AnswersStandForOneLineOfBoxes) {
    Dialogue program(place_);
    program.must(R"({"do":"answer","values":[6,6,6]})");
    program.must(R"({"do":"answer","values":[3]})"); // in place of what was left over
    const auto first = onlyMessage(program.click(QStringLiteral("CMD_SPOSTASTRU")));
    EXPECT_EQ("3", text(first.value(QLatin1String("answer"))));
    EXPECT_EQ("7", text(onlyMessage(program.click(QStringLiteral("CMD_SPOSTASTRU"))).value(QLatin1String("answer"))));
}

TEST_F(Script, QueuesServeOneOpeningEach) {
    Dialogue program(place_);
    program.must(R"({"do":"when","form":"FRMQZ_DATAFINELEGAME","steps":[{"do":"read","control":"CMD_ESEGUI"}]})");
    program.must(R"({"do":"when","form":"FRMQZ_DATAFINELEGAME","steps":[{"do":"trace"},{"do":"nothing"}]})");
    const QString button = QStringLiteral("CMD_SPOSTAVALID");
    const auto repliesOf = [](const QJsonObject& reply) {
        return reply.value(QLatin1String("modal"))[0][QLatin1String("replies")].toArray();
    };
    auto replies = repliesOf(program.click(button));
    ASSERT_EQ(1, replies.size());
    EXPECT_EQ("&Esegui", text(replies.at(0)[QLatin1String("caption")]));
    replies = repliesOf(program.click(button));
    ASSERT_EQ(2, replies.size());
    EXPECT_TRUE(replies.at(0)[QLatin1String("statements")].isArray());
    EXPECT_EQ("false", text(replies.at(1)[QLatin1String("ok")]));
    EXPECT_TRUE(replies.at(0)[QLatin1String("messages")].isArray());
    EXPECT_TRUE(replies.at(0)[QLatin1String("modal")].isArray());
    const auto third = program.click(button);
    EXPECT_EQ((std::vector<std::string>{"FRMQZ_DATAFINELEGAME"}), modalForms(third));
    EXPECT_TRUE(repliesOf(third).isEmpty());
    EXPECT_EQ(1, program.finish());
}

TEST_F(Script, WritesPictures) {
    Dialogue program(place_);
    const QString file = place_.path(QStringLiteral("a.png"));
    program.must(R"({"do":"screenshot","file":"a.png"})"); // relative to where the program runs
    EXPECT_GT(QFileInfo(file).size(), 1000);
    program.must(R"({"do":"when","form":"FRMQZ_DATAFINELEGAME","steps":[{"do":"screenshot","file":"b.png"}]})");
    program.click(QStringLiteral("CMD_SPOSTAVALID"));
    EXPECT_GT(QFileInfo(place_.path(QStringLiteral("b.png"))).size(), 500);
    program.must(R"({"do":"close"})");
    program.must(R"({"do":"screenshot","file":"c.png"})");
    EXPECT_GT(QFileInfo(place_.path(QStringLiteral("c.png"))).size(), 500);
}

TEST_F(Script, ThemesAndZoomCanBeSet) {
    Dialogue program(place_);
    for (const char* line :
         {R"({"do":"host","set":"theme","value":"scuro"})", R"({"do":"host","set":"zoom","value":14})",
          R"({"do":"host","set":"theme","value":"chiaro"})", R"({"do":"host","set":"zoom","value":8})"})
        program.must(line);
    EXPECT_EQ((std::vector<int>{1, 2, 3, 4, 5, 6}), program.ids(origTree));
}

TEST_F(Script, QuitEndsTheProgram) {
    const auto outcome = place_.runScript("{\"do\":\"open\"}\n{\"do\":\"quit\"}\n{\"do\":\"close\"}\n");
    EXPECT_EQ(0, outcome.status);
    ASSERT_EQ(2U, outcome.replies.size());
    EXPECT_EQ(R"({"messages":[],"modal":[],"ok":true})", json(outcome.replies[1]));
}

TEST_F(Script, QuitEndsAModalFormToo) {
    const auto outcome = place_.runScript("{\"do\":\"open\",\"context\":{\"WindowModal\":true}}\n"
                                          "{\"do\":\"read\",\"control\":\"FRMQZ_COPIADISTINTA\"}\n{\"do\":\"quit\"}\n"
                                          "{\"do\":\"close\"}\n");
    EXPECT_EQ(0, outcome.status);
    EXPECT_EQ(3U, outcome.replies.size());
}

TEST_F(Script, QuitAmongTheStepsIsTheLastOfThem) {
    const auto outcome = place_.runScript(
        R"({"do":"open"})"
        "\n"
        R"({"do":"when","form":"FRMQZ_DATAFINELEGAME","steps":[{"do":"quit"},{"do":"read","control":"NESSUNO"}]})"
        "\n"
        R"({"do":"click","control":"CMD_SPOSTAVALID"})"
        "\n"
        R"({"do":"close"})"
        "\n");
    EXPECT_EQ(0, outcome.status) << outcome.err.toStdString();
    ASSERT_EQ(3U, outcome.replies.size());
    EXPECT_EQ(1, outcome.replies[2].value(QLatin1String("modal"))[0][QLatin1String("replies")].toArray().size());
}

TEST_F(Script, AModalMainFormStandsInTheReplyThatOpenedIt) {
    Dialogue program(place_, {}, false);
    const QByteArray open = R"({"do":"open","context":{"WindowModal":true}})";
    EXPECT_EQ(R"({"messages":[],"modal":[{"form":"FRMQZ_COPIADISTINTA","replies":[]}],"ok":true})",
              json(program.ask(open)));
    program.must(R"({"do":"close"})");
    // With queued lines it closes after them, before its line is answered.
    program.must(R"({"do":"when","form":"FRMQZ_COPIADISTINTA","steps":[{"do":"state"}]})");
    const auto replies = program.must(open).value(QLatin1String("modal"))[0][QLatin1String("replies")].toArray();
    ASSERT_EQ(1, replies.size());
    EXPECT_TRUE(replies.at(0)[QLatin1String("state")].isObject());
    program.open();
    EXPECT_EQ(0, program.finish()) << program.err().toStdString();
}

TEST_F(Script, MessagesAndErrorsHaveTheseMembers) {
    Dialogue program(place_);
    const auto keys = [](const QJsonObject& shown) { return shown.keys().join(QLatin1Char(' ')).toStdString(); };
    EXPECT_EQ("answer detail kind style text title",
              keys(onlyMessage(program.click(QStringLiteral("CMD_SPOSTASTRU")))));
    program.must(R"({"do":"answer","values":[5]})");
    const auto error = onlyMessage(program.must(R"({"do":"menu","control":"MenuCercaDest","key":"Codice"})"));
    EXPECT_EQ("answer caption description detail kind number procedure style", keys(error));
    EXPECT_EQ("5", text(error.value(QLatin1String("answer"))));
    EXPECT_TRUE(error.value(QLatin1String("number")).isDouble());
}

TEST_F(Script, LinesOfAnyLengthAndWithAnyBytesAreAnswered) {
    const QByteArray padding(5'000'000, 'x');
    const auto outcome = place_.runScript("{\"do\":\"open\",\"comment\":\"" + padding + "\"}\n" + padding + "\n" +
                                          QByteArray(5000, '[') + "\n{\"do\":\"read\",\"control\":\"" + padding +
                                          "\"}\n{\"do\":\"read\",\"control\":\"\xff\"}\n" + QByteArray(1, '\0') +
                                          "\n{\"do\":\"state\"}{\"do\":\"state\"}\n\t\v \n {\"do\":\"close\"} \n"
                                          "{\"do\":\"no\\u0000thing\"}");
    EXPECT_EQ(1, outcome.status);
    std::string told;
    for (const auto& reply : outcome.replies)
        told += reply.value(QLatin1String("ok")).toBool() ? '+' : '-';
    EXPECT_EQ("+------+-", told);
    EXPECT_TRUE(outcome.replies.back().value(QLatin1String("error")).toString().contains(QLatin1String("thing")));
    EXPECT_EQ(1, outcome.err.count(QLatin1Char('\n')));
    EXPECT_LT(outcome.err.size(), 5000); // a person reads it
    EXPECT_TRUE(contains(outcome.err.toStdString(), "riga 10: richiesta sconosciuta \"no thing\"\n"))
        << outcome.err.toStdString();
}

TEST_F(Script, TheNextCloseAloneIsRefused) {
    Dialogue program(place_);
    for (const char* who : {"frame", "script"}) {
        program.must(QByteArray(R"({"do":"host","set":"refuse_close","value":")") + who + R"("})");
        EXPECT_EQ("false", text(program.must(R"({"do":"close"})").value(QLatin1String("result")))) << who;
        EXPECT_EQ("true", text(program.must(R"({"do":"close"})").value(QLatin1String("result")))) << who;
        program.open();
    }
}

TEST_F(Script, TheFocusOpensWhatStandsOverTheNode) {
    Dialogue program(place_);
    const QString levels = QStringLiteral("CMD_ESPANDICOLLASSADEST");
    program.click(levels);
    program.click(levels);
    EXPECT_EQ("false", text(program.node(destTree, 1).value(QLatin1String("expanded"))));
    program.focus(destTree, 3);
    EXPECT_EQ("true", text(program.node(destTree, 1).value(QLatin1String("expanded"))));
    EXPECT_EQ("true", text(program.node(destTree, 2).value(QLatin1String("expanded"))));
    EXPECT_EQ("false", text(program.node(destTree, 5).value(QLatin1String("expanded"))));
    EXPECT_EQ("3", text(program.read(destTree).value(QLatin1String("focused"))));
}

TEST_F(Script, EndsWithoutAQuitAtTheEndOfItsInput) {
    Dialogue program(place_);
    EXPECT_EQ(0, program.finish());
    EXPECT_EQ("", program.err().toStdString());
}

TEST_F(Script, StandsUmlautsAndOtherLetters) {
    Dialogue program(place_);
    program.must(R"({"do":"set","control":"txtCercaOrig","value":"è già così – ß 漢"})");
    EXPECT_EQ("è già così – ß 漢", text(program.read(QStringLiteral("txtCercaOrig")).value(QLatin1String("value"))));
}

} // namespace
