#include "host/windows/BusyIndicator.h"

#include "platform/qt/forms/CaptionedControl.h"

#include <QAbstractButton>
#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QEvent>
#include <QMenu>

namespace host {

BusyIndicator::BusyIndicator(std::function<void(const QString&)> show, QObject* parent)
    : QObject(parent), show_(std::move(show)) {
    command_.start();
    auto* dispatcher = QAbstractEventDispatcher::instance();
    connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, this, &BusyIndicator::atRest);
    connect(dispatcher, &QAbstractEventDispatcher::awake, this, [this] {
        if (!working_)
            commandBegins();
    });
    qApp->installEventFilter(this);
}

void BusyIndicator::commandBegins() {
    working_ = true;
    before_ = statements_;
    command_.restart();
}

void BusyIndicator::dropWaitingInput() {
    if (dropping_)
        return;
    dropping_ = true;
    QCoreApplication::processEvents();
    dropping_ = false;
    // The loop is about to wait, and what ended it may just have been dealt with.
    QAbstractEventDispatcher::instance()->wakeUp();
}

// The loop tells before it waits, whether anything waits for it or not.
void BusyIndicator::atRest() {
    const bool tookLong = showing_ || stale_ || (fresh_ && command_.elapsed() > dropAfter);
    fresh_ = stale_ = false;
    working_ = false;
    // A dialog that waits for its answer is part of the command.
    if (QApplication::activeModalWidget() == nullptr)
        name_.clear();
    if (showing_) {
        showing_ = false;
        QApplication::restoreOverrideCursor();
        show_(QString());
    }
    if (tookLong)
        dropWaitingInput();
}

void BusyIndicator::statementDone(std::uint64_t statements) {
    statements_ = statements;
    if (command_.elapsed() < patience || (showing_ && painted_.elapsed() < repaintInterval))
        return;
    tell(QStringLiteral("%1: in corso da %2 s, %3 istruzioni eseguite…")
             .arg(name_.isEmpty() ? QStringLiteral("Elaborazione") : name_)
             .arg(command_.elapsed() / 1000)
             .arg(statements_ - before_));
}

void BusyIndicator::tell(const QString& text) {
    if (!showing_) {
        showing_ = true;
        QApplication::setOverrideCursor(Qt::WaitCursor);
    }
    painted_.start();
    show_(text);
}

void BusyIndicator::rememberCommand(QObject* used) {
    QString caption;
    if (const auto* button = qobject_cast<QAbstractButton*>(used); button != nullptr && !button->window()->isModal())
        caption = button->text();
    else if (const auto* menu = qobject_cast<QMenu*>(used); menu != nullptr && menu->activeAction() != nullptr)
        caption = menu->activeAction()->text();
    if (!caption.isEmpty())
        name_ = platform::qt::spoken(caption);
}

bool BusyIndicator::eventFilter(QObject* watched, QEvent* event) {
    const auto type = event->type();
    if (!showing_ && (type == QEvent::MouseButtonRelease || type == QEvent::KeyPress || type == QEvent::Shortcut))
        rememberCommand(watched);
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::ShortcutOverride:
    case QEvent::ContextMenu:
        if (!event->spontaneous())
            return false;
        // Without a rest since the last input, what comes now had to wait for the work that it started.
        stale_ = stale_ || (fresh_ && command_.elapsed() > dropAfter);
        if (showing_ || dropping_ || stale_)
            return true;
        // The work that an input starts is timed from it, not from what woke the loop before.
        commandBegins();
        fresh_ = true;
        return false;
    default:
        return QObject::eventFilter(watched, event);
    }
}

} // namespace host
