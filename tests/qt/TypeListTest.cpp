#include "contract/RuntimeError.h"
#include "platform/qt/tree/TypeListControl.h"
#include "qt/TreeTestApp.h"

#include <QJsonArray>
#include <QTest>

#include <gtest/gtest.h>

using platform::qt::TypeListControl;
using platform::qt::TypeListView;

class TypeListTest : public testing::Test {
protected:
    TypeListTest() {
        qt_tests::ensureApplication();
        window_ = std::make_unique<QWidget>();
        window_->resize(320, 200);
        list_ = std::make_unique<TypeListControl>("LIST", window_.get());
        list_->setBounds({0, 0, 4500, 2700});
        view_ = window_->findChild<TypeListView*>();
        list_->Click = [this] { chosen_.push_back(list_->selected() ? list_->selected()->key : "-"); };
        window_->show();
        window_->activateWindow();
        static_cast<void>(QTest::qWaitForWindowActive(window_.get()));
        view_->setFocus();
    }
    ~TypeListTest() override {
        list_.reset();
        window_.reset();
    }

    void fill() {
        list_->add({"P0", "Clienti", "", "close", "close"});
        list_->add({"C3", "AG-Agenti", "P0", "schema", "open"});
        list_->add({"P1", "Fornitori", "", "close", "close"});
        list_->add({"F7", "ZN-Zone", "P1", "schema", "open"});
        list_->add({"C4", "GR-Gruppi", "P0", "schema", "open"});
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
    std::vector<std::string> told() { return std::exchange(chosen_, {}); }
    using Log = std::vector<std::string>;

    std::unique_ptr<QWidget> window_;
    std::unique_ptr<TypeListControl> list_;
    TypeListView* view_ = nullptr;
    Log chosen_;
};

TEST_F(TypeListTest, StandsInDisplayOrderCountedFromOne) {
    fill();
    ASSERT_EQ(list_->count(), 5U);
    const char* keys[] = {"P0", "C3", "C4", "P1", "F7"};
    for (std::size_t position = 1; position <= 5; ++position)
        EXPECT_EQ(list_->entry(position).key, keys[position - 1]);
    EXPECT_EQ(list_->entry("C4").text, "GR-Gruppi");
    EXPECT_EQ(list_->entry("C4").parent, "P0");
}

TEST_F(TypeListTest, RefusesWhatItCannotFind) {
    fill();
    EXPECT_EQ(errorOf([&] { list_->add({"C3", "di nuovo", "P0", "", ""}); }), 457);
    EXPECT_EQ(errorOf([&] { list_->add({"C9", "senza", "P9", "", ""}); }), 35601);
    EXPECT_EQ(errorOf([&] { static_cast<void>(list_->entry("C9")); }), 35601);
    EXPECT_EQ(errorOf([&] { static_cast<void>(list_->entry(std::size_t{0})); }), 35600);
    EXPECT_EQ(errorOf([&] { static_cast<void>(list_->entry(std::size_t{6})); }), 35600);
    EXPECT_EQ(errorOf([&] { list_->select(std::size_t{6}); }), 35600);
    EXPECT_EQ(list_->count(), 5U);
}

TEST_F(TypeListTest, SelectingByTheProgramTellsNothing) {
    fill();
    EXPECT_FALSE(list_->selected());
    list_->select(std::size_t{2});
    QTest::qWait(TypeListView::restMilliseconds + 100);
    EXPECT_EQ(list_->selected()->key, "C3");
    EXPECT_TRUE(told().empty());
}

TEST_F(TypeListTest, ClearingRemovesEntriesAndSelection) {
    fill();
    list_->select(std::size_t{2});
    list_->clear();
    EXPECT_EQ(list_->count(), 0U);
    EXPECT_FALSE(list_->selected());
    fill();
    EXPECT_EQ(list_->count(), 5U);
    EXPECT_FALSE(list_->selected());
}

TEST_F(TypeListTest, AClickSelectsAndTellsAlsoOnTheSelectedEntry) {
    fill();
    const QPoint entry = view_->visualRect(view_->entries().index(2)).center();
    QTest::mouseClick(view_->viewport(), Qt::LeftButton, Qt::NoModifier, entry);
    EXPECT_EQ(told(), (Log{"C4"}));
    QTest::mouseClick(view_->viewport(), Qt::LeftButton, Qt::NoModifier, entry);
    EXPECT_EQ(told(), (Log{"C4"}));
    QTest::mouseClick(view_->viewport(), Qt::RightButton, Qt::NoModifier,
                      view_->visualRect(view_->entries().index(1)).center());
    EXPECT_TRUE(told().empty());
    EXPECT_EQ(list_->selected()->key, "C4");
}

TEST_F(TypeListTest, AClickBelowTheEntriesTellsNothing) {
    fill();
    list_->select(std::size_t{2});
    QTest::mouseClick(view_->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(20, view_->viewport()->height() - 2));
    EXPECT_TRUE(told().empty());
    EXPECT_EQ(list_->selected()->key, "C3");
}

TEST_F(TypeListTest, AGroupCanBeChosen) {
    fill();
    EXPECT_EQ(list_->select(QStringLiteral("P1")), QString());
    EXPECT_EQ(told(), (Log{"P1"}));
}

TEST_F(TypeListTest, ArrowsChooseOnceTheyRest) {
    fill();
    list_->select(std::size_t{1});
    QTest::keyClick(view_, Qt::Key_Down);
    QTest::keyClick(view_, Qt::Key_Down);
    EXPECT_EQ(list_->selected()->key, "C4");
    EXPECT_TRUE(told().empty());
    QTest::qWait(TypeListView::restMilliseconds + 100);
    EXPECT_EQ(told(), (Log{"C4"}));
    QTest::qWait(TypeListView::restMilliseconds + 100);
    EXPECT_TRUE(told().empty());
}

TEST_F(TypeListTest, EnterAndSpaceChooseAtOnce) {
    fill();
    list_->select(std::size_t{2});
    QTest::keyClick(view_, Qt::Key_Return);
    EXPECT_EQ(told(), (Log{"C3"}));
    QTest::keyClick(view_, Qt::Key_Down);
    QTest::keyClick(view_, Qt::Key_Space);
    EXPECT_EQ(told(), (Log{"C4"}));
    list_->settle();
    EXPECT_TRUE(told().empty());
}

TEST_F(TypeListTest, AScriptClicksEntriesAndPressesKeys) {
    fill();
    EXPECT_EQ(list_->select(QStringLiteral("F7")), QString());
    EXPECT_EQ(told(), (Log{"F7"}));
    EXPECT_NE(list_->select(QStringLiteral("F8")), QString());
    EXPECT_EQ(list_->key(38, Qt::NoModifier), QString());
    EXPECT_EQ(told(), (Log{"P1"}));
    list_->setEnabled(false);
    EXPECT_NE(list_->select(QStringLiteral("F7")), QString());
    EXPECT_TRUE(told().empty());
}

TEST_F(TypeListTest, Reads) {
    fill();
    list_->setToolTip("Seleziona la distinta da aggiornare");
    EXPECT_TRUE(list_->read().value(QLatin1String("selected")).isNull());
    list_->select(std::size_t{2});
    const auto read = list_->read();
    const auto entries = read.value(QLatin1String("entries")).toArray();
    ASSERT_EQ(entries.size(), 5);
    EXPECT_TRUE(entries[0][QLatin1String("parent")].isNull());
    EXPECT_EQ(
        entries[1].toObject(),
        (QJsonObject{
            {"key", "C3"}, {"text", "AG-Agenti"}, {"parent", "P0"}, {"image", "schema"}, {"selected_image", "open"}}));
    EXPECT_EQ(read.value(QLatin1String("selected")), QJsonValue("C3"));
    EXPECT_EQ(read.value(QLatin1String("tooltip")), QJsonValue("Seleziona la distinta da aggiornare"));
}

TEST_F(TypeListTest, TheSelectedEntryShowsItsOtherImage) {
    list_->add({"A", "Uno", "", "schema", "open"});
    list_->add({"B", "Uno", "", "schema", "schema"});
    QCoreApplication::processEvents();
    const auto shot = [this](int row) {
        list_->select(static_cast<std::size_t>(row) + 1);
        return view_->viewport()->grab(view_->visualRect(view_->entries().index(row))).toImage();
    };
    EXPECT_NE(shot(0), shot(1));
}
