#pragma once

#include "contract/Comparison.h"
#include "host/windows/ToolCommands.h"

#include <memory>
#include <optional>

namespace host {

/// Compares the two distinte that the form shows and shows the window with the differences until it is left; then shows
/// the nodes that it was left for. What differs; null where the comparison failed, which the window has told. day:
/// nothing for today. Throws RuntimeError with the reason where there is no form, or not two distinte.
std::shared_ptr<const contract::ComparisonReport> showComparison(HostSession& session, QWidget* window,
                                                                 std::optional<contract::Date> day);

/// The comparison in the menu "Strumenti".
void addComparisonCommands(QMenu& menu, const ToolContext& context);

} // namespace host
