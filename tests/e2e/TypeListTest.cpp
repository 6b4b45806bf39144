#include "e2e/Database.h"
#include "e2e/Program.h"
#include "e2e/Texts.h"

#include <gtest/gtest.h>

using namespace e2e;

namespace {

const QString origCaption = QStringLiteral("lblDescDistintaOrig");
const QString destCaption = QStringLiteral("lblDescDistintaDest");
const QString origLevels = QStringLiteral("CMD_ESPANDICOLLASSAORIG");
const QString destLevels = QStringLiteral("CMD_ESPANDICOLLASSADEST");

class Types : public ::testing::Test {
protected:
    void SetUp() override { place_.makeForest(); }
    Workplace place_;
};

struct Box {
    int left, top, width, height;
    bool visible;
    bool operator==(const Box&) const = default;
};

Box box(Dialogue& program, const QString& control) {
    const auto read = program.read(control);
    const auto number = [&](const char* name) { return read.value(QLatin1String(name)).toInt(-9999); };
    return {number("left"), number("top"), number("width"), number("height"),
            read.value(QLatin1String("visible")).toBool()};
}

TEST_F(Types, TheListsHoldTheTypesUnderTheirGroups) {
    Dialogue program(place_);
    for (const QString& list : {origList, destList}) {
        const auto read = program.read(list);
        const auto entries = read.value(QLatin1String("entries")).toArray();
        std::vector<std::string> told;
        for (const auto& entry : entries) {
            told.push_back(text(entry[QLatin1String("key")]) + "|" + text(entry[QLatin1String("text")]) + "|" +
                           text(entry[QLatin1String("parent")]) + "|" + text(entry[QLatin1String("image")]) + "|" +
                           text(entry[QLatin1String("selected_image")]));
        }
        EXPECT_EQ((std::vector<std::string>{"P0|Clienti|null|close|close", "C1|AG-Agenti|P0|schema|open",
                                            "C2|ZN-Zone|P0|schema|open", "C4|VU-Vuota   |P0|schema|open",
                                            "P1|Fornitori|null|close|close", "F3|FO-Fornitori|P1|schema|open"}),
                  told);
        EXPECT_EQ("C1", text(read.value(QLatin1String("selected"))));
        EXPECT_EQ("Seleziona la distinta da aggiornare", text(read.value(QLatin1String("tooltip"))));
    }
}

TEST_F(Types, TheFirstCustomerTypeIsLoadedAtStart) {
    Dialogue program(place_);
    for (const QString& tree : {origTree, destTree})
        EXPECT_EQ((std::vector<int>{1, 2, 3, 4, 5, 6}), program.ids(tree));
    EXPECT_EQ("DISTINTA CLIENTI        AG-Agenti", program.caption(origCaption));
    EXPECT_EQ("1", text(program.read(origTree).value(QLatin1String("focused"))));
    EXPECT_EQ("0", text(program.read(origTree).value(QLatin1String("top_row"))));
}

TEST_F(Types, TheTreesHaveTheirColumns) {
    Dialogue program(place_);
    const auto columns = [&](const QString& tree) {
        std::vector<std::string> told;
        const auto read = program.read(tree).value(QLatin1String("columns")).toArray();
        for (const auto& column : read) {
            if (column[QLatin1String("visible")].toBool())
                told.push_back(text(column[QLatin1String("name")]) + "|" + text(column[QLatin1String("caption")]) +
                               "|" + text(column[QLatin1String("field")]));
        }
        return told;
    };
    EXPECT_EQ((std::vector<std::string>{"trQZ02_CLIFOR_CG44|Codice|QZ02_CLIFOR_CG44",
                                        "RagioneSociale|Ragione Sociale|RagioneSociale",
                                        "trQZ02_DATAINIZIOVAL|Data inizio|QZ02_DATAINIZIOVAL",
                                        "QZ02_DATAFINEVAL|Data fine|QZ02_DATAFINEVAL", "Seleziona|Seleziona|"}),
              columns(origTree));
    auto dest = columns(destTree);
    ASSERT_GE(dest.size(), 4U);
    dest.resize(4); // a column for the state may follow
    EXPECT_EQ((std::vector<std::string>{"QZ02_CLIFOR_CG44|Codice|QZ02_CLIFOR_CG44",
                                        "RagioneSociale|Ragione Sociale|RagioneSociale",
                                        "trQZ02_DATAINIZIOVAL|Data inizio|QZ02_DATAINIZIOVAL",
                                        "trQZ02_DATAFINEVAL|Data fine|QZ02_DATAFINEVAL"}),
              dest);
}

TEST_F(Types, TheNodesStandUnderTheirParents) {
    Dialogue program(place_);
    const auto node = program.node(origTree, 3);
    EXPECT_EQ("2", text(node.value(QLatin1String("parent"))));
    EXPECT_EQ("2", text(node.value(QLatin1String("level"))));
    EXPECT_EQ("true", text(program.node(origTree, 1).value(QLatin1String("expanded"))));
    EXPECT_EQ("null", text(program.node(origTree, 5).value(QLatin1String("parent"))));
    EXPECT_EQ("111", program.cell(origTree, 3, QStringLiteral("trQZ02_CLIFOR_CG44")));
    EXPECT_EQ("Verdi & C.", program.cell(origTree, 3, QStringLiteral("RagioneSociale")));
    EXPECT_EQ("01/01/2020", program.cell(origTree, 3, QStringLiteral("trQZ02_DATAINIZIOVAL")));
    EXPECT_EQ("31/12/2099", program.cell(origTree, 3, QStringLiteral("QZ02_DATAFINEVAL")));
    EXPECT_EQ("False", program.cell(origTree, 3, QStringLiteral("Seleziona")));
    // An account that the registry does not know.
    EXPECT_EQ("", program.cell(origTree, 6, QStringLiteral("RagioneSociale")));
}

TEST_F(Types, ClicksFollowTheLopsidedCaptionRule) {
    Dialogue program(place_);
    program.select(destList, QStringLiteral("C2"));
    EXPECT_EQ("DISTINTA CLIENTI        ZN-Zone", program.caption(destCaption));
    EXPECT_EQ("DV", text(program.state().value(QLatin1String("DivisioneDest"))));

    // A supplier type clicked in the origin list rewrites the destination's caption.
    program.select(origList, QStringLiteral("F3"));
    EXPECT_EQ("DISTINTA CLIENTI        AG-Agenti", program.caption(origCaption));
    EXPECT_EQ("DISTINTA FORNITORI      ZN-Zone", program.caption(destCaption));
    EXPECT_EQ((std::vector<int>{30, 31}), program.ids(origTree));
    EXPECT_EQ("1", text(program.state().value(QLatin1String("TipoCFOrig"))));

    program.select(destList, QStringLiteral("F3"));
    EXPECT_EQ("DISTINTA FORNITORI      FO-Fornitori", program.caption(destCaption));
    program.select(origList, QStringLiteral("C4"));
    EXPECT_EQ("DISTINTA CLIENTI        VU-Vuota", program.caption(origCaption));
}

TEST_F(Types, AGroupChangesTheKindAndLoadsNothing) {
    Dialogue program(place_);
    program.trace();
    program.select(origList, QStringLiteral("P1"));
    EXPECT_EQ("1", text(program.state().value(QLatin1String("TipoCFOrig"))));
    EXPECT_EQ((std::vector<int>{1, 2, 3, 4, 5, 6}), program.ids(origTree));
    EXPECT_TRUE(program.trace().empty());

    const auto clicked = program.click(QStringLiteral("CMD_SPOSTASTRU"));
    const auto shown = onlyMessage(clicked);
    EXPECT_EQ("Non è consentito effettuare la manutenzione tra distinte di tipologia diversa(cliente/fornitore).",
              text(shown.value(QLatin1String("text"))));
    EXPECT_EQ("48", text(shown.value(QLatin1String("style"))));
    EXPECT_TRUE(messages(program.click(QStringLiteral("CMD_SPOSTAVALID"))).size() == 1); // the date is missing first
}

TEST_F(Types, AnEmptyTypeEmptiesTheTreeAndKeepsTheLevels) {
    Dialogue program(place_);
    EXPECT_EQ("Comprimi liv.3", program.caption(origLevels));
    program.select(origList, QStringLiteral("C4"));
    EXPECT_TRUE(program.ids(origTree).empty());
    EXPECT_EQ("Comprimi liv.3", program.caption(origLevels));
    EXPECT_EQ("4", text(program.state().value(QLatin1String("IdDistintaOrig"))));
    program.click(origLevels);
    EXPECT_EQ("Comprimi liv.3", program.caption(origLevels));
    EXPECT_EQ("null", text(program.read(origTree).value(QLatin1String("focused"))));
}

TEST_F(Types, TheDeepestLevelSeenIsKept) {
    Dialogue program(place_);
    program.select(origList, QStringLiteral("F3")); // one level less
    EXPECT_EQ("Comprimi liv.3", program.caption(origLevels));
    EXPECT_EQ("2", text(program.state().value(QLatin1String("LivelloMaxOrig"))));
}

TEST_F(Types, LevelsCloseAndOpenOneByOne) {
    Dialogue program(place_);
    const auto expanded = [&] {
        std::string told;
        const auto nodes = program.read(destTree).value(QLatin1String("nodes")).toArray();
        for (const auto& node : nodes) {
            const int id = node[QLatin1String("id")].toInt();
            if (id == 1 || id == 2 || id == 5)
                told += node[QLatin1String("expanded")].toBool() ? '+' : '-';
        }
        return told;
    };
    EXPECT_EQ("+++", expanded());
    program.click(destLevels);
    EXPECT_EQ("Comprimi liv.2", program.caption(destLevels));
    EXPECT_EQ("+-+", expanded());
    program.click(destLevels);
    EXPECT_EQ("Espandi liv.1", program.caption(destLevels));
    EXPECT_EQ("---", expanded());
    program.click(destLevels);
    EXPECT_EQ("Espandi liv.2", program.caption(destLevels));
    EXPECT_EQ("+-+", expanded());
    program.click(destLevels);
    EXPECT_EQ("Comprimi liv.3", program.caption(destLevels));
    EXPECT_EQ("+++", expanded());
}

TEST_F(Types, HidingAndShowingTheListsMovesTheTrees) {
    Dialogue program(place_);
    const Box list = box(program, origList);
    const Box origBefore = box(program, origTree);
    const Box destBefore = box(program, destTree);
    EXPECT_EQ(origBefore.top, destBefore.top);
    EXPECT_EQ(origBefore.height, destBefore.height);

    program.click(QStringLiteral("CMD_VISTOPSX"));
    const Box hidden = box(program, origTree);
    EXPECT_FALSE(box(program, origList).visible);
    EXPECT_FALSE(box(program, destList).visible);
    EXPECT_EQ(hidden.top, origBefore.top - list.height - 10); // Y + 200 in the place of Y + L + 210
    EXPECT_EQ(hidden.height, origBefore.height + list.height + 50);
    EXPECT_EQ(40, hidden.top + hidden.height - origBefore.top - origBefore.height);
    EXPECT_EQ(hidden.top, box(program, destTree).top);
    EXPECT_EQ(hidden.height, box(program, destTree).height);

    program.click(QStringLiteral("CMD_VISTOPDX")); // one flag for both buttons
    EXPECT_EQ(origBefore, box(program, origTree));
    EXPECT_EQ(destBefore, box(program, destTree));
    EXPECT_TRUE(box(program, origList).visible);
    EXPECT_TRUE(box(program, destList).visible);
}

TEST_F(Types, HidingTheDetailsGivesTheTreesTheirRoom) {
    Dialogue program(place_);
    const QString grid = QStringLiteral("GRD_DETTDISTINTAORIG");
    const Box before = box(program, origTree);
    EXPECT_TRUE(box(program, grid).visible);
    program.must(R"({"do":"menu","item":"mnuDettagli"})");
    EXPECT_FALSE(box(program, grid).visible);
    EXPECT_FALSE(box(program, QStringLiteral("GRD_DETTDISTINTADEST")).visible);
    EXPECT_GT(box(program, origTree).height, before.height);
    EXPECT_EQ(box(program, origTree).height, box(program, destTree).height);
    EXPECT_EQ(box(program, origTree).top, box(program, destTree).top);
    program.must(R"({"do":"menu","item":"mnuDettagli"})");
    EXPECT_TRUE(box(program, grid).visible);
    EXPECT_TRUE(box(program, QStringLiteral("GRD_DETTDISTINTADEST")).visible);
    EXPECT_EQ("missing", text(program.read(QStringLiteral("mnuDettagli")).value(QLatin1String("value"))));
}

TEST_F(Types, TheDetailGridFollowsTheFocus) {
    Dialogue program(place_);
    const auto subject = [&](const QString& grid) {
        return text(program.read(grid).value(QLatin1String("rows")).toArray().at(0)[1]);
    };
    EXPECT_EQ("100 Rossi S.p.A. - Via Roma 1 Torino TO Tel. 011 1 Fax 011 2",
              subject(QStringLiteral("GRD_DETTDISTINTAORIG")));
    program.focus(destTree, 2);
    EXPECT_TRUE(startsWith(subject(QStringLiteral("GRD_DETTDISTINTADEST")), "110 Bianchi S.r.l."));
    EXPECT_EQ("Dettaglio dell'anagrafica",
              text(program.read(QStringLiteral("GRD_DETTDISTINTADEST")).value(QLatin1String("tooltip"))));
    program.select(destList, QStringLiteral("C4"));
    EXPECT_TRUE(program.read(QStringLiteral("GRD_DETTDISTINTADEST")).value(QLatin1String("rows")).toArray().isEmpty());
}

} // namespace
