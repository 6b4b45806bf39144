#pragma once

#include "contract/MoveLists.h"

#include <QString>

#include <string_view>
#include <vector>

namespace host {

// Lists of moves as text: fields between semicolons, commas or tabs, UTF-8 or Windows-1252, a header line that names
// the columns: conto, nuovo_padre, and if wanted distinta_origine, distinta_destinazione, tipo, data_fine.

/// The most bytes and lines of a list.
inline constexpr std::int64_t longestMoveFile = 64 * 1024 * 1024;
inline constexpr std::size_t mostMoveLines = 200'000;

/// The lines of a list; empty ones are passed over. What is wrong with a line's values stands in it. Throws
/// RuntimeError with the reason for what is no list: no header, a column that is missing, unknown or there twice,
/// quotes that do not match, no line at all.
std::vector<contract::MoveLine> readMoves(std::string_view bytes);

/// The same of a file. Throws RuntimeError also where it can not be read.
std::vector<contract::MoveLine> readMoveFile(const QString& path);

} // namespace host
