#pragma once

#include <condition_variable>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>

namespace platform::odbc {

/// Carries calls out in a thread of its own, one at a time, while the thread that asked for one looks round: a driver
/// gives nobody a word before its call is over.
class Watch {
public:
    Watch() = default;
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;
    ~Watch();

    /// Carries a call out and returns when it is over; calls look again and again meanwhile, every few milliseconds,
    /// here. Throws what the call threw. look must not throw.
    void run(std::function<void()> call, const std::function<void()>& look);

private:
    void work();

    std::mutex mutex_;
    std::condition_variable changed_;
    std::thread thread_; ///< begins with the first call
    std::function<void()> call_;
    std::exception_ptr thrown_;
    bool ends_ = false;
};

} // namespace platform::odbc
