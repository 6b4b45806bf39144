#pragma once

#include "host/tables/Table.h"

#include <QAbstractTableModel>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace host {

/// A table for Qt's views: all of its rows, or those that a filter lets through, in the table's order.
class TableModel : public QAbstractTableModel {
    Q_OBJECT
public:
    using QAbstractTableModel::QAbstractTableModel;

    /// Null for none. Every row is shown until a filter is set anew.
    void setTable(std::shared_ptr<const Table> table);
    const std::shared_ptr<const Table>& table() const { return table_; }
    /// Shows the rows that the filter accepts; all where it is empty.
    void setFilter(const std::function<bool(std::size_t)>& accepts);
    /// The table's row of a shown one.
    std::size_t tableRow(int shown) const { return shown_[static_cast<std::size_t>(shown)]; }
    /// Where a row of the table is shown; nothing when a filter keeps it back.
    std::optional<int> shownRow(std::size_t row) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::shared_ptr<const Table> table_;
    std::vector<std::size_t> shown_; ///< ascending
};

} // namespace host
