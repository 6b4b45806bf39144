#include "e2e/Database.h"
#include "e2e/Program.h"
#include "e2e/Texts.h"

#include <gtest/gtest.h>

using namespace e2e;

namespace {

class Interaction : public ::testing::Test {
protected:
    void SetUp() override { place_.makeForest(); }

    static QJsonObject mouse(Dialogue& program, const QString& tree, int id, const char* column, const char* button) {
        return program.ask({{QStringLiteral("do"), QStringLiteral("mouse")},
                            {QStringLiteral("control"), tree},
                            {QStringLiteral("id"), id},
                            {QStringLiteral("column"), QLatin1String(column)},
                            {QStringLiteral("button"), QLatin1String(button)}});
    }

    static std::vector<std::string> items(const QJsonObject& reply) {
        std::vector<std::string> names;
        const auto listed = reply.value(QLatin1String("items")).toArray();
        for (const auto& item : listed)
            names.push_back(text(item));
        return names;
    }

    /// Ids of the marked nodes of the origin tree.
    static std::vector<int> marked(Dialogue& program) {
        std::vector<int> ids;
        const auto nodes = program.read(origTree).value(QLatin1String("nodes")).toArray();
        for (const auto& node : nodes) {
            if (node[QLatin1String("cells")][QLatin1String("Seleziona")] == QLatin1String("True"))
                ids.push_back(node[QLatin1String("id")].toInt());
        }
        return ids;
    }

    static QJsonObject check(Dialogue& program, int id, int state) {
        return program.ask({{QStringLiteral("do"), QStringLiteral("check")},
                            {QStringLiteral("control"), origTree},
                            {QStringLiteral("id"), id},
                            {QStringLiteral("state"), state}});
    }

    static std::string operations(Dialogue& program) {
        std::string all;
        for (const auto& call : program.services())
            all += json(call.toObject()) + "\n";
        return all;
    }

    Workplace place_;
};

TEST_F(Interaction, ChecksReachUpToTheNextTopLevelNode) {
    Dialogue program(place_);
    check(program, 1, 1);
    EXPECT_EQ((std::vector<int>{1, 2, 3, 4}), marked(program));
    EXPECT_EQ("1", text(program.read(origTree).value(QLatin1String("focused"))));
    check(program, 2, 0); // its later sibling, 4, follows it
    EXPECT_EQ((std::vector<int>{1}), marked(program));
    check(program, 6, 1); // the last node of all
    EXPECT_EQ((std::vector<int>{1, 6}), marked(program));
    EXPECT_EQ("False", program.cell(origTree, 5, QStringLiteral("Seleziona")));
}

TEST_F(Interaction, RightClicksOpenTheMenusOfTheAccountCells) {
    Dialogue program(place_);
    auto reply = mouse(program, origTree, 2, "RagioneSociale", "right");
    EXPECT_EQ("mnuCollegamentoOrig", text(reply.value(QLatin1String("menu"))));
    EXPECT_EQ((std::vector<std::string>{"mnuSchedaCFOrig", "mnuAnagCFOrig"}), items(reply));
    EXPECT_EQ("2", text(program.read(origTree).value(QLatin1String("focused"))));
    EXPECT_EQ("110", text(program.state().value(QLatin1String("CodiceAnagMenu"))));

    reply = mouse(program, origTree, 3, "trQZ02_CLIFOR_CG44", "right");
    EXPECT_EQ("mnuCollegamentoOrig", text(reply.value(QLatin1String("menu"))));
    for (const char* column : {"trQZ02_DATAINIZIOVAL", "QZ02_DATAFINEVAL", "Seleziona"}) {
        reply = mouse(program, origTree, 3, column, "right");
        EXPECT_TRUE(reply.value(QLatin1String("menu")).isNull()) << column;
        EXPECT_TRUE(items(reply).empty()) << column;
    }

    reply = mouse(program, destTree, 4, "RagioneSociale", "right");
    EXPECT_EQ("mnuCollegamentoDest", text(reply.value(QLatin1String("menu"))));
    EXPECT_EQ((std::vector<std::string>{"mnuSchedaCFDest", "mnuAnagCFDest", "mnuStatoLegame", "mnuRilasciaFigli"}),
              items(reply));
    EXPECT_EQ("4", text(program.state().value(QLatin1String("NodoStatoDest"))));
    // The destination's code column has another name than the one that the menu asks for.
    EXPECT_TRUE(mouse(program, destTree, 4, "QZ02_CLIFOR_CG44", "right").value(QLatin1String("menu")).isNull());
    const auto below = program.must(R"({"do":"mouse","control":"TRW_ELEMDISTINTADEST","button":"right"})");
    EXPECT_TRUE(below.value(QLatin1String("menu")).isNull());
}

TEST_F(Interaction, AnOpenMenuIsClosedByAnyOtherLine) {
    Dialogue program(place_);
    mouse(program, origTree, 2, "RagioneSociale", "right");
    program.must(R"({"do":"read","control":"TRW_ELEMDISTINTAORIG"})");
    EXPECT_NE("", program.refusal(R"({"do":"menu","item":"mnuSchedaCFOrig"})"));
    mouse(program, origTree, 2, "RagioneSociale", "right");
    EXPECT_NE("", program.refusal("not a request"));
    EXPECT_NE("", program.refusal(R"({"do":"menu","item":"mnuSchedaCFOrig"})"));
    mouse(program, origTree, 2, "RagioneSociale", "right");
    EXPECT_NE("", program.refusal(R"({"do":"menu","item":"mnuStatoLegame"})")); // of the other menu
}

TEST_F(Interaction, TheMenuOpensTheCardOfTheAccount) {
    Dialogue program(place_);
    program.services();
    program.focus(origTree, 2);
    program.trace();
    mouse(program, origTree, 2, "RagioneSociale", "right");
    auto chosen = program.must(R"({"do":"menu","item":"mnuSchedaCFOrig"})");
    EXPECT_EQ((std::vector<std::string>{"SchedaClienti"}), modalForms(chosen));
    auto calls = operations(program);
    EXPECT_TRUE(contains(calls, "SchedaClienti")) << calls;
    EXPECT_TRUE(contains(calls, "110")) << calls;
    EXPECT_TRUE(program.trace().empty()); // the card reads for the host

    program.select(origList, QStringLiteral("F3"));
    mouse(program, origTree, 31, "RagioneSociale", "right");
    chosen = program.must(R"({"do":"menu","item":"mnuSchedaCFOrig"})");
    EXPECT_EQ((std::vector<std::string>{"SchedaFornitori"}), modalForms(chosen));
    EXPECT_EQ("1", text(program.state().value(QLatin1String("TipoAnagMenu"))));

    mouse(program, origTree, 31, "RagioneSociale", "right");
    program.must(R"({"do":"menu","item":"mnuAnagCFOrig"})");
    calls = operations(program);
    EXPECT_TRUE(contains(calls, "linkSupplier") || contains(calls, "Fornitor")) << calls;
}

TEST_F(Interaction, ALinkOpensTheCardOfTheKindOfTheLastMenu) {
    Dialogue program(place_);
    const auto link = [&](const QString& tree, int id) {
        return modalForms(program.ask({{QStringLiteral("do"), QStringLiteral("hyperlink")},
                                       {QStringLiteral("control"), tree},
                                       {QStringLiteral("id"), id},
                                       {QStringLiteral("column"), QStringLiteral("RagioneSociale")}}));
    };
    EXPECT_EQ((std::vector<std::string>{"SchedaClienti"}), link(destTree, 2));
    EXPECT_EQ("110", text(program.state().value(QLatin1String("CodiceAnagMenu"))));
    EXPECT_EQ("2", text(program.read(destTree).value(QLatin1String("focused"))));
    program.select(origList, QStringLiteral("F3"));
    EXPECT_EQ((std::vector<std::string>{"SchedaClienti"}), link(origTree, 31)); // the link sets no kind
    mouse(program, origTree, 31, "RagioneSociale", "right");
    EXPECT_EQ((std::vector<std::string>{"SchedaFornitori"}), link(destTree, 2));
}

TEST_F(Interaction, TheStateIsGivenToTheNodesBelow) {
    Dialogue program(place_);
    program.services();
    mouse(program, destTree, 1, "RagioneSociale", "right");
    program.must(R"({"do":"menu","item":"mnuRilasciaFigli"})");
    const auto calls = program.services();
    int copies = 0;
    bool confirmed = false;
    for (const auto& call : calls) {
        copies += call[QLatin1String("operation")] == QLatin1String("DuplicaStato") ? 1 : 0;
        confirmed = confirmed || call[QLatin1String("operation")] == QLatin1String("ConfermaStato");
    }
    EXPECT_EQ(3, copies); // 2, 3 and 4: nothing was clicked in the origin, so the next top-level node ends it
    EXPECT_TRUE(confirmed);
    EXPECT_EQ("1", text(program.read(destTree).value(QLatin1String("focused"))));
    for (const int id : {1, 2, 3, 4})
        EXPECT_EQ("Bozza", program.cell(destTree, id, QStringLiteral("Stato"))) << id;
    EXPECT_EQ("", program.cell(destTree, 5, QStringLiteral("Stato")));
    EXPECT_EQ("5", text(program.state().value(QLatin1String("NodoStatoDest")))); // past the last node visited
}

TEST_F(Interaction, TheStateIsChosenFromTheHostsList) {
    Dialogue program(place_);
    program.must(R"({"do":"when","form":"lkp_Stati","steps":[{"do":"choose","value":20}]})");
    mouse(program, destTree, 4, "RagioneSociale", "right");
    const auto chosen = program.must(R"({"do":"menu","item":"mnuStatoLegame"})");
    EXPECT_EQ((std::vector<std::string>{"lkp_Stati"}), modalForms(chosen));
    EXPECT_EQ("Approvato", program.cell(destTree, 4, QStringLiteral("Stato")));
}

TEST_F(Interaction, ALeftClickLeavesTheOpenLevelAsItIs) {
    Dialogue program(place_);
    mouse(program, destTree, 2, "RagioneSociale", "left");
    EXPECT_EQ("2", text(program.state().value(QLatin1String("LivelloCorrenteDest"))));
    EXPECT_EQ("Comprimi liv.3", program.caption(QStringLiteral("CMD_ESPANDICOLLASSADEST")));
    EXPECT_EQ("2", text(program.read(destTree).value(QLatin1String("focused"))));
}

TEST_F(Interaction, TheLevelClickedInTheOriginBoundsTheState) {
    Dialogue program(place_);
    mouse(program, origTree, 2, "trQZ02_DATAINIZIOVAL", "left"); // level 1
    mouse(program, destTree, 2, "RagioneSociale", "right");
    program.must(R"({"do":"menu","item":"mnuRilasciaFigli"})");
    EXPECT_EQ("Bozza", program.cell(destTree, 2, QStringLiteral("Stato")));
    EXPECT_EQ("Bozza", program.cell(destTree, 3, QStringLiteral("Stato")));
    EXPECT_EQ("", program.cell(destTree, 4, QStringLiteral("Stato"))); // level 1 again
    EXPECT_EQ("4", text(program.state().value(QLatin1String("NodoStatoDest"))));
}

TEST_F(Interaction, TheSearchFindsForwardAndWrapsRound) {
    Dialogue program(place_);
    program.focus(origTree, 4);
    program.must(R"({"do":"set","control":"txtCercaOrig","value":"bianchi"})");
    EXPECT_EQ("bianchi", text(program.read(QStringLiteral("txtCercaOrig")).value(QLatin1String("value"))));
    program.must(R"({"do":"key","control":"txtCercaOrig","code":13})");
    EXPECT_EQ("2", text(program.read(origTree).value(QLatin1String("focused"))));
    program.must(R"({"do":"key","control":"txtCercaOrig","code":13})"); // the focused node is tried first
    EXPECT_EQ("2", text(program.read(origTree).value(QLatin1String("focused"))));
    program.must(R"({"do":"set","control":"txtCercaOrig","value":"30"})");
    program.must(R"({"do":"menu","control":"MenuCercaOrig","key":"Codice"})");
    EXPECT_EQ("5", text(program.read(origTree).value(QLatin1String("focused"))));
    program.must(R"({"do":"menu","control":"MenuCercaOrig","key":"RagSoc"})"); // no name holds "30"
    EXPECT_EQ("5", text(program.read(origTree).value(QLatin1String("focused"))));
    EXPECT_NE("", program.refusal(R"({"do":"menu","control":"MenuCercaOrig","key":"Altro"})"));
}

TEST_F(Interaction, TheDestinationsCodeSearchNamesAColumnThatIsNotThere) {
    Dialogue program(place_);
    program.must(R"({"do":"set","control":"txtCercaDest","value":"111"})");
    const auto shown = onlyMessage(program.must(R"({"do":"menu","control":"MenuCercaDest","key":"Codice"})"));
    EXPECT_EQ("error", text(shown.value(QLatin1String("kind"))));
    EXPECT_EQ("4370", text(shown.value(QLatin1String("style"))));
    EXPECT_EQ("3", text(shown.value(QLatin1String("answer"))));
    EXPECT_EQ("1", text(program.read(destTree).value(QLatin1String("focused"))));
}

TEST_F(Interaction, TheFocusOfTheDestinationIsRemembered) {
    Dialogue program(place_);
    program.focus(destTree, 4);
    EXPECT_EQ("01/01/2024", text(program.state().value(QLatin1String("DataInizioNodoDest"))));
    EXPECT_EQ("31/12/2024", text(program.state().value(QLatin1String("DataFineNodoDest"))));
}

} // namespace
