#pragma once

#include "property/WorldDatabase.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace property {

/// What a user does to the rows.
enum class Work { structure, validity, edit };

inline contract::Date dateOf(const char* text) {
    return contract::Date::parse(text).value_or(contract::Date());
}

/// A branch of three levels in distinta 1 and two nodes in distinta 2.
inline model::World smallWorld() {
    model::World world;
    world.namedDistinte = {1, 2, 3};
    const auto add = [&](std::int64_t id, std::int64_t distinta, std::optional<std::int64_t> parent) {
        world.rows.push_back({id, distinta, parent, 100 + id, dateOf("01/01/2020"), dateOf("31/12/2099")});
        world.registered.insert(100 + id);
    };
    add(1, 1, std::nullopt);
    add(2, 1, 1);
    add(3, 1, 2);
    add(4, 1, 2);
    add(5, 1, 3);
    add(11, 2, std::nullopt);
    add(12, 2, 11);
    world.nextId = 20;
    return world;
}

/// Node 2 with all that hangs below it under node 12; an edit of node 12 is made on the same screen.
inline model::Move moveOf(Work work) {
    model::Move move;
    move.origin = 1;
    move.destination = 2;
    move.node = 2;
    move.target = 12;
    move.withValidity = work == Work::validity;
    move.closing = dateOf("30/06/2024");
    return move;
}

/// The rows when the work is done, without marks.
inline std::vector<model::Row> rowsAfter(Work work) {
    auto world = smallWorld();
    if (work == Work::edit)
        world.rows.back().end = dateOf("31/12/2030");
    else
        model::apply(world, moveOf(work));
    return withoutMarks(world.rows);
}

inline std::string nameOf(Work work) {
    static const char* const names[] = {"Structure", "Validity", "Edit"};
    return names[static_cast<int>(work)];
}

} // namespace property
