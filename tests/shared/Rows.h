#pragma once

#include "contract/Recordset.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tests {

struct Link {
    std::optional<std::int64_t> key;
    std::optional<std::int64_t> parent;
};

/// A record set of two fields, "ID" and "PARENT".
inline contract::Recordset rowsOf(const std::vector<Link>& links,
                                  contract::FieldType type = contract::FieldType::integer) {
    contract::Recordset records;
    auto& rows = records.fill();
    rows.start(
        std::make_shared<const contract::FieldList>(contract::FieldList{{"ID", type, 0, 0}, {"PARENT", type, 0, 0}}));
    const auto append = [](contract::Column& column, const std::optional<std::int64_t>& number) {
        if (!number)
            column.appendNull();
        else if (column.storage() == contract::Column::Storage::text)
            column.append(std::string_view(std::to_string(*number)));
        else
            column.append(*number);
    };
    for (const auto& link : links) {
        append(rows.column(0), link.key);
        append(rows.column(1), link.parent);
        rows.rowDone();
    }
    records.MoveFirst();
    return records;
}

} // namespace tests
