#pragma once

#include <filesystem>

namespace host {

// Files that are made under another name first, so that what stands under their own is whole.

/// A name beside the file for making it: told apart by machine and process.
std::filesystem::path makingName(const std::filesystem::path& file);

/// Gives a file that is made its own name. False where another one has it already, which stays as it is; any other
/// failure throws std::filesystem::filesystem_error.
bool nameWhereNone(const std::filesystem::path& made, const std::filesystem::path& file);

/// Removes what starts that were killed have left of making this file: their process is gone, or they are of another
/// machine and a day old.
void removeLeftOvers(const std::filesystem::path& file);

} // namespace host
