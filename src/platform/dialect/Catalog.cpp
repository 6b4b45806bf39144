#include "platform/dialect/Catalog.h"

#include <algorithm>

namespace platform::dialect {

namespace {

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

} // namespace

bool SchemaCatalog::Less::operator()(const std::string& a, const std::string& b) const {
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                        [](char x, char y) { return lower(x) < lower(y); });
}

SchemaCatalog::SchemaCatalog(const contract::Schema& schema) {
    for (const auto& table : schema.tables) {
        Columns& columns = tables_[std::string(table.name)];
        for (const auto& column : table.columns)
            columns.push_back({std::string(column.name), kindOf(column.type)});
    }
}

const Catalog::Columns* SchemaCatalog::columns(std::string_view table) const {
    const auto at = tables_.find(std::string(table));
    return at == tables_.end() ? nullptr : &at->second;
}

ValueKind kindOf(contract::ColumnType type) {
    switch (type) {
    case contract::ColumnType::identity:
    case contract::ColumnType::integer:
    case contract::ColumnType::number:
    case contract::ColumnType::flag:
        return ValueKind::whole;
    case contract::ColumnType::amount:
        return ValueKind::amount;
    case contract::ColumnType::date:
        return ValueKind::date;
    case contract::ColumnType::text:
    case contract::ColumnType::guid:
        break;
    }
    return ValueKind::text;
}

} // namespace platform::dialect
