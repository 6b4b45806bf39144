// A press acts on the cell that it was pressed on, also where that is seen in part only.

#include "qt/TreeFixture.h"

#include <QHeaderView>
#include <QScrollBar>

using contract::HitCode;
using qt_tests::TreeFixture;

class TreePress : public TreeFixture {
protected:
    /// Many rows, and columns that do not fit: the last row and a column are seen in part.
    void SetUp() override {
        tree_->setBounds({0, 0, 3150, 6100});
        view().header()->resizeSection(column("NAME"), 160);
        bindLong(200);
        const QRect room = view().viewport()->rect();
        low_ = view().positionAt(room.bottom());
        const QRect row = view().cellRect(low_, column("CODE"));
        ASSERT_GT(row.bottom(), room.bottom()) << "the last row is seen in part";
        const QRect cell = view().cellRect(low_, column("NAME"));
        ASSERT_GT(cell.right(), room.right()) << "the column of the names is seen in part";
        seen_ = cell & room;
        ASSERT_GT(seen_.width(), 20);
        id_ = tree_->key({low_});
    }
    std::string id() const { return std::to_string(id_); }

    std::int32_t low_ = -1; // the row seen in part
    std::int64_t id_ = 0;
    QRect seen_; // of its name's cell
};

TEST_F(TreePress, OnARowAndAColumnSeenInPartTellsThem) {
    for (const auto button : {Qt::LeftButton, Qt::RightButton}) {
        tree_->setFocused(tree_->firstNode());
        tree_->setFocusedColumn("CODE");
        start();
        ASSERT_EQ(view().positionAt(seen_.center().y()), low_);
        QTest::mousePress(view().viewport(), button, Qt::NoModifier, seen_.center());
        EXPECT_EQ(pressed_.node.position, low_);
        EXPECT_EQ(pressed_.column, "NAME");
        EXPECT_EQ(focusedId(), id_);
        QTest::mouseRelease(view().viewport(), button, Qt::NoModifier, seen_.center());
    }
}

TEST_F(TreePress, TellsTheCellEvenWhereAListenerScrollsTheTree) {
    tree_->OnChangeNode = [this] { tree_->setTopRow(100); };
    QTest::mousePress(view().viewport(), Qt::RightButton, Qt::NoModifier, seen_.center());
    EXPECT_EQ(pressed_.node.position, low_);
    EXPECT_EQ(pressed_.column, "NAME");
    EXPECT_EQ(pressed_.code, HitCode::cell);
    EXPECT_NE(tree_->hitTest(600, 3000).node.position, low_) << "later the tree is tested as it stands";
}

TEST_F(TreePress, TellsNoCellWhereAListenerBindsTheTreeAgain) {
    tree_->OnChangeNode = [this] {
        tree_->OnChangeNode = {};
        bindLong(7);
    };
    QTest::mousePress(view().viewport(), Qt::RightButton, Qt::NoModifier, seen_.center());
    EXPECT_FALSE(pressed_.node) << "the row that was pressed is gone";
    EXPECT_EQ(told(), (Log{"right"}));
}

TEST_F(TreePress, AfterAKeyStillMeansWhatStoodUnderTheMouse) {
    tree_->OnChangeNode = [this] {
        log_.push_back("change " + std::to_string(focusedId()));
        tree_->setTopRow(50);
    };
    QTest::keyClick(&view(), Qt::Key_Down); // told when the mouse goes down
    QTest::mousePress(view().viewport(), Qt::RightButton, Qt::NoModifier, seen_.center());
    EXPECT_EQ(told(), (Log{"change 2", "change " + id(), "right"}));
    EXPECT_EQ(pressed_.node.position, low_);
}

TEST_F(TreePress, ABoxOnARowSeenInPartIsTheOneThatIsTicked) {
    view().horizontalScrollBar()->setValue(view().horizontalScrollBar()->maximum());
    start();
    const QRect box = view().checkRect(low_, column("MARK")) & view().viewport()->rect();
    ASSERT_FALSE(box.isEmpty());
    click(QPoint(box.center().x(), box.top()));
    EXPECT_EQ(told(), (Log{"change " + id(), "column " + id() + " MARK", "left", "check " + id() + " 1"}));
    EXPECT_EQ(tree_->value({low_}, "MARK").text(), "True");
    EXPECT_EQ(tree_->value({low_ - 1}, "MARK").text(), "False");
}

TEST_F(TreePress, ALinkOnARowSeenInPartIsTheOneThatOpens) {
    const QRect link = view().linkRect(low_, column("NAME")) & view().viewport()->rect();
    ASSERT_FALSE(link.isEmpty());
    QTest::mouseClick(view().viewport(), Qt::LeftButton, Qt::ControlModifier, link.center());
    EXPECT_EQ(told(), (Log{"change " + id(), "column " + id() + " NAME", "left 2", "link " + id() + " NAME"}));
}

TEST_F(TreePress, OfACellTheTreeKnowsWhatIsSeenAndScrollsItIntoViewBothWays) {
    const auto part = tree_->cell({low_}, "NAME");
    ASSERT_TRUE(part);
    EXPECT_EQ(part->width, platform::qt::Appearance::twips(seen_.width()));
    EXPECT_EQ(part->height, platform::qt::Appearance::twips(seen_.height()));
    int moved = 0;
    tree_->OnViewMoved = [&] { ++moved; };
    EXPECT_FALSE(tree_->cell({low_}, "MARK"));
    tree_->makeVisible({low_}, "MARK");
    EXPECT_GT(moved, 0);
    const auto whole = tree_->cell({low_}, "MARK");
    ASSERT_TRUE(whole);
    EXPECT_EQ(whole->width, platform::qt::Appearance::twips(view().columnWidth(column("MARK"))));
    EXPECT_EQ(whole->height, platform::qt::Appearance::twips(view().cellRect(low_, column("MARK")).height()));
    moved = 0;
    view().header()->resizeSection(column("CODE"), view().columnWidth(column("CODE")) + 20);
    EXPECT_GT(moved, 0) << "the columns after it stand elsewhere";
}

TEST_F(TreePress, ADoubleClickOnARowSeenInPartOpensItsEditor) {
    tree_->setBounds({0, 0, 10500, 6100});
    start();
    const auto low = view().positionAt(view().viewport()->rect().bottom());
    const QRect seen = view().cellRect(low, column("START")) & view().viewport()->rect();
    ASSERT_LT(seen.height(), view().cellRect(low, column("START")).height());
    QTest::mouseClick(view().viewport(), Qt::LeftButton, Qt::NoModifier, seen.center());
    QTest::mouseDClick(view().viewport(), Qt::LeftButton, Qt::NoModifier, seen.center());
    EXPECT_EQ(tree_->focused().position, low);
    EXPECT_NE(view().openEditor(), nullptr);
}
