// Nodes dragged from one tree onto another with the events of the window system, as a person's mouse makes them: they
// go to the window, and the tree that was pressed gets them until the button is let go.

#include "platform/qt/tree/NodeDrag.h"

#include "qt/TreeFixture.h"

#include <QApplication>
#include <QScrollBar>

using platform::qt::Appearance;
using platform::qt::NodeDrag;
using platform::qt::TreeListControl;
using platform::qt::TreeView;

namespace {

class NodeDragTest : public qt_tests::TreeFixture {
protected:
    NodeDragTest() {
        window_->resize(1000, 440);
        tree_->setBounds({0, 0, 7000, 6300});
        other_ = std::make_unique<TreeListControl>("OTHER", window_.get());
        other_->setBounds({7500, 0, 7000, 4500});
        onto_ = static_cast<TreeView*>(other_->widget());
        other_->addColumn({"CODE", "Codice", "ID", contract::TreeColumnKind::code, true, false, true, 900});
        other_->addColumn({"NAME", "Nome", "NAME", contract::TreeColumnKind::text, true, false, true, 2400});
        other_->setVisible(true);
        bindSmall();
        bindOther(30);
        drag_ = new NodeDrag(view(), *onto_);
        drag_->dropped = [this](const NodeDrag::Drop& drop) {
            drops_.push_back(std::to_string(drop.node) + " onto " + std::to_string(drop.onto) +
                             (drop.other ? " other" : ""));
        };
        drag_->told = [this](const QString& text) { said_ = text; };
    }
    ~NodeDragTest() override { other_.reset(); }

    /// A root 10 with a child 11, and a root 4 and more below them.
    void bindOther(std::int64_t last) {
        std::vector<contract_suites::TreeRow> rows{
            {10, std::nullopt, "dieci"}, {11, 10, "undici"}, {4, std::nullopt, "quattro"}};
        for (std::int64_t id = 12; id <= last; ++id)
            rows.push_back({id, std::nullopt, "riga " + std::to_string(id)});
        other_->bind(contract_suites::treeRecords(rows), "ID", "PARENT");
        QCoreApplication::processEvents();
    }

    QPoint inWindow(const TreeView& tree, QPoint point) { return tree.viewport()->mapTo(window_.get(), point); }
    QPoint row(std::int64_t id) { return inWindow(view(), middle(id, "NAME")); }
    QPoint otherRow(std::int64_t id) {
        return inWindow(*onto_, onto_->cellRect(other_->byKey(id).position, 1).center());
    }
    void down(QPoint point) { QTest::mousePress(window_->windowHandle(), Qt::LeftButton, Qt::NoModifier, point); }
    void move(QPoint point) {
        QTest::mouseMove(window_->windowHandle(), point);
        QCoreApplication::processEvents();
    }
    void up(QPoint point, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::mouseRelease(window_->windowHandle(), Qt::LeftButton, modifiers, point);
        QCoreApplication::processEvents();
    }
    /// Takes hold of a node and holds it over a place.
    void hold(std::int64_t id, QPoint over) {
        down(row(id));
        move(row(id) + QPoint(QApplication::startDragDistance() + 2, 0));
        move(over);
    }
    QColor pixel(QPoint point) { return window_->grab().toImage().pixelColor(point); }

    std::unique_ptr<TreeListControl> other_;
    TreeView* onto_ = nullptr;
    NodeDrag* drag_ = nullptr;
    std::vector<std::string> drops_;
    QString said_;
    using Drops = std::vector<std::string>;
};

TEST_F(NodeDragTest, ANodeLetGoOnANodeIsDropped) {
    hold(3, otherRow(11));
    EXPECT_TRUE(drag_->dragging());
    EXPECT_EQ(11, drag_->target());
    EXPECT_EQ("3 tre → sotto 11 undici", said_.toStdString());
    EXPECT_EQ(Qt::DragMoveCursor, QApplication::overrideCursor()->shape());
    up(otherRow(11));
    EXPECT_EQ((Drops{"3 onto 11"}), drops_);
    EXPECT_FALSE(drag_->dragging());
    EXPECT_EQ(nullptr, QApplication::overrideCursor());
    EXPECT_EQ("", said_.toStdString());
    EXPECT_EQ(3, focusedId()) << "the press focuses what it takes hold of";
    EXPECT_EQ(10, other_->key(other_->focused())) << "the focus over there is the listener's";
}

TEST_F(NodeDragTest, CtrlWhileItIsLetGoMeansTheOtherKind) {
    hold(3, otherRow(11));
    QTest::keyPress(window_->windowHandle(), Qt::Key_Control);
    EXPECT_EQ("3 tre → sotto 11 undici con validità", said_.toStdString());
    EXPECT_EQ(Qt::DragCopyCursor, QApplication::overrideCursor()->shape());
    QTest::keyRelease(window_->windowHandle(), Qt::Key_Control);
    EXPECT_EQ(Qt::DragMoveCursor, QApplication::overrideCursor()->shape());
    up(otherRow(11), Qt::ControlModifier);
    EXPECT_EQ((Drops{"3 onto 11 other"}), drops_);
}

TEST_F(NodeDragTest, APressThatHardlyMovesIsAClick) {
    down(row(3));
    move(row(3) + QPoint(QApplication::startDragDistance() - 2, 0));
    EXPECT_FALSE(drag_->dragging());
    up(row(3));
    EXPECT_TRUE(drops_.empty());
    move(otherRow(11));
    EXPECT_FALSE(drag_->dragging()) << "no button is down";
}

TEST_F(NodeDragTest, NothingElseTakesANode) {
    const QPoint places[] = {row(5),                                      // its own tree
                             otherRow(4),                                 // the same node
                             QPoint(onto_->geometry().center().x(), 430), // below the other tree
                             inWindow(*onto_, QPoint(20, -5)),            // its header
                             QPoint(999, 300)};                           // the window
    for (const QPoint& place : places) {
        hold(4, place);
        EXPECT_TRUE(drag_->dragging());
        EXPECT_FALSE(drag_->target());
        EXPECT_EQ(Qt::ForbiddenCursor, QApplication::overrideCursor()->shape());
        up(place);
        EXPECT_FALSE(drag_->dragging());
    }
    bindOther(0);
    const QPoint empty = inWindow(*onto_, QPoint(40, onto_->rowsBottom() + 40));
    hold(3, empty);
    EXPECT_FALSE(drag_->target());
    up(empty);
    EXPECT_TRUE(drops_.empty());
}

TEST_F(NodeDragTest, BoxesAndButtonsAreNotTakenHoldOf) {
    const QPoint box = inWindow(view(), view().checkRect(node(3).position, column("MARK")).center());
    down(box);
    move(otherRow(11));
    EXPECT_FALSE(drag_->dragging());
    up(otherRow(11));
    const QPoint button = inWindow(view(), view().buttonRect(node(1).position).center());
    down(button);
    move(otherRow(11));
    EXPECT_FALSE(drag_->dragging());
    up(otherRow(11));
    EXPECT_TRUE(drops_.empty());
}

TEST_F(NodeDragTest, EscAnotherButtonAndAnotherWindowEndIt) {
    hold(3, otherRow(11));
    QTest::keyClick(window_->windowHandle(), Qt::Key_Escape);
    EXPECT_FALSE(drag_->dragging());
    move(otherRow(4));
    up(otherRow(4));
    EXPECT_TRUE(drops_.empty());

    hold(3, otherRow(11));
    QTest::mousePress(window_->windowHandle(), Qt::RightButton, Qt::NoModifier, otherRow(11));
    EXPECT_FALSE(drag_->dragging());
    QTest::mouseRelease(window_->windowHandle(), Qt::RightButton, Qt::NoModifier, otherRow(11));
    up(otherRow(11));
    EXPECT_TRUE(drops_.empty());

    hold(3, otherRow(11));
    QEvent elsewhere(QEvent::ApplicationDeactivate);
    QCoreApplication::sendEvent(qApp, &elsewhere);
    EXPECT_FALSE(drag_->dragging());
    up(otherRow(11));
    EXPECT_TRUE(drops_.empty());
    EXPECT_EQ(nullptr, QApplication::overrideCursor());
}

TEST_F(NodeDragTest, TheTargetIsFramed) {
    const QRect cell = onto_->cellRect(other_->byKey(11).position, 0);
    const QPoint edge = inWindow(*onto_, QPoint(cell.left() + 1, cell.center().y()));
    const QColor before = pixel(edge);
    hold(3, otherRow(11));
    EXPECT_NE(before, pixel(edge));
    EXPECT_EQ(onto_->palette().accent, pixel(edge));
    move(otherRow(4));
    EXPECT_EQ(before, pixel(edge)) << "only the one under the mouse";
    up(row(3));
    EXPECT_EQ(before, pixel(edge));
}

TEST_F(NodeDragTest, AClosedBranchOpensUnderTheMouseAndItsRowStays) {
    other_->setExpanded(other_->byKey(10), false);
    QCoreApplication::processEvents();
    const QPoint place = otherRow(10);
    hold(3, place);
    EXPECT_FALSE(other_->expanded(other_->byKey(10)));
    QTest::qWait(NodeDrag::openMilliseconds + 200);
    EXPECT_TRUE(other_->expanded(other_->byKey(10)));
    EXPECT_EQ(place, otherRow(10));
    EXPECT_EQ(10, drag_->target());
    up(otherRow(11));
    EXPECT_EQ((Drops{"3 onto 11"}), drops_);
}

TEST_F(NodeDragTest, TheTreeScrollsAtItsEdges) {
    auto& bar = *onto_->verticalScrollBar();
    ASSERT_GT(bar.maximum(), 2);
    const QPoint low = inWindow(*onto_, QPoint(40, onto_->viewport()->height() - 3));
    hold(3, low);
    const int before = bar.value();
    QTest::qWait(4 * NodeDrag::scrollMilliseconds);
    EXPECT_GT(bar.value(), before);
    ASSERT_TRUE(drag_->target());
    EXPECT_EQ(*drag_->target(), onto_->nodes().key(onto_->positionAt(onto_->viewport()->height() - 3)))
        << "the target is what has come under the mouse";
    const int lower = bar.value();
    move(inWindow(*onto_, QPoint(40, 3)));
    QTest::qWait(4 * NodeDrag::scrollMilliseconds);
    EXPECT_LT(bar.value(), lower);
    QTest::keyClick(window_->windowHandle(), Qt::Key_Escape);
    const int stopped = bar.value();
    QTest::qWait(3 * NodeDrag::scrollMilliseconds);
    EXPECT_EQ(stopped, bar.value());
    up(low);
}

TEST_F(NodeDragTest, CtrlXAndCtrlVAreItsTwin) {
    press(4, "NAME");
    QTest::keyClick(&view(), Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(4, view().cutMark());
    EXPECT_TRUE(said_.startsWith("Tagliato: 4 quattro – Ctrl+V")) << qPrintable(said_);
    other_->setFocused(other_->byKey(11));
    QTest::keyClick(onto_, Qt::Key_V, Qt::ControlModifier);
    QTest::keyClick(onto_, Qt::Key_V, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ((Drops{"4 onto 11", "4 onto 11 other"}), drops_);
    EXPECT_EQ(4, view().cutMark()) << "until the tree has another content";
    other_->setFocused(other_->byKey(4));
    QTest::keyClick(onto_, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ("Un nodo non si sposta sotto se stesso.", said_.toStdString());
    EXPECT_EQ(2U, drops_.size());
    bindSmall();
    EXPECT_FALSE(view().cutMark());
    QTest::keyClick(onto_, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ("Niente da incollare: prima si taglia un nodo dell'origine con Ctrl+X.", said_.toStdString());
    EXPECT_EQ(2U, drops_.size());
}

TEST_F(NodeDragTest, EscTakesTheMarkAwayFromEitherTree) {
    for (TreeView* tree : {&view(), onto_}) {
        press(4, "NAME");
        QTest::keyClick(&view(), Qt::Key_X, Qt::ControlModifier);
        ASSERT_TRUE(view().cutMark());
        QTest::keyClick(tree, Qt::Key_Escape);
        EXPECT_FALSE(view().cutMark());
        EXPECT_EQ("", said_.toStdString());
    }
}

TEST_F(NodeDragTest, TheCutNodeIsMarked) {
    press(3, "NAME");
    const QRect cell = view().cellRect(node(4).position, view().treeColumn());
    const QPoint corner = inWindow(view(), cell.topLeft() + QPoint(1, 2));
    const QColor before = pixel(corner);
    view().setCutMark(4);
    EXPECT_NE(before, pixel(corner));
    view().setCutMark(std::nullopt);
    EXPECT_EQ(before, pixel(corner));
}

TEST_F(NodeDragTest, ATreeThatIsFilledAnewUnderTheMouseTakesNothing) {
    hold(3, otherRow(11));
    bindOther(0);
    other_->clearNodes();
    up(QPoint(onto_->geometry().center().x(), 100));
    EXPECT_TRUE(drops_.empty());
}

} // namespace
