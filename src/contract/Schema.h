#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace contract {

/// What a column of the schema holds; each adapter chooses its engine's type for it.
enum class ColumnType : std::uint8_t {
    identity, ///< whole number assigned by the database, the table's key
    integer,  ///< whole number
    number,   ///< whole number of the ERP (company, account, kind, ...), always without decimals
    amount,   ///< number with two decimals
    flag,     ///< 0 or 1
    text,     ///< text of at most ColumnDef::length characters
    guid,     ///< global identifier, 36 characters
    date      ///< calendar day
};

struct ColumnDef {
    std::string_view name;
    ColumnType type = ColumnType::text;
    bool nullable = true;
    int length = 0; ///< ColumnType::text: most characters
};

struct IndexDef {
    std::string_view name;
    std::vector<std::string_view> columns;
};

struct TableDef {
    std::string_view name;
    std::vector<ColumnDef> columns;
    std::vector<std::string_view> key; ///< columns of the primary key, in order
    std::vector<IndexDef> indexes;
    /// The host's own object, only read: a view on a full ERP database, a table where this schema makes it.
    bool isView = false;
    /// A database without it serves all the same; what it is for does not work there.
    bool isOptional = false;
};

/// Every table that the component reads or writes, in an order in which they can be made.
struct Schema {
    std::vector<TableDef> tables;
};

} // namespace contract
