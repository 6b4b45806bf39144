#include "platform/odbc/ConnectionString.h"

#include <algorithm>
#include <iterator>

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

bool isLetterOrDigit(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

/// Parts of the names under which drivers take secrets: passwords of logins, of key files and of key stores, clients'
/// secrets, tokens, private keys (which may be followed by their password).
constexpr std::string_view secretWords[] = {"pwd", "password", "passphrase", "secret", "token", "clientkey"};

bool isPassword(std::string_view keyword) {
    const std::string name = lowered(trimmed(keyword));
    return name == "pwd" || name == "password";
}

bool isSecret(std::string_view keyword) {
    const std::string name = lowered(keyword);
    return std::any_of(std::begin(secretWords), std::end(secretWords),
                       [&](std::string_view word) { return name.find(word) != std::string::npos; });
}

/// A certificate's file may be followed by its password: "file:cert.pfx,password:...".
bool namesPassword(std::string_view value) {
    return lowered(value).find("password:") != std::string::npos;
}

bool holdsSecret(const std::string& keyword, const std::string& raw) {
    const std::string text = keyword + "=" + raw;
    return isSecret(keyword) || namesPassword(raw) || withoutPasswords(text, {}) != text;
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

std::string inBraces(std::string_view value) {
    std::string text = "{";
    for (const char c : value) {
        text += c;
        if (c == '}')
            text += c;
    }
    return text + "}";
}

std::string withBraces(std::string_view value) {
    if (!value.empty() && value.find_first_of("{};=[]()?*!@, \t\r\n") == std::string_view::npos)
        return std::string(value);
    return inBraces(value);
}

} // namespace

DriverKind driverKind(std::string_view name) {
    const std::string driver = lowered(name);
    const auto names = [&](const char* part) { return driver.find(part) != std::string::npos; };
    if (names("freetds") || names("tdsodbc"))
        return DriverKind::freeTds;
    if (names("sqlite"))
        return DriverKind::sqlite;
    return names("sql server") || names("msodbcsql") ? DriverKind::microsoft : DriverKind::other;
}

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

void ConnectionString::removeSecrets() {
    // Also one that a brace which nothing closes has made a part of another value.
    std::erase_if(entries_, [](const Entry& entry) { return holdsSecret(entry.keyword, entry.raw); });
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
        if (holdsSecret(entry.keyword, entry.raw))
            entry.raw = mask;
    return shown.text();
}

DriverKind ConnectionString::driver() const {
    const auto named = value("Driver");
    return named ? driverKind(*named) : DriverKind::unknown;
}

std::string ConnectionString::refusal(DriverKind kind) const {
    if (kind != DriverKind::freeTds && kind != DriverKind::unknown)
        return {};
    for (const auto& entry : entries_)
        if (withoutBraces(entry.raw).find("};") != std::string::npos)
            return "il valore di " + entry.keyword +
                   " contiene «};»: il driver FreeTDS vi vedrebbe la fine del valore e prenderebbe il resto per altre "
                   "opzioni; occorre un valore senza quei due caratteri di seguito";
    return {};
}

std::string ConnectionString::driverText(std::uintptr_t seconds, DriverKind kind) const {
    constexpr std::string_view ownTimeout = "Timeout"; // of FreeTDS; another driver may mean something else by it
    ConnectionString given = *this;
    given.remove(statementTimeout);
    const bool freeTds = kind == DriverKind::freeTds;
    if (seconds > 0 && freeTds && value("Driver") && !value(ownTimeout)) // a data source may have its own
        given.set(ownTimeout, std::to_string(seconds));
    std::string text;
    for (const auto& entry : given.entries_) {
        // A keyword counts once, as ODBC has it; some drivers take the last one.
        if (entry.keyword.empty() || given.find(entry.keyword) != &entry)
            continue;
        text += entry.keyword + '=';
        if (entry.raw.empty() || entry.raw.front() != '{')
            text += entry.raw;
        else if (freeTds)
            text += "{" + withoutBraces(entry.raw) + "}";
        else
            text += inBraces(withoutBraces(entry.raw));
        text += ';';
    }
    // FreeTDS's driver sees the end of a value in braces by the semicolon behind it.
    return text;
}

std::vector<std::string> ConnectionString::passwords() const {
    std::vector<std::string> all;
    for (const auto& entry : entries_)
        if (isPassword(entry.keyword))
            all.push_back(withoutBraces(entry.raw));
    return all;
}

std::vector<std::string> ConnectionString::secrets() const {
    std::vector<std::string> all;
    for (const auto& entry : entries_)
        if (isSecret(entry.keyword) || namesPassword(entry.raw))
            all.push_back(withoutBraces(entry.raw));
    return all;
}

std::string ConnectionString::server(DriverKind kind) const {
    // Microsoft's driver goes to an address where it has one, whatever name stands beside; FreeTDS's does not know the
    // word, and has names of its own configuration.
    static constexpr std::string_view ofFreeTds[] = {"Server", "Servername"};
    static constexpr std::string_view ofOthers[] = {"Address", "Addr", "Server", "Servername"};
    const auto search = [&](const auto& keywords) {
        for (const std::string_view keyword : keywords)
            if (const auto found = value(keyword); found && !found->empty())
                return *found;
        return std::string();
    };
    return kind == DriverKind::freeTds ? search(ofFreeTds) : search(ofOthers);
}

std::string ConnectionString::name(DriverKind kind) const {
    std::string text = server(kind);
    // Microsoft's driver has no such keyword: its port stands behind the server's name and a comma.
    if (const auto port = value("Port"); port && !text.empty() && kind != DriverKind::microsoft)
        text += ":" + *port;
    const std::string source = value("DSN").value_or(value("FileDSN").value_or(""));
    if (text.empty())
        text = source;
    if (const auto database = value("Database"); database && !database->empty())
        text += (text.empty() ? "" : "/") + *database;
    if (!source.empty() && text.substr(0, source.size()) != source)
        text = source + " (" + text + ")";
    return withoutPasswords(text.empty() ? "ODBC" : text, secrets());
}

std::string withoutPasswords(std::string text, const std::vector<std::string>& passwords) {
    for (const auto& password : passwords) {
        if (password.size() < shortestPassword)
            continue;
        for (auto at = text.find(password); at != std::string::npos; at = text.find(password, at + mask.size()))
            text.replace(at, password.size(), mask);
    }
    for (const auto word : secretWords) {
        for (std::size_t from = 0;;) {
            const auto at = lowered(text).find(word, from);
            if (at == std::string::npos)
                break;
            from = at + word.size();
            if (word == "password" && text.substr(from, 1) == ":") { // of a file in a value
                const auto end = std::min(text.find_first_of(",;}", ++from), text.size());
                text.replace(from, end - from, mask);
                from += mask.size();
                continue;
            }
            // "ClientKeyPassword", "Token_2": the word may be the beginning of a keyword.
            const auto value = std::find_if_not(text.begin() + static_cast<std::ptrdiff_t>(from), text.end(),
                                                [](char c) { return c == '_' || isLetterOrDigit(c); }) -
                               text.begin();
            const auto equals = text.find_first_not_of(blanks, static_cast<std::size_t>(value));
            if (equals == std::string::npos || text[equals] != '=')
                continue;
            text.replace(equals + 1, valueLength(std::string_view(text).substr(equals + 1)), mask);
            from = equals + 1 + mask.size();
        }
    }
    return text;
}

} // namespace platform::odbc
