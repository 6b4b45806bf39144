#include "platform/dialect/Writer.h"

#include <algorithm>

namespace platform::dialect {

namespace {

/// The kind of a table's column; unknown when the table or the column is not in the catalog.
ValueKind columnKind(const Catalog::Columns* columns, std::string_view name) {
    if (columns)
        for (const auto& column : *columns)
            if (sameName(column.name, name))
                return column.kind;
    return ValueKind::unknown;
}

} // namespace

Translation Writer::write(const SyntaxTree& tree) {
    Translation translation;
    switch (tree.kind) {
    case SyntaxTree::Kind::select:
        writeSelect(tree.select, nullptr, &translation.columns);
        break;
    case SyntaxTree::Kind::update:
        writeUpdate(tree);
        break;
    case SyntaxTree::Kind::insert:
        writeInsert(tree);
        break;
    case SyntaxTree::Kind::remove:
        writeDelete(tree);
        break;
    case SyntaxTree::Kind::nothing:
        out_ += "SELECT NULL WHERE 0";
        break;
    }
    translation.text = std::move(out_);
    translation.parameters = std::move(parameters_);
    return translation;
}

void Writer::writeUpdate(const SyntaxTree& tree) {
    Scope scope(catalog_, nullptr);
    scope.add(tree.table);
    out_ += "UPDATE ";
    writeName(tree.table.name);
    out_ += " SET ";
    bool first = true;
    for (const auto& assignment : tree.assignments) {
        if (!first)
            out_ += ", ";
        first = false;
        writeName(assignment.column);
        out_ += " = ";
        writeConverted(*assignment.value, columnKind(catalog_.columns(tree.table.name), assignment.column), scope);
    }
    if (tree.where) {
        out_ += " WHERE ";
        writeCondition(*tree.where, scope);
    }
}

void Writer::writeInsert(const SyntaxTree& tree) {
    const Scope scope(catalog_, nullptr);
    out_ += "INSERT INTO ";
    writeName(tree.table.name);
    if (!tree.columns.empty()) {
        out_ += " (";
        for (std::size_t i = 0; i < tree.columns.size(); ++i) {
            if (i > 0)
                out_ += ", ";
            writeName(tree.columns[i]);
        }
        out_ += ")";
    }
    out_ += " VALUES ";
    for (std::size_t r = 0; r < tree.rows.size(); ++r) {
        out_ += r > 0 ? ", (" : "(";
        for (std::size_t i = 0; i < tree.rows[r].size(); ++i) {
            if (i > 0)
                out_ += ", ";
            const auto* columns = catalog_.columns(tree.table.name);
            ValueKind kind = ValueKind::unknown;
            if (!tree.columns.empty())
                kind = columnKind(columns, tree.columns[i]);
            else if (columns && i < columns->size())
                kind = (*columns)[i].kind;
            writeConverted(*tree.rows[r][i], kind, scope);
        }
        out_ += ")";
    }
}

void Writer::writeDelete(const SyntaxTree& tree) {
    Scope scope(catalog_, nullptr);
    scope.add(tree.table);
    out_ += "DELETE FROM ";
    writeName(tree.table.name);
    if (tree.where) {
        out_ += " WHERE ";
        writeCondition(*tree.where, scope);
    }
}

void Writer::writeSelect(const Select& select, const Scope* outer, std::optional<std::vector<ResultColumn>>* columns) {
    Scope scope(catalog_, outer);
    JoinChain chain;
    bool reordered = false;
    if (select.from) {
        scope.add(*select.from);
        const auto& tables = scope.tables();
        for (std::size_t i = 0; i < tables.size(); ++i)
            for (std::size_t j = 0; j < i; ++j)
                if (sameName(tables[i]->alias, tables[j]->alias))
                    refuse(source_, tables[i]->place, "due tabelle hanno lo stesso nome");
        chain = linearise(*select.from, scope, source_);
        for (std::size_t i = 0; i < chain.size(); ++i)
            reordered = reordered || chain[i].table != scope.tables()[i];
    }
    out_ += select.distinct ? "SELECT DISTINCT " : "SELECT ";
    writeItems(select, scope, reordered);
    writeFrom(chain, scope);
    if (select.where) {
        out_ += " WHERE ";
        writeCondition(*select.where, scope);
    }
    for (std::size_t i = 0; i < select.order.size(); ++i) {
        out_ += i == 0 ? " ORDER BY " : ", ";
        writeExpression(*select.order[i].value, scope);
        if (select.order[i].descending)
            out_ += " DESC";
    }
    if (select.top) {
        out_ += " LIMIT ";
        writeExpression(*select.top, scope);
    }
    if (columns)
        *columns = columnsOf(select, scope);
}

void Writer::writeItems(const Select& select, const Scope& scope, bool reordered) {
    bool first = true;
    const auto separate = [&] {
        if (!first)
            out_ += ", ";
        first = false;
    };
    for (const auto& item : select.items) {
        const Expression& value = *item.value;
        if (value.kind == Expression::Kind::allColumns && value.table.empty() && reordered) {
            // The star gives the tables in the order in which they were written, not in the chain's.
            for (const auto* table : scope.tables()) {
                separate();
                writeName(table->alias);
                out_ += ".*";
            }
            continue;
        }
        separate();
        if (value.kind == Expression::Kind::allColumns) {
            if (!value.table.empty()) {
                writeName(value.table);
                out_ += ".";
            }
            out_ += "*";
            continue;
        }
        writeExpression(value, scope);
        if (!item.alias.empty()) {
            out_ += " AS ";
            writeName(item.alias);
        }
    }
}

std::optional<std::vector<ResultColumn>> Writer::columnsOf(const Select& select, const Scope& scope) const {
    std::vector<ResultColumn> result;
    for (const auto& item : select.items) {
        if (item.value->kind == Expression::Kind::allColumns) {
            for (const auto* table : scope.tables()) {
                if (!item.value->table.empty() && !sameName(item.value->table, table->alias))
                    continue;
                const auto* columns = catalog_.columns(table->name);
                if (!columns)
                    return std::nullopt;
                for (const auto& column : *columns)
                    result.push_back({column.name, column.kind});
            }
            continue;
        }
        ResultColumn column{item.alias, scope.kindOf(*item.value)};
        if (column.name.empty() && item.value->kind == Expression::Kind::column)
            column.name = item.value->name;
        result.push_back(std::move(column));
    }
    return result;
}

void Writer::writeFrom(const JoinChain& chain, const Scope& scope) {
    for (std::size_t i = 0; i < chain.size(); ++i) {
        if (i == 0)
            out_ += " FROM ";
        else
            out_ += chain[i].outer ? " LEFT JOIN " : " JOIN ";
        writeTable(*chain[i].table);
        if (chain[i].on) {
            out_ += " ON ";
            writeCondition(*chain[i].on, scope);
        }
    }
}

void Writer::writeTable(const TableReference& table) {
    writeName(table.name);
    if (sameName(table.alias, table.name))
        return;
    out_ += " AS ";
    writeName(table.alias);
}

} // namespace platform::dialect
