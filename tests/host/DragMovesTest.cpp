// The component's form with a mouse that drags, and with keys that cut and paste: what the form then does is what it
// does for its own button.

#include "FormOnScreen.h"
#include "host/windows/StatusLine.h"

#include <QApplication>

namespace {

using platform::qt::TreeView;

constexpr const char* orig = "TRW_ELEMDISTINTAORIG";
constexpr const char* dest = "TRW_ELEMDISTINTADEST";

class DragMoves : public host_test::FormOnScreen {
protected:
    DragMoves() {
        EXPECT_EQ("", control("TRW_DISTINTEORIG").select("C1"));
        EXPECT_EQ("", control("TRW_DISTINTEDEST").select("C3"));
        settle();
        session->trace().setRecording(true);
        session->trace().take();
        session->dialogs().takeShown();
    }

    QPoint place(const char* name, std::int64_t id) {
        auto& shown = view(name);
        tree(name).makeVisible(tree(name).byKey(id));
        QCoreApplication::processEvents();
        const QPoint point = seen(shown, tree(name).byKey(id).position, "RagioneSociale").center();
        return shown.viewport()->mapTo(&window, point);
    }
    void drag(std::int64_t id, QPoint to, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        const QPoint from = place(orig, id);
        QTest::mousePress(window.windowHandle(), Qt::LeftButton, Qt::NoModifier, from);
        QTest::mouseMove(window.windowHandle(), from + QPoint(QApplication::startDragDistance() + 2, 0));
        QTest::mouseMove(window.windowHandle(), to);
        QCoreApplication::processEvents();
        QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, modifiers, to);
        QCoreApplication::processEvents();
    }
    std::vector<std::string> shownTexts() {
        std::vector<std::string> texts;
        for (const auto& message : session->dialogs().takeShown())
            texts.push_back(message.text.toStdString());
        return texts;
    }
    std::string account(const char* name, std::int64_t id) {
        return tree(name).value(tree(name).byKey(id), name == orig ? "trQZ02_CLIFOR_CG44" : "QZ02_CLIFOR_CG44").text();
    }
    std::string question(std::int64_t id) { return "Spostare il nodo " + account(orig, id) + " e tutti i suoi figli?"; }
    QString status() { return dynamic_cast<host::StatusLine*>(window.findChild<QWidget*>("StatusBar"))->text(); }
    std::int64_t rootOf(const char* name) { return tree(name).key(tree(name).firstNode()); }
    std::int64_t leafOf(const char* name) {
        auto& nodes = tree(name);
        for (auto node = nodes.firstNode(); node; node = nodes.next(node))
            if (nodes.level(node) == 2 && nodes.descendants(node) == 0)
                return nodes.key(node);
        return -1;
    }
};

TEST_F(DragMoves, ADropFocusesBothNodesAndAsks) {
    const auto node = leafOf(orig);
    const auto onto = leafOf(dest);
    ASSERT_GT(node, 0);
    const std::string asked = question(node);
    drag(node, place(dest, onto));
    EXPECT_EQ(std::vector<std::string>{asked}, shownTexts()); // answered no
    EXPECT_EQ(node, tree(orig).key(tree(orig).focused()));
    EXPECT_EQ(onto, tree(dest).key(tree(dest).focused()));
    for (const auto& statement : session->trace().take())
        EXPECT_FALSE(statement.contains("BeginTrans")) << qPrintable(statement);
}

TEST_F(DragMoves, AnsweredYesTheNodeMoves) {
    const auto node = leafOf(orig);
    const auto onto = leafOf(dest);
    const std::string asked = question(node);
    session->dialogs().queueAnswers({6});
    drag(node, place(dest, onto));
    EXPECT_EQ(std::vector<std::string>{asked}, shownTexts());
    EXPECT_TRUE(session->trace().take().contains("CommitTrans"));
    ASSERT_TRUE(tree(dest).byKey(node));
    EXPECT_EQ(onto, tree(dest).key(tree(dest).parent(tree(dest).byKey(node))));
    EXPECT_FALSE(tree(orig).byKey(node));
}

TEST_F(DragMoves, CtrlMovesWithValidity) {
    std::vector<QString> opened;
    platform::qt::Session::instance().modalOpened = [&](platform::qt::FormWindow& form) {
        opened.push_back(form.formName());
    };
    drag(leafOf(orig), place(dest, rootOf(dest)), Qt::ControlModifier);
    EXPECT_EQ(std::vector<QString>{"FRMQZ_DATAFINELEGAME"}, opened);
    EXPECT_EQ(std::vector<std::string>{"Data fine legame non impostata!"}, shownTexts());
}

TEST_F(DragMoves, DroppedElsewhereNothingIsAsked) {
    const auto node = leafOf(orig);
    const auto before = tree(dest).key(tree(dest).focused());
    const QPoint elsewhere[] = {place(orig, rootOf(orig)), QPoint(window.width() - 4, window.height() - 60),
                                control("CMD_SPOSTASTRU").widget()->mapTo(&window, QPoint(20, 10))};
    for (const QPoint& point : elsewhere)
        drag(node, point);
    EXPECT_TRUE(shownTexts().empty());
    EXPECT_EQ(before, tree(dest).key(tree(dest).focused()));
}

TEST_F(DragMoves, TheStatusLineSaysWhatItWouldDoAndThenWhatItSaidBefore) {
    const auto node = leafOf(orig);
    const auto onto = leafOf(dest);
    EXPECT_EQ("", control(orig).focusNode(node, std::nullopt));
    settle();
    const QString before = status();
    ASSERT_TRUE(before.startsWith("Sposta: ")) << qPrintable(before);
    const QPoint from = place(orig, node);
    const QPoint to = place(dest, onto);
    QTest::mousePress(window.windowHandle(), Qt::LeftButton, Qt::NoModifier, from);
    QTest::mouseMove(window.windowHandle(), from + QPoint(20, 0));
    QTest::mouseMove(window.windowHandle(), to);
    QCoreApplication::processEvents();
    EXPECT_TRUE(status().startsWith(QString::fromStdString(account(orig, node)))) << qPrintable(status());
    EXPECT_TRUE(status().contains(QString::fromStdString(" → sotto " + account(dest, onto))));
    QTest::keyClick(window.windowHandle(), Qt::Key_Escape);
    EXPECT_EQ(before, status());
    QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, Qt::NoModifier, to);
    EXPECT_TRUE(shownTexts().empty());
}

TEST_F(DragMoves, CutAndPasteMoveTheNodeThatWasCut) {
    const auto node = leafOf(orig);
    const auto onto = leafOf(dest);
    const std::string asked = question(node);
    EXPECT_EQ("", control(orig).focusNode(node, std::nullopt));
    QTest::keyClick(&view(orig), Qt::Key_X, Qt::ControlModifier);
    EXPECT_TRUE(status().startsWith("Tagliato: ")) << qPrintable(status());
    // Who looks around in the origin meanwhile still moves what was cut.
    EXPECT_EQ("", control(orig).focusNode(rootOf(orig), std::nullopt));
    EXPECT_EQ("", control(dest).focusNode(onto, std::nullopt));
    session->dialogs().queueAnswers({6});
    QTest::keyClick(&view(dest), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(std::vector<std::string>{asked}, shownTexts());
    ASSERT_TRUE(tree(dest).byKey(node));
    EXPECT_EQ(onto, tree(dest).key(tree(dest).parent(tree(dest).byKey(node))));
    EXPECT_FALSE(view(orig).cutMark()) << "the mark went with the old content";
}

TEST_F(DragMoves, TheSameStatementsAsTheButtons) {
    const auto node = leafOf(orig);
    const auto onto = leafOf(dest);
    EXPECT_EQ("", control(orig).focusNode(node, std::nullopt));
    EXPECT_EQ("", control(dest).focusNode(onto, std::nullopt));
    settle();
    session->trace().take();
    EXPECT_EQ("", control("CMD_SPOSTASTRU").click());
    const auto clicked = session->trace().take();
    EXPECT_EQ("", control(orig).focusNode(rootOf(orig), std::nullopt));
    EXPECT_EQ("", control(dest).focusNode(rootOf(dest), std::nullopt));
    const QPoint to = place(dest, onto);
    session->trace().take();
    drag(node, to);
    auto dragged = session->trace().take();
    // Before them come those of the two focuses, as a person's would.
    ASSERT_GE(dragged.size(), clicked.size());
    EXPECT_EQ(clicked, dragged.mid(dragged.size() - clicked.size()));
}

} // namespace
