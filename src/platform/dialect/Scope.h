#pragma once

#include "platform/dialect/Catalog.h"
#include "platform/dialect/SyntaxTree.h"

#include <optional>

namespace platform::dialect {

/// The tables whose columns an expression may name: those of its own select, then those of the selects around it.
class Scope {
public:
    /// The catalog and the outer scope (null: none) must outlive this one.
    Scope(const Catalog& catalog, const Scope* outer) : catalog_(catalog), outer_(outer) {}

    /// Adds the tables of a FROM clause, left to right, or one table alone. They must outlive this scope.
    void add(const JoinTree& tree);
    void add(const TableReference& table) { tables_.push_back(&table); }

    const std::vector<const TableReference*>& tables() const { return tables_; }
    const Catalog& catalog() const { return catalog_; }

    struct Column {
        ValueKind kind = ValueKind::unknown;
        /// The table of this very scope that has it: position in tables(). Nothing for a column of an outer scope.
        std::optional<std::size_t> table;
        /// The table could not be told: a table of this scope is not in the catalog, and the name is not qualified.
        bool doubtful = false;
    };
    /// What a column expression refers to.
    Column find(const Expression& column) const;

    /// The kind of value that an expression gives.
    ValueKind kindOf(const Expression& expression) const;

private:
    std::optional<Column> findHere(const Expression& column, bool& doubtful) const;
    ValueKind kindOfColumn(const TableReference& table, std::string_view name, bool& has) const;
    ValueKind kindOfFunction(const Expression& expression) const;
    ValueKind kindOfArithmetic(const Expression& expression) const;
    ValueKind kindOfCases(const Expression& expression) const;
    ValueKind kindOfQuery(const Select& select) const;

    const Catalog& catalog_;
    const Scope* outer_;
    std::vector<const TableReference*> tables_;
};

} // namespace platform::dialect
