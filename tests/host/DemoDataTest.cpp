#include "host/demo/DemoModel.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <tuple>
#include <vector>

namespace {

using host::DemoData;
using host::DemoNode;
using host::makeDemoData;

std::map<std::int64_t, std::size_t> sizes(const DemoData& data) {
    std::map<std::int64_t, std::size_t> byType;
    for (const auto& type : data.types)
        byType[type.id] = 0;
    for (const auto& node : data.nodes)
        ++byType[node.type];
    return byType;
}

class DemoDataOfSize : public testing::TestWithParam<int> {
protected:
    const DemoData data = makeDemoData(GetParam());
    std::map<std::int64_t, const DemoNode*> byId = [this] {
        std::map<std::int64_t, const DemoNode*> all;
        for (const auto& node : data.nodes)
            all[node.id] = &node;
        return all;
    }();

    /// The nodes above one, nearest first.
    std::vector<const DemoNode*> above(const DemoNode& node) const {
        std::vector<const DemoNode*> path;
        for (auto parent = node.parent; parent && path.size() <= data.nodes.size();) {
            const auto at = byId.find(*parent);
            if (at == byId.end())
                break;
            path.push_back(at->second);
            parent = at->second->parent;
        }
        return path;
    }
};

TEST_P(DemoDataOfSize, TheLargestDistintaHasThatManyNodes) {
    std::size_t largest = 0;
    for (const auto& [type, size] : sizes(data))
        largest = std::max(largest, size);
    EXPECT_EQ(static_cast<std::size_t>(GetParam()), largest);
}

TEST_P(DemoDataOfSize, IdentifiersAreUnique) {
    EXPECT_EQ(data.nodes.size(), byId.size());
    std::set<std::string> guids;
    std::set<std::tuple<std::int64_t, int, std::int64_t>> accounts;
    std::set<std::int64_t> registry;
    for (const auto& node : data.nodes) {
        EXPECT_EQ(36U, node.guid.size());
        EXPECT_TRUE(guids.insert(node.guid).second) << node.guid;
    }
    for (const auto& account : data.accounts)
        EXPECT_TRUE(accounts.insert({account.company, account.kind, account.code}).second) << account.code;
    for (const auto& entry : data.registry)
        EXPECT_TRUE(registry.insert(entry.code).second);
}

TEST_P(DemoDataOfSize, PeriodsDoNotEndBeforeTheyStart) {
    for (const auto& node : data.nodes)
        EXPECT_LE(node.from, node.to) << node.id;
}

TEST_P(DemoDataOfSize, ParentsAreOfTheSameDistintaCompanyAndKind) {
    std::map<std::int64_t, const host::DemoType*> types;
    for (const auto& type : data.types)
        types[type.id] = &type;
    for (const auto& node : data.nodes) {
        ASSERT_TRUE(types.contains(node.type));
        EXPECT_EQ(types[node.type]->company, node.company);
        EXPECT_EQ(types[node.type]->kind, node.kind);
        if (!node.parent)
            continue;
        ASSERT_TRUE(byId.contains(*node.parent)) << node.id;
        const DemoNode& parent = *byId.at(*node.parent);
        EXPECT_EQ(node.type, parent.type);
        EXPECT_EQ(node.company, parent.company);
        EXPECT_EQ(node.kind, parent.kind);
    }
}

TEST_P(DemoDataOfSize, NoPathMeetsItselfOrAnAccountTwice) {
    for (const auto& node : data.nodes) {
        const auto path = above(node);
        ASSERT_LT(path.size(), 100U) << "a cycle at node " << node.id;
        for (const DemoNode* other : path)
            EXPECT_FALSE(node.account && other->account == node.account) << "node " << node.id;
    }
}

TEST_P(DemoDataOfSize, LinksOfAnAccountInADistintaDoNotOverlap) {
    std::map<std::pair<std::int64_t, std::int64_t>, std::vector<const DemoNode*>> links;
    for (const auto& node : data.nodes)
        if (node.account)
            links[{node.type, *node.account}].push_back(&node);
    for (const auto& [key, nodes] : links)
        for (std::size_t i = 0; i < nodes.size(); ++i)
            for (std::size_t k = i + 1; k < nodes.size(); ++k)
                EXPECT_TRUE(nodes[i]->to < nodes[k]->from || nodes[k]->to < nodes[i]->from)
                    << "account " << key.second << " in distinta " << key.first;
}

TEST_P(DemoDataOfSize, NodesAreOfAccountsThatExist) {
    std::set<std::tuple<std::int64_t, int, std::int64_t>> accounts;
    for (const auto& account : data.accounts)
        accounts.insert({account.company, account.kind, account.code});
    for (const auto& node : data.nodes)
        EXPECT_TRUE(!node.account || accounts.contains({node.company, node.kind, *node.account})) << node.id;
}

INSTANTIATE_TEST_SUITE_P(Sizes, DemoDataOfSize, testing::Values(1, 2, 9, 10, 19, 25, 60, 500, 2000, 10000));

TEST(DemoData, IsTheSameEveryTime) {
    const DemoData one = makeDemoData(500);
    const DemoData other = makeDemoData(500);
    ASSERT_EQ(one.nodes.size(), other.nodes.size());
    for (std::size_t i = 0; i < one.nodes.size(); ++i) {
        EXPECT_EQ(one.nodes[i].guid, other.nodes[i].guid);
        EXPECT_EQ(one.nodes[i].account, other.nodes[i].account);
        EXPECT_EQ(one.nodes[i].parent, other.nodes[i].parent);
        EXPECT_EQ(one.nodes[i].from, other.nodes[i].from);
    }
    ASSERT_EQ(one.registry.size(), other.registry.size());
    for (std::size_t i = 0; i < one.registry.size(); ++i)
        EXPECT_EQ(one.registry[i].name, other.registry[i].name);
}

/// What a user finds in the demo companies.
class DemoVariety : public testing::Test {
protected:
    const DemoData data = makeDemoData(2000);
};

TEST_F(DemoVariety, HasTwoCompaniesWithCustomersAndSuppliers) {
    std::map<std::pair<std::int64_t, int>, int> types;
    for (const auto& type : data.types)
        ++types[{type.company, type.kind}];
    EXPECT_GE((types[{1, 0}]), 4);
    EXPECT_GE((types[{1, 1}]), 2);
    EXPECT_GE((types[{2, 0}]), 1);
    EXPECT_GE((types[{2, 1}]), 1);
}

TEST_F(DemoVariety, HasADistintaWithADivisionAndAnEmptyOne) {
    const auto bySize = sizes(data);
    EXPECT_EQ(1, std::count_if(data.types.begin(), data.types.end(),
                               [](const auto& type) { return !type.division.empty(); }));
    EXPECT_EQ(1, std::count_if(bySize.begin(), bySize.end(), [](const auto& entry) { return entry.second == 0; }));
}

TEST_F(DemoVariety, HasADistintaOfTwelveLevels) {
    std::map<std::int64_t, int> depth;
    int deepest = 0;
    for (const auto& node : data.nodes) { // parents stand before their children
        depth[node.id] = node.parent ? depth[*node.parent] + 1 : 1;
        deepest = std::max(deepest, depth[node.id]);
    }
    EXPECT_EQ(12, deepest);
}

TEST_F(DemoVariety, HasAccountsInSeveralDistinteAndInSeveralPeriods) {
    std::map<std::int64_t, std::set<std::int64_t>> distinte;
    std::map<std::pair<std::int64_t, std::int64_t>, int> periods;
    for (const auto& node : data.nodes) {
        if (!node.account || node.company != 1 || node.kind != 0)
            continue;
        distinte[*node.account].insert(node.type);
        ++periods[{node.type, *node.account}];
    }
    EXPECT_TRUE(std::any_of(distinte.begin(), distinte.end(), [](const auto& at) { return at.second.size() > 2; }));
    EXPECT_GE(std::count_if(periods.begin(), periods.end(), [](const auto& at) { return at.second == 2; }), 10);
}

TEST_F(DemoVariety, HasAccountsWithoutRegistryEntryAndANodeWithoutAccount) {
    EXPECT_TRUE(std::any_of(data.accounts.begin(), data.accounts.end(), [](const auto& at) { return !at.registry; }));
    EXPECT_TRUE(std::any_of(data.nodes.begin(), data.nodes.end(), [](const auto& at) { return !at.account; }));
}

TEST_F(DemoVariety, HasANameOfEightyCharactersThatStandsInATree) {
    std::set<std::int64_t> longest;
    for (const auto& entry : data.registry)
        if (entry.name.size() == 80)
            longest.insert(entry.code);
    ASSERT_EQ(1U, longest.size());
    std::set<std::int64_t> accounts;
    for (const auto& account : data.accounts)
        if (account.registry && longest.contains(*account.registry))
            accounts.insert(account.code);
    EXPECT_TRUE(std::any_of(data.nodes.begin(), data.nodes.end(), [&](const auto& node) {
        return node.company == 1 && node.kind == 0 && node.type == 1 && node.account &&
               accounts.contains(*node.account);
    }));
}

TEST_F(DemoVariety, HasSettlementsOfEveryStateAndExceptions) {
    std::set<int> states;
    bool exception = false;
    for (const auto& bonus : data.bonuses) {
        states.insert(bonus.settlements.begin(), bonus.settlements.end());
        exception = exception || !bonus.exceptNodes.empty();
    }
    EXPECT_EQ((std::set<int>{0, 1, 2, 3}), states);
    EXPECT_TRUE(exception);
}

} // namespace
