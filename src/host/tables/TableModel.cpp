#include "host/tables/TableModel.h"

#include <algorithm>
#include <utility>

namespace host {

namespace {

Qt::Alignment alignment(TableColumn::Kind kind) {
    return (kind == TableColumn::Kind::number ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
}

} // namespace

void TableModel::setTable(std::shared_ptr<const Table> table) {
    beginResetModel();
    table_ = std::move(table);
    shown_.clear();
    endResetModel();
    setFilter({});
}

void TableModel::setFilter(const std::function<bool(std::size_t)>& accepts) {
    beginResetModel();
    shown_.clear();
    const std::size_t rows = table_ ? table_->rowCount() : 0;
    for (std::size_t row = 0; row < rows; ++row)
        if (!accepts || accepts(row))
            shown_.push_back(row);
    endResetModel();
}

std::optional<int> TableModel::shownRow(std::size_t row) const {
    const auto at = std::lower_bound(shown_.begin(), shown_.end(), row);
    if (at == shown_.end() || *at != row)
        return {};
    return static_cast<int>(at - shown_.begin());
}

int TableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(shown_.size());
}

int TableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() || !table_ ? 0 : static_cast<int>(table_->columns().size());
}

QVariant TableModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    const auto column = static_cast<std::size_t>(index.column());
    if (role == Qt::DisplayRole)
        return cellText(*table_, tableRow(index.row()), column);
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(alignment(table_->columns()[column].kind));
    return {};
}

QVariant TableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || !table_ || section < 0 || section >= columnCount())
        return {};
    const auto& column = table_->columns()[static_cast<std::size_t>(section)];
    if (role == Qt::DisplayRole)
        return column.title;
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(alignment(column.kind));
    return {};
}

} // namespace host
