#pragma once

#include "contract/Connection.h"
#include "contract/RuntimeError.h"

#include <algorithm>
#include <utility>

namespace host {

/// Runs what only reads over a connection, outside of transactions; once more where the connection was lost meanwhile,
/// which the next statement opens again. A time-out is none: who asks again only waits again.
template <class Reading> auto askAgainWhenLost(contract::Connection& connection, Reading&& reading) {
    try {
        return reading();
    } catch (const contract::RuntimeError&) {
        const auto records = connection.Errors();
        const auto has = [&records](contract::ErrorCategory category) {
            return std::any_of(records.begin(), records.end(),
                               [category](const auto& record) { return record.category == category; });
        };
        if (!has(contract::ErrorCategory::lostConnection) || has(contract::ErrorCategory::timeout) ||
            connection.InTransaction())
            throw;
    }
    return reading();
}

} // namespace host
