#include "host/windows/StatusLine.h"

#include "TestSession.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

struct StatusLineTest : testing::Test {
    StatusLineTest() {
        host_test::needApplication();
        owner = std::make_unique<host::StatusLine>();
        line().setText(text);
        line().setContext(QStringLiteral("Azienda 1  |  Utente ADMIN  |  Gruppo ADMIN  |  demo.sqlite"));
        line().show();
    }
    /// The two labels as they are shown; a hidden one as an empty text.
    QStringList shownAt(int width) {
        line().resize(width, 24);
        QApplication::processEvents();
        QStringList texts;
        for (const auto* label : line().findChildren<QLabel*>())
            texts += label->isVisible() ? label->text() : QString();
        return texts;
    }
    QString toolTip() const { return line().findChildren<QLabel*>().front()->toolTip(); }

    const QString text =
        QStringLiteral("Sposta: 10346 Panificio Leone (2 nodi) → sotto 2003 Unione Dettaglianti del Po");
    host::StatusLine& line() const { return *owner; }
    std::unique_ptr<host::StatusLine> owner;
};

TEST_F(StatusLineTest, ShowsBothWhereThereIsRoom) {
    const QStringList texts = shownAt(3000);
    ASSERT_EQ(2, texts.size());
    EXPECT_EQ(text, texts[0]);
    EXPECT_TRUE(texts[1].startsWith("Azienda 1"));
    EXPECT_TRUE(toolTip().isEmpty());
}

TEST_F(StatusLineTest, TheSurroundingsGoFirst) {
    const int needed = line().fontMetrics().horizontalAdvance(text) + 40;
    EXPECT_EQ((QStringList{text, QString()}), shownAt(needed));
    EXPECT_TRUE(toolTip().isEmpty());
    EXPECT_EQ(text, shownAt(3000)[0]);
    EXPECT_FALSE(shownAt(3000)[1].isEmpty());
}

TEST_F(StatusLineTest, WhatHasNoRoomEndsInDotsAndIsTold) {
    const QStringList texts = shownAt(200);
    EXPECT_TRUE(texts[0].startsWith("Sposta:"));
    EXPECT_TRUE(texts[0].endsWith(QChar(0x2026)));
    EXPECT_LE(line().fontMetrics().horizontalAdvance(texts[0]), 200);
    EXPECT_EQ(text, toolTip());
    EXPECT_EQ(text, line().text());
    line().setText(QStringLiteral("Breve"));
    EXPECT_EQ(QStringLiteral("Breve"), shownAt(200)[0]);
    EXPECT_TRUE(toolTip().isEmpty());
}

TEST_F(StatusLineTest, ANoticeStaysWhereTheSurroundingsGo) {
    line().setNotice(QStringLiteral("Sola lettura"), QStringLiteral("Si può guardare."));
    const auto* notice = line().findChild<QLabel*>(QStringLiteral("avviso"));
    ASSERT_NE(nullptr, notice);
    const int needed = line().fontMetrics().horizontalAdvance(text) + 200;
    QStringList texts = shownAt(needed);
    EXPECT_TRUE(texts.contains(text));
    EXPECT_TRUE(texts.contains(QStringLiteral("⚠ Sola lettura")));
    EXPECT_EQ(3, texts.size());
    EXPECT_TRUE(texts.contains(QString()));
    EXPECT_EQ(QStringLiteral("Si può guardare."), notice->toolTip());
    texts = shownAt(260);
    EXPECT_TRUE(texts[0].endsWith(QChar(0x2026)));
    EXPECT_TRUE(notice->isVisible());
    EXPECT_LE(notice->geometry().right(), 260);
    line().setNotice({}, {});
    EXPECT_FALSE(notice->isVisible());
    EXPECT_FALSE(shownAt(3000)[1].isEmpty() && shownAt(3000)[2].isEmpty());
}

TEST_F(StatusLineTest, ALargerFontIsMeasuredAnew) {
    const int needed = line().fontMetrics().horizontalAdvance(text) + 40;
    ASSERT_EQ(text, shownAt(needed)[0]);
    line().setStyleSheet(QStringLiteral("font-size: 60px"));
    EXPECT_TRUE(shownAt(needed)[0].endsWith(QChar(0x2026)));
}

} // namespace
