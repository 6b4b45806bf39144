#include "host/windows/BusyIndicator.h"

#include "TestSession.h"

#include <QDialog>
#include <QEventLoop>
#include <QPushButton>
#include <QTest>
#include <QThread>
#include <QTimer>

#include <gtest/gtest.h>

#include <chrono>

namespace {

/// Lets the event loop come to rest, as it does between two commands.
void rest() {
    QEventLoop loop;
    QTimer::singleShot(std::chrono::milliseconds(30), &loop, &QEventLoop::quit);
    loop.exec();
}

void work(int milliseconds) {
    QThread::msleep(static_cast<unsigned long>(milliseconds));
}

class Busy : public testing::Test {
protected:
    struct Application {
        Application() { host_test::needApplication(); }
    } application;
    QStringList shown;
    host::BusyIndicator busy{[this](const QString& text) { shown.append(text); }, nullptr};
};

} // namespace

TEST_F(Busy, SaysNothingOfWhatEndsWithinASecond) {
    rest();
    QTimer::singleShot(0, [&] {
        busy.statementDone(1);
        work(200);
        busy.statementDone(2);
    });
    rest();
    EXPECT_TRUE(shown.isEmpty());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(Busy, TellsTheCommandItsTimeAndItsStatements) {
    QPushButton button(QStringLiteral("Sposta &struttura"));
    button.show();
    QObject::connect(&button, &QPushButton::clicked, [&] {
        busy.statementDone(11);
        work(host::BusyIndicator::patience + 50);
        busy.statementDone(12);
        busy.statementDone(13); // too soon to paint again
        EXPECT_TRUE(busy.showing());
        ASSERT_NE(QApplication::overrideCursor(), nullptr);
        EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    });
    busy.statementDone(10);
    rest();
    QTimer::singleShot(0, [&] { QTest::mouseClick(&button, Qt::LeftButton); });
    rest();
    EXPECT_EQ(shown,
              (QStringList{QStringLiteral("Sposta struttura: in corso da 1 s, 2 istruzioni eseguite…"), QString()}));
    EXPECT_FALSE(busy.showing());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(Busy, ADialogOfTheCommandDoesNotGiveItAnotherName) {
    QWidget window;
    QPushButton button(QStringLiteral("Sposta con &validità"), &window);
    window.show();
    QObject::connect(&button, &QPushButton::clicked, [&] {
        QDialog question(&window);
        QPushButton yes(QStringLiteral("&Sì"), &question);
        QObject::connect(&yes, &QPushButton::clicked, &question, &QDialog::accept);
        QTimer::singleShot(20, [&] { QTest::mouseClick(&yes, Qt::LeftButton); });
        question.exec();
        work(host::BusyIndicator::patience + 50);
        busy.statementDone(1);
    });
    rest();
    QTimer::singleShot(0, [&] { QTest::mouseClick(&button, Qt::LeftButton); });
    rest();
    ASSERT_FALSE(shown.isEmpty());
    EXPECT_TRUE(shown.first().startsWith(QStringLiteral("Sposta con validità: in corso da ")))
        << shown.first().toStdString();
}

TEST_F(Busy, WhatIsTypedDuringWorkThatTellsNothingIsDroppedToo) {
    QPushButton button(QStringLiteral("Esegui"));
    button.show();
    int clicks = 0;
    QObject::connect(&button, &QPushButton::clicked, [&] {
        ++clicks;
        // No statement, and less than what is shown: these wait in the queue until the work is done.
        work(host::BusyIndicator::dropAfter + 100);
        for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease})
            qt_handleMouseEvent(button.windowHandle(), QPointF(5, 5), QPointF(button.mapToGlobal(QPoint(5, 5))),
                                type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, Qt::LeftButton, type,
                                Qt::NoModifier, 1000);
    });
    rest();
    QTimer::singleShot(0, [&] { QTest::mouseClick(&button, Qt::LeftButton); });
    rest();
    EXPECT_EQ(clicks, 1);
    rest();
    QTimer::singleShot(0, [&] { QTest::mouseClick(&button, Qt::LeftButton); });
    rest();
    EXPECT_EQ(clicks, 2) << "what is clicked afterwards counts";
}

TEST_F(Busy, TheTimeBeforeACommandIsNotTheCommands) {
    QPushButton button(QStringLiteral("Esegui"));
    button.show();
    QObject::connect(&button, &QPushButton::clicked, [&] { busy.statementDone(1); });
    rest();
    work(host::BusyIndicator::patience + 50);
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_TRUE(shown.isEmpty());
    rest();
}

TEST_F(Busy, WhatIsTypedMeanwhileIsDropped) {
    QPushButton button(QStringLiteral("Esegui"));
    button.show();
    int clicks = 0;
    QObject::connect(&button, &QPushButton::clicked, [&] { ++clicks; });
    rest();
    QTimer::singleShot(0, [&] {
        work(host::BusyIndicator::patience + 50);
        busy.statementDone(1);
        QTest::mouseClick(&button, Qt::LeftButton);
        QTest::keyClick(&button, Qt::Key_Space);
    });
    rest();
    EXPECT_EQ(clicks, 0);
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_EQ(clicks, 1);
}
