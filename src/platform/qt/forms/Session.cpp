#include "platform/qt/forms/Session.h"

#include <algorithm>

namespace platform::qt {

Session& Session::instance() {
    static Session session;
    return session;
}

FormWindow* Session::front() const {
    return forms_.empty() ? nullptr : forms_.back();
}

FormWindow* Session::find(const QString& formName) const {
    // The one opened last answers for its name.
    const auto found = std::find_if(forms_.rbegin(), forms_.rend(),
                                    [&](const FormWindow* form) { return form->formName() == formName; });
    return found == forms_.rend() ? nullptr : *found;
}

void Session::opened(FormWindow& form) {
    closed(form);
    const auto firstModal =
        std::find_if(forms_.begin(), forms_.end(), [](const FormWindow* other) { return other->isModal(); });
    forms_.insert(form.isModal() ? forms_.end() : firstModal, &form);
}

void Session::closed(FormWindow& form) {
    std::erase(forms_, &form);
}

void Session::popupClosed(PopupWindow& menu) {
    if (popup_ == &menu)
        popup_ = nullptr;
}

} // namespace platform::qt
