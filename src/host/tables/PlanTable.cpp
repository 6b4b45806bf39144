#include "host/tables/PlanTable.h"

#include "host/services/Text.h"

#include <QStringList>

#include <array>

namespace host {

using contract::MoveOutcome;
using contract::MoveRow;

namespace {

/// What happens to one node, and to several.
struct Words {
    MoveOutcome outcome;
    const char* one;
    const char* many;
};
constexpr std::array<Words, 5> allWords{{{MoveOutcome::moves, "si sposta", "si spostano"},
                                         {MoveOutcome::copies, "si chiude e si copia", "si chiudono e si copiano"},
                                         {MoveOutcome::closes, "si chiude", "si chiudono"},
                                         {MoveOutcome::stays, "resta", "restano"},
                                         {MoveOutcome::refused, "rifiutato", "rifiutati"}}};

const Words& wordsOf(MoveOutcome outcome) {
    for (const auto& words : allWords)
        if (words.outcome == outcome)
            return words;
    return allWords.back();
}

} // namespace

QString outcomeText(const MoveRow& row) {
    const QString text = QString::fromUtf8(wordsOf(row.outcome).one);
    return row.reason.empty() ? text : text + QStringLiteral(": ") + toQt(row.reason);
}

QString countsText(const contract::MovePlan& plan) {
    std::array<std::size_t, allWords.size()> counts{};
    for (const auto& row : plan.rows)
        for (std::size_t i = 0; i < allWords.size(); ++i)
            counts[i] += row.outcome == allWords[i].outcome ? 1 : 0;
    QStringList parts;
    for (std::size_t i = 0; i < allWords.size(); ++i)
        if (counts[i] > 0)
            parts.append(QStringLiteral("%1 %2").arg(counts[i]).arg(
                QString::fromUtf8(counts[i] == 1 ? allWords[i].one : allWords[i].many)));
    const auto all = plan.rows.size();
    return QStringLiteral("%1 %2: %3")
        .arg(all)
        .arg(all == 1 ? QStringLiteral("nodo") : QStringLiteral("nodi"), parts.join(QStringLiteral(", ")));
}

PlanTable::PlanTable(std::shared_ptr<const contract::MovePlan> plan, bool withLines)
    : plan_(std::move(plan)), withLines_(withLines) {
    if (withLines_)
        columns_.push_back({QStringLiteral("Riga"), TableColumn::Kind::number});
    columns_.push_back({QStringLiteral("Conto"), TableColumn::Kind::number});
    for (const auto& title : {QStringLiteral("Ragione sociale"), QStringLiteral("Che cosa succede"),
                              QStringLiteral("Da"), QStringLiteral("A")})
        columns_.push_back({title, TableColumn::Kind::text});
}

contract::Value PlanTable::value(std::size_t row, std::size_t column) const {
    const auto& node = plan_->rows[row];
    const auto number = [](const std::optional<std::int64_t>& value) {
        return value ? contract::Value(*value) : contract::Value();
    };
    switch (static_cast<Column>(column + (withLines_ ? 0 : 1))) {
    case Column::line:
        return number(node.line);
    case Column::account:
        return number(node.account);
    case Column::name:
        return node.name;
    case Column::outcome:
        return outcomeText(node).toStdString();
    case Column::from:
        return from(node);
    case Column::to:
        return to(node);
    }
    return {};
}

std::string PlanTable::place(const std::optional<std::int64_t>& type, bool root, const std::string& parent,
                             const std::optional<contract::Date>& start,
                             const std::optional<contract::Date>& end) const {
    std::string text;
    if (type) {
        const auto code = plan_->types.find(*type);
        text = code != plan_->types.end() ? code->second : std::to_string(*type);
    }
    text += root ? ", capostipite" : ", sotto " + parent;
    if (start)
        text += ", dal " + start->text();
    if (end)
        text += (start ? " al " : ", fino al ") + end->text();
    return text;
}

std::string PlanTable::from(const MoveRow& row) const {
    if (!row.id)
        return {};
    return place(row.before.type, !row.before.parent, row.before.parentName, row.before.start, row.before.end);
}

std::string PlanTable::to(const MoveRow& row) const {
    if (row.copy)
        return place(row.copy->type, false, row.copy->parentName, row.copy->start, row.copy->end);
    if (row.outcome != MoveOutcome::moves && row.outcome != MoveOutcome::closes)
        return {};
    return place(row.after.type, !row.after.parent, row.after.parentName, row.after.start, row.after.end);
}

} // namespace host
