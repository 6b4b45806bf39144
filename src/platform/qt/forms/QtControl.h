#pragma once

#include "contract/Control.h"
#include "platform/qt/forms/Scriptable.h"
#include "platform/qt/look/Appearance.h"

#include <QPointer>
#include <QWidget>

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

namespace platform::qt {

/// What all controls over a widget share. The widget belongs to its parent widget; the control to its form.
template <class Interface> class QtControl : public Interface, public Scriptable {
public:
    QtControl(std::string_view name, QWidget* widget) : name_(name), widget_(widget) {
        widget->setObjectName(QString::fromStdString(name_));
        // Until a caption or a tool tip says more.
        widget->setAccessibleName(QString::fromStdString(name_));
    }

    const std::string& name() const override { return name_; }

    contract::Rect bounds() const override { return bounds_; }
    void setBounds(const contract::Rect& bounds) override {
        bounds_ = {bounds.left, bounds.top, std::max(bounds.width, 0), std::max(bounds.height, 0)};
        // Edges are rounded, not sizes, so that neighbours that meet in twips meet in pixels.
        const int left = Appearance::pixels(bounds_.left);
        const int top = Appearance::pixels(bounds_.top);
        // None when its window is gone.
        if (QWidget* placed = widget_.data())
            placed->setGeometry(left, top, Appearance::pixels(bounds_.left + bounds_.width) - left,
                                Appearance::pixels(bounds_.top + bounds_.height) - top);
    }

    bool visible() const override { return visible_; }
    void setVisible(bool visible) override {
        visible_ = visible;
        if (QWidget* shown = widget_.data())
            shown->setVisible(visible);
    }
    bool enabled() const override { return enabled_; }
    void setEnabled(bool enabled) override {
        enabled_ = enabled;
        if (QWidget* used = widget_.data())
            used->setEnabled(enabled);
    }

    std::string toolTip() const override { return toolTip_; }
    void setToolTip(std::string_view text) override {
        const QString before = QString::fromStdString(toolTip_);
        toolTip_ = text;
        QWidget* explained = widget_.data();
        if (explained == nullptr)
            return;
        const QString now = QString::fromStdString(toolTip_);
        explained->setToolTip(now);
        explained->setAccessibleDescription(now);
        const QString spoken = explained->accessibleName();
        if (!now.isEmpty() && (spoken == explained->objectName() || (!before.isEmpty() && spoken == before)))
            explained->setAccessibleName(now);
    }

    void setFocus() override {
        if (QWidget* wanted = widget_.data())
            wanted->setFocus(Qt::OtherFocusReason);
    }

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
