#include "platform/qt/forms/DialogForm.h"

#include "contract/Host.h"
#include "platform/qt/fields/Buttons.h"
#include "platform/qt/fields/DataEntryHooks.h"
#include "platform/qt/fields/DataFrameControl.h"
#include "platform/qt/forms/Guarded.h"
#include "platform/qt/look/Appearance.h"
#include "platform/shared/ResizeScaler.h"

#include <QCloseEvent>
#include <QShortcut>

#include <algorithm>

namespace platform::qt {

using contract::Rect;
using contract::Twips;
namespace message = contract::message;

namespace {

// Measures for 8 points.
constexpr Twips buttonHeight = 420;
constexpr Twips buttonWidth = 1700;
// These do not grow with the type.
constexpr Twips aboveAndBelow = 90;
constexpr Twips margin = 120;

Twips scaled(Twips measure) {
    return shared::zoomed(measure, Appearance::instance().zoom());
}

/// Of the row of the data-entry buttons.
Twips barHeight() {
    return scaled(buttonHeight) + 2 * aboveAndBelow;
}

Twips keepExact(Twips exact, int given, int now) {
    return given == now ? exact : Appearance::twips(now);
}

} // namespace

DialogWindow::DialogWindow(QWidget* parent) : QDialog(parent) {
    // A dialog is moved and closed, not made small or large.
    setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                   Qt::WindowCloseButtonHint);
}

void DialogWindow::closeEvent(QCloseEvent* event) {
    // The form hides the window itself when it goes.
    event->ignore();
    emit closePressed();
}

void DialogWindow::reject() {
    emit closePressed();
}

void DialogWindow::moveEvent(QMoveEvent* event) {
    QDialog::moveEvent(event);
    emit geometryChanged();
}

void DialogWindow::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    emit geometryChanged();
}

DialogForm::DialogForm(std::string_view name, QWidget* mainWindow) : QtForm(name), mainWindow_(mainWindow) {
    auto* dialog = new DialogWindow(mainWindow);
    dialog_ = dialog;
    adopt(dialog, new FormArea(dialog));
    QObject::connect(dialog, &DialogWindow::closePressed, context(), [this] { pressClose(); });
    QObject::connect(dialog, &DialogWindow::geometryChanged, context(), [this] { geometryChanged(); });
    QObject::connect(&Appearance::instance(), &Appearance::changed, context(), [this] { layOut(); });
}

DialogForm::~DialogForm() {
    retire();
}

void DialogForm::setBounds(const Rect& bounds) {
    bounds_ = {bounds.left, bounds.top, std::max(bounds.width, 0), std::max(bounds.height, 0)};
    applyBounds();
}

QPoint DialogForm::origin() const {
    const QWidget* main = mainWindow_;
    return main == nullptr ? QPoint(0, 0) : main->mapToGlobal(QPoint(0, 0));
}

void DialogForm::applyBounds() {
    DialogWindow* dialog = dialog_;
    if (dialog == nullptr)
        return;
    const int left = Appearance::pixels(bounds_.left);
    const int top = Appearance::pixels(bounds_.top);
    given_ = QRect(left, top, Appearance::pixels(bounds_.left + bounds_.width) - left,
                   Appearance::pixels(bounds_.top + bounds_.height) - top);
    dialog->setGeometry(given_.translated(origin()));
    layOut();
}

void DialogForm::geometryChanged() {
    layOut();
    const DialogWindow* dialog = dialog_;
    if (!visible() || dialog == nullptr || !dialog->isVisible())
        return;
    const QRect now = dialog->geometry().translated(-origin());
    bounds_ = {keepExact(bounds_.left, given_.x(), now.x()), keepExact(bounds_.top, given_.y(), now.y()),
               keepExact(bounds_.width, given_.width(), now.width()),
               keepExact(bounds_.height, given_.height(), now.height())};
    given_ = now;
    // The area may have had its pixels before the exact size followed.
    guarded([this] { areaResized(); });
}

void DialogForm::layOut() {
    QWidget* window = dialog_;
    QWidget* content = area();
    QWidget* bar = bar_;
    if (window == nullptr || content == nullptr)
        return;
    const int barPixels = bar != nullptr ? Appearance::pixels(barHeight()) : 0;
    content->setGeometry(0, 0, window->width(), std::max(window->height() - barPixels, 0));
    if (bar == nullptr)
        return;
    bar->setGeometry(0, window->height() - barPixels, window->width(), barPixels);
    // Wide enough for the type in use, and never wider than a third of the dialog.
    const Twips room = Appearance::twips(window->width());
    const Twips wide = std::min(scaled(buttonWidth), (room - 4 * margin) / 3);
    const Twips high = scaled(buttonHeight);
    Twips right = room;
    for (auto* button : {close_, restore_, save_}) {
        right -= margin + wide;
        button->setBounds({right, aboveAndBelow, wide, high});
    }
}

QtForm::Extent DialogForm::clientSize() const {
    const Twips taken = bar_ ? barHeight() : 0;
    return {bounds_.width, std::max(bounds_.height - taken, 0)};
}

void DialogForm::showWindow() {
    DialogWindow* dialog = dialog_;
    if (dialog == nullptr)
        return;
    if (const QWidget* main = mainWindow_; main != nullptr && bounds_.left == 0 && bounds_.top == 0) {
        // Nobody said where: in the middle of the main window.
        bounds_.left = std::max((Appearance::twips(main->width()) - bounds_.width) / 2, 0);
        bounds_.top = std::max((Appearance::twips(main->height()) - bounds_.height) / 2, 0);
        applyBounds();
    }
    if (save_ != nullptr) {
        // The row is reached after the dialog's own controls.
        QWidget* last = restore_->button();
        for (const QString& name : controlNames())
            if (QWidget* widget = control(name)->widget(); widget != nullptr && widget != save_->button() &&
                                                           widget != restore_->button() && widget != close_->button())
                last = widget;
        QWidget::setTabOrder(last, save_->button());
        QWidget::setTabOrder(save_->button(), restore_->button());
        QWidget::setTabOrder(restore_->button(), close_->button());
        // The order is a ring, and a dialog enters it at the row, which was made early: Enter would save at once.
        QWidget* const row = close_->button();
        for (QWidget* next = row->nextInFocusChain(); dialog->focusWidget() == nullptr && next != row;
             next = next->nextInFocusChain())
            if ((next->focusPolicy() & Qt::TabFocus) != 0 && next != save_->button() && next != restore_->button() &&
                next->isEnabledTo(dialog) && next->isVisibleTo(dialog))
                next->setFocus(Qt::OtherFocusReason);
    }
    dialog->show();
    dialog->raise();
    dialog->activateWindow();
}

void DialogForm::hideWindow() {
    if (dialog_)
        dialog_->hide();
}

void DialogForm::activateWindow() {
    if (!dialog_)
        return;
    dialog_->raise();
    dialog_->activateWindow();
}

void DialogForm::standModal(bool modal) {
    if (dialog_ && modal)
        dialog_->setWindowModality(Qt::ApplicationModal);
}

std::unique_ptr<ButtonControl> DialogForm::dataEntryButton(const char* name, const char* caption, const char* tip) {
    auto button = std::make_unique<ButtonControl>(name, bar_);
    button->setCaption(caption);
    button->setToolTip(tip);
    button->setVisible(true);
    return button;
}

void DialogForm::dataFrameAdded(DataFrameControl& frame) {
    if (frame_ != nullptr || !dialog_)
        return;
    frame_ = &frame;
    QWidget* bar = new QWidget(dialog_);
    bar_ = bar;
    bar->setAutoFillBackground(true);
    auto save = dataEntryButton("CMD_SALVA", "&Salva", "Salva le modifiche (Ctrl+S)");
    auto restore = dataEntryButton("CMD_RIPRISTINA", "&Ripristina", "Annulla le modifiche non salvate");
    auto close = dataEntryButton("CMD_CHIUDI", "&Chiudi", "Chiude la finestra (Esc)");
    close_ = close.get();
    close->ButtonClick = [this] { pressClose(); };
    Scriptable& closeScript = *close;
    save_ = save.get();
    restore_ = restore.get();
    save->setPrimary(true);
    save->ButtonClick = [this] { trySave(); };
    restore->ButtonClick = [this] { frame_->undo(); };
    save->button()->setGlyph(Glyph::save);
    restore->button()->setGlyph(Glyph::undo);
    auto* shortcut = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_S), dialog_);
    QObject::connect(shortcut, &QShortcut::activated, save->button(), &QPushButton::click);
    Scriptable& saveScript = *save;
    Scriptable& restoreScript = *restore;
    addOwn(std::move(save), saveScript);
    addOwn(std::move(restore), restoreScript);
    addOwn(std::move(close), closeScript);
    bar->show();
    layOut();
}

bool DialogForm::trySave() {
    try {
        return frame_->save();
    } catch (const contract::RuntimeError& error) {
        DataEntryHooks::instance().report(error, frame_->errors());
        return false;
    }
}

bool DialogForm::mayLeave() {
    if (frame_ == nullptr || !visible())
        return true;
    // A field that is still being typed into counts as it stands when it is left.
    if (QWidget* focused = dialog_ ? dialog_->focusWidget() : nullptr)
        focused->clearFocus();
    if (!frame_->changed())
        return true;
    const int answer = DataEntryHooks::instance().askToSave(dialog_->windowTitle());
    if (answer == message::answerYes)
        return trySave();
    return answer == message::answerNo;
}

} // namespace platform::qt
