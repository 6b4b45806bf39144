#pragma once

#include "platform/odbc/ConnectionString.h"

#include <stdexcept>
#include <string>

namespace host {

/// Exit statuses of the program.
enum class ExitStatus : int { success = 0, refused = 1, usage = 2, database = 3 };

/// Why the program can not start: one line in the user's language that says what and where, and the exit status. A
/// connection string that came to the wrong place (another option, a file's name) is told without its password.
class StartFailure : public std::runtime_error {
public:
    StartFailure(ExitStatus status, const std::string& message)
        : std::runtime_error(platform::odbc::withoutPasswords(message, {})), status_(status) {}
    ExitStatus status() const { return status_; }
    /// The user has read it in a window.
    bool shown() const { return shown_; }
    void setShown() { shown_ = true; }

private:
    ExitStatus status_;
    bool shown_ = false;
};

} // namespace host
