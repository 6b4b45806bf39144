#include "platform/headless/HeadlessLayout.h"

#include "contract/RuntimeError.h"

#include <algorithm>
#include <string>

namespace platform::headless {

using contract::RuntimeError;

void HeadlessResizeControl::setUp() {
    from_ = extent();
    registrations_.clear();
    contract::fire(Setup);
}

void HeadlessResizeControl::registerControl(contract::Control& control, int mode) {
    std::erase_if(registrations_, [&](const Registration& other) { return other.control == &control; });
    registrations_.push_back({&control, mode, control.bounds()});
}

std::optional<int> HeadlessResizeControl::mode(std::string_view control) const {
    for (const auto& registration : registrations_)
        if (registration.control->name() == control)
            return registration.mode;
    return std::nullopt;
}

void HeadlessResizeControl::setZoom(int points) {
    if (!shared::isZoom(points))
        throw RuntimeError(RuntimeError::invalidCall, "Dimensione non ammessa: " + std::to_string(points) + " punti.");
    if (points == zoom_)
        return;
    zoom_ = points;
    contract::fire(AfterResize);
}

std::vector<std::pair<std::string, int>> HeadlessResizeControl::registrations() const {
    std::vector<std::pair<std::string, int>> all;
    for (const auto& registration : registrations_)
        all.emplace_back(registration.control->name(), registration.mode);
    return all;
}

void HeadlessResizeControl::formResized() {
    for (const auto& registration : registrations_)
        registration.control->setBounds(shared::resized(registration.bounds, registration.mode, from_, extent()));
    contract::fire(AfterResize);
}

} // namespace platform::headless
