#include "platform/shared/ResizeScaler.h"

#include <algorithm>
#include <cstdint>

namespace platform::shared {

using contract::Rect;
using contract::Twips;

namespace {

constexpr int basePoints = 8;

/// measure * part / whole to the nearest, halves away from zero.
Twips share(Twips measure, Twips part, Twips whole) {
    const auto product = static_cast<std::int64_t>(measure) * part;
    const std::int64_t half = product < 0 ? -(whole / 2) : whole / 2;
    return static_cast<Twips>((product + half) / whole);
}

struct Span {
    Twips start;
    Twips length;
};

/// One direction of a control. Where both the start and the length follow, the end is scaled, not the length, so that
/// a neighbour which begins at that end still begins there.
Span follow(Span span, bool startFollows, bool lengthFollows, Twips from, Twips to) {
    if (from <= 0)
        return span;
    to = std::max(to, 0);
    const auto start = startFollows ? share(span.start, to, from) : span.start;
    if (!lengthFollows)
        return {start, span.length};
    const auto length = startFollows ? share(span.start + span.length, to, from) - start : share(span.length, to, from);
    return {start, std::max(length, 0)};
}

} // namespace

Rect resized(const Rect& bounds, int mode, const Extent& from, const Extent& to) {
    const auto has = [mode](int part) { return (mode & part) != 0; };
    const auto across =
        follow({bounds.left, bounds.width}, has(resize::left), has(resize::width), from.width, to.width);
    const auto down =
        follow({bounds.top, bounds.height}, has(resize::top), has(resize::height), from.height, to.height);
    return {across.start, down.start, across.length, down.length};
}

bool isZoom(int points) {
    return points == 8 || points == 10 || points == 12 || points == 14;
}

Twips zoomed(Twips measure, int points) {
    return share(measure, points, basePoints);
}

Rect zoomed(const Rect& bounds, int points) {
    return {zoomed(bounds.left, points), zoomed(bounds.top, points), zoomed(bounds.width, points),
            zoomed(bounds.height, points)};
}

} // namespace platform::shared
