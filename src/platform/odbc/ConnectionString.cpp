#include "platform/odbc/ConnectionString.h"

#include <algorithm>

namespace platform::odbc {

namespace {

constexpr std::string_view mask = "***";
constexpr std::string_view blanks = " \t\r\n";
/// Shorter passwords could stand in a text by chance; they go with their keyword only.
constexpr std::size_t shortestPassword = 4;

std::string lowered(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return result;
}

std::string_view trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

bool isPassword(std::string_view keyword) {
    const std::string name = lowered(trimmed(keyword));
    return name == "pwd" || name == "password";
}

bool holdsPassword(const std::string& keyword, const std::string& raw) {
    const std::string text = keyword + "=" + raw;
    return isPassword(keyword) || withoutPasswords(text, {}) != text;
}

/// Length of the value at the front of the text, up to its semicolon or to the end.
std::size_t valueLength(std::string_view text) {
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos || text[first] != '{')
        return std::min(text.find(';'), text.size());
    for (std::size_t at = first + 1; at < text.size(); ++at) {
        if (text[at] != '}')
            continue;
        if (at + 1 < text.size() && text[at + 1] == '}') {
            ++at;
            continue;
        }
        return std::min(text.find(';', at), text.size());
    }
    // A brace that nothing closes: all the rest may be a password.
    return text.size();
}

std::string withoutBraces(std::string_view raw) {
    const auto text = trimmed(raw);
    if (text.empty() || text.front() != '{')
        return std::string(text);
    std::string value;
    for (std::size_t at = 1; at < text.size(); ++at) {
        if (text[at] == '}') {
            if (at + 1 >= text.size() || text[at + 1] != '}')
                break;
            ++at;
        }
        value += text[at];
    }
    return value;
}

std::string withBraces(std::string_view value) {
    if (!value.empty() && value.find_first_of("{};=[]()?*!@, \t\r\n") == std::string_view::npos)
        return std::string(value);
    std::string text = "{";
    for (const char c : value) {
        text += c;
        if (c == '}')
            text += c;
    }
    return text + "}";
}

} // namespace

ConnectionString::ConnectionString(std::string_view text) {
    while (!text.empty()) {
        const auto equals = text.find('=');
        const auto semicolon = text.find(';');
        if (equals == std::string_view::npos || semicolon < equals) {
            const auto part = trimmed(text.substr(0, semicolon));
            if (!part.empty())
                entries_.push_back({{}, std::string(part)});
            text.remove_prefix(semicolon == std::string_view::npos ? text.size() : semicolon + 1);
            continue;
        }
        const auto keyword = trimmed(text.substr(0, equals));
        text.remove_prefix(equals + 1);
        const auto length = valueLength(text);
        const auto raw = trimmed(text.substr(0, length));
        // Without a keyword it is no value, and stays as it is.
        entries_.push_back({std::string(keyword), (keyword.empty() ? "=" : "") + std::string(raw)});
        text.remove_prefix(std::min(length + 1, text.size()));
    }
}

const ConnectionString::Entry* ConnectionString::find(std::string_view keyword) const {
    const std::string wanted = lowered(keyword);
    const auto at = std::find_if(entries_.begin(), entries_.end(),
                                 [&](const Entry& entry) { return lowered(entry.keyword) == wanted; });
    return at == entries_.end() ? nullptr : &*at;
}

std::optional<std::string> ConnectionString::value(std::string_view keyword) const {
    const auto* entry = find(keyword);
    return entry == nullptr ? std::nullopt : std::optional(withoutBraces(entry->raw));
}

void ConnectionString::set(std::string_view keyword, std::string_view value) {
    if (const auto* entry = find(keyword))
        entries_[static_cast<std::size_t>(entry - entries_.data())].raw = withBraces(value);
    else
        entries_.push_back({std::string(keyword), withBraces(value)});
}

void ConnectionString::remove(std::string_view keyword) {
    const std::string wanted = lowered(keyword);
    std::erase_if(entries_, [&](const Entry& entry) { return lowered(entry.keyword) == wanted; });
}

void ConnectionString::removePasswords() {
    // Also one that a brace which nothing closes has made a part of another value.
    std::erase_if(entries_, [](const Entry& entry) { return holdsPassword(entry.keyword, entry.raw); });
}

std::string ConnectionString::text() const {
    std::string text;
    for (const auto& entry : entries_) {
        if (!text.empty())
            text += ';';
        if (!entry.keyword.empty())
            text += entry.keyword + '=';
        text += entry.raw;
    }
    return text;
}

std::string ConnectionString::masked() const {
    ConnectionString shown = *this;
    for (auto& entry : shown.entries_)
        if (holdsPassword(entry.keyword, entry.raw))
            entry.raw = mask;
    return shown.text();
}

std::string ConnectionString::driverText(std::uintptr_t seconds) const {
    constexpr std::string_view ownTimeout = "Timeout"; // of FreeTDS; another driver may mean something else by it
    ConnectionString given = *this;
    given.remove(statementTimeout);
    const std::string driver = lowered(value("Driver").value_or(""));
    const bool freeTds = driver.find("freetds") != std::string::npos || driver.find("tdsodbc") != std::string::npos;
    if (seconds > 0 && freeTds && !value(ownTimeout))
        given.set(ownTimeout, std::to_string(seconds));
    if (freeTds)
        for (auto& entry : given.entries_)
            if (const auto raw = trimmed(entry.raw); !entry.keyword.empty() && !raw.empty() && raw.front() == '{')
                entry.raw = "{" + withoutBraces(raw) + "}";
    // FreeTDS's driver sees the end of a value in braces by the semicolon behind it.
    return given.text() + ";";
}

std::vector<std::string> ConnectionString::passwords() const {
    std::vector<std::string> all;
    for (const auto& entry : entries_)
        if (isPassword(entry.keyword))
            all.push_back(withoutBraces(entry.raw));
    return all;
}

std::string ConnectionString::name() const {
    std::string text;
    for (const std::string_view keyword : {"Server", "Servername", "Address"})
        if (const auto found = value(keyword); found && text.empty())
            text = *found;
    if (const auto port = value("Port"); port && !text.empty())
        text += ":" + *port;
    if (const auto database = value("Database"); database && !database->empty())
        text += (text.empty() ? "" : "/") + *database;
    if (text.empty())
        text = value("DSN").value_or(value("FileDSN").value_or(""));
    return withoutPasswords(text.empty() ? "ODBC" : text, passwords());
}

std::string withoutPasswords(std::string text, const std::vector<std::string>& passwords) {
    for (const auto& password : passwords) {
        if (password.size() < shortestPassword)
            continue;
        for (auto at = text.find(password); at != std::string::npos; at = text.find(password, at + mask.size()))
            text.replace(at, password.size(), mask);
    }
    const std::string_view keywords[] = {"pwd", "password"};
    for (const auto keyword : keywords) {
        for (std::size_t from = 0;;) {
            const auto at = lowered(text).find(keyword, from);
            if (at == std::string::npos)
                break;
            from = at + keyword.size();
            auto value = text.find_first_not_of(blanks, from);
            if (value == std::string::npos || text[value] != '=')
                continue;
            ++value;
            text.replace(value, valueLength(std::string_view(text).substr(value)), mask);
            from = value + mask.size();
        }
    }
    return text;
}

} // namespace platform::odbc
