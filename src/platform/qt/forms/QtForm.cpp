#include "platform/qt/forms/QtForm.h"

#include "platform/qt/fields/Buttons.h"
#include "platform/qt/forms/Guarded.h"
#include "platform/qt/forms/LayoutControls.h"
#include "platform/qt/look/Appearance.h"
#include "platform/qt/look/PlainText.h"

#include <QCoreApplication>

#include <algorithm>

namespace platform::qt {

void QtForm::adopt(QWidget* window, FormArea* area) {
    window_ = window;
    area_ = area;
    window->setObjectName(formName());
    area->setObjectName(formName() + QStringLiteral(".area"));
    // The first key or mouse button may already lead to a menu.
    LastInput::instance();
    QObject::connect(area, &FormArea::resized, context(), [this] { guarded([this] { areaResized(); }); });
    QObject::connect(area, &FormArea::enterPressed, context(), [this] {
        if (auto* accept = dynamic_cast<ButtonControl*>(acceptButton_); accept != nullptr && visible())
            accept->button()->click();
    });
    QObject::connect(area, &FormArea::escapePressed, context(), [this] {
        if (auto* cancel = dynamic_cast<ButtonControl*>(cancelButton_); cancel != nullptr && visible())
            cancel->button()->click();
        else if (visible() && modal_)
            pressClose();
    });
}

QtForm::~QtForm() {
    retire();
}

void QtForm::retire() {
    context_.reset();
    *alive_ = false;
    Session::instance().closed(*this);
    if (loop_ != nullptr)
        loop_->quit();
    popups_.clear();
    // In the reverse order of their making, as they may know earlier ones.
    while (!entries_.empty())
        entries_.pop_back();
    if (window_) {
        window_->hide();
        window_->deleteLater();
    }
}

void QtForm::setCaption(std::string_view caption) {
    caption_ = caption;
    if (window_) {
        window_->setWindowTitle(titleText(spoken(formCaption())));
        window_->setAccessibleName(spoken(formCaption()));
    }
}

void QtForm::load() {
    loaded_ = true;
    const auto alive = alive_;
    contract::fire(Load);
    if (!*alive || gone_)
        return;
    if (container_ != nullptr)
        contract::fire(container_->FormLoad);
}

void QtForm::show(bool modal) {
    if (gone_)
        return;
    const auto alive = alive_;
    const bool first = !shown_;
    if (first)
        modal_ = modal;
    if (!loaded_) {
        load();
        if (!*alive || gone_)
            return;
    }
    if (first) {
        shown_ = true;
        Session::instance().opened(*this);
        standModal(modal_);
        showWindow();
    } else {
        activateWindow();
    }
    if (!*alive || gone_)
        return;
    contract::fire(Activate);
    if (*alive && !gone_ && first && modal_)
        waitUntilUnloaded();
}

void QtForm::waitUntilUnloaded() {
    const auto alive = alive_;
    if (!Session::instance().unattended()) {
        QEventLoop loop;
        loop_ = &loop;
        loop.exec();
        if (*alive)
            loop_ = nullptr;
        return;
    }
    // The window system makes it the active window.
    processEvents();
    if (!*alive || gone_)
        return;
    const auto opened = Session::instance().modalOpened;
    opened(*this);
    if (!*alive || gone_)
        return;
    pressClose();
    // Nobody is there who could press it again.
    if (*alive && !gone_)
        discard();
}

bool QtForm::unload() {
    if (gone_)
        return true;
    if (leaving_)
        return false;
    const auto alive = alive_;
    if (!loaded_) {
        leave();
        return true;
    }
    leaving_ = true;
    bool cancel = false;
    try {
        cancel = !mayLeave();
        if (*alive && !cancel)
            contract::fire(QueryUnload, cancel);
    } catch (...) {
        if (*alive)
            leaving_ = false;
        throw;
    }
    if (!*alive)
        return true;
    if (cancel) {
        leaving_ = false;
        return false;
    }
    discard();
    return true;
}

void QtForm::discard() {
    const auto alive = alive_;
    leaving_ = true;
    try {
        contract::fire(Unload);
    } catch (...) {
        // The error comes through, but the window does not stay.
        if (*alive)
            leave();
        throw;
    }
    if (*alive)
        leave();
}

void QtForm::leave() {
    if (gone_)
        return;
    gone_ = true;
    Session::instance().closed(*this);
    if (shown_)
        standModal(false);
    if (window_)
        hideWindow();
    if (loop_ != nullptr)
        loop_->quit();
}

bool QtForm::pressClose() {
    if (gone_)
        return true;
    bool closed = false;
    const auto alive = alive_;
    guarded([&] { closed = unload(); });
    return closed || !*alive || gone_;
}

void QtForm::setDefaultButtons(contract::Button* accept, contract::Button* cancel) {
    acceptButton_ = accept;
    cancelButton_ = cancel;
}

void QtForm::lockUpdate(bool locked) {
    updateLocks_ = locked ? updateLocks_ + 1 : std::max(updateLocks_ - 1, 0);
    if (area_)
        area_->setUpdatesEnabled(updateLocks_ == 0);
}

void QtForm::processEvents() {
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void QtForm::areaResized() {
    if (!visible() || resize_ == nullptr)
        return;
    resize_->areaResized();
}

void QtForm::resizeForm(contract::Twips width, contract::Twips height) {
    setWindowState(0);
    const contract::Rect present = bounds();
    setBounds({present.left, present.top, width, height});
}

QStringList QtForm::controlNames() const {
    QStringList names;
    for (const auto& entry : entries_)
        names.append(entry.name);
    return names;
}

const QtForm::Entry* QtForm::find(const QString& name) const {
    for (const auto& entry : entries_)
        if (entry.name == name)
            return &entry;
    return nullptr;
}

const QtForm::Entry* QtForm::find(const contract::Control* control) const {
    for (const auto& entry : entries_)
        if (entry.control.get() == control)
            return &entry;
    return nullptr;
}

Scriptable* QtForm::control(const QString& name) {
    const Entry* entry = find(name);
    return entry == nullptr ? nullptr : entry->script;
}

const contract::Control* QtForm::contractControl(const QString& name) const {
    const Entry* entry = find(name);
    return entry == nullptr ? nullptr : entry->control.get();
}

contract::Rect QtForm::controlBounds(const QString& name) const {
    const Entry* entry = find(name);
    if (entry == nullptr)
        return {};
    contract::Rect bounds = entry->control->bounds();
    // The host's own controls stand beside the area.
    const QWidget* widget = entry->script->widget();
    const QWidget* content = area_;
    if (entry->parent == nullptr && widget != nullptr && content != nullptr && widget->parentWidget() != content) {
        const QPoint offset = content->mapFromGlobal(widget->parentWidget()->mapToGlobal(QPoint(0, 0)));
        bounds.left += Appearance::twips(offset.x());
        bounds.top += Appearance::twips(offset.y());
    }
    for (entry = find(entry->parent); entry != nullptr; entry = find(entry->parent)) {
        const contract::Rect around = entry->control->bounds();
        bounds.left += around.left;
        bounds.top += around.top;
    }
    return bounds;
}

} // namespace platform::qt
