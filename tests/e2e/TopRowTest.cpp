// The trees stand where they stood before a command filled them again.

#include "e2e/Database.h"
#include "e2e/Program.h"
#include "e2e/Texts.h"

#include <gtest/gtest.h>

using namespace e2e;

namespace {

class TopRow : public ::testing::Test {
protected:
    /// Sixty more nodes at the top level of both customer hierarchies: 101 to 160 and 201 to 260.
    void SetUp() override {
        place_.makeForest();
        std::string rows;
        for (int type = 1; type <= 2; ++type)
            for (int at = 1; at <= 60; ++at) {
                const std::string id = std::to_string(type * 100 + at);
                rows += (rows.empty() ? "(" : ",(") + id + "," + std::to_string(type) + ",NULL,1,0,9" + id +
                        ",'2020-01-01','2099-12-31','33333333-0000-0000-0000-000000000" + id + "')";
            }
        Database(place_).run(
            "INSERT INTO QZ02_DISTINTA (QZ02_ID,QZ02_ID_QZ01,QZ02_IDPARENT_QZ02,QZ02_DITTA_CG18,"
            "QZ02_TIPOCF_CG44,QZ02_CLIFOR_CG44,QZ02_DATAINIZIOVAL,QZ02_DATAFINEVAL,QZ02_GUID) VALUES " +
            rows);
    }
    static int top(Dialogue& program, const QString& tree) {
        return program.read(tree).value(QLatin1String("top_row")).toInt();
    }
    /// Coming from below, so that the row does not stand at the edge where bringing it into view would put it.
    static void goTo(Dialogue& program, const QString& tree, int id) {
        program.focus(tree, id + 2);
        program.focus(tree, id);
    }

    Workplace place_;
};

TEST_F(TopRow, IsTheSameAfterAMove) {
    Dialogue program(place_);
    program.select(destList, QStringLiteral("C2"));
    goTo(program, origTree, 150);
    goTo(program, destTree, 240);
    const int orig = top(program, origTree);
    const int dest = top(program, destTree);
    ASSERT_GT(orig, 0);
    ASSERT_GT(dest, 0);
    program.must(R"({"do":"answer","values":[6]})");
    program.click(QStringLiteral("CMD_SPOSTASTRU"));
    ASSERT_EQ("240", text(program.node(destTree, 150).value(QLatin1String("parent"))));
    EXPECT_EQ(orig, top(program, origTree));
    EXPECT_EQ(dest, top(program, destTree));
}

TEST_F(TopRow, IsTheSameInTheOriginAfterAnEditOfItsOwnDistinta) {
    Dialogue program(place_);
    program.select(destList, QStringLiteral("C1"));
    goTo(program, origTree, 150);
    const int orig = top(program, origTree);
    ASSERT_GT(orig, 0);
    program.ask({{QStringLiteral("do"), QStringLiteral("edit")},
                 {QStringLiteral("control"), destTree},
                 {QStringLiteral("id"), 120},
                 {QStringLiteral("column"), QStringLiteral("trQZ02_DATAFINEVAL")},
                 {QStringLiteral("value"), QStringLiteral("30/06/2050")}});
    EXPECT_EQ("30/06/2050", program.cell(origTree, 120, QStringLiteral("QZ02_DATAFINEVAL"))) << "filled again";
    EXPECT_EQ(orig, top(program, origTree));
}

} // namespace
