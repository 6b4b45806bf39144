#pragma once

// Showing, activating and unloading a form.

#include "contract_suites/FormFixture.h"

#include <string>
#include <vector>

namespace contract_suites {

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

} // namespace contract_suites
