#pragma once

#include "platform/dialect/Catalog.h"

#include <map>
#include <string>

struct sqlite3;

namespace platform::sqlite {

/// The catalog of an open database, read from the database itself: each table when a statement first names it.
class EngineCatalog : public dialect::Catalog {
public:
    /// The database that the next look-ups read; forgets what was read before. Null: no table is known.
    void attach(sqlite3* database);

    const Columns* columns(std::string_view table) const override;

private:
    sqlite3* database_ = nullptr;
    mutable std::map<std::string, Columns> tables_; // by name in lower case
};

} // namespace platform::sqlite
