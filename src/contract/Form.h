#pragma once

#include "contract/Controls.h"
#include "contract/Fields.h"
#include "contract/TreeList.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace contract {

/// A window with its controls, which it owns.
///
/// Showing it the first time raises Load, then the container's FormLoad, then Activate, in that order. Unloading it
/// raises QueryUnload, and unless that cancels, Unload; then the window is gone for good. The user's close button
/// unloads it too.
class Form {
public:
    Form() = default;
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;
    virtual ~Form() = default;

    virtual const std::string& name() const = 0;
    virtual std::string caption() const = 0;
    virtual void setCaption(std::string_view caption) = 0;

    /// Relative to the document area for a form in a container, to the main window otherwise.
    virtual Rect bounds() const = 0;
    virtual void setBounds(const Rect& bounds) = 0;
    /// Size of the area in which the controls stand.
    virtual Twips clientWidth() const = 0;
    virtual Twips clientHeight() const = 0;

    /// Modal: returns when the form was unloaded. Otherwise at once. Errors of the listeners come through.
    virtual void show(bool modal) = 0;
    /// True when the window is gone.
    virtual bool unload() = 0;
    /// A button that Enter and one that Esc presses; nothing for none.
    virtual void setDefaultButtons(Button* accept, Button* cancel) = 0;

    /// Stops and resumes redrawing; they nest.
    virtual void lockUpdate(bool locked) = 0;
    /// Lets pending events of the user interface be processed; the user's input waits.
    virtual void processEvents() = 0;

    // Controls. A parent of nothing is the form itself. Names are unique (RuntimeError 457 otherwise).

    virtual Frame& addFrame(std::string_view name, Control* parent) = 0;
    virtual GroupBox& addGroupBox(std::string_view name, Control* parent) = 0;
    virtual Backdrop& addBackdrop(std::string_view name, Control* parent) = 0;
    virtual Label& addLabel(std::string_view name, Control* parent) = 0;
    virtual Button& addButton(std::string_view name, Control* parent) = 0;
    virtual MenuButton& addMenuButton(std::string_view name, Control* parent) = 0;
    virtual TextField& addTextField(std::string_view name, Control* parent) = 0;
    virtual DateField& addDateField(std::string_view name, Control* parent) = 0;
    virtual ComboBox& addComboBox(std::string_view name, Control* parent) = 0;
    virtual CheckBox& addCheckBox(std::string_view name, Control* parent) = 0;
    virtual LookupField& addLookupField(std::string_view name, Control* parent) = 0;
    virtual TypeList& addTypeList(std::string_view name, Control* parent) = 0;
    virtual TreeList& addTreeList(std::string_view name, Control* parent) = 0;
    virtual DetailGrid& addDetailGrid(std::string_view name, Control* parent) = 0;
    virtual Splitter& addSplitter(std::string_view name, Control* parent) = 0;
    virtual ResizeControl& addResizeControl(std::string_view name) = 0;
    virtual MdiContainer& addMdiContainer(std::string_view name) = 0;
    virtual DataFrame& addDataFrame(std::string_view name, Control* parent) = 0;
    virtual GridNavigator& addGridNavigator(std::string_view name, Control* parent) = 0;
    virtual WorkflowStateField& addWorkflowStateField(std::string_view name, Control* parent) = 0;
    virtual PopupMenu& addPopupMenu(std::string_view name) = 0;

    Event<> Load;
    Event<> Activate;
    Event<bool&> QueryUnload; ///< set to true it cancels
    Event<> Unload;
};

/// Makes the forms and controls of a component; the host's.
class ControlFactory {
public:
    ControlFactory() = default;
    ControlFactory(const ControlFactory&) = delete;
    ControlFactory& operator=(const ControlFactory&) = delete;
    virtual ~ControlFactory() = default;

    /// A form that stands in the host's document area.
    virtual std::unique_ptr<Form> newDocumentForm(std::string_view name) = 0;
    /// A form over the host's window.
    virtual std::unique_ptr<Form> newDialog(std::string_view name) = 0;
};

} // namespace contract
