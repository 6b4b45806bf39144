// Companies, recent databases and where the present one stands; the inner window as a person makes it large and small.

#include "TestSession.h"
#include "host/database/DatabaseAccess.h"
#include "host/start/HostSession.h"
#include "host/start/UserSettings.h"
#include "host/windows/CompanyChoice.h"
#include "host/windows/MainWindow.h"

#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QTimer>

#include <gtest/gtest.h>

namespace {

using host::CompanyChoice;

TEST(CompanyChoiceTest, ShowsWhatACompanyIsKnownBy) {
    host_test::needApplication();
    const CompanyChoice choice({{1, QStringLiteral("Agenti, Zone")}, {2, {}}}, 2, nullptr);
    const auto* list = choice.findChild<QComboBox*>(QStringLiteral("azienda"));
    ASSERT_NE(nullptr, list);
    ASSERT_EQ(2, list->count());
    EXPECT_EQ(QStringLiteral("1 – Agenti, Zone"), list->itemText(0));
    EXPECT_EQ(QStringLiteral("2 – nessuna distinta"), list->itemText(1));
    EXPECT_EQ(2, choice.company());
    // Nothing that is not there can be typed.
    EXPECT_FALSE(list->isEditable());
}

TEST(CompanyChoiceTest, KeepsTheOneInUseEvenWithoutRows) {
    host_test::needApplication();
    const CompanyChoice choice({{1, QStringLiteral("Agenti")}}, 9, nullptr);
    EXPECT_EQ(9, choice.company());
}

class DatabaseChoice : public testing::Test {
protected:
    DatabaseChoice() {
        for (const auto& each : {file, other})
            host::createDatabase(host::embeddedDatabase(each), host_test::component().schema(), 40);
        platform::qt::Session::instance().modalOpened = [](platform::qt::FormWindow&) {};
        settings.connectionString = host::embeddedDatabase(file);
        settings.scripted = true;
        settings.logFile = QString::fromStdString(folder.file("errori.log"));
        session = std::make_unique<host::HostSession>(settings, host_test::component(), window.area(), &window);
        session->openDatabase();
        window.attach(*session);
        window.show();
    }
    ~DatabaseChoice() override {
        session.reset();
        platform::qt::Session::instance().modalOpened = {};
    }
    QList<QAction*> recent() {
        auto* menu = window.findChild<QMenu*>(QStringLiteral("recenti"));
        emit menu->aboutToShow();
        return menu->actions();
    }

    struct Application {
        Application() { host_test::needApplication(); }
    } application; // before the window
    host_test::Folder folder;
    host_test::Environment config{"XDG_CONFIG_HOME", folder.path().c_str()};
    std::string file = folder.file("prova.sqlite");
    std::string other = folder.file("altra.sqlite");
    host::SessionSettings settings;
    host::UserSettings remembered;
    host::MainWindow window{&remembered};
    std::unique_ptr<host::HostSession> session;
};

TEST_F(DatabaseChoice, CompaniesComeWithTheirDistinte) {
    const auto companies = session->companiesByName();
    ASSERT_EQ(2U, companies.size());
    EXPECT_TRUE(companies[0].distinte.contains(QStringLiteral("Agenti"))) << companies[0].distinte.toStdString();
    EXPECT_FALSE(companies[1].distinte.isEmpty());
}

TEST_F(DatabaseChoice, TheToolTipTellsWhereTheDatabaseStands) {
    bool found = false;
    for (const auto* label : window.findChildren<QLabel*>())
        found = found || label->toolTip() == QString::fromStdString(file);
    EXPECT_TRUE(found);
}

TEST_F(DatabaseChoice, ARecentOneIsWorkedOnAtOnce) {
    ASSERT_EQ(QString(), session->openForm());
    ASSERT_EQ(1, recent().size());
    remembered.noteOpened(host::embeddedDatabase(other));
    const auto entries = recent();
    ASSERT_EQ(2, entries.size());
    EXPECT_TRUE(entries[0]->text().endsWith(QStringLiteral("altra.sqlite")));
    EXPECT_EQ(QString::fromStdString(other), entries[0]->toolTip());
    EXPECT_TRUE(entries[1]->isChecked());
    entries[0]->trigger();
    EXPECT_EQ(QStringLiteral("altra.sqlite"), session->databaseName());
    EXPECT_TRUE(session->formOpen());
    EXPECT_TRUE(recent()[0]->isChecked());
    // Back again: no two of one name.
    recent()[1]->trigger();
    EXPECT_EQ(QStringLiteral("prova.sqlite"), session->databaseName());
    EXPECT_EQ(2, recent().size());
}

TEST_F(DatabaseChoice, ARecentOneThatIsGoneLeavesThePresentOne) {
    ASSERT_EQ(QString(), session->openForm());
    remembered.noteOpened(host::embeddedDatabase(folder.file("manca.sqlite")));
    recent()[0]->trigger();
    const auto shown = session->dialogs().takeShown();
    ASSERT_EQ(1U, shown.size());
    EXPECT_TRUE(shown[0].text.contains(QStringLiteral("il file non esiste"))) << shown[0].text.toStdString();
    EXPECT_EQ(QStringLiteral("prova.sqlite"), session->databaseName());
    EXPECT_TRUE(session->formOpen());
}

TEST_F(DatabaseChoice, NoSecretIsAmongTheRecentOnes) {
    remembered.noteOpened("Driver=FreeTDS;Server=erp;UID=sa;PWD=segreto;AccessToken=segreto");
    EXPECT_EQ("Driver=FreeTDS;Server=erp;UID=sa", remembered.recentDatabases().front());
    for (int i = 0; i < 20; ++i)
        remembered.noteOpened(host::embeddedDatabase(folder.file(std::to_string(i))));
    EXPECT_EQ(9U, remembered.recentDatabases().size());
}

TEST_F(DatabaseChoice, AnInnerWindowStaysInReachAndComesBackWithItsKey) {
    window.resize(1280, 800);
    EXPECT_EQ(QString(), session->openForm({{"Left", 9000}, {"Top", 6000}, {"WindowState", 2}}));
    QApplication::processEvents();
    auto* form = session->formWindow()->window();
    ASSERT_TRUE(form->isMaximized());
    form->showNormal();
    QApplication::processEvents();
    EXPECT_TRUE(window.area()->rect().contains(form->geometry()));
    window.resize(700, 500);
    QApplication::processEvents();
    EXPECT_TRUE(window.area()->rect().contains(form->geometry()));
    const auto press = [&] {
        for (auto* action : window.findChildren<QAction*>())
            if (action->shortcut() == QKeySequence(Qt::CTRL | Qt::Key_M)) {
                EXPECT_TRUE(action->isEnabled());
                action->trigger();
            }
        QApplication::processEvents();
    };
    press();
    EXPECT_TRUE(form->isMaximized());
    form->showMinimized();
    QApplication::processEvents();
    press();
    EXPECT_TRUE(form->isMaximized());
    EXPECT_TRUE(session->formOpen());
}

} // namespace
