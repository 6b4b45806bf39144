#pragma once

#include "host/tables/Table.h"

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace host {

/// Some of the rows of a table. Without one it has no columns and no rows.
class ShownRows : public Table {
public:
    /// rows: of the table, in the order in which they are to stand.
    ShownRows(std::shared_ptr<const Table> table, std::vector<std::size_t> rows)
        : table_(std::move(table)), rows_(std::move(rows)) {}

    const std::vector<TableColumn>& columns() const override {
        static const std::vector<TableColumn> none;
        return table_ ? table_->columns() : none;
    }
    std::size_t rowCount() const override { return table_ ? rows_.size() : 0; }
    contract::Value value(std::size_t row, std::size_t column) const override {
        return table_->value(rows_[row], column);
    }
    int level(std::size_t row) const override { return table_->level(rows_[row]); }

private:
    std::shared_ptr<const Table> table_;
    std::vector<std::size_t> rows_;
};

} // namespace host
