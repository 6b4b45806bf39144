#include "host/comparison/Comparisons.h"

#include "contract/RuntimeError.h"
#include "host/database/AskAgain.h"

namespace host {

namespace {

contract::Comparison& comparisonOf(contract::PluginClass& component) {
    auto* comparison = dynamic_cast<contract::Comparison*>(&component);
    if (comparison == nullptr)
        throw contract::RuntimeError(contract::RuntimeError::invalidCall,
                                     "Il componente non confronta le distinte: serve una versione più recente.");
    return *comparison;
}

std::string withoutBlanksBehind(std::string text) {
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
}

} // namespace

Comparisons::Comparisons(contract::PluginClass& component, contract::Connection& connection, std::int64_t company)
    : comparison_(comparisonOf(component)), connection_(connection), company_(company) {
}

std::vector<contract::ComparedDistinta> Comparisons::distinte() {
    return askAgainWhenLost(connection_, [&] { return comparison_.comparedDistinte(connection_, company_); });
}

std::shared_ptr<const contract::ComparisonReport>
Comparisons::compare(std::int64_t left, std::int64_t right, contract::Date day, contract::Progress& progress) {
    return askAgainWhenLost(connection_,
                            [&] { return comparison_.compare(connection_, company_, left, right, day, progress); });
}

std::shared_ptr<const contract::ComparisonReport> Comparisons::treeOn(std::int64_t type, contract::Date day,
                                                                      contract::Progress& progress) {
    return askAgainWhenLost(connection_,
                            [&] { return comparison_.treeOn(connection_, company_, type, day, progress); });
}

std::string nameOf(const contract::ComparedDistinta& distinta) {
    return withoutBlanksBehind(distinta.code) + "-" + withoutBlanksBehind(distinta.description);
}

} // namespace host
