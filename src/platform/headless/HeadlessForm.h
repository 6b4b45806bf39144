#pragma once

#include "contract/Form.h"
#include "contract/RuntimeError.h"
#include "platform/headless/HeadlessControls.h"
#include "platform/headless/HeadlessDataFrame.h"
#include "platform/headless/HeadlessFields.h"
#include "platform/headless/HeadlessLayout.h"
#include "platform/headless/HeadlessTree.h"
#include "platform/headless/HeadlessTypeList.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace platform::headless {

class HeadlessFactory;

/// A form without a screen. Its client area is as large as the form.
class HeadlessForm : public contract::Form {
public:
    HeadlessForm(std::string_view name, bool dialog, HeadlessFactory& factory);
    ~HeadlessForm() override;

    const std::string& name() const override { return name_; }
    std::string caption() const override { return caption_; }
    void setCaption(std::string_view caption) override { caption_ = caption; }
    contract::Rect bounds() const override { return bounds_; }
    /// The user's resizing too: another size makes the registered controls follow.
    void setBounds(const contract::Rect& bounds) override;
    contract::Twips clientWidth() const override { return bounds_.width; }
    contract::Twips clientHeight() const override { return bounds_.height; }

    /// A modal form runs what HeadlessFactory::whenModal() queued for its name, and is closed by its close button if it
    /// is still open then. Throws RuntimeError 400 when it refuses even that, since nobody could ever close it.
    void show(bool modal) override;
    bool unload() override;
    void setDefaultButtons(contract::Button* accept, contract::Button* cancel) override;
    void lockUpdate(bool locked) override;
    void processEvents() override { ++eventRounds_; }

    contract::Frame& addFrame(std::string_view name, contract::Control* parent) override;
    contract::GroupBox& addGroupBox(std::string_view name, contract::Control* parent) override;
    contract::Backdrop& addBackdrop(std::string_view name, contract::Control* parent) override;
    contract::Label& addLabel(std::string_view name, contract::Control* parent) override;
    contract::Button& addButton(std::string_view name, contract::Control* parent) override;
    contract::MenuButton& addMenuButton(std::string_view name, contract::Control* parent) override;
    contract::TextField& addTextField(std::string_view name, contract::Control* parent) override;
    contract::DateField& addDateField(std::string_view name, contract::Control* parent) override;
    contract::ComboBox& addComboBox(std::string_view name, contract::Control* parent) override;
    contract::CheckBox& addCheckBox(std::string_view name, contract::Control* parent) override;
    contract::LookupField& addLookupField(std::string_view name, contract::Control* parent) override;
    contract::TypeList& addTypeList(std::string_view name, contract::Control* parent) override;
    contract::TreeList& addTreeList(std::string_view name, contract::Control* parent) override;
    contract::DetailGrid& addDetailGrid(std::string_view name, contract::Control* parent) override;
    contract::Splitter& addSplitter(std::string_view name, contract::Control* parent) override;
    contract::ResizeControl& addResizeControl(std::string_view name) override;
    contract::MdiContainer& addMdiContainer(std::string_view name) override;
    contract::DataFrame& addDataFrame(std::string_view name, contract::Control* parent) override;
    contract::GridNavigator& addGridNavigator(std::string_view name, contract::Control* parent) override;
    contract::WorkflowStateField& addWorkflowStateField(std::string_view name, contract::Control* parent) override;
    contract::PopupMenu& addPopupMenu(std::string_view name) override;

    /// The control or popup menu of that name and kind. Throws RuntimeError 3265 when there is none, 13 for another
    /// kind.
    template <class Kind> Kind& control(std::string_view name) const {
        if (auto* found = dynamic_cast<Kind*>(findControl(name)))
            return *found;
        if (auto* menu = findMenu(name))
            if constexpr (std::is_same_v<Kind, HeadlessPopupMenu>)
                return *menu;
        refuse(name);
    }
    std::vector<std::string> controlNames() const;
    /// The control in which a control stands; nothing for the form itself.
    const contract::Control* parentOf(std::string_view name) const;
    const contract::Control* focused() const { return context_.focused; }

    bool isDialog() const { return dialog_; }
    bool isOpen() const { return open_; }
    bool isGone() const { return gone_; }
    bool isModal() const { return modal_; }
    /// How often redrawing was stopped, and how deep it is now.
    int locks() const { return locks_; }
    int lockDepth() const { return lockDepth_; }
    int eventRounds() const { return eventRounds_; }

    // User

    /// Brings the form to the front again.
    void activate() { contract::fire(Activate); }
    /// Presses the close button; true when the window is gone.
    bool pressClose() { return unload(); }
    void resize(contract::Twips width, contract::Twips height);
    /// Enter and Esc; false when there is no such button or it cannot be used.
    bool pressEnter();
    bool pressEscape();

protected:
    /// Makes a control of any kind and keeps it; a form of other controls adds them with it.
    template <class Kind, class... More>
    Kind& add(std::string_view name, const contract::Control* parent, More&&... more) {
        refuseTwice(name);
        auto control = std::make_unique<Kind>(name, context_, std::forward<More>(more)...);
        auto& added = *control;
        controls_.push_back({std::move(control), parent});
        return added;
    }
    HeadlessPopupMenu& addMenu(std::unique_ptr<HeadlessPopupMenu> menu);
    HeadlessResizeControl& useResizeControl(HeadlessResizeControl& control);
    HeadlessMdiContainer& useMdiContainer(HeadlessMdiContainer& control);
    HeadlessFactory& factory() const { return factory_; }

private:
    struct Entry {
        std::unique_ptr<contract::Control> control;
        const contract::Control* parent;
    };

    void refuseTwice(std::string_view name) const;
    contract::Control* findControl(std::string_view name) const;
    HeadlessPopupMenu* findMenu(std::string_view name) const;
    [[noreturn]] void refuse(std::string_view name) const;

    std::string name_;
    bool dialog_;
    HeadlessFactory& factory_;
    FormContext context_;
    std::string caption_;
    contract::Rect bounds_;
    std::vector<Entry> controls_;
    std::vector<std::unique_ptr<HeadlessPopupMenu>> menus_;
    HeadlessResizeControl* resize_ = nullptr;
    HeadlessMdiContainer* container_ = nullptr;
    HeadlessButton* accept_ = nullptr;
    HeadlessButton* cancel_ = nullptr;
    bool shown_ = false;
    bool open_ = false;
    bool gone_ = false;
    bool modal_ = false;
    int locks_ = 0;
    int lockDepth_ = 0;
    int eventRounds_ = 0;
};

/// Makes forms and controls without a screen, and knows the forms that exist.
class HeadlessFactory : public contract::ControlFactory {
public:
    explicit HeadlessFactory(std::shared_ptr<HostJournal> journal = std::make_shared<HostJournal>())
        : journal_(std::move(journal)) {}

    std::unique_ptr<contract::Form> newDocumentForm(std::string_view name) override;
    std::unique_ptr<contract::Form> newDialog(std::string_view name) override;

    /// What is done with the modal form of that name when it opens next; a second one serves the opening after that.
    void whenModal(std::string_view form, std::function<void(HeadlessForm&)> steps);
    /// Size of type of the forms made from now on, in points.
    void setZoom(int points) { zoom_ = points; }
    int zoom() const { return zoom_; }
    HostJournal& journal() { return *journal_; }
    const std::shared_ptr<HostJournal>& sharedJournal() const { return journal_; }

    /// The form made last that has that name and still exists; nothing when there is none.
    HeadlessForm* form(std::string_view name) const;

    // The forms' own

    std::function<void(HeadlessForm&)> takeModal(const std::string& form);
    void made(HeadlessForm& form) { forms_.push_back(&form); }
    void destroyed(HeadlessForm& form) { std::erase(forms_, &form); }

private:
    std::shared_ptr<HostJournal> journal_;
    std::vector<HeadlessForm*> forms_;
    std::vector<std::pair<std::string, std::function<void(HeadlessForm&)>>> modal_;
    int zoom_ = 8;
};

} // namespace platform::headless
