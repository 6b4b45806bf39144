#pragma once

#include "property/MoveModel.h"

#include <cstdint>
#include <random>

namespace property {

/// A forest of up to 30 nodes in three distinte, drawn from a seed: accounts that stand in several places and periods,
/// some of them without account or without registry, and now and then imperfect rows (a parent of another distinta, a
/// missing parent, a cycle).
model::World randomWorld(std::mt19937& random);

/// Whether every parent stands in the world. A server may give a new row the number of one that does not.
bool withAllParents(const model::World& world);

/// A move of some node under another one.
model::Move randomMove(const model::World& world, std::mt19937& random, bool withValidity);

} // namespace property
