// Days before 1900, which old programs have left in databases for "no date", and days of a far future.

#include "e2e/Database.h"
#include "e2e/Program.h"
#include "e2e/Texts.h"

#include <gtest/gtest.h>

using namespace e2e;

namespace {

class OldDates : public ::testing::Test {
protected:
    void SetUp() override { place_.makeForest(); }

    std::string stored(int id) {
        const auto row = Database(place_).rows(
            "SELECT QZ02_DATAINIZIOVAL,QZ02_DATAFINEVAL FROM QZ02_DISTINTA WHERE QZ02_ID = " + std::to_string(id));
        return row.at(0).at(0) + " " + row.at(0).at(1);
    }

    Workplace place_;
};

TEST_F(OldDates, StandInBothTreesAndInTheState) {
    Database(place_).run("UPDATE QZ02_DISTINTA SET QZ02_DATAINIZIOVAL = '1899-12-30', QZ02_DATAFINEVAL = '2262-04-12' "
                         "WHERE QZ02_ID = 5");
    Dialogue program(place_);
    program.select(destList, QStringLiteral("C1"));
    program.focus(destTree, 5);
    EXPECT_EQ("30/12/1899", program.cell(origTree, 5, QStringLiteral("trQZ02_DATAINIZIOVAL")));
    EXPECT_EQ("12/04/2262", program.cell(origTree, 5, QStringLiteral("QZ02_DATAFINEVAL")));
    EXPECT_EQ("30/12/1899", program.cell(destTree, 5, QStringLiteral("trQZ02_DATAINIZIOVAL")));
    EXPECT_EQ("30/12/1899", text(program.state().value(QLatin1String("DataInizioNodoDest"))));
}

TEST_F(OldDates, AreKeptByAnEditOfTheOtherDate) {
    Database(place_).run("UPDATE QZ02_DISTINTA SET QZ02_DATAINIZIOVAL = '1899-12-30' WHERE QZ02_ID = 5");
    Dialogue program(place_);
    program.select(destList, QStringLiteral("C1"));
    const auto reply =
        program.must(R"({"do":"edit","control":"TRW_ELEMDISTINTADEST","id":5,"column":"trQZ02_DATAFINEVAL",)"
                     R"("value":"30/06/2050"})");
    EXPECT_TRUE(messages(reply).empty()) << json(reply);
    EXPECT_EQ("1899-12-30 2050-06-30", stored(5));
    // Typed, a day so early is none.
    program.must(R"({"do":"edit","control":"TRW_ELEMDISTINTADEST","id":5,"column":"trQZ02_DATAINIZIOVAL",)"
                 R"("value":"31/12/1899"})");
    EXPECT_EQ("1899-12-30 2050-06-30", stored(5));
}

TEST_F(OldDates, MoveWithTheirNode) {
    Database(place_).run("UPDATE QZ02_DISTINTA SET QZ02_DATAINIZIOVAL = '1899-12-30' WHERE QZ02_ID = 2");
    Dialogue program(place_);
    program.select(destList, QStringLiteral("C2"));
    program.focus(origTree, 2);
    program.focus(destTree, 21);
    program.must(R"({"do":"when","form":"FRMQZ_DATAFINELEGAME","steps":[)"
                 R"({"do":"set","control":"TXT_DATACHIUSURALEGAME","value":"30/06/2024"},)"
                 R"({"do":"click","control":"CMD_ESEGUI"}]})");
    program.must(R"({"do":"answer","values":[6]})");
    EXPECT_EQ((std::vector<std::string>{"Spostare il nodo 110 e tutti i suoi figli?"}),
              messages(program.click(QStringLiteral("CMD_SPOSTAVALID"))));
    EXPECT_EQ("1899-12-30 2024-06-30", stored(2));
}

TEST_F(OldDates, InTheParametersAreReadAndWrittenBack) {
    Database(place_).run(
        "INSERT INTO QZ03_PARAMETRI (QZ03_DITTA_CG18,QZ03_TIPOCARICODATA,QZ03_DATAINIZIOVAL,QZ03_DATAFINEVAL,"
        "QZ03_FLG_PROV) VALUES (1,1,'1899-12-30','2262-12-31',1)");
    Dialogue program(place_);
    const auto state = program.state();
    EXPECT_EQ("30/12/1899", text(state.value(QLatin1String("DataFissaINIZIO"))));
    EXPECT_EQ("31/12/2262", text(state.value(QLatin1String("DataFissaFINE"))));
    EXPECT_EQ("1", text(state.value(QLatin1String("TipoCaricaDATA"))));
    program.must(R"({"do":"when","form":"FRMQZ_PARAMETRI","steps":[)"
                 R"({"do":"read","control":"TXT_QZ03_DATAINIZIOVAL"},)"
                 R"({"do":"set","control":"CHK_QZ03_FLG_PROV","value":false},{"do":"click","control":"CMD_SALVA"}]})");
    const auto clicked = program.click(QStringLiteral("CMD_PARAMETRI"));
    const auto replies = clicked.value(QLatin1String("modal"))[0][QLatin1String("replies")].toArray();
    ASSERT_EQ(3, replies.size());
    EXPECT_EQ("30/12/1899", text(replies.at(0)[QLatin1String("value")]));
    EXPECT_EQ((std::vector<std::vector<std::string>>{{"1899-12-30", "2262-12-31", "0"}}),
              Database(place_).rows("SELECT QZ03_DATAINIZIOVAL, QZ03_DATAFINEVAL, QZ03_FLG_PROV FROM QZ03_PARAMETRI"));
}

} // namespace
