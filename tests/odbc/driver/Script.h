#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace scripted {

/// A diagnostic record that the driver gives.
struct Diagnostic {
    std::string state;
    int native = 0;
    std::string text; ///< ASCII
};

struct ResultColumn {
    std::string name; ///< ASCII
    int type = 0;     ///< SQL_...
    std::size_t size = 0;
    int scale = 0;
};

using Cell = std::optional<std::u16string>;

/// What the server answers to one text.
struct Answer {
    std::vector<ResultColumn> columns; ///< none: no rows
    std::vector<std::vector<Cell>> rows;
    long changed = 0;
    std::vector<Diagnostic> failure; ///< not empty: the statement fails
};

/// What a test tells the driver, and what the driver has seen. One for the whole process.
struct Script {
    std::function<Answer(const std::string& text)> answer;
    std::vector<Diagnostic> connectFailure;
    std::vector<Diagnostic> rollbackFailure;
    std::vector<Diagnostic> commitFailure;
    /// Decides about a call that is no statement ("connect", "disconnect", "autocommit off", "autocommit on", "commit",
    /// "rollback"): with records it fails. Where there is none, the failures above hold.
    std::function<std::vector<Diagnostic>(const std::string& call)> served;
    std::vector<std::string> calls;  ///< "connect", "disconnect", a statement's text, "autocommit off", "commit", ...
    std::vector<int> fetchSizes;     ///< rows that each fetch asked for
    std::function<void()> cancelled; ///< a statement is to be cancelled; called from another thread than its own
    std::string connectionString;
    std::size_t loginTimeout = 0;
    std::size_t queryTimeout = 0;
    std::size_t connectionTimeout = 0;
    int openResults = 0;
    int mostOpenResults = 0;
    bool dead = false; ///< what the driver says of its connection
};

/// Name of the driver's function that gives its script.
inline constexpr const char* scriptFunction = "scriptedDriverScript";
using ScriptFunction = Script* (*)();

} // namespace scripted
