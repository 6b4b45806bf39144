// How a form makes its controls.

#include "platform/qt/forms/QtForm.h"

#include "contract/RuntimeError.h"
#include "platform/qt/fields/Buttons.h"
#include "platform/qt/fields/DataFrameControl.h"
#include "platform/qt/fields/DetailGridControl.h"
#include "platform/qt/fields/FieldControls.h"
#include "platform/qt/fields/GridNavigatorControl.h"
#include "platform/qt/fields/WorkflowStateFieldControl.h"
#include "platform/qt/forms/LayoutControls.h"
#include "platform/qt/forms/SplitterControl.h"
#include "platform/qt/forms/Surfaces.h"
#include "platform/qt/tree/TreeListControl.h"
#include "platform/qt/tree/TypeListControl.h"

#include <algorithm>

namespace platform::qt {

namespace {

constexpr int duplicateName = 457;

/// Kinds of controls that a label in front of them names.
template <class C>
constexpr bool takesLabel =
    std::is_base_of_v<contract::TextField, C> || std::is_base_of_v<contract::DateField, C> ||
    std::is_base_of_v<contract::ComboBox, C> || std::is_base_of_v<contract::WorkflowStateField, C>;

} // namespace

void QtForm::requireNewName(std::string_view name) const {
    const auto sameName = [name](const auto& menu) { return menu->name() == name; };
    if (find(text(name)) != nullptr || std::any_of(popups_.begin(), popups_.end(), sameName))
        throw contract::RuntimeError(duplicateName, "La maschera " + name_ + " ha già un controllo di nome \"" +
                                                        std::string(name) + "\".");
}

QWidget* QtForm::parentWidget(contract::Control* parent) const {
    const Entry* entry = parent == nullptr ? nullptr : find(parent);
    return entry == nullptr ? static_cast<QWidget*>(area_) : entry->script->widget();
}

template <class C> C& QtForm::add(std::string_view name, contract::Control* parent) {
    requireNewName(name);
    auto made = std::make_unique<C>(name, parentWidget(parent));
    C& control = *made;
    entries_.push_back({text(name), std::move(made), &control, parent});
    // A widget that comes after its window was shown is not shown with it.
    if (control.visible())
        control.widget()->show();
    if constexpr (std::is_same_v<C, LabelControl>) {
        unusedLabel_ = &control;
        unusedLabelParent_ = parent;
    } else {
        if constexpr (takesLabel<C>) {
            if (unusedLabel_ != nullptr && unusedLabelParent_ == parent)
                unusedLabel_->setField(control.widget());
        }
        unusedLabel_ = nullptr;
    }
    return control;
}

void QtForm::addOwn(std::unique_ptr<contract::Control> control, Scriptable& script) {
    requireNewName(control->name());
    const QString name = text(control->name());
    entries_.push_back({name, std::move(control), &script, nullptr});
}

contract::Frame& QtForm::addFrame(std::string_view name, contract::Control* parent) {
    return add<FrameControl>(name, parent);
}

contract::GroupBox& QtForm::addGroupBox(std::string_view name, contract::Control* parent) {
    return add<GroupBoxControl>(name, parent);
}

contract::Backdrop& QtForm::addBackdrop(std::string_view name, contract::Control* parent) {
    return add<BackdropControl>(name, parent);
}

contract::Label& QtForm::addLabel(std::string_view name, contract::Control* parent) {
    return add<LabelControl>(name, parent);
}

contract::Button& QtForm::addButton(std::string_view name, contract::Control* parent) {
    return add<ButtonControl>(name, parent);
}

contract::MenuButton& QtForm::addMenuButton(std::string_view name, contract::Control* parent) {
    return add<MenuButtonControl>(name, parent);
}

contract::TextField& QtForm::addTextField(std::string_view name, contract::Control* parent) {
    return add<TextFieldControl>(name, parent);
}

contract::DateField& QtForm::addDateField(std::string_view name, contract::Control* parent) {
    return add<DateFieldControl>(name, parent);
}

contract::ComboBox& QtForm::addComboBox(std::string_view name, contract::Control* parent) {
    return add<ComboBoxControl>(name, parent);
}

contract::CheckBox& QtForm::addCheckBox(std::string_view name, contract::Control* parent) {
    return add<CheckBoxControl>(name, parent);
}

contract::LookupField& QtForm::addLookupField(std::string_view name, contract::Control* parent) {
    return add<LookupFieldControl>(name, parent);
}

contract::TypeList& QtForm::addTypeList(std::string_view name, contract::Control* parent) {
    return add<TypeListControl>(name, parent);
}

contract::TreeList& QtForm::addTreeList(std::string_view name, contract::Control* parent) {
    return add<TreeListControl>(name, parent);
}

contract::DetailGrid& QtForm::addDetailGrid(std::string_view name, contract::Control* parent) {
    return add<DetailGridControl>(name, parent);
}

contract::Splitter& QtForm::addSplitter(std::string_view name, contract::Control* parent) {
    return add<SplitterControl>(name, parent);
}

contract::ResizeControl& QtForm::addResizeControl(std::string_view name) {
    requireNewName(name);
    auto made = std::make_unique<ResizeFormControl>(name, area_, [this] {
        const Extent size = clientSize();
        return shared::Extent{size.width, size.height};
    });
    resize_ = made.get();
    entries_.push_back({text(name), std::move(made), resize_, nullptr});
    return *resize_;
}

contract::MdiContainer& QtForm::addMdiContainer(std::string_view name) {
    requireNewName(name);
    auto made = std::make_unique<MdiContainerControl>(name, area_, *this);
    container_ = made.get();
    entries_.push_back({text(name), std::move(made), container_, nullptr});
    return *container_;
}

contract::DataFrame& QtForm::addDataFrame(std::string_view name, contract::Control* parent) {
    auto& frame = add<DataFrameControl>(name, parent);
    dataFrameAdded(frame);
    return frame;
}

contract::GridNavigator& QtForm::addGridNavigator(std::string_view name, contract::Control* parent) {
    return add<GridNavigatorControl>(name, parent);
}

contract::WorkflowStateField& QtForm::addWorkflowStateField(std::string_view name, contract::Control* parent) {
    return add<WorkflowStateFieldControl>(name, parent);
}

contract::PopupMenu& QtForm::addPopupMenu(std::string_view name) {
    requireNewName(name);
    popups_.push_back(std::make_unique<PopupMenuControl>(name, window_));
    return *popups_.back();
}

} // namespace platform::qt
