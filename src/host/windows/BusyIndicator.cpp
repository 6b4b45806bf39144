#include "host/windows/BusyIndicator.h"

#include "host/services/Text.h"
#include "host/windows/WorkBar.h"
#include "platform/qt/forms/CaptionedControl.h"
#include "platform/shared/LongWork.h"

#include <QAbstractButton>
#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QEvent>
#include <QLocale>
#include <QMenu>
#include <QResizeEvent>

#include <utility>

namespace host {

using platform::shared::LongWork;

namespace {

constexpr int toldAgain = 1000; ///< milliseconds that a text of somebody else's stands at most

} // namespace

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
    LongWork::instance().working = [this] { working(); };
    LongWork::instance().changed = [this] { offer(); };
}

BusyIndicator::~BusyIndicator() {
    LongWork::instance().working = {};
    LongWork::instance().changed = {};
}

void BusyIndicator::setSurroundings(QWidget* window, QWidget* still, QAbstractButton* cancel) {
    window_ = window;
    still_ = still;
    cancel_ = cancel;
    cancel_->hide();
    // For who presses it by another way than the mouse.
    connect(cancel_, &QAbstractButton::clicked, this, &BusyIndicator::giveUp);
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
    endShow();
    if (tookLong)
        dropWaitingInput();
}

void BusyIndicator::statementDone(std::uint64_t statements) {
    statements_ = statements;
    told_.invalidate();
    if (command_.elapsed() >= patience && (!showing_ || painted_.elapsed() >= repaintInterval))
        show(description());
}

QString BusyIndicator::description() const {
    const auto& step = LongWork::instance().step();
    const auto seconds = command_.elapsed() / 1000;
    if (LongWork::instance().cancelled())
        return QStringLiteral("Annullamento in corso…");
    if (step.what.empty())
        return QStringLiteral("%1: in corso da %2 s, %3 istruzioni eseguite…")
            .arg(name_.isEmpty() ? QStringLiteral("Elaborazione") : name_)
            .arg(seconds)
            .arg(statements_ - before_);
    const QLocale italian(QLocale::Italian);
    QString text = toQt(step.what);
    if (step.total)
        text += QStringLiteral(": %1 di %2").arg(italian.toString(step.done), italian.toString(*step.total));
    else if (step.done > 0)
        text += QStringLiteral(": ") + italian.toString(step.done);
    if (!step.unit.empty() && (step.total || step.done > 0))
        text += QLatin1Char(' ') + toQt(step.unit);
    return text + QStringLiteral(", da %1 s…").arg(seconds);
}

// A work looks up from time to time.
void BusyIndicator::working() {
    if (!showing_ && command_.elapsed() < patience)
        return;
    const bool others = told_.isValid() && told_.elapsed() < toldAgain;
    if (!others && (!showing_ || painted_.elapsed() >= repaintInterval))
        show(description());
    if (LongWork::instance().cancellable())
        listen();
}

void BusyIndicator::tell(const QString& text) {
    told_.start();
    show(text);
}

void BusyIndicator::show(const QString& text) {
    // What is painted may read the database.
    const LongWork::Aside aside;
    if (!showing_) {
        showing_ = true;
        QApplication::setOverrideCursor(Qt::WaitCursor);
        auto* front = QApplication::activeModalWidget();
        if (front == nullptr)
            front = QApplication::activeWindow();
        if (window_ && front != nullptr && front != window_)
            bar_ = new WorkBar(*front);
    }
    painted_.start();
    offer();
    show_(text);
    if (WorkBar* bar = bar_.data()) {
        bar->setText(text);
        bar->repaint();
    }
}

void BusyIndicator::endShow() {
    if (!showing_)
        return;
    showing_ = false;
    told_.invalidate();
    QApplication::restoreOverrideCursor();
    delete bar_;
    if (QAbstractButton* pressed = pressed_.data())
        pressed->setDown(false);
    pressed_.clear();
    offer();
    show_(QString());
    if (QWidget* still = still_.data(); still != nullptr && resizedFrom_.isValid()) {
        QResizeEvent resized(still->size(), std::exchange(resizedFrom_, QSize()));
        QCoreApplication::sendEvent(still, &resized);
    }
}

// The button stands while the display does, and serves while the work can be given up.
void BusyIndicator::offer() {
    const bool serves = LongWork::instance().cancellable() && !LongWork::instance().cancelled();
    if (QAbstractButton* cancel = cancel_.data()) {
        cancel->setVisible(showing_);
        cancel->setEnabled(serves);
    }
    if (const WorkBar* bar = bar_.data())
        bar->button()->setEnabled(serves);
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
    if (listening_)
        return hold(watched, event) || QObject::eventFilter(watched, event);
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
