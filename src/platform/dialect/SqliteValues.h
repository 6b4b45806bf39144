#pragma once

#include "contract/Snapshot.h"
#include "platform/dialect/Catalog.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace platform::dialect {

// How values that SQLite keeps become the fields and values of the server's kinds, whatever way they come from it.

/// What a declared column type of SQLite ("INTEGER", "DATE", ...) holds, by SQLite's own rules of affinity.
ValueKind kindOfDeclared(std::string_view type);

/// The field of a result's column that holds values of that kind.
contract::FieldInfo fieldOf(std::string name, ValueKind kind);

/// The decimal form of an amount, with two decimals at least.
std::string amountText(double value);
std::string amountText(std::int64_t value);

} // namespace platform::dialect
