// The window of the audit, and its request in a script.

#include "e2e/Database.h"
#include "e2e/Program.h"
#include "e2e/Texts.h"

#include <QJsonDocument>

#include <gtest/gtest.h>

using namespace e2e;

namespace {

class AuditWindow : public ::testing::Test {
protected:
    void SetUp() override {
        place_.makeForest();
        Database(place_).run(R"(
INSERT INTO QZ02_DISTINTA (QZ02_ID,QZ02_ID_QZ01,QZ02_IDPARENT_QZ02,QZ02_DITTA_CG18,QZ02_TIPOCF_CG44,QZ02_CLIFOR_CG44,
                           QZ02_DATAINIZIOVAL,QZ02_DATAFINEVAL,QZ02_GUID)
VALUES (40,2,999,1,0,100,'2010-01-01','2010-12-31','22222222-0000-0000-0000-000000000040'),
       (41,3,30,1,1,500,'2020-01-01','2099-12-31','22222222-0000-0000-0000-000000000041'),
       (42,1,1,1,0,110,'2020-01-01','2020-12-31','22222222-0000-0000-0000-000000000002');
)");
    }

    /// The replies of the steps that run in the audit's window.
    QJsonArray inWindow(Dialogue& program, QByteArray steps) {
        steps.replace('\n', ' ');
        program.must(R"({"do":"when","form":"FRM_VERIFICA","steps":[)" + steps + "]}");
        const auto reply = program.must(R"({"do":"audit"})");
        const auto replies = reply.value(QLatin1String("modal"))[0][QLatin1String("replies")].toArray();
        for (const auto& step : replies)
            EXPECT_TRUE(step[QLatin1String("ok")].toBool()) << json(reply);
        return replies;
    }

    Workplace place_;
};

TEST_F(AuditWindow, TheScriptIsToldWhatTheCommandLineTells) {
    const auto outcome =
        place_.run(place_.connection() + QStringList{"--check", "--severity", "hint", "--format", "json"});
    QJsonArray written;
    for (const QByteArray& line : outcome.out.split('\n'))
        if (!line.isEmpty())
            written.append(QJsonDocument::fromJson(line).object());
    EXPECT_LT(3, written.size());
    Dialogue program(place_, {}, false);
    EXPECT_EQ(written, program.must(R"({"do":"audit"})").value(QLatin1String("findings")).toArray());
    program.open();
    program.trace();
    const std::string before = json(program.state());
    EXPECT_EQ(written, program.must(R"({"do":"audit"})").value(QLatin1String("findings")).toArray());
    EXPECT_EQ(before, json(program.state()));
    EXPECT_TRUE(program.trace().empty());
    program.must(R"({"do":"company","value":2})");
    EXPECT_TRUE(program.must(R"({"do":"audit"})").value(QLatin1String("findings")).toArray().isEmpty());
}

TEST_F(AuditWindow, GroupsByRuleWithCounts) {
    Dialogue program(place_);
    const auto replies = inWindow(program, R"({"do":"read","control":"CMB_REGOLE"},{"do":"read","control":"LBL_TITOLO"},
{"do":"read","control":"GRD_RIGHE"},{"do":"set","control":"CMB_REGOLE","value":2},{"do":"read","control":"GRD_RIGHE"},
{"do":"read","control":"LBL_RILIEVO"},{"do":"set","control":"TXT_FILTRO","value":"nessuna riga"},
{"do":"read","control":"GRD_RIGHE"},{"do":"read","control":"LBL_RILIEVO"},{"do":"read","control":"CMD_MOSTRA"})");
    ASSERT_EQ(10, replies.size());
    std::string choices;
    for (const auto& item : replies[0][QLatin1String("items")].toArray())
        choices += text(item) + "\n";
    EXPECT_EQ("Tutte le regole (10)\nPadre inesistente (1)\nLegame doppio sotto lo stesso padre (2)\n"
              "Legami sovrapposti (3)\nGUID doppio (2)\nConto senza anagrafica (1)\nIntervallo tra due legami (1)\n",
              choices);
    EXPECT_EQ("Azienda 1: 8 errori, 1 avviso, 1 nota.", text(replies[1][QLatin1String("caption")]));
    const auto all = replies[2][QLatin1String("rows")].toArray();
    ASSERT_EQ(10, all.size());
    EXPECT_EQ("Padre inesistente", text(all[0][1]));
    EXPECT_EQ("Avviso", text(all[8][0]));
    EXPECT_EQ("Nota", text(all[9][0]));
    const auto doubles = replies[4][QLatin1String("rows")].toArray();
    ASSERT_EQ(2, doubles.size());
    EXPECT_EQ("2", text(doubles[0][3]));
    EXPECT_EQ("Bianchi S.r.l.", text(doubles[0][5]));
    EXPECT_TRUE(contains(text(replies[5][QLatin1String("caption")]), "Il conto sta due volte sotto lo stesso padre"));
    EXPECT_TRUE(replies[7][QLatin1String("rows")].toArray().isEmpty());
    EXPECT_EQ("", text(replies[8][QLatin1String("caption")]));
    EXPECT_FALSE(replies[9][QLatin1String("enabled")].toBool());
}

TEST_F(AuditWindow, EnterShowsTheNodeInItsTree) {
    Dialogue program(place_);
    program.select(destList, QStringLiteral("C2"));
    // The distinta on the left, the one on the right, and one that neither side shows.
    inWindow(program,
             R"({"do":"set","control":"TXT_FILTRO","value":"999"},{"do":"key","control":"GRD_RIGHE","code":13})");
    EXPECT_EQ(40, program.read(destTree).value(QLatin1String("focused")).toInt());
    inWindow(program, R"({"do":"set","control":"CMB_REGOLE","value":2},{"do":"select","control":"GRD_RIGHE","key":"1"},
{"do":"click","control":"CMD_MOSTRA"})");
    EXPECT_EQ(42, program.read(origTree).value(QLatin1String("focused")).toInt());
    EXPECT_EQ(40, program.read(destTree).value(QLatin1String("focused")).toInt());
    inWindow(program,
             R"({"do":"set","control":"TXT_FILTRO","value":"Acciai"},{"do":"key","control":"GRD_RIGHE","code":13})");
    EXPECT_EQ("F3", text(program.read(origList).value(QLatin1String("selected"))));
    EXPECT_EQ(30, program.read(origTree).value(QLatin1String("focused")).toInt());
}

TEST_F(AuditWindow, SaysWhereANodeCanNotBeShown) {
    Database(place_).run("UPDATE QZ02_DISTINTA SET QZ02_IDPARENT_QZ02 = 3 WHERE QZ02_ID = 2");
    Dialogue program(place_);
    inWindow(program, R"({"do":"set","control":"CMB_REGOLE","value":2},{"do":"read","control":"CMB_REGOLE"},
{"do":"key","control":"GRD_RIGHE","code":13})");
    EXPECT_TRUE(contains(text(program.must(R"({"do":"read","control":"StatusBar"})").value(QLatin1String("value"))),
                         "Il nodo 2 non si può mostrare"));
}

TEST_F(AuditWindow, CanBeGivenUp) {
    Dialogue program(place_);
    program.must(R"({"do":"when","form":"FRM_VERIFICA","steps":[{"do":"read","control":"LBL_TITOLO"},)"
                 R"({"do":"read","control":"GRD_RIGHE"},{"do":"click","control":"CMD_RIPETI"},)"
                 R"({"do":"read","control":"GRD_RIGHE"}]})");
    program.must(R"({"do":"cancel","after":0})");
    const auto reply = program.ask(R"({"do":"audit"})");
    const auto replies = reply.value(QLatin1String("modal"))[0][QLatin1String("replies")].toArray();
    ASSERT_EQ(4, replies.size()) << json(reply);
    EXPECT_EQ("La verifica è stata annullata.", text(replies[0][QLatin1String("caption")]));
    EXPECT_TRUE(replies[1][QLatin1String("rows")].toArray().isEmpty());
    EXPECT_EQ(10, replies[3][QLatin1String("rows")].toArray().size()) << json(reply);
}

TEST_F(AuditWindow, RepeatsTheAuditWithTheRuleThatWasChosen) {
    Dialogue program(place_);
    program.must(R"({"do":"when","form":"FRM_VERIFICA","steps":[{"do":"set","control":"CMB_REGOLE","value":2},)"
                 R"({"do":"click","control":"CMD_RIPETI"},{"do":"read","control":"CMB_REGOLE"},)"
                 R"({"do":"read","control":"GRD_RIGHE"}]})");
    const auto reply = program.must(R"({"do":"audit"})");
    const auto replies = reply.value(QLatin1String("modal"))[0][QLatin1String("replies")].toArray();
    ASSERT_EQ(4, replies.size());
    EXPECT_EQ(2, replies[2][QLatin1String("value")].toInt());
    EXPECT_EQ(2, replies[3][QLatin1String("rows")].toArray().size());
}

} // namespace
