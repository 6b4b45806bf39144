// What a question is about, what the status line says after a move, and the way to the node that was moved.

#include "e2e/Database.h"
#include "e2e/Program.h"
#include "e2e/Texts.h"
#include "e2e/Works.h"

#include <gtest/gtest.h>

using namespace e2e;

namespace {

class MoveOutcome : public ::testing::Test {
protected:
    void SetUp() override { place_.makeForest(); }

    static std::string line(Dialogue& program) {
        return text(program.read(QStringLiteral("StatusBar")).value(QLatin1String("value")));
    }
    static std::string focused(Dialogue& program) {
        return text(program.read(destTree).value(QLatin1String("focused")));
    }
    static std::string detailOf(const QJsonObject& reply) {
        const QJsonArray shown = reply.value(QLatin1String("messages")).toArray();
        return shown.isEmpty() ? "no message" : text(shown.first().toObject().value(QLatin1String("detail")));
    }
    Workplace place_;
};

const std::string days = "legami attuali fino al 30/06/2024, nuovi dal 01/07/2024";

} // namespace

TEST_F(MoveOutcome, TheQuestionIsAboutWhatTheStatusLineSays) {
    Dialogue program(place_);
    aim(program, Work::structure);
    const auto told = line(program);
    EXPECT_EQ(0U, told.find("Sposta: ")) << told;
    EXPECT_EQ(told, detailOf(program.click(QStringLiteral("CMD_SPOSTASTRU"))));
    EXPECT_EQ(told, line(program)) << "the answer was no";
}

TEST_F(MoveOutcome, TheStatusLineSaysWhatWasDoneUntilTheNextCommand) {
    Dialogue program(place_);
    aim(program, Work::structure);
    doWork(program, Work::structure);
    const auto done = line(program);
    EXPECT_EQ(0U, done.find("Spostato 1 nodo sotto ")) << done;
    program.read(destTree);
    EXPECT_EQ(done, line(program));
    program.must(R"({"do":"key","control":"TRW_ELEMDISTINTAORIG","code":116})");
    EXPECT_EQ("Le distinte sono state rilette.", line(program));
    EXPECT_EQ("25", focused(program));
    program.must(R"({"do":"key","control":"TRW_ELEMDISTINTAORIG","code":117})");
    EXPECT_EQ("3", focused(program));
    EXPECT_EQ(0U, line(program).find("Nodo spostato: ")) << line(program);
}

TEST_F(MoveOutcome, WithValidityTheDaysAreInTheQuestionAndInWhatWasDone) {
    Dialogue program(place_);
    aim(program, Work::validity);
    const auto question = detailOf(doWork(program, Work::validity));
    EXPECT_NE(std::string::npos, question.find("\n" + days)) << question;
    const auto done = line(program);
    EXPECT_EQ(0U, done.find("Spostati ")) << done;
    EXPECT_NE(std::string::npos, done.find(": " + days)) << done;
    program.must(R"({"do":"menu","item":"mnuMostraSpostato"})");
    const auto shown = focused(program);
    const auto link = [&](const char* column) {
        return Database(place_).value(std::string("SELECT ") + column + " FROM QZ02_DISTINTA WHERE QZ02_ID = " + shown);
    };
    EXPECT_EQ("21", link("QZ02_IDPARENT_QZ02"));
    EXPECT_EQ("2024-07-01", link("QZ02_DATAINIZIOVAL"));
    EXPECT_EQ(Database(place_).value("SELECT QZ02_CLIFOR_CG44 FROM QZ02_DISTINTA WHERE QZ02_ID = 2"),
              link("QZ02_CLIFOR_CG44"));
}

TEST_F(MoveOutcome, ARefusalChangesNothingAndIsSaid) {
    Dialogue program(place_);
    aim(program, Work::structure);
    program.click(QStringLiteral("CMD_SPOSTAVALID")); // its dialog is closed without a day
    EXPECT_EQ("Spostamento annullato: nessuna modifica.", line(program));
}

TEST_F(MoveOutcome, TheStatusLineIsReadWithoutAForm) {
    Dialogue program(place_);
    program.must(R"({"do":"close"})");
    EXPECT_EQ("", line(program));
    EXPECT_EQ("true", text(program.read(QStringLiteral("StatusBar")).value(QLatin1String("visible"))));
}
