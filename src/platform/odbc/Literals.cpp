#include "platform/odbc/Literals.h"

#include "contract/RuntimeError.h"

namespace platform::odbc {

namespace {

using contract::Statement;

[[noreturn]] void conversionFailure(std::string_view characters, std::string_view type) {
    throw contract::RuntimeError(contract::RuntimeError::typeMismatch, "Conversione non riuscita del testo «" +
                                                                           std::string(characters) + "» in " +
                                                                           std::string(type) + ".");
}

/// A negative number stands in parentheses: after a minus sign its own would begin a comment.
void appendNumber(std::string_view digits, std::string& text) {
    const bool negative = !digits.empty() && digits.front() == '-';
    text += negative ? "(" : "";
    text += digits;
    text += negative ? ")" : "";
}

std::string charactersOf(const Statement& statement, const Statement::Piece& piece) {
    return piece.kind == Statement::Kind::text ? std::string(statement.characters(piece))
                                               : statement.argument(piece).text();
}

} // namespace

std::string serverDay(const contract::Date& date) {
    std::string day = date.iso();
    std::erase(day, '-');
    return day;
}

void appendQuoted(std::string_view characters, std::string& text) {
    text += '\'';
    for (const char c : characters) {
        text += c;
        if (c == '\'')
            text += c;
    }
    text += '\'';
}

void appendLiteral(const Statement& statement, const dialect::Parameter& place, std::string& text) {
    const auto& piece = statement.pieces()[place.piece];
    switch (place.binding) {
    case dialect::Binding::number:
        appendNumber(piece.kind == Statement::Kind::number ? std::to_string(piece.number)
                                                           : std::string(statement.characters(piece)),
                     text);
        break;
    case dialect::Binding::text:
        appendQuoted(charactersOf(statement, piece), text);
        break;
    case dialect::Binding::date: {
        const auto date = statement.argument(piece).date();
        if (!date)
            conversionFailure(charactersOf(statement, piece), "data (gg/mm/aaaa)");
        appendQuoted(date->iso(), text);
        break;
    }
    case dialect::Binding::whole: {
        const auto value = statement.argument(piece);
        const std::string characters = value.text();
        const auto whole = value.integer();
        // The server takes a blank text for 0.
        if (!whole && characters.find_first_not_of(' ') != std::string::npos)
            conversionFailure(characters, "numero intero");
        appendNumber(std::to_string(whole.value_or(0)), text);
        break;
    }
    }
}

} // namespace platform::odbc
