// Keys that a script presses do what a person's do, at once: within the reply of their own line.

#include "e2e/Database.h"
#include "e2e/Program.h"
#include "e2e/Texts.h"

#include <gtest/gtest.h>

using namespace e2e;

namespace {

const QString searchField = QStringLiteral("txtCercaOrig");

class Keys : public ::testing::Test {
protected:
    void SetUp() override { place_.makeForest(); }

    static QJsonObject key(int code, const QString& control, const QJsonArray& modifiers = {}) {
        return {{"do", "key"}, {"control", control}, {"code", code}, {"modifiers", modifiers}};
    }

    static QJsonObject press(Dialogue& program, int code, const QString& control, const QJsonArray& modifiers = {}) {
        const auto reply = program.ask(key(code, control, modifiers));
        EXPECT_EQ("true", text(reply.value("ok"))) << json(reply);
        return reply;
    }

    static std::string field(Dialogue& program) { return text(program.read(searchField).value("value")); }
    static std::string focused(Dialogue& program) { return text(program.read(destTree).value("focused")); }

    Workplace place_;
};

TEST_F(Keys, TypeAndMoveWithinAField) {
    Dialogue program(place_);
    for (const int code : {int('a'), int('B'), int('3'), 32, 0x20AC, 0x1F600})
        press(program, code, searchField);
    EXPECT_EQ("aB3 €😀", field(program));
    press(program, 36, searchField); // Home
    press(program, 46, searchField); // Delete, no full stop
    EXPECT_EQ("B3 €😀", field(program));
    press(program, 39, searchField); // Right
    press(program, 'X', searchField);
    EXPECT_EQ("BX3 €😀", field(program));
    press(program, 35, searchField); // End
    press(program, 8, searchField);
    EXPECT_EQ("BX3 €", field(program));
    press(program, 37, searchField, {"ctrl", "shift"}); // marks the last word
    press(program, 'Y', searchField);
    EXPECT_EQ("BX3 Y", field(program));
    press(program, 'A', searchField, {"ctrl"});
    press(program, 46, searchField);
    EXPECT_EQ("", field(program));
    for (const int code : {0, -1, 1, 31, 0xD800, 0x110000})
        EXPECT_EQ("false", text(program.ask(key(code, searchField)).value("ok"))) << code;
}

TEST_F(Keys, WalkThroughATree) {
    Dialogue program(place_);
    press(program, 40, destTree);
    EXPECT_EQ("2", focused(program));
    press(program, 35, destTree);
    EXPECT_EQ("6", focused(program));
    press(program, 38, destTree);
    EXPECT_EQ("5", focused(program));
    press(program, 36, destTree);
    EXPECT_EQ("1", focused(program));
    press(program, 40, QStringLiteral("TRW_DISTINTEDEST"));
    EXPECT_EQ("2", text(program.state().value("IdDistintaDest")));
}

TEST_F(Keys, EditACell) {
    Dialogue program(place_);
    program.must(R"({"do":"focus","control":"TRW_ELEMDISTINTADEST","id":5,"column":"trQZ02_DATAFINEVAL"})");
    const auto typed = [&] {
        press(program, 113, destTree);
        press(program, 'A', destTree, {"ctrl"});
        for (const char digit : std::string("31122050"))
            press(program, digit, destTree);
    };
    typed();
    press(program, 27, destTree);
    EXPECT_EQ("31/12/2099", program.cell(destTree, 5, QStringLiteral("trQZ02_DATAFINEVAL")));
    typed();
    press(program, 13, destTree);
    EXPECT_EQ("31/12/2050", program.cell(destTree, 5, QStringLiteral("trQZ02_DATAFINEVAL")));
    EXPECT_EQ("2050-12-31", Database(place_).value("SELECT QZ02_DATAFINEVAL FROM QZ02_DISTINTA WHERE QZ02_ID = 5"));
}

TEST_F(Keys, TheKeysOfAButtonPressItAtOnce) {
    Dialogue program(place_);
    program.select(destList, QStringLiteral("C2"));
    program.focus(origTree, 4);
    program.focus(destTree, 25);
    // "Sposta &struttura", whatever has the keyboard.
    for (const QString& control : {searchField, origTree, QStringLiteral("CMD_PARAMETRI")}) {
        const auto reply = press(program, 'S', control, {"alt"});
        EXPECT_EQ(1U, messages(reply).size()) << control.toStdString();
    }
    EXPECT_EQ((std::vector<std::string>{"FRMQZ_DATAFINELEGAME"}),
              modalForms(press(program, 'V', searchField, {"alt"})));
    for (const int code : {13, 32})
        EXPECT_EQ(1U, messages(press(program, code, QStringLiteral("CMD_SPOSTASTRU"))).size()) << code;
    // F8 is the menu bar's "Dettagli".
    press(program, 119, searchField);
    EXPECT_EQ("false", text(program.read(QStringLiteral("GRD_DETTDISTINTAORIG")).value("visible")));
}

TEST_F(Keys, AFormHearsItsKeysAfterAnotherOneHasClosedOverIt) {
    Dialogue program(place_);
    const QString state = QStringLiteral("TXT_QZ03_ID_WF02");
    for (const QJsonArray& steps : {QJsonArray{QJsonObject{{"do", "choose"}, {"value", 20}}}, QJsonArray{}}) {
        program.ask({{"do", "when"}, {"form", "lkp_Stati"}, {"steps", steps}});
        program.ask({{"do", "when"},
                     {"form", "FRMQZ_PARAMETRI"},
                     {"steps", QJsonArray{QJsonObject{{"do", "set"}, {"control", state}, {"value", "30"}},
                                          key(112, state), key('S', state, {"ctrl"})}}});
        const auto reply = program.click(QStringLiteral("CMD_PARAMETRI"));
        EXPECT_TRUE(messages(reply).empty()) << json(reply); // nothing left to save
        EXPECT_EQ(steps.isEmpty() ? "30" : "20",
                  Database(place_).value("SELECT QZ03_ID_WF02 FROM QZ03_PARAMETRI WHERE QZ03_DITTA_CG18 = 1"));
    }
    program.must(R"({"do":"when","form":"FRMQZ_PARAMETRI","steps":[)"
                 R"({"do":"set","control":"CHK_QZ03_FLG_PROV","value":false},)"
                 R"({"do":"key","control":"CHK_QZ03_FLG_PROV","code":83,"modifiers":["alt"]}]})");
    EXPECT_TRUE(messages(program.click(QStringLiteral("CMD_PARAMETRI"))).empty());
    EXPECT_EQ("0", Database(place_).value("SELECT QZ03_FLG_PROV FROM QZ03_PARAMETRI WHERE QZ03_DITTA_CG18 = 1"));
}

} // namespace
