#pragma once

#include "contract/Date.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace contract {

/// What a move does with a node.
enum class MoveOutcome : std::uint8_t {
    moves,   ///< the row itself goes over
    copies,  ///< the link is closed and opened anew
    closes,  ///< the link is closed without a copy
    stays,   ///< left behind by a check
    refused, ///< for its sake nothing is moved
};

/// What a row of the distinte says of its link.
struct MoveLink {
    std::optional<std::int64_t> type;   ///< QZ01_ID
    std::optional<std::int64_t> parent; ///< QZ02_ID; nothing for a root link
    std::optional<Date> start;
    std::optional<Date> end;
    std::string parentName; ///< account and name of the parent, for a person; empty where there is none

    friend bool operator==(const MoveLink&, const MoveLink&) = default;
};

/// A link that a move opens; its row has no id yet.
struct MoveCopy {
    std::optional<std::int64_t> type;
    std::optional<std::int64_t> parentAccount;
    std::optional<Date> start;
    std::optional<Date> end;
    std::string parentName;

    friend bool operator==(const MoveCopy&, const MoveCopy&) = default;
};

/// A node that a move comes to.
struct MoveRow {
    std::optional<std::int64_t> line;    ///< of a list, its header being line 1; nothing outside of one
    std::optional<std::int64_t> id;      ///< QZ02_ID; nothing where a line of a list names no node
    std::optional<std::int64_t> account; ///< QZ02_CLIFOR_CG44
    std::string name;                    ///< of the account; empty for one that is not registered
    MoveOutcome outcome = MoveOutcome::moves;
    std::string reason; ///< the check's own text, without its line's end; empty where there is none
    MoveLink before;
    MoveLink after;
    std::optional<MoveCopy> copy;

    friend bool operator==(const MoveRow&, const MoveRow&) = default;
};

/// What a move would do, or did.
struct MovePlan {
    std::vector<MoveRow> rows; ///< in the order of the walk
    /// What the user would be told, to the letter, where nothing would be written; else empty. Of a list a line a
    /// refused line, the last one without its end.
    std::string refused;
    std::map<std::int64_t, std::string> types; ///< codes of the distinte named in the rows

    friend bool operator==(const MovePlan&, const MovePlan&) = default;
};

/// How nodes are moved.
struct MoveManner {
    bool validity = false;   ///< the links are closed and opened anew; otherwise the rows themselves go over
    std::optional<Date> end; ///< with validity, the last day of the closed links; nothing: none was given
};

/// What a move of the form's focused nodes would do. A plug-in class may implement it beside its other interfaces; a
/// host asks for it with dynamic_cast. Every member throws RuntimeError 91 while no form is open.
class MovePreview {
public:
    MovePreview() = default;
    MovePreview(const MovePreview&) = delete;
    MovePreview& operator=(const MovePreview&) = delete;
    virtual ~MovePreview() = default;

    /// The last day of the closed links that the form would take by itself.
    virtual Date proposedEnd() const = 0;
    /// The plan of the focused nodes, as of now. Nothing is written, no transaction begun and the form's state left as
    /// it was. Database errors come through.
    virtual MovePlan plan(const MoveManner& manner) = 0;
    /// Runs the form's own command with its dialog, which proposes the day, and its question.
    virtual void move(const MoveManner& manner) = 0;
    /// Puts the focus on a node in the origin's tree, or where it is not there in the destination's. False when neither
    /// shows it.
    virtual bool show(std::int64_t node) = 0;
};

} // namespace contract
