#pragma once

#include "platform/dialect/Source.h"

#include <optional>

namespace platform::dialect {

/// A stretch of a text between quotes: literal characters (quotes no longer doubled) or one argument.
struct Segment {
    std::string literal;
    std::optional<std::size_t> argument; ///< piece of the source
};

/// One word of the server's dialect.
struct Token {
    enum class Kind {
        end,      ///< nothing follows
        word,     ///< a keyword or a name; text is as written, without brackets
        number,   ///< a number without sign; text is as written
        text,     ///< between quotes; segments hold it
        argument, ///< a number in the place of a value; argument is its piece
        symbol    ///< text is the operator or the punctuation mark
    };
    Kind kind = Kind::end;
    std::string text;
    bool bracketed = false; ///< Kind::word: written between brackets, hence never a keyword
    std::vector<Segment> segments;
    std::size_t argument = 0;
    Place place;
};

/// The words of a text, with one of Kind::end at the end. Throws TranslationError for a character, a comment or an
/// argument that has no business where it stands.
std::vector<Token> tokenize(const Source& source);

/// Whether two names are the same without regard to the case of ASCII letters.
bool sameName(std::string_view a, std::string_view b);

} // namespace platform::dialect
