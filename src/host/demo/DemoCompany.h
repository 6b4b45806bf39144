#pragma once

#include "host/demo/DemoModel.h"
#include "host/demo/DemoNames.h"

#include <optional>
#include <string>
#include <vector>

namespace host::demo {

/// Makes the accounts of one company, with their registry entries.
class Accounts {
public:
    Accounts(DemoData& data, Sequence& sequence, std::int64_t company)
        : data_(data), sequence_(sequence), company_(company) {}

    /// A head of a branch: an account that stands for a group, an area or an agent. Its code.
    std::int64_t addHead(int kind, std::int64_t code, const std::string& name);
    /// Accounts that trade, with codes from first on; their codes.
    std::vector<std::int64_t> addTrading(int kind, std::int64_t first, std::size_t count);
    /// The agents that trading accounts belong to: each with a registry entry of its own.
    void addAgents(std::size_t count);

private:
    std::int64_t addRegistry(const std::string& name, const Place& place);

    DemoData& data_;
    Sequence& sequence_;
    std::int64_t company_;
    std::size_t agents_ = 0;
};

/// Makes the nodes of one distinta. It never puts an account twice on one path, nor gives it two links whose periods
/// overlap.
class Distinta {
public:
    Distinta(DemoData& data, Sequence& sequence, const DemoType& type, std::size_t size);

    std::size_t room() const { return size_ - made_; }
    /// A node; nothing when the distinta has its size. parent: a position that an earlier call gave, nothing for a
    /// root.
    std::optional<std::size_t> add(std::optional<std::size_t> parent, std::optional<std::int64_t> account,
                                   const std::string& description = {});
    /// Gives some accounts of leaves an earlier link that has ended, under another parent.
    void addPast(const std::vector<std::size_t>& parents, std::size_t count);
    int depth(std::size_t position) const { return depths_[position]; }

private:
    DemoNode& node(std::size_t position) { return data_.nodes[first_ + position]; }

    DemoData& data_;
    Sequence& sequence_;
    DemoType type_;
    std::size_t size_;
    std::size_t first_; ///< position of the first node in the data
    std::size_t made_ = 0;
    std::vector<int> depths_;
    std::vector<bool> hasChildren_;
};

/// The elements in a new order.
template <class T> std::vector<T> shuffled(std::vector<T> all, Sequence& sequence) {
    for (std::size_t i = all.size(); i > 1; --i)
        std::swap(all[i - 1], all[sequence.below(i)]);
    return all;
}

} // namespace host::demo
