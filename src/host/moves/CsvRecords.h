#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace host {

/// A line of a CSV text that is not empty.
struct CsvRecord {
    std::int64_t line = 0; ///< in which it begins, counted from 1
    std::vector<std::string> fields;
};

/// A text in UTF-8: as it is where it is valid UTF-8, its byte-order mark left out, else taken for Windows-1252. Throws
/// RuntimeError for a text that is neither.
std::string asUtf8(std::string_view bytes);

/// The records of a CSV text with this separator; blanks around fields without quotes are left out. Throws RuntimeError
/// that names the line where the quotes do not match.
std::vector<CsvRecord> csvRecords(std::string_view text, char separator);

} // namespace host
