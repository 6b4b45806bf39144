#pragma once

#include "contract/Control.h"

namespace platform::shared {

/// Size of the area in which controls stand.
struct Extent {
    contract::Twips width = 0;
    contract::Twips height = 0;
    friend bool operator==(const Extent&, const Extent&) = default;
};

/// The parts of a resize control's mode code.
namespace resize {
constexpr int width = 1;  ///< the width follows the form's width
constexpr int left = 2;   ///< the left edge follows the form's width
constexpr int top = 4;    ///< the top edge follows the form's height
constexpr int height = 8; ///< the height follows the form's height
} // namespace resize

/// Where a control stands in a form that went from one size to another: what follows the form keeps its share of it,
/// the rest stays. Edges that touched still touch when both controls follow. A side of the old size that is not
/// positive, and any other bit of the mode, changes nothing; measures never become negative by it.
contract::Rect resized(const contract::Rect& bounds, int mode, const Extent& from, const Extent& to);

/// The zooms that forms can have, in points.
bool isZoom(int points);

/// A measure made for 8 points, at another size of type; rounded to the nearest, halves away from zero.
contract::Twips zoomed(contract::Twips measure, int points);
contract::Rect zoomed(const contract::Rect& bounds, int points);

} // namespace platform::shared
