#pragma once

#include <QString>

#include <string>

namespace host {

/// What is appended to line by line must not be the database, by whatever name. what: the file's role, for the reason.
/// Throws StartFailure (exit status 2) where it is; an empty name is no file.
void refuseDatabaseAs(const QString& appended, const std::string& connectionString, const std::string& what);

} // namespace host
