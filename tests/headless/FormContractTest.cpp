#include "contract_suites/FormSuite.h"
#include "platform/headless/HeadlessForm.h"

using contract_suites::FormHarness;
using contract_suites::FormSuite;
using platform::headless::HeadlessFactory;
using platform::headless::HeadlessForm;

namespace {

class HeadlessFormHarness : public FormHarness {
public:
    contract::ControlFactory& factory() override { return factory_; }
    void whenModal(const std::string& form, std::function<void()> steps) override {
        factory_.whenModal(form, [steps = std::move(steps)](HeadlessForm&) { steps(); });
    }
    void pressClose(contract::Form& form) override { dynamic_cast<HeadlessForm&>(form).pressClose(); }
    void click(contract::Form& form, const std::string& button) override {
        dynamic_cast<HeadlessForm&>(form).control<platform::headless::HeadlessButton>(button).click();
    }
    void resize(contract::Form& form, contract::Twips width, contract::Twips height) override {
        dynamic_cast<HeadlessForm&>(form).resize(width, height);
    }

private:
    HeadlessFactory factory_;
};

std::unique_ptr<FormHarness> makeHeadlessForms() {
    return std::make_unique<HeadlessFormHarness>();
}

} // namespace

namespace contract_suites {

INSTANTIATE_TEST_SUITE_P(Headless, FormSuite, testing::Values(&makeHeadlessForms), parameterName("Forms"));

} // namespace contract_suites
