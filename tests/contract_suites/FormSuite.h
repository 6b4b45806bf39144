#pragma once

// What every form and its controls keep to, whatever draws them. Include this in one file of a test program and
// instantiate it:
//
//   INSTANTIATE_TEST_SUITE_P(Headless, FormSuite, testing::Values(&makeHeadlessForms));

#include "plugin/contract/Form.h"
#include "plugin/contract/RuntimeError.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace contract_suites {

/// Makes forms, and acts as their user. Forms must end before it does.
class FormHarness {
public:
    FormHarness() = default;
    FormHarness(const FormHarness&) = delete;
    FormHarness& operator=(const FormHarness&) = delete;
    virtual ~FormHarness() = default;

    virtual contract::ControlFactory& factory() = 0;
    /// What is done while the form of that name, shown modally next, stands open.
    virtual void whenModal(const std::string& form, std::function<void()> steps) = 0;
    /// The user's close button.
    virtual void pressClose(contract::Form& form) = 0;
    virtual void click(contract::Form& form, const std::string& button) = 0;
    /// The user resizes the form.
    virtual void resize(contract::Form& form, contract::Twips width, contract::Twips height) = 0;
};

using FormHarnessMaker = std::unique_ptr<FormHarness> (*)();
using Events = std::vector<std::string>;

class FormSuite : public testing::TestWithParam<FormHarnessMaker> {
protected:
    void SetUp() override { harness_ = GetParam()(); }
    void TearDown() override {
        form_.reset();
        harness_.reset();
    }

    /// A document form in a container that writes down its events.
    contract::Form& document() {
        form_ = harness_->factory().newDocumentForm("FRM_DOCUMENTO");
        auto& container = form_->addMdiContainer("MDIActiveX1");
        container.FormLoad = [this] { events_.emplace_back("FormLoad"); };
        return writeDown(*form_);
    }
    contract::Form& dialog() {
        form_ = harness_->factory().newDialog("FRM_DIALOGO");
        return writeDown(*form_);
    }
    contract::Form& writeDown(contract::Form& form) {
        form.Load = [this] { events_.emplace_back("Load"); };
        form.Activate = [this] { events_.emplace_back("Activate"); };
        form.QueryUnload = [this](bool& cancel) {
            events_.emplace_back("QueryUnload");
            cancel = refuse_;
        };
        form.Unload = [this] { events_.emplace_back("Unload"); };
        return form;
    }
    Events takeEvents() { return std::exchange(events_, {}); }

    template <class Action> static int errorOf(Action action) {
        try {
            action();
        } catch (const contract::RuntimeError& error) {
            return error.number();
        }
        return 0;
    }

    std::unique_ptr<FormHarness> harness_;
    std::unique_ptr<contract::Form> form_;
    Events events_;
    bool refuse_ = false;
};

// Life

TEST_P(FormSuite, TheFirstShowRaisesLoadThenTheContainersLoadThenActivate) {
    document().show(false);
    EXPECT_EQ(takeEvents(), (Events{"Load", "FormLoad", "Activate"}));
}

TEST_P(FormSuite, ADialogHasNoContainerToLoad) {
    dialog().show(false);
    EXPECT_EQ(takeEvents(), (Events{"Load", "Activate"}));
}

TEST_P(FormSuite, ShowingItAgainActivatesItOnly) {
    auto& form = document();
    form.show(false);
    takeEvents();
    form.show(false);
    EXPECT_EQ(takeEvents(), Events{"Activate"});
}

TEST_P(FormSuite, UnloadAsksAndThenTells) {
    auto& form = document();
    form.show(false);
    takeEvents();
    EXPECT_TRUE(form.unload());
    EXPECT_EQ(takeEvents(), (Events{"QueryUnload", "Unload"}));
}

TEST_P(FormSuite, ARefusedUnloadLeavesTheFormAsItWas) {
    auto& form = document();
    form.show(false);
    takeEvents();
    refuse_ = true;
    EXPECT_FALSE(form.unload());
    EXPECT_EQ(takeEvents(), Events{"QueryUnload"});
    refuse_ = false;
    EXPECT_TRUE(form.unload());
    EXPECT_EQ(takeEvents(), (Events{"QueryUnload", "Unload"}));
}

TEST_P(FormSuite, AFormThatIsGoneIsUnloadedWithoutEvents) {
    auto& form = document();
    form.show(false);
    form.unload();
    takeEvents();
    EXPECT_TRUE(form.unload());
    EXPECT_EQ(takeEvents(), Events{});
}

TEST_P(FormSuite, TheCloseButtonUnloadsADocumentForm) {
    auto& form = document();
    form.show(false);
    takeEvents();
    harness_->pressClose(form);
    EXPECT_EQ(takeEvents(), (Events{"QueryUnload", "Unload"}));
}

TEST_P(FormSuite, TheCloseButtonUnloadsADialog) {
    auto& form = dialog();
    form.show(false);
    takeEvents();
    harness_->pressClose(form);
    EXPECT_EQ(takeEvents(), (Events{"QueryUnload", "Unload"}));
}

TEST_P(FormSuite, TheCloseButtonCanBeRefused) {
    auto& form = document();
    form.show(false);
    takeEvents();
    refuse_ = true;
    harness_->pressClose(form);
    EXPECT_EQ(takeEvents(), Events{"QueryUnload"});
}

TEST_P(FormSuite, AButtonMayUnloadItsForm) {
    auto& form = dialog();
    auto& button = form.addButton("CMD_ANNULLA", nullptr);
    button.setBounds({100, 100, 1500, 400});
    button.ButtonClick = [&form] { form.unload(); };
    form.setBounds({200, 200, 4000, 3000});
    form.show(false);
    takeEvents();
    harness_->click(form, "CMD_ANNULLA");
    EXPECT_EQ(takeEvents(), (Events{"QueryUnload", "Unload"}));
}

TEST_P(FormSuite, AModalShowReturnsWhenTheFormWasUnloaded) {
    auto& form = dialog();
    bool stood = false;
    harness_->whenModal("FRM_DIALOGO", [&] {
        stood = true;
        EXPECT_EQ(takeEvents(), (Events{"Load", "Activate"}));
        EXPECT_TRUE(form.unload());
        EXPECT_EQ(takeEvents(), (Events{"QueryUnload", "Unload"}));
    });
    form.show(true);
    EXPECT_TRUE(stood);
    EXPECT_EQ(takeEvents(), Events{});
}

TEST_P(FormSuite, AModalFormLeftOpenIsClosedByItsCloseButton) {
    auto& form = dialog();
    harness_->whenModal("FRM_DIALOGO", [&] { takeEvents(); });
    form.show(true);
    EXPECT_EQ(takeEvents(), (Events{"QueryUnload", "Unload"}));
}

TEST_P(FormSuite, ADocumentFormCanStandModally) {
    auto& form = document();
    bool stood = false;
    harness_->whenModal("FRM_DOCUMENTO", [&] { stood = true; });
    form.show(true);
    EXPECT_TRUE(stood);
    EXPECT_EQ(takeEvents(), (Events{"Load", "FormLoad", "Activate", "QueryUnload", "Unload"}));
}

TEST_P(FormSuite, ModalFormsNest) {
    auto& outer = dialog();
    auto inner = harness_->factory().newDialog("FRM_INTERNO");
    harness_->whenModal("FRM_DIALOGO", [&] {
        inner->show(true);
        events_.emplace_back("inner gone");
        outer.unload();
    });
    harness_->whenModal("FRM_INTERNO", [&] {
        events_.emplace_back("inner stands");
        inner->unload();
    });
    outer.show(true);
    EXPECT_EQ(takeEvents(), (Events{"Load", "Activate", "inner stands", "inner gone", "QueryUnload", "Unload"}));
    inner.reset();
}

TEST_P(FormSuite, ErrorsOfTheListenersComeThroughShow) {
    auto& form = dialog();
    form.Load = [] { throw contract::RuntimeError(1001, "Load"); };
    EXPECT_EQ(errorOf([&] { form.show(false); }), 1001);
    form.Load = nullptr;
    form.Activate = [] { throw contract::RuntimeError(1002, "Activate"); };
    EXPECT_EQ(errorOf([&] { form.show(false); }), 1002);
}

TEST_P(FormSuite, AFormUnloadedWhileItLoadsIsNotActivated) {
    auto& form = document();
    form.Load = [&] {
        events_.emplace_back("Load");
        form.unload();
    };
    form.show(false);
    EXPECT_EQ(takeEvents(), (Events{"Load", "QueryUnload", "Unload"}));
}

TEST_P(FormSuite, ControlsCanBeAskedAfterTheUnload) {
    auto& form = dialog();
    auto& field = form.addTextField("TXT", nullptr);
    auto& date = form.addDateField("TXT_DATA", nullptr);
    form.show(false);
    field.setText("x");
    form.unload();
    EXPECT_EQ(field.name(), "TXT");
    EXPECT_TRUE(field.enabled());
    EXPECT_FALSE(date.hasValidDate());
    field.setVisible(false);
    EXPECT_FALSE(field.visible());
}

// Geometry

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

// Names

TEST_P(FormSuite, NamesAreUniqueInTheForm) {
    auto& form = dialog();
    auto& frame = form.addFrame("NOME", nullptr);
    EXPECT_EQ(errorOf([&] { form.addButton("NOME", nullptr); }), 457);
    EXPECT_EQ(errorOf([&] { form.addLabel("NOME", &frame); }), 457);
    EXPECT_EQ(errorOf([&] { form.addResizeControl("NOME"); }), 457);
    EXPECT_EQ(errorOf([&] { form.addPopupMenu("NOME"); }), 457);
    form.addPopupMenu("MENU");
    EXPECT_EQ(errorOf([&] { form.addPopupMenu("MENU"); }), 457);
}

// Controls

TEST_P(FormSuite, MenuButtonsKeepTheirItemsInOrderAndTheirKeysUnique) {
    auto& menu = dialog().addMenuButton("MenuCerca", nullptr);
    menu.addItem("RagSoc", "Rag. Sociale");
    menu.addItem("Codice", "Codice");
    EXPECT_EQ(errorOf([&] { menu.addItem("RagSoc", "Altro"); }), 457);
    EXPECT_EQ(menu.itemKeys(), (std::vector<std::string>{"RagSoc", "Codice"}));
}

TEST_P(FormSuite, AComboBoxHasNoPositionUntilItIsGivenOne) {
    auto& combo = dialog().addComboBox("CMB", nullptr);
    std::vector<int> changes;
    combo.Change = [&] { changes.push_back(combo.position()); };
    combo.addItem("zero");
    combo.addItem("uno");
    EXPECT_EQ(combo.itemCount(), 2);
    EXPECT_EQ(combo.position(), -1);
    EXPECT_TRUE(changes.empty());
    combo.setPosition(1);
    combo.setPosition(1);
    EXPECT_EQ(changes, std::vector<int>{1});
    combo.setPosition(2);
    EXPECT_EQ(combo.position(), -1);
    combo.setPosition(0);
    combo.setPosition(-7);
    EXPECT_EQ(combo.position(), -1);
    EXPECT_EQ(changes, (std::vector<int>{1, -1, 0, -1}));
}

TEST_P(FormSuite, ADateFieldKeepsItsTextAndKnowsDays) {
    auto& date = dialog().addDateField("TXT", nullptr);
    EXPECT_FALSE(date.hasValidDate());
    date.setText("31/12/2024  ");
    EXPECT_EQ(date.text(), "31/12/2024  ");
    EXPECT_TRUE(date.hasValidDate());
    for (const char* none : {"30/02/2024", "31/04/2024", "29/02/2023", "ieri"}) {
        date.setText(none);
        EXPECT_FALSE(date.hasValidDate()) << none;
    }
    date.setText("29/02/2024");
    EXPECT_TRUE(date.hasValidDate());
    date.setText("");
    EXPECT_FALSE(date.hasValidDate());
}

TEST_P(FormSuite, ASplitterTakesItsStartAndBoundsItsShare) {
    auto& splitter = dialog().addSplitter("SPLITTER", nullptr);
    int moves = 0;
    splitter.Move = [&] { ++moves; };
    contract::Splitter::Settings settings;
    settings.firstPane = "A";
    settings.start = 90;
    splitter.setUp(settings);
    EXPECT_EQ(splitter.settings().firstPane, "A");
    EXPECT_DOUBLE_EQ(splitter.share(), 90.0);
    splitter.setShare(120.0);
    EXPECT_DOUBLE_EQ(splitter.share(), 100.0);
    splitter.setShare(-3.0);
    EXPECT_DOUBLE_EQ(splitter.share(), 0.0);
    EXPECT_EQ(moves, 0);
    splitter.setBounds({10, 20, 3000, 2000});
    splitter.setBar({10, 1000, 3000, 100});
    EXPECT_EQ(splitter.bounds(), (contract::Rect{10, 20, 3000, 2000}));
}

TEST_P(FormSuite, ACheckBoxAndALabelKeepWhatTheyAreGiven) {
    auto& form = dialog();
    auto& check = form.addCheckBox("CHK", nullptr);
    EXPECT_FALSE(check.checked());
    check.setChecked(true);
    check.setCaption("&Anagrafica");
    EXPECT_TRUE(check.checked());
    EXPECT_EQ(check.caption(), "&Anagrafica");
    auto& label = form.addLabel("KVT_LABEL1", nullptr);
    label.setCaption("Data fine legame");
    EXPECT_EQ(label.caption(), "Data fine legame");
    label.setToolTip("spiegazione");
    EXPECT_EQ(label.toolTip(), "spiegazione");
}

} // namespace contract_suites
