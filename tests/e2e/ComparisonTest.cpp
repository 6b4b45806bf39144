// The comparison of two distinte on a day: by script, on the command line and in its window.

#include "contract/Date.h"
#include "e2e/Database.h"
#include "e2e/Program.h"
#include "e2e/Texts.h"

#include <QJsonDocument>

#include <gtest/gtest.h>

using namespace e2e;

namespace {

QString at(const char* day) {
    return QStringLiteral("{\"do\":\"compare\",\"date\":\"%1\"}").arg(QLatin1String(day));
}

/// "120 right", account and outcome of every row.
std::string outcomes(const QJsonArray& rows) {
    std::string all;
    for (const auto& row : rows)
        all += std::to_string(row[QLatin1String("account")].toInteger()) + " " + text(row[QLatin1String("outcome")]) +
               "\n";
    return all;
}

std::string compact(const QJsonValue& value) {
    return QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact).toStdString();
}

class Compared : public ::testing::Test {
protected:
    void SetUp() override {
        place_.makeForest();
        // Accounts of the left distinta stand on the right too: one as it is there, one under another parent, one for
        // another period.
        Database(place_).run(R"(
INSERT INTO QZ02_DISTINTA (QZ02_ID,QZ02_ID_QZ01,QZ02_IDPARENT_QZ02,QZ02_DITTA_CG18,QZ02_TIPOCF_CG44,QZ02_CLIFOR_CG44,
                           QZ02_DATAINIZIOVAL,QZ02_DATAFINEVAL,QZ02_GUID)
VALUES (40,2,NULL,1,0,100,'2020-01-01','2099-12-31','22222222-0000-0000-0000-000000000040'),
       (41,2,20,1,0,111,'2020-01-01','2099-12-31','22222222-0000-0000-0000-000000000041'),
       (42,2,40,1,0,110,'2020-01-01','2050-12-31','22222222-0000-0000-0000-000000000042');
)");
    }

    Outcome compare(const QStringList& arguments) {
        return place_.run(place_.connection() + QStringList{"--compare"} + arguments);
    }

    Workplace place_;
};

TEST_F(Compared, TellsWhatDiffersOnADay) {
    Dialogue program(place_);
    program.select(destList, QStringLiteral("C2"));
    const auto on = [&](const char* day) {
        return outcomes(program.must(at(day).toUtf8()).value(QLatin1String("rows")).toArray());
    };
    EXPECT_EQ("110 period\n111 parent\n120 left\n130 left\n200 right\n210 right\n211 right\n220 right\n999 left\n",
              on("31/12/2024"));
    EXPECT_EQ("110 period\n111 parent\n120 right\n130 left\n200 right\n210 right\n211 right\n220 right\n999 left\n",
              on("01/01/2025"));
    EXPECT_EQ("", on("31/12/2019"));
    EXPECT_EQ("110 left\n111 parent\n120 right\n130 left\n200 right\n210 right\n211 right\n220 right\n999 left\n",
              on("01/01/2051"));
    // Without a day it is of today, which lies after all of these.
    EXPECT_EQ(on(contract::Date::today().text().c_str()),
              outcomes(program.must(R"({"do":"compare"})").value(QLatin1String("rows")).toArray()));
}

TEST_F(Compared, TellsBothSidesOfARow) {
    Dialogue program(place_);
    program.select(destList, QStringLiteral("C2"));
    const auto rows = program.must(at("31/12/2024").toUtf8()).value(QLatin1String("rows")).toArray();
    EXPECT_EQ(R"([{"account":111,"left":{"end":"31/12/2099","id":3,"parent_account":110,"path":[100,110,111],)"
              R"("start":"01/01/2020"},"name":"Verdi & C.","outcome":"parent","right":{"end":"31/12/2099","id":41,)"
              R"("parent_account":200,"path":[200,111],"start":"01/01/2020"}}])",
              compact(rows.at(1)));
    EXPECT_EQ(R"([{"account":130,"left":{"end":"31/12/2099","id":5,"parent_account":null,"path":[130],)"
              R"("start":"01/01/2020"},"name":"Gialli","outcome":"left","right":null}])",
              compact(rows.at(3)));
    EXPECT_TRUE(rows.at(8)[QLatin1String("name")].toString().isEmpty());
}

TEST_F(Compared, ADistintaDoesNotDifferFromItself) {
    Dialogue program(place_);
    program.select(destList, QStringLiteral("C1"));
    EXPECT_TRUE(program.must(at("31/12/2024").toUtf8()).value(QLatin1String("rows")).toArray().isEmpty());
}

TEST_F(Compared, AccountsOfTheOtherKindAreOtherAccounts) {
    Database(place_).run("INSERT INTO QZ02_DISTINTA (QZ02_ID,QZ02_ID_QZ01,QZ02_IDPARENT_QZ02,QZ02_DITTA_CG18,"
                         "QZ02_TIPOCF_CG44,QZ02_CLIFOR_CG44,QZ02_DATAINIZIOVAL,QZ02_DATAFINEVAL) VALUES "
                         "(43,3,NULL,1,1,100,'2020-01-01','2099-12-31')");
    Dialogue program(place_);
    program.select(destList, QStringLiteral("F3"));
    const auto rows = outcomes(program.must(at("31/12/2024").toUtf8()).value(QLatin1String("rows")).toArray());
    EXPECT_TRUE(contains(rows, "100 left\n100 right\n")) << rows;
}

TEST_F(Compared, RefusesWhatItCanNotCompare) {
    Dialogue program(place_, {}, false);
    EXPECT_NE("", program.refusal(R"({"do":"compare"})"));
    program.open();
    EXPECT_NE("", program.refusal(R"({"do":"compare","date":"31/02/2024"})"));
    EXPECT_NE("", program.refusal(R"({"do":"compare","date":7})"));
    program.must(R"({"do":"compare","date":"01/01/2024"})");
}

// In the window

TEST_F(Compared, ShowsTheNodeInBothTrees) {
    Dialogue program(place_);
    program.select(destList, QStringLiteral("C2"));
    program.must(R"({"do":"when","form":"FRM_CONFRONTO","steps":[)"
                 R"({"do":"set","control":"CMB_ESITI","value":3},{"do":"read","control":"GRD_RIGHE"},)"
                 R"({"do":"read","control":"CMB_ESITI"},{"do":"read","control":"LBL_TITOLO"},)"
                 R"({"do":"key","control":"GRD_RIGHE","code":13}]})");
    const auto reply = program.must(at("31/12/2024").toUtf8());
    const auto replies = reply.value(QLatin1String("modal"))[0][QLatin1String("replies")].toArray();
    ASSERT_EQ(5, replies.size()) << json(reply);
    const auto rows = replies[1][QLatin1String("rows")].toArray();
    ASSERT_EQ(1, rows.size());
    EXPECT_EQ("111", text(rows[0][0]));
    EXPECT_EQ("100 > 110 > 111", text(rows[0][6]));
    EXPECT_EQ("200 > 111", text(rows[0][10]));
    const auto choices = replies[2][QLatin1String("items")].toArray();
    ASSERT_EQ(5, choices.size());
    EXPECT_EQ("Tutti (9)", text(choices[0]));
    EXPECT_EQ("Altro padre (1)", text(choices[3]));
    EXPECT_EQ("A sinistra AG-Agenti, a destra ZN-Zone, al 31/12/2024: 3 solo a sinistra, 4 solo a destra, 1 altro "
              "padre, 1 altro periodo.",
              text(replies[3][QLatin1String("caption")]));
    EXPECT_EQ(3, program.read(origTree).value(QLatin1String("focused")).toInt());
    EXPECT_EQ(41, program.read(destTree).value(QLatin1String("focused")).toInt());
}

TEST_F(Compared, ShowsATreeAsItStood) {
    Dialogue program(place_);
    program.select(destList, QStringLiteral("C2"));
    program.must(R"({"do":"when","form":"FRM_CONFRONTO","steps":[)"
                 R"({"do":"set","control":"CMB_VISTA","value":1},{"do":"read","control":"GRD_RIGHE"},)"
                 R"({"do":"set","control":"TXT_GIORNO","value":"01/01/2025"},{"do":"read","control":"GRD_RIGHE"},)"
                 R"({"do":"set","control":"CMB_VISTA","value":2},{"do":"read","control":"LBL_TITOLO"},)"
                 R"({"do":"select","control":"GRD_RIGHE","key":"1"},{"do":"click","control":"CMD_MOSTRA"}]})");
    const auto reply = program.must(at("31/12/2024").toUtf8());
    const auto replies = reply.value(QLatin1String("modal"))[0][QLatin1String("replies")].toArray();
    ASSERT_EQ(8, replies.size()) << json(reply);
    const auto codes = [&](int step) {
        std::string all;
        for (const auto& row : replies[step][QLatin1String("rows")].toArray())
            all += text(row[0]) + " ";
        return all;
    };
    EXPECT_EQ("100 110 111 120 130 999 ", codes(1));
    EXPECT_EQ("100 110 111 130 999 ", codes(3));
    EXPECT_EQ("ZN-Zone al 01/01/2025: 8 legami.", text(replies[5][QLatin1String("caption")]));
    EXPECT_TRUE(replies[7][QLatin1String("ok")].toBool()) << json(reply);
    // The second row of the right distinta.
    EXPECT_EQ(21, program.read(destTree).value(QLatin1String("focused")).toInt());
}

TEST_F(Compared, SaysThatADayIsMissing) {
    Dialogue program(place_);
    program.select(destList, QStringLiteral("C2"));
    program.must(R"({"do":"when","form":"FRM_CONFRONTO","steps":[)"
                 R"({"do":"set","control":"TXT_GIORNO","value":"31/02/2024"},{"do":"click","control":"CMD_CONFRONTA"},)"
                 R"({"do":"read","control":"LBL_TITOLO"},{"do":"read","control":"GRD_RIGHE"},)"
                 R"({"do":"set","control":"TXT_GIORNO","value":"31/12/2024"},{"do":"read","control":"GRD_RIGHE"}]})");
    const auto reply = program.must(at("31/12/2024").toUtf8());
    const auto replies = reply.value(QLatin1String("modal"))[0][QLatin1String("replies")].toArray();
    ASSERT_EQ(6, replies.size()) << json(reply);
    EXPECT_EQ("Indicare il giorno del confronto.", text(replies[2][QLatin1String("caption")]));
    EXPECT_TRUE(replies[3][QLatin1String("rows")].toArray().isEmpty());
    EXPECT_EQ(9, replies[5][QLatin1String("rows")].toArray().size());
}

// The command line

TEST_F(Compared, WritesCsvUnlessToldOtherwise) {
    Database(place_).run("UPDATE CG16_ANAGGEN SET CG16_RAGSOANAG = '@Bianchi' WHERE CG16_CODICE = 1110");
    const auto outcome = compare({"AG", "2", "--date", "31/12/2024"});
    EXPECT_EQ(1, outcome.status);
    EXPECT_EQ("", outcome.err.toStdString());
    const auto lines = outcome.out.split('\n');
    ASSERT_EQ(11, lines.size());
    EXPECT_EQ("account;name;outcome;left_id;left_parent_account;left_start;left_end;left_path;right_id;"
              "right_parent_account;right_start;right_end;right_path\r",
              lines[0].toStdString());
    EXPECT_EQ("110;'@Bianchi;period;2;100;01/01/2020;31/12/2099;100 > 110;42;100;01/01/2020;31/12/2050;100 > 110\r",
              lines[1].toStdString());
    EXPECT_EQ("120;Neri S.n.c.;left;4;100;01/01/2024;31/12/2024;100 > 120;;;;;\r", lines[3].toStdString());
}

TEST_F(Compared, WritesJsonAsTheScriptTellsIt) {
    const auto outcome = compare({"1", "ZN", "--date", "31/12/2024", "--format", "json"});
    EXPECT_EQ(1, outcome.status);
    std::string written = "[";
    for (const QByteArray& line : outcome.out.split('\n'))
        if (!line.isEmpty())
            written += (written == "[" ? "" : ",") + line.toStdString();
    Dialogue program(place_);
    program.select(destList, QStringLiteral("C2"));
    EXPECT_EQ(QJsonDocument(program.must(at("31/12/2024").toUtf8()).value(QLatin1String("rows")).toArray())
                  .toJson(QJsonDocument::Compact)
                  .toStdString(),
              written + "]");
}

TEST_F(Compared, TellsByItsStatusWhetherAnythingDiffers) {
    const auto none = compare({"1", "AG", "--format", "json"});
    EXPECT_EQ(0, none.status);
    EXPECT_TRUE(none.out.isEmpty());
    EXPECT_EQ(0, compare({"AG", "ZN", "--date", "31/12/2019"}).status);
    EXPECT_EQ(1, compare({"AG", "ZN"}).status);
    EXPECT_EQ(0, compare({"5", "F2", "--company", "2"}).status);
}

TEST_F(Compared, RefusesWhatItDoesNotKnow) {
    for (const QStringList& arguments :
         {QStringList{"AG"}, QStringList{"AG", "XX"}, QStringList{"5", "AG"},
          QStringList{"AG", "ZN", "--format", "text"}, QStringList{"AG", "ZN", "--date", "2024-12-31"},
          QStringList{"AG", "ZN", "--check"}, QStringList{"AG", "--format", "json"}}) {
        const auto outcome = compare(arguments);
        EXPECT_EQ(2, outcome.status) << arguments.join(QLatin1Char(' ')).toStdString();
        EXPECT_EQ(1, outcome.err.count(QLatin1Char('\n'))) << outcome.err.toStdString();
        EXPECT_TRUE(outcome.out.isEmpty());
    }
    EXPECT_EQ(3, place_.run({"--database", place_.path("missing.sqlite"), "--compare", "AG", "ZN"}).status);
    // A code that two distinte have names neither.
    Database(place_).run("UPDATE QZ01_TIPODISTINTA SET QZ01_CODICE = 'AG' WHERE QZ01_ID = 4");
    EXPECT_EQ(2, compare({"AG", "ZN"}).status);
    EXPECT_EQ(1, compare({"1", "ZN"}).status);
}

} // namespace
