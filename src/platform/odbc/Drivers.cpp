#include "platform/odbc/Drivers.h"

#include "platform/odbc/Handles.h"

namespace platform::odbc {

std::vector<std::string> installedDrivers() {
    std::vector<std::string> names;
    const Environment environment(nullptr);
    if (!environment)
        return names;
    SQLSetEnvAttr(environment.get(), SQL_ATTR_ODBC_VERSION, attribute(SQL_OV_ODBC3), 0);
    constexpr SQLSMALLINT room = 256;
    SQLCHAR name[room] = {};
    SQLCHAR attributes[room] = {};
    SQLSMALLINT length = 0;
    for (SQLUSMALLINT which = SQL_FETCH_FIRST;
         SQL_SUCCEEDED(SQLDrivers(environment.get(), which, name, room, &length, attributes, room, &length));
         which = SQL_FETCH_NEXT)
        names.emplace_back(reinterpret_cast<const char*>(name));
    return names;
}

} // namespace platform::odbc
