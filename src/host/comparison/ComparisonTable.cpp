#include "host/comparison/ComparisonTable.h"

#include "host/services/Text.h"

#include <QJsonArray>

#include <array>

namespace host {

using contract::ComparisonOutcome;
using contract::ComparisonSide;
using contract::Value;

namespace {

struct Words {
    const char* name;
    const char* title;
};
constexpr std::array<Words, 4> words{
    {{"left", "Solo a sinistra"}, {"right", "Solo a destra"}, {"parent", "Altro padre"}, {"period", "Altro periodo"}}};

QJsonValue sideJson(const std::optional<ComparisonSide>& side) {
    if (!side)
        return QJsonValue::Null;
    QJsonArray path;
    for (const auto account : side->path)
        path.append(static_cast<qint64>(account));
    return QJsonObject{{QStringLiteral("id"), static_cast<qint64>(side->node)},
                       {QStringLiteral("parent_account"),
                        side->parentAccount ? QJsonValue(static_cast<qint64>(*side->parentAccount)) : QJsonValue()},
                       {QStringLiteral("start"), toQt(side->start.text())},
                       {QStringLiteral("end"), toQt(side->end.text())},
                       {QStringLiteral("path"), path}};
}

/// Parent, start, end, way.
Value sideValue(const std::optional<ComparisonSide>& side, std::size_t column) {
    if (!side)
        return Value::null();
    switch (column) {
    case 0:
        return side->parentAccount ? Value(*side->parentAccount) : Value::null();
    case 1:
        return side->start;
    case 2:
        return side->end;
    default:
        return pathText(*side);
    }
}

} // namespace

const std::vector<TableColumn>& ComparisonTable::columns() const {
    using Kind = TableColumn::Kind;
    static const std::vector<TableColumn> differences{{QStringLiteral("Codice"), Kind::number},
                                                      {QStringLiteral("Ragione sociale")},
                                                      {QStringLiteral("Esito")},
                                                      {QStringLiteral("Padre a sinistra"), Kind::number},
                                                      {QStringLiteral("Inizio a sinistra"), Kind::day},
                                                      {QStringLiteral("Fine a sinistra"), Kind::day},
                                                      {QStringLiteral("Percorso a sinistra")},
                                                      {QStringLiteral("Padre a destra"), Kind::number},
                                                      {QStringLiteral("Inizio a destra"), Kind::day},
                                                      {QStringLiteral("Fine a destra"), Kind::day},
                                                      {QStringLiteral("Percorso a destra")}};
    static const std::vector<TableColumn> tree{
        {QStringLiteral("Codice"), Kind::number}, {QStringLiteral("Ragione sociale")},
        {QStringLiteral("Padre"), Kind::number},  {QStringLiteral("Data inizio"), Kind::day},
        {QStringLiteral("Data fine"), Kind::day}, {QStringLiteral("Percorso")}};
    return oneTree_ ? tree : differences;
}

const contract::ComparisonRow& ComparisonTable::row(std::size_t row) const {
    if (composed_ != row) {
        row_ = report_->row(row);
        composed_ = row;
    }
    return row_;
}

Value ComparisonTable::value(std::size_t index, std::size_t column) const {
    const auto& shown = row(index);
    if (column == 0)
        return shown.account;
    if (column == 1)
        return shown.name;
    if (oneTree_)
        return sideValue(shown.left, column - 2);
    if (column == 2)
        return outcomeTitle(shown.outcome).toStdString();
    return column < 7 ? sideValue(shown.left, column - 3) : sideValue(shown.right, column - 7);
}

int ComparisonTable::level(std::size_t index) const {
    const auto& shown = row(index);
    return oneTree_ && shown.left ? static_cast<int>(shown.left->path.size()) - 1 : 0;
}

QString outcomeName(ComparisonOutcome outcome) {
    return QString::fromLatin1(words[static_cast<std::size_t>(outcome)].name);
}

QString outcomeTitle(ComparisonOutcome outcome) {
    return QString::fromLatin1(words[static_cast<std::size_t>(outcome)].title);
}

QJsonObject comparisonRowJson(const contract::ComparisonRow& row) {
    return {{QStringLiteral("account"), static_cast<qint64>(row.account)},
            {QStringLiteral("name"), toQt(row.name)},
            {QStringLiteral("outcome"), outcomeName(row.outcome)},
            {QStringLiteral("left"), sideJson(row.left)},
            {QStringLiteral("right"), sideJson(row.right)}};
}

std::string pathText(const ComparisonSide& side) {
    std::string text;
    for (const auto account : side.path)
        text += (text.empty() ? "" : " > ") + std::to_string(account);
    return text;
}

} // namespace host
