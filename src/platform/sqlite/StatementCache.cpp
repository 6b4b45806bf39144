#include "platform/sqlite/StatementCache.h"

#include <algorithm>

namespace platform::sqlite {

PreparedStatement* StatementCache::find(const contract::Statement& statement) {
    const auto [first, last] = statements_.equal_range(statement.shape());
    for (auto at = first; at != last; ++at)
        if (at->second->shape.sameShape(statement)) {
            at->second->lastUse = ++uses_;
            ++hits_;
            return at->second.get();
        }
    ++misses_;
    return nullptr;
}

PreparedStatement& StatementCache::store(std::unique_ptr<PreparedStatement> prepared) {
    if (statements_.size() >= capacity) {
        const auto oldest = std::min_element(statements_.begin(), statements_.end(), [](const auto& a, const auto& b) {
            return a.second->lastUse < b.second->lastUse;
        });
        statements_.erase(oldest);
    }
    prepared->lastUse = ++uses_;
    const auto shape = prepared->shape.shape();
    return *statements_.emplace(shape, std::move(prepared))->second;
}

} // namespace platform::sqlite
