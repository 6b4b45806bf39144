#pragma once

#include "host/tables/Table.h"

#include <utility>
#include <vector>

namespace host_test {

/// A table of the values that a test gives it.
class TableRows : public host::Table {
public:
    TableRows(std::vector<host::TableColumn> columns, std::vector<std::vector<contract::Value>> rows,
              std::vector<int> levels = {})
        : columns_(std::move(columns)), rows_(std::move(rows)), levels_(std::move(levels)) {}

    const std::vector<host::TableColumn>& columns() const override { return columns_; }
    std::size_t rowCount() const override { return rows_.size(); }
    contract::Value value(std::size_t row, std::size_t column) const override { return rows_[row][column]; }
    int level(std::size_t row) const override { return row < levels_.size() ? levels_[row] : 0; }

private:
    std::vector<host::TableColumn> columns_;
    std::vector<std::vector<contract::Value>> rows_;
    std::vector<int> levels_;
};

} // namespace host_test
