#pragma once

#include <string>

namespace host {

/// Whether every part of a workbook ends where its outermost element does. False too for what is no workbook.
bool isWholeWorkbook(const std::string& file);

} // namespace host
