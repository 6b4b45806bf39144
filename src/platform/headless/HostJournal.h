#pragma once

#include "contract/RuntimeError.h"

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace platform::headless {

/// Every call that reached the host, in order, as "Object.Operation(argument, argument)"; and what is to fail.
class HostJournal {
public:
    /// Told of every call when it is noted; what it throws, the call throws.
    std::function<void(std::string_view line)> onCall;

    /// Notes the call, then throws what failCall() asked for.
    void call(std::string_view operation, std::initializer_list<std::string> arguments = {});
    /// Notes a line as it is.
    void note(std::string_view line) { lines_.emplace_back(line); }

    /// Lets the n-th call, counted from 1 from now on, of an operation ("LogClass.ShowMessage") fail.
    void failCall(std::string_view operation, int nth, contract::RuntimeError error);

    const std::vector<std::string>& lines() const { return lines_; }
    /// The lines noted since the last time.
    std::vector<std::string> take();
    /// The lines that begin so.
    std::vector<std::string> lines(std::string_view beginning) const;
    std::size_t count(std::string_view beginning) const { return lines(beginning).size(); }
    /// Index of the first line that begins so; count of lines when there is none.
    std::size_t first(std::string_view beginning) const;

private:
    struct Failure {
        int callsLeft;
        contract::RuntimeError error;
    };

    std::vector<std::string> lines_;
    std::size_t taken_ = 0;
    std::multimap<std::string, Failure, std::less<>> failures_;
};

} // namespace platform::headless
