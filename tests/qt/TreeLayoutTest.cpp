#include "platform/qt/tree/TreeHeader.h"
#include "qt/TreeFixture.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QImage>
#include <QScrollBar>
#include <QToolTip>

using platform::qt::Appearance;
using platform::qt::ThemeKind;
using qt_tests::TreeFixture;

class TreeLayout : public TreeFixture {
protected:
    ~TreeLayout() override {
        Appearance::instance().setZoom(10);
        Appearance::instance().setTheme(ThemeKind::light);
    }
    int width(const char* name) { return view().columnWidth(column(name)); }
    int leastName() { return view().fontMetrics().horizontalAdvance(QStringLiteral("aeion")) * 20 / 5 + 12; }
    /// As the user's drag of the header's edge does.
    void drag(const char* name, int by) {
        auto* header = view().header();
        const int edge = header->sectionViewportPosition(column(name)) + header->sectionSize(column(name)) - 1;
        const int y = header->height() - 5;
        QTest::mousePress(header->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(edge, y));
        const QPoint to(edge + by, y);
        QMouseEvent move(QEvent::MouseMove, QPointF(to), QPointF(header->viewport()->mapToGlobal(to)), Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(header->viewport(), &move);
        QTest::mouseRelease(header->viewport(), Qt::LeftButton, Qt::NoModifier, to);
    }
};

TEST_F(TreeLayout, WidthsAreThoseOfEightPointsTimesTheZoom) {
    Appearance::instance().setZoom(8);
    EXPECT_EQ(width("START"), 80);
    Appearance::instance().setZoom(12);
    EXPECT_EQ(width("START"), 120);
}

TEST_F(TreeLayout, TheLastTextColumnTakesTheRoomThatIsLeft) {
    bindSmall();
    int all = 0;
    for (const char* name : {"CODE", "NAME", "START", "MARK"})
        all += width(name);
    EXPECT_EQ(all, view().viewport()->width());
}

TEST_F(TreeLayout, ThatColumnGivesUpAHalfBeforeTheColumnsAreScrolled) {
    bindSmall();
    const int others = width("CODE") + width("START") + width("MARK");
    const int wanted = 2400 / 15 * 10 / 8; // twips to pixels, at ten points
    const auto room = [&](int name) {
        const auto frame = tree_->bounds().width - Appearance::twips(view().viewport()->width());
        tree_->setBounds({0, 0, Appearance::twips(others + name) + frame, 6300});
        QCoreApplication::processEvents();
    };
    room(wanted - 20);
    EXPECT_EQ(others + width("NAME"), view().viewport()->width());
    EXPECT_LT(width("NAME"), wanted);
    room(-wanted / 3);
    EXPECT_EQ(width("NAME"), wanted / 2);
}

TEST_F(TreeLayout, ANarrowTreeStillShowsEighteenLettersOfAName) {
    bindSmall();
    tree_->setBounds({0, 0, 5400, 6300});
    QCoreApplication::processEvents();
    const QString name = QStringLiteral("Panificio Leone Sa");
    ASSERT_EQ(name.size(), 18);
    EXPECT_GE(view().contentRect(node(1).position, column("NAME")).width(),
              view().fontMetrics().horizontalAdvance(name + QChar(0x2026)));
}

TEST_F(TreeLayout, ThenDatesAndBoxesGiveUpTheirSpareRoomAndTheBranchesStandCloser) {
    bindSmall();
    const int code = width("CODE");
    const int start = width("START");
    const int mark = width("MARK");
    const int least = std::max(2400 / 15 * 10 / 8 * 2 / 3, leastName());
    const int branches = view().indentation();
    const auto sum = [&] { return width("CODE") + width("NAME") + width("START") + width("MARK"); };
    const auto shrink = [&](int by) {
        const auto frame = tree_->bounds().width - Appearance::twips(view().viewport()->width());
        tree_->setBounds({0, 0, Appearance::twips(code + least + start + mark - by) + frame, 6300});
        QCoreApplication::processEvents();
    };
    shrink(10);
    EXPECT_EQ(width("NAME"), least);
    EXPECT_EQ(width("CODE"), code);
    EXPECT_LT(width("START"), start);
    EXPECT_LT(width("MARK"), mark);
    EXPECT_EQ(sum(), view().viewport()->width());
    EXPECT_EQ(view().indentation(), branches);
    EXPECT_FALSE(view().horizontalScrollBar()->isVisible());

    shrink(200); // more than there is: the columns are scrolled, and all texts stand in full
    EXPECT_LT(view().indentation(), branches);
    EXPECT_GE(view().indentation(), 8);
    EXPECT_LT(width("CODE"), code);
    EXPECT_TRUE(view().horizontalScrollBar()->isVisible());
    const auto advance = [&](const char* text) { return view().fontMetrics().horizontalAdvance(QString(text)); };
    EXPECT_GE(width("START"), advance("31/12/2099") + 4);
    EXPECT_GE(width("MARK"), advance("Segna") + 4);
    EXPECT_GE(width("CODE"), 3 * view().indentation() + advance("1234") + 12);

    shrink(start - width("START") + mark - width("MARK") + 3); // as far as they go, and the branches a little
    EXPECT_EQ(sum(), view().viewport()->width());
    EXPECT_EQ(view().indentation(), branches - 1); // for three levels

    shrink(-50);
    EXPECT_EQ(width("START"), start);
    EXPECT_EQ(view().indentation(), branches);
}

TEST_F(TreeLayout, AColumnThatTheUserWidenedGivesUpNothing) {
    bindSmall();
    drag("START", 40);
    drag("CODE", 40);
    const int start = width("START");
    const int code = width("CODE");
    tree_->setBounds({0, 0, 3000, 6300});
    QCoreApplication::processEvents();
    EXPECT_EQ(width("START"), start);
    EXPECT_EQ(width("CODE"), code);
}

TEST_F(TreeLayout, AnEmptyBoxOnTheFocusedRowIsItsOutlineOnly) {
    bindSmall(2);
    const auto inBox = [&] {
        const QRect box = view().checkRect(node(2).position, column("MARK"));
        return view().viewport()->grab().toImage().pixelColor(box.left() + box.width() / 4,
                                                              box.top() + box.height() / 4);
    };
    for (const auto theme : {ThemeKind::light, ThemeKind::dark}) {
        Appearance::instance().setTheme(theme);
        ASSERT_TRUE(view().rowFocused(node(2).position));
        EXPECT_EQ(inBox(), view().palette().selection);
        click(view().checkRect(node(2).position, column("MARK")).center());
        EXPECT_EQ(inBox(), view().palette().surface);
        click(view().checkRect(node(2).position, column("MARK")).center());
    }
}

TEST_F(TreeLayout, AColumnThatTheUserWidenedStaysWideOverABinding) {
    bindSmall();
    const int before = width("START");
    drag("START", 40);
    EXPECT_EQ(width("START"), before + 40);
    bindLong(50);
    bindSmall();
    EXPECT_EQ(width("START"), before + 40);
    Appearance::instance().setZoom(14);
    Appearance::instance().setZoom(10);
    EXPECT_EQ(width("START"), before + 40);
}

TEST_F(TreeLayout, TheHiddenColumnStaysHidden) {
    bindSmall();
    EXPECT_TRUE(view().isColumnHidden(0));
    Appearance::instance().setZoom(14);
    EXPECT_TRUE(view().isColumnHidden(0));
    EXPECT_EQ(view().treeColumn(), 1);
}

TEST_F(TreeLayout, RowsAndFontFollowTheZoom) {
    bindSmall();
    for (const int zoom : {8, 10, 12, 14}) {
        Appearance::instance().setZoom(zoom);
        QCoreApplication::processEvents();
        EXPECT_EQ(view().cellRect(0, column("NAME")).height(), Appearance::instance().rowHeight());
        EXPECT_EQ(view().font().pointSize(), zoom);
    }
}

TEST_F(TreeLayout, AClosedLevelLeavesTheFocusedRowAtItsHeight) {
    std::vector<contract_suites::TreeRow> rows;
    for (std::int64_t root = 1; root <= 60; ++root) {
        rows.push_back({root, std::nullopt, "radice"});
        for (std::int64_t child = 1; child <= 3; ++child)
            rows.push_back({root * 100 + child, root, "figlio"});
    }
    tree_->bind(contract_suites::treeRecords(rows), "ID", "PARENT", 30);
    tree_->setTopRow(node(28).position);
    const int before = view().cellRect(node(30).position, column("NAME")).top();
    ASSERT_GT(before, 0);
    tree_->beginUpdate();
    for (std::int64_t root = 1; root <= 60; ++root)
        tree_->setExpanded(node(root), false);
    tree_->endUpdate();
    EXPECT_EQ(view().cellRect(node(30).position, column("NAME")).top(), before);
    EXPECT_EQ(focusedId(), 30);
}

TEST_F(TreeLayout, ReloadingKeepsTheRowsWhereTheTopRowIsPutBack) {
    bindLong(300);
    tree_->setFocused(node(150));
    const auto top = tree_->topRow();
    const auto before = tree_->cell(node(150), "NAME");
    std::vector<contract_suites::TreeRow> rows;
    for (std::int64_t id = 1; id <= 300; ++id)
        rows.push_back({id, std::nullopt, "riga"});
    tree_->bind(contract_suites::treeRecords(rows), "ID", "PARENT", 150);
    tree_->setTopRow(top);
    EXPECT_EQ(tree_->cell(node(150), "NAME"), before);
}

TEST_F(TreeLayout, TheBandStandsOverTheHeadersAndIsHitAsOne) {
    bindSmall();
    EXPECT_GT(view().bands().bandHeight(), 0);
    const auto hit = tree_->hitTest(150, 60);
    EXPECT_EQ(hit.code, contract::HitCode::header);
    EXPECT_EQ(hit.band, "Dettaglio");
    EXPECT_EQ(view().accessibleName(), QStringLiteral("Dettaglio"));
}

TEST_F(TreeLayout, RightOfTheColumnsNoColumnIsHit) {
    bindSmall();
    drag("NAME", -80);
    const auto row = tree_->cell(node(2), "MARK");
    ASSERT_TRUE(row);
    const auto hit = tree_->hitTest(row->left + row->width + 300, row->top + 60);
    EXPECT_EQ(hit.code, contract::HitCode::right);
    EXPECT_EQ(hit.node, node(2));
    EXPECT_EQ(hit.column, "");
    EXPECT_EQ(tree_->hitTest(-100, 1500).code, contract::HitCode::nowhere);
}

TEST_F(TreeLayout, TheFocusedRowIsAsStrongWithoutTheKeyboard) {
    bindSmall(4);
    for (const auto theme : {ThemeKind::light, ThemeKind::dark}) {
        Appearance::instance().setTheme(theme);
        const QColor strong = Appearance::colorsOf(theme).selection;
        const QPoint edge(view().cellRect(node(4).position, column("NAME")).right() - 3,
                          view().cellRect(node(4).position, column("NAME")).top() + 3);
        view().setFocus();
        EXPECT_EQ(view().viewport()->grab().toImage().pixelColor(edge), strong);
        view().clearFocus();
        EXPECT_EQ(view().viewport()->grab().toImage().pixelColor(edge), strong);
    }
}

TEST_F(TreeLayout, TheFocusedCellIsMarkedInTheRow) {
    bindSmall(4);
    const auto shot = [this](const char* name) {
        return view().viewport()->grab(view().cellRect(node(4).position, column(name))).toImage();
    };
    tree_->setFocusedColumn("CODE");
    const QImage without = shot("START");
    tree_->setFocusedColumn("START");
    EXPECT_NE(without, shot("START"));
}

TEST_F(TreeLayout, CodesStandWhereTheirBranchesEnd) {
    bindSmall();
    const auto left = [&](std::int64_t id) { return view().linkRect(node(id).position, column("CODE")).left(); };
    EXPECT_EQ(left(2), left(4));
    EXPECT_EQ(left(2) - left(1), view().indentation());
    EXPECT_EQ(left(3) - left(2), view().indentation());
    // Of a chain the codes stand within the column, however deep.
    std::vector<contract_suites::TreeRow> rows;
    for (std::int64_t id = 1; id <= 60; ++id)
        rows.push_back({id, id == 1 ? std::nullopt : std::optional(id - 1), "n"});
    tree_->bind(contract_suites::treeRecords(rows), "ID", "PARENT", 60);
    QCoreApplication::processEvents();
    EXPECT_GT(view().linkRect(node(60).position, column("CODE")).width(), 0);
    EXPECT_EQ(left(60), left(59));
    EXPECT_NE(view().viewport()->grab().toImage(), QImage());
}

TEST_F(TreeLayout, ANodesTipShowsItsPath) {
    bindSmall();
    EXPECT_EQ(view().path(node(3).position), QStringLiteral("1 uno\n  2 due\n    3 tre"));
    QHelpEvent event(QEvent::ToolTip, middle(3, "NAME"), view().viewport()->mapToGlobal(middle(3, "NAME")));
    QCoreApplication::sendEvent(view().viewport(), &event);
    EXPECT_EQ(QToolTip::text(), view().path(node(3).position));
    std::vector<contract_suites::TreeRow> rows;
    for (std::int64_t id = 1; id <= 30; ++id)
        rows.push_back({id, id == 1 ? std::nullopt : std::optional(id - 1), "n"});
    tree_->bind(contract_suites::treeRecords(rows), "ID", "PARENT");
    const QStringList lines = view().path(node(30).position).split(QLatin1Char('\n'));
    ASSERT_EQ(lines.size(), 14);
    EXPECT_EQ(lines.first(), QStringLiteral("1 n"));
    EXPECT_EQ(lines.at(1), QStringLiteral("…"));
    EXPECT_EQ(lines.last().trimmed(), QStringLiteral("30 n"));
}

TEST_F(TreeLayout, WidthsThatTheUserGaveAreHandedOutAndPutBack) {
    bindSmall();
    EXPECT_TRUE(tree_->columnWidths().empty());
    const int before = width("START");
    drag("START", 40);
    const auto given = tree_->columnWidths();
    ASSERT_EQ(given.size(), 1U);
    EXPECT_EQ(given.begin()->first, QStringLiteral("START"));
    tree_->setColumnWidths({});
    EXPECT_EQ(width("START"), before);
    tree_->setColumnWidths(given);
    EXPECT_EQ(width("START"), before + 40);
    tree_->setColumnWidths({{QStringLiteral("MANCA"), 50.0}});
    EXPECT_TRUE(tree_->columnWidths().empty());
}

TEST_F(TreeLayout, WhileTheScrollBarIsDraggedATipTellsTheTopRow) {
    bindLong(300);
    auto* bar = view().verticalScrollBar();
    bar->setSliderDown(true);
    bar->setSliderPosition(100);
    EXPECT_FALSE(QToolTip::isVisible()) << "no column was chosen for it";
    tree_->setScrollTipColumn("HIDDEN");
    bar->setSliderPosition(120);
    EXPECT_EQ(QToolTip::text(), QStringLiteral("121"));
    bar->setSliderDown(false);
    QTest::qWait(400); // a tip goes with a short delay
    EXPECT_FALSE(QToolTip::isVisible());
    bar->setValue(10);
    EXPECT_FALSE(QToolTip::isVisible());
}

TEST_F(TreeLayout, AnEmptyTreeSpeaks) {
    tree_->bind(contract_suites::treeRecords({}), "ID", "PARENT");
    const QImage silent = view().viewport()->grab().toImage();
    tree_->setEmptyText("Nessun nodo");
    EXPECT_NE(silent, view().viewport()->grab().toImage());
    bindSmall();
    const QImage withNodes = view().viewport()->grab().toImage();
    tree_->setEmptyText("");
    EXPECT_EQ(withNodes, view().viewport()->grab().toImage()) << "only without nodes";
}

TEST_F(TreeLayout, ColoursThatAreSetAreDrawn) {
    bindSmall(1);
    tree_->setColor(contract::TreeColor::highLight, 0x00332211);
    tree_->setHeaderColors(0x00112233, 0x00FFFFFF);
    const QPoint inRow(view().viewport()->width() - 2, view().cellRect(0, column("NAME")).top() + 2);
    EXPECT_EQ(view().viewport()->grab().toImage().pixelColor(inRow), QColor(0x11, 0x22, 0x33));
    const auto* header = view().header();
    const QImage head = view().header()->viewport()->grab().toImage();
    EXPECT_EQ(head.pixelColor(3, header->height() - 4), QColor(0x33, 0x22, 0x11));
}

TEST_F(TreeLayout, AColourOfTheThemeFollowsTheTheme) {
    bindSmall(1);
    Appearance::instance().setTheme(ThemeKind::light);
    const auto color = Appearance::instance().gridColor("GridHeaderColor");
    const auto text = Appearance::instance().gridColor("GridHeaderFontColor");
    ASSERT_TRUE(color && text);
    tree_->setHeaderColors(*color, *text);
    Appearance::instance().setTheme(ThemeKind::dark);
    EXPECT_EQ(view().palette().header, platform::qt::toQColor(*Appearance::instance().gridColor("GridHeaderColor")));
}
