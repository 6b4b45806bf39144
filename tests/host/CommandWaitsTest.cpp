#include "host/database/CommandWaits.h"

#include "TestSession.h"
#include "host/services/HostServices.h"
#include "platform/shared/Waiting.h"

#include <QEventLoop>
#include <QMessageBox>
#include <QTimer>

#include <gtest/gtest.h>

#include <chrono>

namespace {

using host::CommandWaits;
using platform::shared::Waiting;
using namespace std::chrono_literals;

void rest() {
    QEventLoop loop;
    QTimer::singleShot(30ms, &loop, &QEventLoop::quit);
    loop.exec();
}

class Waits : public testing::Test {
protected:
    struct Application {
        Application() { host_test::needApplication(); }
    } application;
    static bool waited() { return Waiting::instance().left(5s) == 0ms; }
    QStringList shown;
    CommandWaits waits{[this](const QString& text) { shown.append(text); }, nullptr};
};

TEST_F(Waits, ACommandEndsWhenTheEventLoopRests) {
    Waiting::instance().add(5s);
    Waiting::instance().operationWaits();
    EXPECT_TRUE(waited());
    rest();
    EXPECT_FALSE(waited());
}

TEST_F(Waits, ABoxBelongsToTheCommandThatAsks) {
    QMessageBox box;
    QTimer::singleShot(60ms, &box, [&] {
        EXPECT_TRUE(waited());
        box.reject();
    });
    Waiting::instance().add(5s);
    box.exec();
    EXPECT_TRUE(waited());
}

TEST_F(Waits, WhoTriesAgainWaitsAgain) {
    const host_test::ContextOnDatabase database;
    host::HostLogClass log(database.context);
    Waiting::instance().add(5s);
    database.context->dialogs.queueAnswers({3, 4});
    log.ShowError("distinte", "Distinte", "Prova", 4370);
    EXPECT_TRUE(waited());
    log.ShowError("distinte", "Distinte", "Prova", 4370);
    EXPECT_FALSE(waited());
}

TEST_F(Waits, TellsForWhom) {
    Waiting::instance().told("a.sqlite", "«distinte» (processo 7, utente rossi)");
    Waiting::instance().told("a.sqlite", "");
    EXPECT_EQ((QStringList{"In attesa: il database «a.sqlite» è occupato da «distinte» (processo 7, utente rossi)…",
                           "In attesa: il database «a.sqlite» è occupato da un altro programma…"}),
              shown);
}

} // namespace
