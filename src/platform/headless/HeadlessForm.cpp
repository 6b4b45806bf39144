#include "platform/headless/HeadlessForm.h"

#include <algorithm>

namespace platform::headless {

using contract::Control;
using contract::RuntimeError;

HeadlessForm::HeadlessForm(std::string_view name, bool dialog, HeadlessFactory& factory)
    : name_(name), dialog_(dialog), factory_(factory) {
    factory_.made(*this);
}

HeadlessForm::~HeadlessForm() {
    factory_.destroyed(*this);
}

void HeadlessForm::setBounds(const contract::Rect& bounds) {
    const bool resized = bounds.width != bounds_.width || bounds.height != bounds_.height;
    bounds_ = {bounds.left, bounds.top, std::max(bounds.width, 0), std::max(bounds.height, 0)};
    if (resized && resize_ && open_)
        resize_->formResized();
}

void HeadlessForm::resize(contract::Twips width, contract::Twips height) {
    setBounds({bounds_.left, bounds_.top, width, height});
}

void HeadlessForm::show(bool modal) {
    if (gone_)
        return;
    modal_ = modal;
    if (!shown_) {
        shown_ = true;
        contract::fire(Load);
        if (container_ && !gone_)
            contract::fire(container_->FormLoad);
    }
    if (gone_)
        return;
    open_ = true;
    contract::fire(Activate);
    if (!modal || gone_)
        return;
    if (const auto steps = factory_.takeModal(name_))
        steps(*this);
    if (!gone_ && !unload())
        throw RuntimeError(400, "La finestra " + name_ + " non si lascia chiudere.");
}

bool HeadlessForm::unload() {
    if (gone_)
        return true;
    bool cancel = false;
    contract::fire(QueryUnload, cancel);
    if (cancel)
        return false;
    contract::fire(Unload);
    open_ = false;
    gone_ = true;
    return true;
}

void HeadlessForm::setDefaultButtons(contract::Button* accept, contract::Button* cancel) {
    accept_ = dynamic_cast<HeadlessButton*>(accept);
    cancel_ = dynamic_cast<HeadlessButton*>(cancel);
}

bool HeadlessForm::pressEnter() {
    return accept_ && accept_->click();
}

bool HeadlessForm::pressEscape() {
    return cancel_ && cancel_->click();
}

void HeadlessForm::lockUpdate(bool locked) {
    if (locked) {
        ++locks_;
        ++lockDepth_;
    } else if (lockDepth_ > 0) {
        --lockDepth_;
    }
}

// Controls

void HeadlessForm::refuseTwice(std::string_view name) const {
    if (findControl(name) || findMenu(name))
        throw RuntimeError(457, "Il controllo \"" + std::string(name) + "\" esiste già.");
}

contract::Frame& HeadlessForm::addFrame(std::string_view name, Control* parent) {
    return add<HeadlessFrame>(name, parent);
}

contract::GroupBox& HeadlessForm::addGroupBox(std::string_view name, Control* parent) {
    return add<HeadlessGroupBox>(name, parent);
}

contract::Backdrop& HeadlessForm::addBackdrop(std::string_view name, Control* parent) {
    return add<HeadlessBackdrop>(name, parent);
}

contract::Label& HeadlessForm::addLabel(std::string_view name, Control* parent) {
    return add<HeadlessLabel>(name, parent);
}

contract::Button& HeadlessForm::addButton(std::string_view name, Control* parent) {
    return add<HeadlessButton>(name, parent);
}

contract::MenuButton& HeadlessForm::addMenuButton(std::string_view name, Control* parent) {
    return add<HeadlessMenuButton>(name, parent);
}

contract::TextField& HeadlessForm::addTextField(std::string_view name, Control* parent) {
    return add<HeadlessTextField>(name, parent);
}

contract::DateField& HeadlessForm::addDateField(std::string_view name, Control* parent) {
    return add<HeadlessDateField>(name, parent);
}

contract::ComboBox& HeadlessForm::addComboBox(std::string_view name, Control* parent) {
    return add<HeadlessComboBox>(name, parent);
}

contract::CheckBox& HeadlessForm::addCheckBox(std::string_view name, Control* parent) {
    return add<HeadlessCheckBox>(name, parent);
}

contract::LookupField& HeadlessForm::addLookupField(std::string_view name, Control* parent) {
    return add<HeadlessLookupField>(name, parent);
}

contract::TypeList& HeadlessForm::addTypeList(std::string_view name, Control* parent) {
    return add<HeadlessTypeList>(name, parent);
}

contract::TreeList& HeadlessForm::addTreeList(std::string_view name, Control* parent) {
    return add<HeadlessTree>(name, parent);
}

contract::DetailGrid& HeadlessForm::addDetailGrid(std::string_view name, Control* parent) {
    return add<HeadlessDetailGrid>(name, parent);
}

contract::Splitter& HeadlessForm::addSplitter(std::string_view name, Control* parent) {
    return add<HeadlessSplitter>(name, parent);
}

contract::ResizeControl& HeadlessForm::addResizeControl(std::string_view name) {
    return useResizeControl(add<HeadlessResizeControl>(name, nullptr, *this, factory_.zoom()));
}

HeadlessResizeControl& HeadlessForm::useResizeControl(HeadlessResizeControl& control) {
    resize_ = &control;
    return control;
}

contract::MdiContainer& HeadlessForm::addMdiContainer(std::string_view name) {
    return useMdiContainer(add<HeadlessMdiContainer>(name, nullptr, *this));
}

HeadlessMdiContainer& HeadlessForm::useMdiContainer(HeadlessMdiContainer& control) {
    container_ = &control;
    return control;
}

contract::DataFrame& HeadlessForm::addDataFrame(std::string_view name, Control* parent) {
    return add<HeadlessDataFrame>(name, parent, factory_.sharedJournal());
}

contract::GridNavigator& HeadlessForm::addGridNavigator(std::string_view name, Control* parent) {
    return add<HeadlessGridNavigator>(name, parent);
}

contract::WorkflowStateField& HeadlessForm::addWorkflowStateField(std::string_view name, Control* parent) {
    return add<HeadlessWorkflowField>(name, parent);
}

contract::PopupMenu& HeadlessForm::addPopupMenu(std::string_view name) {
    return addMenu(std::make_unique<HeadlessPopupMenu>(name));
}

HeadlessPopupMenu& HeadlessForm::addMenu(std::unique_ptr<HeadlessPopupMenu> menu) {
    refuseTwice(menu->name());
    return *menus_.emplace_back(std::move(menu));
}

Control* HeadlessForm::findControl(std::string_view name) const {
    for (const auto& entry : controls_)
        if (entry.control->name() == name)
            return entry.control.get();
    return nullptr;
}

HeadlessPopupMenu* HeadlessForm::findMenu(std::string_view name) const {
    for (const auto& menu : menus_)
        if (menu->name() == name)
            return menu.get();
    return nullptr;
}

void HeadlessForm::refuse(std::string_view name) const {
    if (findControl(name) || findMenu(name))
        throw RuntimeError(RuntimeError::typeMismatch,
                           "Il controllo \"" + std::string(name) + "\" di " + name_ + " è di un altro tipo.");
    throw RuntimeError(RuntimeError::itemNotFound, name_ + " non ha un controllo \"" + std::string(name) + "\".");
}

std::vector<std::string> HeadlessForm::controlNames() const {
    std::vector<std::string> names;
    for (const auto& entry : controls_)
        names.push_back(entry.control->name());
    return names;
}

const Control* HeadlessForm::parentOf(std::string_view name) const {
    for (const auto& entry : controls_)
        if (entry.control->name() == name)
            return entry.parent;
    refuse(name);
}

// Factory

std::unique_ptr<contract::Form> HeadlessFactory::newDocumentForm(std::string_view name) {
    return std::make_unique<HeadlessForm>(name, false, *this);
}

std::unique_ptr<contract::Form> HeadlessFactory::newDialog(std::string_view name) {
    return std::make_unique<HeadlessForm>(name, true, *this);
}

void HeadlessFactory::whenModal(std::string_view form, std::function<void(HeadlessForm&)> steps) {
    modal_.emplace_back(form, std::move(steps));
}

std::function<void(HeadlessForm&)> HeadlessFactory::takeModal(const std::string& form) {
    const auto queued =
        std::find_if(modal_.begin(), modal_.end(), [&](const auto& entry) { return entry.first == form; });
    if (queued == modal_.end())
        return {};
    auto steps = std::move(queued->second);
    modal_.erase(queued);
    return steps;
}

HeadlessForm* HeadlessFactory::form(std::string_view name) const {
    const auto found =
        std::find_if(forms_.rbegin(), forms_.rend(), [&](const auto* form) { return form->name() == name; });
    return found == forms_.rend() ? nullptr : *found;
}

} // namespace platform::headless
