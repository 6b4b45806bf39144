#include "host/audit/CheckTask.h"

#include "contract/RuntimeError.h"
#include "host/audit/AuditTable.h"
#include "host/audit/Audits.h"
#include "host/start/StartFailure.h"
#include "host/tables/CsvText.h"

#include <QJsonDocument>

#include <ostream>
#include <string>
#include <vector>

namespace host {

using contract::AuditSeverity;
using contract::Value;

namespace {

AuditResult audited(QuietWork& work) {
    NoProgress nobody;
    try {
        return auditDistinte(work.component(), work.connection(), work.company(), nobody);
    } catch (const contract::RuntimeError& error) {
        throw StartFailure(ExitStatus::database, error.description());
    }
}

Value orNull(const std::optional<std::int64_t>& value) {
    return value ? Value(*value) : Value::null();
}

std::string csvOf(const AuditResult& result, std::size_t index) {
    const auto finding = result.report->finding(index);
    const auto& rule = result.rules[finding.rule];
    return csvLine({severityName(rule.severity).toStdString(), rule.name, orNull(finding.type), orNull(finding.node),
                    orNull(finding.account), finding.name, finding.text, rule.remedy});
}

std::string textOf(const AuditResult& result, std::size_t index) {
    const auto finding = result.report->finding(index);
    const auto& rule = result.rules[finding.rule];
    std::string line = severityTitle(rule.severity).toStdString() + " " + std::string(rule.name);
    if (finding.type)
        line += ", distinta " + (finding.typeCode.empty() ? std::to_string(*finding.type) : finding.typeCode);
    if (finding.node)
        line += ", nodo " + std::to_string(*finding.node);
    if (finding.account)
        line += ", conto " + std::to_string(*finding.account);
    if (!finding.name.empty())
        line += " " + finding.name;
    return line + ": " + finding.text + "\n";
}

std::string lineOf(const AuditResult& result, std::size_t index, CommandLine::Format format) {
    switch (format) {
    case CommandLine::Format::csv:
        return csvOf(result, index);
    case CommandLine::Format::json:
        return QJsonDocument(findingJson(result, index)).toJson(QJsonDocument::Compact).toStdString() + "\n";
    case CommandLine::Format::text:
        break;
    }
    return textOf(result, index);
}

} // namespace

int checkDistinte(QuietWork& work, AuditSeverity mildest, CommandLine::Format format, std::ostream& out) {
    const auto result = audited(work);
    if (format == CommandLine::Format::csv)
        out << csvLine({"severity", "rule", "type", "id", "account", "name", "text", "remedy"});
    bool found = false;
    // The most severe come first.
    for (std::size_t i = 0; i < result.report->size() && result.ruleOf(i).severity <= mildest && out; ++i) {
        out << lineOf(result, i, format);
        found = true;
    }
    if (format == CommandLine::Format::text)
        out << "Azienda " << work.company() << ": " << countsText(result, mildest).toStdString() << ".\n";
    out.flush();
    if (!out)
        throw StartFailure(ExitStatus::refused, "i rilievi non si possono scrivere sullo standard output");
    return static_cast<int>(found ? ExitStatus::refused : ExitStatus::success);
}

} // namespace host
