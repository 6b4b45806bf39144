// A work that its user gives up with the mouse and the keyboard, while a statement of an embedded database goes on.

#include "host/windows/BusyIndicator.h"
#include "host/windows/StatusLine.h"
#include "host/windows/WorkBar.h"
#include "host/windows/WorkProgress.h"

#include "TestFolder.h"
#include "TestSession.h"
#include "contract/Snapshot.h"
#include "platform/sqlite/Connection.h"

#include <QDialog>
#include <QEventLoop>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

namespace {

using host::BusyIndicator;
using platform::shared::LongWork;
using namespace std::chrono_literals;

void rest() {
    QEventLoop loop;
    QTimer::singleShot(30ms, &loop, &QEventLoop::quit);
    loop.exec();
}

/// A window with a field, a status line, and a work that would last for minutes.
class CancelWork : public testing::Test {
protected:
    struct Application {
        Application() { host_test::needApplication(); }
    } application;

    CancelWork() {
        auto* column = new QVBoxLayout(&window);
        column->addWidget(&still);
        column->addWidget(&line);
        window.resize(900, 200);
        busy.setSurroundings(&window, &still, line.cancelButton());
        window.show();
        window.activateWindow();
        database.Open();
        rest();
    }

    /// Runs one statement that does not end by itself; true when it was given up.
    bool work() {
        contract::Snapshot rows;
        const contract::Cancellable cancellable(database);
        try {
            database.Read(
                contract::Statement("SELECT Count(*) AS Conta FROM SERIE AS A INNER JOIN SERIE AS B ON A.ID <> "
                                    "B.ID INNER JOIN SERIE AS C ON A.ID <> C.ID"),
                rows);
        } catch (const contract::Cancelled&) {
            return true;
        }
        return false;
    }

    /// Presses and releases the mouse in the middle of a widget, as the window system does, from another thread.
    static void clickSoon(std::thread& hand, QWidget* window, QWidget* widget, std::chrono::milliseconds after) {
        auto* const handle = window->windowHandle();
        hand = std::thread([=] {
            std::this_thread::sleep_for(after);
            const QPoint middle = widget->mapTo(window, widget->rect().center());
            const QPoint global = window->mapToGlobal(middle);
            for (const bool down : {true, false}) {
                qt_handleMouseEvent(handle, middle, global, down ? Qt::LeftButton : Qt::NoButton, Qt::LeftButton,
                                    down ? QEvent::MouseButtonPress : QEvent::MouseButtonRelease, Qt::NoModifier, 1000);
                std::this_thread::sleep_for(50ms);
            }
        });
    }
    static void pressSoon(std::thread& hand, QWidget* window, int key, std::chrono::milliseconds after) {
        auto* const handle = window->windowHandle();
        hand = std::thread([=] {
            std::this_thread::sleep_for(after);
            for (const bool down : {true, false})
                qt_handleKeyEvent(handle, down ? QEvent::KeyPress : QEvent::KeyRelease, key, Qt::NoModifier);
        });
    }

    static std::string makeDatabase(const std::string& file);

    host_test::Folder folder;
    platform::sqlite::Connection database{"embedded:" + makeDatabase((folder.path() / "lungo.sqlite").string())};
    QWidget window;
    QLineEdit still;
    host::StatusLine line;
    QStringList shown;
    BusyIndicator busy{[this](const QString& text) {
                           if (shown.isEmpty() || shown.last() != text)
                               shown.append(text);
                           line.setText(text);
                           line.layout()->activate();
                           line.repaint();
                       },
                       nullptr};
    std::thread hand;
};

std::string CancelWork::makeDatabase(const std::string& file) {
    sqlite3* raw = nullptr;
    sqlite3_open(file.c_str(), &raw);
    sqlite3_exec(
        raw,
        "CREATE TABLE SERIE (ID INTEGER); WITH RECURSIVE N(I) AS (SELECT 1 UNION ALL SELECT I + 1 FROM N WHERE "
        "I < 3000) INSERT INTO SERIE SELECT I FROM N",
        nullptr, nullptr, nullptr);
    sqlite3_close(raw);
    return file;
}

TEST_F(CancelWork, AClickOnTheButtonWithinAStatement) {
    EXPECT_FALSE(line.cancelButton()->isVisible());
    bool given = false;
    QTimer::singleShot(0, [&] {
        clickSoon(hand, &window, line.cancelButton(), 1500ms);
        given = work();
        EXPECT_TRUE(line.cancelButton()->isVisible());
        hand.join();
    });
    rest();
    rest();
    EXPECT_TRUE(given);
    EXPECT_TRUE(shown.contains(QStringLiteral("Annullamento in corso…"))) << shown.join("|").toStdString();
    EXPECT_FALSE(line.cancelButton()->isVisible());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(CancelWork, EscWithinAStatement) {
    bool given = false;
    QTimer::singleShot(0, [&] {
        pressSoon(hand, &window, Qt::Key_Escape, 1500ms);
        given = work();
        hand.join();
    });
    rest();
    EXPECT_TRUE(given);
}

TEST_F(CancelWork, WhatElseIsTypedAndClickedIsDropped) {
    QTimer::singleShot(0, [&] {
        auto* const handle = window.windowHandle();
        still.setFocus();
        hand = std::thread([=, this] {
            std::this_thread::sleep_for(1300ms);
            qt_handleKeyEvent(handle, QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, QStringLiteral("a"));
            qt_handleKeyEvent(handle, QEvent::KeyRelease, Qt::Key_A, Qt::NoModifier, QStringLiteral("a"));
            QWindow* const same = handle;
            std::this_thread::sleep_for(300ms);
            qt_handleKeyEvent(same, QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
        });
        EXPECT_TRUE(work());
        hand.join();
    });
    rest();
    EXPECT_EQ("", still.text().toStdString());
    EXPECT_TRUE(window.isVisible());
}

TEST_F(CancelWork, AWindowInFrontHasTheButton) {
    QDialog front(&window);
    front.resize(600, 300);
    bool given = false;
    QTimer::singleShot(0, &front, [&] {
        hand = std::thread([&front] {
            std::this_thread::sleep_for(1500ms);
            QMetaObject::invokeMethod(
                &front,
                [&front] {
                    const auto* bar = front.findChild<QFrame*>(QStringLiteral("lavoro"));
                    ASSERT_NE(nullptr, bar);
                    auto* button = bar->findChild<QPushButton*>();
                    ASSERT_NE(nullptr, button);
                    EXPECT_TRUE(bar->isVisible());
                    const QPoint middle = button->mapTo(&front, button->rect().center());
                    for (const bool down : {true, false})
                        qt_handleMouseEvent(front.windowHandle(), middle, front.mapToGlobal(middle),
                                            down ? Qt::LeftButton : Qt::NoButton, Qt::LeftButton,
                                            down ? QEvent::MouseButtonPress : QEvent::MouseButtonRelease,
                                            Qt::NoModifier, 1000);
                },
                Qt::QueuedConnection);
        });
        given = work();
        hand.join();
        QTimer::singleShot(50ms, &front, [&] {
            EXPECT_EQ(nullptr, front.findChild<QFrame*>(QStringLiteral("lavoro"))) << "it goes with the work";
            front.reject();
        });
    });
    front.exec();
    EXPECT_TRUE(given);
}

TEST_F(CancelWork, AWorkOfTheHostTellsHowFarItIs) {
    int steps = 0;
    QTimer::singleShot(0, [&] {
        host::WorkProgress progress("nodi");
        pressSoon(hand, &window, Qt::Key_Escape, 1600ms);
        try {
            for (steps = 0; steps < 1000; ++steps) {
                std::this_thread::sleep_for(10ms);
                progress.reached("Confronto", static_cast<std::uint64_t>(1000 + steps), 5870);
            }
        } catch (const contract::Cancelled&) {
        }
        hand.join();
    });
    rest();
    EXPECT_LT(steps, 1000);
    ASSERT_FALSE(shown.isEmpty());
    EXPECT_TRUE(shown.first().startsWith(QStringLiteral("Confronto: 1.0"))) << shown.first().toStdString();
    EXPECT_TRUE(shown.first().endsWith(QStringLiteral(" di 5.870 nodi, da 1 s…"))) << shown.first().toStdString();
}

TEST_F(CancelWork, WhatCanNotBeGivenUpHasNoUseOfTheButton) {
    QTimer::singleShot(0, [&] {
        pressSoon(hand, &window, Qt::Key_Escape, 1100ms);
        for (int step = 0; step < 20; ++step) {
            std::this_thread::sleep_for(75ms);
            EXPECT_FALSE(LongWork::instance().stops());
        }
        EXPECT_TRUE(line.cancelButton()->isVisible());
        EXPECT_FALSE(line.cancelButton()->isEnabled());
        hand.join();
    });
    rest();
    rest();
    EXPECT_FALSE(line.cancelButton()->isVisible());
}

} // namespace
