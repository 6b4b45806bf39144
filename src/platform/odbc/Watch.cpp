#include "platform/odbc/Watch.h"

#include <chrono>
#include <utility>

namespace platform::odbc {

namespace {

constexpr std::chrono::milliseconds interval{25};

} // namespace

Watch::~Watch() {
    if (!thread_.joinable())
        return;
    {
        const std::lock_guard lock(mutex_);
        ends_ = true;
    }
    changed_.notify_all();
    thread_.join();
}

void Watch::run(std::function<void()> call, const std::function<void()>& look) {
    if (!thread_.joinable())
        thread_ = std::thread([this] { work(); });
    std::unique_lock lock(mutex_);
    call_ = std::move(call);
    thrown_ = nullptr;
    changed_.notify_all();
    while (!changed_.wait_for(lock, interval, [this] { return !call_; })) {
        lock.unlock();
        look();
        lock.lock();
    }
    if (thrown_)
        std::rethrow_exception(std::exchange(thrown_, nullptr));
}

void Watch::work() {
    std::unique_lock lock(mutex_);
    for (;;) {
        changed_.wait(lock, [this] { return ends_ || call_; });
        if (ends_)
            return;
        lock.unlock();
        std::exception_ptr thrown;
        try {
            call_();
        } catch (...) {
            thrown = std::current_exception();
        }
        lock.lock();
        thrown_ = thrown;
        call_ = nullptr;
        changed_.notify_all();
    }
}

} // namespace platform::odbc
