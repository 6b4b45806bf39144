#pragma once

#include "contract/Audit.h"
#include "contract/Date.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace host {

/// What the program was asked to do.
struct CommandLine {
    enum class Action : std::uint8_t { window, script, create, createDemo, version, help, check, compare, moves };
    /// How lists are written to standard output.
    enum class Format : std::uint8_t { text, csv, json };

    static constexpr std::int64_t defaultDemoSize = 2000;
    static constexpr std::int64_t largestDemoSize = 5'000'000;

    Action action = Action::window;
    std::optional<std::string> database;
    std::optional<std::string> odbc;
    std::int64_t demoSize = defaultDemoSize; ///< nodes, [1, largestDemoSize]
    std::optional<std::int64_t> company;
    std::string user = "ADMIN";
    std::string group = "ADMIN";
    std::optional<std::string> trace;
    std::optional<std::string> log;
    std::string script; ///< Action::script: a file, "-" for standard input
    /// Action::check: milder findings are left out.
    contract::AuditSeverity severity = contract::AuditSeverity::warning;
    std::array<std::string, 2> compared; ///< Action::compare: the distinte, each by its id or its code
    std::optional<contract::Date> date;  ///< Action::compare: nothing for today
    std::optional<Format> format;        ///< nothing: each action's own
    std::string moves;                   ///< Action::moves: a list
    bool apply = false;                  ///< Action::moves: done, not only shown
};

/// Reads the arguments, the program's own name left out. An option's value follows it or, after "=", stands in the same
/// argument. Throws StartFailure with status 2 and the reason.
CommandLine readCommandLine(const std::vector<std::string>& arguments);

/// What --help writes.
std::string helpText();

} // namespace host
