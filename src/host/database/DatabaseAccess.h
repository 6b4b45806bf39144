#pragma once

#include "contract/Connection.h"
#include "contract/Schema.h"
#include "contract/Snapshot.h"
#include "host/database/StateStore.h"

#include <QString>

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace host {

// The host knows a database by its connection string: "embedded:" and a file's path, or an ODBC driver's string. Only
// what stands here tells the two apart.

/// The connection string of an embedded database file.
std::string embeddedDatabase(std::string_view path);
bool isEmbedded(std::string_view connectionString);
/// The file of an embedded database; empty for any other.
std::string embeddedPath(std::string_view connectionString);

/// The file of the database behind an open connection; empty on a server.
std::string fileOf(const contract::Connection& connection);

/// What a user calls the database: a file's name, or server and database. No password.
std::string databaseLabel(std::string_view connectionString);

/// Where the database is: the whole path of a file, or what databaseLabel() calls a server's.
QString placeOf(std::string_view connectionString);

/// An ODBC connection string without the passwords and other secrets in it.
std::string withoutSecrets(std::string_view connectionString);
/// Whether an ODBC connection string names a user but no password.
bool wantsPassword(std::string_view connectionString);
/// What to add to the reason for which a connection string did not serve where nobody could be asked for the password;
/// empty where it does not want one.
std::string passwordHint(std::string_view connectionString);
std::string withPassword(std::string_view connectionString, std::string_view password);

/// A connection of the kind that the string asks for, not open.
std::unique_ptr<contract::Connection> newConnection(std::string_view connectionString);

/// Reads for the host's own windows and columns, outside of transactions. A connection that is found lost is opened
/// again and asked once more: nothing was under way on it. Throws as Read() does.
void readAgainWhenLost(contract::Connection& connection, const contract::Statement& statement,
                       contract::Snapshot& rows);

/// Throws RuntimeError (database) that says which table or column of the schema an open database lacks.
void checkTables(contract::Connection& connection, const contract::Schema& schema);

/// The optional tables of a schema.
contract::Schema optionalTables(const contract::Schema& schema);

/// Whether an open database has these tables, each with all its columns. Throws RuntimeError (database).
bool hasTables(contract::Connection& connection, const contract::Schema& schema);

/// Makes those of these tables that an open database lacks, all or none. Throws RuntimeError (database), also where a
/// table of the same name has other columns.
void addTables(contract::Connection& connection, const contract::Schema& schema);

/// Version of the engine of embedded databases.
std::string embeddedEngineVersion();

/// Why nothing can be changed in an open database, in the user's language; empty where it can.
std::string whyNotWritable(contract::Connection& connection);

/// What to tell who connects in a way that others on the network may read; empty for a file, for a server on this
/// machine, for an encrypted connection, and where the driver alone knows.
std::string transportWarning(std::string_view connectionString);

/// The workflow states that belong to a database; embedded, their tables are there where they could be made.
/// connection: to the database, open. later, underWay: see StateStore. Throws RuntimeError where what is there of the
/// states does not serve.
std::unique_ptr<StateStore> openStates(std::string_view connectionString, contract::Connection& connection,
                                       std::function<void(std::function<void()>)> later, StateStore::UnderWay underWay);

} // namespace host
