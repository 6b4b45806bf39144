#include "qt/TreeFixture.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMenu>

using contract::HitCode;
using qt_tests::TreeFixture;

class TreeInput : public TreeFixture {};

// The mouse

TEST_F(TreeInput, ALeftPressFocusesTheCellAndTellsWhereItWas) {
    bindSmall();
    press(4, "NAME");
    EXPECT_EQ(told(), (Log{"change 4", "column 4 NAME", "left"}));
    EXPECT_EQ(pressed_.node, node(4));
    EXPECT_EQ(pressed_.column, "NAME");
    EXPECT_EQ(tree_->records()->Row(), 4U);
    tree_->settle();
    EXPECT_EQ(told(), (Log{"rest 4"}));
}

TEST_F(TreeInput, ARightPressMovesTheFocusToItsRowFirstAndKeepsTheColumn) {
    bindSmall();
    press(3, "NAME", Qt::RightButton);
    EXPECT_EQ(told(), (Log{"change 3", "right"}));
    EXPECT_EQ(tree_->focusedColumn(), "CODE");
    EXPECT_EQ(pressed_.column, "NAME");
    press(3, "START", Qt::RightButton);
    EXPECT_EQ(told(), (Log{"right"}));
}

TEST_F(TreeInput, AMiddlePressIsNobodysBusiness) {
    bindSmall();
    press(3, "NAME", Qt::MiddleButton);
    EXPECT_TRUE(told().empty());
    EXPECT_EQ(focusedId(), 1);
}

TEST_F(TreeInput, ThePressTellsTheShiftKeys) {
    bindSmall();
    QTest::mousePress(view().viewport(), Qt::LeftButton, Qt::ShiftModifier | Qt::AltModifier, middle(1, "CODE"));
    EXPECT_EQ(told(), (Log{"left 5"}));
}

TEST_F(TreeInput, APressBelowTheRowsTellsAndLeavesTheFocus) {
    bindSmall(3);
    QTest::mousePress(view().viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(100, view().rowsBottom() + 10));
    EXPECT_EQ(told(), (Log{"left"}));
    EXPECT_EQ(pressed_.code, HitCode::below);
    EXPECT_FALSE(pressed_.node);
    EXPECT_EQ(focusedId(), 3);
}

TEST_F(TreeInput, TheArrowOpensAndClosesWithoutMovingTheFocus) {
    bindSmall(4);
    const QPoint arrow = view().buttonRect(node(2).position).center();
    click(arrow);
    EXPECT_FALSE(tree_->expanded(node(2)));
    EXPECT_EQ(focusedId(), 4);
    EXPECT_EQ(pressed_.code, HitCode::button);
    EXPECT_EQ(pressed_.node, node(2));
    QTest::mouseDClick(view().viewport(), Qt::LeftButton, Qt::NoModifier, arrow);
    tree_->settle();
    EXPECT_TRUE(tree_->expanded(node(2))) << "the second press of a double click counts for itself";
}

TEST_F(TreeInput, ClosingTheParentOfTheFocusedNodeWithTheMouseFocusesIt) {
    bindSmall(3);
    click(view().buttonRect(node(1).position).center());
    EXPECT_EQ(told(), (Log{"change 1", "left"}));
    EXPECT_EQ(tree_->records()->Row(), 0U);
}

TEST_F(TreeInput, AFirstClickOnALinkOnlyFocusesTheRowAndASecondOpensItOnTheRelease) {
    bindSmall();
    const QPoint link = view().linkRect(node(4).position, column("NAME")).center();
    click(link);
    EXPECT_EQ(told(), (Log{"change 4", "column 4 NAME", "left"}));
    QTest::mousePress(view().viewport(), Qt::LeftButton, Qt::NoModifier, link);
    EXPECT_EQ(told(), (Log{"left"}));
    QTest::mouseRelease(view().viewport(), Qt::LeftButton, Qt::NoModifier, link);
    EXPECT_EQ(told(), (Log{"link 4 NAME"}));
}

TEST_F(TreeInput, WithCtrlTheFirstClickOnALinkOpensIt) {
    bindSmall();
    const QPoint link = view().linkRect(node(4).position, column("NAME")).center();
    QTest::mouseClick(view().viewport(), Qt::LeftButton, Qt::ControlModifier, link);
    EXPECT_EQ(told(), (Log{"change 4", "column 4 NAME", "left 2", "link 4 NAME"}));
}

TEST_F(TreeInput, ADoubleClickOnALinkOfAnotherRowOpensNothing) {
    bindSmall();
    const QPoint link = view().linkRect(node(4).position, column("NAME")).center();
    click(link);
    QTest::mouseDClick(view().viewport(), Qt::LeftButton, Qt::NoModifier, link);
    QTest::mouseRelease(view().viewport(), Qt::LeftButton, Qt::NoModifier, link);
    EXPECT_EQ(told(), (Log{"change 4", "column 4 NAME", "left"}));
}

TEST_F(TreeInput, ALinkThatIsLeftBeforeTheReleaseDoesNotAct) {
    bindSmall(4);
    const QPoint link = view().linkRect(node(4).position, column("NAME")).center();
    QTest::mousePress(view().viewport(), Qt::LeftButton, Qt::NoModifier, link);
    QTest::mouseRelease(view().viewport(), Qt::LeftButton, Qt::NoModifier, middle(4, "START"));
    EXPECT_EQ(told(), (Log{"column 4 NAME", "left"}));
}

TEST_F(TreeInput, BesideTheTextOfALinkAClickOnlyFocuses) {
    bindSmall();
    const QRect cell = view().contentRect(node(4).position, column("NAME"));
    click(QPoint(cell.right() - 2, cell.center().y()));
    EXPECT_EQ(told(), (Log{"change 4", "column 4 NAME", "left"}));
}

TEST_F(TreeInput, TheMouseShowsALinkOnlyWhereAClickOpensIt) {
    bindSmall(4);
    const QPoint other = view().linkRect(node(3).position, column("NAME")).center();
    pointAt(other);
    EXPECT_FALSE(view().linkPointed(node(3).position, column("NAME")));
    EXPECT_EQ(view().viewport()->cursor().shape(), Qt::ArrowCursor);
    QTest::keyPress(&view(), Qt::Key_Control, Qt::ControlModifier);
    EXPECT_TRUE(view().linkPointed(node(3).position, column("NAME")));
    EXPECT_EQ(view().viewport()->cursor().shape(), Qt::PointingHandCursor);
    QTest::keyRelease(&view(), Qt::Key_Control);
    EXPECT_EQ(view().viewport()->cursor().shape(), Qt::ArrowCursor);
    pointAt(other, Qt::ControlModifier);
    EXPECT_TRUE(view().linkPointed(node(3).position, column("NAME")));
    const QPoint link = view().linkRect(node(4).position, column("NAME")).center();
    pointAt(link);
    EXPECT_TRUE(view().linkPointed(node(4).position, column("NAME")));
    EXPECT_EQ(view().viewport()->cursor().shape(), Qt::PointingHandCursor);
    pointAt(middle(4, "START"));
    EXPECT_FALSE(view().linkPointed(node(4).position, column("NAME")));
    EXPECT_EQ(view().viewport()->cursor().shape(), Qt::ArrowCursor);
    pointAt(link);
    keys({Qt::Key_Up});
    EXPECT_EQ(view().viewport()->cursor().shape(), Qt::ArrowCursor) << "the row has lost the focus";
}

TEST_F(TreeInput, AClickOnTheBoxTogglesItOnce) {
    bindSmall();
    click(view().checkRect(node(3).position, column("MARK")).center());
    EXPECT_EQ(told(), (Log{"change 3", "column 3 MARK", "left", "check 3 1"}));
    EXPECT_EQ(tree_->value(node(3), "MARK").text(), "True");
    click(view().checkRect(node(3).position, column("MARK")).center());
    EXPECT_EQ(told(), (Log{"left", "check 3 0"}));
    EXPECT_EQ(tree_->value(node(3), "MARK").text(), "False");
}

TEST_F(TreeInput, ALockedBoxStaysAsItIs) {
    bindSmall();
    tree_->setColumnLocked(4, true);
    click(view().checkRect(node(1).position, column("MARK")).center());
    EXPECT_EQ(tree_->value(node(1), "MARK").text(), "False");
    EXPECT_EQ(told(), (Log{"column 1 MARK", "left"}));
}

// The keyboard

TEST_F(TreeInput, ArrowKeysMoveThroughTheRowsThatAreShown) {
    bindSmall();
    keys({Qt::Key_Down});
    EXPECT_EQ(focusedId(), 2);
    keys({Qt::Key_Down, Qt::Key_Down});
    EXPECT_EQ(focusedId(), 4);
    keys({Qt::Key_Up});
    EXPECT_EQ(focusedId(), 3);
    keys({Qt::Key_End});
    EXPECT_EQ(focusedId(), 6);
    keys({Qt::Key_Home});
    EXPECT_EQ(focusedId(), 1);
    EXPECT_EQ(tree_->focusedColumn(), "CODE");
}

TEST_F(TreeInput, PagesMoveByTheHeightOfTheTree) {
    bindLong(200);
    keys({Qt::Key_PageDown});
    const auto page = focusedId();
    EXPECT_GT(page, 5);
    EXPECT_LT(page, 50);
    keys({Qt::Key_PageDown, Qt::Key_PageUp, Qt::Key_PageUp});
    EXPECT_EQ(focusedId(), 1);
}

TEST_F(TreeInput, SidewaysArrowsOpenCloseAndMoveThroughTheColumns) {
    bindSmall(2);
    keys({Qt::Key_Left});
    EXPECT_FALSE(tree_->expanded(node(2)));
    keys({Qt::Key_Left});
    EXPECT_EQ(focusedId(), 1);
    keys({Qt::Key_Down, Qt::Key_Right});
    EXPECT_TRUE(tree_->expanded(node(2)));
    told();
    keys({Qt::Key_Right});
    EXPECT_EQ(told(), (Log{"column 2 NAME"}));
    keys({Qt::Key_Right, Qt::Key_Right, Qt::Key_Right});
    EXPECT_EQ(tree_->focusedColumn(), "MARK");
    keys({Qt::Key_Left, Qt::Key_Left, Qt::Key_Left, Qt::Key_Left});
    EXPECT_EQ(tree_->focusedColumn(), "CODE") << "the hidden column is passed over";
}

TEST_F(TreeInput, PlusMinusAndAsteriskOpenAndClose) {
    bindSmall();
    keys({Qt::Key_Minus});
    EXPECT_FALSE(tree_->expanded(node(1)));
    tree_->setExpanded(node(2), false);
    keys({Qt::Key_Plus});
    EXPECT_TRUE(tree_->expanded(node(1)));
    EXPECT_FALSE(tree_->expanded(node(2)));
    keys({Qt::Key_Asterisk});
    EXPECT_TRUE(tree_->expanded(node(2)));
}

TEST_F(TreeInput, AKeyIsToldOnceTheQueueIsEmpty) {
    bindSmall();
    QTest::keyClick(&view(), Qt::Key_Down);
    EXPECT_EQ(tree_->records()->Row(), tree_->row(node(2))) << "the cursor does not wait";
    EXPECT_TRUE(told().empty());
    QCoreApplication::processEvents();
    EXPECT_EQ(told(), (Log{"change 2"}));
    QTest::qWait(platform::qt::TreeFocusEvents::restMilliseconds + 100);
    EXPECT_EQ(told(), (Log{"rest 2"}));
}

TEST_F(TreeInput, KeysThatWaitInTheQueueAreToldTogether) {
    bindSmall();
    for (int repeat = 0; repeat < 4; ++repeat) {
        QCoreApplication::postEvent(&view(), new QKeyEvent(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier, {}, true));
        QCoreApplication::postEvent(&view(), new QKeyEvent(QEvent::KeyRelease, Qt::Key_Down, Qt::NoModifier, {}, true));
    }
    QCoreApplication::processEvents();
    EXPECT_EQ(told(), (Log{"change 5"}));
}

TEST_F(TreeInput, WhatAKeyMovedIsToldBeforeThePressOfTheMouse) {
    bindSmall();
    QTest::keyClick(&view(), Qt::Key_Down);
    press(2, "CODE", Qt::RightButton);
    EXPECT_EQ(told(), (Log{"change 2", "right"}));
}

TEST_F(TreeInput, LeavingTheTreeTellsWhatAKeyMoved) {
    bindSmall();
    QWidget other(window_.get());
    other.setFocusPolicy(Qt::StrongFocus);
    other.show();
    QTest::keyClick(&view(), Qt::Key_Down);
    other.setFocus();
    EXPECT_EQ(told(), (Log{"change 2"}));
}

TEST_F(TreeInput, SpaceTogglesTheBoxOfTheFocusedRow) {
    bindSmall(4);
    keys({Qt::Key_Space});
    EXPECT_EQ(told(), (Log{"check 4 1"}));
    EXPECT_EQ(tree_->value(node(4), "MARK").text(), "True");
}

TEST_F(TreeInput, TheMenuKeyAndShiftF10ActLikeARightPressOnTheFocusedCell) {
    bindSmall(4);
    tree_->setFocusedColumn("NAME");
    told();
    keys({Qt::Key_Menu});
    EXPECT_EQ(told(), (Log{"right"}));
    EXPECT_EQ(pressed_.node, node(4));
    EXPECT_EQ(pressed_.column, "NAME");
    QTest::keyClick(&view(), Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_EQ(told(), (Log{"right"}));
    const QRect cursor = view().inputMethodQuery(Qt::ImCursorRectangle).toRect();
    EXPECT_TRUE(cursor.contains(view().viewport()->mapTo(&view(), middle(4, "NAME"))));
}

TEST_F(TreeInput, TypedLettersFindTheNextTextThatBeginsWithThem) {
    bindSmall();
    QTest::keyClicks(&view(), QStringLiteral("QUA"));
    tree_->settle();
    EXPECT_EQ(focusedId(), 4);
    QTest::qWait(QApplication::keyboardInputInterval() + 50);
    QTest::keyClicks(&view(), QStringLiteral("s"));
    EXPECT_EQ(focusedId(), 6);
    QTest::keyClicks(&view(), QStringLiteral("zz"));
    EXPECT_EQ(focusedId(), 6) << "nothing begins like that";
}

TEST_F(TreeInput, ATypedTextPassesOverWhatIsClosed) {
    bindSmall();
    tree_->setExpanded(node(2), false);
    QTest::keyClicks(&view(), QStringLiteral("tre"));
    EXPECT_EQ(focusedId(), 1);
}

TEST_F(TreeInput, AnEmptyTreeTakesEveryKeyAndPress) {
    tree_->bind(contract_suites::treeRecords({}), "ID", "PARENT");
    start();
    keys({Qt::Key_Down, Qt::Key_Space, Qt::Key_F2, Qt::Key_Menu, Qt::Key_Left, Qt::Key_Right, Qt::Key_A});
    click(QPoint(40, 30));
    EXPECT_EQ(told(), (Log{"left"}));
    EXPECT_FALSE(tree_->focused());
}

TEST_F(TreeInput, AListenerThatFailsDoesNotReachTheWindowSystem) {
    bindSmall();
    tree_->OnMouseDown = [](auto...) { throw std::runtime_error("guasto"); };
    EXPECT_NO_THROW(press(4, "NAME"));
    EXPECT_EQ(focusedId(), 4);
}

TEST_F(TreeInput, AListenerMayBindTheTreeAgain) {
    bindSmall();
    tree_->OnMouseDown = [this](auto...) { bindLong(9); };
    const QPoint link = view().linkRect(node(4).position, column("NAME")).center();
    click(link);
    EXPECT_EQ(tree_->nodeCount(), 9U);
    EXPECT_EQ(focusedId(), 1);
    EXPECT_TRUE(told().empty()) << "what was pressed is gone when the button is let go";
}
