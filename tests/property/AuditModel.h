#pragma once

#include "contract/Date.h"

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace property::audit {

/// A row of the table of links, whatever it holds.
struct Link {
    std::int64_t id = 0;
    std::optional<std::int64_t> distinta, parent, company, kind, account;
    std::optional<contract::Date> start, end;
    std::string guid;

    bool hasPeriod() const { return start && end && *start <= *end; }
};

struct Distinta {
    std::int64_t company = 0;
    std::optional<std::int64_t> kind;
    bool hasCode = true;
};

struct World {
    std::vector<Link> links;
    std::map<std::int64_t, Distinta> distinte;
    std::set<std::pair<std::int64_t, std::int64_t>> registry; ///< kind and account, of company 1
};

/// What is wrong with company 1, "rule id": each rule by its own words, each link held against every other one.
std::multiset<std::string> findings(const World& world);

} // namespace property::audit
