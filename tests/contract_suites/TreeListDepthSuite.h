#pragma once

// Trees that are deeper than any screen: a chain in which every node hangs from the one before.

#include "contract_suites/TreeListHarness.h"

namespace contract_suites {

constexpr std::int64_t deepLevels = 40000; // more than a short integer counts

inline std::vector<TreeRow> chain(std::int64_t levels) {
    std::vector<TreeRow> rows;
    rows.reserve(static_cast<std::size_t>(levels));
    for (std::int64_t id = 1; id <= levels; ++id)
        rows.push_back({id, id == 1 ? std::nullopt : std::optional(id - 1), "livello " + std::to_string(id)});
    return rows;
}

TEST_P(TreeListSuite, AChainOpensDownToTheLevelsThatCanBeDrawn) {
    bind(chain(deepLevels));
    harness_->draw();
    EXPECT_EQ(tree().nodeCount(), static_cast<std::size_t>(deepLevels));
    EXPECT_EQ(tree().level(tree().byKey(deepLevels)), deepLevels - 1);
    EXPECT_TRUE(tree().expanded(tree().byKey(contract::TreeList::levelsOpened - 1)));
    EXPECT_FALSE(tree().expanded(tree().byKey(contract::TreeList::levelsOpened)));
    EXPECT_EQ(tree().descendants(tree().byKey(1)), static_cast<std::size_t>(deepLevels - 1));
}

TEST_P(TreeListSuite, TheDeepestNodeOfAChainTakesTheFocusAndScrolls) {
    bind(chain(deepLevels));
    forgetEvents();
    tree().setFocused(tree().byKey(deepLevels));
    harness_->draw();
    EXPECT_EQ(tree().key(tree().focused()), deepLevels);
    EXPECT_EQ(changes_, 1);
    EXPECT_EQ(rowAtChange_, static_cast<std::size_t>(deepLevels - 1));
    EXPECT_TRUE(tree().expanded(tree().byKey(deepLevels - 1)));
    EXPECT_GT(tree().topRow(), deepLevels - 1000);
    EXPECT_TRUE(tree().cell(tree().focused(), "NAME").has_value());
    tree().setTopRow(20000);
    EXPECT_EQ(tree().topRow(), 20000);
    tree().setTopRow(0);
    EXPECT_EQ(tree().topRow(), 0);
}

TEST_P(TreeListSuite, ClosingTheTopOfAChainTakesTheFocusUp) {
    bind(chain(deepLevels), deepLevels);
    EXPECT_EQ(tree().key(tree().focused()), deepLevels);
    forgetEvents();
    tree().setExpanded(tree().byKey(1), false);
    EXPECT_EQ(tree().key(tree().focused()), 1);
    EXPECT_EQ(changes_, 1);
    tree().setExpanded(tree().byKey(1), true);
    harness_->draw();
    EXPECT_FALSE(tree().expanded(tree().byKey(deepLevels)));
    tree().clearNodes();
    EXPECT_EQ(tree().nodeCount(), 0U);
    tree().unbind();
}

TEST_P(TreeListSuite, AChainOpensAndClosesLevelByLevelInOneLayout) {
    bind(chain(deepLevels));
    tree().beginUpdate();
    for (auto node = tree().firstNode(); node; node = tree().next(node))
        tree().setExpanded(node, true);
    tree().endUpdate();
    harness_->draw();
    EXPECT_TRUE(tree().expanded(tree().byKey(deepLevels - 1)));
    tree().beginUpdate();
    for (auto node = tree().firstNode(); node; node = tree().next(node))
        if (tree().level(node) >= 1)
            tree().setExpanded(node, false);
    tree().endUpdate();
    harness_->draw();
    EXPECT_FALSE(tree().expanded(tree().byKey(2)));
    EXPECT_TRUE(tree().expanded(tree().byKey(1)));
}

} // namespace contract_suites
