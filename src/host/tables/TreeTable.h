#pragma once

#include "host/tables/Table.h"
#include "platform/qt/tree/TreeListControl.h"

#include <cstdint>
#include <vector>

namespace host {

/// The nodes of a tree as it stands, in its order: level (1 the outermost), the columns that the tree shows, the
/// account of the parent, and the path of accounts from the root. What the tree shows later does not change the table.
class TreeTable : public Table {
public:
    enum class Rows { all, shown }; ///< shown: without what hangs below closed nodes

    TreeTable(platform::qt::TreeListControl& tree, Rows rows);

    const std::vector<TableColumn>& columns() const override { return columns_; }
    std::size_t rowCount() const override { return nodes_.size(); }
    contract::Value value(std::size_t row, std::size_t column) const override;
    int level(std::size_t row) const override { return nodes_[row].level; }

private:
    struct NodeRow {
        int level = 0;
        std::int32_t parent = -1; ///< row of this table
        std::vector<contract::Value> cells;
    };

    void chooseColumns(const platform::qt::TreeListControl& tree);
    contract::Value parentAccount(const NodeRow& node) const;
    std::string path(std::size_t row) const;

    std::vector<TableColumn> columns_;
    /// What fills each column: a cell of the tree by its number, or one of these.
    enum Source : int { levelSource = -1, parentSource = -2, pathSource = -3 };
    std::vector<int> sources_;
    std::vector<std::string> names_; ///< of the tree's columns that are taken over
    int account_ = -1;               ///< which of them holds the account
    std::vector<NodeRow> nodes_;
};

} // namespace host
