#pragma once

#include "contract/Date.h"

#include <optional>

namespace contract {

/// Whether a person may type that day: from 01/01/1900 on. The database may hold earlier ones, left by older programs
/// for "no date"; these are shown, compared and written back as they are.
inline bool canBeTyped(const Date& date) {
    return date >= Date();
}

/// A day that was typed where another one stood: nothing when it lies before those that may be typed, unless it is the
/// one that stood there.
inline std::optional<Date> typedOver(const std::optional<Date>& typed, const std::optional<Date>& stood) {
    return typed && (canBeTyped(*typed) || typed == stood) ? typed : std::nullopt;
}

} // namespace contract
