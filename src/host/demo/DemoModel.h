#pragma once

#include "contract/Date.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace host {

// The demo companies as plain values, before they become rows. Missing numbers are nothing, missing texts empty.

struct DemoRegistry {
    std::int64_t code = 0;
    std::string name, address, city, province, phone, fax;
};

struct DemoAccount {
    std::int64_t company = 0;
    int kind = 0; ///< 0 customer, 1 supplier
    std::int64_t code = 0;
    std::optional<std::int64_t> registry;
    std::size_t place = 0; ///< position in the list of places
    std::size_t trade = 0; ///< position in the list of trades
    std::optional<std::int64_t> agent;
    std::optional<std::size_t> bank;
    std::string payment;
    bool salesData = true;
};

struct DemoType {
    std::int64_t id = 0;
    std::int64_t company = 0;
    std::string code, description;
    int kind = 0;
    std::string division;
    std::string guid;
};

struct DemoNode {
    std::int64_t id = 0;
    std::int64_t type = 0;
    std::optional<std::int64_t> parent; ///< id
    std::int64_t company = 0;
    int kind = 0;
    std::optional<std::int64_t> account;
    std::string description;
    contract::Date from, to;
    std::int64_t state = 0; ///< of the workflow, 0 for none
    std::string guid;
};

struct DemoAgent {
    std::int64_t company = 0;
    std::int64_t id = 0;
    std::string code;
    std::int64_t registry = 0;
};

/// A bonus of a contract with its subjects and settlements.
struct DemoBonus {
    std::int64_t id = 0;
    std::int64_t company = 0;
    std::int64_t contract = 0;
    std::vector<std::int64_t> nodes;
    std::vector<int> settlements;          ///< states, 0 to 3
    std::vector<std::int64_t> exceptNodes; ///< nodes taken out of the contract
};

struct DemoData {
    std::vector<DemoRegistry> registry;
    std::vector<DemoAccount> accounts;
    std::vector<DemoAgent> agents;
    std::vector<DemoType> types;
    std::vector<DemoNode> nodes;
    std::vector<DemoBonus> bonuses;
};

/// The demo companies with a largest distinta of that many nodes (at least 1): the same values for the same number,
/// always.
DemoData makeDemoData(std::int64_t largest);

} // namespace host
