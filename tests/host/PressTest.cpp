// What a press of the mouse acts on in the component's form at its own size, where rows and columns are seen in part.

#include "FormOnScreen.h"

#include <QHeaderView>
#include <QScrollBar>

namespace {

using platform::qt::TreeView;

constexpr const char* orig = "TRW_ELEMDISTINTAORIG";
constexpr const char* dest = "TRW_ELEMDISTINTADEST";

class Press : public host_test::FormOnScreen {
protected:
    /// The lowest row, of which only a part is seen. The detail is made so high that there is one.
    std::int32_t lowRow(const char* name) {
        auto& shown = view(name);
        for (int share = 90; share > 60; --share) {
            auto& bar = *const_cast<contract::Splitter*>(
                dynamic_cast<const contract::Splitter*>(form().contractControl("SPLITTEROrizzOrig")));
            bar.setShare(share);
            auto& other = *const_cast<contract::Splitter*>(
                dynamic_cast<const contract::Splitter*>(form().contractControl("SPLITTEROrizzDest")));
            other.setShare(share);
            contract::fire(bar.Move);
            QCoreApplication::processEvents();
            const auto low = shown.positionAt(shown.viewport()->rect().bottom());
            const QRect row = seen(shown, low, "RagioneSociale");
            if (low > 0 && row.height() > 3 && row.height() < platform::qt::Appearance::instance().rowHeight() - 3)
                return low;
        }
        return -1;
    }
    std::string account(const char* name, std::int32_t position) {
        return tree(name).value({position}, name == orig ? "trQZ02_CLIFOR_CG44" : "QZ02_CLIFOR_CG44").text();
    }
};

TEST_F(Press, TheFormStandsAtItsOwnSize) {
    EXPECT_EQ(formWidth, form().formBounds().width);
    EXPECT_EQ(formHeight, form().formBounds().height);
}

TEST_F(Press, ARightPressOnARowSeenInPartOpensTheMenuOfThatRow) {
    for (const char* name : {orig, dest}) {
        const auto low = lowRow(name);
        ASSERT_GT(low, 0) << name;
        const QPoint point = seen(view(name), low, "RagioneSociale").center();
        QTest::mousePress(view(name).viewport(), Qt::RightButton, Qt::NoModifier, point);
        auto* menu = platform::qt::Session::instance().popup();
        ASSERT_NE(nullptr, menu) << name;
        menu->dismiss();
        EXPECT_EQ(low, tree(name).focused().position);
        EXPECT_EQ(account(name, low), state("CodiceAnagMenu").text());
        if (name == dest) {
            EXPECT_EQ(tree(dest).key({low}), state("NodoStatoDest").integer());
        }
    }
}

TEST_F(Press, ARightPressOnAColumnSeenInPartOpensItsMenu) {
    auto& shown = view(dest);
    // So wide a name that 30 pixels are seen of the state's column.
    const int name = shown.nodes().findColumn("RagioneSociale");
    const int lacking =
        shown.viewport()->width() - 30 - shown.columnViewportPosition(shown.nodes().findColumn("Stato"));
    shown.header()->resizeSection(name, shown.columnWidth(name) + lacking);
    QCoreApplication::processEvents();
    const QRect state = seen(shown, 3, "Stato");
    ASSERT_FALSE(state.isEmpty());
    ASSERT_LT(state.width(), shown.columnWidth(shown.nodes().findColumn("Stato")));
    const int scrolled = shown.horizontalScrollBar()->value();
    QTest::mousePress(shown.viewport(), Qt::RightButton, Qt::NoModifier, state.center());
    auto* menu = platform::qt::Session::instance().popup();
    ASSERT_NE(nullptr, menu);
    EXPECT_EQ("mnuCollegamentoDest", menu->menuName());
    menu->dismiss();
    EXPECT_EQ(scrolled, shown.horizontalScrollBar()->value());
    EXPECT_EQ(account(dest, 3), this->state("CodiceAnagMenu").text());
    EXPECT_EQ(tree(dest).key({3}), this->state("NodoStatoDest").integer());
}

TEST_F(Press, ABoxOnARowSeenInPartTicksThatRow) {
    const auto low = lowRow(orig);
    ASSERT_GT(low, 0);
    auto& shown = view(orig);
    const QRect box =
        shown.checkRect(low, shown.nodes().findColumn("Seleziona")).adjusted(0, -3, 0, 0) & shown.viewport()->rect();
    ASSERT_FALSE(box.isEmpty());
    QTest::mouseClick(shown.viewport(), Qt::LeftButton, Qt::NoModifier, box.center());
    EXPECT_EQ("True", tree(orig).value({low}, "Seleziona").text());
    EXPECT_EQ("False", tree(orig).value({low - 1}, "Seleziona").text());
    EXPECT_EQ(low, tree(orig).focused().position);
}

TEST_F(Press, ALinkOnARowSeenInPartOpensThatAccountsCard) {
    const auto low = lowRow(dest);
    ASSERT_GT(low, 0);
    auto& shown = view(dest);
    session->journal().take();
    const QRect link = shown.linkRect(low, shown.nodes().findColumn("RagioneSociale")) & shown.viewport()->rect();
    QTest::mouseClick(shown.viewport(), Qt::LeftButton, Qt::NoModifier, link.center());
    EXPECT_EQ(low, tree(dest).focused().position);
    EXPECT_EQ(0, state("CodiceAnagMenu").integer()) << "the first click only chooses the row";
    QTest::mouseClick(shown.viewport(), Qt::LeftButton, Qt::NoModifier, link.center());
    EXPECT_EQ(account(dest, low), state("CodiceAnagMenu").text());
}

} // namespace
