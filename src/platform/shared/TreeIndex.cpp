#include "platform/shared/TreeIndex.h"

#include "contract/RuntimeError.h"

#include <algorithm>
#include <array>
#include <limits>
#include <string>
#include <utility>

namespace platform::shared {

namespace {

// Keys whose range is at most this many times their count are looked up in a table; more would cost more memory than
// keeping the keys themselves.
constexpr std::uint64_t densestSpread = 3;

/// Stable and linear: by digits of 11 bits, those in which all keys agree passed over.
template <class Keyed> void sortByKey(std::vector<Keyed>& entries) {
    constexpr unsigned digitBits = 11;
    constexpr std::size_t buckets = std::size_t{1} << digitBits;
    const auto less = [](const Keyed& a, const Keyed& b) { return a.key < b.key; };
    if (std::is_sorted(entries.begin(), entries.end(), less))
        return;
    // Flipping the sign bit makes the order of the bits that of the numbers.
    const auto bits = [](const Keyed& entry) {
        return static_cast<std::uint64_t>(entry.key) ^ (std::uint64_t{1} << 63U);
    };
    std::uint64_t varying = 0;
    for (const auto& entry : entries)
        varying |= bits(entry) ^ bits(entries.front());
    std::vector<Keyed> other(entries.size());
    for (unsigned shift = 0; shift < 64; shift += digitBits) {
        if (((varying >> shift) & (buckets - 1)) == 0)
            continue;
        std::array<std::size_t, buckets> start{};
        for (const auto& entry : entries)
            ++start[(bits(entry) >> shift) & (buckets - 1)];
        std::size_t sum = 0;
        for (auto& at : start)
            sum += std::exchange(at, sum);
        for (const auto& entry : entries)
            other[start[(bits(entry) >> shift) & (buckets - 1)]++] = entry;
        entries.swap(other);
    }
}

std::size_t bytes(const std::vector<std::int32_t>& numbers) {
    return numbers.capacity() * sizeof(std::int32_t);
}

} // namespace

void TreeIndex::build(const contract::Recordset& records, std::string_view keyField, std::string_view parentField) {
    const auto& keys = records.rows().column(records.FieldIndex(keyField));
    const auto& parents = records.rows().column(records.FieldIndex(parentField));
    const auto rows = records.RecordCount();
    if (rows > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max()) - 1)
        throw contract::RuntimeError(contract::RuntimeError::overflow,
                                     "Overflow: troppe righe per un albero (" + std::to_string(rows) + ").");
    clear();
    place(resolveParents(keys, parents, rows));
    linkChildren();
    if (size() < rows)
        dropUnplacedKeys(keys);
}

void TreeIndex::clear() {
    *this = TreeIndex();
}

/// The row of each row's parent; none for a top-level node.
std::vector<std::int32_t> TreeIndex::resolveParents(const Column& keys, const Column& parents, std::size_t rows) {
    std::vector<std::int32_t> parentRow(rows, none);
    std::size_t count = 0;
    auto lowest = std::numeric_limits<std::int64_t>::max();
    auto highest = std::numeric_limits<std::int64_t>::min();
    for (std::size_t row = 0; row < rows; ++row) {
        if (const auto key = keys.integer(row)) {
            ++count;
            lowest = std::min(lowest, *key);
            highest = std::max(highest, *key);
        }
    }
    if (count == 0)
        return parentRow;
    lowest_ = lowest;
    // Unsigned, since the range of signed keys may not fit a signed number.
    const auto last = static_cast<std::uint64_t>(highest) - static_cast<std::uint64_t>(lowest);
    if (last < densestSpread * rows) {
        rowOfKey_.assign(last + 1, none);
        resolveDense(keys, parents, parentRow);
    } else {
        resolveSorted(keys, parents, parentRow);
    }
    return parentRow;
}

void TreeIndex::resolveDense(const Column& keys, const Column& parents, std::vector<std::int32_t>& parentRow) {
    const auto slot = [this](std::int64_t key) {
        return static_cast<std::uint64_t>(key) - static_cast<std::uint64_t>(lowest_);
    };
    for (std::size_t row = 0; row < parentRow.size(); ++row) {
        const auto key = keys.integer(row);
        if (key && rowOfKey_[slot(*key)] == none)
            rowOfKey_[slot(*key)] = static_cast<std::int32_t>(row);
    }
    for (std::size_t row = 0; row < parentRow.size(); ++row)
        if (const auto parent = parents.integer(row); parent && slot(*parent) < rowOfKey_.size())
            parentRow[row] = rowOfKey_[slot(*parent)];
}

void TreeIndex::resolveSorted(const Column& keys, const Column& parents, std::vector<std::int32_t>& parentRow) {
    const auto entriesOf = [&](const Column& column) {
        std::vector<KeyedRow> entries;
        entries.reserve(parentRow.size());
        for (std::size_t row = 0; row < parentRow.size(); ++row)
            if (const auto key = column.integer(row))
                entries.push_back({*key, static_cast<std::int32_t>(row)});
        sortByKey(entries);
        return entries;
    };
    auto owners = entriesOf(keys);
    // The sort is stable: of equal keys the one of the first row stands first and is kept.
    const auto same = [](const KeyedRow& a, const KeyedRow& b) { return a.key == b.key; };
    owners.erase(std::unique(owners.begin(), owners.end(), same), owners.end());

    auto owner = owners.begin();
    for (const auto& child : entriesOf(parents)) {
        while (owner != owners.end() && owner->key < child.key)
            ++owner;
        if (owner != owners.end() && owner->key == child.key)
            parentRow[static_cast<std::size_t>(child.row)] = owner->row;
    }
    sortedKeys_.reserve(owners.size());
    sortedRows_.reserve(owners.size());
    for (const auto& entry : owners) {
        sortedKeys_.push_back(entry.key);
        sortedRows_.push_back(entry.row);
    }
}

void TreeIndex::place(const std::vector<std::int32_t>& parentRow) {
    position_.assign(parentRow.size(), none);
    if (!placeParentsFirst(parentRow))
        placeAnyOrder(parentRow);
    const auto nodes = row_.size();
    parent_.assign(nodes, none);
    level_.assign(nodes, 0);
    for (std::size_t at = 0; at < nodes; ++at) {
        const auto above = parentRow[static_cast<std::size_t>(row_[at])];
        if (above == none)
            continue;
        parent_[at] = position_[static_cast<std::size_t>(above)];
        level_[at] = level_[static_cast<std::size_t>(parent_[at])] + 1;
    }
}

/// Places the rows when every parent stands before its children, as it does in a table whose keys ascend: sizes of
/// subtrees from the last row up, then positions from the first row down. False, with nothing placed, otherwise.
bool TreeIndex::placeParentsFirst(const std::vector<std::int32_t>& parentRow) {
    const auto rows = parentRow.size();
    for (std::size_t row = 0; row < rows; ++row)
        if (parentRow[row] >= static_cast<std::int32_t>(row))
            return false;
    std::vector<std::int32_t> size(rows, 1);
    for (std::size_t row = rows; row-- > 0;)
        if (parentRow[row] != none)
            size[static_cast<std::size_t>(parentRow[row])] += size[row];
    // Each node's next child goes where the last one's subtree ended.
    std::vector<std::int32_t> nextChild(rows);
    row_.resize(rows);
    end_.resize(rows);
    std::int32_t nextTop = 0;
    for (std::size_t row = 0; row < rows; ++row) {
        auto& next = parentRow[row] == none ? nextTop : nextChild[static_cast<std::size_t>(parentRow[row])];
        const auto at = next;
        next += size[row];
        nextChild[row] = at + 1;
        position_[row] = at;
        row_[static_cast<std::size_t>(at)] = static_cast<std::int32_t>(row);
        end_[static_cast<std::size_t>(at)] = at + size[row];
    }
    return true;
}

/// Places the rows in any order by a walk from the top-level ones, which never comes to rows on a cycle.
void TreeIndex::placeAnyOrder(const std::vector<std::int32_t>& parentRow) {
    const auto rows = parentRow.size();
    std::vector<std::int32_t> firstChild(rows, none);
    std::vector<std::int32_t> nextSibling(rows, none);
    std::int32_t firstTop = none;
    for (std::size_t row = rows; row-- > 0;) {
        auto& first = parentRow[row] == none ? firstTop : firstChild[static_cast<std::size_t>(parentRow[row])];
        nextSibling[row] = first;
        first = static_cast<std::int32_t>(row);
    }
    row_.reserve(rows);
    end_.reserve(rows);
    for (auto row = firstTop; row != none;) {
        const auto at = static_cast<std::size_t>(row);
        position_[at] = static_cast<std::int32_t>(row_.size());
        row_.push_back(row);
        end_.push_back(none);
        if (firstChild[at] != none) {
            row = firstChild[at];
            continue;
        }
        // Up until there is a sibling to go on with; whatever is left behind ends here.
        for (;;) {
            const auto left = static_cast<std::size_t>(row);
            end_[static_cast<std::size_t>(position_[left])] = static_cast<std::int32_t>(row_.size());
            row = nextSibling[left];
            if (row != none || parentRow[left] == none)
                break;
            row = parentRow[left];
        }
    }
    if (row_.size() < rows) {
        row_.shrink_to_fit();
        end_.shrink_to_fit();
    }
}

void TreeIndex::linkChildren() {
    const auto nodes = static_cast<std::int32_t>(row_.size());
    children_.reserve(row_.size());
    childStart_.reserve(row_.size());
    const auto append = [this](std::int32_t first, std::int32_t end) {
        for (auto child = first; child < end; child = end_[static_cast<std::size_t>(child)])
            children_.push_back(child);
    };
    append(0, nodes);
    for (std::int32_t at = 0; at < nodes; ++at) {
        childStart_.push_back(static_cast<std::int32_t>(children_.size()));
        append(at + 1, end_[static_cast<std::size_t>(at)]);
    }
}

/// The first row of a key may stand on a cycle while a later one is a node: then the later one is what is found.
void TreeIndex::dropUnplacedKeys(const Column& keys) {
    const auto firstPlaced = [&](std::int64_t key) -> std::int32_t* {
        if (!rowOfKey_.empty())
            return &rowOfKey_[static_cast<std::uint64_t>(key) - static_cast<std::uint64_t>(lowest_)];
        const auto at = std::lower_bound(sortedKeys_.begin(), sortedKeys_.end(), key);
        return &sortedRows_[static_cast<std::size_t>(at - sortedKeys_.begin())];
    };
    for (std::size_t row = 0; row < position_.size(); ++row) {
        if (position_[row] == none)
            continue;
        const auto key = keys.integer(row);
        if (!key)
            continue;
        auto* first = firstPlaced(*key);
        if (position_[static_cast<std::size_t>(*first)] == none)
            *first = static_cast<std::int32_t>(row);
    }
}

std::size_t TreeIndex::size() const {
    return row_.size();
}

std::int32_t TreeIndex::row(std::int32_t position) const {
    return row_[static_cast<std::size_t>(position)];
}

std::int32_t TreeIndex::position(std::int32_t row) const {
    return position_[static_cast<std::size_t>(row)];
}

std::int32_t TreeIndex::parent(std::int32_t position) const {
    return parent_[static_cast<std::size_t>(position)];
}

int TreeIndex::level(std::int32_t position) const {
    return level_[static_cast<std::size_t>(position)];
}

std::int32_t TreeIndex::subtreeEnd(std::int32_t position) const {
    return end_[static_cast<std::size_t>(position)];
}

std::span<const std::int32_t> TreeIndex::children(std::int32_t position) const {
    if (children_.empty())
        return {};
    const auto at = static_cast<std::size_t>(std::int64_t{position} + 1);
    const auto begin = position == none ? 0 : static_cast<std::size_t>(childStart_[at - 1]);
    const auto end = at < childStart_.size() ? static_cast<std::size_t>(childStart_[at]) : children_.size();
    return std::span(children_).subspan(begin, end - begin);
}

std::int32_t TreeIndex::placeAmongSiblings(std::int32_t position) const {
    const auto siblings = children(parent(position));
    // Siblings stand in display order, so their positions ascend.
    return static_cast<std::int32_t>(std::lower_bound(siblings.begin(), siblings.end(), position) - siblings.begin());
}

std::int32_t TreeIndex::find(std::int64_t key) const {
    if (!rowOfKey_.empty()) {
        const auto slot = static_cast<std::uint64_t>(key) - static_cast<std::uint64_t>(lowest_);
        if (slot >= rowOfKey_.size() || rowOfKey_[slot] == none)
            return none;
        return position(rowOfKey_[slot]);
    }
    const auto at = std::lower_bound(sortedKeys_.begin(), sortedKeys_.end(), key);
    if (at == sortedKeys_.end() || *at != key)
        return none;
    return position(sortedRows_[static_cast<std::size_t>(at - sortedKeys_.begin())]);
}

std::size_t TreeIndex::memory() const {
    return bytes(row_) + bytes(position_) + bytes(parent_) + bytes(level_) + bytes(end_) + bytes(children_) +
           bytes(childStart_) + bytes(rowOfKey_) + bytes(sortedRows_) + sortedKeys_.capacity() * sizeof(std::int64_t);
}

} // namespace platform::shared
