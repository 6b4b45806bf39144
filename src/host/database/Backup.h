#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace host {

/// Copies an embedded database, workflow states included, while programs work on it, to a file that is replaced once
/// the copy is whole. Gives the copy's size in bytes. progress: 0 to 100. Throws RuntimeError, also for the database's
/// own files.
std::uintmax_t backUp(const std::string& database, const std::string& destination,
                      const std::function<void(int percent)>& progress = {});

} // namespace host
