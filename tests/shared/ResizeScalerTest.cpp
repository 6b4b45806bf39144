#include "platform/shared/ResizeScaler.h"

#include <gtest/gtest.h>

using contract::Rect;
using platform::shared::Extent;
using platform::shared::isZoom;
using platform::shared::resized;
using platform::shared::zoomed;

namespace {

constexpr Extent small{1000, 500};
constexpr Extent large{2000, 1500};
constexpr Rect box{100, 50, 200, 60};

TEST(ResizeScaler, LeavesAControlWithoutModeWhereItIs) {
    EXPECT_EQ(resized(box, 0, small, large), box);
}

TEST(ResizeScaler, LetsEachPartOfTheModeFollowAlone) {
    EXPECT_EQ(resized(box, 1, small, large), (Rect{100, 50, 400, 60}));
    EXPECT_EQ(resized(box, 2, small, large), (Rect{200, 50, 200, 60}));
    EXPECT_EQ(resized(box, 4, small, large), (Rect{100, 150, 200, 60}));
    EXPECT_EQ(resized(box, 8, small, large), (Rect{100, 50, 200, 180}));
}

TEST(ResizeScaler, AddsThePartsOfTheModesInUse) {
    EXPECT_EQ(resized(box, 7, small, large), (Rect{200, 150, 400, 60}));
    EXPECT_EQ(resized(box, 11, small, large), (Rect{200, 50, 400, 180}));
    EXPECT_EQ(resized(box, 14, small, large), (Rect{200, 150, 200, 180}));
    EXPECT_EQ(resized(box, 15, small, large), (Rect{200, 150, 400, 180}));
}

TEST(ResizeScaler, KeepsNeighboursTouchingAtEverySize) {
    for (int width = 0; width < 3000; width += 7) {
        const Extent to{width, 500};
        const auto left = resized({0, 0, 333, 100}, 15, small, to);
        const auto right = resized({333, 0, 667, 100}, 15, small, to);
        EXPECT_EQ(left.left + left.width, right.left) << width;
        EXPECT_EQ(right.left + right.width, width);
    }
}

TEST(ResizeScaler, ComesBackToTheSizeItCameFrom) {
    EXPECT_EQ(resized(box, 15, small, small), box);
    EXPECT_EQ(resized(resized(box, 15, small, large), 15, large, small), box);
}

TEST(ResizeScaler, KeepsAControlWhoseFormHadNoSize) {
    EXPECT_EQ(resized(box, 15, {0, 0}, large), box);
    EXPECT_EQ(resized(box, 15, {-1, 500}, large), (Rect{100, 150, 200, 180}));
}

TEST(ResizeScaler, NeverMakesASizeNegative) {
    EXPECT_EQ(resized(box, 15, small, {-10, -10}), (Rect{0, 0, 0, 0}));
}

TEST(ResizeScaler, SurvivesLargeMeasures) {
    EXPECT_EQ(resized({0, 0, 2'000'000, 10}, 1, {2'000'000, 1}, {1'999'999, 1}).width, 1'999'999);
}

TEST(ResizeScaler, ScalesMeasuresMadeForEightPoints) {
    EXPECT_EQ(zoomed(240, 8), 240);
    EXPECT_EQ(zoomed(240, 10), 300);
    EXPECT_EQ(zoomed(240, 12), 360);
    EXPECT_EQ(zoomed(240, 14), 420);
    EXPECT_EQ(zoomed(Rect{8, 16, 24, 32}, 14), (Rect{14, 28, 42, 56}));
}

TEST(ResizeScaler, RoundsHalvesAwayFromZero) {
    EXPECT_EQ(zoomed(2, 10), 3);
    EXPECT_EQ(zoomed(-2, 10), -3);
    EXPECT_EQ(zoomed(1, 10), 1);
}

TEST(ResizeScaler, KnowsTheZooms) {
    for (int points = 0; points < 30; ++points)
        EXPECT_EQ(isZoom(points), points == 8 || points == 10 || points == 12 || points == 14) << points;
}

} // namespace
