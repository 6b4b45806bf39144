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

#include <chrono>
#include <functional>
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

    /// Does what the window system does with the user's hands, while the work goes on: in its queue of events.
    void soon(QWidget* over, std::chrono::milliseconds after, std::function<void(QWindow*)> events) {
        hand = std::thread([over, after, events = std::move(events)] {
            std::this_thread::sleep_for(after);
            QMetaObject::invokeMethod(
                over, [over, events] { events(over->windowHandle()); }, Qt::QueuedConnection);
        });
    }
    static void click(QWindow* to, const QWidget* widget) {
        const QPoint middle = widget->mapTo(widget->window(), widget->rect().center());
        for (const bool down : {true, false})
            qt_handleMouseEvent(to, middle, widget->mapToGlobal(widget->rect().center()),
                                down ? Qt::LeftButton : Qt::NoButton, Qt::LeftButton,
                                down ? QEvent::MouseButtonPress : QEvent::MouseButtonRelease, Qt::NoModifier, 1000);
    }
    static void press(QWindow* to, int key, const QString& text = {}) {
        for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease})
            qt_handleKeyEvent(to, type, key, Qt::NoModifier, text);
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
        soon(&window, 1500ms, [this](QWindow* to) { click(to, line.cancelButton()); });
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
        soon(&window, 1500ms, [](QWindow* to) { press(to, Qt::Key_Escape); });
        given = work();
        hand.join();
    });
    rest();
    EXPECT_TRUE(given);
}

TEST_F(CancelWork, WhatElseIsTypedAndClickedIsDropped) {
    QPushButton other(&window);
    int clicks = 0;
    QObject::connect(&other, &QPushButton::clicked, [&] { ++clicks; });
    other.setGeometry(10, 10, 80, 30);
    other.show();
    still.setFocus();
    bool given = false;
    QTimer::singleShot(0, [&] {
        soon(&window, 1400ms, [&](QWindow* to) {
            press(to, Qt::Key_A, QStringLiteral("a"));
            press(to, Qt::Key_Return);
            click(to, &other);
            EXPECT_FALSE(LongWork::instance().cancelled());
            press(to, Qt::Key_Escape);
        });
        given = work();
        hand.join();
    });
    rest();
    rest();
    EXPECT_TRUE(given);
    EXPECT_EQ("", still.text().toStdString());
    EXPECT_EQ(0, clicks);
}

TEST_F(CancelWork, AWindowInFrontHasTheButton) {
    QDialog front(&window);
    front.resize(600, 300);
    bool given = false;
    QTimer::singleShot(50ms, &front, [&] {
        soon(&front, 1500ms, [&front](QWindow* to) {
            const auto* bar = front.findChild<QFrame*>(QStringLiteral("lavoro"));
            ASSERT_NE(nullptr, bar);
            const auto* button = bar->findChild<QPushButton*>();
            ASSERT_NE(nullptr, button);
            EXPECT_TRUE(bar->isVisible());
            click(to, button);
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
        soon(&window, 1600ms, [](QWindow* to) { press(to, Qt::Key_Escape); });
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
        soon(&window, 1100ms, [](QWindow* to) { press(to, Qt::Key_Escape); });
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
