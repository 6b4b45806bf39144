#pragma once

#include "concurrent/Journal.h"
#include "property/MoveModel.h"

#include <cstddef>
#include <string>
#include <vector>

namespace concurrent {

/// What a history is found to be.
struct Verdict {
    std::string problem;         ///< the first one; empty when there is none
    std::size_t overlapping = 0; ///< commits that had not seen the one before them
    std::size_t outOfTurn = 0; ///< of these, the ones that come before another one in the order of one after the other
    std::size_t otherRowOrder = 0; ///< transactions that the model tells only with rows in another order
};

/// Checks a history of transactions that each read from one state and wrote at their commit, against the independent
/// model:
///
/// - A transaction that was kept changed the rows as the model does on a state that it can have seen, and nothing else
///   changed with that commit. One that was refused is refused by the model on a state that it can have seen. One that
///   an error ended has changed nothing.
/// - There is an order in which the model does what was kept one after the other: each transaction changes there what
///   it changed, and the rows at the end are the database's. One that was over before another began comes before it.
///   The order of the commits is tried first; it need not be the one, since a transaction that has not seen another's
///   commit comes before that one.
///
/// start tells what is not in the rows. states: the rows as they lie after so many commits, the first of them before
/// any. An order that the statements leave to the database is free: for each of their kinds the model may take any of
/// some hundreds.
Verdict checkHistory(const model::World& start, const std::vector<std::vector<model::Row>>& states,
                     const std::vector<Entry>& entries);

/// A transaction in words.
std::string describe(const Entry& entry);

} // namespace concurrent
