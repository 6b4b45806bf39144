#pragma once

#include <string>
#include <string_view>

namespace platform::shared {

/// The beginning of a database error's text: which operation failed, and where; the reason follows. operation: a noun
/// and what belongs to it, in the user's language ("Conferma della transazione"). The participle agrees with the noun.
inline std::string notDone(std::string_view operation, std::string_view database) {
    const std::string_view noun = operation.substr(0, operation.find(' '));
    std::string text(operation);
    text += noun.ends_with('o') ? " non riuscito sul database «" : " non riuscita sul database «";
    text += database;
    return text + "»: ";
}

} // namespace platform::shared
