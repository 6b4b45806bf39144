#pragma once

#include "platform/odbc/Handles.h"

#include <string>
#include <string_view>
#include <vector>

namespace platform::odbc {

/// The characters of a UTF-8 text as the wide functions take them (UTF-16), without a final zero. What is no UTF-8
/// becomes U+FFFD.
std::vector<SQLWCHAR> wide(std::string_view text);
void wide(std::string_view text, std::vector<SQLWCHAR>& into);

/// The most bytes of UTF-8 that a unit of UTF-16 becomes.
constexpr std::size_t narrowPerUnit = 3;

/// Writes UTF-16 as UTF-8 into narrowPerUnit bytes a unit, and tells how many it wrote. The units need not stand on an
/// even address. A surrogate without its other half becomes U+FFFD.
std::size_t writeNarrow(const char* units, std::size_t count, char* into);
/// Appends UTF-16 as UTF-8.
void appendNarrow(const SQLWCHAR* text, std::size_t count, std::string& into);
std::string narrow(const SQLWCHAR* text, std::size_t count);

constexpr std::size_t guidLength = 36; ///< characters of a GUID's text

/// Writes the text of a GUID, with upper-case digits and without braces: guidLength characters.
void writeGuid(const SQLGUID& guid, char* into);

} // namespace platform::odbc
