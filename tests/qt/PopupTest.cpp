#include "qt/FormFixture.h"

#include <QAction>
#include <QMenu>

namespace qt_tests {

namespace {

using platform::qt::Session;

class PopupTest : public FormTest {
protected:
    void SetUp() override {
        auto& doc = document("FRM");
        popup = &doc.addPopupMenu("mnuCollegamentoDest");
        popup->addItem({"mnuSchedaCFDest", "Collegamento scheda anagrafica"});
        popup->addItem({"mnuStatoLegame", "Gestione Stato"});
        popup->addItem({"mnuRilasciaFigli", "Imposta valore di stato sui figli"});
        popup->Click = [this](const std::string& item) { chosen.push_back(item); };
        auto& menu = doc.addMenuButton("MenuCerca", nullptr);
        menu.setBounds({100, 100, 2000, 400});
        menu.setCaption("Cerca");
        menu.addItem("RagSoc", "Rag. Sociale");
        menu.addItem("Codice", "Codice");
        menu.MenuClick = [this](const std::string& key) { chosen.push_back(key); };
        doc.show(false);
    }

    contract::PopupMenu* popup = nullptr;
    std::vector<std::string> chosen;
};

TEST_F(PopupTest, AContextMenuOpensAndDoesNotWait) {
    popup->showAtMouse();
    auto* open = Session::instance().popup();
    ASSERT_NE(open, nullptr);
    EXPECT_EQ(open->menuName(), "mnuCollegamentoDest");
    EXPECT_EQ(open->itemNames(), (QStringList{"mnuSchedaCFDest", "mnuStatoLegame", "mnuRilasciaFigli"}));
    EXPECT_TRUE(open->choose(id("mnuRilasciaFigli")));
    EXPECT_EQ(chosen, std::vector<std::string>{"mnuRilasciaFigli"});
    EXPECT_EQ(Session::instance().popup(), nullptr);
}

TEST_F(PopupTest, UnknownAndDisabledItemsAreNotChosen) {
    popup->setItemEnabled("mnuStatoLegame", false);
    popup->showAtMouse();
    auto* open = Session::instance().popup();
    ASSERT_NE(open, nullptr);
    EXPECT_FALSE(open->choose(id("mnuStatoLegame")));
    EXPECT_FALSE(open->choose(id("mnuAltro")));
    EXPECT_TRUE(chosen.empty());
    popup->setItemEnabled("mnuStatoLegame", true);
    EXPECT_TRUE(open->choose(id("mnuStatoLegame")));
    EXPECT_EQ(chosen.size(), 1U);
}

TEST_F(PopupTest, ADismissedMenuIsGone) {
    popup->showAtMouse();
    Session::instance().popup()->dismiss();
    EXPECT_EQ(Session::instance().popup(), nullptr);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    EXPECT_TRUE(chosen.empty());
}

TEST_F(PopupTest, AMouseOnAnItemChoosesIt) {
    popup->showAtMouse();
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(menu->actions().at(1)).center());
    EXPECT_EQ(chosen, std::vector<std::string>{"mnuStatoLegame"});
}

TEST_F(PopupTest, TheEntriesAreFoundByTheirNames) {
    const auto* window = windowOf("FRM").window();
    const auto* entry = window->findChild<QAction*>(id("mnuStatoLegame"));
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(entry->text(), "Gestione Stato");
    EXPECT_NE(window->findChild<QMenu*>(id("mnuCollegamentoDest")), nullptr);
    EXPECT_EQ(windowOf("FRM").control(id("mnuStatoLegame")), nullptr);
}

TEST_F(PopupTest, AMenuButtonOpensItsListAndTellsTheKey) {
    EXPECT_EQ(script("MenuCerca").chooseItem(id("Codice")), QString());
    EXPECT_EQ(chosen, std::vector<std::string>{"Codice"});
    EXPECT_EQ(Session::instance().popup(), nullptr);
    EXPECT_FALSE(script("MenuCerca").chooseItem(id("Altro")).isEmpty());
    EXPECT_EQ(Session::instance().popup(), nullptr);
}

TEST_F(PopupTest, AClickOnAMenuButtonLeavesItsListOpen) {
    EXPECT_EQ(script("MenuCerca").click(), QString());
    auto* open = Session::instance().popup();
    ASSERT_NE(open, nullptr);
    EXPECT_EQ(open->itemNames(), (QStringList{"RagSoc", "Codice"}));
    popup->showAtMouse();
    EXPECT_EQ(Session::instance().popup()->menuName(), "mnuCollegamentoDest");
    Session::instance().popup()->dismiss();
}

TEST_F(PopupTest, TheKeyboardOpensItAtTheFocusedField) {
    form->addTextField("TXT", nullptr).setBounds({3000, 3000, 3000, 400});
    QCoreApplication::processEvents();
    auto* field = script("TXT").widget();
    field->setFocus();
    QTest::mouseClick(script("MenuCerca").widget(), Qt::RightButton);
    field->setFocus();
    QTest::keyClick(field, Qt::Key_Left);
    popup->showAtMouse();
    const auto* menu = QApplication::activePopupWidget();
    ASSERT_NE(menu, nullptr);
    const QRect around = QRect(field->mapToGlobal(QPoint(0, 0)), field->size()).adjusted(-5, -5, 5, 5);
    EXPECT_TRUE(around.contains(menu->pos()));
    Session::instance().popup()->dismiss();

    QTest::mouseClick(field, Qt::RightButton, {}, QPoint(150, 10));
    if (auto* own = QApplication::activePopupWidget())
        own->close();
    popup->showAtMouse();
    EXPECT_EQ(QApplication::activePopupWidget()->pos(), field->mapToGlobal(QPoint(150, 10)));
    Session::instance().popup()->dismiss();
}

TEST_F(PopupTest, AFormMayGoWithItsMenuOpen) {
    popup->showAtMouse();
    form.reset();
    EXPECT_EQ(Session::instance().popup(), nullptr);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace

} // namespace qt_tests
