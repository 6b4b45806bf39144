#pragma once

#include "contract/Form.h"
#include "platform/headless/HeadlessControl.h"
#include "platform/shared/ResizeScaler.h"

#include <functional>
#include <optional>
#include <string_view>
#include <vector>

namespace platform::headless {

class HeadlessResizeControl : public HeadlessControl<contract::ResizeControl> {
public:
    HeadlessResizeControl(std::string_view name, FormContext& context, contract::Form& form, int zoom)
        : HeadlessControl(name, context), form_(form), zoom_(zoom) {}

    void setUp() override;
    void registerControl(contract::Control& control, int mode) override;
    std::optional<int> mode(std::string_view control) const override;
    int zoom() const override { return zoom_; }
    /// Throws RuntimeError 5 for a size that is no zoom.
    void setZoom(int points) override;
    contract::Twips scaled(contract::Twips measure) const override { return shared::zoomed(measure, zoom_); }

    /// The registered controls' names with their modes, in the order of registration.
    std::vector<std::pair<std::string, int>> registrations() const;

    /// The form has another size: the registered controls follow, then AfterResize.
    void formResized();

private:
    struct Registration {
        contract::Control* control;
        int mode;
        contract::Rect bounds;
    };

    shared::Extent extent() const { return {form_.clientWidth(), form_.clientHeight()}; }

    contract::Form& form_;
    int zoom_;
    shared::Extent from_;
    std::vector<Registration> registrations_;
};

class HeadlessMdiContainer : public HeadlessControl<contract::MdiContainer> {
public:
    HeadlessMdiContainer(std::string_view name, FormContext& context, contract::Form& form)
        : HeadlessControl(name, context), form_(form) {}

    void place(const contract::Rect& bounds) override { form_.setBounds(bounds); }
    void setWindowState(int state) override { state_ = state; }
    int windowState() const override { return state_; }

private:
    contract::Form& form_;
    int state_ = 0;
};

} // namespace platform::headless
