#include "platform/dialect/Source.h"

#include "contract/Date.h"

#include <algorithm>

namespace platform::dialect {

namespace {

constexpr std::size_t quotedLength = 40; // bytes of the text that an error quotes

bool continuesCharacter(char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

std::string doubled(std::string_view characters) {
    std::string text;
    for (const char c : characters) {
        text.push_back(c);
        if (c == '\'')
            text.push_back(c);
    }
    return text;
}

} // namespace

Source sourceOf(const contract::Statement& statement) {
    using Kind = contract::Statement::Kind;
    Source source;
    source.reserve(statement.pieces().size());
    for (const auto& piece : statement.pieces()) {
        switch (piece.kind) {
        case Kind::fragment:
        case Kind::decimal:
            source.push_back({piece.kind, std::string(statement.characters(piece))});
            break;
        case Kind::text:
            source.push_back({piece.kind, doubled(statement.characters(piece))});
            break;
        case Kind::number:
        case Kind::date:
            source.push_back({piece.kind, statement.argument(piece).text()});
            break;
        }
    }
    return source;
}

void refuse(const Source& source, Place place, std::string_view why) {
    std::string text;
    std::size_t at = 0;
    for (std::size_t i = 0; i < source.size(); ++i) {
        if (i == place.piece)
            at = text.size() + place.offset;
        text += source[i].text;
    }
    const bool atEnd = place.piece >= source.size() || at >= text.size();
    if (atEnd)
        at = text.size() > quotedLength ? text.size() - quotedLength : 0;
    while (at < text.size() && continuesCharacter(text[at]))
        ++at;
    auto end = std::min(text.size(), at + quotedLength);
    while (end < text.size() && continuesCharacter(text[end]))
        ++end;
    std::string description = "Istruzione SQL non compresa presso «";
    if (atEnd && at > 0)
        description += "…";
    description.append(text, at, end - at);
    if (end < text.size())
        description += "…";
    description += atEnd ? "» (fine del testo)" : "»";
    if (!why.empty()) {
        description += ": ";
        description += why;
    }
    throw TranslationError(description + ".");
}

} // namespace platform::dialect
