#pragma once

#include <chrono>
#include <functional>
#include <string_view>

namespace platform::shared {

/// How long the databases have kept a user's command waiting, over all its operations and connections.
///
/// A program that says when its commands begin has each of them wait once: what one operation has waited is not waited
/// again by the next one. Otherwise every operation waits for itself. For the program's one thread.
class Waiting {
public:
    using Time = std::chrono::milliseconds;

    static Waiting& instance();

    /// Whether operations belong to commands, which commandBegins() tells apart. Not at first.
    void boundCommands(bool bound);
    bool boundsCommands() const { return bound_; }
    /// A command begins, or the user has a step of one tried again.
    void commandBegins() { spent_ = Time(0); }

    /// An operation meets something that it has to wait for.
    void operationWaits();
    void add(Time time) { spent_ += time; }
    /// What is left of this longest wait, not below 0.
    Time left(Time longest) const;

    /// Tells the user while an operation waits: which database for, and who keeps it, empty where nobody knows.
    std::function<void(std::string_view database, std::string_view holder)> told;

private:
    bool bound_ = false;
    Time spent_{0};
};

} // namespace platform::shared
