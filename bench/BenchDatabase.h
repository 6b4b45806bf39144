#pragma once

#include "platform/sqlite/Connection.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace bench {

inline constexpr std::string_view originId = "1";
inline constexpr std::string_view destinationId = "2";

/// A database file with two distinte of company 1: an origin of 10 n nodes, of which one root carries a subtree of n
/// (ten children a node), and a destination of a chain of three. Every account has a registry entry. The file is
/// removed with the object.
class Database {
public:
    explicit Database(std::size_t movedNodes);
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;
    ~Database();

    std::shared_ptr<platform::sqlite::Connection> open() const;

    std::int64_t movedNode() const { return 1; }
    std::int64_t movedAccount() const { return 1; }
    std::int64_t targetNode() const { return target_; }
    std::int64_t targetAccount() const { return target_; }

private:
    std::string path_;
    std::int64_t target_ = 0;
};

} // namespace bench
