#pragma once

#include "contract/Comparison.h"

namespace qz {

/// The public class's comparison of two distinte.
class ClasseConfronto : public contract::Comparison {
public:
    std::vector<contract::ComparedDistinta> comparedDistinte(contract::Connection& connection,
                                                             std::int64_t company) override;
    std::unique_ptr<contract::ComparisonReport> compare(contract::Connection& connection, std::int64_t company,
                                                        std::int64_t left, std::int64_t right, contract::Date day,
                                                        contract::Progress& progress) override;
    std::unique_ptr<contract::ComparisonReport> treeOn(contract::Connection& connection, std::int64_t company,
                                                       std::int64_t type, contract::Date day,
                                                       contract::Progress& progress) override;
};

} // namespace qz
