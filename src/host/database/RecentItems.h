#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <utility>

namespace host {

/// The last items of a sequence that nobody may ever read: beyond the bound the oldest ones go, and are counted.
template <class Item> class RecentItems {
public:
    static constexpr std::size_t most = 100'000;

    void add(Item item) {
        if (items_.size() == most) {
            items_.pop_front();
            ++missing_;
        }
        items_.push_back(std::move(item));
    }

    /// The items since the last call, and how many older ones are missing.
    std::pair<std::deque<Item>, std::uint64_t> take() {
        return {std::exchange(items_, {}), std::exchange(missing_, 0)};
    }

private:
    std::deque<Item> items_;
    std::uint64_t missing_ = 0;
};

} // namespace host
