#pragma once

#include "contract/Date.h"
#include "contract/Value.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace contract {

/// What an operation of the registry of moves was.
enum class OperationKind : std::uint8_t {
    structure, ///< a structural move
    validity,  ///< a move with validity
    edit,      ///< dates of a node edited in place
    list,      ///< several moves as one
    undo       ///< another operation was taken back
};

/// What an operation did with a row of QZ02_DISTINTA.
enum class RowOutcome : std::uint8_t {
    moves,    ///< went to another parent or distinta
    copies,   ///< was closed, and opened anew in another row
    opens,    ///< was inserted
    stays,    ///< left as it was by a check; not counted among an operation's rows
    edits,    ///< got other dates
    restores, ///< got back what it held before the operation that was taken back
    deletes   ///< was deleted
};

/// Values by the names of their columns, in the order of the table.
using RowValues = std::vector<std::pair<std::string, Value>>;

/// One operation of the registry.
struct Operation {
    std::int64_t id = 0;
    Date day;
    std::string time; ///< "HH:MM:SS", of the machine that worked
    std::string user;
    std::string group;
    OperationKind kind = OperationKind::structure;
    std::string description;              ///< in the user's language
    std::optional<std::int64_t> undoes;   ///< the operation that this one took back
    std::optional<std::int64_t> undoneBy; ///< the operation that took this one back
    std::int64_t rows = 0;                ///< rows that it changed
};

/// A row of an operation.
struct OperationRow {
    std::int64_t row = 0; ///< within the operation, from 1
    std::int64_t id = 0;  ///< QZ02_ID
    std::optional<std::int64_t> account;
    RowOutcome outcome = RowOutcome::moves;
    std::string reason;              ///< why it stays, in the user's language; mostly empty
    std::optional<RowValues> before; ///< the columns that changed; nothing for a row that was inserted
    std::optional<RowValues> after;  ///< the same columns; nothing for a row that was deleted
};

/// What is asked of the registry; what is empty holds for every operation.
struct OperationFilter {
    std::string user;
    std::optional<Date> day;
    std::optional<std::int64_t> account; ///< of one of its rows
};

/// Why an operation can not be taken back.
struct Obstacle {
    std::optional<std::int64_t> id; ///< QZ02_ID; nothing where the whole operation is meant
    std::optional<std::int64_t> account;
    std::string reason; ///< in the user's language, with what the row holds now
};

/// What taking an operation back did or would do.
struct Undoing {
    bool undone = false;
    std::optional<std::int64_t> operation; ///< the new operation, where it was taken back
    std::vector<Obstacle> obstacles;       ///< not empty: nothing was written
    std::vector<OperationRow> rows;        ///< what changes, in the order in which it is taken back
};

/// The registry of moves: what each move and each edit changed, and how to take it back. A plug-in class may implement
/// it beside its other interfaces; a host asks for it with dynamic_cast. All of it is about the working company.
class MoveRegistry {
public:
    MoveRegistry() = default;
    MoveRegistry(const MoveRegistry&) = delete;
    MoveRegistry& operator=(const MoveRegistry&) = delete;
    virtual ~MoveRegistry() = default;

    /// Whether moves and edits are written into the registry; false at first. Only where the database has its tables.
    /// Holds from the next move on, also for a form that is shown later.
    virtual bool KeepsRegistry() const = 0;
    virtual void KeepsRegistry(bool value) = 0;

    // These throw RuntimeError where the database does, 91 without a context and 5 for an unknown operation.

    /// Newest first.
    virtual std::vector<Operation> Operations(const OperationFilter& filter) = 0;
    /// The rows of one, in its order.
    virtual std::vector<OperationRow> OperationRows(std::int64_t operation) = 0;
    /// What taking an operation back would do; writes nothing.
    virtual Undoing PreviewUndo(std::int64_t operation) = 0;
    /// Takes an operation back, in one transaction, or says what stands in the way.
    virtual Undoing Undo(std::int64_t operation) = 0;

    /// What a person knows a column of QZ02_DISTINTA by ("padre"); its own name for an unknown one.
    virtual std::string ColumnCaption(std::string_view column) const = 0;
};

} // namespace contract
