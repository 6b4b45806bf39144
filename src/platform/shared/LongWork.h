#pragma once

#include "contract/Progress.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace platform::shared {

/// The work that the program does for its user now: what it says of itself, and whether the user may and does give it
/// up. Of the thread that asks: what other threads do is nobody's work.
///
/// A work that may be given up says so by begin() and end(); a work within another one is a part of it. What was kept
/// is not given up any more, until the outermost work has ended. Databases ask between two statements and within one.
class LongWork {
public:
    /// What a work told last.
    struct Step {
        std::string what; ///< empty: it tells nothing
        std::uint64_t done = 0;
        std::optional<std::uint64_t> total;
        std::string unit; ///< what is counted, in the plural; empty for nothing said
    };

    static LongWork& instance();

    void begin();
    void end() noexcept;
    /// The work is about to keep what it did. Nothing outside of a work that may be given up.
    void kept() noexcept;
    bool cancellable() const { return depth_ > 0 && !kept_; }

    /// The user gives the work up. Too late, or where nothing can be given up, it is not heard.
    void cancel() { cancelled_ = cancelled_ || cancellable(); }
    bool cancelled() const { return cancelled_ && cancellable(); }

    /// Asks the user's side, though not more often than every few milliseconds; true when the work must stop. Within a
    /// statement nothing may use the database meanwhile.
    bool stops(bool withinStatement = false);
    /// Throws contract::Cancelled when the work must stop.
    void check() {
        if (stops())
            throw contract::Cancelled();
    }
    /// The same, after the work has said how far it is. The unit lasts until the outermost work ends.
    void reached(std::string_view what, std::uint64_t done, std::optional<std::uint64_t> total);
    void counts(std::string_view unit) { step_.unit = unit; }
    const Step& step() const { return step_; }

    /// A statement of the component has run.
    void statementDone() { ++statements_; }
    /// Gives the work up as soon as so many statements have run from now on, at the first moment where that can be:
    /// what a script does for a person. Nothing: not at all.
    void cancelAfter(std::optional<std::uint64_t> statements);

    /// Whether a statement is under way while the user's side is asked.
    bool withinStatement() const { return withinStatement_; }
    /// Whether anybody listens: without, a statement need not be watched.
    bool watched() const { return static_cast<bool>(working); }

    /// The user's side: called while a work goes on; it may call cancel(). It must not throw.
    std::function<void()> working;
    /// Whether the work may be given up has changed, or it has ended. It must not throw.
    std::function<void()> changed;

    /// What happens meanwhile is no part of the work: nobody is asked, nothing stops.
    class Aside {
    public:
        explicit Aside(LongWork& work = instance()) : work_(work) { ++work_.aside_; }
        Aside(const Aside&) = delete;
        Aside& operator=(const Aside&) = delete;
        ~Aside() { --work_.aside_; }

    private:
        LongWork& work_;
    };
    /// A work that may be given up, as long as the object lives.
    class Cancellable {
    public:
        explicit Cancellable(LongWork& work = instance()) : work_(work) { work_.begin(); }
        Cancellable(const Cancellable&) = delete;
        Cancellable& operator=(const Cancellable&) = delete;
        ~Cancellable() { work_.end(); }

    private:
        LongWork& work_;
    };

private:
    using Clock = std::chrono::steady_clock;

    void tell() const;

    int depth_ = 0;
    int aside_ = 0;
    bool kept_ = false;
    bool cancelled_ = false;
    bool withinStatement_ = false;
    Step step_;
    Clock::time_point asked_;
    std::uint64_t statements_ = 0; ///< since cancelAfter()
    std::optional<std::uint64_t> cancelAt_;
};

} // namespace platform::shared
