#pragma once

#include "contract/RuntimeError.h"
#include "contract/Statement.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace platform::dialect {

/// A statement's text in pieces, as the translator reads it: fixed text, and arguments in their places.
struct SourcePiece {
    contract::Statement::Kind kind = contract::Statement::Kind::fragment;
    std::string text; ///< as it stands in the text that a server receives
};
using Source = std::vector<SourcePiece>;

/// The pieces of a statement, one for each of its own pieces, in order.
Source sourceOf(const contract::Statement& statement);

/// Where something stands in a source: a piece and a byte within it, both counted from 0. A piece number equal to the
/// count of pieces is the end of the text.
struct Place {
    std::size_t piece = 0;
    std::size_t offset = 0;
};

/// A statement that the translator does not understand. Its description is in the user's language and quotes the place.
class TranslationError : public contract::RuntimeError {
public:
    explicit TranslationError(std::string description) : RuntimeError(database, std::move(description)) {}
};

/// Throws a TranslationError that quotes the text at that place; why, when not empty, says in Italian what is wrong.
[[noreturn]] void refuse(const Source& source, Place place, std::string_view why = {});

} // namespace platform::dialect
