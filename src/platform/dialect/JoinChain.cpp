#include "platform/dialect/JoinChain.h"

#include <algorithm>
#include <set>

namespace platform::dialect {

namespace {

using Tables = std::set<const TableReference*>;

// The truth values that a condition may take.
constexpr unsigned mayHold = 1;
constexpr unsigned mayFail = 2;
constexpr unsigned mayBeUnknown = 4;
constexpr unsigned anything = mayHold | mayFail | mayBeUnknown;

/// Reckons with the columns of some tables being null.
class NullCase {
public:
    NullCase(const Scope& scope, const Tables& absent) : scope_(scope), absent_(absent) {}

    unsigned truth(const Expression& condition) const {
        using Kind = Expression::Kind;
        const auto& operands = condition.operands;
        switch (condition.kind) {
        case Kind::comparison:
            return isNull(*operands[0]) || isNull(*operands[1]) ? mayBeUnknown : anything;
        case Kind::both: {
            const unsigned left = truth(*operands[0]);
            const unsigned right = truth(*operands[1]);
            unsigned result = (left | right) & mayFail;
            if ((left & mayHold) && (right & mayHold))
                result |= mayHold;
            if (((left | right) & mayBeUnknown) && (left & ~mayFail) && (right & ~mayFail))
                result |= mayBeUnknown;
            return result;
        }
        case Kind::either: {
            const unsigned left = truth(*operands[0]);
            const unsigned right = truth(*operands[1]);
            unsigned result = (left | right) & mayHold;
            if ((left & mayFail) && (right & mayFail))
                result |= mayFail;
            if (((left | right) & mayBeUnknown) && (left & ~mayHold) && (right & ~mayHold))
                result |= mayBeUnknown;
            return result;
        }
        case Kind::negation:
            return inverted(truth(*operands[0]));
        case Kind::isNull: {
            const unsigned plain = isNull(*operands[0]) ? mayHold : mayHold | mayFail;
            return condition.negated ? inverted(plain) : plain;
        }
        default: // what is not needed is not reckoned
            return anything;
        }
    }

private:
    static unsigned inverted(unsigned truth) {
        return (truth & mayBeUnknown) | (truth & mayHold ? mayFail : 0U) | (truth & mayFail ? mayHold : 0U);
    }

    /// Whether a value is null for certain.
    bool isNull(const Expression& value) const {
        using Kind = Expression::Kind;
        const auto operandIsNull = [this](const ExpressionPtr& operand) { return isNull(*operand); };
        switch (value.kind) {
        case Kind::column: {
            const auto found = scope_.find(value);
            return found.table && absent_.count(scope_.tables()[*found.table]) != 0;
        }
        case Kind::null:
            return true;
        case Kind::negative:
        case Kind::arithmetic:
        case Kind::cast:
        case Kind::date:
            return std::any_of(value.operands.begin(), value.operands.end(), operandIsNull);
        case Kind::function:
            if (value.name == "ISNULL")
                return std::all_of(value.operands.begin(), value.operands.end(), operandIsNull);
            return value.name != "COUNT" && operandIsNull(value.operands[0]);
        default:
            return false;
        }
    }

    const Scope& scope_;
    const Tables& absent_;
};

class Linearisation {
public:
    Linearisation(const Scope& scope, const Source& source) : scope_(scope), source_(source) {}

    JoinChain chain(const JoinTree& tree) const {
        if (tree.isTable())
            return {{&tree.table, false, nullptr}};
        const bool turned = tree.kind == JoinKind::right;
        JoinChain result = chain(turned ? *tree.right : *tree.left);
        JoinChain block = chain(turned ? *tree.left : *tree.right);
        if (block.size() > 1)
            checkBlock(tree, block);
        block.front().outer = tree.kind != JoinKind::inner;
        block.front().on = tree.on.get();
        result.insert(result.end(), block.begin(), block.end());
        return result;
    }

private:
    void checkBlock(const JoinTree& tree, const JoinChain& block) const {
        Tables inner;
        for (std::size_t i = 1; i < block.size(); ++i)
            inner.insert(block[i].table);
        if (mentions(*tree.on, inner))
            refuse(source_, tree.on->place, "la condizione del blocco annidato tocca più della sua prima tabella");
        if (tree.kind == JoinKind::inner)
            return;
        Tables absent = {block.front().table};
        for (std::size_t i = 1; i < block.size(); ++i) {
            if (!block[i].outer)
                refuse(source_, block[i].on->place, "un INNER JOIN dentro un blocco esterno non si può linearizzare");
            if (mentionsQuery(*block[i].on) || (NullCase(scope_, absent).truth(*block[i].on) & mayHold))
                refuse(source_, block[i].on->place, "la condizione del blocco annidato non esclude i valori nulli");
            absent.insert(block[i].table);
        }
    }

    /// Whether an expression may name a column of these tables.
    bool mentions(const Expression& expression, const Tables& tables) const {
        if (expression.query)
            return true;
        if (expression.kind == Expression::Kind::column) {
            const auto found = scope_.find(expression);
            return found.doubtful || (found.table && tables.count(scope_.tables()[*found.table]) != 0);
        }
        return std::any_of(expression.operands.begin(), expression.operands.end(),
                           [&](const ExpressionPtr& operand) { return mentions(*operand, tables); });
    }

    static bool mentionsQuery(const Expression& expression) {
        return expression.query || std::any_of(expression.operands.begin(), expression.operands.end(),
                                               [](const ExpressionPtr& operand) { return mentionsQuery(*operand); });
    }

    const Scope& scope_;
    const Source& source_;
};

} // namespace

JoinChain linearise(const JoinTree& tree, const Scope& scope, const Source& source) {
    return Linearisation(scope, source).chain(tree);
}

} // namespace platform::dialect
