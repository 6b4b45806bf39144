#pragma once

#include "contract/Comparison.h"
#include "host/tables/Table.h"

#include <QJsonObject>
#include <QString>

#include <memory>
#include <optional>
#include <string>

namespace host {

/// Differences as a list for a person: account, name, outcome, and parent, period and way from the root on both sides.
/// Of a tree on a day the one side, with each link's depth as its level.
class ComparisonTable : public Table {
public:
    ComparisonTable(std::shared_ptr<const contract::ComparisonReport> report, bool oneTree)
        : report_(std::move(report)), oneTree_(oneTree) {}

    const std::vector<TableColumn>& columns() const override;
    std::size_t rowCount() const override { return report_->size(); }
    contract::Value value(std::size_t row, std::size_t column) const override;
    int level(std::size_t row) const override;

private:
    const contract::ComparisonRow& row(std::size_t row) const;

    std::shared_ptr<const contract::ComparisonReport> report_;
    bool oneTree_;
    // A row's cells are asked for one after the other.
    mutable std::optional<std::size_t> composed_;
    mutable contract::ComparisonRow row_;
};

/// "left", "right", "parent", "period".
QString outcomeName(contract::ComparisonOutcome outcome);
/// As a person reads it: "Solo a sinistra".
QString outcomeTitle(contract::ComparisonOutcome outcome);

/// A row as scripts and the command line tell it.
QJsonObject comparisonRowJson(const contract::ComparisonRow& row);

/// Accounts from the root down, as one text: "100 > 110 > 111".
std::string pathText(const contract::ComparisonSide& side);

} // namespace host
