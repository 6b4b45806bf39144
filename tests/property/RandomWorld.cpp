#include "property/RandomWorld.h"

#include <algorithm>

namespace property {

namespace {

int draw(std::mt19937& random, int from, int to) {
    return std::uniform_int_distribution<int>(from, to)(random);
}

bool oneIn(std::mt19937& random, int n) {
    return draw(random, 1, n) == 1;
}

contract::Date day(std::mt19937& random) {
    return contract::Date::of(2020 + draw(random, 0, 7), draw(random, 1, 12), draw(random, 1, 28))
        .value_or(contract::Date());
}

} // namespace

model::World randomWorld(std::mt19937& random) {
    model::World world;
    world.namedDistinte = {1, 2, 3};
    const int accounts = draw(random, 3, 24);
    for (int account = 1; account <= accounts; ++account)
        if (!oneIn(random, 12))
            world.registered.insert(account);
    const int count = draw(random, 2, 30);
    const bool imperfect = oneIn(random, 4);
    const bool history = oneIn(random, 2);
    for (int id = 1; id <= count; ++id) {
        model::Row row;
        row.id = id;
        row.distinta = draw(random, 1, 3);
        if (!oneIn(random, 15))
            row.account = draw(random, 1, accounts);
        std::vector<std::int64_t> candidates;
        for (const auto& other : world.rows)
            if (other.distinta == row.distinta)
                candidates.push_back(other.id);
        if (!candidates.empty() && !oneIn(random, 4))
            row.parent = candidates[static_cast<std::size_t>(draw(random, 0, static_cast<int>(candidates.size()) - 1))];
        if (imperfect && oneIn(random, 6))
            row.parent = draw(random, 1, count + 3);
        row.start = history ? day(random) : contract::Date::of(2020, 1, 1).value_or(contract::Date());
        row.end = history ? std::max(row.start, day(random)) : contract::Date::of(2099, 12, 31).value_or(row.start);
        world.rows.push_back(row);
    }
    world.nextId = count + 10;
    return world;
}

bool withAllParents(const model::World& world) {
    return std::all_of(world.rows.begin(), world.rows.end(), [&](const model::Row& row) {
        return !row.parent || std::any_of(world.rows.begin(), world.rows.end(),
                                          [&](const model::Row& other) { return other.id == *row.parent; });
    });
}

model::Move randomMove(const model::World& world, std::mt19937& random, bool withValidity) {
    const auto any = [&] {
        return world.rows[static_cast<std::size_t>(draw(random, 0, static_cast<int>(world.rows.size()) - 1))];
    };
    model::Move move;
    const auto node = any();
    const auto target = any();
    move.node = node.id;
    move.target = target.id;
    move.origin = node.distinta;
    move.destination = target.distinta;
    move.withValidity = withValidity;
    if (withValidity) {
        move.closing = std::max(node.start, day(random));
        if (oneIn(random, 3))
            move.fixedEnd = oneIn(random, 4) ? day(random) : std::max(move.closing.plusDays(1), day(random));
    }
    return move;
}

} // namespace property
