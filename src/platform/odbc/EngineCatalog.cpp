#include "platform/odbc/EngineCatalog.h"

#include <algorithm>

namespace platform::odbc {

const dialect::Catalog::Columns* EngineCatalog::columns(std::string_view table) const {
    std::string name(table);
    std::transform(name.begin(), name.end(), name.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    if (const auto at = tables_.find(name); at != tables_.end())
        return &at->second;
    Columns columns = reader_(name);
    // A table that is not there now may be there at the next statement.
    if (columns.empty())
        return nullptr;
    return &tables_.emplace(std::move(name), std::move(columns)).first->second;
}

} // namespace platform::odbc
