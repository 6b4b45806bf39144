#pragma once

#include <gtest/gtest.h>

#include <string>

namespace contract_suites {

/// Names the only parameter of an instantiated suite, in the place of the maker's address, which no run has twice.
inline auto parameterName(std::string name) {
    return [name = std::move(name)](const auto&) { return name; };
}

} // namespace contract_suites
