#include "platform/shared/LongWork.h"

namespace platform::shared {

namespace {

constexpr std::chrono::milliseconds interval{20};

} // namespace

LongWork& LongWork::instance() {
    static thread_local LongWork work;
    return work;
}

void LongWork::tell() const {
    if (changed)
        changed();
}

void LongWork::begin() {
    if (depth_++ == 0)
        tell();
}

void LongWork::end() noexcept {
    if (--depth_ > 0)
        return;
    kept_ = cancelled_ = false;
    step_ = Step();
    tell();
}

void LongWork::kept() noexcept {
    if (depth_ == 0 || kept_)
        return;
    kept_ = true;
    cancelled_ = false;
    tell();
}

bool LongWork::stops(bool withinStatement) {
    if (aside_ > 0)
        return false;
    if (!withinStatement && cancelAt_ && statements_ >= *cancelAt_ && cancellable()) {
        cancelAt_.reset();
        cancel();
    }
    const auto now = Clock::now();
    if (working && now - asked_ >= interval) {
        asked_ = now;
        const Aside aside(*this);
        withinStatement_ = withinStatement;
        working();
        withinStatement_ = false;
    }
    return cancelled();
}

void LongWork::reached(std::string_view what, std::uint64_t done, std::optional<std::uint64_t> total) {
    step_.what = what;
    step_.done = done;
    step_.total = total;
    check();
}

void LongWork::cancelAfter(std::optional<std::uint64_t> statements) {
    statements_ = 0;
    cancelAt_ = statements;
}

} // namespace platform::shared
