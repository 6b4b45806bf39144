#pragma once

#include "contract/Date.h"
#include "contract/Statement.h"
#include "platform/dialect/Translator.h"

#include <string>
#include <string_view>

namespace platform::odbc {

/// Appends a statement's argument as a literal of SQLite's language, converted as its place demands. Throws
/// RuntimeError 13 with a description in Italian where that cannot be done.
void appendLiteral(const contract::Statement& statement, const dialect::Parameter& place, std::string& text);

/// A day as SQL Server reads it in every language setting: yyyymmdd, without quotes.
std::string serverDay(const contract::Date& date);

/// Appends a text between quotes, its own quotes doubled.
void appendQuoted(std::string_view characters, std::string& text);

} // namespace platform::odbc
