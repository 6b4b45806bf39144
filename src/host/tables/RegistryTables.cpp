#include "host/tables/RegistryTables.h"

#include "host/services/Text.h"

namespace host {

using contract::OperationKind;
using contract::RowOutcome;
using contract::Value;
using Kind = TableColumn::Kind;

namespace {

Value optionalNumber(std::optional<std::int64_t> number) {
    return number ? Value(*number) : Value::null();
}

Value textOf(const QString& text) {
    return text.toStdString();
}

} // namespace

QString kindText(OperationKind kind) {
    switch (kind) {
    case OperationKind::structure:
        return QStringLiteral("spostamento di struttura");
    case OperationKind::validity:
        return QStringLiteral("spostamento con validità");
    case OperationKind::edit:
        return QStringLiteral("modifica delle date");
    case OperationKind::list:
        return QStringLiteral("elenco di spostamenti");
    case OperationKind::undo:
        return QStringLiteral("annullamento");
    }
    return {};
}

QString outcomeText(RowOutcome outcome) {
    switch (outcome) {
    case RowOutcome::moves:
        return QStringLiteral("si sposta");
    case RowOutcome::copies:
        return QStringLiteral("si chiude e si copia");
    case RowOutcome::opens:
        return QStringLiteral("si apre");
    case RowOutcome::stays:
        return QStringLiteral("resta");
    case RowOutcome::edits:
        return QStringLiteral("cambia date");
    case RowOutcome::restores:
        return QStringLiteral("torna com'era");
    case RowOutcome::deletes:
        return QStringLiteral("si toglie");
    }
    return {};
}

const std::vector<TableColumn>& OperationsTable::columns() const {
    static const std::vector<TableColumn> columns{{QStringLiteral("N."), Kind::number},
                                                  {QStringLiteral("Giorno"), Kind::day},
                                                  {QStringLiteral("Ora")},
                                                  {QStringLiteral("Utente")},
                                                  {QStringLiteral("Gruppo")},
                                                  {QStringLiteral("Tipo")},
                                                  {QStringLiteral("Righe"), Kind::number},
                                                  {QStringLiteral("Annulla la"), Kind::number},
                                                  {QStringLiteral("Annullata dalla"), Kind::number},
                                                  {QStringLiteral("Descrizione")}};
    return columns;
}

Value OperationsTable::value(std::size_t row, std::size_t column) const {
    const auto& operation = operations_[row];
    switch (column) {
    case 0:
        return operation.id;
    case 1:
        return operation.day;
    case 2:
        return operation.time;
    case 3:
        return operation.user;
    case 4:
        return operation.group;
    case 5:
        return textOf(kindText(operation.kind));
    case 6:
        return operation.rows;
    case 7:
        return optionalNumber(operation.undoes);
    case 8:
        return optionalNumber(operation.undoneBy);
    default:
        return operation.description;
    }
}

const std::vector<TableColumn>& OperationRowsTable::columns() const {
    static const std::vector<TableColumn> columns{{QStringLiteral("Riga"), Kind::number},
                                                  {QStringLiteral("Conto"), Kind::number},
                                                  {QStringLiteral("Nodo"), Kind::number},
                                                  {QStringLiteral("Che cosa")},
                                                  {QStringLiteral("Prima")},
                                                  {QStringLiteral("Dopo")},
                                                  {QStringLiteral("Motivo")}};
    return columns;
}

std::string OperationRowsTable::told(const std::optional<contract::RowValues>& values, std::string_view none) const {
    if (!values)
        return std::string(none);
    std::string text;
    for (const auto& [column, value] : *values)
        text += (text.empty() ? "" : "; ") + captions_(column) + ": " +
                (value.isMissing() ? std::string("vuoto") : value.text());
    return text;
}

Value OperationRowsTable::value(std::size_t row, std::size_t column) const {
    const auto& each = rows_[row];
    switch (column) {
    case 0:
        return each.row;
    case 1:
        return optionalNumber(each.account);
    case 2:
        return each.id;
    case 3:
        return textOf(outcomeText(each.outcome));
    case 4:
        return told(each.before, "non c'era");
    case 5:
        return told(each.after, "non c'è più");
    default:
        return each.reason;
    }
}

const std::vector<TableColumn>& ObstaclesTable::columns() const {
    static const std::vector<TableColumn> columns{
        {QStringLiteral("Conto"), Kind::number}, {QStringLiteral("Nodo"), Kind::number}, {QStringLiteral("Motivo")}};
    return columns;
}

Value ObstaclesTable::value(std::size_t row, std::size_t column) const {
    const auto& obstacle = obstacles_[row];
    if (column == 0)
        return optionalNumber(obstacle.account);
    return column == 1 ? optionalNumber(obstacle.id) : Value(obstacle.reason);
}

} // namespace host
