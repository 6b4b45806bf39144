#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace contract {

/// A run-time error: what a failing step throws and the error display shows.
class RuntimeError : public std::runtime_error {
public:
    static constexpr int invalidCall = 5;
    static constexpr int overflow = 6;
    static constexpr int typeMismatch = 13;
    static constexpr int objectNotSet = 91;
    static constexpr int noCurrentRecord = 3021;
    static constexpr int itemNotFound = 3265;
    /// A database reported the error; its own codes stand in the connection's Errors.
    static constexpr int database = -2147217900;

    RuntimeError(int number, std::string description)
        : std::runtime_error(description), number_(number), description_(std::move(description)) {}

    int number() const { return number_; }
    /// UTF-8, in the user's language.
    const std::string& description() const { return description_; }

private:
    int number_;
    std::string description_;
};

} // namespace contract
