#include "e2e/Database.h"
#include "e2e/Program.h"
#include "e2e/Texts.h"

#include <gtest/gtest.h>

using namespace e2e;

namespace {

const QString button = QStringLiteral("CMD_PARAMETRI");

class Parameters : public ::testing::Test {
protected:
    void SetUp() override { place_.makeForest(); }

    /// Opens the form, runs these steps in it and gives their replies.
    static QJsonArray inForm(Dialogue& program, const QByteArray& steps, QJsonObject* reply = nullptr) {
        program.must(R"({"do":"when","form":"FRMQZ_PARAMETRI","steps":[)" + steps + "]}");
        const auto clicked = program.click(button);
        EXPECT_EQ((std::vector<std::string>{"FRMQZ_PARAMETRI"}), modalForms(clicked));
        if (reply != nullptr)
            *reply = clicked;
        return clicked.value(QLatin1String("modal"))[0][QLatin1String("replies")].toArray();
    }

    std::string stored(const char* column) {
        return Database(place_).value(std::string("SELECT ") + column +
                                      " FROM QZ03_PARAMETRI WHERE QZ03_DITTA_CG18 = 1");
    }

    Workplace place_;
};

TEST_F(Parameters, ShowsTheControls) {
    Dialogue program(place_);
    const auto replies = inForm(program, R"({"do":"read","control":"FRMQZ_PARAMETRI"},)"
                                         R"({"do":"read","control":"CHK_QZ03_FLG_CONDVEND"},)"
                                         R"({"do":"read","control":"CMB_QZ03_TIPOCARICODATA"},)"
                                         R"({"do":"read","control":"Frame3"},{"do":"read","control":"CMD_SALVA"},)"
                                         R"({"do":"read","control":"CMD_RIPRISTINA"})");
    ASSERT_EQ(6, replies.size());
    EXPECT_EQ("Parametri", text(replies.at(0)[QLatin1String("caption")]));
    EXPECT_EQ("Condizioni di vendita", text(replies.at(1)[QLatin1String("caption")]));
    EXPECT_EQ("[[\"Valorizza da nodo padre\",\"Valorizza da date fisse\"]]",
              text(replies.at(2)[QLatin1String("items")]));
    EXPECT_EQ("Date validità del legame", text(replies.at(3)[QLatin1String("caption")]));
    EXPECT_EQ("true", text(replies.at(4)[QLatin1String("ok")]));
    EXPECT_EQ("true", text(replies.at(5)[QLatin1String("ok")]));
}

TEST_F(Parameters, SavesTheRowAndTheMainFormReadsIt) {
    Dialogue program(place_);
    const auto replies = inForm(program, R"({"do":"set","control":"CHK_QZ03_FLG_PROV","value":false},)"
                                         R"({"do":"set","control":"CMB_QZ03_TIPOCARICODATA","value":1},)"
                                         R"({"do":"set","control":"TXT_QZ03_DATAINIZIOVAL","value":"01/03/2024"},)"
                                         R"({"do":"set","control":"TXT_QZ03_DATAFINEVAL","value":"01/03/2024"},)"
                                         R"({"do":"click","control":"CMD_SALVA"})");
    for (const auto& reply : replies) {
        EXPECT_EQ("true", text(reply[QLatin1String("ok")])) << json(reply.toObject());
        EXPECT_TRUE(reply[QLatin1String("messages")].toArray().isEmpty()) << json(reply.toObject());
    }
    EXPECT_EQ("1", stored("QZ03_TIPOCARICODATA"));
    EXPECT_EQ("2024-03-01", stored("QZ03_DATAINIZIOVAL"));
    EXPECT_EQ("2024-03-01", stored("QZ03_DATAFINEVAL"));
    EXPECT_EQ("1", stored("QZ03_FLG_CONDVEND"));
    const auto state = program.state();
    EXPECT_EQ("1", text(state.value(QLatin1String("TipoCaricaDATA"))));
    EXPECT_EQ("01/03/2024", text(state.value(QLatin1String("DataFissaFINE"))));
    EXPECT_EQ("true", text(state.value(QLatin1String("flg_CondVendita"))));
    EXPECT_EQ("false", text(state.value(QLatin1String("flg_Provvigioni"))));
}

TEST_F(Parameters, RefusesAnEndBeforeTheStart) {
    Dialogue program(place_);
    const auto replies = inForm(program, R"({"do":"set","control":"CMB_QZ03_TIPOCARICODATA","value":1},)"
                                         R"({"do":"set","control":"TXT_QZ03_DATAINIZIOVAL","value":"02/03/2024"},)"
                                         R"({"do":"set","control":"TXT_QZ03_DATAFINEVAL","value":"01/03/2024"},)"
                                         R"({"do":"click","control":"CMD_SALVA"})");
    ASSERT_EQ(4, replies.size());
    EXPECT_EQ("Attenzione data validità inizio deve essere inferiore di data validità fine",
              text(replies.at(3)[QLatin1String("messages")][0][QLatin1String("text")]));
    EXPECT_EQ("none", stored("QZ03_DITTA_CG18"));
}

TEST_F(Parameters, TheDatesBelongToTheFixedDates) {
    Database(place_).run(
        "INSERT INTO QZ03_PARAMETRI (QZ03_DITTA_CG18,QZ03_TIPOCARICODATA,QZ03_DATAINIZIOVAL,QZ03_DATAFINEVAL) "
        "VALUES (1,1,'2021-01-01','2031-12-31')");
    Dialogue program(place_);
    const QByteArray both =
        R"(,{"do":"read","control":"TXT_QZ03_DATAINIZIOVAL"},{"do":"read","control":"TXT_QZ03_DATAFINEVAL"})";
    const auto replies = inForm(program, R"({"do":"read","control":"CMB_QZ03_TIPOCARICODATA"})" + both +
                                             R"(,{"do":"set","control":"CMB_QZ03_TIPOCARICODATA","value":0})" + both +
                                             R"(,{"do":"set","control":"CMB_QZ03_TIPOCARICODATA","value":1})" + both);
    ASSERT_EQ(9, replies.size());
    EXPECT_EQ("1", text(replies.at(0)[QLatin1String("value")]));
    EXPECT_EQ("01/01/2021", text(replies.at(1)[QLatin1String("value")]));
    EXPECT_EQ("31/12/2031", text(replies.at(2)[QLatin1String("value")]));
    EXPECT_EQ("true", text(replies.at(1)[QLatin1String("enabled")]));
    for (const int date : {4, 5}) {
        EXPECT_EQ("", text(replies.at(date)[QLatin1String("value")]));
        EXPECT_EQ("false", text(replies.at(date)[QLatin1String("enabled")]));
    }
    for (const int date : {7, 8}) {
        EXPECT_EQ("", text(replies.at(date)[QLatin1String("value")]));
        EXPECT_EQ("true", text(replies.at(date)[QLatin1String("enabled")]));
    }
}

TEST_F(Parameters, LeavingAsksAboutUnsavedChanges) {
    Dialogue program(place_);
    QJsonObject reply;
    const QByteArray change = R"({"do":"set","control":"CHK_QZ03_FLG_PROV","value":false})";
    inForm(program, change, &reply); // closed by its close button, the question answers no
    EXPECT_EQ(1U, messages(reply).size()) << json(reply);
    EXPECT_EQ("7", text(onlyMessage(reply).value(QLatin1String("answer"))));
    EXPECT_EQ("none", stored("QZ03_DITTA_CG18"));

    program.must(R"({"do":"answer","values":[6]})");
    const auto replies = inForm(program, change + R"(,{"do":"dismiss"})", &reply);
    ASSERT_EQ(2, replies.size());
    EXPECT_EQ("Salvare le modifiche?", text(replies.at(1)[QLatin1String("messages")][0][QLatin1String("text")]));
    EXPECT_TRUE(messages(reply).empty()) << json(reply); // shown in the step only
    EXPECT_EQ("0", stored("QZ03_FLG_PROV"));
    EXPECT_EQ("1", stored("QZ03_FLG_CLAS"));
}

TEST_F(Parameters, RestoreShowsTheRecordAgain) {
    Dialogue program(place_);
    const auto replies = inForm(program, R"({"do":"set","control":"CHK_QZ03_FLG_PROV","value":false},)"
                                         R"({"do":"read","control":"CHK_QZ03_FLG_PROV"},)"
                                         R"({"do":"click","control":"CMD_RIPRISTINA"},)"
                                         R"({"do":"read","control":"CHK_QZ03_FLG_PROV"})");
    ASSERT_EQ(4, replies.size());
    EXPECT_EQ("false", text(replies.at(1)[QLatin1String("value")]));
    EXPECT_EQ("true", text(replies.at(3)[QLatin1String("value")]));
}

TEST_F(Parameters, ACompanyWithoutARowStartsFromTheDefaults) {
    Dialogue program(place_);
    const auto replies = inForm(program, R"({"do":"read","control":"CHK_QZ03_FLG_CONDVEND"},)"
                                         R"({"do":"read","control":"CHK_QZ03_FLG_CLAS"},)"
                                         R"({"do":"read","control":"CHK_QZ03_FLG_PROV"},)"
                                         R"({"do":"read","control":"CHK_QZ03_FLG_ANAG"},)"
                                         R"({"do":"read","control":"TXT_QZ03_DATAINIZIOVAL"},)"
                                         R"({"do":"read","control":"TXT_QZ03_DATAFINEVAL"},)"
                                         R"({"do":"read","control":"CMB_QZ03_TIPOCARICODATA"})");
    ASSERT_EQ(7, replies.size());
    for (int box = 0; box < 4; ++box)
        EXPECT_EQ("true", text(replies.at(box)[QLatin1String("value")])) << box;
    EXPECT_EQ("01/01/2000", text(replies.at(4)[QLatin1String("value")]));
    EXPECT_EQ("31/12/2099", text(replies.at(5)[QLatin1String("value")]));
    EXPECT_EQ("0", text(replies.at(6)[QLatin1String("value")]));
    EXPECT_EQ("none", stored("QZ03_DITTA_CG18"));
}

TEST_F(Parameters, TheStateIsChosenFromTheList) {
    Dialogue program(place_);
    program.must(R"({"do":"when","form":"lkp_Stati","steps":[{"do":"choose","value":30}]})");
    const auto replies = inForm(program, R"({"do":"key","control":"TXT_QZ03_ID_WF02","code":112,"modifiers":["ctrl"]},)"
                                         R"({"do":"read","control":"TXT_QZ03_ID_WF02"},)"
                                         R"({"do":"read","control":"TXT_WF02_DESCR"},)"
                                         R"({"do":"click","control":"CMD_SALVA"})");
    ASSERT_EQ(4, replies.size());
    EXPECT_EQ("lkp_Stati", text(replies.at(0)[QLatin1String("modal")][0][QLatin1String("form")]));
    EXPECT_EQ("30", text(replies.at(1)[QLatin1String("value")]));
    EXPECT_EQ("Chiuso", text(replies.at(2)[QLatin1String("value")]));
    EXPECT_EQ("30", stored("QZ03_ID_WF02"));
}

TEST_F(Parameters, TheFormIsReadWhileItStandsAndTheMainFormIsNot) {
    Dialogue program(place_);
    const auto replies =
        inForm(program, R"({"do":"read","control":"CMD_SPOSTASTRU"},{"do":"state"},{"do":"close"},)"
                        R"({"do":"company","value":2},{"do":"open"},{"do":"menu","item":"mnuDettagli"})");
    ASSERT_EQ(6, replies.size());
    EXPECT_EQ("false", text(replies.at(0)[QLatin1String("ok")]));
    EXPECT_EQ("true", text(replies.at(1)[QLatin1String("ok")]));
    for (const int step : {2, 3, 4, 5})
        EXPECT_EQ("false", text(replies.at(step)[QLatin1String("ok")])) << step;
    EXPECT_EQ(1, program.finish()); // refused steps are refused lines
    EXPECT_TRUE(contains(program.err().toStdString(), "FRMQZ_PARAMETRI"));
}

} // namespace
