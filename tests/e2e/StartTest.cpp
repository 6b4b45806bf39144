#include "e2e/Database.h"
#include "e2e/Program.h"
#include "e2e/Texts.h"

#include <gtest/gtest.h>

using namespace e2e;

namespace {

class Start : public ::testing::Test {
protected:
    void SetUp() override { place_.makeForest(); }
    Workplace place_;
};

TEST_F(Start, OpensAndClosesTheForm) {
    Dialogue program(place_, {}, false);
    EXPECT_EQ(R"({"messages":[],"modal":[],"ok":true})", json(program.ask(R"({"do":"open"})")));
    const auto closed = program.must(R"({"do":"close"})");
    EXPECT_EQ("true", text(closed.value(QLatin1String("result"))));
    EXPECT_EQ("none", program.refusal(R"({"do":"state"})").empty() ? "" : "none");
    program.open();
    EXPECT_EQ("1", text(program.state().value(QLatin1String("IdDistintaOrig"))));
    EXPECT_EQ(1, program.finish()); // the state of the closed form was refused
}

TEST_F(Start, PlacesTheFormByTheHostsValuesOrAt100) {
    Dialogue program(place_, {}, false);
    program.open();
    auto form = program.read(QStringLiteral("FRMQZ_COPIADISTINTA"));
    EXPECT_EQ("100", text(form.value(QLatin1String("left"))));
    EXPECT_EQ("100", text(form.value(QLatin1String("top"))));
    EXPECT_EQ("14685", text(form.value(QLatin1String("width"))));
    EXPECT_EQ("9058", text(form.value(QLatin1String("height"))));
    EXPECT_EQ("true", text(form.value(QLatin1String("visible"))));
    program.must(R"({"do":"close"})");

    program.open({{QStringLiteral("Left"), 300}, {QStringLiteral("Top"), -45}, {QStringLiteral("Caption"), "Prova"}});
    form = program.read(QStringLiteral("FRMQZ_COPIADISTINTA"));
    EXPECT_EQ("300", text(form.value(QLatin1String("left"))));
    EXPECT_EQ("-45", text(form.value(QLatin1String("top"))));
    EXPECT_EQ("Prova", text(form.value(QLatin1String("caption"))));
    EXPECT_EQ(0, program.finish());
}

TEST_F(Start, RunsTheStatementsOfTheStartUpInTheirOrder) {
    Dialogue program(place_);
    const auto statements = program.trace();
    const auto place = [&](const std::string& start) {
        const auto found = std::find_if(statements.begin(), statements.end(),
                                        [&](const std::string& text) { return startsWith(text, start); });
        EXPECT_NE(statements.end(), found) << start;
        return found - statements.begin();
    };
    EXPECT_EQ("SELECT * FROM QZ02_DISTINTA WHERE 1=0 ", statements.front());
    const auto customers =
        place("SELECT *  FROM QZ01_TIPODISTINTA WHERE QZ01_DITTA_CG18 = 1   AND QZ01_INDTIPOSOGG = 0 ");
    const auto suppliers =
        place("SELECT *  FROM QZ01_TIPODISTINTA WHERE QZ01_DITTA_CG18 = 1   AND QZ01_INDTIPOSOGG = 1 ");
    const auto origDivision = place(" SELECT QZ01_IDDIV_CO1A FROM QZ01_TIPODISTINTA WHERE QZ01_ID = 1");
    const auto destDivision = place(" SELECT QZ01_IDDIV_CO1A, QZ01_GUID FROM QZ01_TIPODISTINTA WHERE QZ01_ID = 1");
    EXPECT_LT(customers, suppliers);
    EXPECT_LT(suppliers, origDivision);
    EXPECT_LT(origDivision, destDivision);
    EXPECT_TRUE(startsWith(statements.back(), " SELECT   QZ03_ID_WF02 AS StatoLegame, ") ||
                startsWith(statements.back(), " SELECT   RTrim("))
        << statements.back();
}

TEST_F(Start, LoadsTheTreesWithTheExactStatements) {
    Dialogue program(place_);
    const auto nodes = beginningWith(program.trace(), {" SELECT QZ02_ID,  "});
    const std::string head =
        " SELECT QZ02_ID,   (SELECT CG16_RAGSOANAG    FROM CG44_CLIFOR    INNER JOIN CG16_ANAGGEN             ON "
        "CG44_CLIFOR.CG44_CODICE_CG16 = CG16_ANAGGEN.CG16_CODICE           AND QZ02_DISTINTA.QZ02_DITTA_CG18 = "
        "CG44_CLIFOR.CG44_DITTA_CG18            AND QZ02_DISTINTA.QZ02_TIPOCF_CG44 = CG44_CLIFOR.CG44_TIPOCF           "
        " AND QZ02_DISTINTA.QZ02_CLIFOR_CG44 = CG44_CLIFOR.CG44_CLIFOR  ) AS RagioneSociale, QZ02_DESCR,  "
        "QZ02_IDPARENT_QZ02,  QZ02_ID AS COD,  QZ02_IDPARENT_QZ02 AS CODP,  QZ02_CLIFOR_CG44,  QZ02_DATAINIZIOVAL,  "
        "QZ02_DATAFINEVAL ";
    const std::string tail = " , QZ02_GUID  FROM         QZ02_DISTINTA WHERE QZ02_DITTA_CG18 = 1   AND "
                             "QZ02_TIPOCF_CG44 = 0   AND QZ02_ID_QZ01 = '1'   AND QZ02_CLIFOR_CG44 IS NOT NULL";
    EXPECT_EQ((std::vector<std::string>{head +
                                            " , QZ02_CLIFORFATT_CG44 , QZ02_TIPOANAGFATT, QZ02_IDSTRUTTURA_LP09, "
                                            "QZ02_IDLOCALIZZATA_LP09, QZ02_INDEREPROMO" +
                                            tail,
                                        head + tail}),
              nodes);
}

TEST_F(Start, ReadsTheParametersExactly) {
    Dialogue program(place_);
    const auto read = beginningWith(program.trace(), {" SELECT   QZ03_ID_WF02"});
    ASSERT_FALSE(read.empty());
    EXPECT_EQ(" SELECT   QZ03_ID_WF02 AS StatoLegame,  ISNULL(QZ03_TIPOCARICODATA,0) AS TipoCaricaDATA,  "
              "ISNULL(QZ03_DATAINIZIOVAL,'01/01/2000') AS DataFissaINIZIO,  ISNULL(QZ03_DATAFINEVAL,'01/01/2099') AS "
              "DataFissaFINE,  ISNULL(QZ03_FLG_ANAG,0) AS flg_Anagrafica,  ISNULL(QZ03_FLG_CONDVEND,0) AS "
              "flg_CondVendita,  ISNULL(QZ03_FLG_CLAS,0) AS flg_Classificazioni,  ISNULL(QZ03_FLG_PROV,0) AS "
              "flg_Provvigioni, ISNULL(QZ03_TIPOANAGFATT,0) AS TipoCaricaFatt FROM  QZ03_PARAMETRI WHERE "
              "QZ03_DITTA_CG18 = 1",
              read.back());
}

TEST_F(Start, ASecondActivationLoadsNothing) {
    Dialogue program(place_);
    program.trace();
    program.must(R"({"do":"activate"})");
    EXPECT_TRUE(program.trace().empty());
}

TEST_F(Start, HasDefaultParametersWithoutARow) {
    Dialogue program(place_);
    const auto state = program.state();
    EXPECT_EQ("01/01/2000", text(state.value(QLatin1String("DataFissaINIZIO"))));
    EXPECT_EQ("31/12/2099", text(state.value(QLatin1String("DataFissaFINE"))));
    EXPECT_EQ("0", text(state.value(QLatin1String("StatoLegame"))));
    EXPECT_EQ("0", text(state.value(QLatin1String("TipoCaricaDATA"))));
    for (const char* flag : {"flg_Anagrafica", "flg_CondVendita", "flg_Classificazioni", "flg_Provvigioni"})
        EXPECT_EQ("true", text(state.value(QLatin1String(flag)))) << flag;
}

TEST_F(Start, ReadsARowOfNullParameters) {
    Database(place_).run("INSERT INTO QZ03_PARAMETRI (QZ03_DITTA_CG18) VALUES (1)");
    Dialogue program(place_);
    const auto state = program.state();
    EXPECT_EQ("01/01/2000", text(state.value(QLatin1String("DataFissaINIZIO"))));
    EXPECT_EQ("01/01/2099", text(state.value(QLatin1String("DataFissaFINE"))));
    for (const char* flag : {"flg_Anagrafica", "flg_CondVendita", "flg_Classificazioni", "flg_Provvigioni"})
        EXPECT_EQ("false", text(state.value(QLatin1String(flag)))) << flag;
}

TEST_F(Start, TellsTheWholeState) {
    Dialogue program(place_);
    const auto state = program.state();
    for (const char* name : {"IdDistintaOrig", "IdDistintaDest", "DivisioneOrig", "DivisioneDest", "GuidDistintaDest",
                             "DataFineLegame", "MessaggioSpostamento"})
        EXPECT_TRUE(state.value(QLatin1String(name)).isString()) << name;
    for (const char* name : {"TipoCFOrig", "TipoCFDest", "LivelloMaxOrig", "LivelloCorrenteOrig", "LivelloMaxDest",
                             "LivelloCorrenteDest", "CodiceAnagMenu", "TipoAnagMenu", "StatoLegame", "TipoCaricaDATA"})
        EXPECT_TRUE(state.value(QLatin1String(name)).isDouble()) << name;
    EXPECT_TRUE(state.value(QLatin1String("NodoStatoDest")).isNull());
    EXPECT_EQ("11111111-0000-0000-0000-000000000001", text(state.value(QLatin1String("GuidDistintaDest"))));
    EXPECT_EQ("01/01/2020", text(state.value(QLatin1String("DataInizioNodoDest"))));
    EXPECT_EQ("31/12/2099", text(state.value(QLatin1String("DataFineNodoDest"))));
    EXPECT_EQ("2", text(state.value(QLatin1String("LivelloMaxOrig"))));
    EXPECT_EQ("2", text(state.value(QLatin1String("LivelloCorrenteDest"))));
    EXPECT_EQ("", text(state.value(QLatin1String("DivisioneOrig"))));
}

TEST_F(Start, RegistersItselfWithTheHostsModels) {
    Dialogue program(place_);
    const auto calls = program.services();
    std::string all;
    for (const auto& call : calls) {
        EXPECT_TRUE(call[QLatin1String("service")].isString()) << json(call.toObject());
        EXPECT_TRUE(call[QLatin1String("operation")].isString()) << json(call.toObject());
        all += json(call.toObject());
    }
    EXPECT_TRUE(contains(all, "tsOpen")) << all;
    EXPECT_TRUE(contains(all, "\"Distinta\"")) << all;
    EXPECT_TRUE(program.services().isEmpty()); // handed over once

    program.must(R"({"do":"close"})");
    all.clear();
    for (const auto& call : program.services())
        all += json(call.toObject());
    EXPECT_TRUE(contains(all, "tsClose")) << all;
}

TEST_F(Start, TheHooksDoNothingWhileTheClassIsNotActive) {
    Dialogue program(place_, {}, false);
    program.open({{QStringLiteral("IsActive"), false}});
    std::string all;
    for (const auto& call : program.services())
        all += json(call.toObject());
    EXPECT_FALSE(contains(all, "\"Distinta\"")) << all;
}

TEST_F(Start, TheClassKeepsTheHostsValues) {
    Dialogue program(place_);
    const auto get = [&](const char* name) {
        return text(
            program.ask({{QStringLiteral("do"), QStringLiteral("class")}, {QStringLiteral("get"), QLatin1String(name)}})
                .value(QLatin1String("value")));
    };
    program.must(R"({"do":"class","set":"Filtro","value":"x"})");
    EXPECT_EQ("null", get("Filtro"));
    program.must(R"({"do":"class","set":"Left","value":7})");
    EXPECT_EQ("7", get("Left"));
    program.must(R"({"do":"class","set":"ProgramMode","value":65539})");
    EXPECT_EQ("3", get("ProgramMode"));
    program.must(R"({"do":"class","set":"ProgramMode","value":40000})");
    EXPECT_EQ("-25536", get("ProgramMode"));
    program.must(R"({"do":"class","set":"CanDelete","value":false})");
    EXPECT_EQ("false", get("CanDelete"));
    program.must(R"({"do":"class","call":"TransferData","value":"dati"})");
    program.must(R"({"do":"class","call":"BeforeExportToOffice"})");
    EXPECT_NE("", program.refusal(R"({"do":"class","get":"Nessuna"})"));
    EXPECT_NE("", program.refusal(R"({"do":"class","set":"Nessuna","value":1})"));
    EXPECT_NE("", program.refusal(R"({"do":"class","call":"Nessuna"})"));
    EXPECT_NE("", program.refusal(R"({"do":"class"})"));
}

TEST_F(Start, AModalFormWorksTheSame) {
    Dialogue program(place_, {}, false);
    program.open({{QStringLiteral("WindowModal"), true}});
    EXPECT_EQ((std::vector<int>{1, 2, 3, 4, 5, 6}), program.ids(origTree));
    program.select(destList, QStringLiteral("C2"));
    EXPECT_EQ("2", text(program.state().value(QLatin1String("IdDistintaDest"))));
    EXPECT_EQ("true", text(program.must(R"({"do":"close"})").value(QLatin1String("result"))));
    EXPECT_NE("", program.refusal(R"({"do":"state"})"));
    program.open();
    EXPECT_EQ((std::vector<int>{1, 2, 3, 4, 5, 6}), program.ids(destTree));
    program.must(R"({"do":"close"})");
    program.open({{QStringLiteral("WindowModal"), true}});
    program.must(R"({"do":"dismiss"})");
    EXPECT_NE("", program.refusal(R"({"do":"state"})"));
    program.open({{QStringLiteral("WindowModal"), true}});
    EXPECT_EQ(1U, messages(program.must(R"({"do":"company","value":2})")).size());
    EXPECT_NE("", program.refusal(R"({"do":"state"})"));
    program.open();
    EXPECT_EQ("P1", text(program.read(origList).value(QLatin1String("selected"))));
}

TEST_F(Start, AModalFormRegistersWithTheModelsAsSoonAsItStands) {
    Dialogue program(place_, {}, false);
    program.open({{QStringLiteral("WindowModal"), true}});
    std::string all;
    for (const auto& call : program.services())
        all += json(call.toObject());
    EXPECT_TRUE(contains(all, "\"Distinta\"")) << all;
}

TEST_F(Start, TheHostMayRefuseTheClose) {
    Dialogue program(place_);
    for (const char* who : {"frame", "script"}) {
        program.must(QByteArray(R"({"do":"host","set":"refuse_close","value":")") + who + R"("})");
        EXPECT_EQ("false", text(program.must(R"({"do":"close"})").value(QLatin1String("result")))) << who;
        EXPECT_EQ("1", text(program.state().value(QLatin1String("IdDistintaOrig")))) << who;
    }
    program.must(R"({"do":"host","set":"refuse_close","value":""})");
    EXPECT_EQ("true", text(program.must(R"({"do":"close"})").value(QLatin1String("result"))));
}

TEST_F(Start, AChangeOfCompanyClosesTheForm) {
    Dialogue program(place_);
    const auto changed = program.must(R"({"do":"company","value":2})");
    const auto shown = onlyMessage(changed);
    EXPECT_EQ("message", text(shown.value(QLatin1String("kind"))));
    EXPECT_EQ("Cambiando l'azienda di lavoro è necessario uscire e rientrare nel programma.",
              text(shown.value(QLatin1String("text"))));
    EXPECT_EQ("48", text(shown.value(QLatin1String("style"))));
    EXPECT_EQ("1", text(shown.value(QLatin1String("answer"))));
    EXPECT_NE("", program.refusal(R"({"do":"state"})"));

    program.open();
    // No customer type: the second entry is the suppliers' group, and nothing is loaded.
    EXPECT_EQ("P1", text(program.read(origList).value(QLatin1String("selected"))));
    EXPECT_TRUE(program.ids(origTree).empty());
    EXPECT_TRUE(program.ids(destTree).empty());
    program.select(origList, QStringLiteral("F5"));
    EXPECT_EQ((std::vector<int>{50}), program.ids(origTree));
}

TEST_F(Start, ACompanyWithoutRowsHasEmptyLists) {
    Dialogue program(place_, {QStringLiteral("--company"), QStringLiteral("9")});
    const auto entries = program.read(origList).value(QLatin1String("entries")).toArray();
    ASSERT_EQ(2, entries.size());
    EXPECT_EQ("P0", text(entries.at(0)[QLatin1String("key")]));
    EXPECT_EQ("P1", text(entries.at(1)[QLatin1String("key")]));
    EXPECT_EQ(0, program.finish());
}

} // namespace
