#pragma once

#include "contract/Control.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace platform::headless {

/// What the controls of one form share.
struct FormContext {
    /// The control that has the keyboard; nothing for none.
    const contract::Control* focused = nullptr;
};

/// What all controls without a screen share: plain state.
template <class Interface> class HeadlessControl : public Interface {
public:
    HeadlessControl(std::string_view name, FormContext& context) : name_(name), context_(context) {}

    const std::string& name() const override { return name_; }

    contract::Rect bounds() const override { return bounds_; }
    void setBounds(const contract::Rect& bounds) override {
        bounds_ = {bounds.left, bounds.top, std::max(bounds.width, 0), std::max(bounds.height, 0)};
    }

    bool visible() const override { return visible_; }
    void setVisible(bool visible) override { visible_ = visible; }
    bool enabled() const override { return enabled_; }
    void setEnabled(bool enabled) override { enabled_ = enabled; }

    std::string toolTip() const override { return toolTip_; }
    void setToolTip(std::string_view text) override { toolTip_ = text; }

    void setFocus() override { context_.focused = this; }

    /// Whether the user can get at it.
    bool usable() const { return visible_ && enabled_; }

private:
    std::string name_;
    FormContext& context_;
    contract::Rect bounds_;
    bool visible_ = true;
    bool enabled_ = true;
    std::string toolTip_;
};

/// The same with a caption.
template <class Interface> class HeadlessCaptioned : public HeadlessControl<Interface> {
public:
    using HeadlessControl<Interface>::HeadlessControl;

    std::string caption() const override { return caption_; }
    void setCaption(std::string_view caption) override { caption_ = caption; }

private:
    std::string caption_;
};

} // namespace platform::headless
