#include "e2e/Database.h"
#include "e2e/Program.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace e2e;

namespace {

class Drag : public ::testing::Test {
protected:
    void SetUp() override { place_.makeForest(); }

    static void aim(Dialogue& program) {
        program.select(destList, QStringLiteral("C2"));
        program.focus(origTree, 1);
        program.focus(destTree, 20);
        program.trace();
    }
    std::string parentOf(int node) {
        return Database(place_).value("SELECT QZ02_IDPARENT_QZ02 FROM QZ02_DISTINTA WHERE QZ02_ID = " +
                                      std::to_string(node));
    }
    static std::string status(Dialogue& program) {
        return text(program.read(QStringLiteral("StatusBar"))[QLatin1String("value")]);
    }
    static bool began(const std::vector<std::string>& statements) {
        return std::find(statements.begin(), statements.end(), "BeginTrans") != statements.end();
    }

    const std::vector<std::string> question{"Spostare il nodo 110 e tutti i suoi figli?"};
    Workplace place_;
};

TEST_F(Drag, MovesWhatTheQuestionIsAnsweredYesFor) {
    Dialogue program(place_);
    aim(program);
    program.must(R"({"do":"answer","values":[6]})");
    const auto reply = program.must(R"({"do":"drag","id":2,"onto":22})");
    EXPECT_EQ(question, messages(reply));
    EXPECT_EQ("22", parentOf(2));
    EXPECT_EQ(2, program.node(destTree, 3)[QLatin1String("parent")].toInt());
}

TEST_F(Drag, AnsweredNoBothHaveTheFocusAndNothingMoved) {
    Dialogue program(place_);
    aim(program);
    EXPECT_EQ(question, messages(program.must(R"({"do":"drag","id":2,"onto":22})")));
    EXPECT_EQ(2, program.read(origTree)[QLatin1String("focused")].toInt());
    EXPECT_EQ(22, program.read(destTree)[QLatin1String("focused")].toInt());
    EXPECT_FALSE(began(program.trace()));
    EXPECT_EQ("1", parentOf(2));
}

TEST_F(Drag, SendsTheStatementsOfTheFocusesAndOfTheButton) {
    const auto moved = [](Dialogue& program, bool dragging) {
        aim(program);
        program.must(R"({"do":"answer","values":[6]})");
        if (dragging) {
            program.must(R"({"do":"drag","id":2,"onto":22})");
        } else {
            program.focus(origTree, 2);
            program.focus(destTree, 22);
            program.click(QStringLiteral("CMD_SPOSTASTRU"));
        }
        return program.trace();
    };
    std::vector<std::vector<std::string>> sent;
    for (const bool dragging : {false, true}) {
        Workplace place(Workplace::Where::file);
        place.makeForest();
        Dialogue program(place);
        sent.push_back(moved(program, dragging));
    }
    EXPECT_TRUE(began(sent[0]));
    EXPECT_EQ(sent[0], sent[1]);
}

TEST_F(Drag, WithCtrlAsksForTheDayAndMovesWithValidity) {
    Dialogue program(place_);
    aim(program);
    program.must(
        R"({"do":"when","form":"FRMQZ_DATAFINELEGAME","steps":[)"
        R"({"do":"set","control":"TXT_DATACHIUSURALEGAME","value":"30/06/2026"},{"do":"click","control":"CMD_ESEGUI"}]})");
    program.must(R"({"do":"answer","values":[6]})");
    const auto reply = program.must(R"({"do":"drag","id":2,"onto":22,"modifiers":["ctrl"]})");
    EXPECT_EQ(std::vector<std::string>{"FRMQZ_DATAFINELEGAME"}, modalForms(reply));
    EXPECT_EQ(question, messages(reply)) << json(reply);
    EXPECT_EQ("1", parentOf(2)) << "the old link stays, closed";
    EXPECT_EQ("1", Database(place_).value("SELECT Count(*) FROM QZ02_DISTINTA WHERE QZ02_IDPARENT_QZ02 = 22 AND "
                                          "QZ02_CLIFOR_CG44 = 110"));
}

TEST_F(Drag, IsRefusedWhereNothingCouldBeDropped) {
    Dialogue program(place_);
    aim(program);
    EXPECT_NE(std::string::npos, program.refusal(R"({"do":"drag","id":99,"onto":22})").find("non ha il nodo 99"));
    EXPECT_NE(std::string::npos, program.refusal(R"({"do":"drag","id":2,"onto":99})").find("non ha il nodo 99"));
    program.refusal(R"({"do":"drag","id":2})");
    program.refusal(R"({"do":"drag","id":2,"onto":22,"modifiers":["hyper"]})");
    program.select(destList, QStringLiteral("C1"));
    program.trace();
    EXPECT_NE(std::string::npos,
              program.refusal(R"({"do":"drag","id":2,"onto":2})").find("il nodo 2 non si può lasciare sul nodo 2"));
    EXPECT_FALSE(began(program.trace()));
    EXPECT_EQ("1", parentOf(2));
}

TEST_F(Drag, ClosedBranchesOpenForIt) {
    Dialogue program(place_);
    aim(program);
    program.must(R"({"do":"key","control":"TRW_ELEMDISTINTADEST","code":45})"); // minus
    EXPECT_FALSE(program.node(destTree, 20)[QLatin1String("expanded")].toBool());
    EXPECT_EQ(question, messages(program.must(R"({"do":"drag","id":2,"onto":22})")));
}

TEST_F(Drag, CutAndPasteDoTheSame) {
    Dialogue program(place_);
    aim(program);
    program.focus(origTree, 2);
    program.must(R"({"do":"key","control":"TRW_ELEMDISTINTAORIG","code":88,"modifiers":["ctrl"]})");
    EXPECT_EQ("Tagliato: 110 Bianchi S.r.l. – Ctrl+V su un nodo della destinazione lo sposta, Ctrl+Maiusc+V con "
              "validità, Esc annulla",
              status(program));
    program.focus(destTree, 22);
    EXPECT_EQ(question, messages(program.must(
                            R"({"do":"key","control":"TRW_ELEMDISTINTADEST","code":86,"modifiers":["ctrl"]})")));
    EXPECT_EQ("1", parentOf(2));
    // Answered no the node is still cut.
    program.must(R"({"do":"answer","values":[6]})");
    EXPECT_EQ(question, messages(program.must(
                            R"({"do":"key","control":"TRW_ELEMDISTINTADEST","code":86,"modifiers":["ctrl"]})")));
    EXPECT_EQ("22", parentOf(2));
    program.must(R"({"do":"key","control":"TRW_ELEMDISTINTADEST","code":86,"modifiers":["ctrl"]})");
    EXPECT_EQ("Niente da incollare: prima si taglia un nodo dell'origine con Ctrl+X.", status(program));
}

TEST_F(Drag, CtrlShiftVMovesWithValidity) {
    Dialogue program(place_);
    aim(program);
    program.focus(origTree, 2);
    program.must(R"({"do":"key","control":"TRW_ELEMDISTINTAORIG","code":88,"modifiers":["ctrl"]})");
    const auto reply =
        program.must(R"({"do":"key","control":"TRW_ELEMDISTINTADEST","code":86,"modifiers":["ctrl","shift"]})");
    EXPECT_EQ(std::vector<std::string>{"FRMQZ_DATAFINELEGAME"}, modalForms(reply));
    EXPECT_EQ(std::vector<std::string>{"Data fine legame non impostata!"}, messages(reply));
}

} // namespace
