#pragma once

#include "contract/Fields.h"
#include "platform/headless/HeadlessControls.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace platform::headless {

class HeadlessDateField : public HeadlessControl<contract::DateField> {
public:
    using HeadlessControl::HeadlessControl;

    std::string text() const override { return text_; }
    void setText(std::string_view text) override;
    bool hasValidDate() const override { return !mistyped_ && contract::Date::parse(text_).has_value(); }
    /// Typed, and neither empty nor a date.
    bool mistyped() const { return mistyped_; }

    /// Told after each change by the user; a data-entry frame's.
    std::function<void()> touched;

    // User

    /// Replaces the text. False for what is neither empty nor a date, which stays all the same, and for a field that
    /// can not be used.
    bool type(std::string_view text);

private:
    std::string text_;
    bool mistyped_ = false;
};

class HeadlessComboBox : public HeadlessControl<contract::ComboBox> {
public:
    using HeadlessControl::HeadlessControl;

    void addItem(std::string_view text) override { items_.emplace_back(text); }
    int itemCount() const override { return static_cast<int>(items_.size()); }
    int position() const override { return position_; }
    void setPosition(int position) override;

    const std::vector<std::string>& items() const { return items_; }

    /// Told after each change by the user; a data-entry frame's.
    std::function<void()> touched;

    // User

    /// Picks an item by its position.
    bool pick(int position);

private:
    std::vector<std::string> items_;
    int position_ = -1;
};

class HeadlessCheckBox : public HeadlessCaptioned<contract::CheckBox> {
public:
    using HeadlessCaptioned::HeadlessCaptioned;

    bool checked() const override { return checked_; }
    void setChecked(bool checked) override { checked_ = checked; }

    /// Told after each change by the user; a data-entry frame's.
    std::function<void()> touched;

    // User

    bool toggle();

private:
    bool checked_ = false;
};

class HeadlessLookupField : public HeadlessTextFieldOf<contract::LookupField> {
public:
    using HeadlessTextFieldOf::HeadlessTextFieldOf;

    void setText(std::string_view text) override;

    // User

    /// Presses the field's button, or F1 in it.
    bool openList();
};

class HeadlessWorkflowField : public HeadlessCaptioned<contract::WorkflowStateField> {
public:
    using HeadlessCaptioned::HeadlessCaptioned;

    void setObject(std::shared_ptr<contract::WorkflowState> object) override;
    std::shared_ptr<contract::WorkflowState> object() const override { return object_; }

    std::string value() const override { return guid_; }
    void setValue(std::string_view guid) override;
    void sendKeys(std::string_view keys) override;
    bool stateChosen() const override { return chosen_; }

    bool listOpen() const { return listOpen_; }

    // User

    /// Chooses a state in the open list, which closes.
    bool choose(std::int64_t state);
    /// Leaves the field, or its list without a choice.
    void leave();

private:
    std::shared_ptr<contract::WorkflowState> object_;
    std::string guid_;
    bool listOpen_ = false;
    bool chosen_ = false;
};

} // namespace platform::headless
