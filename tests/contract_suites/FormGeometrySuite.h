#pragma once

// Bounds of forms and controls, and how they follow the form and the zoom.

#include "contract_suites/FormFixture.h"

#include <string>
#include <vector>

namespace contract_suites {

TEST_P(FormSuite, BoundsOfADocumentFormReadBackExactly) {
    auto& form = document();
    const contract::Rect bounds{100, 101, 14685, 9058};
    form.setBounds(bounds);
    EXPECT_EQ(form.bounds(), bounds);
    form.show(false);
    EXPECT_EQ(form.bounds(), bounds);
}

TEST_P(FormSuite, BoundsOfADialogReadBackExactlyAndAreItsArea) {
    auto& form = dialog();
    const contract::Rect bounds{1007, 503, 5003, 3001};
    form.setBounds(bounds);
    form.show(false);
    EXPECT_EQ(form.bounds(), bounds);
    EXPECT_EQ(form.clientWidth(), 5003);
    EXPECT_EQ(form.clientHeight(), 3001);
}

TEST_P(FormSuite, TheContainerPlacesTheForm) {
    auto& form = document();
    auto& container = form.addMdiContainer("SECONDO");
    container.place({250, 350, 14685, 9058});
    EXPECT_EQ(form.bounds(), (contract::Rect{250, 350, 14685, 9058}));
    EXPECT_EQ(container.windowState(), 0);
    container.setWindowState(2);
    EXPECT_EQ(container.windowState(), 2);
}

TEST_P(FormSuite, TheAreaIsAsLargeBeforeTheFormIsShownAsAfter) {
    auto& form = document();
    form.setBounds({100, 100, 14685, 9058});
    const auto width = form.clientWidth();
    const auto height = form.clientHeight();
    form.show(false);
    EXPECT_EQ(form.clientWidth(), width);
    EXPECT_EQ(form.clientHeight(), height);
}

TEST_P(FormSuite, ResizingGivesNewExactBounds) {
    auto& form = document();
    form.setBounds({100, 100, 14685, 9058});
    form.show(false);
    harness_->resize(form, 16001, 9607);
    EXPECT_EQ(form.bounds(), (contract::Rect{100, 100, 16001, 9607}));
}

TEST_P(FormSuite, BoundsOfControlsAreExactAndNeverNegative) {
    auto& form = dialog();
    auto& frame = form.addFrame("FME", nullptr);
    auto& inside = form.addButton("CMD", &frame);
    frame.setBounds({103, 207, 3001, 2003});
    inside.setBounds({11, 13, 1001, 401});
    EXPECT_EQ(frame.bounds(), (contract::Rect{103, 207, 3001, 2003}));
    EXPECT_EQ(inside.bounds(), (contract::Rect{11, 13, 1001, 401}));
    inside.setBounds({-5, -7, -100, -200});
    EXPECT_EQ(inside.bounds(), (contract::Rect{-5, -7, 0, 0}));
}

// Resizing

TEST_P(FormSuite, ModeCodesSayWhatFollowsTheForm) {
    constexpr int codes = 16;
    auto& form = document();
    form.setBounds({100, 100, 12000, 9000});
    auto& resize = form.addResizeControl("KVT_RESIZEFORM");
    std::vector<contract::Frame*> frames;
    const contract::Rect start{1000, 500, 2000, 1500};
    for (int code = 0; code < codes; ++code) {
        frames.push_back(&form.addFrame("F" + std::to_string(code), nullptr));
        frames.back()->setBounds(start);
    }
    resize.Setup = [&] {
        for (int code = 0; code < codes; ++code)
            resize.registerControl(*frames[static_cast<std::size_t>(code)], code);
    };
    int calls = 0;
    resize.AfterResize = [&] { ++calls; };
    form.show(false);
    resize.setUp();
    EXPECT_EQ(calls, 0);
    const double width = form.clientWidth();
    const double height = form.clientHeight();
    harness_->resize(form, 15000, 10500);
    EXPECT_EQ(calls, 1);
    const double across = form.clientWidth() / width;
    const double down = form.clientHeight() / height;
    ASSERT_GT(across, 1.2);
    ASSERT_GT(down, 1.1);
    for (int code = 0; code < codes; ++code) {
        SCOPED_TRACE(code);
        const auto now = frames[static_cast<std::size_t>(code)]->bounds();
        EXPECT_NEAR(now.width, (code & 1) != 0 ? start.width * across : start.width, 1.5);
        EXPECT_NEAR(now.left, (code & 2) != 0 ? start.left * across : start.left, 1.0);
        EXPECT_NEAR(now.top, (code & 4) != 0 ? start.top * down : start.top, 1.0);
        EXPECT_NEAR(now.height, (code & 8) != 0 ? start.height * down : start.height, 1.5);
    }
}

TEST_P(FormSuite, GoingBackToTheFirstSizeBringsEveryControlBack) {
    auto& form = document();
    form.setBounds({100, 100, 12000, 9000});
    auto& resize = form.addResizeControl("KVT_RESIZEFORM");
    auto& frame = form.addFrame("FME", nullptr);
    frame.setBounds({1001, 503, 2003, 1507});
    form.show(false);
    resize.setUp();
    resize.registerControl(frame, 15);
    for (const int width : {13000, 7000, 15000, 12000})
        harness_->resize(form, width, width * 3 / 4);
    EXPECT_EQ(frame.bounds(), (contract::Rect{1001, 503, 2003, 1507}));
}

TEST_P(FormSuite, TheFormsLayoutRunsAfterTheScaling) {
    auto& form = document();
    form.setBounds({100, 100, 12000, 9000});
    auto& resize = form.addResizeControl("KVT_RESIZEFORM");
    auto& frame = form.addFrame("FME", nullptr);
    frame.setBounds({1000, 500, 2000, 1500});
    resize.AfterResize = [&] { frame.setBounds({10, 20, 30, 40}); };
    form.show(false);
    resize.setUp();
    resize.registerControl(frame, 15);
    harness_->resize(form, 15000, 10500);
    EXPECT_EQ(frame.bounds(), (contract::Rect{10, 20, 30, 40}));
}

TEST_P(FormSuite, ModesCanBeAskedByName) {
    auto& form = document();
    auto& resize = form.addResizeControl("KVT_RESIZEFORM");
    auto& frame = form.addFrame("FME", nullptr);
    EXPECT_FALSE(resize.mode("FME").has_value());
    resize.registerControl(frame, 11);
    EXPECT_EQ(resize.mode("FME"), 11);
    EXPECT_FALSE(resize.mode("ALTRO").has_value());
}

TEST_P(FormSuite, TheZoomScalesMeasuresMadeForEightPoints) {
    auto& form = document();
    auto& resize = form.addResizeControl("KVT_RESIZEFORM");
    for (const int points : {8, 10, 12, 14}) {
        resize.setZoom(points);
        EXPECT_EQ(resize.zoom(), points);
        EXPECT_EQ(resize.scaled(800), 100 * points);
    }
    EXPECT_NE(errorOf([&] { resize.setZoom(9); }), 0);
    EXPECT_EQ(resize.zoom(), 14);
}

TEST_P(FormSuite, AnotherZoomRaisesAfterResize) {
    auto& form = document();
    auto& resize = form.addResizeControl("KVT_RESIZEFORM");
    form.show(false);
    resize.setZoom(8);
    resize.setUp();
    int calls = 0;
    resize.AfterResize = [&] { ++calls; };
    resize.setZoom(14);
    EXPECT_EQ(calls, 1);
}

} // namespace contract_suites
