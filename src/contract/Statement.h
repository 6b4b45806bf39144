#pragma once

#include "contract/Date.h"
#include "contract/Value.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace contract {

/// A fixed fragment of a statement: a string literal, known when the program is compiled.
class Fragment {
public:
    template <std::size_t N>
    consteval Fragment(const char (&literal)[N]) : text_(literal, N - 1) {} // NOLINT(google-explicit-constructor)

    std::string_view text() const { return text_; }

private:
    std::string_view text_;
};

/// A statement in the server's dialect: its fixed fragments and the typed arguments between them, kept apart.
///
/// Its text is what a server receives and a trace shows. Its fragments, with the places of the arguments, are its
/// shape: an adapter that prepares statements translates and prepares a shape once and binds the arguments.
class Statement {
public:
    enum class Kind : std::uint8_t {
        fragment, ///< fixed text
        number,   ///< a whole number, written bare or between the quotes of the neighbouring fragments
        decimal,  ///< any other number, written bare in its decimal form
        text,     ///< a text between the quotes of the neighbouring fragments, written with its own quotes doubled
        date      ///< a day, written as "dd/mm/yyyy" between the quotes of the neighbouring fragments
    };

    /// One piece, in the order of the text.
    struct Piece {
        Kind kind = Kind::fragment;
        std::int64_t number = 0;    ///< Kind::number: the number; Kind::date: days from 01/01/1970
        const char* data = nullptr; ///< Kind::fragment: the literal
        std::size_t size = 0;       ///< Kind::fragment, text, decimal: length in bytes
        std::size_t offset = 0;     ///< Kind::text, decimal: where it begins in the statement's own store
    };

    Statement() { pieces_.reserve(24); }
    Statement(Fragment fragment) : Statement() { *this << fragment; } // NOLINT(google-explicit-constructor)

    Statement& operator<<(Fragment fragment);
    /// All the pieces of another statement, in order.
    Statement& operator<<(const Statement& other);

    Statement& number(std::int64_t value);
    Statement& text(std::string_view value);
    Statement& date(Date value);

    /// A name of a table or column that is known only while the program runs, as a fixed fragment: ASCII letters,
    /// digits and underscores. Throws RuntimeError 5 for anything else.
    Statement& identifier(std::string_view name);

    /// A value written bare: nothing at all when it is missing, else its decimal form; a boolean as 1 or 0, a text only
    /// if it is a whole number. Throws RuntimeError 13 for any other text and for a date.
    Statement& bare(const Value& value);

    const std::vector<Piece>& pieces() const { return pieces_; }
    bool empty() const { return pieces_.empty(); }

    /// The fixed text of a fragment, or the characters of a text or decimal argument (quotes not doubled).
    std::string_view characters(const Piece& piece) const;
    /// The value of an argument: Int64, Decimal, Text or Date.
    Value argument(const Piece& piece) const;

    /// The whole text, as a server receives it.
    std::string text() const;

    /// A number that is the same for statements composed of the same literals with arguments in the same places.
    /// Statements of one shape written by two pieces of code may differ in it.
    std::uint64_t shape() const { return shape_; }

    /// Whether both have the same fragments, to the byte, and arguments of the same kinds in the same places.
    bool sameShape(const Statement& other) const;

    /// A statement of the same shape whose arguments have no values: what is kept to recognise the shape by.
    Statement withoutValues() const;

private:
    void add(const Piece& piece);

    std::vector<Piece> pieces_;
    std::string store_;
    std::uint64_t shape_ = 1469598103934665603ULL;
};

} // namespace contract
