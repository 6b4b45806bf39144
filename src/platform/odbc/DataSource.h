#pragma once

#include "platform/odbc/ConnectionString.h"

#include <string>

namespace platform::odbc {

/// A connection string together with what the machine's ODBC configuration (odbc.ini, odbcinst.ini) adds to it.
struct Target {
    ConnectionString string;                 ///< with what its data source says besides
    DriverKind driver = DriverKind::unknown; ///< also of a driver that was installed under another name
    std::string driverName;                  ///< as installed, or its library
};

Target targetOf(const ConnectionString& string);

/// What a user calls the database, with where the connection goes: "erp:1433/Conti", "sorgente (erp/Conti)".
std::string labelOf(const ConnectionString& string);

/// How the way to the server is protected, as far as the string and the data source tell.
enum class Protection {
    local,     ///< there is no way: a file, or a server on this machine
    encrypted, ///< the driver refuses a connection that is not
    plain,     ///< readable on the network, or encrypted only where the server wants it
    unknown    ///< the driver, or a configuration of its own, decides
};

Protection protectionOf(const Target& target);

/// Whether a driver encrypts where its connection string says nothing about it.
bool encryptsByItself(const Target& target);

} // namespace platform::odbc
