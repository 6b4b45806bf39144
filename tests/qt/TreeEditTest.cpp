#include "platform/qt/fields/CalendarEdit.h"
#include "qt/TreeFixture.h"

#include <QImage>
#include <QLineEdit>

using platform::qt::CalendarEdit;
using qt_tests::TreeFixture;

class TreeEdit : public TreeFixture {
protected:
    void SetUp() override {
        bindSmall(4);
        tree_->setFocusedColumn("START");
        start();
    }

    CalendarEdit* editor() { return qobject_cast<CalendarEdit*>(view().openEditor()); }
    std::string start4() { return tree_->value(node(4), "START").text(); }
};

TEST_F(TreeEdit, F2EnterADoubleClickAndADigitOpenTheEditor) {
    for (const auto key : {Qt::Key_F2, Qt::Key_Return, Qt::Key_Enter}) {
        QTest::keyClick(&view(), key);
        ASSERT_NE(editor(), nullptr) << key;
        EXPECT_EQ(editor()->text(), QStringLiteral("05/01/2024"));
        QTest::keyClick(editor(), Qt::Key_Escape);
        EXPECT_EQ(editor(), nullptr);
    }
    QTest::mouseDClick(view().viewport(), Qt::LeftButton, Qt::NoModifier, middle(4, "START"));
    ASSERT_NE(editor(), nullptr);
    QTest::keyClick(editor(), Qt::Key_Escape);
    QTest::keyClick(&view(), '3');
    ASSERT_NE(editor(), nullptr);
    EXPECT_EQ(editor()->text(), QStringLiteral("3")) << "what is typed takes the place of the date";
}

TEST_F(TreeEdit, OtherCellsOpenNone) {
    tree_->setFocusedColumn("NAME");
    QTest::keyClick(&view(), Qt::Key_F2);
    EXPECT_EQ(editor(), nullptr);
    QTest::mouseDClick(view().viewport(), Qt::LeftButton, Qt::NoModifier, middle(4, "NAME"));
    EXPECT_EQ(editor(), nullptr);
}

TEST_F(TreeEdit, ALockedColumnOpensNoneUntilItIsUnlocked) {
    tree_->setColumnLocked(3, true);
    QTest::keyClick(&view(), Qt::Key_F2);
    QTest::keyClick(&view(), '3');
    QTest::mouseDClick(view().viewport(), Qt::LeftButton, Qt::NoModifier, middle(4, "START"));
    EXPECT_EQ(editor(), nullptr);
    tree_->setColumnLocked(3, false);
    QTest::keyClick(&view(), Qt::Key_F2);
    EXPECT_NE(editor(), nullptr);
}

TEST_F(TreeEdit, TheFocusedRowsLockedCellLooksDifferentAndKeepsItsText) {
    const auto shot = [this](std::int64_t id) {
        return view().viewport()->grab(view().cellRect(node(id).position, column("START"))).toImage();
    };
    const QImage before = shot(4);
    const QImage other = shot(2);
    tree_->setColumnLocked(3, true);
    EXPECT_NE(before, shot(4));
    EXPECT_EQ(other, shot(2)) << "the lock is the focused node's";
    // The right end of the date stands where it stood, and in a narrow column nothing stands before it.
    const int text = view().fontMetrics().horizontalAdvance(QStringLiteral("05/01/2024"));
    view().header()->resizeSection(column("START"), text + 8);
    const QImage narrow = shot(4);
    tree_->setColumnLocked(3, false);
    EXPECT_EQ(narrow, shot(4));
}

TEST_F(TreeEdit, AKeyOrADoubleClickOnALockedCellIsTold) {
    std::vector<std::string> locked;
    tree_->OnLocked = [&](contract::Node at, const std::string& name) {
        locked.push_back(std::to_string(tree_->key(at)) + " " + name);
    };
    QTest::keyClick(&view(), Qt::Key_F2);
    EXPECT_TRUE(locked.empty());
    QTest::keyClick(view().openEditor(), Qt::Key_Escape);
    tree_->setColumnLocked(3, true);
    QTest::keyClick(&view(), Qt::Key_F2);
    QTest::mouseDClick(view().viewport(), Qt::LeftButton, Qt::NoModifier, middle(4, "START"));
    EXPECT_EQ(locked, (std::vector<std::string>{"4 START", "4 START"}));
}

TEST_F(TreeEdit, EnterCommitsTheDateToItsRecordAndTellsOnce) {
    QTest::keyClick(&view(), Qt::Key_F2);
    QTest::keyClicks(editor(), QStringLiteral("31/12/2024"));
    EXPECT_EQ(start4(), "05/01/2024") << "not before the cell is left";
    QTest::keyClick(editor(), Qt::Key_Return);
    EXPECT_EQ(told(), (Log{"edited 4 31/12/2024"}));
    EXPECT_EQ(tree_->records()->rows().column(3).value(4), contract::Value(*contract::Date::of(2024, 12, 31)));
    EXPECT_EQ(editor(), nullptr);
    QCoreApplication::processEvents();
    EXPECT_TRUE(told().empty());
    EXPECT_TRUE(view().hasFocus());
}

TEST_F(TreeEdit, TabCommitsToo) {
    QTest::keyClick(&view(), Qt::Key_F2);
    QTest::keyClicks(editor(), QStringLiteral("01/02/2025"));
    QTest::keyClick(editor(), Qt::Key_Tab);
    EXPECT_EQ(told(), (Log{"edited 4 01/02/2025"}));
}

TEST_F(TreeEdit, APressOnAnotherRowCommitsFirst) {
    QTest::keyClick(&view(), Qt::Key_F2);
    QTest::keyClicks(editor(), QStringLiteral("01/02/2025"));
    view().setFocus(Qt::MouseFocusReason); // as the press does
    press(2, "START");
    EXPECT_EQ(told(), (Log{"edited 4 01/02/2025", "change 2", "left"}));
}

TEST_F(TreeEdit, ACellLeftUnchangedIsToldAndKeepsItsValue) {
    QTest::keyClick(&view(), Qt::Key_F2);
    QTest::keyClick(editor(), Qt::Key_Return);
    EXPECT_EQ(told(), (Log{"edited 4 05/01/2024"}));
}

TEST_F(TreeEdit, EscapeLeavesTheOldDateAndTellsNothing) {
    QTest::keyClick(&view(), Qt::Key_F2);
    QTest::keyClicks(editor(), QStringLiteral("31/12/2024"));
    QTest::keyClick(editor(), Qt::Key_Escape);
    EXPECT_TRUE(told().empty());
    EXPECT_EQ(start4(), "05/01/2024");
}

TEST_F(TreeEdit, WhatIsNoDateStaysInTheCellAndSaysSo) {
    QTest::keyClick(&view(), Qt::Key_F2);
    for (const char* wrong : {"31/02/2024", "domani", "1", "30/12/1899"}) {
        for (const auto key : {Qt::Key_Return, Qt::Key_Tab}) {
            editor()->selectAll();
            QTest::keyClicks(editor(), QLatin1String(wrong));
            QTest::keyClick(editor(), key);
            ASSERT_NE(editor(), nullptr) << wrong;
            EXPECT_EQ(editor()->text(), QLatin1String(wrong));
            EXPECT_EQ(view().editError(), QLatin1String(wrong) + QStringLiteral(" non è una data"));
        }
    }
    EXPECT_TRUE(told().empty());
    EXPECT_EQ(start4(), "05/01/2024");
    QTest::keyClick(editor(), Qt::Key_Escape);
    EXPECT_EQ(editor(), nullptr);
    EXPECT_EQ(view().editError(), QString());
    EXPECT_TRUE(told().empty()) << "given up, not edited";
}

TEST_F(TreeEdit, WhatIsNoDateKeepsTheKeyboardUntilItIsMended) {
    QTest::keyClick(&view(), Qt::Key_F2);
    QTest::keyClicks(editor(), QStringLiteral("31/02/2024"));
    for (const auto button : {Qt::LeftButton, Qt::RightButton}) {
        view().setFocus(Qt::MouseFocusReason); // as the press does
        press(2, "START", button);
        ASSERT_NE(editor(), nullptr);
        EXPECT_TRUE(editor()->hasFocus());
        EXPECT_EQ(editor()->text(), QStringLiteral("31/02/2024"));
    }
    EXPECT_EQ(focusedId(), 4);
    EXPECT_TRUE(told().empty());
    editor()->selectAll();
    QTest::keyClicks(editor(), QStringLiteral("29/02/2024"));
    QTest::keyClick(editor(), Qt::Key_Return);
    EXPECT_EQ(told(), (Log{"edited 4 29/02/2024"}));
}

TEST_F(TreeEdit, LeavingForAnotherControlTellsNothingOfWhatIsNoDate) {
    QLineEdit other(window_.get());
    other.show();
    QTest::keyClick(&view(), Qt::Key_F2);
    QTest::keyClicks(editor(), QStringLiteral("31/02/2024"));
    other.setFocus();
    EXPECT_TRUE(told().empty());
    ASSERT_NE(editor(), nullptr);
    EXPECT_EQ(view().editError(), QStringLiteral("31/02/2024 non è una data"));
    view().setFocus();
    EXPECT_TRUE(editor()->hasFocus());
    // The program may move the focus all the same: what was typed is given up.
    tree_->setFocused(node(2));
    EXPECT_EQ(editor(), nullptr);
    EXPECT_EQ(start4(), "05/01/2024");
    EXPECT_EQ(told(), (Log{"change 2"}));
}

TEST_F(TreeEdit, NothingButBlanksEmptiesTheCell) {
    QTest::keyClick(&view(), Qt::Key_F2);
    QTest::keyClicks(editor(), QStringLiteral("   "));
    QTest::keyClick(editor(), Qt::Key_Return);
    EXPECT_EQ(told(), (Log{"edited 4 "}));
}

TEST_F(TreeEdit, ADateBefore1900IsShownAndStays) {
    tree_->setValue(node(4), "START", contract::Value(*contract::Date::of(1899, 12, 30)));
    EXPECT_EQ(start4(), "30/12/1899");
    QTest::keyClick(&view(), Qt::Key_F2);
    EXPECT_EQ(editor()->text(), QStringLiteral("30/12/1899"));
    QTest::keyClick(editor(), Qt::Key_Return);
    EXPECT_EQ(told(), (Log{"edited 4 30/12/1899"}));
    EXPECT_EQ(start4(), "30/12/1899");
}

TEST_F(TreeEdit, AnEmptiedCellIsNull) {
    QTest::keyClick(&view(), Qt::Key_F2);
    editor()->selectAll();
    QTest::keyClick(editor(), Qt::Key_Delete);
    QTest::keyClick(editor(), Qt::Key_Return);
    EXPECT_EQ(told(), (Log{"edited 4 "}));
    EXPECT_TRUE(tree_->value(node(4), "START").isNull());
}

TEST_F(TreeEdit, TheListenerMayPutTheOldDateBack) {
    tree_->OnEdited = [this](contract::Node edited) {
        tree_->setValue(edited, "START", contract::Value(*contract::Date::of(2024, 1, 5)));
    };
    QTest::keyClick(&view(), Qt::Key_F2);
    QTest::keyClicks(editor(), QStringLiteral("31/12/2024"));
    QTest::keyClick(editor(), Qt::Key_Return);
    EXPECT_EQ(start4(), "05/01/2024");
    EXPECT_EQ(view().nodes().text(node(4).position, column("START")), QStringLiteral("05/01/2024"));
}

TEST_F(TreeEdit, BindingClosesAnEditorWithoutWriting) {
    QTest::keyClick(&view(), Qt::Key_F2);
    QTest::keyClicks(editor(), QStringLiteral("31/12/2024"));
    bindSmall();
    QCoreApplication::processEvents();
    EXPECT_EQ(editor(), nullptr);
    EXPECT_EQ(start4(), "05/01/2024");
}

TEST_F(TreeEdit, AMovedFocusCommitsTheOpenCell) {
    QTest::keyClick(&view(), Qt::Key_F2);
    QTest::keyClicks(editor(), QStringLiteral("31/12/2024"));
    tree_->setFocused(node(2));
    EXPECT_EQ(editor(), nullptr);
    EXPECT_EQ(start4(), "31/12/2024");
    EXPECT_EQ(tree_->value(node(2), "START").text(), "03/01/2024");
}
