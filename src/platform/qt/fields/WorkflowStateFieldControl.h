#pragma once

#include "contract/Fields.h"
#include "platform/qt/fields/FieldWidgets.h"
#include "platform/qt/forms/CaptionedControl.h"

namespace platform::qt {

/// Shows the state of a link in words; its list lets the user choose another one.
class WorkflowStateFieldControl : public CaptionedControl<contract::WorkflowStateField> {
public:
    WorkflowStateFieldControl(std::string_view name, QWidget* parent);

    /// Hidden while it has the keyboard, it gives it back to the control that had it before setFocus().
    void setVisible(bool visible) override;
    void setFocus() override;

    void setObject(std::shared_ptr<contract::WorkflowState> object) override;
    std::shared_ptr<contract::WorkflowState> object() const override { return object_; }
    std::string value() const override { return guid_; }
    void setValue(std::string_view guid) override;
    void sendKeys(std::string_view keys) override;
    bool stateChosen() const override { return stateChosen_; }

    QJsonObject read() const override;
    QString click() override;

private:
    WorkflowStateFieldControl(std::string_view name, LookupEdit* line);
    void openList();
    void openWantedList();
    void finish();
    void showState();

    LookupEdit* line_; ///< the control's widget; alive while widget_ is
    QPointer<QWidget> before_;
    std::shared_ptr<contract::WorkflowState> object_;
    std::string guid_;
    bool stateChosen_ = false;
    bool busy_ = false; ///< the list is open, or its choice being dealt with
    QObject context_;
};

} // namespace platform::qt
