// What a busy program hears: a click on "Annulla" and the key Esc.

#include "host/windows/BusyIndicator.h"
#include "host/windows/WorkBar.h"
#include "platform/shared/LongWork.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QResizeEvent>

namespace host {

using platform::shared::LongWork;

// Neither timers nor sockets; what was posted runs, and what is painted is what stood there before: nothing may use the
// database within a statement.
void BusyIndicator::listen() {
    if (listening_)
        return;
    listening_ = true;
    if (still_)
        still_->setUpdatesEnabled(false);
    QCoreApplication::processEvents(QEventLoop::X11ExcludeTimers | QEventLoop::ExcludeSocketNotifiers);
    if (QWidget* still = still_.data())
        still->setUpdatesEnabled(true);
    listening_ = false;
}

void BusyIndicator::giveUp() {
    LongWork::instance().cancel();
    if (LongWork::instance().cancelled())
        show(QStringLiteral("Annullamento in corso…"));
}

bool BusyIndicator::press(const QPoint& at, bool down) {
    const auto under = [&at](const QAbstractButton* button) {
        return button != nullptr && button->isVisible() && button->isEnabled() &&
               button->rect().contains(button->mapFromGlobal(at));
    };
    const WorkBar* bar = bar_.data();
    auto* const front = bar != nullptr ? bar->button() : nullptr;
    auto* const button = under(front) ? front : (under(cancel_) ? cancel_.data() : nullptr);
    if (down) {
        pressed_ = button;
        if (button != nullptr) {
            button->setDown(true);
            button->repaint();
        }
        return button != nullptr;
    }
    const bool clicked = button != nullptr && button == pressed_;
    if (QAbstractButton* pressed = pressed_.data())
        pressed->setDown(false);
    pressed_.clear();
    if (clicked)
        giveUp();
    return clicked;
}

bool BusyIndicator::hold(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease: {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        if (mouse->button() == Qt::LeftButton)
            press(mouse->globalPosition().toPoint(), event->type() != QEvent::MouseButtonRelease);
        event->accept();
        return true;
    }
    case QEvent::KeyPress:
    case QEvent::ShortcutOverride:
        if (static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape)
            giveUp();
        // Accepted: the key is no shortcut either.
        event->accept();
        return true;
    case QEvent::Close:
        event->ignore();
        return true;
    case QEvent::Resize:
        // The form in it would lay itself out; it is told afterwards.
        if (watched != still_)
            return false;
        if (!resizedFrom_.isValid())
            resizedFrom_ = static_cast<QResizeEvent*>(event)->oldSize();
        return true;
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::MouseMove:
    case QEvent::Enter:
    case QEvent::Leave:
    case QEvent::HoverEnter:
    case QEvent::HoverMove:
    case QEvent::HoverLeave:
    case QEvent::ToolTip:
    case QEvent::WhatsThis:
    case QEvent::FocusIn:
    case QEvent::FocusOut:
    case QEvent::FocusAboutToChange:
    case QEvent::InputMethod:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::DragLeave:
    case QEvent::Drop:
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TouchCancel:
    case QEvent::NativeGesture:
        return true;
    default:
        return false;
    }
}

} // namespace host
