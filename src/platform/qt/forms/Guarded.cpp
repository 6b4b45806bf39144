#include "platform/qt/forms/Guarded.h"

#include <QtGlobal>

#include <exception>

namespace platform::qt {

void guarded(const std::function<void()>& action) {
    try {
        action();
    } catch (const std::exception& error) {
        qWarning("A listener failed: %s", error.what());
    } catch (...) {
        qWarning("A listener failed.");
    }
}

} // namespace platform::qt
