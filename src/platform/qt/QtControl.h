#pragma once

#include "platform/qt/Appearance.h"
#include "platform/qt/Scriptable.h"
#include "plugin/contract/Control.h"

#include <QPointer>
#include <QWidget>

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

namespace platform::qt {

/// What all controls over a widget share. The widget belongs to its parent widget; the control to its form.
template <class Interface>
class QtControl : public Interface, public Scriptable {
public:
    QtControl(std::string_view name, QWidget* widget) : name_(name), widget_(widget) {
        widget->setObjectName(QString::fromStdString(name_));
    }

    const std::string& name() const override { return name_; }

    contract::Rect bounds() const override { return bounds_; }
    void setBounds(const contract::Rect& bounds) override {
        bounds_ = {bounds.left, bounds.top, std::max(bounds.width, 0), std::max(bounds.height, 0)};
        // Edges are rounded, not sizes, so that neighbours that meet in twips meet in pixels.
        const int left = Appearance::pixels(bounds_.left);
        const int top = Appearance::pixels(bounds_.top);
        widget_->setGeometry(left, top, Appearance::pixels(bounds_.left + bounds_.width) - left,
                             Appearance::pixels(bounds_.top + bounds_.height) - top);
    }

    bool visible() const override { return visible_; }
    void setVisible(bool visible) override {
        visible_ = visible;
        widget_->setVisible(visible);
    }
    bool enabled() const override { return enabled_; }
    void setEnabled(bool enabled) override {
        enabled_ = enabled;
        widget_->setEnabled(enabled);
    }

    std::string toolTip() const override { return toolTip_; }
    void setToolTip(std::string_view text) override {
        toolTip_ = text;
        widget_->setToolTip(QString::fromStdString(toolTip_));
    }

    void setFocus() override { widget_->setFocus(Qt::OtherFocusReason); }

    QWidget* widget() override { return widget_; }

protected:
    std::string name_;
    QPointer<QWidget> widget_;
    contract::Rect bounds_;
    bool visible_ = true;
    bool enabled_ = true;
    std::string toolTip_;
};

} // namespace platform::qt
