#include "qt/FormFixture.h"

namespace qt_tests {

namespace {

/// Panes of 10000 twips in all, 100 for the bar, standing side by side.
class SplitterTest : public FormTest {
protected:
    void SetUp() override {
        auto& doc = document("FRM");
        splitter = &doc.addSplitter("SPL", nullptr);
        settings.firstLimit = 2000;
        settings.secondLimit = 3000;
        settings.barSize = 100;
        settings.sideBySide = true;
        settings.liveDrag = true;
        settings.keepShare = true;
        setUp();
        doc.show(false);
    }
    void setUp() {
        splitter->setUp(settings);
        splitter->setBounds({150, 150, 10100, 6000});
        place();
        splitter->Move = [this] {
            shares.push_back(splitter->share());
            place();
        };
    }
    void place() {
        const int first = static_cast<int>(100 * splitter->share());
        splitter->setBar({150 + first, 150, 100, 6000});
    }
    QWidget* bar() { return script("SPL").widget(); }
    void drag(int pixels) {
        const QPoint from = bar()->rect().center();
        const QPoint start = bar()->mapToGlobal(from);
        QTest::mousePress(bar(), Qt::LeftButton, {}, from);
        for (const int part : {1, 2, 3, 4}) {
            QTest::mouseMove(bar(), bar()->mapFromGlobal(start + QPoint(pixels * part / 4, 0)));
        }
        QTest::mouseRelease(bar(), Qt::LeftButton, {}, bar()->mapFromGlobal(start + QPoint(pixels, 0)));
    }

    contract::Splitter* splitter = nullptr;
    contract::Splitter::Settings settings;
    std::vector<double> shares;
};

TEST_F(SplitterTest, TheBarStandsWhereTheLayoutPutsIt) {
    EXPECT_EQ(bar()->geometry(), QRect(343, 10, 7, 400));
    EXPECT_EQ(splitter->bounds(), (contract::Rect{150, 150, 10100, 6000}));
}

TEST_F(SplitterTest, DraggingMovesTheShareAndTellsSoOnTheWay) {
    drag(100);
    EXPECT_NEAR(splitter->share(), 65.0, 0.001);
    EXPECT_GE(shares.size(), 2U);
    EXPECT_DOUBLE_EQ(shares.back(), splitter->share());
    EXPECT_EQ(bar()->x(), 443);
}

TEST_F(SplitterTest, WithoutLiveDraggingItTellsOnlyAtTheEnd) {
    settings.liveDrag = false;
    setUp();
    drag(100);
    EXPECT_EQ(shares.size(), 1U);
    EXPECT_NEAR(splitter->share(), 65.0, 0.001);
}

TEST_F(SplitterTest, NeitherPaneGoesBelowItsLimit) {
    drag(-600);
    EXPECT_NEAR(splitter->share(), 20.0, 0.001);
    drag(900);
    EXPECT_NEAR(splitter->share(), 70.0, 0.001);
}

TEST_F(SplitterTest, WhereTheLimitsLeaveNoWayTheBarStays) {
    settings.firstLimit = 6000;
    settings.secondLimit = 5000;
    setUp();
    drag(50);
    EXPECT_TRUE(shares.empty());
    EXPECT_DOUBLE_EQ(splitter->share(), 50.0);
}

TEST_F(SplitterTest, ALockedBarStays) {
    settings.locked = true;
    setUp();
    drag(100);
    QTest::keyClick(bar(), Qt::Key_Right);
    EXPECT_TRUE(shares.empty());
    EXPECT_EQ(bar()->cursor().shape(), Qt::ArrowCursor);
    EXPECT_EQ(bar()->focusPolicy(), Qt::NoFocus);
}

TEST_F(SplitterTest, TheKeyboardMovesTheBar) {
    QTest::keyClick(bar(), Qt::Key_Right);
    EXPECT_NEAR(splitter->share(), 51.5, 0.001);
    QTest::keyClick(bar(), Qt::Key_Left);
    QTest::keyClick(bar(), Qt::Key_Left);
    EXPECT_NEAR(splitter->share(), 48.5, 0.001);
    QTest::keyClick(bar(), Qt::Key_Home);
    EXPECT_NEAR(splitter->share(), 20.0, 0.001);
    QTest::keyClick(bar(), Qt::Key_End);
    EXPECT_NEAR(splitter->share(), 70.0, 0.001);
    QTest::keyClick(bar(), Qt::Key_Up);
    EXPECT_EQ(shares.size(), 5U);
}

TEST_F(SplitterTest, AHorizontalBarMovesUpAndDown) {
    settings.sideBySide = false;
    settings.start = 90;
    settings.firstLimit = 500;
    settings.secondLimit = 300;
    splitter->setUp(settings);
    splitter->setBounds({150, 150, 6000, 6100});
    EXPECT_EQ(bar()->cursor().shape(), Qt::SplitVCursor);
    QTest::keyClick(bar(), Qt::Key_Up);
    EXPECT_NEAR(splitter->share(), 87.5, 0.001);
    QTest::keyClick(bar(), Qt::Key_End);
    EXPECT_NEAR(splitter->share(), 95.0, 0.001);
    QTest::keyClick(bar(), Qt::Key_Home);
    EXPECT_NEAR(splitter->share(), 500.0 / 60.0, 0.001);
}

TEST_F(SplitterTest, WhenTheRoomGrowsTheShareStaysOrTheFirstPaneDoes) {
    splitter->setBounds({150, 150, 20100, 6000});
    EXPECT_DOUBLE_EQ(splitter->share(), 50.0);
    settings.keepShare = false;
    setUp();
    splitter->setBounds({150, 150, 10100, 6000});
    splitter->setShare(50.0);
    splitter->setBounds({150, 150, 20100, 6000});
    EXPECT_DOUBLE_EQ(splitter->share(), 25.0);
    EXPECT_TRUE(shares.empty());
}

} // namespace

} // namespace qt_tests
