#include "platform/headless/HeadlessFields.h"

#include "contract/TypedDate.h"
#include "platform/headless/HostWorkflow.h"

#include <utility>

namespace platform::headless {

void HeadlessDateField::setText(std::string_view text) {
    mistyped_ = false;
    if (std::exchange(text_, text) != text)
        contract::fire(Change);
}

bool HeadlessDateField::type(std::string_view text) {
    if (!usable())
        return false;
    setFocus();
    const auto stood = contract::Date::parse(text_);
    setText(text);
    mistyped_ = text.find_first_not_of(" \t") != std::string_view::npos &&
                !contract::typedOver(contract::Date::parse(text_), stood);
    if (touched)
        touched();
    return !mistyped_;
}

void HeadlessComboBox::setPosition(int position) {
    if (position < 0 || position >= itemCount())
        position = -1;
    if (position == position_)
        return;
    position_ = position;
    contract::fire(Change);
}

bool HeadlessComboBox::pick(int position) {
    if (!usable() || position < 0 || position >= itemCount())
        return false;
    setFocus();
    setPosition(position);
    if (touched)
        touched();
    return true;
}

bool HeadlessCheckBox::toggle() {
    if (!usable())
        return false;
    setFocus();
    checked_ = !checked_;
    if (touched)
        touched();
    return true;
}

void HeadlessLookupField::setText(std::string_view text) {
    const bool changed = text != this->text();
    HeadlessTextFieldOf::setText(text);
    if (changed)
        contract::fire(Decode);
}

bool HeadlessLookupField::openList() {
    if (!usable())
        return false;
    setFocus();
    contract::fire(Lookup);
    return true;
}

void HeadlessWorkflowField::setObject(std::shared_ptr<contract::WorkflowState> object) {
    object_ = std::move(object);
}

void HeadlessWorkflowField::setValue(std::string_view guid) {
    guid_ = guid;
    chosen_ = false;
    if (auto* workflow = dynamic_cast<HostWorkflow*>(object_.get()))
        workflow->setGuid(guid);
}

void HeadlessWorkflowField::sendKeys(std::string_view keys) {
    if (keys == "^{F1}")
        listOpen_ = true;
}

bool HeadlessWorkflowField::choose(std::int64_t state) {
    auto* workflow = dynamic_cast<HostWorkflow*>(object_.get());
    if (!listOpen_ || !workflow || !workflow->select(state))
        return false;
    listOpen_ = false;
    chosen_ = true;
    leave();
    return true;
}

void HeadlessWorkflowField::leave() {
    listOpen_ = false;
    contract::fire(AfterItem);
    chosen_ = false;
}

} // namespace platform::headless
