#include "platform/qt/forms/PopupPresenter.h"

#include "platform/qt/forms/Guarded.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QCursor>
#include <QKeyEvent>
#include <QMouseEvent>

namespace platform::qt {

PopupPresenter::PopupPresenter(const QString& name, QWidget* parent, std::function<void(const QString&)> chosen)
    : name_(name), menu_(new QMenu(parent)), watch_(menu_), chosen_(std::move(chosen)) {
    menu_->setAccessibleName(name);
    QObject::connect(menu_, &QMenu::aboutToHide, &context_, [this] { Session::instance().popupClosed(*this); });
    QObject::connect(menu_, &QMenu::triggered, &context_, [this](const QAction* action) {
        const auto tell = chosen_; // the choice may end this object
        const QString item = action->data().toString();
        guarded([&] { tell(item); });
    });
}

PopupPresenter::~PopupPresenter() {
    Session::instance().popupClosed(*this);
    if (watch_)
        menu_->deleteLater();
}

QAction* PopupPresenter::addItem(const QString& name, const QString& caption) {
    QAction* action = menu_->addAction(caption);
    action->setData(name);
    return action;
}

QAction* PopupPresenter::item(const QString& name) const {
    if (!watch_)
        return nullptr;
    const auto actions = menu_->actions();
    for (QAction* action : actions)
        if (action->data().toString() == name)
            return action;
    return nullptr;
}

void PopupPresenter::setLeastWidth(int width) {
    if (watch_)
        menu_->setMinimumWidth(width);
}

void PopupPresenter::nameMenu() {
    if (watch_)
        menu_->setObjectName(name_);
}

void PopupPresenter::open(const QPoint& point) {
    if (!watch_ || menu_->isEmpty())
        return;
    if (PopupWindow* other = Session::instance().popup(); other != nullptr && other != this)
        other->dismiss();
    Session::instance().popupOpened(*this);
    menu_->popup(point);
}

QStringList PopupPresenter::itemNames() const {
    QStringList names;
    if (!watch_)
        return names;
    const auto actions = menu_->actions();
    for (const QAction* action : actions)
        if (action->isVisible())
            names.append(action->data().toString());
    return names;
}

bool PopupPresenter::choose(const QString& item) {
    QAction* action = this->item(item);
    if (action == nullptr || !action->isEnabled() || !action->isVisible() || !menu_->isVisible())
        return false;
    menu_->setActiveAction(action);
    QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"));
    QCoreApplication::sendEvent(menu_, &enter);
    return true;
}

void PopupPresenter::dismiss() {
    if (watch_)
        menu_->close();
    Session::instance().popupClosed(*this);
}

LastInput& LastInput::instance() {
    static QPointer<LastInput> tracker;
    if (!tracker)
        tracker = new LastInput(qApp);
    return *tracker;
}

LastInput::LastInput(QObject* parent) : QObject(parent) {
    qApp->installEventFilter(this);
}

bool LastInput::eventFilter(QObject* receiver, QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        if (receiver->isWidgetType()) {
            fromKeyboard_ = false;
            mouse_ = static_cast<QMouseEvent*>(event)->globalPosition().toPoint();
        }
        break;
    case QEvent::KeyPress:
        fromKeyboard_ = true;
        break;
    case QEvent::ContextMenu:
        fromKeyboard_ = static_cast<QContextMenuEvent*>(event)->reason() == QContextMenuEvent::Keyboard;
        break;
    default:
        break;
    }
    return false;
}

QPoint LastInput::popupPoint() const {
    const QWidget* focused = QApplication::focusWidget();
    if (!fromKeyboard_ || focused == nullptr)
        return mouse_.value_or(QCursor::pos());
    const QRect cursor = focused->inputMethodQuery(Qt::ImCursorRectangle).toRect();
    return focused->mapToGlobal(cursor.isValid() ? cursor.bottomLeft() : focused->rect().center());
}

} // namespace platform::qt
