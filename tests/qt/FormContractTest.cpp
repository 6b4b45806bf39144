#include "contract_suites/FormSuite.h"
#include "qt/FormFixture.h"

#include <deque>
#include <utility>

namespace contract_suites {

namespace {

using platform::qt::FormWindow;
using platform::qt::Session;

class QtFormHarness : public FormHarness {
public:
    QtFormHarness() {
        Session::instance().modalOpened = [this](FormWindow& form) {
            for (auto step = modal_.begin(); step != modal_.end(); ++step)
                if (step->first == form.formName().toStdString()) {
                    const auto steps = step->second;
                    modal_.erase(step);
                    steps();
                    return;
                }
        };
    }

    contract::ControlFactory& factory() override { return *stage_.factory; }
    void whenModal(const std::string& form, std::function<void()> steps) override {
        modal_.emplace_back(form, std::move(steps));
    }
    void pressClose(contract::Form& form) override { windowOf(form).window()->close(); }
    void click(contract::Form& form, const std::string& button) override {
        auto* control = windowOf(form).control(QString::fromStdString(button));
        QTest::mouseClick(control->widget(), Qt::LeftButton);
    }
    void resize(contract::Form& form, contract::Twips width, contract::Twips height) override {
        windowOf(form).resizeForm(width, height);
        QCoreApplication::processEvents();
    }

private:
    static FormWindow& windowOf(contract::Form& form) {
        for (auto* window : Session::instance().forms())
            if (window->form() == &form)
                return *window;
        throw std::runtime_error("the form is not open");
    }

    qt_tests::FormStage stage_;
    std::deque<std::pair<std::string, std::function<void()>>> modal_;
};

std::unique_ptr<FormHarness> makeQtForms() {
    return std::make_unique<QtFormHarness>();
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Qt, FormSuite, testing::Values(&makeQtForms), parameterName("Forms"));

} // namespace contract_suites
