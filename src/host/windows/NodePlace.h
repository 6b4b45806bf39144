#pragma once

#include <QString>

#include <cstdint>
#include <optional>

namespace host {

class HostSession;

/// A side of the component's form.
enum class FormSide : std::uint8_t { origin, destination };

/// The distinta (QZ01_ID) that a side of the open form shows; nothing without a form, or while it shows none.
std::optional<std::int64_t> shownType(const HostSession& session, FormSide side);

/// Puts the focus of a side's tree on a node, as a person would: chooses its distinta in the side's list where the side
/// shows another one. The reason where that can not be, empty where it was done.
QString showNode(const HostSession& session, FormSide side, std::int64_t type, std::int64_t node);

/// The same on the side that shows the distinta already; where none does, in the origin.
QString showNode(const HostSession& session, std::int64_t type, std::int64_t node);

} // namespace host
