#include "platform/odbc/DataSource.h"

#include "platform/odbc/Handles.h"

#include <odbcinst.h>

#include <algorithm>
#include <array>
#include <cctype>

#include <unistd.h>

namespace platform::odbc {

namespace {

constexpr std::array<const char*, 11> described = {"Server", "Servername", "Address",    "Addr",
                                                   "Port",   "Database",   "Encryption", "Encrypt",
                                                   "UID",    "FileDSN",    "TDS_Version"};
constexpr int oldestThatEncrypts = 18; ///< of Microsoft's driver: the version since which it does so by itself

std::string lowered(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

/// An entry of a section; empty where there is none.
std::string configured(const std::string& section, const char* entry, const char* file) {
    constexpr int room = 1024;
    std::array<char, room> text{};
    const int length = SQLGetPrivateProfileString(section.c_str(), entry, "", text.data(), room, file);
    return length > 0 ? std::string(text.data()) : std::string();
}

/// The version in "ODBC Driver 18 for SQL Server" or "libmsodbcsql-18.3.so.1.1"; 0 for none.
int versionIn(const std::string& driver) {
    for (const std::string_view before : {"driver ", "msodbcsql-", "msodbcsql"}) {
        const auto at = driver.find(before);
        if (at == std::string::npos)
            continue;
        int version = 0;
        for (auto digit = at + before.size(); digit < driver.size() && driver[digit] >= '0' && driver[digit] <= '9';
             ++digit)
            version = std::min(version * 10 + (driver[digit] - '0'), 999);
        if (version > 0)
            return version;
    }
    return 0;
}

/// The host in "tcp:erp\\SQLEXPRESS,1433".
std::string hostIn(std::string server) {
    server = lowered(std::move(server));
    for (const std::string_view protocol : {"tcp:", "np:", "lpc:", "admin:"})
        if (server.substr(0, protocol.size()) == protocol)
            server.erase(0, protocol.size());
    server = server.substr(0, server.find_first_of("\\,"));
    const bool one = std::count(server.begin(), server.end(), ':') == 1; // more of them are an address
    return one ? server.substr(0, server.find(':')) : server;
}

bool isThisMachine(const std::string& server) {
    const std::string host = hostIn(server);
    if (host == "localhost" || host == "." || host == "(local)" || host == "::1" || host == "[::1]" ||
        host == "(localdb)" || host.substr(0, 4) == "127.")
        return true;
    std::array<char, 256> own{};
    return ::gethostname(own.data(), own.size() - 1) == 0 && !host.empty() && host == lowered(own.data());
}

bool isOneOf(const std::string& value, std::initializer_list<const char*> wanted) {
    const std::string text = lowered(value);
    return std::any_of(wanted.begin(), wanted.end(), [&](const char* each) { return text == each; });
}

} // namespace

Target targetOf(const ConnectionString& string) {
    Target target{string, DriverKind::unknown, string.value("Driver").value_or("")};
    const std::string source = string.value("DSN").value_or("");
    if (target.driverName.empty() && !source.empty()) {
        target.driverName = configured(source, "Driver", "odbc.ini");
        const bool named = !string.server(DriverKind::other).empty();
        for (const char* keyword : described) {
            // A server in the string takes the place of the data source's, under whatever name that stands.
            const bool where = keyword == std::string_view("Server") || keyword == std::string_view("Servername") ||
                               keyword == std::string_view("Address") || keyword == std::string_view("Addr");
            if (string.value(keyword) || (where && named))
                continue;
            if (const auto value = configured(source, keyword, "odbc.ini"); !value.empty())
                target.string.set(keyword, value);
        }
    }
    if (target.driverName.empty())
        return target;
    target.driver = driverKind(target.driverName);
    if (target.driver == DriverKind::other)
        if (const auto library = configured(target.driverName, "Driver", "odbcinst.ini"); !library.empty()) {
            target.driver = driverKind(library);
            target.driverName = library;
        }
    return target;
}

std::string labelOf(const ConnectionString& string) {
    const Target target = targetOf(string);
    return target.string.name(target.driver);
}

bool encryptsByItself(const Target& target) {
    return target.driver == DriverKind::microsoft && versionIn(lowered(target.driverName)) >= oldestThatEncrypts;
}

Protection protectionOf(const Target& target) {
    if (target.driver == DriverKind::sqlite)
        return Protection::local;
    const std::string server = target.string.server(target.driver);
    const auto own = [&](const char* keyword) { return target.string.value(keyword).value_or(""); };
    if (target.driver == DriverKind::freeTds) {
        if (isOneOf(own("Encryption"), {"require", "strict"}))
            return Protection::encrypted;
        // A section of freetds.conf says where the server stands, and may ask for encryption.
        if (server.empty() || own("Server").empty())
            return Protection::unknown;
    } else if (target.driver == DriverKind::microsoft) {
        const std::string encrypt = own("Encrypt");
        if (isOneOf(encrypt, {"yes", "true", "1", "mandatory", "strict"}) ||
            (encrypt.empty() && encryptsByItself(target)))
            return Protection::encrypted;
        if (server.empty())
            return Protection::unknown;
    } else {
        return Protection::unknown;
    }
    return isThisMachine(server) ? Protection::local : Protection::plain;
}

} // namespace platform::odbc
