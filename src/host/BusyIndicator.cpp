#include "host/BusyIndicator.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QEvent>

namespace host {

BusyIndicator::BusyIndicator(std::function<void(const QString&)> show, QObject* parent)
    : QObject(parent), show_(std::move(show)) {
    command_.start();
    auto* dispatcher = QAbstractEventDispatcher::instance();
    connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, this, &BusyIndicator::atRest);
    connect(dispatcher, &QAbstractEventDispatcher::awake, this, [this] {
        if (!working_) {
            working_ = true;
            before_ = statements_;
            command_.restart();
        }
    });
    qApp->installEventFilter(this);
}

void BusyIndicator::atRest() {
    working_ = false;
    if (!showing_)
        return;
    showing_ = false;
    QApplication::restoreOverrideCursor();
    show_(QString());
}

void BusyIndicator::statementDone(std::uint64_t statements) {
    statements_ = statements;
    if (command_.elapsed() < patience || (showing_ && painted_.elapsed() < repaintInterval))
        return;
    if (!showing_) {
        showing_ = true;
        QApplication::setOverrideCursor(Qt::WaitCursor);
    }
    painted_.start();
    show_(QStringLiteral("In corso da %1 s: %2 istruzioni eseguite…")
              .arg(command_.elapsed() / 1000)
              .arg(statements_ - before_));
}

bool BusyIndicator::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::ShortcutOverride:
    case QEvent::ContextMenu:
        return showing_ && event->spontaneous();
    default:
        return QObject::eventFilter(watched, event);
    }
}

} // namespace host
