#pragma once

// What the suites over forms share: a user's hands on a form, and a form that writes its events down.

#include "contract/Form.h"
#include "contract/RuntimeError.h"

#include <gtest/gtest.h>

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

} // namespace contract_suites
