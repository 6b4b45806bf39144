#include "qt/FormFixture.h"

#include <QJsonArray>
#include <QLineEdit>

#include <algorithm>

namespace qt_tests {

namespace {

class FieldsTest : public FormTest {
protected:
    void SetUp() override {
        auto& doc = document("FRM");
        auto& text = doc.addTextField("TXT", nullptr);
        text.setBounds({100, 100, 3000, 400});
        text.KeyPress = [this](int code) { codes.push_back(code); };
        doc.addDateField("DATA", nullptr).setBounds({100, 600, 3000, 400});
        combo = &doc.addComboBox("CMB", nullptr);
        combo->setBounds({100, 1100, 3000, 400});
        for (const char* item : {"Valorizza da nodo padre", "Valorizza da date fisse", "Terza"})
            combo->addItem(item);
        combo->Change = [this] { positions.push_back(combo->position()); };
        auto& check = doc.addCheckBox("CHK", nullptr);
        check.setBounds({100, 1600, 3000, 400});
        check.setCaption("&Anagrafica");
        lookup = &doc.addLookupField("LKP", nullptr);
        lookup->setBounds({100, 2100, 3000, 400});
        lookup->Lookup = [this] { ++lists; };
        lookup->Decode = [this] { decoded.push_back(lookup->text()); };
        auto& button = doc.addButton("CMD", nullptr);
        button.setBounds({100, 2600, 1500, 400});
        button.setCaption("&Sposta struttura");
        button.setToolTip("Sposta la struttura");
        button.ButtonClick = [this] { ++clicks; };
        doc.show(false);
        QCoreApplication::processEvents(); // the window becomes the active one
    }

    std::vector<int> codes;
    std::vector<int> positions;
    std::vector<std::string> decoded;
    contract::ComboBox* combo = nullptr;
    contract::LookupField* lookup = nullptr;
    int clicks = 0;
    int lists = 0;
};

TEST_F(FieldsTest, TypingTellsTheCharactersAndEnterAs13) {
    QTest::keyClicks(script("TXT").widget(), QStringLiteral("aB1"));
    QTest::keyClick(script("TXT").widget(), Qt::Key_Return);
    QTest::keyClick(script("TXT").widget(), Qt::Key_Enter, Qt::KeypadModifier);
    QTest::keyClick(script("TXT").widget(), Qt::Key_Left);
    EXPECT_EQ(codes, (std::vector<int>{'a', 'B', '1', 13, 13}));
}

TEST_F(FieldsTest, SettingATextTypesOverTheOldOne) {
    EXPECT_EQ(script("TXT").set(id("ROSSI")), QString());
    EXPECT_EQ(script("TXT").set(id("Società à l'Aquila")), QString());
    EXPECT_EQ(script("TXT").read().value("value"), "Società à l'Aquila");
    EXPECT_EQ(script("TXT").set(id("")), QString());
    EXPECT_EQ(script("TXT").read().value("value"), "");
    EXPECT_FALSE(script("TXT").set(12).isEmpty());
}

TEST_F(FieldsTest, ALongTextIsPastedAsOnePiece) {
    const QString longest(1000, QLatin1Char('a'));
    EXPECT_EQ(script("TXT").set(longest), QString());
    EXPECT_EQ(std::count(codes.begin(), codes.end(), 'a'), 1000) << "typed";
    codes.clear();
    const QString longer = QString(99'999, QLatin1Char('b')) + QStringLiteral("\r\nfine");
    EXPECT_EQ(script("TXT").set(longer), QString());
    EXPECT_EQ(script("TXT").read().value("value").toString().size(), 32767) << "what a field of one line takes";
    EXPECT_EQ(codes, std::vector<int>{1}) << "no key but the one that marks all";
    EXPECT_EQ(script("TXT").set(QString(QStringLiteral("c")).repeated(2000)), QString());
    EXPECT_EQ(script("TXT").read().value("value"), QString(QStringLiteral("c")).repeated(2000));
}

TEST_F(FieldsTest, AFieldThatGetsTheFocusFromTheProgramIsSelected) {
    auto& data = dynamic_cast<contract::DateField&>(
        *const_cast<contract::Control*>(windowOf("FRM").contractControl(id("DATA"))));
    data.setText("31/12/2024");
    data.setFocus();
    EXPECT_EQ(qobject_cast<QLineEdit*>(script("DATA").widget())->selectedText(), QStringLiteral("31/12/2024"));
}

TEST_F(FieldsTest, ADateIsAskedForAsIfItWereLeft) {
    auto& data = dynamic_cast<contract::DateField&>(
        *const_cast<contract::Control*>(windowOf("FRM").contractControl(id("DATA"))));
    int changes = 0;
    data.Change = [&] { ++changes; };
    QTest::keyClicks(script("DATA").widget(), QStringLiteral("311224"));
    EXPECT_EQ(changes, 6);
    EXPECT_TRUE(data.hasValidDate());
    EXPECT_EQ(data.text(), "31/12/2024");
    script("DATA").widget()->setFocus();
    QTest::keyClick(script("DATA").widget(), 'x');
    EXPECT_FALSE(data.hasValidDate());
    EXPECT_NE(script("DATA").read().value("error"), "");
}

TEST_F(FieldsTest, AScriptsKeysArriveInTheField) {
    EXPECT_EQ(script("TXT").key('a', Qt::NoModifier), QString());
    EXPECT_EQ(script("TXT").key('b', Qt::NoModifier), QString());
    EXPECT_EQ(script("TXT").key(36, Qt::NoModifier), QString());
    EXPECT_EQ(script("TXT").key(46, Qt::NoModifier), QString());
    EXPECT_EQ(script("TXT").read().value("value"), "b");
    EXPECT_EQ(script("TXT").key(13, Qt::NoModifier), QString());
    EXPECT_EQ(codes, (std::vector<int>{'a', 'b', 13}));
    EXPECT_FALSE(script("TXT").key(1, Qt::NoModifier).isEmpty());
}

TEST_F(FieldsTest, ATabLeavesTheField) {
    script("TXT").widget()->setFocus();
    EXPECT_EQ(script("TXT").key(9, Qt::NoModifier), QString());
    EXPECT_EQ(QApplication::focusWidget(), script("DATA").widget());
}

TEST_F(FieldsTest, ADateFieldSaysOfWhatIsNoDateWhenItIsLeft) {
    EXPECT_EQ(script("DATA").set(id("31122024")), QString());
    EXPECT_EQ(script("DATA").read().value("value"), "31/12/2024");
    EXPECT_EQ(script("DATA").read().value("error"), "");
    EXPECT_EQ(script("DATA").set(id("30/02/2024")), QString());
    EXPECT_EQ(script("DATA").read().value("value"), "30/02/2024");
    EXPECT_EQ(script("DATA").read().value("error"), "30/02/2024 non è una data");
    EXPECT_EQ(script("DATA").set(id("")), QString());
    EXPECT_EQ(script("DATA").read().value("value"), "");
}

TEST_F(FieldsTest, AComboBoxIsSetByPickingFromItsList) {
    EXPECT_EQ(script("CMB").read().value("value").toInt(), -1);
    EXPECT_EQ(script("CMB").set(2), QString());
    EXPECT_EQ(script("CMB").set(0), QString());
    EXPECT_EQ(script("CMB").set(0), QString());
    EXPECT_EQ(positions, (std::vector<int>{2, 0}));
    EXPECT_EQ(script("CMB").read().value("value").toInt(), 0);
    EXPECT_EQ(script("CMB").read().value("items").toArray().size(), 3);
    EXPECT_EQ(script("CMB").read().value("items").toArray().at(1), "Valorizza da date fisse");
    for (const QJsonValue& wrong : {QJsonValue(3), QJsonValue(-1), QJsonValue(0.5), QJsonValue("1"), QJsonValue(true)})
        EXPECT_FALSE(script("CMB").set(wrong).isEmpty());
    EXPECT_EQ(positions.size(), 2U);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST_F(FieldsTest, TheKeyboardChangesAComboBoxToo) {
    QTest::keyClick(script("CMB").widget(), Qt::Key_Down);
    QTest::keyClick(script("CMB").widget(), Qt::Key_Down);
    EXPECT_EQ(positions, (std::vector<int>{0, 1}));
}

TEST_F(FieldsTest, ACheckBoxIsSetByAClick) {
    EXPECT_EQ(script("CHK").set(true), QString());
    EXPECT_EQ(script("CHK").set(true), QString());
    EXPECT_TRUE(script("CHK").read().value("value").toBool());
    EXPECT_EQ(script("CHK").read().value("caption"), "&Anagrafica");
    EXPECT_EQ(script("CHK").click(), QString());
    EXPECT_FALSE(script("CHK").read().value("value").toBool());
    EXPECT_EQ(script("CHK").key(32, Qt::NoModifier), QString());
    EXPECT_TRUE(script("CHK").read().value("value").toBool());
    EXPECT_FALSE(script("CHK").set(1).isEmpty());
}

TEST_F(FieldsTest, ALookupOpensByItsButtonAndThreeKeys) {
    auto* widget = script("LKP").widget();
    QTest::keyClick(widget, Qt::Key_F1);
    QTest::keyClick(widget, Qt::Key_F1, Qt::ControlModifier);
    QTest::keyClick(widget, Qt::Key_F4);
    EXPECT_EQ(lists, 3);
    QTest::keyClick(widget, Qt::Key_F1, Qt::ShiftModifier);
    QTest::keyClick(widget, Qt::Key_F2);
    EXPECT_EQ(lists, 3);
    EXPECT_EQ(script("LKP").click(), QString());
    EXPECT_EQ(lists, 4);
    EXPECT_EQ(script("LKP").key(112, Qt::ControlModifier), QString());
    EXPECT_EQ(lists, 5);
}

TEST_F(FieldsTest, ALookupAsksForTheDescriptionOfEveryNewCodeOnce) {
    lookup->setText("3");
    lookup->setText("3");
    EXPECT_EQ(decoded, std::vector<std::string>{"3"});
    QTest::keyClick(script("LKP").widget(), Qt::Key_End);
    QTest::keyClicks(script("LKP").widget(), QStringLiteral("1"));
    EXPECT_EQ(decoded.size(), 1U);
    EXPECT_EQ(script("LKP").key(9, Qt::NoModifier), QString());
    EXPECT_EQ(decoded.size(), 2U);
    EXPECT_EQ(decoded.back(), "31");
    EXPECT_EQ(script("LKP").set(7), QString());
    EXPECT_EQ(decoded.back(), "7");
}

TEST_F(FieldsTest, AButtonIsClickedByTheMouseAndTheKeyboard) {
    EXPECT_EQ(script("CMD").click(), QString());
    EXPECT_EQ(script("CMD").key(32, Qt::NoModifier), QString());
    EXPECT_EQ(clicks, 2);
    EXPECT_EQ(script("CMD").read(),
              (QJsonObject{{"caption", "&Sposta struttura"}, {"tooltip", "Sposta la struttura"}}));
}

TEST_F(FieldsTest, WhatIsHiddenOrDisabledRefusesWithAReason) {
    for (const char* name : {"TXT", "DATA", "CMB", "CHK", "LKP", "CMD"}) {
        auto* control = const_cast<contract::Control*>(windowOf("FRM").contractControl(id(name)));
        const QJsonObject before = script(name).read();
        control->setEnabled(false);
        EXPECT_TRUE(script(name).key(32, Qt::NoModifier).contains("disabilitato")) << name;
        control->setEnabled(true);
        control->setVisible(false);
        EXPECT_TRUE(script(name).key(32, Qt::NoModifier).contains("nascosto")) << name;
        EXPECT_EQ(script(name).read(), before) << name;
    }
    windowOf("FRM").form();
    auto& check = script("CHK");
    EXPECT_TRUE(check.set(true).contains("nascosto"));
    EXPECT_TRUE(script("CMD").click().contains("nascosto"));
    EXPECT_TRUE(script("CMB").set(1).contains("nascosto"));
    EXPECT_TRUE(script("TXT").set(id("x")).contains("nascosto"));
    EXPECT_EQ(clicks, 0);
    EXPECT_TRUE(codes.empty());
}

TEST_F(FieldsTest, WhatAKindDoesNotKnowItRefuses) {
    EXPECT_FALSE(script("TXT").click().isEmpty());
    EXPECT_FALSE(script("TXT").chooseItem(id("x")).isEmpty());
    EXPECT_FALSE(script("CMD").set(id("x")).isEmpty());
    EXPECT_FALSE(script("CMD").select(id("x")).isEmpty());
    EXPECT_FALSE(script("CMD").mouse(1, id("x"), Qt::LeftButton).isEmpty());
    EXPECT_FALSE(script("CMD").check(1, 1).isEmpty());
    bool editable = true;
    EXPECT_FALSE(script("CMD").edit(1, id("x"), id("y"), editable).isEmpty());
    EXPECT_FALSE(editable);
}

TEST_F(FieldsTest, ALongCaptionIsCutAndTheButtonStaysUsable) {
    auto& narrow = form->addButton("STRETTO", nullptr);
    narrow.setCaption("&Comprimi tutti i livelli della distinta");
    narrow.setIcon(contract::Icon::levels);
    int pressed = 0;
    narrow.ButtonClick = [&] { ++pressed; };
    for (const int width : {3000, 900, 300, 100}) {
        narrow.setBounds({5000, 100, width, 400});
        script("STRETTO").widget()->grab();
        EXPECT_EQ(script("STRETTO").click(), QString());
    }
    EXPECT_EQ(pressed, 4);
    EXPECT_EQ(script("STRETTO").read().value("caption"), "&Comprimi tutti i livelli della distinta");
}

} // namespace

} // namespace qt_tests
