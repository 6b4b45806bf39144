// Connection strings out of any text: what was read is written and read again the same, and no password is shown.

#include "platform/odbc/ConnectionString.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

using platform::odbc::ConnectionString;

constexpr std::string_view secret = "Kx9-segreta";

void must(bool condition) {
    if (!condition)
        std::abort();
}

bool shows(const std::string& text) {
    return text.find(secret) != std::string::npos;
}

void checkReading(std::string_view text) {
    const ConnectionString read(text);
    must(ConnectionString(read.text()).text() == read.text());
    must(ConnectionString(read.masked()).masked() == read.masked());
}

void checkValue(std::string_view value) {
    ConnectionString string;
    string.set("Server", "erp");
    string.set("Database", value);
    string.set("UID", "distinte");
    const ConnectionString again(string.text());
    must(again.value("database") == std::string(value));
    must(again.value("UID") == std::string("distinte"));
}

/// A password after any text: in a part of its own, or swallowed by a brace that nothing closes.
void checkPassword(std::string_view before) {
    if (shows(std::string(before)))
        return;
    const std::string text = std::string(before) + ";PWD=" + std::string(secret);
    ConnectionString string(text);
    must(!shows(string.masked()));
    must(!shows(string.name()));
    must(!shows(platform::odbc::withoutPasswords(text, string.passwords())));
    string.removeSecrets();
    must(!shows(string.text()));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    checkReading(text);
    checkValue(text);
    checkPassword(text);
    return 0;
}
