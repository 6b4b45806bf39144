#include "platform/qt/CalendarEdit.h"
#include "qt/TreeTestApp.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

using platform::qt::CalendarEdit;

class CalendarEditTest : public testing::Test {
protected:
    CalendarEditTest() {
        qt_tests::ensureApplication();
        window_ = std::make_unique<QWidget>();
        auto* layout = new QVBoxLayout(window_.get());
        field_ = new CalendarEdit;
        other_ = new QLineEdit;
        layout->addWidget(field_);
        layout->addWidget(other_);
        window_->show();
        window_->activateWindow();
        static_cast<void>(QTest::qWaitForWindowActive(window_.get()));
        field_->setFocus();
    }

    std::string leaveWith(const char* typed) {
        field_->setFocus();
        field_->selectAll();
        QTest::keyClicks(field_, QLatin1String(typed));
        other_->setFocus();
        return field_->text().toStdString();
    }

    std::unique_ptr<QWidget> window_;
    CalendarEdit* field_;
    QLineEdit* other_;
};

TEST_F(CalendarEditTest, KeepsADateAsItWasTyped) {
    EXPECT_EQ(leaveWith("29/02/2024"), "29/02/2024");
    EXPECT_TRUE(field_->hasValidDate());
    EXPECT_EQ(leaveWith(" 01/03/2024  "), " 01/03/2024  ") << "blanks are the reader's to trim";
    EXPECT_TRUE(field_->hasValidDate());
}

TEST_F(CalendarEditTest, WritesAShortDateInFull) {
    EXPECT_EQ(leaveWith("31122024"), "31/12/2024");
    EXPECT_EQ(leaveWith("311224"), "31/12/2024");
    EXPECT_EQ(leaveWith("1.2.2025"), "01/02/2025");
    EXPECT_EQ(leaveWith("3-4-25"), "03/04/2025");
}

TEST_F(CalendarEditTest, RefusesWhatIsNoDate) {
    field_->setText(QStringLiteral("10/05/2024"));
    for (const char* wrong : {"30/02/2024", "31022024", "domani", "12", "01/01/1899", "  "})
        EXPECT_EQ(leaveWith(wrong), "10/05/2024") << wrong;
    field_->setText({});
    EXPECT_EQ(leaveWith("domani"), "");
}

TEST_F(CalendarEditTest, KeepsADateBefore1900ThatTheProgramHasSet) {
    field_->setText(QStringLiteral("30/12/1899"));
    EXPECT_TRUE(field_->hasValidDate());
    field_->setFocus();
    other_->setFocus();
    EXPECT_EQ(field_->text(), QStringLiteral("30/12/1899"));
    // Typed again it is what stood there; another one so early is none.
    EXPECT_EQ(leaveWith("30/12/1899"), "30/12/1899");
    EXPECT_TRUE(field_->hasValidDate());
    for (const char* early : {"31/12/1899", "31121899", "1/1/1850"})
        EXPECT_EQ(leaveWith(early), "30/12/1899") << early;
}

TEST_F(CalendarEditTest, ADateBefore1900ThatIsBeingTypedIsNoneYet) {
    field_->setText(QStringLiteral("10/05/2024"));
    field_->setFocus();
    field_->selectAll();
    QTest::keyClicks(field_, QStringLiteral("30/12/1899"));
    EXPECT_FALSE(field_->hasValidDate());
}

TEST_F(CalendarEditTest, TheLastDateTypedIsWhatComesBack) {
    field_->setText(QStringLiteral("10/05/2024"));
    leaveWith("11/05/2024");
    EXPECT_EQ(leaveWith("boh"), "11/05/2024");
}

TEST_F(CalendarEditTest, EmptiesAndThenHoldsNoDate) {
    field_->setText(QStringLiteral("10/05/2024"));
    field_->setFocus();
    field_->selectAll();
    QTest::keyClick(field_, Qt::Key_Delete);
    other_->setFocus();
    EXPECT_EQ(field_->text(), QString());
    EXPECT_FALSE(field_->hasValidDate());
}

TEST_F(CalendarEditTest, ClearingAndMistypingBringsTheOldDateBack) {
    field_->setText(QStringLiteral("10/05/2024"));
    field_->setFocus();
    field_->selectAll();
    QTest::keyClick(field_, Qt::Key_Delete);
    QTest::keyClicks(field_, QStringLiteral("boh"));
    other_->setFocus();
    EXPECT_EQ(field_->text(), QStringLiteral("10/05/2024"));
}

TEST_F(CalendarEditTest, AnUnfinishedTextIsNoDate) {
    field_->setText(QStringLiteral("31/12/20"));
    EXPECT_FALSE(field_->hasValidDate());
}

TEST_F(CalendarEditTest, TellsEveryChangeAndTheEnd) {
    QSignalSpy changed(field_, &CalendarEdit::changed);
    QSignalSpy finished(field_, &QLineEdit::editingFinished);
    QTest::keyClicks(field_, QStringLiteral("31"));
    EXPECT_EQ(changed.count(), 2);
    QTest::keyClick(field_, Qt::Key_Return);
    EXPECT_EQ(finished.count(), 1);
    EXPECT_EQ(field_->text(), QString()) << "refused before the end was told";
}

TEST_F(CalendarEditTest, F4OpensTheItalianCalendarOnTheDateAndAChoiceFillsTheField) {
    field_->setText(QStringLiteral("10/05/2024"));
    QTest::keyClick(field_, Qt::Key_F4);
    auto* calendar = field_->findChild<QCalendarWidget*>();
    ASSERT_NE(calendar, nullptr);
    EXPECT_EQ(calendar->selectedDate(), QDate(2024, 5, 10));
    EXPECT_EQ(calendar->locale().language(), QLocale::Italian);
    EXPECT_EQ(calendar->firstDayOfWeek(), Qt::Monday);
    emit calendar->activated(QDate(2024, 5, 11));
    EXPECT_EQ(field_->text(), QStringLiteral("11/05/2024"));
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST_F(CalendarEditTest, AltDownOpensItAndEscapeClosesItWithoutAChoice) {
    field_->setText(QStringLiteral("10/05/2024"));
    QTest::keyClick(field_, Qt::Key_Down, Qt::AltModifier);
    auto* popup = QApplication::activePopupWidget();
    ASSERT_NE(popup, nullptr);
    QTest::keyClick(popup, Qt::Key_Escape);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    EXPECT_EQ(field_->text(), QStringLiteral("10/05/2024"));
}

TEST_F(CalendarEditTest, AReadOnlyFieldOpensNoCalendar) {
    field_->setReadOnly(true);
    field_->openCalendar();
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}
