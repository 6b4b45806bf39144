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

/// Appends UTF-16 as UTF-8. A surrogate without its other half becomes U+FFFD.
void appendNarrow(const SQLWCHAR* text, std::size_t count, std::string& into);
std::string narrow(const SQLWCHAR* text, std::size_t count);

} // namespace platform::odbc
