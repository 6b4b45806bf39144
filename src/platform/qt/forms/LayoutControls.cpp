#include "platform/qt/forms/LayoutControls.h"

#include "contract/RuntimeError.h"
#include "platform/qt/forms/Guarded.h"
#include "platform/qt/forms/QtForm.h"

#include <algorithm>

namespace platform::qt {

ResizeFormControl::ResizeFormControl(std::string_view name, QWidget* parent, Measure measure)
    : QtControl(name, new QWidget(parent)), measure_(std::move(measure)), zoom_(Appearance::instance().zoom()) {
    setVisible(false);
    QObject::connect(&Appearance::instance(), &Appearance::changed, &context_, [this] {
        const int points = Appearance::instance().zoom();
        if (points != zoom_)
            guarded([this, points] { setZoom(points); });
    });
}

void ResizeFormControl::setUp() {
    last_ = measure_();
    setUp_ = true;
    contract::fire(Setup);
}

void ResizeFormControl::registerControl(contract::Control& control, int mode) {
    const Registered entry{&control, mode, control.bounds(), measure_(), control.bounds()};
    const auto found = std::find_if(controls_.begin(), controls_.end(),
                                    [&](const Registered& known) { return known.control == &control; });
    if (found == controls_.end())
        controls_.push_back(entry);
    else
        *found = entry;
}

std::optional<int> ResizeFormControl::mode(std::string_view control) const {
    for (const auto& known : controls_)
        if (known.control->name() == control)
            return known.mode;
    return std::nullopt;
}

void ResizeFormControl::setZoom(int points) {
    if (!shared::isZoom(points))
        throw contract::RuntimeError(contract::RuntimeError::invalidCall,
                                     "La dimensione del carattere deve essere 8, 10, 12 o 14 punti, non " +
                                         std::to_string(points) + ".");
    if (points == zoom_)
        return;
    zoom_ = points;
    if (setUp_)
        contract::fire(AfterResize);
}

contract::Twips ResizeFormControl::scaled(contract::Twips measure) const {
    return shared::zoomed(measure, zoom_);
}

void ResizeFormControl::areaResized() {
    if (!setUp_)
        return;
    const shared::Extent now = measure_();
    if (now == last_)
        return;
    for (auto& known : controls_) {
        const contract::Rect present = known.control->bounds();
        // Whoever moved it meanwhile has made a new start for it; otherwise the first one is kept, so that rounding
        // does not add up from size to size.
        if (present != known.given) {
            known.base = present;
            known.from = last_;
        }
        known.given = shared::resized(known.base, known.mode, known.from, now);
        known.control->setBounds(known.given);
    }
    last_ = now;
    contract::fire(AfterResize);
}

MdiContainerControl::MdiContainerControl(std::string_view name, QWidget* parent, QtForm& form)
    : QtControl(name, new QWidget(parent)), form_(form) {
    setVisible(false);
}

void MdiContainerControl::place(const contract::Rect& bounds) {
    form_.setBounds(bounds);
}

void MdiContainerControl::setWindowState(int state) {
    constexpr int invalidProperty = 380;
    if (state < 0 || state > 2)
        throw contract::RuntimeError(invalidProperty, "Lo stato della finestra deve essere 0 (normale), 1 (ridotta a "
                                                      "icona) o 2 (ingrandita), non " +
                                                          std::to_string(state) + ".");
    form_.setWindowState(state);
}

int MdiContainerControl::windowState() const {
    return form_.windowState();
}

} // namespace platform::qt
