#include "platform/qt/fields/CalendarEdit.h"
#include "platform/qt/fields/FieldNote.h"
#include "platform/qt/look/Appearance.h"
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
        QCoreApplication::processEvents();
        return field_->text().toStdString();
    }

    QLabel* note() { return window_->findChild<platform::qt::FieldNote*>(); }

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

TEST_F(CalendarEditTest, WhatIsNoDateStaysAndSaysSo) {
    field_->setText(QStringLiteral("10/05/2024"));
    field_->setAccessibleDescription(QStringLiteral("Fine del legame"));
    for (const char* wrong : {"30/02/2024", "31022024", "domani", "12"}) {
        EXPECT_EQ(leaveWith(wrong), wrong);
        EXPECT_FALSE(field_->hasValidDate());
        const QString sentence = QLatin1String(wrong) + QStringLiteral(" non è una data");
        EXPECT_EQ(field_->error(), sentence);
        EXPECT_EQ(field_->accessibleDescription(), sentence);
        ASSERT_NE(note(), nullptr);
        EXPECT_TRUE(note()->isVisible());
        EXPECT_EQ(note()->text(), sentence);
    }
    EXPECT_EQ(leaveWith("11/05/2024"), "11/05/2024");
    EXPECT_EQ(field_->error(), QString());
    EXPECT_EQ(field_->accessibleDescription(), QStringLiteral("Fine del legame"));
    EXPECT_FALSE(note()->isVisible());
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
    for (const char* early : {"31/12/1899", "31121899", "1/1/1850"}) {
        leaveWith(early);
        EXPECT_EQ(field_->error(), QLatin1String(early) + QStringLiteral(" non è una data"));
        EXPECT_FALSE(field_->hasValidDate()) << early;
    }
}

TEST_F(CalendarEditTest, ADateBefore1900ThatIsBeingTypedIsNoneYet) {
    field_->setText(QStringLiteral("10/05/2024"));
    field_->setFocus();
    field_->selectAll();
    QTest::keyClicks(field_, QStringLiteral("30/12/1899"));
    EXPECT_FALSE(field_->hasValidDate());
}

TEST_F(CalendarEditTest, TheSentenceGoesWhenTypingGoesOn) {
    leaveWith("31/02/2028");
    ASSERT_EQ(field_->error(), QStringLiteral("31/02/2028 non è una data"));
    field_->setFocus();
    QTest::keyClick(field_, Qt::Key_End);
    QTest::keyClick(field_, Qt::Key_Backspace);
    EXPECT_EQ(field_->error(), QString());
    EXPECT_FALSE(note()->isVisible());
    QTest::keyClick(field_, Qt::Key_Return);
    EXPECT_EQ(field_->error(), QStringLiteral("31/02/202 non è una data"));
    field_->setText({});
    EXPECT_EQ(field_->error(), QString()) << "what the program sets is its own business";
}

TEST_F(CalendarEditTest, WhatTheProgramSetAndNobodyChangedIsNotQuestioned) {
    field_->setText(QStringLiteral("30/12/1899"));
    field_->setFocus();
    other_->setFocus();
    EXPECT_EQ(field_->text(), QStringLiteral("30/12/1899"));
    EXPECT_EQ(field_->error(), QString());
}

TEST_F(CalendarEditTest, TheFrameOfAFieldWithAnErrorIsRed) {
    leaveWith("boh");
    const QColor red = platform::qt::Appearance::instance().colors().danger;
    const QImage shot = field_->grab().toImage();
    EXPECT_EQ(shot.pixelColor(1, shot.height() / 2), red);
    EXPECT_EQ(shot.pixelColor(shot.width() / 2, 1), red);
    leaveWith("10/05/2024");
    EXPECT_NE(field_->grab().toImage().pixelColor(1, shot.height() / 2), red);
}

TEST_F(CalendarEditTest, TheSentenceStandsAtTheFieldInTheWindowAndFollowsIt) {
    window_->resize(260, 200);
    leaveWith("31/02/2028");
    const auto at = [this] { return QRect(field_->mapTo(window_.get(), QPoint(0, 0)), field_->size()); };
    EXPECT_TRUE(window_->rect().contains(note()->geometry()));
    EXPECT_FALSE(at().intersects(note()->geometry()));
    const int below = note()->y() - at().y();
    window_->layout()->setContentsMargins(9, 40, 9, 9);
    QCoreApplication::processEvents();
    EXPECT_EQ(note()->y() - at().y(), below);
    field_->hide();
    EXPECT_FALSE(note()->isVisible());
    field_->show();
    EXPECT_TRUE(note()->isVisible());
    window_->resize(700, 200);
    field_->setMaximumWidth(200);
    QCoreApplication::processEvents();
    EXPECT_GT(note()->x(), at().right()) << "at its side where there is room";
}

TEST_F(CalendarEditTest, OfALongTextTheSentenceHasTheBeginning) {
    leaveWith("0123456789012345678901234567890123456789");
    EXPECT_EQ(field_->error(), QStringLiteral("012345678901234567890123456789… non è una data"));
}

TEST_F(CalendarEditTest, NothingButBlanksIsTheEmptyField) {
    field_->setText(QStringLiteral("10/05/2024"));
    EXPECT_EQ(leaveWith("   "), "");
    EXPECT_EQ(field_->error(), QString());
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

TEST_F(CalendarEditTest, ClearingAndMistypingNeverBringsTheOldDateBack) {
    field_->setText(QStringLiteral("10/05/2024"));
    field_->setFocus();
    field_->selectAll();
    QTest::keyClick(field_, Qt::Key_Delete);
    QTest::keyClicks(field_, QStringLiteral("boh"));
    other_->setFocus();
    EXPECT_EQ(field_->text(), QStringLiteral("boh"));
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
    EXPECT_EQ(field_->text(), QStringLiteral("31"));
    EXPECT_EQ(field_->error(), QStringLiteral("31 non è una data"));
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
