#pragma once

#include "contract/Date.h"

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace model {

/// A node of a distinta, as far as a move looks at it or changes it.
struct Row {
    std::int64_t id = 0;
    std::int64_t distinta = 0;
    std::optional<std::int64_t> parent;
    std::optional<std::int64_t> account;
    contract::Date start;
    contract::Date end;
    bool moved = false;  ///< got the audit values of the moved node
    bool closed = false; ///< got the audit user of a closed link
    friend bool operator==(const Row&, const Row&) = default;
};

/// What one move would do, worked out over plain vectors by the rules of the moves, without any statement.
///
/// Where the rules leave an order to the database, rows come in the order of their ids, and over several distinte first
/// in the order of these: the order of the indexes.
struct World {
    std::vector<Row> rows;                ///< ascending ids
    std::set<std::int64_t> registered;    ///< accounts that stand in the account table
    std::set<std::int64_t> namedDistinte; ///< distinte whose type row exists
    std::int64_t nextId = 1;
    /// Where an answer leaves the order of several distinte to the database, they come one after the other, as in an
    /// index; otherwise the rows come as they stand here, whatever their distinta and their ids.
    bool indexed = true;
    /// 0: the rows of an answer without an order come as they stand here. Otherwise every kind of question has an order
    /// of its own, drawn from this number.
    std::uint32_t order = 0;
};

struct Move {
    std::int64_t origin = 0;
    std::int64_t destination = 0;
    std::int64_t node = 0;
    std::int64_t target = 0;
    bool withValidity = false;
    contract::Date closing;                 ///< with validity: last day of the old links
    std::optional<contract::Date> fixedEnd; ///< end of the new links; the moved node's own end without it
};

struct Outcome {
    bool kept = false;
    std::string message;
};

/// Applies the move to the world, or leaves the world as it was when it is not kept.
Outcome apply(World& world, const Move& move);

} // namespace model
