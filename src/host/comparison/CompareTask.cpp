#include "host/comparison/CompareTask.h"

#include "contract/RuntimeError.h"
#include "host/audit/Audits.h"
#include "host/comparison/ComparisonTable.h"
#include "host/comparison/Comparisons.h"
#include "host/start/StartFailure.h"
#include "host/tables/CsvText.h"

#include <QJsonDocument>

#include <algorithm>
#include <ostream>
#include <string>
#include <vector>

namespace host {

using contract::ComparedDistinta;
using contract::Value;

namespace {

std::string trimmed(const std::string& text) {
    const auto begin = text.find_first_not_of(' ');
    return begin == std::string::npos ? std::string() : text.substr(begin, text.find_last_not_of(' ') - begin + 1);
}

/// The distinta of that id, else of that code.
std::int64_t idOf(const std::vector<ComparedDistinta>& distinte, const std::string& wanted, std::int64_t company) {
    const auto number = Value(wanted).integer();
    std::vector<std::int64_t> found;
    for (const auto& distinta : distinte) {
        if (number == distinta.id)
            return distinta.id;
        if (trimmed(distinta.code) == trimmed(wanted))
            found.push_back(distinta.id);
    }
    if (found.size() == 1)
        return found.front();
    throw StartFailure(ExitStatus::usage,
                       "riga di comando: l'azienda " + std::to_string(company) +
                           (found.empty() ? " non ha la distinta \"" : " ha più distinte dal codice \"") + wanted +
                           "\"" + (found.empty() ? "" : ": indicare l'identificativo"));
}

void addSide(std::vector<Value>& fields, const std::optional<contract::ComparisonSide>& side) {
    if (!side) {
        fields.resize(fields.size() + 5);
        return;
    }
    fields.emplace_back(side->node);
    fields.push_back(side->parentAccount ? Value(*side->parentAccount) : Value::null());
    fields.emplace_back(side->start);
    fields.emplace_back(side->end);
    fields.emplace_back(pathText(*side));
}

std::string csvOf(const contract::ComparisonRow& row) {
    std::vector<Value> fields{row.account, row.name, outcomeName(row.outcome).toStdString()};
    addSide(fields, row.left);
    addSide(fields, row.right);
    return csvLine(fields);
}

std::shared_ptr<const contract::ComparisonReport> compared(QuietWork& work, const CommandLine& line) {
    try {
        Comparisons comparisons(work.component(), work.connection(), work.company());
        const auto distinte = comparisons.distinte();
        const auto left = idOf(distinte, line.compared[0], work.company());
        const auto right = idOf(distinte, line.compared[1], work.company());
        NoProgress nobody;
        return comparisons.compare(left, right, line.date.value_or(contract::Date::today()), nobody);
    } catch (const contract::RuntimeError& error) {
        throw StartFailure(ExitStatus::database, error.description());
    }
}

} // namespace

int compareDistinte(QuietWork& work, const CommandLine& line, std::ostream& out) {
    const auto report = compared(work, line);
    const bool csv = line.format.value_or(CommandLine::Format::csv) == CommandLine::Format::csv;
    if (csv)
        out << csvLine({"account", "name", "outcome", "left_id", "left_parent_account", "left_start", "left_end",
                        "left_path", "right_id", "right_parent_account", "right_start", "right_end", "right_path"});
    for (std::size_t i = 0; i < report->size() && out; ++i) {
        const auto row = report->row(i);
        if (csv)
            out << csvOf(row);
        else
            out << QJsonDocument(comparisonRowJson(row)).toJson(QJsonDocument::Compact).toStdString() << '\n';
    }
    out.flush();
    if (!out)
        throw StartFailure(ExitStatus::refused, "le differenze non si possono scrivere sullo standard output");
    return static_cast<int>(report->size() > 0 ? ExitStatus::refused : ExitStatus::success);
}

} // namespace host
