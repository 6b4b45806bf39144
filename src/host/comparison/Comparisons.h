#pragma once

#include "contract/Cinterface.h"
#include "contract/Comparison.h"
#include "contract/Connection.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace host {

/// The comparisons of a component over an open connection, outside of transactions; once more where the connection was
/// lost meanwhile. Everything throws RuntimeError (5 for a component that compares nothing) and contract::Cancelled.
class Comparisons {
public:
    /// Both outlive the object.
    Comparisons(contract::PluginClass& component, contract::Connection& connection, std::int64_t company);

    std::int64_t company() const { return company_; }
    std::vector<contract::ComparedDistinta> distinte();
    std::shared_ptr<const contract::ComparisonReport> compare(std::int64_t left, std::int64_t right, contract::Date day,
                                                              contract::Progress& progress);
    std::shared_ptr<const contract::ComparisonReport> treeOn(std::int64_t type, contract::Date day,
                                                             contract::Progress& progress);

private:
    contract::Comparison& comparison_;
    contract::Connection& connection_;
    std::int64_t company_;
};

/// What a user calls a distinta: "AG-Agenti".
std::string nameOf(const contract::ComparedDistinta& distinta);

} // namespace host
