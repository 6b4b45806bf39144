#pragma once

#include <functional>

namespace platform::qt {

/// Runs what an event of the window system sets off. No exception may cross the window system: one that comes is
/// written to the log.
void guarded(const std::function<void()>& action);

} // namespace platform::qt
