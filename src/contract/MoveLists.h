#pragma once

#include "contract/MovePreview.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace contract {

/// A line of a list of moves: an account goes, with all that hangs below it, under another one.
struct MoveLine {
    std::int64_t line = 0; ///< for the rows of the plan and for refusals
    std::int64_t account = 0;
    std::int64_t parentAccount = 0;
    std::string originCode;      ///< QZ01_CODICE; empty: as Unnamed says
    std::string destinationCode; ///< the same
    MoveManner manner;
    /// Why the line can not be carried out as it is written; empty where it can.
    std::string wrong;
};

/// Which distinte are meant by lines that name none.
enum class Unnamed : std::uint8_t {
    onScreen,      ///< those that the form shows
    whereItStands, ///< the first one in which the account stands
};

/// Moves of several nodes, one after the other, each finding what those before it left. A plug-in class may implement
/// it beside its other interfaces; a host asks for it with dynamic_cast. Every member throws RuntimeError 91 while no
/// form is open.
///
/// A plan is refused where one of the moves would be: then nothing is written. Its rows bear the line's number; a line
/// that names no node is a row without an id.
class MoveLists {
public:
    MoveLists() = default;
    MoveLists(const MoveLists&) = delete;
    MoveLists& operator=(const MoveLists&) = delete;
    virtual ~MoveLists() = default;

    /// What the list would do, as of now; nothing is written and no transaction begun. Database errors come through.
    virtual MovePlan planList(const std::vector<MoveLine>& lines, Unnamed unnamed) = 0;
    /// Does it in one transaction, all or nothing, and loads both trees again; what was done, or why it was not.
    /// Database errors come through with nothing written.
    virtual MovePlan moveList(const std::vector<MoveLine>& lines, Unnamed unnamed) = 0;

    /// The same for the topmost checked nodes of the origin's tree, numbered from 1 in its order, under the focused
    /// node of the destination's.
    virtual MovePlan planSelected(const MoveManner& manner) = 0;
    virtual MovePlan moveSelected(const MoveManner& manner) = 0;
};

} // namespace contract
