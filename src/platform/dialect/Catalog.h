#pragma once

#include "contract/Schema.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace platform::dialect {

/// What kind of value an expression gives, as far as the translation depends on it.
enum class ValueKind {
    unknown,
    whole,  ///< whole number
    amount, ///< number with decimals
    text,   ///< text, global identifiers included
    date    ///< calendar day
};

/// What the translator knows of the tables: it asks for those that a statement names.
class Catalog {
public:
    struct Column {
        std::string name;
        ValueKind kind = ValueKind::unknown;
    };
    using Columns = std::vector<Column>;

    Catalog() = default;
    Catalog(const Catalog&) = delete;
    Catalog& operator=(const Catalog&) = delete;
    virtual ~Catalog() = default;

    /// The columns of a table in their order, by its name without regard to case; null for a table that is not known.
    /// Valid until the next call.
    virtual const Columns* columns(std::string_view table) const = 0;
};

/// A catalog of nothing but values of the schema.
class SchemaCatalog : public Catalog {
public:
    explicit SchemaCatalog(const contract::Schema& schema);
    const Columns* columns(std::string_view table) const override;

private:
    struct Less {
        bool operator()(const std::string& a, const std::string& b) const;
    };
    std::map<std::string, Columns, Less> tables_;
};

/// The kind of value that a column of the schema holds.
ValueKind kindOf(contract::ColumnType type);

} // namespace platform::dialect
