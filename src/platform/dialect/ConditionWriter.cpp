#include "platform/dialect/Writer.h"

namespace platform::dialect {

void Writer::writeCondition(const Expression& condition, const Scope& scope) {
    using Kind = Expression::Kind;
    const auto& operands = condition.operands;
    switch (condition.kind) {
    case Kind::comparison:
        writeComparison(condition, scope);
        break;
    case Kind::both:
    case Kind::either:
        for (std::size_t i = 0; i < 2; ++i) {
            if (i > 0)
                out_ += condition.kind == Kind::both ? " AND " : " OR ";
            const bool parentheses = operands[i]->kind == Kind::either && condition.kind == Kind::both;
            if (parentheses)
                out_ += '(';
            writeCondition(*operands[i], scope);
            if (parentheses)
                out_ += ')';
        }
        break;
    case Kind::negation:
        out_ += "NOT (";
        writeCondition(*operands[0], scope);
        out_ += ')';
        break;
    case Kind::isNull:
        writeOperand(*operands[0], sumLevel, false, scope);
        out_ += condition.negated ? " IS NOT NULL" : " IS NULL";
        break;
    case Kind::between:
        writeBetween(condition, scope);
        break;
    case Kind::inList:
    case Kind::inQuery:
        writeIn(condition, scope);
        break;
    default:
        writeExpression(condition, scope);
        break;
    }
}

// The kind in which the server compares values of several kinds.
ValueKind Writer::commonKind(const std::vector<const Expression*>& values, const Scope& scope) const {
    for (const ValueKind kind : {ValueKind::date, ValueKind::amount, ValueKind::whole})
        for (const auto* value : values)
            if (scope.kindOf(*value) == kind)
                return kind;
    return ValueKind::unknown;
}

void Writer::writeComparison(const Expression& condition, const Scope& scope) {
    const Expression& left = *condition.operands[0];
    const Expression& right = *condition.operands[1];
    const ValueKind kind = commonKind({&left, &right}, scope);
    writeCompared(left, kind, scope);
    out_ += ' ';
    out_ += condition.name;
    out_ += ' ';
    writeCompared(right, kind, scope);
}

void Writer::writeBetween(const Expression& condition, const Scope& scope) {
    const auto& operands = condition.operands;
    const ValueKind kind = commonKind({operands[0].get(), operands[1].get(), operands[2].get()}, scope);
    writeCompared(*operands[0], kind, scope);
    out_ += condition.negated ? " NOT BETWEEN " : " BETWEEN ";
    writeCompared(*operands[1], kind, scope);
    out_ += " AND ";
    writeCompared(*operands[2], kind, scope);
}

void Writer::writeIn(const Expression& condition, const Scope& scope) {
    const auto& operands = condition.operands;
    const ValueKind kind = scope.kindOf(*operands[0]);
    writeConverted(*operands[0], kind, scope);
    out_ += condition.negated ? " NOT IN (" : " IN (";
    if (condition.kind == Expression::Kind::inQuery) {
        if (condition.query->items.size() != 1 ||
            condition.query->items.front().value->kind == Expression::Kind::allColumns)
            refuse(source_, condition.place, "una sottoquery deve dare una colonna sola");
        writeSelect(*condition.query, &scope, nullptr);
    } else {
        for (std::size_t i = 1; i < operands.size(); ++i) {
            if (i > 1)
                out_ += ", ";
            writeConverted(*operands[i], kind, scope);
        }
    }
    out_ += ')';
}

} // namespace platform::dialect
