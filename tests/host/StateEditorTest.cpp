// The state editor in the form at its own size: over its row's cell, within reach, or gone.

#include "FormOnScreen.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QScrollBar>

namespace {

constexpr const char* dest = "TRW_ELEMDISTINTADEST";

class StateEditor : public host_test::FormOnScreen {
protected:
    QWidget& editor() { return *control("TXT_QZ02_STATO").widget(); }
    /// Of the tree's viewport, on the screen.
    QRect cell(std::int32_t position) {
        const QRect part = seen(view(dest), position, "Stato");
        return {view(dest).viewport()->mapToGlobal(part.topLeft()), part.size()};
    }
    QRect place() { return {editor().mapToGlobal(QPoint(0, 0)), editor().size()}; }
    void expectOver(std::int32_t position) {
        ASSERT_TRUE(editor().isVisible()) << position;
        const QRect wanted = cell(position);
        EXPECT_LE(std::abs(place().top() - wanted.top()), 1) << position;
        EXPECT_LE(std::abs(place().right() - wanted.right()), 1) << position;
        const auto& room = *view(dest).viewport();
        EXPECT_LE(place().right(), room.mapToGlobal(room.rect().bottomRight()).x() + 1) << "its button is out of reach";
    }
    /// At 14 points the columns do not fit: a person scrolls to the state first.
    void pressState(std::int32_t position) {
        tree(dest).makeVisible({position}, "Stato");
        QTest::mouseClick(view(dest).viewport(), Qt::LeftButton, Qt::NoModifier,
                          seen(view(dest), position, "Stato").center());
    }
};

TEST_F(StateEditor, ComesToEveryStateThatIsPressed) {
    for (const std::int32_t position : {2, 5, 3}) {
        pressState(position);
        expectOver(position);
        EXPECT_EQ(tree(dest).key({position}), state("NodoStatoDest").integer());
    }
}

TEST_F(StateEditor, FollowsTheWheelAndGoesWithItsRow) {
    pressState(5);
    auto* bar = view(dest).verticalScrollBar();
    bar->setValue(2);
    expectOver(5);
    bar->setValue(40);
    EXPECT_FALSE(editor().isVisible());
}

TEST_F(StateEditor, ScrollsItsCellIntoViewFromTheSide) {
    auto& shown = view(dest);
    const int name = shown.nodes().findColumn("RagioneSociale");
    shown.header()->resizeSection(name, shown.columnWidth(name) + 400);
    QCoreApplication::processEvents();
    ASSERT_TRUE(seen(shown, 4, "Stato").isEmpty());
    QTest::mousePress(shown.viewport(), Qt::RightButton, Qt::NoModifier, seen(shown, 4, "RagioneSociale").center());
    auto* menu = platform::qt::Session::instance().popup();
    ASSERT_NE(nullptr, menu);
    EXPECT_TRUE(menu->choose("mnuStatoLegame"));
    expectOver(4);
    shown.horizontalScrollBar()->setValue(0);
    EXPECT_FALSE(editor().isVisible());
}

TEST_F(StateEditor, GoesWhenBranchesOpenOrCloseAboveIt) {
    pressState(4);
    ASSERT_TRUE(editor().isVisible());
    tree(dest).setExpanded({0}, false);
    EXPECT_FALSE(editor().isVisible());
}

TEST_F(StateEditor, GoesOrFollowsAtEveryZoomAndSize) {
    for (const int zoom : {10, 14, 8}) {
        pressState(3);
        expectOver(3);
        EXPECT_EQ("", session->setHostProperty("zoom", zoom));
        settle();
        if (editor().isVisible())
            expectOver(3);
        pressState(2);
        expectOver(2);
        form().resizeForm(12000, 8000);
        settle();
        if (editor().isVisible())
            expectOver(2);
        form().resizeForm(formWidth, formHeight);
        settle();
    }
}

} // namespace
