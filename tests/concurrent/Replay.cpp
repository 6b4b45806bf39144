#include "concurrent/Replay.h"

#include <algorithm>

namespace concurrent {

namespace {

contract::Date day(std::int32_t days) {
    return contract::Date::fromDays(days).value_or(contract::Date());
}

model::Row* byId(model::World& world, std::int64_t id) {
    const auto at = std::find_if(world.rows.begin(), world.rows.end(), [id](const auto& row) { return row.id == id; });
    return at == world.rows.end() ? nullptr : &*at;
}

bool stands(const model::Row* row, std::int64_t distinta, const Entry::Shown& shown) {
    return row && row->distinta == distinta &&
           (!shown.known ||
            (row->parent.value_or(0) == shown.parent && row->start == day(shown.start) && row->end == day(shown.end)));
}

bool applyMove(model::World& world, const Entry& entry) {
    const auto* node = byId(world, entry.node);
    const auto* target = byId(world, entry.target);
    if (!stands(node, entry.origin, entry.nodeShown) || !stands(target, entry.destination, entry.targetShown))
        return false;
    model::Move move;
    move.origin = entry.origin;
    move.destination = entry.destination;
    move.node = entry.node;
    move.target = entry.target;
    if (entry.kind == Entry::Kind::validity) {
        move.withValidity = true;
        move.closing = day(entry.closing);
        move.fixedEnd = day(entry.fixedEnd);
    }
    return model::apply(world, move).kept;
}

/// The first link of the account, by distinta, whose period overlaps the new one refuses it when it hangs under a
/// parent of a distinta that exists.
bool overlaps(model::World& world, const model::Row& edited, contract::Date start, contract::Date end) {
    const model::Row* first = nullptr;
    for (const auto& row : world.rows) {
        const bool touches = (row.start <= start && start <= row.end) || (row.start <= end && end <= row.end) ||
                             (start <= row.start && row.end <= end);
        if (row.id != edited.id && row.account == edited.account && touches &&
            (!first || row.distinta < first->distinta))
            first = &row;
    }
    const auto* parent = first && first->parent ? byId(world, *first->parent) : nullptr;
    return parent && world.namedDistinte.contains(parent->distinta);
}

bool applyEdit(model::World& world, const Entry& entry) {
    auto* row = byId(world, entry.node);
    if (!row || row->start != day(entry.oldStart) || row->end != day(entry.oldEnd))
        return false;
    const auto start = day(entry.newStart);
    const auto end = day(entry.newEnd);
    if (overlaps(world, *row, start, end))
        return false;
    // The parent is the one that the screen shows, where another user may have hung the link elsewhere meanwhile.
    const auto shown = entry.nodeShown.known ? entry.nodeShown.parent : row->parent.value_or(0);
    const auto* parent = byId(world, shown);
    if (parent && parent->account == row->account)
        return false;
    row->start = start;
    row->end = end;
    return true;
}

} // namespace

bool apply(model::World& world, const Entry& entry) {
    return entry.kind == Entry::Kind::edit ? applyEdit(world, entry) : applyMove(world, entry);
}

} // namespace concurrent
