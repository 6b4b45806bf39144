#pragma once

#include "platform/qt/look/Appearance.h"

#include <QApplication>

namespace qt_tests {

/// The application that widgets need, for test programs whose main() makes none.
inline void ensureApplication() {
    if (qApp != nullptr)
        return;
    static int count = 1;
    static char name[] = "test_qt";
    static char* arguments[] = {name, nullptr};
    // Never deleted: it would have to outlive every widget and every static of Qt's.
    new QApplication(count, arguments);
    platform::qt::Appearance::instance().apply();
}

} // namespace qt_tests
