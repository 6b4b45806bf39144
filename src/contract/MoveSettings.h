#pragma once

#include <cstdint>

namespace contract {

/// What a host may settle of how moves work. A plug-in class may implement it beside its other interfaces; a host asks
/// for it with dynamic_cast, and leaves it where there is none.
class MoveSettings {
public:
    MoveSettings() = default;
    MoveSettings(const MoveSettings&) = delete;
    MoveSettings& operator=(const MoveSettings&) = delete;
    virtual ~MoveSettings() = default;

    /// A move of more nodes below the moved one than this is read and written in blocks of many rows, one of fewer
    /// statement by statement; the result is the same. 0: always in blocks; negative: never. Holds from the next move
    /// on, also for forms that are shown later.
    virtual std::int32_t NodiPerBlocchi() const = 0;
    virtual void NodiPerBlocchi(std::int32_t value) = 0;
};

} // namespace contract
