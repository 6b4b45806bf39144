#pragma once

#include "contract/Statement.h"
#include "contract/Value.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace platform::shared {

/// Columns with their values, in order.
using ColumnValues = std::vector<std::pair<std::string, contract::Value>>;

/// "UPDATE T SET A = 1, B = NULL WHERE K = 2". Missing values are NULL, dates CONVERT(DateTime,'dd/mm/yyyy',103).
/// Throws RuntimeError 5 for names that are no identifiers, and without columns or key.
contract::Statement composeUpdate(std::string_view table, const ColumnValues& values, const ColumnValues& key);

/// "INSERT INTO T (A, B) VALUES (1, NULL)"
contract::Statement composeInsert(std::string_view table, const ColumnValues& values);

/// "DELETE FROM T WHERE K = 2"
contract::Statement composeDelete(std::string_view table, const ColumnValues& key);

} // namespace platform::shared
