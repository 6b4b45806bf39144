#pragma once

// The focus of a tree list, its cells, and where they stand on the screen.

#include "contract_suites/TreeListHarness.h"

namespace contract_suites {

// Focus

TEST_P(TreeListSuite, TheCursorFollowsTheFocusAtOnce) {
    bind(smallTree());
    tree().OnChangeNode = nullptr;
    tree().setFocused(tree().byKey(4));
    EXPECT_EQ(tree().records()->Row(), 4U);
    EXPECT_EQ((*tree().records())["ID"].integer(), 4);
}

TEST_P(TreeListSuite, AFocusChangeIsToldAtOnceAndOnceMoreAfterTheRest) {
    bind(smallTree());
    forgetEvents();
    tree().setFocused(tree().byKey(3));
    EXPECT_EQ(changes_, 1);
    EXPECT_EQ(rests_, 0);
    tree().setFocused(tree().byKey(4));
    EXPECT_EQ(changes_, 2);
    harness_->settle();
    EXPECT_EQ(changes_, 2);
    EXPECT_EQ(rests_, 1);
    harness_->settle();
    EXPECT_EQ(rests_, 1);
}

TEST_P(TreeListSuite, FocusingTheFocusedNodeBringsTheCursorBackAndTellsNothing) {
    bind(smallTree(), 4);
    forgetEvents();
    tree().records()->MoveFirst();
    tree().setFocused(tree().byKey(4));
    harness_->settle();
    EXPECT_EQ(tree().records()->Row(), 4U);
    EXPECT_EQ(changes_ + rests_, 0);
}

TEST_P(TreeListSuite, FocusingOpensTheAncestors) {
    bind(smallTree());
    tree().setExpanded(tree().byKey(2), false);
    tree().setExpanded(tree().byKey(1), false);
    tree().setFocused(tree().byKey(3));
    EXPECT_TRUE(tree().expanded(tree().byKey(1)));
    EXPECT_TRUE(tree().expanded(tree().byKey(2)));
    EXPECT_EQ(tree().key(tree().focused()), 3);
}

TEST_P(TreeListSuite, FocusingNoNodeLeavesTheFocus) {
    bind(smallTree());
    forgetEvents();
    tree().setFocused({});
    EXPECT_EQ(changes_, 0);
    EXPECT_EQ(tree().key(tree().focused()), 1);
}

TEST_P(TreeListSuite, TheFocusedColumnIsTheFirstVisibleOneAndTellsWhenItChanges) {
    EXPECT_EQ(tree().focusedColumn(), "");
    bind(smallTree());
    EXPECT_EQ(tree().focusedColumn(), "CODE");
    forgetEvents();
    tree().setFocusedColumn("START");
    EXPECT_EQ(tree().focusedColumn(), "START");
    EXPECT_EQ(columnNodes_, (std::vector<std::int32_t>{0}));
    tree().setFocusedColumn("START");
    EXPECT_EQ(columnNodes_.size(), 1U);
    tree().setFocused(tree().byKey(3));
    EXPECT_EQ(tree().focusedColumn(), "START") << "another node keeps the column";
    EXPECT_EQ(columnNodes_.size(), 1U);
}

// Cells

TEST_P(TreeListSuite, ReadsCellsByColumnName) {
    bind(smallTree());
    EXPECT_EQ(tree().value(tree().byKey(3), "NAME").text(), "tre");
    EXPECT_EQ(tree().value(tree().byKey(3), "HIDDEN").integer(), 3);
    EXPECT_EQ(tree().value(tree().byKey(3), "START").date(), contract::Date::of(2024, 1, 4));
    EXPECT_EQ(tree().fieldOf("START"), "START");
    EXPECT_EQ(tree().fieldOf("MARK"), "");
}

TEST_P(TreeListSuite, RefusesAColumnThatItDoesNotCarry) {
    bind(smallTree());
    EXPECT_EQ(errorOf([&] { static_cast<void>(tree().value(tree().byKey(1), "NIENTE")); }), 3265);
    EXPECT_EQ(errorOf([&] { tree().setValue(tree().byKey(1), "NIENTE", contract::Value("x")); }), 3265);
    EXPECT_EQ(errorOf([&] { static_cast<void>(tree().fieldOf("NIENTE")); }), 3265);
    EXPECT_EQ(errorOf([&] { tree().setColumnLocked(6, true); }), 3265);
    EXPECT_EQ(errorOf([&] { static_cast<void>(tree().columnLocked(6)); }), 3265);
}

TEST_P(TreeListSuite, WritingACellWritesItsRecordAndRaisesNoEvent) {
    bind(smallTree());
    forgetEvents();
    const auto day = *contract::Date::of(2025, 12, 31);
    tree().setValue(tree().byKey(4), "START", contract::Value(day));
    EXPECT_EQ(tree().value(tree().byKey(4), "START").date(), day);
    EXPECT_EQ(tree().records()->rows().column(3).value(4).date(), day);
    tree().setValue(tree().byKey(4), "START", contract::Value::null());
    EXPECT_TRUE(tree().records()->rows().column(3).isNull(4));
    harness_->settle();
    EXPECT_EQ(changes_ + rests_ + others_, 0);
}

TEST_P(TreeListSuite, MarksLiveInTheTreeUntilItIsBoundAgain) {
    bind(smallTree());
    forgetEvents();
    EXPECT_EQ(tree().value(tree().byKey(3), "MARK").text(), "False");
    tree().setValue(tree().byKey(3), "MARK", contract::Value("True"));
    EXPECT_EQ(tree().value(tree().byKey(3), "MARK").text(), "True");
    EXPECT_EQ(tree().value(tree().byKey(4), "MARK").text(), "False");
    tree().setValue(tree().byKey(3), "MARK", contract::Value("False"));
    EXPECT_EQ(tree().value(tree().byKey(3), "MARK").text(), "False");
    tree().setValue(tree().byKey(3), "MARK", contract::Value("True"));
    bind(smallTree());
    EXPECT_EQ(tree().value(tree().byKey(3), "MARK").text(), "False");
    EXPECT_EQ(others_, 0);
}

TEST_P(TreeListSuite, ColumnsAreLockedByPositionHiddenOnesIncluded) {
    bind(smallTree());
    EXPECT_FALSE(tree().columnLocked(3));
    tree().setColumnLocked(3, true);
    EXPECT_TRUE(tree().columnLocked(3));
    EXPECT_FALSE(tree().columnLocked(2));
    tree().setColumnLocked(3, false);
    EXPECT_FALSE(tree().columnLocked(3));
}

TEST_P(TreeListSuite, StateTextsAreAskedForTheRowsOnScreenOnlyAndKept) {
    bind(longTree(1000));
    harness_->draw();
    EXPECT_GT(asked_.size(), 0U);
    EXPECT_LT(asked_.size(), 200U);
    EXPECT_TRUE(asked_.contains(0));
    EXPECT_FALSE(asked_.contains(999));
    const int before = askings_;
    harness_->draw();
    EXPECT_EQ(tree().value(tree().firstNode(), "STATE").text(), "S0");
    EXPECT_EQ(askings_, before);
    tree().refreshColumn("STATE");
    harness_->draw();
    EXPECT_EQ(askings_, before + 1);
}

// Screen

TEST_P(TreeListSuite, TheTopRowFollowsAsFarAsTheTreeReaches) {
    EXPECT_EQ(tree().topRow(), 0);
    bind(longTree(300));
    EXPECT_EQ(tree().topRow(), 0);
    tree().setTopRow(100);
    EXPECT_EQ(tree().topRow(), 100);
    tree().setTopRow(299);
    EXPECT_GT(tree().topRow(), 200);
    EXPECT_LT(tree().topRow(), 299);
    tree().setTopRow(0);
    EXPECT_EQ(tree().topRow(), 0);
}

TEST_P(TreeListSuite, ATopRowThatIsNotShownGivesWayToTheNearestThatIs) {
    std::vector<TreeRow> rows = longTree(100);
    for (std::int64_t id = 1001; id <= 1100; ++id)
        rows.push_back({id, 50, "sotto"});
    bind(rows);
    tree().setExpanded(tree().byKey(50), false);
    tree().setTopRow(tree().byKey(1040).position);
    EXPECT_EQ(tree().topRow(), tree().byKey(50).position);
    EXPECT_FALSE(tree().expanded(tree().byKey(50)));
}

TEST_P(TreeListSuite, TellsWhenItsCellsStandElsewhere) {
    bind(longTree(100));
    harness_->draw();
    int moved = 0;
    tree().OnViewMoved = [&] { ++moved; };
    tree().setTopRow(40);
    EXPECT_GT(moved, 0);
    moved = 0;
    tree().setTopRow(40);
    EXPECT_EQ(moved, 0) << "nothing moved";
    tree().makeVisible(tree().byKey(95), "NAME");
    EXPECT_GT(moved, 0);
    EXPECT_TRUE(tree().cell(tree().byKey(95), "NAME"));
    bind(smallTree());
    harness_->draw();
    moved = 0;
    tree().setExpanded(tree().byKey(1), false);
    EXPECT_GT(moved, 0) << "the rows below it stand higher now";
}

TEST_P(TreeListSuite, MakesACellVisibleAndOpensWhatIsAboveIt) {
    bind(smallTree());
    tree().setExpanded(tree().byKey(1), false);
    tree().makeVisible(tree().byKey(3), "STATE");
    harness_->draw();
    EXPECT_TRUE(tree().cell(tree().byKey(3), "STATE"));
    EXPECT_EQ(tree().key(tree().focused()), 1) << "the focus stays";
    EXPECT_EQ(errorOf([&] { tree().makeVisible(tree().byKey(3), "NIENTE"); }), contract::RuntimeError::itemNotFound);
}

TEST_P(TreeListSuite, ACellOnScreenIsHitAtItsMiddle) {
    bind(smallTree());
    harness_->draw();
    const auto node = tree().byKey(2);
    const auto cell = tree().cell(node, "NAME");
    ASSERT_TRUE(cell);
    const auto hit = tree().hitTest(cell->left + cell->width / 2, cell->top + cell->height / 2);
    EXPECT_EQ(hit.node, node);
    EXPECT_EQ(hit.column, "NAME");
    EXPECT_EQ(hit.band, "Dettaglio");
    EXPECT_EQ(hit.code, contract::HitCode::cell);
}

TEST_P(TreeListSuite, TheMiddleOfACheckCellIsItsBox) {
    bind(smallTree());
    harness_->draw();
    const auto cell = tree().cell(tree().byKey(2), "MARK");
    ASSERT_TRUE(cell);
    const auto hit = tree().hitTest(cell->left + cell->width / 2, cell->top + cell->height / 2);
    EXPECT_EQ(hit.code, contract::HitCode::check);
    EXPECT_EQ(hit.node, tree().byKey(2));
}

TEST_P(TreeListSuite, AHiddenColumnOrRowHasNoCellOnScreen) {
    bind(longTree(300));
    harness_->draw();
    EXPECT_FALSE(tree().cell(tree().byKey(1), "HIDDEN"));
    EXPECT_FALSE(tree().cell(tree().byKey(300), "NAME"));
    EXPECT_TRUE(tree().cell(tree().byKey(1), "NAME"));
    bind(smallTree());
    tree().setExpanded(tree().byKey(1), false);
    EXPECT_FALSE(tree().cell(tree().byKey(3), "NAME"));
}

TEST_P(TreeListSuite, BelowTheLastRowNoNodeIsHit) {
    bind(smallTree());
    harness_->draw();
    const auto cell = tree().cell(tree().byKey(6), "NAME");
    ASSERT_TRUE(cell);
    const auto hit = tree().hitTest(cell->left + 15, cell->top + cell->height + 60);
    EXPECT_FALSE(hit.node);
    EXPECT_EQ(hit.code, contract::HitCode::below);
}

} // namespace contract_suites
