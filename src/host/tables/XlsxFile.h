#pragma once

#include "host/tables/Table.h"

#include <QString>

#include <cstddef>
#include <string>

namespace host {

/// Rows below the titles that a sheet can hold.
constexpr std::size_t xlsxMostRows = 1048575;
/// Levels below the outermost one that a sheet can group; what is deeper stands on the last.
constexpr int xlsxDeepestLevel = 7;

/// Writes a table as the only sheet of a workbook: numbers and days as such, the titles bold and always in view,
/// columns as wide as their texts, rows grouped by their level. The file is made or overwritten, and on a failure left
/// in whatever state it is in. title: of the sheet; what no sheet may be called by is left out of it. The reason of a
/// failure in the user's language, empty when it was written.
QString writeXlsx(const Table& table, const QString& title, const std::string& file);

} // namespace host
