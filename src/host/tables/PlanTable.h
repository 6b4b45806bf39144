#pragma once

#include "contract/MovePreview.h"
#include "host/tables/Table.h"

#include <memory>

namespace host {

/// What a move does with a node, in a few words: "si sposta", "resta: " and the reason.
QString outcomeText(const contract::MoveRow& row);
/// How many nodes a plan names, and how many of them each outcome has: "587 nodi: 570 si spostano, 17 restano".
QString countsText(const contract::MovePlan& plan);

/// The nodes of a plan as a list: account, name, what happens, from where, to where; for a list of moves the line
/// before them.
class PlanTable : public Table {
public:
    /// withLines: of a list.
    PlanTable(std::shared_ptr<const contract::MovePlan> plan, bool withLines);

    const std::vector<TableColumn>& columns() const override { return columns_; }
    std::size_t rowCount() const override { return plan_->rows.size(); }
    contract::Value value(std::size_t row, std::size_t column) const override;

private:
    enum class Column { line, account, name, outcome, from, to };

    std::string place(const std::optional<std::int64_t>& type, bool root, const std::string& parent,
                      const std::optional<contract::Date>& start, const std::optional<contract::Date>& end) const;
    std::string from(const contract::MoveRow& row) const;
    std::string to(const contract::MoveRow& row) const;

    std::shared_ptr<const contract::MovePlan> plan_;
    std::vector<TableColumn> columns_;
    bool withLines_;
};

} // namespace host
