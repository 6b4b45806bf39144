// The window that shows a move before it is made, by mouse and keyboard, over plans of a test's own.

#include "host/windows/PreviewWindow.h"
#include "TestSession.h"
#include "contract/RuntimeError.h"

#include <QLineEdit>
#include <QTest>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using contract::MoveManner;
using contract::MoveOutcome;
using contract::MovePlan;

contract::MoveRow row(std::int64_t id, MoveOutcome outcome, const char* reason = "") {
    contract::MoveRow node;
    node.id = id;
    node.account = 100 + id;
    node.name = "Nome " + std::to_string(id);
    node.outcome = outcome;
    node.reason = reason;
    return node;
}

/// Answers each question with the plan that stands in it, and notes what it was asked.
class Planned : public contract::MovePreview {
public:
    MovePlan answer;
    std::string error;
    std::vector<MoveManner> asked;

    contract::Date proposedEnd() const override { return {}; }
    MovePlan plan(const MoveManner& manner) override {
        asked.push_back(manner);
        if (!error.empty())
            throw contract::RuntimeError(contract::RuntimeError::database, error);
        return answer;
    }
    void move(const MoveManner&) override {}
    bool show(std::int64_t) override { return true; }
};

class PreviewWindows : public testing::Test {
protected:
    PreviewWindows() {
        host_test::needApplication();
        preview.answer.rows = {row(1, MoveOutcome::moves), row(2, MoveOutcome::moves),
                               row(3, MoveOutcome::stays, "Motivo")};
    }

    void open(const MoveManner& manner = {}) {
        window = std::make_unique<host::PreviewWindow>(
            QStringLiteral("AnteprimaSpostamento"), QStringLiteral("Anteprima"),
            [this](const MoveManner& chosen) { return preview.plan(chosen); }, manner, false, nullptr);
        window->show();
        window->activateWindow();
        QTest::qWait(0);
    }
    template <class Widget> Widget& find(const char* name) { return *window->findChild<Widget*>(QLatin1String(name)); }
    QTableView& list() { return find<QTableView>("GRD_RIGHE"); }
    QPushButton& move() { return find<QPushButton>("CMD_SPOSTA"); }

    Planned preview;
    std::unique_ptr<host::PreviewWindow> window;
};

TEST_F(PreviewWindows, CountsInWords) {
    open();
    EXPECT_EQ("3 nodi: 2 si spostano, 1 resta", window->heading());
    preview.answer.rows = {row(1, MoveOutcome::copies)};
    open();
    EXPECT_EQ("1 nodo: 1 si chiude e si copia", window->heading());
    preview.answer.rows = {row(1, MoveOutcome::copies), row(2, MoveOutcome::copies), row(3, MoveOutcome::closes),
                           row(4, MoveOutcome::stays), row(5, MoveOutcome::stays)};
    open();
    EXPECT_EQ("5 nodi: 2 si chiudono e si copiano, 1 si chiude, 2 restano", window->heading());
}

TEST_F(PreviewWindows, ShowsOnlyWhatStaysOnDemand) {
    open();
    EXPECT_EQ(3, list().model()->rowCount());
    QTest::mouseClick(&find<QCheckBox>("CHK_RESTA"), Qt::LeftButton, {}, QPoint(8, 8));
    ASSERT_EQ(1, list().model()->rowCount());
    EXPECT_EQ("resta: Motivo", list().model()->index(0, 2).data().toString());
    QTest::keyClick(&find<QCheckBox>("CHK_RESTA"), Qt::Key_Space);
    EXPECT_EQ(3, list().model()->rowCount());
}

TEST_F(PreviewWindows, ANodeIsChosenByDoubleClickOrEnter) {
    open();
    const auto place = list().visualRect(list().model()->index(1, 0)).center();
    QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(list().viewport(), Qt::LeftButton, {}, place);
    EXPECT_EQ(2, window->nodeWanted());
    EXPECT_FALSE(window->isVisible());
    EXPECT_FALSE(window->moveWanted());

    open();
    list().setFocus();
    QTest::keyClick(&list(), Qt::Key_Down);
    QTest::keyClick(&list(), Qt::Key_Return);
    EXPECT_EQ(2, window->nodeWanted().value_or(0));
}

TEST_F(PreviewWindows, LeavesToMoveWhatItShowed) {
    open();
    QTest::mouseClick(&move(), Qt::LeftButton);
    EXPECT_TRUE(window->moveWanted());
    EXPECT_FALSE(window->isVisible());
    // By keyboard: the button's letter.
    open();
    QTest::keyClick(window.get(), Qt::Key_S, Qt::AltModifier);
    EXPECT_TRUE(window->moveWanted());
    open();
    QTest::keyClick(window.get(), Qt::Key_Escape);
    EXPECT_FALSE(window->isVisible());
    EXPECT_FALSE(window->moveWanted());
}

TEST_F(PreviewWindows, SaysThatTheDataChangedBeforeAnythingIsAsked) {
    open();
    preview.answer.rows.pop_back();
    QTest::mouseClick(&move(), Qt::LeftButton);
    EXPECT_TRUE(window->isVisible());
    EXPECT_FALSE(window->moveWanted());
    EXPECT_TRUE(window->heading().startsWith(QStringLiteral("I dati sono cambiati")))
        << window->heading().toStdString();
    EXPECT_TRUE(window->heading().endsWith(QStringLiteral("2 nodi: 2 si spostano")));
    EXPECT_EQ(2, list().model()->rowCount());
    // What it shows now is what there is.
    QTest::mouseClick(&move(), Qt::LeftButton);
    EXPECT_TRUE(window->moveWanted());
}

TEST_F(PreviewWindows, RefusedMovesCanNotBeMade) {
    preview.answer.refused = "Cliente 1 coincide.";
    open();
    EXPECT_EQ("Non si sposta nulla: Cliente 1 coincide.", window->heading());
    EXPECT_FALSE(move().isEnabled());
    preview.error = "database spento";
    open();
    EXPECT_EQ("database spento", window->heading().toStdString());
    EXPECT_FALSE(move().isEnabled());
    EXPECT_EQ("database spento", window->failure());
}

TEST_F(PreviewWindows, AsksForTheKindAndTheDayThatAreChosen) {
    open({false, contract::Date::parse("30/06/2024")});
    ASSERT_EQ(1U, preview.asked.size());
    EXPECT_FALSE(preview.asked[0].validity);
    EXPECT_FALSE(find<QLineEdit>("TXT_DATA").isEnabled());
    QTest::mouseClick(&find<QRadioButton>("RDB_VALIDITA"), Qt::LeftButton, {}, QPoint(8, 8));
    ASSERT_EQ(2U, preview.asked.size());
    EXPECT_TRUE(preview.asked[1].validity);
    EXPECT_EQ(contract::Date::parse("30/06/2024"), preview.asked[1].end);
    auto& day = find<QLineEdit>("TXT_DATA");
    EXPECT_TRUE(day.isEnabled());
    day.setFocus();
    day.selectAll();
    QTest::keyClicks(&day, QStringLiteral("31/12/2024"));
    EXPECT_EQ(contract::Date::parse("31/12/2024"), preview.asked.back().end);
    day.clear();
    EXPECT_FALSE(preview.asked.back().end);
}

TEST_F(PreviewWindows, TabGoesFromTopToBottom) {
    open({true, contract::Date::parse("30/06/2024")});
    find<QRadioButton>("RDB_VALIDITA").setFocus();
    std::vector<std::string> names;
    for (int i = 0; i < 6; ++i) {
        QTest::keyClick(window->focusWidget(), Qt::Key_Tab);
        names.push_back(window->focusWidget()->objectName().toStdString());
    }
    EXPECT_EQ(
        (std::vector<std::string>{"TXT_DATA", "TXT_FILTRO", "CHK_RESTA", "GRD_RIGHE", "CMD_SPOSTA", "CMD_CHIUDI"}),
        names);
}

TEST_F(PreviewWindows, AHundredThousandRowsAreListedAtOnce) {
    preview.answer.rows.clear();
    for (int i = 0; i < 100'000; ++i)
        preview.answer.rows.push_back(row(i, MoveOutcome::moves));
    open();
    EXPECT_EQ(100'000, list().model()->rowCount());
    list().scrollToBottom();
    QTest::qWait(0);
    EXPECT_TRUE(list().visualRect(list().model()->index(99'999, 0)).isValid());
}

} // namespace
