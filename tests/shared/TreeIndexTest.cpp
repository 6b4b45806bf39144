#include "platform/shared/TreeIndex.h"

#include "contract/RuntimeError.h"
#include "shared/Rows.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>

using platform::shared::TreeIndex;
using tests::Link;
using tests::rowsOf;

namespace {

constexpr auto none = TreeIndex::none;

/// The same tree the slow way: every question is answered by looking through all rows.
class NaiveTree {
public:
    explicit NaiveTree(const std::vector<Link>& links) : links_(links) {
        for (std::size_t row = 0; row < links.size(); ++row)
            if (!parentRow(row))
                visit(row, 0, none);
    }

    struct Place {
        std::size_t row;
        int level;
        std::int32_t parent;
        std::int32_t end;
    };
    const std::vector<Place>& places() const { return places_; }

    std::int32_t position(std::size_t row) const {
        const auto at = std::find_if(places_.begin(), places_.end(), [&](const Place& p) { return p.row == row; });
        return at == places_.end() ? none : static_cast<std::int32_t>(at - places_.begin());
    }

    std::int32_t find(std::int64_t key) const {
        for (std::size_t row = 0; row < links_.size(); ++row)
            if (links_[row].key == key && position(row) != none)
                return position(row);
        return none;
    }

    std::vector<std::int32_t> children(std::int32_t parent) const {
        std::vector<std::int32_t> found;
        for (std::size_t at = 0; at < places_.size(); ++at)
            if (places_[at].parent == parent)
                found.push_back(static_cast<std::int32_t>(at));
        return found;
    }

private:
    std::optional<std::size_t> parentRow(std::size_t row) const {
        if (!links_[row].parent)
            return std::nullopt;
        for (std::size_t other = 0; other < links_.size(); ++other)
            if (links_[other].key == links_[row].parent)
                return other;
        return std::nullopt;
    }

    void visit(std::size_t row, int level, std::int32_t parent) {
        const auto at = places_.size();
        places_.push_back({row, level, parent, none});
        for (std::size_t other = 0; other < links_.size(); ++other)
            if (parentRow(other) == row)
                visit(other, level + 1, static_cast<std::int32_t>(at));
        places_[at].end = static_cast<std::int32_t>(places_.size());
    }

    const std::vector<Link>& links_;
    std::vector<Place> places_;
};

void expectSame(const std::vector<Link>& links, const TreeIndex& tree) {
    const NaiveTree model(links);
    ASSERT_EQ(tree.size(), model.places().size());
    for (std::int32_t at = 0; at < static_cast<std::int32_t>(tree.size()); ++at) {
        const auto& place = model.places()[static_cast<std::size_t>(at)];
        ASSERT_EQ(tree.row(at), static_cast<std::int32_t>(place.row));
        ASSERT_EQ(tree.level(at), place.level);
        ASSERT_EQ(tree.parent(at), place.parent);
        ASSERT_EQ(tree.subtreeEnd(at), place.end);
        const auto children = tree.children(at);
        ASSERT_EQ(std::vector(children.begin(), children.end()), model.children(at));
        const auto siblings = model.children(place.parent);
        ASSERT_EQ(siblings[static_cast<std::size_t>(tree.placeAmongSiblings(at))], at);
    }
    const auto top = tree.children(none);
    ASSERT_EQ(std::vector(top.begin(), top.end()), model.children(none));
    for (std::size_t row = 0; row < links.size(); ++row) {
        ASSERT_EQ(tree.position(static_cast<std::int32_t>(row)), model.position(row));
        if (links[row].key) {
            ASSERT_EQ(tree.find(*links[row].key), model.find(*links[row].key));
        }
    }
}

TreeIndex build(const std::vector<Link>& links) {
    TreeIndex tree;
    tree.build(rowsOf(links), "ID", "PARENT");
    return tree;
}

/// A random forest with everything that an imperfect table may hold; keys `spread` apart.
std::vector<Link> randomLinks(std::mt19937& random, std::int64_t spread, bool tidy) {
    const auto below = [&](std::size_t end) {
        return std::uniform_int_distribution<std::size_t>(0, end == 0 ? 0 : end - 1)(random);
    };
    std::vector<Link> links(below(40));
    for (std::size_t row = 0; row < links.size(); ++row) {
        auto& link = links[row];
        link.key = static_cast<std::int64_t>(row + 1) * spread - 7;
        const auto kind = below(10);
        if (kind < 6 && row > 0)
            link.parent = links[below(row)].key;
        else if (!tidy && kind == 6)
            link.parent = static_cast<std::int64_t>(below(links.size() + 5)) * spread - 7;
        else if (!tidy && kind == 7)
            link.parent = link.key;
        else if (!tidy && kind == 8)
            link.key = below(2) == 0 ? std::nullopt : links[below(row + 1)].key;
    }
    if (!tidy)
        std::shuffle(links.begin(), links.end(), random);
    return links;
}

TEST(TreeIndex, HasNothingBeforeItIsBuilt) {
    const TreeIndex tree;
    EXPECT_EQ(tree.size(), 0U);
    EXPECT_TRUE(tree.children(none).empty());
    EXPECT_EQ(tree.find(0), none);
    EXPECT_EQ(tree.memory(), 0U);
}

TEST(TreeIndex, HasNoNodesWithoutRows) {
    const auto tree = build({});
    EXPECT_EQ(tree.size(), 0U);
    EXPECT_TRUE(tree.children(none).empty());
    EXPECT_EQ(tree.find(1), none);
}

TEST(TreeIndex, PutsChildrenUnderTheirParentsAndKeepsSiblingsInRowOrder) {
    const auto tree = build({{1, {}}, {2, {}}, {3, 1}, {4, 2}, {5, 1}, {6, 3}});
    std::vector<std::int32_t> rows;
    for (std::int32_t at = 0; at < 6; ++at)
        rows.push_back(tree.row(at));
    EXPECT_EQ(rows, (std::vector<std::int32_t>{0, 2, 5, 4, 1, 3}));
    EXPECT_EQ(tree.level(2), 2);
    EXPECT_EQ(tree.parent(2), 1);
    EXPECT_EQ(tree.subtreeEnd(0), 4);
    EXPECT_EQ(tree.placeAmongSiblings(3), 1);
    EXPECT_EQ(tree.find(4), 5);
}

TEST(TreeIndex, PutsChildrenUnderParentsThatComeLater) {
    const auto tree = build({{3, 2}, {2, 1}, {1, {}}});
    EXPECT_EQ(tree.row(0), 2);
    EXPECT_EQ(tree.row(2), 0);
    EXPECT_EQ(tree.level(2), 2);
}

TEST(TreeIndex, PutsARowWithAnUnknownParentAtTheTop) {
    const auto tree = build({{1, 99}, {2, 1}});
    EXPECT_EQ(tree.level(0), 0);
    EXPECT_EQ(tree.parent(0), none);
    EXPECT_EQ(tree.level(1), 1);
}

TEST(TreeIndex, LeavesOutRowsOnACycleAndWhatHangsFromThem) {
    const auto tree = build({{1, 2}, {2, 1}, {3, 2}, {4, 4}, {5, {}}});
    ASSERT_EQ(tree.size(), 1U);
    EXPECT_EQ(tree.row(0), 4);
    for (const std::int32_t row : {0, 1, 2, 3})
        EXPECT_EQ(tree.position(row), none);
    for (const std::int64_t key : {1, 2, 3, 4})
        EXPECT_EQ(tree.find(key), none);
}

TEST(TreeIndex, HangsChildrenFromTheFirstRowOfADuplicateKey) {
    const auto tree = build({{1, {}}, {1, {}}, {2, 1}});
    EXPECT_EQ(tree.parent(tree.position(2)), tree.position(0));
    EXPECT_EQ(tree.find(1), tree.position(0));
}

TEST(TreeIndex, FindsTheFirstNodeOfAKeyWhoseFirstRowIsNoNode) {
    for (const std::int64_t far : {3LL, 4'000'000'000'000LL}) {
        const auto tree = build({{1, far}, {far, 1}, {1, {}}, {1, {}}});
        EXPECT_EQ(tree.find(1), tree.position(2));
        EXPECT_EQ(tree.find(far), none);
    }
}

TEST(TreeIndex, HangsNothingFromARowWithoutAKey) {
    const auto tree = build({{{}, {}}, {1, {}}, {2, {}}});
    EXPECT_EQ(tree.size(), 3U);
    EXPECT_EQ(tree.children(none).size(), 3U);
    EXPECT_EQ(build({{{}, {}}, {{}, 1}}).size(), 2U);
}

TEST(TreeIndex, TakesKeysAtTheEndsOfTheirRange) {
    constexpr auto lowest = std::numeric_limits<std::int64_t>::min();
    constexpr auto highest = std::numeric_limits<std::int64_t>::max();
    const std::vector<Link> links{{highest, lowest}, {lowest, {}}, {0, highest}, {-1, lowest}};
    expectSame(links, build(links));
}

TEST(TreeIndex, TakesKeysHeldAsText) {
    const std::vector<Link> links{{10, {}}, {20, 10}, {30, 20}};
    TreeIndex tree;
    tree.build(rowsOf(links, contract::FieldType::varChar), "ID", "PARENT");
    expectSame(links, tree);
}

TEST(TreeIndex, RefusesAnUnknownField) {
    const auto records = rowsOf({{1, {}}});
    TreeIndex tree;
    for (const auto& [key, parent] : {std::pair{"X", "PARENT"}, std::pair{"ID", "X"}}) {
        try {
            tree.build(records, key, parent);
            FAIL() << key << " " << parent;
        } catch (const contract::RuntimeError& error) {
            EXPECT_EQ(error.number(), contract::RuntimeError::itemNotFound);
        }
    }
}

TEST(TreeIndex, ForgetsTheTreeBefore) {
    TreeIndex tree;
    tree.build(rowsOf({{1, {}}, {2, 1}, {4'000'000'000, 1}}), "ID", "PARENT");
    tree.build(rowsOf({{7, {}}}), "ID", "PARENT");
    EXPECT_EQ(tree.size(), 1U);
    EXPECT_EQ(tree.find(1), none);
    EXPECT_EQ(tree.find(7), 0);
    tree.clear();
    EXPECT_EQ(tree.size(), 0U);
    EXPECT_EQ(tree.memory(), 0U);
}

class TreeIndexProperty : public testing::TestWithParam<std::tuple<std::int64_t, bool>> {};

TEST_P(TreeIndexProperty, AgreesWithTheNaiveTree) {
    const auto [spread, tidy] = GetParam();
    std::mt19937 random(20);
    for (int round = 0; round < 1000; ++round) {
        const auto links = randomLinks(random, spread, tidy);
        SCOPED_TRACE(round);
        expectSame(links, build(links));
        if (HasFatalFailure())
            return;
    }
}

INSTANTIATE_TEST_SUITE_P(KeysNearAndFar, TreeIndexProperty,
                         testing::Combine(testing::Values(1, 5, 1'000'003, 1'000'000'000'000'003), testing::Bool()));

class TreeIndexMemory : public testing::TestWithParam<std::int64_t> {};

TEST_P(TreeIndexMemory, KeepsToFortyBytesANode) {
    const auto spread = GetParam();
    for (const std::int64_t count : {1, 2, 7, 1000, 50'000}) {
        std::vector<Link> links;
        for (std::int64_t i = 0; i < count; ++i)
            links.push_back({i * spread, i == 0 ? std::nullopt : std::optional(i / 3 * spread)});
        const auto tree = build(links);
        ASSERT_EQ(tree.size(), static_cast<std::size_t>(count));
        EXPECT_LE(tree.memory(), static_cast<std::size_t>(40 * count)) << count << " nodes " << spread << " apart";
    }
}

INSTANTIATE_TEST_SUITE_P(KeysNearAndFar, TreeIndexMemory, testing::Values(1, 2, 3, 4, 1'000'003));

TEST(TreeIndex, TakesAChainAsDeepAsItHasRows) {
    std::vector<Link> up;
    std::vector<Link> down;
    constexpr std::int64_t count = 200'000;
    for (std::int64_t i = 0; i < count; ++i) {
        up.push_back({i, i + 1});
        down.push_back({i, i - 1});
    }
    for (const auto& links : {up, down}) {
        const auto tree = build(links);
        EXPECT_EQ(tree.size(), static_cast<std::size_t>(count));
        EXPECT_EQ(tree.level(count - 1), count - 1);
        EXPECT_EQ(tree.subtreeEnd(0), count);
    }
}

} // namespace
