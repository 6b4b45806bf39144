#include "host/audit/AuditTable.h"

#include "host/services/Text.h"

#include <QStringList>

#include <array>

namespace host {

using contract::AuditSeverity;
using contract::Value;

namespace {

Value number(const std::optional<std::int64_t>& value) {
    return value ? Value(*value) : Value::null();
}
QJsonValue jsonNumber(const std::optional<std::int64_t>& value) {
    return value ? QJsonValue(static_cast<qint64>(*value)) : QJsonValue();
}

/// One and several of each severity.
struct Words {
    const char* name;
    const char* one;
    const char* several;
};
constexpr std::array<Words, 3> words{
    {{"error", "errore", "errori"}, {"warning", "avviso", "avvisi"}, {"hint", "nota", "note"}}};

const Words& wordsOf(AuditSeverity severity) {
    return words[static_cast<std::size_t>(severity)];
}

} // namespace

const std::vector<TableColumn>& AuditTable::columns() const {
    using Kind = TableColumn::Kind;
    static const std::vector<TableColumn> columns{{QStringLiteral("Gravità")},
                                                  {QStringLiteral("Regola")},
                                                  {QStringLiteral("Distinta")},
                                                  {QStringLiteral("Nodo"), Kind::number},
                                                  {QStringLiteral("Codice"), Kind::number},
                                                  {QStringLiteral("Ragione sociale")},
                                                  {QStringLiteral("Rilievo")},
                                                  {QStringLiteral("Che cosa fare")}};
    return columns;
}

const contract::AuditFinding& AuditTable::finding(std::size_t row) const {
    if (composed_ != row) {
        finding_ = result_.report->finding(row);
        composed_ = row;
    }
    return finding_;
}

Value AuditTable::value(std::size_t row, std::size_t column) const {
    const auto& rule = result_.ruleOf(row);
    switch (column) {
    case 0:
        return severityTitle(rule.severity).toStdString();
    case 1:
        return rule.title;
    case 2:
        return finding(row).typeCode.empty() ? number(finding(row).type) : Value(finding(row).typeCode);
    case 3:
        return number(finding(row).node);
    case 4:
        return number(finding(row).account);
    case 5:
        return finding(row).name;
    case 6:
        return finding(row).text;
    default:
        return rule.remedy;
    }
}

QString severityName(AuditSeverity severity) {
    return QString::fromLatin1(wordsOf(severity).name);
}

QString severityTitle(AuditSeverity severity) {
    QString title = QString::fromLatin1(wordsOf(severity).one);
    title[0] = title[0].toUpper();
    return title;
}

QJsonObject findingJson(const AuditResult& result, std::size_t index) {
    const auto finding = result.report->finding(index);
    const auto& rule = result.rules[finding.rule];
    return {{QStringLiteral("severity"), severityName(rule.severity)}, {QStringLiteral("rule"), toQt(rule.name)},
            {QStringLiteral("type"), jsonNumber(finding.type)},        {QStringLiteral("id"), jsonNumber(finding.node)},
            {QStringLiteral("account"), jsonNumber(finding.account)},  {QStringLiteral("text"), toQt(finding.text)}};
}

QString countsText(const AuditResult& result, AuditSeverity mildest) {
    std::array<std::size_t, words.size()> counts{};
    for (std::size_t i = 0; i < result.report->size(); ++i)
        ++counts[static_cast<std::size_t>(result.ruleOf(i).severity)];
    QStringList parts;
    for (std::size_t i = 0; i <= static_cast<std::size_t>(mildest); ++i)
        if (counts[i] != 0)
            parts.append(QStringLiteral("%1 %2").arg(counts[i]).arg(
                QLatin1String(counts[i] == 1 ? words[i].one : words[i].several)));
    return parts.isEmpty() ? QStringLiteral("nessun rilievo") : parts.join(QStringLiteral(", "));
}

} // namespace host
