#pragma once

#include "host/audit/Audits.h"
#include "host/tables/Table.h"

#include <QJsonObject>
#include <QString>

#include <optional>

namespace host {

/// Findings as a list for a person: severity, rule, distinta, node, account, name, sentence, remedy.
class AuditTable : public Table {
public:
    explicit AuditTable(AuditResult result) : result_(std::move(result)) {}

    const std::vector<TableColumn>& columns() const override;
    std::size_t rowCount() const override { return result_.report->size(); }
    contract::Value value(std::size_t row, std::size_t column) const override;

private:
    const contract::AuditFinding& finding(std::size_t row) const;

    AuditResult result_;
    // A row's cells are asked for one after the other.
    mutable std::optional<std::size_t> composed_;
    mutable contract::AuditFinding finding_;
};

/// "error", "warning", "hint".
QString severityName(contract::AuditSeverity severity);
/// As a person reads it: "Errore", "Avviso", "Nota".
QString severityTitle(contract::AuditSeverity severity);

/// A finding as scripts and the command line tell it.
QJsonObject findingJson(const AuditResult& result, std::size_t index);

/// How many findings there are, in a sentence without its end: "3 errori, 2 avvisi, 1 nota"; "nessun rilievo".
QString countsText(const AuditResult& result, contract::AuditSeverity mildest = contract::AuditSeverity::hint);

} // namespace host
