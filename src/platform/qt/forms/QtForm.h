#pragma once

#include "contract/Form.h"
#include "platform/qt/forms/FormArea.h"
#include "platform/qt/forms/Scriptable.h"
#include "platform/qt/forms/Session.h"

#include <QEventLoop>
#include <QObject>
#include <QPointer>
#include <QWidget>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace platform::qt {

class DataFrameControl;
class LabelControl;
class MdiContainerControl;
class ResizeFormControl;

/// What the two kinds of windows share: the controls, the life from Load to Unload, modality.
///
/// The widgets live until the form object dies, so that whoever still holds a control after the unload holds something
/// that can be asked.
class QtForm : public contract::Form, public FormWindow {
public:
    ~QtForm() override;

    // contract::Form

    const std::string& name() const override { return name_; }
    std::string caption() const override { return caption_; }
    void setCaption(std::string_view caption) override;
    contract::Twips clientWidth() const override { return clientSize().width; }
    contract::Twips clientHeight() const override { return clientSize().height; }
    void show(bool modal) override;
    bool unload() override;
    void setDefaultButtons(contract::Button* accept, contract::Button* cancel) override;
    void lockUpdate(bool locked) override;
    void processEvents() override;

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

    // FormWindow

    QString formName() const override { return QString::fromStdString(name_); }
    contract::Form* form() override { return this; }
    QWidget* window() override { return window_; }
    bool isModal() const override { return modal_; }
    QString formCaption() const override { return QString::fromStdString(caption_); }
    contract::Rect formBounds() const override { return bounds(); }
    void resizeForm(contract::Twips width, contract::Twips height) override;
    bool pressClose() override;
    QStringList controlNames() const override;
    Scriptable* control(const QString& name) override;
    const contract::Control* contractControl(const QString& name) const override;
    contract::Rect controlBounds(const QString& name) const override;

    // For the controls of the form

    /// 0 normal, 1 minimised, 2 maximised; only a document form has others than normal.
    virtual void setWindowState(int) {}
    virtual int windowState() const { return 0; }

protected:
    struct Extent {
        contract::Twips width = 0;
        contract::Twips height = 0;
        friend bool operator==(const Extent&, const Extent&) = default;
    };

    /// To be called by the constructor of a kind of window: the window, and in it the area.
    void adopt(QWidget* window, FormArea* area);

    virtual Extent clientSize() const = 0;
    /// Shows the window, not waiting for anything.
    virtual void showWindow() = 0;
    virtual void hideWindow() = 0;
    virtual void activateWindow() = 0;
    /// Keeps the user from the rest of the program, or stops doing so.
    virtual void standModal(bool) {}
    /// Whether the window may go as far as the host's own data entry is concerned; may ask the user.
    virtual bool mayLeave() { return true; }
    /// A data-entry frame was added.
    virtual void dataFrameAdded(DataFrameControl&) {}

    bool visible() const { return shown_ && !gone_; }
    bool gone() const { return gone_; }
    QWidget* area() const { return area_.data(); }
    /// A control of the host's own beside those of the component; it stands in no frame.
    void addOwn(std::unique_ptr<contract::Control> control, Scriptable& script);
    /// Tells the resize control, and through it the form, that the area may have another size now.
    void areaResized();

    /// Listens to nothing any more and takes the window away; to be called by every destructor of a kind of window,
    /// before what its listeners use is gone.
    void retire();
    QObject* context() const { return context_.get(); } ///< whose end ends all listening of the form

private:
    struct Entry {
        QString name;
        std::unique_ptr<contract::Control> control;
        Scriptable* script = nullptr;
        const contract::Control* parent = nullptr;
    };

    template <class C> C& add(std::string_view name, contract::Control* parent);
    template <class C> C& addToWindow(std::string_view name);
    const Entry* find(const QString& name) const;
    const Entry* find(const contract::Control* control) const;
    void requireNewName(std::string_view name) const;
    QWidget* parentWidget(contract::Control* parent) const;
    void load();
    void waitUntilUnloaded();
    void discard();
    void leave();

    std::string name_;
    std::string caption_;
    std::unique_ptr<QObject> context_ = std::make_unique<QObject>();
    QPointer<QWidget> window_;
    QPointer<FormArea> area_;
    std::vector<Entry> entries_;
    std::vector<std::unique_ptr<contract::PopupMenu>> popups_;
    ResizeFormControl* resize_ = nullptr;
    MdiContainerControl* container_ = nullptr;
    LabelControl* unusedLabel_ = nullptr; ///< the last label, until a field follows it
    const contract::Control* unusedLabelParent_ = nullptr;
    contract::Button* acceptButton_ = nullptr;
    contract::Button* cancelButton_ = nullptr;
    QEventLoop* loop_ = nullptr;
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
    int updateLocks_ = 0;
    bool modal_ = false;
    bool loaded_ = false;
    bool shown_ = false;
    bool leaving_ = false;
    bool gone_ = false;

protected:
    explicit QtForm(std::string_view name) : name_(name) {}
};

} // namespace platform::qt
