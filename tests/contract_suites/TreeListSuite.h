#pragma once

// What every tree list keeps to, whatever draws it. Include this in one file of a test program and instantiate it:
//
//   INSTANTIATE_TEST_SUITE_P(Headless, TreeListSuite, testing::Values(&makeHeadlessTree), parameterName("Tree"));

#include "contract_suites/TreeListHarness.h"

namespace contract_suites {

// Structure

TEST_P(TreeListSuite, ShowsParentsBeforeChildrenAndSiblingsInTheOrderOfTheRows) {
    bind(smallTree());
    EXPECT_EQ(order(), (std::vector<std::int64_t>{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(tree().nodeCount(), 6U);
}

TEST_P(TreeListSuite, KnowsLevelParentRowKeyAndDescendants) {
    bind(smallTree());
    const auto three = tree().byKey(3);
    EXPECT_EQ(tree().level(three), 2);
    EXPECT_EQ(tree().parent(three), tree().byKey(2));
    EXPECT_EQ(tree().row(three), 5U);
    EXPECT_EQ(tree().key(three), 3);
    EXPECT_EQ(tree().level(tree().byKey(1)), 0);
    EXPECT_FALSE(tree().parent(tree().byKey(1)));
    EXPECT_EQ(tree().descendants(tree().byKey(1)), 3U);
    EXPECT_EQ(tree().descendants(three), 0U);
    EXPECT_FALSE(tree().byKey(77));
}

TEST_P(TreeListSuite, TheWalkGoesOnThroughClosedNodes) {
    bind(smallTree());
    tree().setExpanded(tree().byKey(1), false);
    EXPECT_EQ(order(), (std::vector<std::int64_t>{1, 2, 3, 4, 5, 6}));
    EXPECT_FALSE(tree().next(tree().byKey(6)));
}

TEST_P(TreeListSuite, ARowWhoseParentIsMissingIsATopLevelNode) {
    bind({{1, 99, "orfano"}, {2, 1, "figlio"}});
    EXPECT_EQ(tree().level(tree().byKey(1)), 0);
    EXPECT_EQ(tree().level(tree().byKey(2)), 1);
}

TEST_P(TreeListSuite, RowsOnACycleAndWhatHangsFromThemAreNoNodes) {
    bind({{1, std::nullopt, "radice"}, {2, 3, "giro"}, {3, 2, "giro"}, {4, 3, "appeso"}, {5, 5, "se stesso"}});
    EXPECT_EQ(order(), (std::vector<std::int64_t>{1}));
    EXPECT_FALSE(tree().byKey(4));
}

TEST_P(TreeListSuite, RecordsAllOnCyclesGiveNoNodeAndStandAtTheirEnd) {
    bind({{2, 3, "giro"}, {3, 2, "giro"}});
    EXPECT_EQ(tree().nodeCount(), 0U);
    EXPECT_FALSE(tree().focused());
    EXPECT_FALSE(tree().firstNode());
    EXPECT_TRUE(tree().records()->Eof());
    EXPECT_FALSE(tree().records()->Empty());
    EXPECT_EQ(changes_, 1);
    EXPECT_EQ(rests_, 1);
    EXPECT_EQ(tree().topRow(), 0);
}

// Binding

TEST_P(TreeListSuite, BindingFocusesTheFirstNodeAndRaisesBothEventsAtOnce) {
    bind(smallTree());
    EXPECT_EQ(tree().focused(), tree().byKey(1));
    EXPECT_EQ(changes_, 1);
    EXPECT_EQ(rests_, 1);
    EXPECT_EQ(rowAtChange_, 0U);
    harness_->settle();
    EXPECT_EQ(changes_, 1);
    EXPECT_EQ(rests_, 1);
}

TEST_P(TreeListSuite, BindingFocusesTheNodeAskedFor) {
    bind(smallTree(), 3);
    EXPECT_EQ(tree().key(tree().focused()), 3);
    EXPECT_EQ(rowAtChange_, 5U);
    bind(smallTree(), 77);
    EXPECT_EQ(tree().key(tree().focused()), 1);
}

TEST_P(TreeListSuite, BindingOpensEveryNode) {
    bind(smallTree());
    tree().setExpanded(tree().byKey(1), false);
    bind(smallTree());
    EXPECT_TRUE(tree().expanded(tree().byKey(1)));
    EXPECT_TRUE(tree().expanded(tree().byKey(2)));
    EXPECT_FALSE(tree().expanded(tree().byKey(3))) << "nothing hangs from it";
}

TEST_P(TreeListSuite, BindingForgetsAFocusThatHadNotComeToRest) {
    bind(smallTree());
    forgetEvents();
    tree().setFocused(tree().byKey(3));
    bind(smallTree());
    harness_->settle();
    EXPECT_EQ(changes_, 2);
    EXPECT_EQ(rests_, 1);
}

TEST_P(TreeListSuite, AnUnknownKeyFieldIsRefused) {
    EXPECT_EQ(errorOf([&] { tree().bind(treeRecords(smallTree()), "NIENTE", "PARENT"); }), 3265);
    EXPECT_EQ(errorOf([&] { tree().bind(treeRecords(smallTree()), "ID", "NIENTE"); }), 3265);
    EXPECT_EQ(tree().nodeCount(), 0U);
}

TEST_P(TreeListSuite, ClearingRemovesTheNodesRaisesBothEventsAndKeepsTheBinding) {
    bind(smallTree());
    const auto records = tree().records();
    forgetEvents();
    tree().clearNodes();
    EXPECT_EQ(tree().nodeCount(), 0U);
    EXPECT_FALSE(tree().focused());
    EXPECT_EQ(tree().records(), records);
    EXPECT_TRUE(records->Eof());
    EXPECT_EQ(changes_, 1);
    EXPECT_EQ(rests_, 1);
}

TEST_P(TreeListSuite, UnbindingTakesTheRecordSetAwayAndTellsOfAFocusThatGoes) {
    bind(smallTree());
    forgetEvents();
    tree().unbind();
    harness_->settle();
    EXPECT_EQ(tree().records(), nullptr);
    EXPECT_EQ(tree().nodeCount(), 0U);
    EXPECT_FALSE(tree().focused());
    EXPECT_EQ(changes_, 1);
    EXPECT_EQ(rests_, 1);
}

TEST_P(TreeListSuite, UnbindingAClearedTreeTellsNothing) {
    bind(smallTree());
    tree().clearNodes();
    forgetEvents();
    tree().unbind();
    harness_->settle();
    EXPECT_EQ(tree().records(), nullptr);
    EXPECT_EQ(changes_ + rests_, 0);
}

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

// Expansion

TEST_P(TreeListSuite, ClosingANodeMovesAHiddenFocusToIt) {
    bind(smallTree(), 3);
    forgetEvents();
    tree().setExpanded(tree().byKey(1), false);
    EXPECT_EQ(tree().key(tree().focused()), 1);
    EXPECT_EQ(tree().records()->Row(), 0U);
    EXPECT_EQ(changes_, 1);
    harness_->settle();
    EXPECT_EQ(rests_, 1);
}

TEST_P(TreeListSuite, ClosingAnotherNodeLeavesTheFocus) {
    bind(smallTree(), 3);
    forgetEvents();
    tree().setExpanded(tree().byKey(5), false);
    tree().setExpanded(tree().byKey(3), false);
    harness_->settle();
    EXPECT_EQ(tree().key(tree().focused()), 3);
    EXPECT_EQ(changes_ + rests_, 0);
}

TEST_P(TreeListSuite, ABatchOfExpansionsMovesTheFocusOnceAtTheLastEnd) {
    bind(smallTree(), 3);
    forgetEvents();
    tree().beginUpdate();
    tree().beginUpdate();
    tree().setExpanded(tree().byKey(2), false);
    tree().setExpanded(tree().byKey(1), false);
    EXPECT_FALSE(tree().expanded(tree().byKey(1)));
    tree().endUpdate();
    EXPECT_EQ(changes_, 0);
    tree().endUpdate();
    EXPECT_EQ(changes_, 1);
    EXPECT_EQ(tree().key(tree().focused()), 1);
    EXPECT_FALSE(tree().expanded(tree().byKey(2)));
}

TEST_P(TreeListSuite, ABatchThatClosesAndOpensANodeAgainLeavesItOpen) {
    bind(smallTree(), 3);
    forgetEvents();
    tree().beginUpdate();
    tree().setExpanded(tree().byKey(1), false);
    tree().setExpanded(tree().byKey(1), true);
    tree().endUpdate();
    EXPECT_TRUE(tree().expanded(tree().byKey(1)));
    EXPECT_EQ(tree().key(tree().focused()), 3);
    EXPECT_EQ(changes_, 0);
}

TEST_P(TreeListSuite, MakingANodeVisibleOpensItsAncestorsAndLeavesTheFocus) {
    bind(smallTree());
    tree().setExpanded(tree().byKey(1), false);
    forgetEvents();
    tree().makeVisible(tree().byKey(3));
    EXPECT_TRUE(tree().expanded(tree().byKey(1)));
    EXPECT_EQ(tree().key(tree().focused()), 1);
    EXPECT_EQ(changes_, 0);
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
