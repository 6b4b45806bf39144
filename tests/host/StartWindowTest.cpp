// A start that fails, as a person meets it.

#include "host/start/StartWindow.h"

#include "TestSession.h"
#include "host/database/DatabaseAccess.h"
#include "host/start/HostSession.h"
#include "host/start/StartFailure.h"
#include "host/start/UserSettings.h"
#include "host/windows/MainWindow.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

#include <gtest/gtest.h>

#include <deque>
#include <filesystem>

namespace {

using host::StartWindow;

/// Answers the windows that wait for a person, one after the other.
class Person {
public:
    using Act = std::function<void(QWidget& window)>;
    explicit Person(std::deque<Act> acts) : acts_(std::move(acts)) {
        QObject::connect(&timer_, &QTimer::timeout, [this] {
            auto* window = QApplication::activeModalWidget();
            if (window == nullptr || window == answered_)
                return;
            answered_ = window;
            if (acts_.empty()) {
                ADD_FAILURE() << "another window: " << window->objectName().toStdString();
                window->close();
                return;
            }
            const Act act = std::move(acts_.front());
            acts_.pop_front();
            QTimer::singleShot(0, window, [this] { answered_ = nullptr; });
            act(*window);
        });
        timer_.start(2);
    }
    ~Person() { EXPECT_TRUE(acts_.empty()) << acts_.size() << " windows did not come"; }

private:
    std::deque<Act> acts_;
    QWidget* answered_ = nullptr;
    QTimer timer_;
};

QString textOf(const QWidget& window, const char* label) {
    const auto* found = window.findChild<QLabel*>(QLatin1String(label));
    return found != nullptr ? found->text() : QString();
}

void press(QWidget& window, const char* button) {
    auto* found = window.findChild<QPushButton*>(QLatin1String(button));
    ASSERT_NE(nullptr, found) << button;
    found->click();
}

class PersonalStart : public testing::Test {
protected:
    PersonalStart() {
        host::createDatabase(host::embeddedDatabase(file), host_test::component().schema(), 40);
        settings.logFile = QString::fromStdString(folder.file("errori.log"));
    }
    ~PersonalStart() override { session.reset(); }
    void open(const std::string& connectionString, bool named = false) {
        settings.connectionString = connectionString;
        session = std::make_unique<host::HostSession>(settings, host_test::component(), window.area(), &window);
        host::openForAPerson(*session, remembered, named);
    }

    struct Application {
        Application() { host_test::needApplication(); }
    } application; // before the window
    host_test::Folder folder;
    host_test::Environment config{"XDG_CONFIG_HOME", folder.path().c_str()};
    std::string file = folder.file("prova.sqlite");
    host::SessionSettings settings;
    host::UserSettings remembered;
    host::MainWindow window{nullptr};
    std::unique_ptr<host::HostSession> session;
};

TEST_F(PersonalStart, AGoodOneAsksNothing) {
    const Person nobody({});
    open(host::embeddedDatabase(file));
    EXPECT_EQ(1, session->company());
}

TEST_F(PersonalStart, SaysWhyAndWhatToDo) {
    const std::string text = folder.file("testo.sqlite");
    host_test::write(text, std::string(5000, 'x'));
    const std::pair<std::string, const char*> cases[] = {
        {folder.file("manca.sqlite"), "spostato, rinominato"},
        {folder.path().string(), "non la cartella"},
        {text, "«Apri…» ne sceglie un altro"},
    };
    for (const auto& [path, advice] : cases) {
        const Person person({[&, advice = advice](QWidget& shown) {
            EXPECT_EQ(QStringLiteral("avvio"), shown.objectName());
            EXPECT_TRUE(textOf(shown, "motivo").contains(QString::fromStdString(path)))
                << textOf(shown, "motivo").toStdString();
            EXPECT_TRUE(textOf(shown, "rimedio").contains(QString::fromUtf8(advice)))
                << textOf(shown, "rimedio").toStdString();
            press(shown, "esci");
        }});
        try {
            open(host::embeddedDatabase(path), true);
            ADD_FAILURE() << path;
        } catch (const host::StartFailure& failure) {
            EXPECT_EQ(host::ExitStatus::database, failure.status());
            EXPECT_TRUE(failure.shown());
        }
    }
}

TEST_F(PersonalStart, OneThatWasMendedMeanwhileOpensAgain) {
    std::filesystem::rename(file, file + ".via");
    const Person person({[&](QWidget& shown) {
        std::filesystem::rename(file + ".via", file);
        press(shown, "riprova");
    }});
    open(host::embeddedDatabase(file));
    EXPECT_EQ(1, session->company());
}

TEST_F(PersonalStart, AnotherDatabaseIsChosenInItsPlace) {
    for (const bool named : {true, false}) {
        const Person person(
            {[](QWidget& shown) { press(shown, "connessione"); },
             [&](QWidget& shown) {
                 shown.findChild<QLineEdit*>(QStringLiteral("file"))->setText(QString::fromStdString(file));
                 press(shown, "conferma");
             }});
        open(host::embeddedDatabase(folder.file("manca.sqlite")), named);
        EXPECT_EQ(1, session->company());
        // One that the command line names serves this once.
        EXPECT_EQ(named, !host::UserSettings().savedConnection().has_value());
    }
}

TEST_F(PersonalStart, AWrongPasswordIsAskedForAgain) {
    int asked = 0;
    const auto give = [&](QWidget& shown) {
        ++asked;
        auto* field = shown.findChild<QLineEdit*>();
        EXPECT_EQ(QString(), field->text());
        field->setText(QStringLiteral("sbagliata"));
        static_cast<QDialog&>(shown).accept();
    };
    // Nothing listens on that port.
    const std::string server = "Driver=FreeTDS;Server=127.0.0.1;Port=1;UID=sa";
    const Person person({give,
                         [](QWidget& shown) {
                             EXPECT_TRUE(
                                 textOf(shown, "rimedio").contains(QStringLiteral("chiede di nuovo la password")));
                             EXPECT_FALSE(textOf(shown, "motivo").contains(QStringLiteral("sbagliata")));
                             // The driver's words stand apart.
                             EXPECT_FALSE(textOf(shown, "motivo").contains(QLatin1Char('(')));
                             EXPECT_TRUE(textOf(shown, "dettaglio").contains(QStringLiteral("08S01")));
                             press(shown, "riprova");
                         },
                         give, [](QWidget& shown) { press(shown, "esci"); }});
    EXPECT_THROW(open(server), host::StartFailure);
    EXPECT_EQ(2, asked);
}

TEST_F(PersonalStart, WhereNoDatabaseHelpsOnlyTheEndIsOffered) {
    const StartWindow shown(QStringLiteral("la libreria manca"), {}, StartWindow::Offer::nothing);
    EXPECT_EQ(1, shown.findChildren<QPushButton*>().size());
    EXPECT_EQ(QStringLiteral("La libreria manca."), textOf(shown, "motivo"));
}

} // namespace
