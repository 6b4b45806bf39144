#include "platform/dialect/Scope.h"

namespace platform::dialect {

void Scope::add(const JoinTree& tree) {
    if (tree.isTable()) {
        add(tree.table);
        return;
    }
    add(*tree.left);
    add(*tree.right);
}

ValueKind Scope::kindOfColumn(const TableReference& table, std::string_view name, bool& has) const {
    has = false;
    if (const auto* columns = catalog_.columns(table.name))
        for (const auto& column : *columns)
            if (sameName(column.name, name)) {
                has = true;
                return column.kind;
            }
    return ValueKind::unknown;
}

std::optional<Scope::Column> Scope::findHere(const Expression& column, bool& doubtful) const {
    for (std::size_t i = 0; i < tables_.size(); ++i) {
        const TableReference& table = *tables_[i];
        bool has = false;
        if (!column.table.empty()) {
            if (sameName(column.table, table.alias))
                return Column{kindOfColumn(table, column.name, has), i, false};
            continue;
        }
        const ValueKind kind = kindOfColumn(table, column.name, has);
        if (has)
            return Column{kind, i, false};
        if (!catalog_.columns(table.name))
            doubtful = true;
    }
    return std::nullopt;
}

Scope::Column Scope::find(const Expression& column) const {
    bool doubtful = false;
    if (const auto here = findHere(column, doubtful))
        return *here;
    Column found;
    if (outer_)
        found = outer_->find(column);
    found.table = std::nullopt;
    found.doubtful = doubtful;
    return found;
}

ValueKind Scope::kindOf(const Expression& expression) const {
    using Kind = Expression::Kind;
    switch (expression.kind) {
    case Kind::column:
        return find(expression).kind;
    case Kind::number:
        return expression.name.find('.') == std::string::npos ? ValueKind::whole : ValueKind::amount;
    case Kind::argument:
        return ValueKind::whole;
    case Kind::text:
        return ValueKind::text;
    case Kind::date:
        return ValueKind::date;
    case Kind::cast:
        return expression.name.find("CHAR") != std::string::npos ? ValueKind::text : ValueKind::whole;
    case Kind::negative:
        return kindOf(*expression.operands[0]);
    case Kind::arithmetic:
        return kindOfArithmetic(expression);
    case Kind::function:
        return kindOfFunction(expression);
    case Kind::cases:
        return kindOfCases(expression);
    case Kind::query:
        return kindOfQuery(*expression.query);
    default:
        return ValueKind::unknown;
    }
}

ValueKind Scope::kindOfFunction(const Expression& expression) const {
    if (expression.name == "COUNT")
        return ValueKind::whole;
    const ValueKind first = kindOf(*expression.operands[0]);
    if (expression.name == "ISNULL")
        return first == ValueKind::unknown ? kindOf(*expression.operands[1]) : first;
    if (expression.name == "MIN" || expression.name == "MAX" || expression.name == "SUM")
        return first;
    return ValueKind::text; // RTRIM, LTRIM, UPPER, LOWER
}

ValueKind Scope::kindOfArithmetic(const Expression& expression) const {
    const ValueKind left = kindOf(*expression.operands[0]);
    const ValueKind right = kindOf(*expression.operands[1]);
    for (const ValueKind kind : {ValueKind::date, ValueKind::text, ValueKind::amount})
        if (left == kind || right == kind)
            return kind;
    return left == ValueKind::unknown ? right : left;
}

ValueKind Scope::kindOfCases(const Expression& expression) const {
    const std::size_t first = expression.hasBase ? 1 : 0;
    const auto& operands = expression.operands;
    for (std::size_t i = first + 1; i < operands.size(); i += 2)
        if (const ValueKind kind = kindOf(*operands[i]); kind != ValueKind::unknown)
            return kind;
    return (operands.size() - first) % 2 == 1 ? kindOf(*operands.back()) : ValueKind::unknown;
}

ValueKind Scope::kindOfQuery(const Select& select) const {
    Scope inner(catalog_, this);
    if (select.from)
        inner.add(*select.from);
    return inner.kindOf(*select.items.front().value);
}

} // namespace platform::dialect
