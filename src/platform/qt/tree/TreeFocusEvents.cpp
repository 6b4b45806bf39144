#include "platform/qt/tree/TreeFocusEvents.h"

#include "platform/qt/forms/Guarded.h"

#include <utility>

namespace platform::qt {

namespace {

void tell(const std::function<void()>& listener) {
    if (listener)
        listener();
}

} // namespace

TreeFocusEvents::TreeFocusEvents() {
    keys_.setSingleShot(true);
    keys_.setInterval(0); // fires when every key that had arrived is dealt with
    rest_.setSingleShot(true);
    rest_.setInterval(restMilliseconds);
    connect(&keys_, &QTimer::timeout, this, [this] { guarded([this] { flush(); }); });
    connect(&rest_, &QTimer::timeout, this, [this] { guarded([this] { settle(); }); });
}

void TreeFocusEvents::nodeMoved() {
    node_ = true;
    wait();
}

void TreeFocusEvents::columnMoved() {
    column_ = true;
    wait();
}

void TreeFocusEvents::wait() {
    if (held_ == 0)
        keys_.start();
}

void TreeFocusEvents::release(bool byKey) {
    if (--held_ > 0 || (!node_ && !column_))
        return;
    if (byKey)
        keys_.start();
    else
        flush();
}

void TreeFocusEvents::flush() {
    keys_.stop();
    if (std::exchange(node_, false)) {
        rest_.stop();
        resting_ = true;
        tell(changed);
        if (resting_)
            rest_.start();
    }
    if (std::exchange(column_, false))
        tell(columnChanged);
}

void TreeFocusEvents::settle() {
    flush();
    rest_.stop();
    if (std::exchange(resting_, false))
        tell(rested);
}

void TreeFocusEvents::raiseAll() {
    forget();
    tell(changed);
    tell(rested);
}

void TreeFocusEvents::forget() {
    keys_.stop();
    rest_.stop();
    node_ = column_ = resting_ = false;
}

} // namespace platform::qt
