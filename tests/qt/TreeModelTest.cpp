#include "platform/qt/tree/TreeModel.h"

#include "contract/RuntimeError.h"
#include "contract_suites/TreeRows.h"
#include "qt/TreeTestApp.h"

#include <QAbstractItemModelTester>

#include <gtest/gtest.h>

#include <random>

using contract::TreeColumnKind;
using contract_suites::treeRecords;
using contract_suites::TreeRow;
using platform::qt::TreeModel;

namespace {

void addColumns(TreeModel& model) {
    model.addColumn({"CODE", "Codice", "ID", TreeColumnKind::code});
    model.addColumn({"NAME", "Nome", "NAME", TreeColumnKind::text});
    model.addColumn({"START", "Inizio", "START", TreeColumnKind::date, true, true});
    model.addColumn({"MARK", "Segna", "", TreeColumnKind::check, true, false, false, 900, "True"});
    model.addColumn({"ELSE", "Altro", "MANCANTE", TreeColumnKind::text});
}

/// Rows of which about one in ten has a parent that is missing, and some stand on cycles.
std::vector<TreeRow> randomForest(std::mt19937& random, int rows) {
    std::vector<TreeRow> forest;
    for (int id = 1; id <= rows; ++id) {
        std::optional<std::int64_t> parent;
        const auto kind = random() % 10;
        if (kind < 6)
            parent = 1 + static_cast<int>(random() % static_cast<unsigned>(rows)); // back, forward or itself
        else if (kind == 6)
            parent = 10 * rows;
        forest.push_back({id, parent, "n" + std::to_string(id)});
    }
    return forest;
}

} // namespace

class TreeModelTest : public testing::Test {
protected:
    TreeModelTest() { qt_tests::ensureApplication(); }
};

TEST_F(TreeModelTest, KeepsQtsRulesOverRandomForests) {
    std::mt19937 random(20240131);
    for (int round = 0; round < 20; ++round) {
        TreeModel model;
        const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
        addColumns(model);
        model.bind(treeRecords(randomForest(random, static_cast<int>(random() % 60))), "ID", "PARENT");
        model.bind(treeRecords(randomForest(random, 40)), "ID", "PARENT");
        if (model.count() > 0) {
            model.setData(model.at(model.count() - 1, 3), Qt::Checked, Qt::CheckStateRole);
            model.setData(model.at(0, 2), QStringLiteral("31/12/2024"));
        }
        model.clearNodes();
        model.unbind();
    }
}

TEST_F(TreeModelTest, EveryPositionIsItsIndexInAListWithoutParents) {
    std::mt19937 random(7);
    TreeModel model;
    addColumns(model);
    model.bind(treeRecords(randomForest(random, 200)), "ID", "PARENT");
    ASSERT_GT(model.count(), 0);
    for (std::int32_t at = 0; at < model.count(); ++at) {
        const auto index = model.at(at, 1);
        EXPECT_EQ(TreeModel::position(index), at);
        EXPECT_EQ(index.sibling(index.row(), 0), model.at(at));
        EXPECT_EQ(index.row(), at);
        EXPECT_FALSE(index.parent().isValid());
        EXPECT_EQ(index.data().toString().toStdString(), "n" + std::to_string(model.key(at)));
    }
}

TEST_F(TreeModelTest, RowsOfOpenNodesAreOnOfferAndTheOthersAreNot) {
    std::mt19937 random(11);
    for (int round = 0; round < 20; ++round) {
        TreeModel model;
        const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
        addColumns(model);
        model.bind(treeRecords(randomForest(random, 60)), "ID", "PARENT");
        for (std::int32_t at = 0; at < model.count(); ++at)
            if (random() % 3 == 0)
                model.setOpen(at, false);
        const QPersistentModelIndex first = model.at(0, 1);
        const QPersistentModelIndex last = model.at(model.count() - 1, 1);
        model.layOut();
        std::vector<std::int32_t> expected;
        for (std::int32_t at = 0; at < model.count(); ++at) {
            bool shown = true;
            for (auto above = model.nodes().parent(at); above >= 0; above = model.nodes().parent(above))
                shown = shown && model.isOpen(above);
            EXPECT_EQ(model.isShown(at), shown);
            EXPECT_EQ(model.at(at).isValid(), shown);
            if (shown)
                expected.push_back(at);
        }
        ASSERT_EQ(static_cast<std::size_t>(model.rowCount()), expected.size());
        for (int row = 0; row < model.rowCount(); ++row)
            EXPECT_EQ(TreeModel::position(model.index(row, 1)), expected[static_cast<std::size_t>(row)]);
        EXPECT_EQ(model.lastShown(), expected.back());
        EXPECT_EQ(first.row(), 0);
        EXPECT_EQ(last.isValid(), model.isShown(model.count() - 1)) << "a cell that went is nobody's";
    }
}

TEST_F(TreeModelTest, ANodeWithoutChildrenNeverOpensAndItsPlaceIsSpoken) {
    TreeModel model;
    addColumns(model);
    model.bind(treeRecords({{1, std::nullopt, "uno"}, {2, 1, "due"}}), "ID", "PARENT");
    model.setOpen(1, true);
    EXPECT_FALSE(model.isOpen(1));
    const auto place = [&](std::int32_t at) { return model.at(at).data(Qt::AccessibleDescriptionRole).toString(); };
    EXPECT_EQ(place(0), QStringLiteral("livello 1, aperto"));
    EXPECT_EQ(place(1), QStringLiteral("livello 2"));
}

TEST_F(TreeModelTest, OnlyDateCellsThatAreEditableAndNotLockedTakeAText) {
    TreeModel model;
    addColumns(model);
    model.bind(treeRecords({{1, std::nullopt, "uno"}}), "ID", "PARENT");
    EXPECT_FALSE(model.setData(model.at(0, 1), QStringLiteral("altro")));
    EXPECT_TRUE(model.setData(model.at(0, 2), QStringLiteral("29/02/2024")));
    EXPECT_EQ(model.value(0, 2).date(), contract::Date::of(2024, 2, 29));
    EXPECT_FALSE(model.setData(model.at(0, 2), QStringLiteral("30/02/2024")));
    EXPECT_EQ(model.value(0, 2).date(), contract::Date::of(2024, 2, 29));
    EXPECT_TRUE(model.setData(model.at(0, 2), QString()));
    EXPECT_TRUE(model.value(0, 2).isNull());
    model.setLocked(2, true);
    EXPECT_FALSE(model.setData(model.at(0, 2), QStringLiteral("01/03/2024")));
    EXPECT_FALSE(model.flags(model.at(0, 2)).testFlag(Qt::ItemIsEditable));
}

TEST_F(TreeModelTest, AColumnWhoseFieldTheRecordsLackIsEmpty) {
    TreeModel model;
    addColumns(model);
    model.bind(treeRecords({{1, std::nullopt, "uno"}}), "ID", "PARENT");
    EXPECT_TRUE(model.value(0, 4).isEmpty());
    EXPECT_EQ(model.text(0, 4), QString());
}

TEST_F(TreeModelTest, AFailingProviderOfTextsIsAskedOnce) {
    TreeModel model;
    contract::TreeColumn state{"STATE", "Stato", "", TreeColumnKind::state};
    int asked = 0;
    state.texts = [&](const std::vector<std::size_t>&) -> std::vector<std::string> {
        ++asked;
        throw contract::RuntimeError(5, "guasto");
    };
    model.addColumn(state);
    model.bind(treeRecords({{1, std::nullopt, "uno"}}), "ID", "PARENT");
    model.fetchTexts(0, {0});
    model.fetchTexts(0, {0});
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(model.text(0, 0), QString());
    model.forgetTexts(0);
    model.fetchTexts(0, {0});
    EXPECT_EQ(asked, 2);
}

TEST_F(TreeModelTest, BindingNothingIsRefused) {
    TreeModel model;
    try {
        model.bind(nullptr, "ID", "PARENT");
        FAIL();
    } catch (const contract::RuntimeError& error) {
        EXPECT_EQ(error.number(), 91);
    }
}
