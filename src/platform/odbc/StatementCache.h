#pragma once

#include "contract/Statement.h"
#include "platform/dialect/Translator.h"

#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace platform::odbc {

/// A statement's shape in SQLite's language: fixed texts with the places of the arguments between them.
class TranslatedStatement {
public:
    TranslatedStatement(const contract::Statement& statement, dialect::Translation translation);

    const contract::Statement& shape() const { return shape_; }
    const std::optional<std::vector<dialect::ResultColumn>>& columns() const { return columns_; }

    /// The whole text with the arguments of a statement of this shape as literals. Throws RuntimeError 13 where one of
    /// them cannot be converted as its place demands.
    std::string text(const contract::Statement& statement) const;

private:
    contract::Statement shape_;      ///< without the arguments' values
    std::vector<std::string> fixed_; ///< one more than there are places
    std::vector<dialect::Parameter> places_;
    std::optional<std::vector<dialect::ResultColumn>> columns_;
};

/// The translated statements of one connection, by shape. All of them go when there are too many.
///
/// It refers to the literals of the statements: close the connection before the library that composed them is unloaded.
class StatementCache {
public:
    static constexpr std::size_t capacity = 256;

    /// The statement of that shape; null when it was not stored.
    const TranslatedStatement* find(const contract::Statement& statement) const;
    const TranslatedStatement& store(std::unique_ptr<TranslatedStatement> statement);
    void clear() { statements_.clear(); }
    std::size_t size() const { return statements_.size(); }

private:
    std::unordered_multimap<std::uint64_t, std::unique_ptr<TranslatedStatement>> statements_;
};

} // namespace platform::odbc
