#pragma once

#include "contract/Recordset.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace contract_suites {

struct TreeRow {
    std::int64_t id;
    std::optional<std::int64_t> parent;
    std::string name;
};

/// Of the fields ID, PARENT, NAME and START, a day of January 2024; stands on the first record.
inline std::shared_ptr<contract::Recordset> treeRecords(const std::vector<TreeRow>& rows) {
    auto records = std::make_shared<contract::Recordset>();
    const auto field = [](const char* name, contract::FieldType type) {
        contract::FieldInfo info;
        info.name = name;
        info.type = type;
        return info;
    };
    auto fields = std::make_shared<contract::FieldList>();
    fields->push_back(field("ID", contract::FieldType::integer));
    fields->push_back(field("PARENT", contract::FieldType::integer));
    fields->push_back(field("NAME", contract::FieldType::varWChar));
    fields->push_back(field("START", contract::FieldType::date));
    auto& snapshot = records->fill();
    snapshot.start(fields);
    for (const auto& row : rows) {
        snapshot.column(0).append(row.id);
        if (row.parent)
            snapshot.column(1).append(*row.parent);
        else
            snapshot.column(1).appendNull();
        snapshot.column(2).append(std::string_view(row.name));
        snapshot.column(3).append(*contract::Date::of(2024, 1, static_cast<int>(1 + row.id % 28)));
        snapshot.rowDone();
    }
    records->MoveFirst();
    return records;
}

} // namespace contract_suites
