#pragma once

#include "component/maintenance/Piano.h"
#include "platform/sqlite/Connection.h"

#include <array>
#include <cstdint>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <tuple>
#include <vector>

namespace property {

/// A row of QZ02_DISTINTA, whatever the form would make of it.
struct WildRow {
    std::int64_t id = 0;
    std::optional<std::int64_t> distinta;
    std::optional<std::int64_t> parent;
    std::optional<std::int64_t> company;
    std::optional<std::int64_t> kind;
    std::optional<std::int64_t> account;
    std::optional<contract::Date> start;
    std::optional<contract::Date> end;
    std::array<std::string, 5> optional; ///< as SQL writes them
};

/// Rows, registry and types of a database, from quite in order to hopeless: cycles, missing accounts, companies, kinds
/// and days, rows out of place, several links an account, parents of other distinte or none, late and ended links.
struct WildWorld {
    std::vector<WildRow> rows;                                                 ///< ascending ids
    std::set<std::tuple<std::int64_t, std::int64_t, std::int64_t>> registered; ///< company, kind, account
    std::vector<std::string> types; ///< rows of QZ01_TIPODISTINTA as SQL writes them
};

/// A world of a few nodes, or now and then of some hundreds; "huge" has levels of more than 1000.
WildWorld wildWorld(std::mt19937& random, bool huge = false);

/// Makes the database hold this world and nothing else; new rows are numbered from a gap above it.
void write(const WildWorld& world, platform::sqlite::Connection& database);

/// Some move of a world that the database holds, with every kind of parameters.
qz::Richiesta wildMove(const WildWorld& world, std::mt19937& random, platform::sqlite::Connection& database);

/// Every column of every row, one line each.
std::string everything(contract::Connection& database);

} // namespace property
