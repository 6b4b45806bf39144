#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <sqlite3.h>

namespace platform::sqlite {

/// What has become of an open database's file: nothing while it stands where it was opened. Otherwise that it has gone,
/// or that another one stands in its place, and what the user can do.
std::optional<std::string> displacement(sqlite3* database, std::string_view file);

/// Why nothing can be written beside a file, where that is so, and what the user can do.
std::optional<std::string> closedFolder(std::string_view file);

/// Why no new file may take this name, where that is so, and what the user can do: the journal of one that had it
/// before holds half a transaction, which the next opening would play into the new one.
std::optional<std::string> strayJournal(std::string_view file);

} // namespace platform::sqlite
