#include "host/start/HostSession.h"

#include "TestSession.h"
#include "host/database/DatabaseAccess.h"
#include "host/start/StartFailure.h"
#include "host/windows/MainWindow.h"
#include "platform/qt/forms/Scriptable.h"
#include "platform/qt/look/Appearance.h"

#include <QAction>
#include <QMessageBox>
#include <QTimer>

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include <unistd.h>

namespace {

using contract::Value;
using host::HostSession;
using host::SessionSettings;
using host::StartFailure;

/// A session over a small database with demo companies, driven by a script, in the program's own window.
class Session : public testing::Test {
protected:
    Session() {
        host::createDatabase(host::embeddedDatabase(file), host_test::component().schema(), 40);
        platform::qt::Session::instance().modalOpened = [](platform::qt::FormWindow&) {};
        settings.connectionString = host::embeddedDatabase(file);
        settings.scripted = true;
        settings.logFile = QString::fromStdString(folder.file("errori.log"));
    }
    ~Session() override {
        session.reset();
        platform::qt::Session::instance().modalOpened = {};
    }

    HostSession& start() {
        session = std::make_unique<HostSession>(settings, host_test::component(), window.area(), &window);
        session->openDatabase();
        window.attach(*session);
        window.show();
        return *session;
    }

    QStringList operations() {
        QStringList names;
        const QJsonArray calls = session->journal().take();
        for (const QJsonValue& call : calls)
            names.append(call["service"].toString() + QLatin1Char('.') + call["operation"].toString());
        return names;
    }

    struct Application {
        Application() { host_test::needApplication(); }
    } application; // before the window
    host_test::Folder folder;
    std::string file = folder.file("prova.sqlite");
    SessionSettings settings;
    host::MainWindow window{nullptr};
    std::unique_ptr<HostSession> session;
};

TEST_F(Session, TakesTheLowestCompanyUnlessOneIsNamed) {
    EXPECT_EQ(1, start().company());
    EXPECT_EQ((std::vector<std::int64_t>{1, 2}), session->companies());
    session.reset();
    settings.company = 77;
    EXPECT_EQ(77, start().company());
}

QStringList briefOf(HostSession& session) {
    QStringList all;
    for (const auto& each : session.notices().all())
        all.append(each.brief);
    return all;
}

TEST_F(Session, ADatabaseThatCanNotBeWrittenIsSaidToBeSoFromTheStart) {
    EXPECT_EQ(QStringList(), briefOf(start()));
    EXPECT_EQ(QStringLiteral("Manutenzione distinte"), window.windowTitle());
    session.reset();
    // An administrator writes where nobody else may.
    constexpr uid_t nobody = 65534;
    const bool administrator = ::geteuid() == 0;
    constexpr auto readable = std::filesystem::perms(0555);
    std::filesystem::permissions(file, std::filesystem::perms(0666));
    std::filesystem::permissions(folder.path(), readable);
    if (administrator) {
        ASSERT_EQ(0, ::seteuid(nobody));
    }
    EXPECT_EQ(QStringList{QStringLiteral("Sola lettura")}, briefOf(start())); // no room for the journal beside it
    EXPECT_TRUE(
        session->notices().all().front().sentence.contains(QStringLiteral("nella cartella non si può scrivere")));
    session.reset();
    if (administrator) {
        ASSERT_EQ(0, ::seteuid(0));
    }
    std::filesystem::permissions(file, readable);
    std::filesystem::permissions(folder.path(), std::filesystem::perms(0777));
    if (administrator) {
        ASSERT_EQ(0, ::seteuid(nobody));
    }
    EXPECT_EQ(QStringList{QStringLiteral("Sola lettura")}, briefOf(start()));
    EXPECT_EQ(QStringLiteral("Manutenzione distinte – sola lettura"), window.windowTitle());
    const auto* notice = window.findChild<QLabel*>(QStringLiteral("avviso"));
    ASSERT_NE(nullptr, notice);
    EXPECT_EQ(QStringLiteral("⚠ Sola lettura"), notice->text());
    EXPECT_TRUE(notice->toolTip().contains(QStringLiteral("si può guardare ma non modificare")));
    EXPECT_TRUE(notice->toolTip().contains(QStringLiteral("il file è di sola lettura")));
    session.reset();
    if (administrator) {
        ASSERT_EQ(0, ::seteuid(0));
    }
}

TEST_F(Session, ALogThatCanNotBeWrittenIsSaidOnce) {
    settings.logFile = QString::fromStdString(folder.path().string()); // a folder
    EXPECT_EQ(QStringList{QStringLiteral("Errori non registrati")}, briefOf(start()));
    EXPECT_TRUE(session->notices().all().front().atEnd);
    settings.logFile = QStringLiteral("/dev/full");
    session.reset();
    EXPECT_EQ(QStringList(), briefOf(start()));
    EXPECT_EQ(QString(), session->openForm());
    session->formWindow()->control("MenuCercaDest")->chooseItem(QStringLiteral("Codice")); // fails
    session->formWindow()->control("MenuCercaDest")->chooseItem(QStringLiteral("Codice"));
    EXPECT_EQ(QStringList{QStringLiteral("Errori non registrati")}, briefOf(*session));
}

TEST_F(Session, TheEmptyAreasTextStandsInItsMiddle) {
    start();
    for (const QSize size : {QSize(1024, 700), QSize(1600, 900)}) {
        window.resize(size);
        QApplication::processEvents();
        const QLabel* hint = nullptr;
        for (const auto* label : window.area()->findChildren<QLabel*>())
            if (label->text().startsWith(QStringLiteral("Nessun programma aperto")))
                hint = label;
        ASSERT_NE(nullptr, hint);
        const QPoint off = hint->geometry().center() - window.area()->rect().center();
        EXPECT_LE(std::abs(off.x()), 1);
        EXPECT_LE(std::abs(off.y()), 1);
    }
}

TEST_F(Session, RefusesWhatIsNoDatabaseOfItsOwn) {
    const auto statusOf = [&](const std::string& path) {
        settings.connectionString = host::embeddedDatabase(path);
        try {
            start();
        } catch (const StartFailure& failure) {
            EXPECT_NE(std::string::npos, std::string(failure.what()).find(path));
            return failure.status();
        }
        return host::ExitStatus::success;
    };
    EXPECT_EQ(host::ExitStatus::database, statusOf(folder.file("manca.sqlite")));
    host_test::write(folder.file("testo.sqlite"), std::string(4096, 'x'));
    EXPECT_EQ(host::ExitStatus::database, statusOf(folder.file("testo.sqlite")));
    platform::sqlite::createDatabase(folder.file("altro.sqlite"), host::stateSchema());
    EXPECT_EQ(host::ExitStatus::database, statusOf(folder.file("altro.sqlite")));
}

TEST_F(Session, RefusesATraceFileThatCanNotBeWritten) {
    settings.traceFile = QStringLiteral("/non/esiste/traccia");
    EXPECT_THROW(start(), StartFailure);
}

TEST_F(Session, WritesNeitherTraceNorLogIntoTheDatabase) {
    const std::string before = host_test::contentOf(file);
    std::filesystem::create_symlink(file, folder.file("collegamento"));
    for (const std::string& other : {file, folder.file("collegamento"), file + "-journal"}) {
        settings.traceFile = QString::fromStdString(other);
        EXPECT_THROW(start(), StartFailure) << other;
        settings.traceFile.clear();
        settings.logFile = QString::fromStdString(other);
        EXPECT_THROW(start(), StartFailure) << other;
        settings.logFile.clear();
    }
    EXPECT_EQ(before, host_test::contentOf(file));
}

TEST_F(Session, OpensTheFormAndHandsItsModelsOver) {
    start();
    EXPECT_FALSE(session->formOpen());
    EXPECT_EQ("", session->openForm());
    ASSERT_TRUE(session->formOpen());
    EXPECT_EQ("Manutenzione distinte", session->formWindow()->formCaption());
    const QStringList calls = operations();
    EXPECT_TRUE(calls.contains("ScriptObjectModel.runFormEvent"));
    const auto layout = calls.indexOf("LayoutObjectModel.registerForm");
    const auto script = calls.indexOf("ScriptObjectModel.registerForm");
    const auto object = calls.indexOf("ScriptObjectModel.registerObject");
    EXPECT_GT(layout, calls.indexOf("ScriptObjectModel.runFormEvent"));
    EXPECT_GT(script, layout);
    EXPECT_GT(object, script);
    EXPECT_EQ(1, calls.count("LayoutObjectModel.registerForm"));
    session->registerModels();
    EXPECT_TRUE(operations().isEmpty());
}

TEST_F(Session, ADatabaseThatHasGoneRefusesTheFormAndTheNextTryOpensIt) {
    start();
    std::filesystem::rename(file, file + ".via");
    for (int times = 0; times < 2; ++times) {
        EXPECT_TRUE(session->openForm().contains("prova.sqlite"));
        EXPECT_FALSE(session->formOpen());
    }
    std::filesystem::rename(file + ".via", file);
    EXPECT_EQ("", session->openForm());
    EXPECT_TRUE(session->formOpen());
}

TEST_F(Session, CompaniesThatCanNotBeReadAreToldInAMessage) {
    start();
    platform::sqlite::Connection other(settings.connectionString);
    other.Open();
    other.runNative("DROP TABLE QZ01_TIPODISTINTA");
    for (QAction* action : window.findChildren<QAction*>())
        if (action->text().contains("zienda di lavoro"))
            action->trigger();
    const auto shown = session->dialogs().takeShown();
    ASSERT_EQ(1U, shown.size());
    EXPECT_TRUE(shown[0].text.contains("QZ01_TIPODISTINTA")) << shown[0].text.toStdString();
}

TEST_F(Session, WithoutIsActiveTheModelsStayUntouched) {
    start();
    EXPECT_EQ("", session->openForm({{"IsActive", false}}));
    EXPECT_FALSE(operations().contains("LayoutObjectModel.registerForm"));
}

TEST_F(Session, RefusesASecondFormAndContextItDoesNotKnow) {
    start();
    EXPECT_NE("", session->openForm({{"Altezza", 5}}));
    EXPECT_FALSE(session->formOpen());
    EXPECT_EQ("", session->openForm());
    EXPECT_NE("", session->openForm());
}

TEST_F(Session, GivesTheClassItsContext) {
    start();
    EXPECT_EQ("", session->openForm({{"Left", 1500}, {"MenuModulo", "XX"}}));
    const std::pair<const char*, QJsonValue> expected[] = {{"Left", 1500},
                                                           {"MenuModulo", "XX"},
                                                           {"CanDelete", true},
                                                           {"CanInsert", true},
                                                           {"CanQbe", true},
                                                           {"CanUpdate", true},
                                                           {"IsActive", true},
                                                           {"IsCalled", false},
                                                           {"Caption", "Manutenzione distinte"},
                                                           {"ClsGlobal", "object"},
                                                           {"Connection", "object"},
                                                           {"StatusBar", "object"},
                                                           {"ActiveFrame", "object"},
                                                           {"ActiveNavigator", "object"},
                                                           {"ClsVoceMenu", "object"}};
    for (const auto& [name, value] : expected) {
        QJsonValue read;
        EXPECT_EQ("", session->getClassProperty(QString::fromUtf8(name), read));
        EXPECT_EQ(value, read) << name;
    }
}

TEST_F(Session, ClosesTheFormAndOpensItAgain) {
    start();
    bool gone = false;
    EXPECT_NE("", session->closeForm(gone));
    EXPECT_EQ("", session->openForm());
    EXPECT_EQ("", session->closeForm(gone));
    EXPECT_TRUE(gone);
    EXPECT_FALSE(session->formOpen());
    QJsonValue value;
    EXPECT_NE("", session->getClassProperty("Caption", value)) << "the class goes with its form";
    EXPECT_EQ("", session->openForm());
    EXPECT_TRUE(session->formOpen());
}

TEST_F(Session, ARefusedCloseLeavesTheFormWhereItWas) {
    start();
    EXPECT_EQ("", session->openForm());
    for (const char* who : {"frame", "script"}) {
        EXPECT_EQ("", session->setHostProperty("refuse_close", who));
        bool gone = true;
        EXPECT_EQ("", session->closeForm(gone));
        EXPECT_FALSE(gone) << who;
        EXPECT_TRUE(session->formOpen()) << who;
    }
    EXPECT_EQ("", session->setHostProperty("refuse_close", ""));
    bool gone = false;
    EXPECT_EQ("", session->closeForm(gone));
    EXPECT_TRUE(gone);
}

TEST_F(Session, AFormThatItsCloseButtonClosedIsReleased) {
    start();
    EXPECT_EQ("", session->openForm());
    EXPECT_TRUE(session->formWindow()->pressClose());
    EXPECT_FALSE(session->formOpen());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
    EXPECT_EQ("", session->openForm());
    EXPECT_TRUE(session->formOpen());
}

TEST_F(Session, ChangingTheCompanySaysSoAndClosesTheForm) {
    start();
    EXPECT_EQ("", session->openForm());
    session->setCompany(2);
    EXPECT_EQ(2, session->company());
    EXPECT_FALSE(session->formOpen());
    const auto shown = session->dialogs().takeShown();
    ASSERT_EQ(1U, shown.size());
    EXPECT_EQ(QStringLiteral("Cambiando l'azienda di lavoro è necessario uscire e rientrare nel programma."),
              shown[0].text);
    EXPECT_EQ(48, shown[0].style);
    EXPECT_EQ("Manutenzione distinte", shown[0].title);
}

TEST_F(Session, PassesDataToTheListener) {
    start();
    EXPECT_EQ("", session->openForm());
    session->journal().take();
    QJsonValue result = 5;
    EXPECT_EQ("", session->callClass("TransferData", "dati", result));
    EXPECT_TRUE(result.isNull());
    const QJsonArray calls = session->journal().take();
    ASSERT_EQ(1, calls.size());
    EXPECT_EQ("DataTransfer", calls[0]["operation"].toString());
    EXPECT_EQ("dati", calls[0]["data"].toString());
    EXPECT_EQ("", session->callClass("BeforeExportToOffice", {}, result));
    EXPECT_NE("", session->callClass("Altro", {}, result));
}

TEST_F(Session, ReadsTheFormsState) {
    start();
    std::vector<std::pair<std::string, Value>> values;
    EXPECT_NE("", session->state(values));
    EXPECT_EQ("", session->openForm());
    EXPECT_EQ("", session->state(values));
    const auto at =
        std::find_if(values.begin(), values.end(), [](const auto& v) { return v.first == "IdDistintaOrig"; });
    ASSERT_NE(values.end(), at);
    EXPECT_EQ("1", at->second.text());
}

TEST_F(Session, KnowsItsSettings) {
    start();
    auto& appearance = platform::qt::Appearance::instance();
    EXPECT_EQ("", session->setHostProperty("theme", "scuro"));
    EXPECT_EQ(platform::qt::ThemeKind::dark, appearance.theme());
    EXPECT_EQ("", session->setHostProperty("theme", "chiaro"));
    EXPECT_EQ(platform::qt::ThemeKind::light, appearance.theme());
    EXPECT_EQ("", session->setHostProperty("zoom", 14));
    EXPECT_EQ(14, appearance.zoom());
    EXPECT_EQ("", session->setHostProperty("zoom", 10));
    EXPECT_NE("", session->setHostProperty("theme", "rosa"));
    EXPECT_NE("", session->setHostProperty("zoom", 9));
    EXPECT_NE("", session->setHostProperty("zoom", "10"));
    EXPECT_NE("", session->setHostProperty("refuse_close", "tutti"));
    EXPECT_NE("", session->setHostProperty("altro", 1));
}

TEST_F(Session, TheMenuBarsDetailsHideAndShowTheGrids) {
    start();
    EXPECT_EQ("mnuDettagli", session->menuEntries().value(0));
    EXPECT_FALSE(session->menuEntryEnabled("mnuDettagli"));
    EXPECT_NE("", session->chooseMenuEntry("mnuDettagli"));
    EXPECT_EQ("", session->openForm());
    EXPECT_TRUE(session->menuEntryEnabled("mnuDettagli"));
    const auto* grid = session->formWindow()->contractControl("GRD_DETTDISTINTAORIG");
    ASSERT_NE(nullptr, grid);
    EXPECT_TRUE(grid->visible());
    EXPECT_EQ("", session->chooseMenuEntry("mnuDettagli"));
    EXPECT_FALSE(grid->visible());
    EXPECT_EQ("", session->chooseMenuEntry("mnuDettagli"));
    EXPECT_TRUE(grid->visible());
    EXPECT_NE("", session->chooseMenuEntry("mnuAltro"));
}

TEST_F(Session, AModalFormIsOpenWhileItStands) {
    start();
    bool stood = false;
    platform::qt::Session::instance().modalOpened = [&](platform::qt::FormWindow& form) {
        stood = form.formName() == QLatin1String(HostSession::mainForm) && session->formOpen();
        session->registerModels();
    };
    EXPECT_EQ("", session->openForm({{"WindowModal", true}}));
    EXPECT_TRUE(stood);
    EXPECT_FALSE(session->formOpen());
    EXPECT_EQ(1, operations().count("LayoutObjectModel.registerForm"));
}

TEST_F(Session, TheFormsStatementsAreTracedAndTheHostsOwnAreNot) {
    start();
    session->companies();
    EXPECT_TRUE(session->trace().take().isEmpty());
    EXPECT_EQ("", session->openForm());
    const QStringList statements = session->trace().take();
    EXPECT_EQ("SELECT * FROM QZ02_DISTINTA WHERE 1=0 ", statements.value(0));
    for (const QString& statement : statements)
        EXPECT_FALSE(statement.contains("STATI_LEGAME")) << statement.toStdString();
}

TEST_F(Session, TheStatusBarShowsContextAndText) {
    start();
    QString told;
    QObject::connect(session.get(), &HostSession::statusText, [&](const QString& text) { told = text; });
    EXPECT_EQ("", session->openForm());
    QCoreApplication::processEvents();
    EXPECT_FALSE(told.isEmpty());
    session->setUser("BIANCHI", "ACQUISTI");
    EXPECT_EQ("BIANCHI", session->user());
    EXPECT_EQ("ACQUISTI", session->group());
    EXPECT_EQ("prova.sqlite", session->databaseName());
}

} // namespace
