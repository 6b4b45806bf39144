// A distinta in which every node hangs from the one before, deeper than any screen.

#include "e2e/Database.h"
#include "e2e/Program.h"
#include "e2e/Texts.h"

#include <gtest/gtest.h>

using namespace e2e;

namespace {

constexpr int levels = 40000; // more than a short integer counts
constexpr int above = 1000;   // ids of the chain begin after it

class Depth : public ::testing::Test {
protected:
    Depth() {
        place_.makeForest();
        Database database(place_.database());
        const auto number = [](int value) { return std::to_string(value); };
        database.run("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < " + number(levels) +
                     ") INSERT INTO CG16_ANAGGEN (CG16_CODICE,CG16_RAGSOANAG) SELECT 500000 + i, 'Livello ' || i || "
                     "'.' FROM n;"
                     "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < " +
                     number(levels) +
                     ") INSERT INTO CG44_CLIFOR (CG44_DITTA_CG18,CG44_TIPOCF,CG44_CLIFOR,CG44_CODICE_CG16) "
                     "SELECT 1, 0, 500000 + i, 500000 + i FROM n;"
                     "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < " +
                     number(levels) +
                     ") INSERT INTO QZ02_DISTINTA (QZ02_ID,QZ02_ID_QZ01,QZ02_IDPARENT_QZ02,QZ02_DITTA_CG18,"
                     "QZ02_TIPOCF_CG44,QZ02_CLIFOR_CG44,QZ02_DATAINIZIOVAL,QZ02_DATAFINEVAL) "
                     "SELECT " +
                     number(above) + " + i, 4, CASE WHEN i > 1 THEN " + number(above) +
                     " + i - 1 END, 1, 0, 500000 + i, '2020-01-01', '2099-12-31' FROM n");
    }

    Workplace place_{Workplace::Where::file};
};

} // namespace

TEST_F(Depth, AChainOpensIsSearchedToItsEndAndCloses) {
    Dialogue program(place_);
    EXPECT_TRUE(messages(program.select(origList, QStringLiteral("C4"))).empty());
    EXPECT_EQ(std::to_string(levels - 1), text(program.state().value(QLatin1String("LivelloMaxOrig"))));
    EXPECT_EQ("Comprimi liv." + std::to_string(levels), program.caption(QStringLiteral("CMD_ESPANDICOLLASSAORIG")));
    EXPECT_EQ(std::to_string(levels - 1), text(program.node(origTree, above + levels).value(QLatin1String("level"))));

    program.must(R"({"do":"set","control":"txtCercaOrig","value":"livello 40000."})");
    program.must(R"({"do":"key","control":"txtCercaOrig","code":13})");
    EXPECT_EQ(std::to_string(above + levels), text(program.read(origTree).value(QLatin1String("focused"))));
    program.must(R"({"do":"key","control":"TRW_ELEMDISTINTAORIG","code":36,"modifiers":["ctrl"]})");
    program.click(QStringLiteral("CMD_ESPANDICOLLASSAORIG"));
    EXPECT_EQ(std::to_string(levels - 2), text(program.state().value(QLatin1String("LivelloCorrenteOrig"))));

    program.must(R"({"do":"focus","control":"TRW_ELEMDISTINTAORIG","id":1001})");
    program.must(R"({"do":"close"})");
    EXPECT_EQ(0, program.finish());
}

TEST_F(Depth, ANodeMovesBelowTheEndOfAChain) {
    Dialogue program(place_);
    program.select(origList, QStringLiteral("C2"));
    program.select(destList, QStringLiteral("C4"));
    program.focus(origTree, 25);
    program.focus(destTree, above + levels);
    program.must(R"({"do":"answer","values":[6]})");
    program.click(QStringLiteral("CMD_SPOSTASTRU"));
    EXPECT_EQ(std::to_string(levels), text(program.node(destTree, 25).value(QLatin1String("level"))));
}
