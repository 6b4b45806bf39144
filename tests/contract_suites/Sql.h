#pragma once

#include "contract/Statement.h"

#include <cstddef>

namespace contract_suites {

/// The characters of a literal as a template's argument.
template <std::size_t N> struct LiteralText {
    consteval LiteralText(const char (&literal)[N]) { // NOLINT(google-explicit-constructor)
        for (std::size_t i = 0; i < N; ++i)
            text[i] = literal[i];
    }
    char text[N] = {};
};

/// "SELECT ..."_sql is the statement of that one literal.
template <LiteralText L> contract::Statement operator""_sql() {
    return {contract::Fragment(L.text)};
}

} // namespace contract_suites
