#pragma once

#include "contract/Schema.h"

#include <memory>
#include <string>

namespace platform::sqlite {
class Connection;
}

namespace host {

/// The host's tables for workflow states: STATI_LEGAME (the state of each link) and STATI_STORIA (its history).
const contract::Schema& stateSchema();
/// Another schema's tables and, after them, the states': what a database holds.
contract::Schema withStates(contract::Schema other);

/// The file beside an embedded database in which earlier versions of the program kept its states.
inline std::string stateCompanionOf(const std::string& databasePath) {
    return databasePath + ".stati";
}

/// That file, opened for reading; nothing where there is none, or an empty one. Throws RuntimeError, with what to do,
/// where it can not be read.
std::unique_ptr<platform::sqlite::Connection> openStateCompanion(const std::string& databasePath);

/// Makes the tables in an embedded database that lacks them and takes the companion's states and history in, all in one
/// transaction; the companion is then kept as "<database>.stati.acquisito". A link that has a state in the database
/// keeps that one. The database remembers what it has taken in, so that a companion which could not be renamed, or
/// which somebody puts back, is not taken in a second time.
///
/// database: open, outside of a transaction; one that may only be read is left as it is. Throws RuntimeError; nothing
/// has been written then, and the connection is best opened anew.
void prepareStateTables(platform::sqlite::Connection& database);

/// Renames a companion that belonged to an earlier database of the same name to "<database>.stati.vecchio".
void leaveStateCompanion(const std::string& databasePath);

} // namespace host
