#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform::odbc {

/// Which driver reads a connection string. unknown: a data source names it.
enum class DriverKind : std::uint8_t { unknown, freeTds, microsoft, sqlite, other };

/// By the name or the library of a driver.
DriverKind driverKind(std::string_view name);

/// An ODBC connection string: keywords with values, "Driver={ODBC Driver};Server=erp;PWD=...". Keywords are compared
/// without regard to case; a value in braces may hold semicolons, and a closing brace written twice.
class ConnectionString {
public:
    /// Of this program, taken out before a driver sees the string: the longest time a statement may take, in seconds.
    static constexpr std::string_view statementTimeout = "StatementTimeout";

    ConnectionString() = default;
    /// Reads any text; what is no keyword with a value stays as it is.
    explicit ConnectionString(std::string_view text);

    /// The value of a keyword without its braces; the first one where it is repeated.
    std::optional<std::string> value(std::string_view keyword) const;
    /// Puts a keyword at the end, or changes its value; braces are written where the value needs them.
    void set(std::string_view keyword, std::string_view value);
    void remove(std::string_view keyword);
    /// Takes out every password, and what else a driver keeps secret: tokens, key stores' secrets, private keys.
    void removeSecrets();

    /// The whole string.
    std::string text() const;
    /// The string with "***" for every password and other secret.
    std::string masked() const;
    /// The driver that the keyword "Driver" names.
    DriverKind driver() const;
    /// Why the driver must not see the string, in the user's language; empty where it may. FreeTDS's driver ends a
    /// value at "};" whatever was written to prevent it, and would read the rest as further keywords.
    std::string refusal(DriverKind kind) const;
    /// What a driver sees: the string without this program's keywords, without what is no keyword, and each keyword
    /// once, with its first value. Where a statement's time is limited, FreeTDS's driver is told to wait no longer for
    /// what it asks of the server by itself, unless the string says how long: it knows no attribute for that, and would
    /// wait for ever. That driver also takes the braces of a value as they are and knows no doubled ones. seconds: 0
    /// for no limit.
    std::string driverText(std::uintptr_t seconds, DriverKind kind) const;
    std::string driverText(std::uintptr_t seconds) const { return driverText(seconds, driver()); }
    /// The values of its passwords.
    std::vector<std::string> passwords() const;
    /// The values of all that removeSecrets() takes out.
    std::vector<std::string> secrets() const;
    /// The server's name or address that the driver goes to; empty where the string does not name it.
    std::string server(DriverKind kind) const;
    /// What a user calls the database: server and database as the driver will take them, or the data source, never a
    /// secret. "ODBC" where the string names none of them.
    std::string name(DriverKind kind) const;
    std::string name() const { return name(driver()); }

private:
    struct Entry {
        std::string keyword; ///< empty for a part without "="
        std::string raw;     ///< as written, with braces
    };
    const Entry* find(std::string_view keyword) const;

    std::vector<Entry> entries_;
};

/// The text with "***" for each of the passwords and for what follows "PWD=", "AccessToken=" and the other keywords of
/// secrets in it: what a driver says may repeat what it was given.
std::string withoutPasswords(std::string text, const std::vector<std::string>& passwords);

} // namespace platform::odbc
