#include "qt/TreeFixture.h"

#include <QJsonArray>
#include <QJsonObject>

using qt_tests::TreeFixture;

class TreeScript : public TreeFixture {
protected:
    QJsonArray nodes() { return tree_->read().value(QLatin1String("nodes")).toArray(); }
    static QJsonValue cell(const QJsonValue& node, const char* column) {
        return node[QLatin1String("cells")][QLatin1String(column)];
    }
};

TEST_F(TreeScript, ReadsColumnsAndNodesWhateverIsExpanded) {
    bindSmall(4);
    tree_->setExpanded(node(1), false);
    tree_->setColumnLocked(3, true);
    const auto read = tree_->read();
    const auto columns = read.value(QLatin1String("columns")).toArray();
    ASSERT_EQ(columns.size(), 5);
    EXPECT_EQ(
        columns[0].toObject(),
        (QJsonObject{{"name", "HIDDEN"}, {"caption", ""}, {"field", "ID"}, {"visible", false}, {"locked", false}}));
    EXPECT_EQ(columns[3].toObject(),
              (QJsonObject{
                  {"name", "START"}, {"caption", "Inizio"}, {"field", "START"}, {"visible", true}, {"locked", true}}));
    const auto nodes = read.value(QLatin1String("nodes")).toArray();
    ASSERT_EQ(nodes.size(), 6);
    EXPECT_EQ(nodes[0][QLatin1String("id")], QJsonValue(1));
    EXPECT_TRUE(nodes[0][QLatin1String("parent")].isNull());
    EXPECT_EQ(nodes[0][QLatin1String("expanded")], QJsonValue(false));
    EXPECT_EQ(nodes[2].toObject(),
              (QJsonObject{
                  {"id", 3},
                  {"parent", 2},
                  {"level", 2},
                  {"expanded", false},
                  {"cells",
                   QJsonObject{
                       {"HIDDEN", "3"}, {"CODE", "3"}, {"NAME", "tre"}, {"START", "04/01/2024"}, {"MARK", "False"}}}}));
    EXPECT_EQ(nodes[4][QLatin1String("expanded")], QJsonValue(true));
    EXPECT_EQ(read.value(QLatin1String("focused")), QJsonValue(1)) << "the focus went to the node that was closed";
    EXPECT_EQ(read.value(QLatin1String("top_row")), QJsonValue(0));
}

TEST_F(TreeScript, AnEmptyTreeReadsNoFocus) {
    tree_->bind(contract_suites::treeRecords({}), "ID", "PARENT");
    const auto read = tree_->read();
    EXPECT_TRUE(read.value(QLatin1String("focused")).isNull());
    EXPECT_TRUE(read.value(QLatin1String("nodes")).toArray().isEmpty());
    EXPECT_EQ(read.value(QLatin1String("top_row")), QJsonValue(0));
}

TEST_F(TreeScript, ReadingAsksForEveryStateAtOnce) {
    contract::TreeColumn state{"STATE", "Stato", "", contract::TreeColumnKind::state};
    int askings = 0;
    state.texts = [&](const std::vector<std::size_t>& rows) {
        ++askings;
        return std::vector<std::string>(rows.size(), "attivo");
    };
    tree_->addColumn(state);
    bindLong(500);
    const int before = askings;
    EXPECT_EQ(cell(nodes()[499], "STATE"), QJsonValue("attivo"));
    EXPECT_EQ(askings, before + 1);
}

TEST_F(TreeScript, FocusOpensAncestorsAndSettles) {
    bindSmall();
    tree_->setExpanded(node(1), false);
    told();
    EXPECT_EQ(tree_->focusNode(3, std::nullopt), QString());
    EXPECT_EQ(told(), (Log{"change 3", "rest 3"}));
    EXPECT_EQ(tree_->focusNode(4, QStringLiteral("START")), QString());
    EXPECT_EQ(told(), (Log{"change 4", "column 4 START", "rest 4"}));
    EXPECT_NE(tree_->focusNode(77, std::nullopt), QString());
    EXPECT_NE(tree_->focusNode(4, QStringLiteral("NIENTE")), QString());
    EXPECT_NE(tree_->focusNode(4, QStringLiteral("HIDDEN")), QString());
    EXPECT_TRUE(told().empty());
}

TEST_F(TreeScript, AMousePressIsNoClick) {
    bindSmall();
    EXPECT_EQ(tree_->mouse(4, QStringLiteral("NAME"), Qt::LeftButton), QString());
    EXPECT_EQ(told(), (Log{"change 4", "column 4 NAME", "left", "rest 4"}));
    EXPECT_EQ(pressed_.node, node(4));
    EXPECT_EQ(pressed_.column, "NAME");
    EXPECT_EQ(tree_->mouse(3, QStringLiteral("MARK"), Qt::RightButton), QString());
    EXPECT_EQ(told(), (Log{"change 3", "right", "rest 3"}));
    EXPECT_EQ(tree_->value(node(3), "MARK").text(), "False");
}

TEST_F(TreeScript, AMousePressOnTheBranchColumnFindsItsCell) {
    bindSmall();
    EXPECT_EQ(tree_->mouse(2, QStringLiteral("CODE"), Qt::LeftButton), QString());
    EXPECT_EQ(pressed_.node, node(2));
    EXPECT_EQ(pressed_.code, contract::HitCode::cell);
    EXPECT_TRUE(tree_->expanded(node(2)));
}

TEST_F(TreeScript, AMousePressBelowTheLastNodeHitsNone) {
    bindSmall();
    EXPECT_EQ(tree_->mouse(std::nullopt, {}, Qt::RightButton), QString());
    EXPECT_EQ(told(), (Log{"right"}));
    EXPECT_FALSE(pressed_.node);
    bindLong(300);
    EXPECT_EQ(tree_->mouse(std::nullopt, {}, Qt::LeftButton), QString());
    EXPECT_EQ(told(), (Log{"left"}));
    EXPECT_FALSE(pressed_.node);
    EXPECT_EQ(pressed_.code, contract::HitCode::below);
}

TEST_F(TreeScript, AHyperlinkIsAWholeClickWithCtrl) {
    bindLong(300);
    EXPECT_EQ(tree_->hyperlink(250, QStringLiteral("NAME")), QString());
    EXPECT_EQ(told(), (Log{"change 250", "column 250 NAME", "left 2", "link 250 NAME", "rest 250"}));
    EXPECT_NE(tree_->hyperlink(250, QStringLiteral("START")), QString()) << "no link column";
    EXPECT_TRUE(told().empty());
}

TEST_F(TreeScript, ACheckIsAClickOnTheBoxOnlyWhereItIsNeeded) {
    bindSmall();
    EXPECT_EQ(tree_->check(3, 1), QString());
    EXPECT_EQ(told(), (Log{"change 3", "column 3 MARK", "left", "check 3 1", "rest 3"}));
    EXPECT_EQ(tree_->check(3, 1), QString());
    EXPECT_TRUE(told().empty());
    EXPECT_EQ(tree_->check(3, 0), QString());
    EXPECT_EQ(told(), (Log{"left", "check 3 0"}));
    EXPECT_NE(tree_->check(77, 1), QString());
}

TEST_F(TreeScript, EditTypesIntoTheCellAndLeavesIt) {
    bindSmall();
    bool editable = false;
    EXPECT_EQ(tree_->edit(4, QStringLiteral("START"), QStringLiteral("31/12/2024"), editable), QString());
    EXPECT_TRUE(editable);
    EXPECT_EQ(told(), (Log{"change 4", "column 4 START", "rest 4", "edited 4 31/12/2024"}));
    EXPECT_EQ(tree_->edit(4, QStringLiteral("START"), QStringLiteral("31/02/2024"), editable), QString());
    EXPECT_TRUE(editable);
    EXPECT_TRUE(told().empty()) << "the cell stays open with what is no date";
    EXPECT_EQ(tree_->read().value(QLatin1String("error")), QStringLiteral("31/02/2024 non è una data"));
    EXPECT_EQ(tree_->edit(4, QStringLiteral("START"), {}, editable), QString());
    EXPECT_EQ(tree_->read().value(QLatin1String("error")), QString());
    EXPECT_EQ(told(), (Log{"edited 4 "}));
    EXPECT_TRUE(tree_->value(node(4), "START").isNull());
}

TEST_F(TreeScript, EditTypesNothingWhereTheCellDoesNotOpen) {
    bindSmall(4);
    bool editable = true;
    EXPECT_EQ(tree_->edit(4, QStringLiteral("NAME"), QStringLiteral("x"), editable), QString());
    EXPECT_FALSE(editable);
    // The form locks the column when the node gets the focus: only then is it asked.
    tree_->OnChangeNode = [this] { tree_->setColumnLocked(3, focusedId() == 2); };
    EXPECT_EQ(tree_->edit(2, QStringLiteral("START"), QStringLiteral("31/12/2024"), editable), QString());
    EXPECT_FALSE(editable);
    EXPECT_EQ(tree_->value(node(2), "START").text(), "03/01/2024");
    EXPECT_EQ(tree_->edit(4, QStringLiteral("START"), QStringLiteral("31/12/2024"), editable), QString());
    EXPECT_TRUE(editable);
}

TEST_F(TreeScript, KeysGoToTheTreeAndSettle) {
    bindSmall();
    EXPECT_EQ(tree_->key(40, Qt::NoModifier), QString());
    EXPECT_EQ(told(), (Log{"change 2", "rest 2"}));
    EXPECT_EQ(tree_->key(32, Qt::NoModifier), QString());
    EXPECT_EQ(told(), (Log{"check 2 1"}));
    EXPECT_EQ(tree_->key(121, Qt::ShiftModifier), QString());
    EXPECT_EQ(told(), (Log{"right"}));
    EXPECT_NE(tree_->key(7, Qt::NoModifier), QString());
}

TEST_F(TreeScript, AHiddenOrDisabledTreeRefuses) {
    bindSmall();
    tree_->setEnabled(false);
    EXPECT_NE(tree_->mouse(4, QStringLiteral("NAME"), Qt::LeftButton), QString());
    EXPECT_NE(tree_->check(4, 1), QString());
    tree_->setEnabled(true);
    tree_->setVisible(false);
    EXPECT_NE(tree_->focusNode(4, std::nullopt), QString());
    EXPECT_NE(tree_->key(40, Qt::NoModifier), QString());
    EXPECT_TRUE(told().empty());
    EXPECT_EQ(focusedId(), 1);
}
