#include "platform/sqlite/Binder.h"

#include "contract/RuntimeError.h"

#include <charconv>
#include <cstring>

namespace platform::sqlite {

namespace {

using contract::Statement;
using Scratch = std::array<char, 24>;

[[noreturn]] void conversionFailure(std::string_view characters, std::string_view type) {
    throw contract::RuntimeError(contract::RuntimeError::typeMismatch, "Conversione non riuscita del testo «" +
                                                                           std::string(characters) + "» in " +
                                                                           std::string(type) + ".");
}

int bindCharacters(sqlite3_stmt* statement, int parameter, std::string_view characters) {
    // A null pointer would bind a null, and an empty view may have one.
    return sqlite3_bind_text64(statement, parameter, characters.empty() ? "" : characters.data(), characters.size(),
                               SQLITE_STATIC, SQLITE_UTF8);
}

int bindCopied(sqlite3_stmt* statement, int parameter, std::string_view characters, Scratch& scratch) {
    std::memcpy(scratch.data(), characters.data(), characters.size());
    return bindCharacters(statement, parameter, {scratch.data(), characters.size()});
}

int bindDecimal(sqlite3_stmt* statement, int parameter, std::string_view digits) {
    std::int64_t whole = 0;
    const char* end = digits.data() + digits.size();
    if (const auto [rest, error] = std::from_chars(digits.data(), end, whole); error == std::errc() && rest == end)
        return sqlite3_bind_int64(statement, parameter, whole);
    double real = 0;
    std::from_chars(digits.data(), end, real);
    return sqlite3_bind_double(statement, parameter, real);
}

int bindText(sqlite3_stmt* handle, int parameter, const Statement& statement, const Statement::Piece& piece,
             Scratch& scratch) {
    switch (piece.kind) {
    case Statement::Kind::number: {
        const auto end = std::to_chars(scratch.data(), scratch.data() + scratch.size(), piece.number).ptr;
        return bindCharacters(handle, parameter, {scratch.data(), static_cast<std::size_t>(end - scratch.data())});
    }
    case Statement::Kind::date:
        return bindCopied(handle, parameter, statement.argument(piece).text(), scratch);
    default:
        return bindCharacters(handle, parameter, statement.characters(piece));
    }
}

int bindDate(sqlite3_stmt* handle, int parameter, const Statement& statement, const Statement::Piece& piece,
             Scratch& scratch) {
    const auto date = statement.argument(piece).date();
    if (!date)
        conversionFailure(statement.argument(piece).text(), "data (gg/mm/aaaa)");
    return bindCopied(handle, parameter, date->iso(), scratch);
}

int bindWhole(sqlite3_stmt* handle, int parameter, const Statement& statement, const Statement::Piece& piece) {
    if (piece.kind == Statement::Kind::number)
        return sqlite3_bind_int64(handle, parameter, piece.number);
    const auto value = statement.argument(piece);
    if (const auto whole = value.integer())
        return sqlite3_bind_int64(handle, parameter, *whole);
    // The server takes a blank text for 0.
    const std::string text = value.text();
    if (text.find_first_not_of(' ') != std::string::npos)
        conversionFailure(text, "numero intero");
    return sqlite3_bind_int64(handle, parameter, 0);
}

} // namespace

int bindArguments(PreparedStatement& prepared, const Statement& statement) {
    sqlite3_stmt* handle = prepared.handle.get();
    int code = SQLITE_OK;
    for (std::size_t i = 0; i < prepared.parameters.size() && code == SQLITE_OK; ++i) {
        const auto& piece = statement.pieces()[prepared.parameters[i].piece];
        const auto parameter = static_cast<int>(i + 1);
        switch (prepared.parameters[i].binding) {
        case dialect::Binding::number:
            code = piece.kind == Statement::Kind::number ? sqlite3_bind_int64(handle, parameter, piece.number)
                                                         : bindDecimal(handle, parameter, statement.characters(piece));
            break;
        case dialect::Binding::text:
            code = bindText(handle, parameter, statement, piece, prepared.scratch[i]);
            break;
        case dialect::Binding::date:
            code = bindDate(handle, parameter, statement, piece, prepared.scratch[i]);
            break;
        case dialect::Binding::whole:
            code = bindWhole(handle, parameter, statement, piece);
            break;
        }
    }
    return code;
}

int bindValue(sqlite3_stmt* statement, int parameter, const contract::Value& value) {
    if (value.isMissing())
        return sqlite3_bind_null(statement, parameter);
    if (const auto* text = value.as<std::string>())
        return bindCharacters(statement, parameter, *text);
    if (const auto* date = value.as<contract::Date>()) {
        const std::string iso = date->iso();
        return sqlite3_bind_text(statement, parameter, iso.data(), static_cast<int>(iso.size()), SQLITE_TRANSIENT);
    }
    if (const auto* decimal = value.as<contract::Decimal>())
        return bindDecimal(statement, parameter, decimal->digits);
    if (const auto* real = value.as<double>())
        return sqlite3_bind_double(statement, parameter, *real);
    return sqlite3_bind_int64(statement, parameter, value.integer().value_or(0));
}

} // namespace platform::sqlite
