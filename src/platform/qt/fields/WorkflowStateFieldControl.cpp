#include "platform/qt/fields/WorkflowStateFieldControl.h"

#include "platform/qt/fields/DataEntryHooks.h"
#include "platform/qt/forms/Guarded.h"
#include "platform/qt/forms/InputEvents.h"

#include <QApplication>

#include <vector>

namespace platform::qt {

WorkflowStateFieldControl::WorkflowStateFieldControl(std::string_view name, QWidget* parent)
    : WorkflowStateFieldControl(name, new LookupEdit(parent)) {
}

WorkflowStateFieldControl::WorkflowStateFieldControl(std::string_view name, LookupEdit* line)
    : CaptionedControl(name, line), line_(line) {
    // A state is chosen, never typed.
    line->setReadOnly(true);
    QObject::connect(line, &LookupEdit::listWanted, &context_, [this] { guarded([this] { openWantedList(); }); });
    QObject::connect(line, &LookupEdit::left, &context_, [this] {
        if (!busy_ && line_->isVisible())
            guarded([this] { finish(); });
    });
}

void WorkflowStateFieldControl::setFocus() {
    if (widget_ && !line_->hasFocus())
        before_ = QApplication::focusWidget();
    CaptionedControl::setFocus();
}

void WorkflowStateFieldControl::setVisible(bool visible) {
    // The keyboard goes back to the tree, not on to whatever control comes next.
    QWidget* before = before_.data();
    if (!visible && widget_ && line_->hasFocus() && before != nullptr && before->isVisible())
        before->setFocus(Qt::OtherFocusReason);
    CaptionedControl::setVisible(visible);
    // It stands over a cell of a tree.
    if (visible && widget_)
        line_->raise();
}

void WorkflowStateFieldControl::setObject(std::shared_ptr<contract::WorkflowState> object) {
    object_ = std::move(object);
}

void WorkflowStateFieldControl::setValue(std::string_view guid) {
    guid_ = guid;
    stateChosen_ = false;
    if (!widget_)
        return;
    // Asked by the service's own operation, as what is confirmed later is meant for this link.
    const std::string state = object_ && !guid_.empty() ? object_->GetDescrizioneStatoFromGUID(guid_) : std::string();
    line_->setText(text(state));
}

void WorkflowStateFieldControl::showState() {
    if (!widget_ || !object_ || guid_.empty())
        return;
    const auto states = object_->descriptions({guid_});
    line_->setText(states.empty() ? QString() : text(states.front()));
}

void WorkflowStateFieldControl::sendKeys(std::string_view keys) {
    if (keys == "^{F1}")
        openList();
}

void WorkflowStateFieldControl::openList() {
    const auto choose = DataEntryHooks::instance().chooseState;
    if (!choose || busy_)
        return;
    busy_ = true;
    const QPointer<QWidget> alive(widget_);
    try {
        const auto state = choose();
        if (!alive)
            return;
        stateChosen_ = state.has_value();
        finish();
    } catch (...) {
        if (alive)
            busy_ = false;
        throw;
    }
}

// Nobody stands behind a key or a button whom an error would reach.
void WorkflowStateFieldControl::openWantedList() {
    const auto& tell = DataEntryHooks::instance().showStatesError;
    try {
        openList();
    } catch (const contract::RuntimeError& error) {
        if (!tell)
            throw;
        tell(error);
    }
}

void WorkflowStateFieldControl::finish() {
    const QPointer<QObject> alive(&context_);
    busy_ = true;
    try {
        contract::fire(AfterItem);
    } catch (...) {
        if (alive)
            busy_ = false;
        throw;
    }
    if (!alive)
        return;
    busy_ = false;
    if (stateChosen_) {
        stateChosen_ = false;
        showState();
    }
}

QJsonObject WorkflowStateFieldControl::read() const {
    QJsonObject members = CaptionedControl::read();
    members.insert(QStringLiteral("value"), widget_ ? line_->text() : QString());
    return members;
}

QString WorkflowStateFieldControl::click() {
    if (QString reason = input::obstacle(widget_); !reason.isEmpty())
        return reason;
    input::enter(line_);
    input::press(line_, Qt::Key_F1);
    return {};
}

} // namespace platform::qt
