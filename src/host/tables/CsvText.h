#pragma once

#include "contract/Value.h"
#include "host/tables/Table.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace host {

// Lists as text for a spreadsheet program of an Italian machine: UTF-8, semicolons between the fields, lines that end
// in CR LF, decimals behind a comma, days as dd/mm/yyyy. Nothing here needs a screen.

/// Stands once before the first line of a file, so that the accents in it are read as UTF-8.
constexpr std::string_view csvByteOrderMark = "\xEF\xBB\xBF";

/// One field: quoted where it must be, empty for a missing value. A text that a spreadsheet program would take for a
/// formula (it begins with =, +, -, @, a tab or a line end) gets an apostrophe in front; a number is one, minus or not.
std::string csvField(const contract::Value& value);

/// The fields and the line's end.
std::string csvLine(const std::vector<contract::Value>& fields);
std::string csvLine(const Table& table, std::size_t row);
/// The titles of the columns.
std::string csvHeader(const Table& table);

/// A whole file, piece by piece: the mark, the titles, the rows in their order. Ends early when a piece is not taken.
void writeCsv(const Table& table, const std::function<bool(std::string_view piece)>& take);

} // namespace host
