#include "platform/headless/HostJournal.h"

namespace platform::headless {

void HostJournal::call(std::string_view operation, std::initializer_list<std::string> arguments) {
    std::string line(operation);
    line += '(';
    const char* separator = "";
    for (const auto& argument : arguments) {
        line += separator;
        line += argument;
        separator = ", ";
    }
    line += ')';
    lines_.push_back(line);
    if (onCall)
        onCall(line);

    const auto [begin, end] = failures_.equal_range(operation);
    auto due = failures_.end();
    for (auto failure = begin; failure != end; ++failure)
        if (--failure->second.callsLeft == 0)
            due = failure;
    if (due == failures_.end())
        return;
    const auto error = due->second.error;
    failures_.erase(due);
    throw error;
}

void HostJournal::failCall(std::string_view operation, int nth, contract::RuntimeError error) {
    failures_.emplace(operation, Failure{nth, std::move(error)});
}

std::vector<std::string> HostJournal::take() {
    std::vector<std::string> lines(lines_.begin() + static_cast<std::ptrdiff_t>(taken_), lines_.end());
    taken_ = lines_.size();
    return lines;
}

std::vector<std::string> HostJournal::lines(std::string_view beginning) const {
    std::vector<std::string> found;
    for (const auto& line : lines_)
        if (line.starts_with(beginning))
            found.push_back(line);
    return found;
}

std::size_t HostJournal::first(std::string_view beginning) const {
    std::size_t at = 0;
    while (at < lines_.size() && !lines_[at].starts_with(beginning))
        ++at;
    return at;
}

} // namespace platform::headless
