// The connection that the host remembers, and the dialog that asks for it.

#include "host/database/DatabaseAccess.h"
#include "host/database/DatabaseSetup.h"
#include "host/start/StartFailure.h"
#include "host/start/UserSettings.h"
#include "host/windows/ConnectionDialog.h"

#include "TestFolder.h"
#include "TestSession.h"
#include "contract/RuntimeError.h"
#include "host/start/UserFolders.h"
#include "property/WrappedConnection.h"

#include <QMessageBox>
#include <QTimer>

#include <gtest/gtest.h>

namespace {

using host::ConnectionDialog;
using host::UserSettings;
using host_test::Environment;
using host_test::Folder;

class SavedConnection : public testing::Test {
protected:
    Folder folder;
    Environment config{"XDG_CONFIG_HOME", folder.path().c_str()};
    std::string saved() const { return host_test::contentOf(folder.file("distinte/distinte.conf")); }
};

TEST_F(SavedConnection, NothingAtFirst) {
    EXPECT_FALSE(UserSettings().savedConnection().has_value());
}

TEST_F(SavedConnection, KeepsAFile) {
    UserSettings().saveConnection(host::embeddedDatabase("/dati/città.sqlite"));
    EXPECT_EQ("embedded:/dati/città.sqlite", UserSettings().savedConnection());
}

TEST_F(SavedConnection, KeepsAServerWithoutItsPassword) {
    UserSettings().saveConnection("Driver=FreeTDS;Server=erp;UID=sa;PWD={seg;reto};Password=segreto");
    EXPECT_EQ("Driver=FreeTDS;Server=erp;UID=sa", UserSettings().savedConnection());
    EXPECT_EQ(std::string::npos, saved().find("reto")) << saved();
}

TEST_F(SavedConnection, KeepsNoPasswordBehindABraceThatNothingCloses) {
    UserSettings().saveConnection("UID=sa;Driver={FreeTDS;Server=erp;PWD=segreto");
    EXPECT_EQ("UID=sa", UserSettings().savedConnection());
    EXPECT_EQ(std::string::npos, saved().find("segreto")) << saved();
}

TEST_F(SavedConnection, KeepsNoOtherSecretEither) {
    UserSettings().saveConnection("Server=erp;KeystoreSecret=segreto;AccessToken={seg;reto};ClientKey=segreto");
    EXPECT_EQ("Server=erp", UserSettings().savedConnection());
    EXPECT_EQ(std::string::npos, saved().find("reto")) << saved();
}

TEST_F(SavedConnection, TheLastOneSavedCounts) {
    UserSettings().saveConnection("DSN=erp");
    UserSettings().saveConnection(host::embeddedDatabase("/a.sqlite"));
    EXPECT_EQ("embedded:/a.sqlite", UserSettings().savedConnection());
    UserSettings().saveConnection("DSN=erp");
    EXPECT_EQ("DSN=erp", UserSettings().savedConnection());
}

TEST(Password, IsWantedForAUserWithoutOne) {
    EXPECT_TRUE(host::wantsPassword("Server=erp;UID=sa"));
    EXPECT_FALSE(host::wantsPassword("Server=erp;UID=sa;PWD=x"));
    EXPECT_FALSE(host::wantsPassword("Server=erp;Trusted_Connection=yes"));
    EXPECT_FALSE(host::wantsPassword("embedded:/UID=sa"));
    EXPECT_EQ("Server=erp;UID=sa;PWD={a;b}", host::withPassword("Server=erp;UID=sa", "a;b"));
}

TEST(Password, IsSaidToBeMissingWhereNobodyCanBeAsked) {
    EXPECT_NE(std::string::npos, host::passwordHint("Server=erp;UID=sa").find("DISTINTE_ODBC_PASSWORD"));
    // Told as it stands, and not taken for a password itself.
    EXPECT_EQ(host::passwordHint("Server=erp;UID=sa"),
              host::StartFailure(host::ExitStatus::database, host::passwordHint("Server=erp;UID=sa")).what());
    EXPECT_EQ("", host::passwordHint("Server=erp;UID=sa;PWD=x"));
    EXPECT_EQ("", host::passwordHint("embedded:/UID=sa"));
}

TEST(DatabaseLabel, IsWhatAUserCallsIt) {
    EXPECT_EQ("prova.sqlite", host::databaseLabel("embedded:/dati/prova.sqlite"));
    EXPECT_EQ("erp/Conti", host::databaseLabel("Driver=FreeTDS;Server=erp;Database=Conti;UID=sa;PWD=segreto"));
}

/// Fails a number of reads with an error of these categories.
class FailingConnection : public property::WrappedConnection {
public:
    FailingConnection(const std::string& string, int failures, std::vector<contract::ErrorCategory> categories)
        : WrappedConnection(host::newConnection(string)), failures_(failures) {
        for (const auto category : categories)
            records_.push_back({"08S01", 0, "away", category});
        Open();
    }
    void Read(const contract::Statement& statement, contract::Snapshot& rows) override {
        ++reads;
        if (failures_-- > 0)
            throw contract::RuntimeError(contract::RuntimeError::database, "non riuscita");
        WrappedConnection::Read(statement, rows);
    }
    const contract::ErrorList& Errors() const override { return records_; }
    int reads = 0;

private:
    int failures_;
    contract::ErrorList records_;
};

class ReadAgain : public testing::Test {
protected:
    static constexpr contract::Fragment one{"SELECT 1 AS A"};
    static constexpr auto lost = contract::ErrorCategory::lostConnection;
    Folder folder;
    std::string database = host::embeddedDatabase(folder.file("prova.sqlite"));
    ReadAgain() { host::createDatabase(database, host_test::component().schema(), std::nullopt); }
};

TEST_F(ReadAgain, AConnectionFoundLostIsAskedOnceMore) {
    FailingConnection connection(database, 1, {lost});
    contract::Snapshot rows;
    host::readAgainWhenLost(connection, contract::Statement(one), rows);
    EXPECT_EQ(1U, rows.rowCount());
    EXPECT_EQ(2, connection.reads);
}

TEST_F(ReadAgain, OneThatStaysAwayFails) {
    FailingConnection connection(database, 2, {lost});
    contract::Snapshot rows;
    EXPECT_THROW(host::readAgainWhenLost(connection, contract::Statement(one), rows), contract::RuntimeError);
    EXPECT_EQ(2, connection.reads);
}

TEST_F(ReadAgain, ATimeOutIsNoLostConnectionThoughTheConnectionGoesWithIt) {
    FailingConnection slow(database, 1, {contract::ErrorCategory::timeout, lost});
    contract::Snapshot rows;
    EXPECT_THROW(host::readAgainWhenLost(slow, contract::Statement(one), rows), contract::RuntimeError);
    EXPECT_EQ(1, slow.reads) << "who asks again only waits again";
}

TEST_F(ReadAgain, OtherErrorsAndTransactionsAreNotReadAgain) {
    FailingConnection refused(database, 1, {contract::ErrorCategory::permission});
    contract::Snapshot rows;
    EXPECT_THROW(host::readAgainWhenLost(refused, contract::Statement(one), rows), contract::RuntimeError);
    EXPECT_EQ(1, refused.reads);
    FailingConnection writing(database, 1, {lost});
    writing.BeginTrans();
    EXPECT_THROW(host::readAgainWhenLost(writing, contract::Statement(one), rows), contract::RuntimeError);
    EXPECT_EQ(1, writing.reads);
    writing.RollbackTrans();
}

class Dialog : public testing::Test {
protected:
    Dialog() { host_test::needApplication(); }

    template <class T> static T& field(ConnectionDialog& dialog, const char* name) {
        auto* found = dialog.findChild<T*>(QLatin1String(name));
        EXPECT_NE(nullptr, found) << name;
        return *found;
    }
    static QString served(const std::string&) { return {}; }
};

TEST_F(Dialog, GivesBackWhatItWasShown) {
    for (const std::string text :
         {"embedded:/dati/prova.sqlite",
          "Driver=FreeTDS;Server=erp;Port=1433;Database=Conti;UID=sa;PWD={a;b};StatementTimeout=30;TDS_Version=7.4",
          "Driver={ODBC Driver 18 for SQL Server};Server={erp,1433};Trusted_Connection=yes"})
        EXPECT_EQ(text, ConnectionDialog(text, served, nullptr).connectionString());
}

TEST_F(Dialog, NoPasswordAndNoUserWithIntegratedAuthentication) {
    ConnectionDialog dialog("Driver=FreeTDS;Server=erp;UID=sa;PWD=segreto", served, nullptr);
    field<QCheckBox>(dialog, "integrata").setChecked(true);
    EXPECT_EQ("Driver=FreeTDS;Server=erp;Trusted_Connection=yes", dialog.connectionString());
    EXPECT_FALSE(field<QLineEdit>(dialog, "utente").isEnabled());
    EXPECT_EQ(QLineEdit::Password, field<QLineEdit>(dialog, "password").echoMode());
}

TEST_F(Dialog, AsksForEncryptionInTheDriversOwnWords) {
    ConnectionDialog dialog("", served, nullptr);
    dialog.findChildren<QRadioButton*>().at(1)->click();
    field<QComboBox>(dialog, "driver").setEditText(QStringLiteral("FreeTDS"));
    field<QLineEdit>(dialog, "server").setText(QStringLiteral("erp"));
    EXPECT_EQ("Driver=FreeTDS;Server=erp;Encryption=require", dialog.connectionString());
    field<QComboBox>(dialog, "driver").setEditText(QStringLiteral("ODBC Driver 17 for SQL Server"));
    EXPECT_EQ("Driver={ODBC Driver 17 for SQL Server};Server=erp;Encrypt=yes", dialog.connectionString());
    field<QComboBox>(dialog, "driver").setEditText(QStringLiteral("ODBC Driver 18 for SQL Server"));
    EXPECT_EQ("Driver={ODBC Driver 18 for SQL Server};Server=erp", dialog.connectionString());
    auto& box = field<QCheckBox>(dialog, "cifrato");
    box.click();
    EXPECT_EQ("Driver={ODBC Driver 18 for SQL Server};Server=erp;Encrypt=no", dialog.connectionString());
    field<QComboBox>(dialog, "driver").setEditText(QStringLiteral("FreeTDS"));
    EXPECT_EQ("Driver=FreeTDS;Server=erp", dialog.connectionString());
    // What the other options say of it gives way to the box.
    field<QLineEdit>(dialog, "altre").setText(QStringLiteral("Encryption=require"));
    EXPECT_EQ("Driver=FreeTDS;Server=erp;Encryption=off;Encryption=require", dialog.connectionString());
    field<QComboBox>(dialog, "driver").setEditText(QStringLiteral("SQLite3"));
    EXPECT_FALSE(box.isEnabled());
}

TEST_F(Dialog, SaysWhatIsNotEncryptedAndKeepsIt) {
    const std::string plain = "Driver=FreeTDS;Server=erp;TDS_Version=7.4";
    ConnectionDialog dialog(plain, served, nullptr);
    const auto& hint = field<QLabel>(dialog, "cifratura");
    EXPECT_TRUE(hint.text().contains(QStringLiteral("non è cifrato"))) << hint.text().toStdString();
    EXPECT_EQ(plain, dialog.connectionString());
    field<QCheckBox>(dialog, "cifrato").click();
    EXPECT_FALSE(hint.text().contains(QStringLiteral("non è cifrato")));
    EXPECT_TRUE(hint.text().contains(QStringLiteral("ca file")));
    field<QCheckBox>(dialog, "cifrato").click();
    field<QLineEdit>(dialog, "server").setText(QStringLiteral("localhost"));
    EXPECT_TRUE(hint.text().contains(QStringLiteral("su questo computer"))) << hint.text().toStdString();
    for (const std::string text : {"Driver=FreeTDS;Server=erp;Encryption=require",
                                   "Driver={ODBC Driver 18 for SQL Server};Server=erp;Encrypt=no",
                                   "Driver={ODBC Driver 18 for SQL Server};Server=erp;Encrypt=strict"})
        EXPECT_EQ(text, ConnectionDialog(text, served, nullptr).connectionString());
    ConnectionDialog here("Driver=FreeTDS;Server=localhost;Encryption=require", served, nullptr);
    EXPECT_TRUE(field<QCheckBox>(here, "cifrato").isChecked());
}

/// Presses the button of that caption in the next message box; the text that the box showed.
struct Answerer {
    explicit Answerer(QString caption) {
        QObject::connect(&timer, &QTimer::timeout, [this, caption = std::move(caption)] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (box == nullptr)
                return;
            text = box->text();
            byDefault = box->defaultButton() != nullptr ? box->defaultButton()->text() : QString();
            for (auto* button : box->buttons())
                if (button->text() == caption)
                    button->click();
        });
        timer.start(5);
    }
    QTimer timer;
    QString text, byDefault;
};

TEST_F(Dialog, WhatDidNotServeIsConfirmedByASecondThoughtOnly) {
    QString answer = QStringLiteral("non risponde");
    ConnectionDialog dialog(
        "Driver=FreeTDS;Server=erp", [&](const std::string&) { return answer; }, nullptr);
    dialog.open();
    auto* accept = &field<QPushButton>(dialog, "conferma");
    field<QPushButton>(dialog, "prova").click();
    {
        Answerer no(QStringLiteral("&No"));
        accept->click();
        EXPECT_TRUE(no.text.contains(QStringLiteral("La prova non è riuscita")));
        EXPECT_EQ(QStringLiteral("&No"), no.byDefault);
    }
    EXPECT_TRUE(dialog.isVisible());
    {
        Answerer yes(QStringLiteral("&Sì"));
        accept->click();
    }
    EXPECT_EQ(QDialog::Accepted, dialog.result());
    // What was changed since has not been tried, and what served needs no question.
    dialog.open();
    field<QPushButton>(dialog, "prova").click();
    field<QLineEdit>(dialog, "server").setText(QStringLiteral("altro"));
    accept->click();
    EXPECT_FALSE(dialog.isVisible());
    dialog.open();
    answer.clear();
    field<QPushButton>(dialog, "prova").click();
    accept->click();
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(Dialog, AValueThatWouldBreakOutIsNotConfirmed) {
    ConnectionDialog dialog("Driver=FreeTDS;Server=erp;UID=sa", served, nullptr);
    dialog.open();
    field<QLineEdit>(dialog, "password").setText(QStringLiteral("x};Server=altrove"));
    field<QPushButton>(dialog, "conferma").click();
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_TRUE(field<QLabel>(dialog, "esito").text().contains(QStringLiteral("«};»")));
    field<QLineEdit>(dialog, "password").setText(QStringLiteral("x}Server=altrove"));
    field<QPushButton>(dialog, "conferma").click();
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(Dialog, TriesWhatTheFieldsSay) {
    std::string tried;
    QString answer = QStringLiteral("non risponde");
    ConnectionDialog dialog(
        "Driver=FreeTDS;Server=erp",
        [&](const std::string& text) {
            tried = text;
            return answer;
        },
        nullptr);
    field<QLineEdit>(dialog, "server").setText(QStringLiteral("altro"));
    field<QPushButton>(dialog, "prova").click();
    EXPECT_EQ("Driver=FreeTDS;Server=altro", tried);
    EXPECT_EQ(QStringLiteral("non risponde"), field<QLabel>(dialog, "esito").text());
    answer.clear();
    field<QPushButton>(dialog, "prova").click();
    EXPECT_EQ(QStringLiteral("La connessione riesce e le tabelle ci sono."), field<QLabel>(dialog, "esito").text());
}

TEST_F(Dialog, AnAnswerGoesWithTheFieldsItWasAbout) {
    const char* server = "Driver=FreeTDS;Server=erp";
    for (const char* name : {"server", "porta", "database", "utente", "password", "altre"}) {
        ConnectionDialog dialog(server, served, nullptr);
        field<QPushButton>(dialog, "prova").click();
        EXPECT_FALSE(field<QLabel>(dialog, "esito").text().isEmpty());
        field<QLineEdit>(dialog, name).setText(QStringLiteral("7"));
        EXPECT_EQ(QString(), field<QLabel>(dialog, "esito").text()) << name;
    }
    ConnectionDialog dialog(server, served, nullptr);
    field<QPushButton>(dialog, "prova").click();
    field<QSpinBox>(dialog, "attesa").setValue(9);
    EXPECT_EQ(QString(), field<QLabel>(dialog, "esito").text());
    field<QPushButton>(dialog, "prova").click();
    field<QComboBox>(dialog, "driver").setEditText(QStringLiteral("altro"));
    EXPECT_EQ(QString(), field<QLabel>(dialog, "esito").text());
    field<QPushButton>(dialog, "prova").click();
    field<QCheckBox>(dialog, "integrata").setChecked(true);
    EXPECT_EQ(QString(), field<QLabel>(dialog, "esito").text());
}

TEST_F(Dialog, TheFieldsKeepTheirPlacesWhenAnAnswerGetsShorter) {
    QString answer = QStringLiteral("il server non risponde ").repeated(30);
    ConnectionDialog dialog(
        "Driver=FreeTDS;Server=erp", [&](const std::string&) { return answer; }, nullptr);
    dialog.open();
    field<QPushButton>(dialog, "prova").click();
    QApplication::processEvents();
    const auto place = [&](const char* name) {
        auto& edit = field<QLineEdit>(dialog, name);
        return edit.mapTo(&dialog, QPoint(0, 0)).y();
    };
    const int server = place("server");
    const int others = place("altre");
    answer = QStringLiteral("no");
    field<QPushButton>(dialog, "prova").click();
    QApplication::processEvents();
    EXPECT_EQ(server, place("server"));
    EXPECT_EQ(others, place("altre"));
}

TEST_F(Dialog, OtherOptionsAloneMayNameTheServer) {
    ConnectionDialog dialog("Driver=FreeTDS;Server=erp", served, nullptr);
    field<QLineEdit>(dialog, "server").clear();
    EXPECT_FALSE(field<QPushButton>(dialog, "prova").isEnabled());
    field<QLineEdit>(dialog, "altre").setText(QStringLiteral("DSN=erp"));
    EXPECT_TRUE(field<QPushButton>(dialog, "prova").isEnabled());
}

TEST_F(Dialog, GrowsWithALongAnswerAndBeginsInTheChosenPart) {
    QString answer;
    ConnectionDialog dialog(
        "Driver=FreeTDS;Server=erp", [&](const std::string&) { return answer; }, nullptr);
    dialog.open();
    QApplication::processEvents();
    EXPECT_EQ(&field<QLineEdit>(dialog, "server"), dialog.focusWidget());
    const int height = dialog.height();
    const int user = field<QLineEdit>(dialog, "utente").y();
    answer = QStringLiteral("il server non risponde ").repeated(30);
    field<QPushButton>(dialog, "prova").click();
    QApplication::processEvents();
    EXPECT_GT(dialog.height(), height);
    EXPECT_EQ(user, field<QLineEdit>(dialog, "utente").y());
    auto& result = field<QLabel>(dialog, "esito");
    EXPECT_GE(result.height(), result.heightForWidth(result.width()));
}

TEST_F(Dialog, WantsAFileOrAServer) {
    ConnectionDialog dialog("", served, nullptr);
    EXPECT_FALSE(field<QPushButton>(dialog, "prova").isEnabled());
    field<QLineEdit>(dialog, "file").setText(QStringLiteral("/a.sqlite"));
    EXPECT_TRUE(field<QPushButton>(dialog, "prova").isEnabled());
    EXPECT_EQ("embedded:/a.sqlite", dialog.connectionString());
}

} // namespace
