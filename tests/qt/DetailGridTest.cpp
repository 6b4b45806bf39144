#include "contract/RuntimeError.h"
#include "platform/qt/fields/DetailGridControl.h"
#include "qt/TreeTestApp.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QJsonArray>
#include <QTest>

#include <gtest/gtest.h>

using platform::qt::DetailGridControl;
using platform::qt::DetailGridView;

class DetailGridTest : public testing::Test {
protected:
    DetailGridTest() {
        qt_tests::ensureApplication();
        window_ = std::make_unique<QWidget>();
        window_->resize(420, 220);
        grid_ = std::make_unique<DetailGridControl>("GRID", window_.get());
        grid_->setBounds({0, 0, 6000, 3000});
        view_ = window_->findChild<DetailGridView*>();
        window_->show();
    }
    ~DetailGridTest() override {
        grid_.reset();
        window_.reset();
    }

    void fill() {
        grid_->setRowCount(2);
        grid_->setCell(0, 0, "Soggetto");
        grid_->setCell(0, 1, "1200 Rossi S.p.A.");
        grid_->setCell(1, 0, "Valuta");
        grid_->setCell(1, 1, "EUR");
        QCoreApplication::processEvents();
    }
    template <class Action> static int errorOf(Action action) {
        try {
            action();
        } catch (const contract::RuntimeError& error) {
            return error.number();
        }
        return 0;
    }

    std::unique_ptr<QWidget> window_;
    std::unique_ptr<DetailGridControl> grid_;
    DetailGridView* view_ = nullptr;
};

TEST_F(DetailGridTest, HoldsTextsInTwoColumns) {
    fill();
    EXPECT_EQ(grid_->rowCount(), 2U);
    EXPECT_EQ(grid_->cell(0, 1), "1200 Rossi S.p.A.");
    grid_->clear();
    EXPECT_EQ(grid_->rowCount(), 0U);
    grid_->setRowCount(1);
    EXPECT_EQ(grid_->cell(0, 0), "");
}

TEST_F(DetailGridTest, MoreRowsKeepTheTextsThatAreThere) {
    fill();
    grid_->setRowCount(3);
    EXPECT_EQ(grid_->cell(1, 1), "EUR");
    EXPECT_EQ(grid_->cell(2, 1), "");
}

TEST_F(DetailGridTest, RefusesACellOutsideTheBounds) {
    fill();
    EXPECT_EQ(errorOf([&] { grid_->setCell(2, 0, "x"); }), 30009);
    EXPECT_EQ(errorOf([&] { grid_->setCell(0, 2, "x"); }), 30009);
    EXPECT_EQ(errorOf([&] { static_cast<void>(grid_->cell(2, 0)); }), 30009);
    EXPECT_EQ(errorOf([&] { grid_->setRowHeight(2, 300); }), 30009);
    EXPECT_EQ(errorOf([&] { grid_->setColumnWidth(2, 300); }), 30009);
}

TEST_F(DetailGridTest, Reads) {
    fill();
    grid_->setToolTip("Dettaglio dell'anagrafica");
    const auto read = grid_->read();
    EXPECT_EQ(read.value(QLatin1String("rows")).toArray(),
              (QJsonArray{QJsonArray{"Soggetto", "1200 Rossi S.p.A."}, QJsonArray{"Valuta", "EUR"}}));
    EXPECT_EQ(read.value(QLatin1String("tooltip")), QJsonValue("Dettaglio dell'anagrafica"));
}

TEST_F(DetailGridTest, RowsAndNamesTakeTheMeasuresOfTheForm) {
    fill();
    grid_->setRowHeight(0, 600);
    grid_->setColumnWidth(0, 2250);
    EXPECT_EQ(view_->rowHeight(0), 40);
    EXPECT_EQ(view_->columnWidth(0), 150);
    EXPECT_EQ(view_->columnWidth(0) + view_->columnWidth(1), view_->viewport()->width());
    grid_->setRowHeight(1, 15);
    EXPECT_GE(view_->rowHeight(1), view_->fontMetrics().height()) << "no text is cut";
    grid_->setColumnWidth(1, 15000);
    EXPECT_EQ(view_->columnWidth(1), 1000);
}

TEST_F(DetailGridTest, MarkedCellsAreCopiedAndNothingIsEdited) {
    fill();
    view_->selectAll();
    QTest::keyClick(view_, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("Soggetto\t1200 Rossi S.p.A.\nValuta\tEUR"));
    QTest::mouseClick(view_->viewport(), Qt::LeftButton, Qt::NoModifier,
                      view_->visualRect(view_->cells().index(0, 1)).center());
    QTest::keyClick(view_, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("1200 Rossi S.p.A."));
    QTest::keyClicks(view_, QStringLiteral("altro"));
    QTest::keyClick(view_, Qt::Key_F2);
    EXPECT_EQ(grid_->cell(0, 1), "1200 Rossi S.p.A.");
}

TEST_F(DetailGridTest, NamesStandOnTheFixedColour) {
    fill();
    grid_->setFixedColor(0x00112233);
    const QRect name = view_->visualRect(view_->cells().index(0, 0));
    const QColor drawn = view_->viewport()->grab().toImage().pixelColor(name.right() - 3, name.top() + 2);
    EXPECT_EQ(drawn, QColor(0x33, 0x22, 0x11));
}
