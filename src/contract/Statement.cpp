#include "contract/Statement.h"

#include "contract/RuntimeError.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <functional>
#include <set>

namespace contract {

namespace {

// The mixing step of FNV-1a over 64-bit words instead of bytes (public domain, Fowler, Noll and Vo).
std::uint64_t mix(std::uint64_t hash, std::uint64_t word) {
    hash = (hash ^ word) * 1099511628211ULL;
    return hash ^ (hash >> 29U);
}

void appendNumber(std::string& text, std::int64_t number) {
    char buffer[24];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, number).ptr;
    text.append(buffer, end);
}

void appendQuoted(std::string& text, std::string_view characters) {
    for (const char c : characters) {
        text.push_back(c);
        if (c == '\'')
            text.push_back(c);
    }
}

} // namespace

void Statement::add(const Piece& piece) {
    pieces_.push_back(piece);
    shape_ = piece.kind == Kind::fragment ? mix(mix(shape_, reinterpret_cast<std::uintptr_t>(piece.data)), piece.size)
                                          : mix(shape_, static_cast<std::uint64_t>(piece.kind));
}

Statement& Statement::operator<<(Fragment fragment) {
    Piece piece;
    piece.data = fragment.text().data();
    piece.size = fragment.text().size();
    add(piece);
    return *this;
}

Statement& Statement::operator<<(const Statement& other) {
    const auto base = store_.size();
    store_ += other.store_;
    const auto count = other.pieces_.size();
    for (std::size_t i = 0; i < count; ++i) {
        Piece piece = other.pieces_[i];
        piece.offset += base;
        add(piece);
    }
    return *this;
}

Statement& Statement::number(std::int64_t value) {
    Piece piece;
    piece.kind = Kind::number;
    piece.number = value;
    add(piece);
    return *this;
}

Statement& Statement::text(std::string_view value) {
    Piece piece;
    piece.kind = Kind::text;
    piece.offset = store_.size();
    piece.size = value.size();
    store_ += value;
    add(piece);
    return *this;
}

Statement& Statement::date(Date value) {
    Piece piece;
    piece.kind = Kind::date;
    piece.number = value.days();
    add(piece);
    return *this;
}

Statement& Statement::identifier(std::string_view name) {
    const auto allowed = [](char c) {
        return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_';
    };
    if (name.empty() || !std::all_of(name.begin(), name.end(), allowed))
        throw RuntimeError(RuntimeError::invalidCall,
                           "\"" + std::string(name) + "\" non è un nome di tabella o colonna.");
    // Names are few and live as long as the program, as literals do.
    static std::set<std::string, std::less<>> names;
    auto at = names.find(name);
    if (at == names.end())
        at = names.insert(std::string(name)).first;
    Piece piece;
    piece.data = at->data();
    piece.size = at->size();
    add(piece);
    return *this;
}

Statement& Statement::bare(const Value& value) {
    if (value.isMissing())
        return *this;
    if (const auto whole = value.integer())
        return number(*whole);
    if (!value.isNumber())
        throw RuntimeError(RuntimeError::typeMismatch,
                           "Tipo non corrispondente: \"" + value.text() + "\" non è un numero.");
    Piece piece;
    piece.kind = Kind::decimal;
    piece.offset = store_.size();
    store_ += value.text();
    piece.size = store_.size() - piece.offset;
    add(piece);
    return *this;
}

std::string_view Statement::characters(const Piece& piece) const {
    switch (piece.kind) {
    case Kind::fragment:
        return {piece.data, piece.size};
    case Kind::text:
    case Kind::decimal:
        return std::string_view(store_).substr(piece.offset, piece.size);
    case Kind::number:
    case Kind::date:
        break;
    }
    return {};
}

Value Statement::argument(const Piece& piece) const {
    switch (piece.kind) {
    case Kind::number:
        return piece.number;
    case Kind::date:
        return Date::fromDays(piece.number).value_or(Date());
    case Kind::decimal:
        return Decimal{std::string(characters(piece))};
    case Kind::fragment:
    case Kind::text:
        break;
    }
    return characters(piece);
}

std::string Statement::text() const {
    std::string text;
    for (const auto& piece : pieces_) {
        switch (piece.kind) {
        case Kind::fragment:
        case Kind::decimal:
            text += characters(piece);
            break;
        case Kind::number:
            appendNumber(text, piece.number);
            break;
        case Kind::text:
            appendQuoted(text, characters(piece));
            break;
        case Kind::date:
            text += Date::fromDays(piece.number).value_or(Date()).text();
            break;
        }
    }
    return text;
}

bool Statement::sameShape(const Statement& other) const {
    return std::equal(pieces_.begin(), pieces_.end(), other.pieces_.begin(), other.pieces_.end(),
                      [](const Piece& a, const Piece& b) {
                          return a.kind == b.kind &&
                                 (a.kind != Kind::fragment ||
                                  (a.size == b.size && (a.data == b.data || std::memcmp(a.data, b.data, a.size) == 0)));
                      });
}

Statement Statement::withoutValues() const {
    Statement result;
    result.pieces_ = pieces_;
    result.shape_ = shape_;
    for (auto& piece : result.pieces_)
        if (piece.kind != Kind::fragment) {
            piece.number = 0;
            piece.size = 0;
            piece.offset = 0;
        }
    return result;
}

} // namespace contract
