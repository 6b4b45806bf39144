#pragma once

#include "platform/dialect/Scope.h"

#include <vector>

namespace platform::dialect {

/// One table of a left-deep chain of joins.
struct JoinStep {
    const TableReference* table = nullptr;
    bool outer = false;             ///< LEFT JOIN, otherwise INNER JOIN; of no meaning for the first
    const Expression* on = nullptr; ///< null for the first only
};
using JoinChain = std::vector<JoinStep>;

/// Writes a join tree as a left-deep chain that starts at the preserved table and gives the same rows.
///
/// An engine that nests loops in the order of the chain then reaches every table by its key, where it would have built
/// the nested block whole, once for every row. A right join is a left join turned round; the block on the right of a
/// left join is taken apart where its inner conditions cannot hold for the row of nulls that stands for a missing
/// match, as equalities cannot. Throws TranslationError where that is not certain.
JoinChain linearise(const JoinTree& tree, const Scope& scope, const Source& source);

} // namespace platform::dialect
