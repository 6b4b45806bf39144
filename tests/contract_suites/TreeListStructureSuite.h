#pragma once

// The nodes of a tree list, what it is bound to, and which of its nodes are open.

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

} // namespace contract_suites
