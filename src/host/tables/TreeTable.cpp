#include "host/tables/TreeTable.h"

#include "host/services/Text.h"

#include <utility>

namespace host {

using contract::TreeColumnKind;

namespace {

/// Accounts of a deep node's path that are named: those nearest to it. A chain of a hundred thousand nodes
/// would fill the disk with its paths.
constexpr std::size_t longestPath = 100;
constexpr std::string_view separator = " / ";

TableColumn::Kind kindOf(TreeColumnKind kind) {
    switch (kind) {
    case TreeColumnKind::code:
        return TableColumn::Kind::number;
    case TreeColumnKind::date:
        return TableColumn::Kind::day;
    default:
        return TableColumn::Kind::text;
    }
}

} // namespace

TreeTable::TreeTable(platform::qt::TreeListControl& tree, Rows rows) {
    chooseColumns(tree);
    tree.fetchAllTexts();
    std::vector<std::int32_t> rowOf(tree.nodeCount(), -1); // by position
    for (auto node = tree.firstNode(); node; node = tree.next(node)) {
        const auto above = tree.parent(node);
        NodeRow row;
        row.level = tree.level(node);
        if (above) {
            const auto aboveRow = rowOf[static_cast<std::size_t>(above.position)];
            if (rows == Rows::shown && (aboveRow < 0 || !tree.expanded(above)))
                continue;
            row.parent = aboveRow;
        }
        for (const auto& name : names_)
            row.cells.push_back(tree.value(node, name));
        rowOf[static_cast<std::size_t>(node.position)] = static_cast<std::int32_t>(nodes_.size());
        nodes_.push_back(std::move(row));
    }
}

void TreeTable::chooseColumns(const platform::qt::TreeListControl& tree) {
    const auto add = [this](const QString& title, TableColumn::Kind kind, int source) {
        columns_.push_back({title, kind});
        sources_.push_back(source);
    };
    add(QStringLiteral("Livello"), TableColumn::Kind::number, levelSource);
    for (const auto& column : tree.columns()) {
        if (!column.visible || column.kind == TreeColumnKind::check)
            continue;
        const auto cell = static_cast<int>(names_.size());
        names_.push_back(column.name);
        if (column.kind == TreeColumnKind::code && account_ < 0)
            account_ = cell;
        add(toQt(column.caption), kindOf(column.kind), cell);
        if (column.kind == TreeColumnKind::text)
            add(QStringLiteral("Padre"), TableColumn::Kind::number, parentSource);
    }
    add(QStringLiteral("Percorso"), TableColumn::Kind::text, pathSource);
}

contract::Value TreeTable::value(std::size_t row, std::size_t column) const {
    const NodeRow& node = nodes_[row];
    switch (const int source = sources_[column]) {
    case levelSource:
        return node.level + 1;
    case parentSource:
        return parentAccount(node);
    case pathSource:
        return path(row);
    default:
        return node.cells[static_cast<std::size_t>(source)];
    }
}

contract::Value TreeTable::parentAccount(const NodeRow& node) const {
    if (node.parent < 0 || account_ < 0)
        return {};
    return nodes_[static_cast<std::size_t>(node.parent)].cells[static_cast<std::size_t>(account_)];
}

std::string TreeTable::path(std::size_t row) const {
    if (account_ < 0)
        return {};
    const auto accountOf = [this](std::int32_t at) {
        return nodes_[static_cast<std::size_t>(at)].cells[static_cast<std::size_t>(account_)].text();
    };
    std::vector<std::string> accounts;
    auto at = static_cast<std::int32_t>(row);
    for (; at >= 0 && accounts.size() < longestPath; at = nodes_[static_cast<std::size_t>(at)].parent)
        accounts.push_back(accountOf(at));
    if (at >= 0)
        accounts.emplace_back("…");
    std::string path;
    for (auto account = accounts.rbegin(); account != accounts.rend(); ++account) {
        if (!path.empty())
            path += separator;
        path += *account;
    }
    return path;
}

} // namespace host
