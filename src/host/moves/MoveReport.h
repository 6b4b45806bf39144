#pragma once

#include "contract/MoveLists.h"

#include <string>
#include <vector>

namespace host {

class HostSession;

/// Does a list of moves without anybody at the screen, or only says what it would do. Lines that name no distinta mean
/// the first one in which the account stands. Throws StartFailure where there is no plan.
contract::MovePlan moveLines(HostSession& session, const std::vector<contract::MoveLine>& lines, bool apply);

// The rows of a plan as text, one line each.

/// JSON objects as scripts get them.
std::string planAsJsonLines(const contract::MovePlan& plan);
/// Semicolons between the fields, the members of the JSON objects as columns. A text that a spreadsheet program would
/// take for a formula gets an apostrophe in front.
std::string planAsCsv(const contract::MovePlan& plan);

} // namespace host
