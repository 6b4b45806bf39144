#pragma once

#include "contract/MoveRegistry.h"
#include "host/tables/Table.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace host {

/// What a person knows a column by.
using ColumnCaptions = std::function<std::string(std::string_view column)>;

QString kindText(contract::OperationKind kind);
QString outcomeText(contract::RowOutcome outcome);

/// The operations of the registry of moves.
class OperationsTable : public Table {
public:
    explicit OperationsTable(std::vector<contract::Operation> operations) : operations_(std::move(operations)) {}

    const std::vector<contract::Operation>& operations() const { return operations_; }
    const std::vector<TableColumn>& columns() const override;
    std::size_t rowCount() const override { return operations_.size(); }
    contract::Value value(std::size_t row, std::size_t column) const override;

private:
    std::vector<contract::Operation> operations_;
};

/// The rows of one operation, before and after.
class OperationRowsTable : public Table {
public:
    OperationRowsTable(std::vector<contract::OperationRow> rows, ColumnCaptions captions)
        : rows_(std::move(rows)), captions_(std::move(captions)) {}

    const std::vector<contract::OperationRow>& rows() const { return rows_; }
    const std::vector<TableColumn>& columns() const override;
    std::size_t rowCount() const override { return rows_.size(); }
    contract::Value value(std::size_t row, std::size_t column) const override;

private:
    std::string told(const std::optional<contract::RowValues>& values, std::string_view none) const;

    std::vector<contract::OperationRow> rows_;
    ColumnCaptions captions_;
};

/// What stands in the way of taking an operation back.
class ObstaclesTable : public Table {
public:
    explicit ObstaclesTable(std::vector<contract::Obstacle> obstacles) : obstacles_(std::move(obstacles)) {}

    const std::vector<TableColumn>& columns() const override;
    std::size_t rowCount() const override { return obstacles_.size(); }
    contract::Value value(std::size_t row, std::size_t column) const override;

private:
    std::vector<contract::Obstacle> obstacles_;
};

} // namespace host
