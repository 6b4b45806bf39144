#pragma once

#include "contract/Recordset.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace platform::shared {

/// A tree as an index over a record set: built in one linear pass from a key and a parent field, no object a node.
///
/// Positions are those of the display order (parents before their children, siblings in the order of the rows), counted
/// from 0. A row whose parent is null, or not among the rows, is a top-level node. Of rows with the same key the first
/// one is the parent of those that name it. Rows on a cycle, and what hangs from them, have no position. A row without
/// a key is a top-level node that nothing can hang from.
class TreeIndex {
public:
    static constexpr std::int32_t none = -1;

    /// Throws RuntimeError 3265 for an unknown field, 6 for more than 2^31 - 2 rows.
    void build(const contract::Recordset& records, std::string_view keyField, std::string_view parentField);
    void clear();

    /// Count of nodes: rows that have a position.
    std::size_t size() const;
    std::int32_t row(std::int32_t position) const;
    /// none for a row without a position.
    std::int32_t position(std::int32_t row) const;
    /// none for a top-level node.
    std::int32_t parent(std::int32_t position) const;
    int level(std::int32_t position) const;
    /// Position after the last one of the subtree; constant time.
    std::int32_t subtreeEnd(std::int32_t position) const;

    /// Positions of the children, in display order; of the top-level nodes for none.
    std::span<const std::int32_t> children(std::int32_t position) const;
    /// Place among the siblings, counted from 0.
    std::int32_t placeAmongSiblings(std::int32_t position) const;

    /// Position of the node with that key, the first one of several; none if there is none.
    std::int32_t find(std::int64_t key) const;

    /// Bytes in use, capacity included: at most 40 a node.
    std::size_t memory() const;

private:
    using Column = contract::Column;

    /// A key with the row that carries it, as the general lookup sorts them.
    struct KeyedRow {
        std::int64_t key;
        std::int32_t row;
    };

    std::vector<std::int32_t> resolveParents(const Column& keys, const Column& parents, std::size_t rows);
    void resolveDense(const Column& keys, const Column& parents, std::vector<std::int32_t>& parentRow);
    void resolveSorted(const Column& keys, const Column& parents, std::vector<std::int32_t>& parentRow);
    void place(const std::vector<std::int32_t>& parentRow);
    bool placeParentsFirst(const std::vector<std::int32_t>& parentRow);
    void placeAnyOrder(const std::vector<std::int32_t>& parentRow);
    void linkChildren();
    void dropUnplacedKeys(const Column& keys);

    std::vector<std::int32_t> row_;        // by position
    std::vector<std::int32_t> position_;   // by row
    std::vector<std::int32_t> parent_;     // by position
    std::vector<std::int32_t> level_;      // by position
    std::vector<std::int32_t> end_;        // by position
    std::vector<std::int32_t> children_;   // the top-level nodes, then the children of each position in turn
    std::vector<std::int32_t> childStart_; // by position: where its children begin

    // Either a table of the first row of every key from lowest_ on, for keys that lie close together, or the keys in
    // order, each with its first row.
    std::int64_t lowest_ = 0;
    std::vector<std::int32_t> rowOfKey_;
    std::vector<std::int64_t> sortedKeys_;
    std::vector<std::int32_t> sortedRows_;
};

} // namespace platform::shared
