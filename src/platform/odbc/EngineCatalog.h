#pragma once

#include "platform/dialect/Catalog.h"

#include <functional>
#include <map>
#include <string>

namespace platform::odbc {

/// The catalog of a SQLite database behind a driver, read from the database itself: each table when a statement first
/// names it.
class EngineCatalog : public dialect::Catalog {
public:
    /// Gives the columns of a table, by a name in lower case; none for a table that is not there.
    using Reader = std::function<Columns(const std::string& table)>;

    explicit EngineCatalog(Reader reader) : reader_(std::move(reader)) {}

    const Columns* columns(std::string_view table) const override;
    void clear() { tables_.clear(); }

private:
    Reader reader_;
    mutable std::map<std::string, Columns> tables_; // by name in lower case
};

} // namespace platform::odbc
