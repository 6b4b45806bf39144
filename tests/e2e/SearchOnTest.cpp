// A search that goes on, its keys, and both distinte read again.

#include "e2e/Database.h"
#include "e2e/Program.h"
#include "e2e/Texts.h"

#include <gtest/gtest.h>

using namespace e2e;

namespace {

class SearchOn : public ::testing::Test {
protected:
    SearchOn() { place_.makeForest(); }
    Workplace place_{Workplace::Where::file};

    static std::string focused(Dialogue& program, const QString& tree) {
        return text(program.read(tree).value(QLatin1String("focused")));
    }
};

} // namespace

TEST_F(SearchOn, F3GoesOnOnTheSideThatHasTheKeyboard) {
    Dialogue program(place_);
    program.select(origList, QStringLiteral("C1"));
    program.select(destList, QStringLiteral("C2"));
    program.must(R"({"do":"set","control":"txtCercaOrig","value":"i"})");
    program.must(R"({"do":"key","control":"txtCercaOrig","code":13})");
    EXPECT_EQ("1", focused(program, origTree)) << "Rossi has the focus and the letter";
    program.must(R"({"do":"key","control":"TRW_ELEMDISTINTAORIG","code":114})");
    EXPECT_EQ("2", focused(program, origTree));
    program.must(R"({"do":"menu","item":"mnuTrovaSuccessivo"})");
    EXPECT_EQ("3", focused(program, origTree));
    program.must(R"({"do":"key","control":"TRW_ELEMDISTINTAORIG","code":114,"modifiers":["shift"]})");
    EXPECT_EQ("2", focused(program, origTree));
    EXPECT_EQ("20", focused(program, destTree));
    program.must(R"({"do":"set","control":"txtCercaDest","value":"sud"})");
    program.must(R"({"do":"key","control":"txtCercaDest","code":114})");
    EXPECT_EQ("25", focused(program, destTree));
    EXPECT_EQ("2", focused(program, origTree));
}

TEST_F(SearchOn, F5ReadsBothSidesAgain) {
    Dialogue program(place_);
    program.select(origList, QStringLiteral("C1"));
    program.select(destList, QStringLiteral("C2"));
    program.focus(origTree, 3);
    program.focus(destTree, 25);
    Database(place_.database()).run("UPDATE CG16_ANAGGEN SET CG16_RAGSOANAG = 'Meridione' WHERE CG16_CODICE = 1220");
    program.must(R"({"do":"key","control":"TRW_ELEMDISTINTAORIG","code":116})");
    EXPECT_EQ("Meridione", program.cell(destTree, 25, QStringLiteral("RagioneSociale")));
    EXPECT_EQ("3", focused(program, origTree));
    EXPECT_EQ("25", focused(program, destTree));
}
