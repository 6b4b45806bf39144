#pragma once

#include "contract/Value.h"

#include <QString>

#include <cstddef>
#include <vector>

namespace host {

/// A column of a table that is shown, exported or printed.
struct TableColumn {
    enum class Kind { text, number, day };
    QString title;
    Kind kind = Kind::text; ///< days are shown as dd/mm/yyyy; numbers stand at the right
};

/// A list of rows as a window shows it and as it is exported and printed. Rows and columns count from 0.
class Table {
public:
    Table() = default;
    Table(const Table&) = delete;
    Table& operator=(const Table&) = delete;
    virtual ~Table() = default;

    virtual const std::vector<TableColumn>& columns() const = 0;
    virtual std::size_t rowCount() const = 0;
    /// Of the column's kind, or missing.
    virtual contract::Value value(std::size_t row, std::size_t column) const = 0;
    /// Depth of a row in an outline, 0 the outermost; 0 throughout in a plain list.
    virtual int level(std::size_t /*row*/) const { return 0; }
};

/// The text of a cell as a person reads it; empty for a missing value.
QString cellText(const Table& table, std::size_t row, std::size_t column);

} // namespace host
