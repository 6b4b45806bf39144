#pragma once

#include "contract/Snapshot.h"
#include "contract/Statement.h"
#include "platform/dialect/Translator.h"
#include "platform/sqlite/Handles.h"
#include "platform/sqlite/RowReader.h"

#include <array>
#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

namespace platform::sqlite {

/// A statement's shape, translated and prepared.
struct PreparedStatement {
    contract::Statement shape; ///< without the arguments' values
    StatementHandle handle;
    std::vector<dialect::Parameter> parameters;
    RowReader reader;
    std::vector<std::array<char, 24>>
        scratch; ///< one a parameter: characters of numbers and dates while they are bound
    std::uint64_t lastUse = 0;
};

/// The prepared statements of one connection, by shape. The least recently used one goes when there are too many.
///
/// It refers to the literals of the statements: close the connection before the library that composed them is unloaded.
class StatementCache {
public:
    static constexpr std::size_t capacity = 256;

    /// The statement of that shape; null when it was not stored.
    PreparedStatement* find(const contract::Statement& statement);
    PreparedStatement& store(std::unique_ptr<PreparedStatement> prepared);
    void clear() { statements_.clear(); }

    std::size_t size() const { return statements_.size(); }
    /// Times that find() found one, and did not, since the connection was made.
    std::uint64_t hits() const { return hits_; }
    std::uint64_t misses() const { return misses_; }

private:
    std::unordered_multimap<std::uint64_t, std::unique_ptr<PreparedStatement>> statements_;
    std::uint64_t uses_ = 0;
    std::uint64_t hits_ = 0;
    std::uint64_t misses_ = 0;
};

} // namespace platform::sqlite
