// What stands around a data-entry frame: the question at the dialog's end, its buttons, and the navigator.

#include "platform/qt/fields/DataEntryHooks.h"
#include "platform/qt/forms/Session.h"
#include "qt/DataFrameFixture.h"

#include <QJsonArray>

#include <utility>

namespace qt_tests {

namespace {

using contract::RuntimeError;

TEST_F(DataFrameTest, ClosingWithoutChangesAsksNothing) {
    openOn({record()});
    EXPECT_TRUE(windowOf("FRM_PARAMETRI").pressClose());
    EXPECT_TRUE(asked.empty());
    EXPECT_TRUE(connection->take().empty());
}

TEST_F(DataFrameTest, ClosingOnChangesAsksAndNoDiscards) {
    openOn({record()});
    script("NOTA").set(id("seconda"));
    answer = 7;
    EXPECT_TRUE(windowOf("FRM_PARAMETRI").pressClose());
    EXPECT_EQ(asked, std::vector<QString>{QStringLiteral("Parametri: Salvare le modifiche?")});
    EXPECT_EQ(styles, std::vector<int>{3});
    EXPECT_TRUE(connection->take().empty());
}

TEST_F(DataFrameTest, YesSavesAndCloses) {
    openOn({record()});
    script("NOTA").set(id("seconda"));
    answer = 6;
    EXPECT_TRUE(windowOf("FRM_PARAMETRI").pressClose());
    EXPECT_EQ(connection->take().size(), 1U);
}

TEST_F(DataFrameTest, YesStaysWhenTheSaveIsRefusedOrFails) {
    openOn({record()});
    script("NOTA").set(id("seconda"));
    answer = 6;
    refuse = true;
    EXPECT_FALSE(windowOf("FRM_PARAMETRI").pressClose());
    refuse = false;
    connection->fail("UPDATE", {"08S01", 0, "lost", contract::ErrorCategory::lostConnection});
    EXPECT_FALSE(windowOf("FRM_PARAMETRI").pressClose());
    EXPECT_EQ(errors, std::vector<int>{RuntimeError::database});
    connection->forget();
    EXPECT_TRUE(windowOf("FRM_PARAMETRI").pressClose());
}

TEST_F(DataFrameTest, CancelKeepsTheDialogOpen) {
    openOn({record()});
    script("NOTA").set(id("seconda"));
    answer = 2;
    bool queried = false;
    form->QueryUnload = [&](bool&) { queried = true; };
    EXPECT_FALSE(windowOf("FRM_PARAMETRI").pressClose());
    EXPECT_FALSE(queried);
    EXPECT_EQ(note->text(), "seconda");
    answer = 7;
    EXPECT_TRUE(form->unload());
    EXPECT_TRUE(queried);
}

TEST_F(DataFrameTest, TheButtonsStandBelowTheArea) {
    openOn({record()});
    EXPECT_EQ(form->clientHeight(), 4500 - 705); // at ten points
    EXPECT_EQ(form->clientWidth(), 7500);
    EXPECT_EQ(script("CMD_SALVA").read().value("caption"), "&Salva");
    EXPECT_EQ(script("CMD_RIPRISTINA").read().value("caption"), "&Ripristina");
    const auto* window = windowOf("FRM_PARAMETRI").window();
    for (const char* name : {"CMD_SALVA", "CMD_RIPRISTINA"}) {
        const auto* button = script(name).widget();
        const QRect place(button->mapTo(window, QPoint(0, 0)), button->size());
        EXPECT_TRUE(window->rect().contains(place)) << name;
        EXPECT_GE(place.top(), (4500 - 705) / 15) << name;
        const auto bounds = windowOf("FRM_PARAMETRI").controlBounds(id(name));
        EXPECT_EQ(platform::qt::Appearance::pixels(bounds.top), place.top()) << name;
        EXPECT_EQ(platform::qt::Appearance::pixels(bounds.left), place.left()) << name;
    }
}

TEST_F(DataFrameTest, TheButtonsGrowWithTheType) {
    using platform::qt::Appearance;
    openOn({record()});
    for (const int points : {8, 10, 12, 14}) {
        Appearance::instance().setZoom(points);
        EXPECT_EQ(form->clientHeight(), form->bounds().height - 420 * points / 8 - 180) << points;
        EXPECT_EQ(windowOf("FRM_PARAMETRI").controlBounds(id("CMD_SALVA")).height, 420 * points / 8) << points;
        const auto* window = windowOf("FRM_PARAMETRI").window();
        const auto* button = script("CMD_SALVA").widget();
        EXPECT_EQ(button->height(), Appearance::pixels(420 * points / 8)) << points;
        EXPECT_TRUE(window->rect().contains(QRect(button->mapTo(window, QPoint(0, 0)), button->size()))) << points;
    }
    Appearance::instance().setZoom(10);
}

TEST_F(DataFrameTest, TheFirstFieldHasTheKeyboardAtFirstAndTheRowComesLast) {
    openOn({record()});
    EXPECT_EQ(QApplication::focusWidget(), script("CMB").widget());
    for (const char* next : {"DATA", "CHK", "COD", "NOTA", "CMD_SALVA", "CMD_RIPRISTINA", "CMD_CHIUDI", "CMB"}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget(), script(next).widget()) << next;
    }
}

TEST_F(DataFrameTest, ADocumentFormHasNoSuchButtons) {
    auto doc = stage.factory->newDocumentForm("FRM");
    doc->addDataFrame("FME_CopiaDistintaOrig", nullptr);
    doc->show(false);
    EXPECT_EQ(windowOf("FRM").control(id("CMD_SALVA")), nullptr);
}

TEST_F(DataFrameTest, TheNavigatorGoesFromRecordToRecord) {
    auto& navigator = form->addGridNavigator("NAV", nullptr);
    navigator.setBounds({100, 3000, 6000, 450});
    navigator.bind(*frame);
    navigator.setAskBeforeMove(true);
    openOn({record(1), record(2), record(3)});
    const auto company = [&] { return (*data)["DITTA"].integer().value_or(-1); };
    for (const auto& [button, there] : {std::pair{"successivo", 2},
                                        {"ultimo", 3},
                                        {"successivo", 3},
                                        {"precedente", 2},
                                        {"primo", 1},
                                        {"precedente", 1}}) {
        EXPECT_EQ(script("NAV").chooseItem(id(button)), QString());
        EXPECT_EQ(company(), there) << button;
    }
    script("NOTA").set(id("seconda"));
    answer = 2;
    script("NAV").chooseItem(id("successivo"));
    EXPECT_EQ(company(), 1);
    answer = 6;
    script("NAV").chooseItem(id("successivo"));
    EXPECT_EQ(company(), 2);
    EXPECT_EQ(connection->take().size(), 1U);
    EXPECT_EQ(script("NAV").read().value("buttons").toArray().size(), 4);
}

TEST_F(DataFrameTest, TheNavigatorInsertsAndDeletesWhereItMay) {
    auto& navigator = form->addGridNavigator("NAV", nullptr);
    navigator.setBounds({100, 3000, 7000, 450});
    navigator.bind(*frame);
    openOn({record(1)});
    EXPECT_FALSE(script("NAV").chooseItem(id("elimina")).isEmpty());
    navigator.setAllowInsert(true);
    navigator.setAllowDelete(true);
    QCoreApplication::processEvents();
    answer = 7;
    EXPECT_EQ(script("NAV").chooseItem(id("elimina")), QString());
    EXPECT_TRUE(connection->take().empty());
    answer = 6;
    EXPECT_EQ(script("NAV").chooseItem(id("elimina")), QString());
    EXPECT_EQ(connection->take().front(), "DELETE FROM PARAMETRI WHERE DITTA = 1");
    EXPECT_EQ(script("NAV").chooseItem(id("nuovo")), QString());
    EXPECT_EQ(frame->status(), contract::DataFrame::inserting);
    EXPECT_EQ(note->text(), "");
    navigator.release();
    EXPECT_EQ(script("NAV").chooseItem(id("nuovo")), QString());
}

TEST_F(DataFrameTest, FromTheOnlyRecordNoArrowLeads) {
    auto& navigator = form->addGridNavigator("NAV", nullptr);
    navigator.setBounds({100, 3000, 7000, 450});
    navigator.bind(*frame);
    openOn({record(1)});
    for (const char* arrow : {"primo", "precedente", "successivo", "ultimo"})
        EXPECT_FALSE(script("NAV").chooseItem(id(arrow)).isEmpty()) << arrow;
    EXPECT_EQ(4, script("NAV").read()["buttons"].toArray().size()); // their captions stay
    navigator.setAllowInsert(true);
    QCoreApplication::processEvents();
    EXPECT_EQ(script("NAV").chooseItem(id("nuovo")), QString());
    EXPECT_EQ(script("NAV").chooseItem(id("primo")), QString()); // back from a new one
}

TEST_F(DataFrameTest, TheRowOfButtonsClosesTheDialogToo) {
    openOn({record()});
    EXPECT_EQ(script("CMD_CHIUDI").click(), QString());
    EXPECT_EQ(nullptr, platform::qt::Session::instance().find(id("FRM_PARAMETRI")));
}

TEST_F(DataFrameTest, ASaveIsTold) {
    int told = 0;
    platform::qt::DataEntryHooks::instance().saved = [&] { ++told; };
    openOn({record()});
    EXPECT_TRUE(frame->save());
    EXPECT_EQ(1, told);
    platform::qt::DataEntryHooks::instance().saved = {};
}

} // namespace

} // namespace qt_tests
