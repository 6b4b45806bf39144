#include "platform/qt/fields/GridNavigatorControl.h"

#include "contract/Host.h"
#include "platform/qt/fields/DataEntryHooks.h"
#include "platform/qt/fields/DataFrameControl.h"
#include "platform/qt/forms/CaptionedControl.h"
#include "platform/qt/forms/Guarded.h"
#include "platform/qt/forms/InputEvents.h"

#include <QHBoxLayout>
#include <QJsonArray>

namespace platform::qt {

namespace message = contract::message;

GridNavigatorControl::GridNavigatorControl(std::string_view name, QWidget* parent)
    : QtControl(name, new QWidget(parent)) {
    QWidget* bar = widget_;
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(2);
    addButton(bar, Glyph::first, QStringLiteral("primo"), [this] { moveToEnd(false); });
    addButton(bar, Glyph::previous, QStringLiteral("precedente"), [this] { moveBy(-1); });
    addButton(bar, Glyph::next, QStringLiteral("successivo"), [this] { moveBy(1); });
    addButton(bar, Glyph::last, QStringLiteral("ultimo"), [this] { moveToEnd(true); });
    insert_ = addButton(bar, Glyph::add, QStringLiteral("nuovo"), [this] {
        if (mayMove())
            frame_->showNew();
    });
    delete_ = addButton(bar, Glyph::remove, QStringLiteral("elimina"), [this] { remove(); });
    insert_->hide();
    delete_->hide();
}

FlatButton* GridNavigatorControl::addButton(QWidget* bar, Glyph glyph, const QString& caption,
                                            const std::function<void()>& action) {
    auto* button = new FlatButton(bar);
    button->setGlyph(glyph);
    button->setText(caption);
    button->setAccessibleName(caption);
    button->setToolTip(caption);
    button->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
    bar->layout()->addWidget(button);
    QObject::connect(button, &QPushButton::clicked, &context_, [this, action] {
        if (frame_ != nullptr)
            attempt(action);
    });
    buttons_.push_back(button);
    return button;
}

void GridNavigatorControl::attempt(const std::function<void()>& action) {
    guarded([&] {
        try {
            action();
        } catch (const contract::RuntimeError& error) {
            DataEntryHooks::instance().report(error, frame_ != nullptr ? frame_->errors() : contract::ErrorList{});
        }
    });
}

void GridNavigatorControl::bind(contract::DataFrame& frame) {
    frame_ = dynamic_cast<DataFrameControl*>(&frame);
    if (frame_ != nullptr)
        frame_->statusChanged = [this] { enableArrows(); };
    enableArrows();
}

void GridNavigatorControl::setAllowInsert(bool allowed) {
    if (widget_)
        insert_->setVisible(allowed);
}

void GridNavigatorControl::setAllowDelete(bool allowed) {
    if (widget_)
        delete_->setVisible(allowed);
}

// There is nowhere to go from the only record, but from a new one back to it.
void GridNavigatorControl::enableArrows() {
    const contract::Recordset* records = frame_ != nullptr ? frame_->records() : nullptr;
    const std::size_t fewest = frame_ != nullptr && frame_->showsNew() ? 1 : 2;
    const bool several = records != nullptr && static_cast<std::size_t>(records->RecordCount()) >= fewest;
    if (!widget_)
        return;
    for (std::size_t arrow = 0; arrow < arrows; ++arrow)
        buttons_[arrow]->setEnabled(several);
}

void GridNavigatorControl::release() {
    if (frame_ != nullptr)
        frame_->statusChanged = {};
    frame_ = nullptr;
}

bool GridNavigatorControl::mayMove() {
    if (!frame_->changed())
        return true;
    if (!askBeforeMove_)
        return frame_->save();
    const int answer = DataEntryHooks::instance().askToSave(widget_ ? widget_->window()->windowTitle() : QString());
    if (answer == message::answerYes)
        return frame_->save();
    return answer == message::answerNo;
}

void GridNavigatorControl::moveBy(int rows) {
    const contract::Recordset* records = frame_->records();
    const auto row = records == nullptr ? std::nullopt : records->Row();
    if (!row || (rows < 0 && *row == 0) || (rows > 0 && *row + 1 >= records->RecordCount()) || !mayMove())
        return;
    frame_->showRow(rows < 0 ? *row - 1 : *row + 1);
}

void GridNavigatorControl::moveToEnd(bool last) {
    const contract::Recordset* records = frame_->records();
    if (records == nullptr || records->Empty() || !mayMove())
        return;
    frame_->showRow(last ? records->RecordCount() - 1 : 0);
}

void GridNavigatorControl::remove() {
    const auto& ask = DataEntryHooks::instance().showMessage;
    const QString title = widget_ ? widget_->window()->windowTitle() : QString();
    if (ask && ask(title, QStringLiteral("Eliminare il record?"), message::yesNo) == message::answerYes)
        frame_->deleteRecord();
}

QJsonObject GridNavigatorControl::read() const {
    QJsonArray captions;
    for (const auto* button : buttons_)
        if (!button->isHidden())
            captions.append(button->text());
    return {{QStringLiteral("buttons"), captions}};
}

QString GridNavigatorControl::chooseItem(const QString& key) {
    for (auto* button : buttons_)
        if (button->text() == key) {
            if (QString reason = input::obstacle(button); !reason.isEmpty())
                return reason;
            input::click(button, button->rect().center());
            return {};
        }
    return QStringLiteral("il controllo \"%1\" non ha il pulsante \"%2\"").arg(text(name_), key);
}

} // namespace platform::qt
