#pragma once

#include "contract/Controls.h"
#include "platform/qt/forms/QtControl.h"
#include "platform/shared/ResizeScaler.h"

#include <QJsonObject>

#include <functional>
#include <vector>

namespace platform::qt {

class QtForm;

/// Scales the registered controls when the form's area changes. Not visible.
class ResizeFormControl : public QtControl<contract::ResizeControl> {
public:
    /// The size of the form's area in twips, whenever it is asked.
    using Measure = std::function<shared::Extent()>;

    ResizeFormControl(std::string_view name, QWidget* parent, Measure measure);

    void setUp() override;
    void registerControl(contract::Control& control, int mode) override;
    std::optional<int> mode(std::string_view control) const override;
    int zoom() const override { return zoom_; }
    /// Throws RuntimeError 5 for a size that is no zoom.
    void setZoom(int points) override;
    contract::Twips scaled(contract::Twips measure) const override;

    QJsonObject read() const override { return {}; }

    /// The area has another size: scales, then raises AfterResize. Nothing before the set-up.
    void areaResized();

private:
    struct Registered {
        contract::Control* control;
        int mode;
        contract::Rect base; ///< where it stood in an area of the size from
        shared::Extent from;
        contract::Rect given; ///< where it was put last
    };

    Measure measure_;
    std::vector<Registered> controls_;
    shared::Extent last_;
    bool setUp_ = false;
    int zoom_;
    QObject context_;
};

/// The host's container as the form's code sees it. Not visible: the form's own window is what it places.
class MdiContainerControl : public QtControl<contract::MdiContainer> {
public:
    MdiContainerControl(std::string_view name, QWidget* parent, QtForm& form);

    void place(const contract::Rect& bounds) override;
    void setWindowState(int state) override;
    int windowState() const override;

    QJsonObject read() const override { return {}; }

private:
    QtForm& form_;
};

} // namespace platform::qt
