// What the menu "Strumenti" and "?" let a person choose and read.

#include "contract/RuntimeError.h"
#include "host/database/DatabaseAccess.h"
#include "host/services/Text.h"
#include "host/start/HostSession.h"
#include "host/start/StartFailure.h"
#include "host/start/StartWindow.h"
#include "host/start/UserFolders.h"
#include "host/windows/AppIcon.h"
#include "host/windows/CompanyChoice.h"
#include "host/windows/ConnectionDialog.h"
#include "host/windows/DialogButtons.h"
#include "host/windows/ErrorLogWindow.h"
#include "host/windows/MainWindow.h"
#include "host/windows/ManualWindow.h"
#include "host/windows/Prompts.h"
#include "host/windows/UserChoice.h"

#include <QMenu>
#include <QMessageBox>

namespace host {

void MainWindow::chooseCompany() {
    std::vector<CompanyChoice::Company> companies;
    try {
        companies = session_->companiesByName();
    } catch (const contract::RuntimeError& error) {
        tell(QMessageBox::Critical, windowTitle(), toQt(error.description()), this);
        return;
    }
    CompanyChoice choice(companies, session_->company(), this);
    if (choice.exec() != QDialog::Accepted || choice.company() == session_->company())
        return;
    saveForm();
    session_->setCompany(choice.company());
}

void MainWindow::rememberDatabase() {
    if (settings_ != nullptr)
        settings_->noteOpened(session_->connectionString());
}

void MainWindow::fillRecent(QMenu& menu) {
    menu.clear();
    int number = 0;
    for (const auto& each : settings_ != nullptr ? settings_->recentDatabases() : std::vector<std::string>()) {
        const QString name = toQt(databaseLabel(each)).replace(QLatin1Char('&'), QLatin1String("&&"));
        auto* action = menu.addAction(QStringLiteral("&%1  %2").arg(++number).arg(name), this,
                                      [this, each] { switchDatabase(each); });
        action->setToolTip(plainToolTip(placeOf(each)));
        action->setCheckable(true);
        action->setChecked(placeOf(each) == session_->databasePlace());
    }
    menu.setToolTipsVisible(true);
    if (menu.isEmpty())
        menu.addAction(QStringLiteral("&Nessuno"))->setEnabled(false);
}

void MainWindow::switchDatabase(const std::string& connectionString) {
    const std::string before = session_->connectionString();
    if (placeOf(connectionString) == session_->databasePlace())
        return;
    // Tried first: what does not open leaves everything as it is.
    session_->setDatabase(connectionString);
    const bool given = askPassword(*session_, this);
    const std::string wanted = session_->connectionString();
    session_->setDatabase(before);
    if (!given)
        return;
    if (const QString reason = session_->tryDatabase(wanted); !reason.isEmpty()) {
        tell(QMessageBox::Critical, windowTitle(), asSentence(reason), this);
        return;
    }
    saveForm();
    bool gone = true;
    if (session_->formOpen())
        session_->closeForm(gone);
    if (!gone)
        return;
    try {
        session_->setDatabase(wanted);
        session_->openDatabase();
    } catch (const StartFailure& failure) {
        tell(QMessageBox::Critical, windowTitle(), asSentence(QString::fromUtf8(failure.what())), this);
        session_->setDatabase(before);
        session_->openDatabase();
    }
    rememberDatabase();
    showContext();
    if (const QString refusal = session_->openForm(); !refusal.isEmpty())
        tell(QMessageBox::Critical, windowTitle(), asSentence(refusal), this);
}

void MainWindow::chooseUser() {
    UserChoice choice(session_->user(), session_->group(), this);
    if (choice.exec() == QDialog::Accepted)
        session_->setUser(choice.user(), choice.group());
}

void MainWindow::chooseConnection() {
    ConnectionDialog dialog(
        session_->connectionString(),
        [this](const std::string& connectionString) { return session_->tryDatabase(connectionString); }, this);
    if (dialog.exec() != QDialog::Accepted || settings_ == nullptr)
        return;
    const std::string chosen = dialog.connectionString();
    settings_->saveConnection(chosen);
    tell(QMessageBox::Information, windowTitle(),
         QStringLiteral("Dal prossimo avvio il programma apre\n%1").arg(toQt(databaseLabel(chosen))), this);
}

void MainWindow::showErrors() {
    ErrorLogWindow(session_->logFile(), this).exec();
}

void MainWindow::showManual(const QString& chapter) {
    if (manual_ == nullptr) {
        manual_ = new ManualWindow(manualFile(programFolder()), this);
        manual_->setAttribute(Qt::WA_DeleteOnClose);
    }
    manual_->show();
    manual_->raise();
    manual_->activateWindow();
    if (!chapter.isEmpty())
        manual_->showChapter(chapter);
}

void MainWindow::showAbout() {
    QMessageBox box(this);
    box.setWindowTitle(QStringLiteral("Licenza e versioni"));
    box.setIconPixmap(applicationIcon().pixmap(64));
    box.setTextFormat(Qt::PlainText);
    box.setText(QStringLiteral("Manutenzione distinte %1").arg(QStringLiteral(DISTINTE_VERSION)));
    box.setInformativeText(
        QStringLiteral("Sposta clienti e fornitori, con tutta la loro struttura, da una distinta all'altra.\n\n"
                       "%1\nDatabase: %2\nRegistro degli errori: %3\n\n"
                       "Tutti i diritti riservati: il permesso di usare, copiare o cedere il programma lo dà per "
                       "iscritto, caso per caso, chi lo cura.\n\n"
                       "Lavora con Qt %4 (LGPL 3), SQLite %5 (pubblico dominio), unixODBC (LGPL 2.1) e la libreria C++ "
                       "di GNU (GPL 3 con eccezione), come li dà il sistema.")
            .arg(contextText(), session_->databasePlace(), session_->logFile(), QLatin1String(qVersion()),
                 toQt(embeddedEngineVersion())));
    box.addButton(dialogButton(QStringLiteral("OK"), &box, true), QMessageBox::AcceptRole);
    box.exec();
}

} // namespace host
