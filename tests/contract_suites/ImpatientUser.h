#pragma once

#include "platform/shared/LongWork.h"

#include <chrono>

namespace contract_suites {

/// A user who looks on, and gives up the work after a time.
class ImpatientUser {
public:
    using Time = std::chrono::milliseconds;

    explicit ImpatientUser(Time patience) : until_(Clock::now() + patience) {
        work().working = [this] {
            ++looked_;
            within_ = within_ || work().withinStatement();
            if (Clock::now() >= until_ && gaveUp_ == Clock::time_point()) {
                gaveUp_ = Clock::now();
                work().cancel();
            }
        };
    }
    ImpatientUser(const ImpatientUser&) = delete;
    ImpatientUser& operator=(const ImpatientUser&) = delete;
    ~ImpatientUser() { work().working = {}; }

    int looked() const { return looked_; }
    /// Whether ever within a statement.
    bool lookedWithin() const { return within_; }
    bool gaveUp() const { return gaveUp_ != Clock::time_point(); }
    Time sinceGivingUp() const { return std::chrono::duration_cast<Time>(Clock::now() - gaveUp_); }

private:
    using Clock = std::chrono::steady_clock;
    static platform::shared::LongWork& work() { return platform::shared::LongWork::instance(); }

    Clock::time_point until_;
    Clock::time_point gaveUp_;
    int looked_ = 0;
    bool within_ = false;
};

} // namespace contract_suites
