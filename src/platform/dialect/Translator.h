#pragma once

#include "platform/dialect/Catalog.h"
#include "platform/dialect/Source.h"

#include <optional>
#include <string>
#include <vector>

namespace platform::dialect {

/// How an argument is given to the engine.
enum class Binding {
    number, ///< the number
    text,   ///< its characters as they stand in the server's text
    date,   ///< the day as "yyyy-mm-dd"; a text argument must read as "dd/mm/yyyy"
    whole   ///< the whole number that the characters are, 0 for none: the server's conversion to a number column
};

struct Parameter {
    std::size_t piece = 0; ///< of the statement, counted from 0
    Binding binding = Binding::number;
};

/// One column of a result.
struct ResultColumn {
    std::string name; ///< as the server names it; empty for an expression without alias
    ValueKind kind = ValueKind::unknown;
};

/// A statement in the engine's dialect.
struct Translation {
    std::string text;
    std::vector<Parameter> parameters; ///< of ?1, ?2, ... in order
    /// Of a select; nothing where a star stands for a table that is not in the catalog, and for the other statements.
    std::optional<std::vector<ResultColumn>> columns;
};

/// Translates statements of the server's dialect into SQLite's.
///
/// It knows the subset in use and refuses the rest with an error that quotes the place; it never guesses. What depends
/// on the type of a column (a date, a concatenation) it looks up in the catalog.
class Translator {
public:
    /// The catalog must outlive the translator.
    explicit Translator(const Catalog& catalog) : catalog_(catalog) {}

    /// The translation holds for every statement of the same shape. Throws TranslationError.
    Translation translate(const contract::Statement& statement) const { return translate(sourceOf(statement)); }
    Translation translate(const Source& source) const;

private:
    const Catalog& catalog_;
};

} // namespace platform::dialect
