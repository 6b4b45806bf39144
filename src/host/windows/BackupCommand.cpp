#include "host/windows/BackupCommand.h"

#include "contract/RuntimeError.h"
#include "host/database/Backup.h"
#include "host/services/Text.h"
#include "host/start/HostSession.h"
#include "host/windows/Prompts.h"
#include "host/windows/WorkProgress.h"

#include <QApplication>
#include <QDate>
#include <QFileDialog>
#include <QFileInfo>
#include <QLocale>

#include <utility>

namespace host {

namespace {

const QString title = QStringLiteral("Copia di sicurezza");

QString proposal(const QFileInfo& database) {
    return database.dir().filePath(
        QStringLiteral("%1-%2.%3")
            .arg(database.completeBaseName(), QDate::currentDate().toString(Qt::ISODate),
                 database.suffix().isEmpty() ? QStringLiteral("sqlite") : database.suffix()));
}

void backUpOf(const HostSession& session, QWidget& window, const std::function<void(const QString&)>& status) {
    const std::string database = session.databaseFile();
    if (database.empty()) {
        tell(QMessageBox::Information, title,
             QStringLiteral("Il database sta su un server: la sua copia di sicurezza si fa sul server."), &window);
        return;
    }
    const QString file = QFileDialog::getSaveFileName(&window, title, proposal(QFileInfo(toQt(database))),
                                                      QStringLiteral("Database (*.sqlite *.db);;Tutti i file (*)"));
    if (file.isEmpty())
        return;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    QString said;
    auto icon = QMessageBox::Information;
    bool givenUp = false;
    try {
        WorkProgress progress;
        const auto bytes = backUp(database, file.toStdString(), [&](int percent) {
            status(QStringLiteral("Copia di sicurezza: %1%").arg(percent));
            progress.reached("Copia di sicurezza", static_cast<std::uint64_t>(percent), 100);
        });
        said = QStringLiteral("Copia di sicurezza fatta, con gli stati dei legami: «%1», %2.")
                   .arg(QFileInfo(file).absoluteFilePath(),
                        QLocale(QLocale::Italian)
                            .formattedDataSize(static_cast<qint64>(bytes), 1, QLocale::DataSizeTraditionalFormat));
    } catch (const contract::RuntimeError& error) {
        icon = QMessageBox::Critical;
        said = toQt(error.description());
    } catch (const contract::Cancelled& cancelled) {
        givenUp = true;
        said = QString::fromUtf8(cancelled.what());
    }
    QApplication::restoreOverrideCursor();
    status(said);
    if (givenUp)
        return;
    tell(icon, title, said, &window);
}

} // namespace

void addBackupCommand(QMenu& menu, QWidget& window, std::function<HostSession*()> session,
                      std::function<void(const QString&)> status) {
    auto* action = menu.addAction(QStringLiteral("Co&pia di sicurezza…"));
    action->setObjectName(QStringLiteral("mnuCopiaSicurezza"));
    QObject::connect(action, &QAction::triggered, &window,
                     [&window, session = std::move(session), status = std::move(status)] {
                         if (const auto* open = session())
                             backUpOf(*open, window, status);
                     });
}

} // namespace host
