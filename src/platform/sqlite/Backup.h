#pragma once

#include <functional>
#include <string>

namespace platform::sqlite {

/// Copies a database file as it stands at one moment, also while other programs work on it: each of their transactions
/// is in the copy whole or not at all. Others may read and write meanwhile; after three of their commits the copy keeps
/// them waiting until it is done.
///
/// to: a file that is not there yet; it goes again where the copy fails. progress: told of each part, 0 to 100; may be
/// empty. The copy has reached the disk when this returns. Throws RuntimeError (database).
void copyDatabase(const std::string& from, const std::string& to, const std::function<void(int percent)>& progress);

} // namespace platform::sqlite
