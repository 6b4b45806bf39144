#include "host/database/CommandWaits.h"

#include "host/services/Text.h"
#include "platform/shared/Waiting.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QMessageBox>

#include <utility>

namespace host {

using platform::shared::Waiting;

CommandWaits::CommandWaits(std::function<void(const QString&)> show, QObject* parent) : QObject(parent) {
    auto& waiting = Waiting::instance();
    waiting.boundCommands(true);
    waiting.told = [tell = std::move(show)](std::string_view database, std::string_view holder) {
        tell(QStringLiteral("In attesa: il database «%1» è occupato da %2…")
                 .arg(toQt(database), holder.empty() ? QStringLiteral("un altro programma") : toQt(holder)));
    };
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this, [] {
        if (qobject_cast<QMessageBox*>(QApplication::activeModalWidget()) == nullptr)
            commandBegins();
    });
}

CommandWaits::~CommandWaits() {
    Waiting::instance().told = {};
    Waiting::instance().boundCommands(false);
}

void CommandWaits::commandBegins() {
    Waiting::instance().commandBegins();
}

} // namespace host
