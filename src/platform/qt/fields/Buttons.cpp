#include "platform/qt/fields/Buttons.h"

#include "contract/RuntimeError.h"
#include "platform/qt/forms/Guarded.h"
#include "platform/qt/forms/InputEvents.h"

#include <algorithm>

namespace platform::qt {

namespace {

constexpr int duplicateKey = 457;

QString clickMiddle(QWidget* widget) {
    if (QString reason = input::obstacle(widget); !reason.isEmpty())
        return reason;
    input::click(widget, widget->rect().center());
    return {};
}

} // namespace

ButtonControl::ButtonControl(std::string_view name, QWidget* parent) : ButtonControl(name, new FlatButton(parent)) {
}

ButtonControl::ButtonControl(std::string_view name, FlatButton* button)
    : CaptionedControl(name, button), button_(button) {
    QObject::connect(button, &QPushButton::clicked, &context_,
                     [this] { guarded([this] { contract::fire(ButtonClick); }); });
}

void ButtonControl::setIcon(contract::Icon icon) {
    if (widget_)
        button_->setGlyph(glyphOf(icon));
}

void ButtonControl::setPrimary(bool primary) {
    if (widget_)
        button_->setPrimary(primary);
}

void ButtonControl::showCaption(const QString& caption) {
    button_->setText(caption);
}

QJsonObject ButtonControl::read() const {
    QJsonObject members = CaptionedControl::read();
    members.insert(QStringLiteral("tooltip"), text(toolTip_));
    return members;
}

QString ButtonControl::click() {
    return clickMiddle(widget_);
}

MenuButtonControl::MenuButtonControl(std::string_view name, QWidget* parent)
    : MenuButtonControl(name, new FlatButton(parent)) {
}

MenuButtonControl::MenuButtonControl(std::string_view name, FlatButton* button)
    : CaptionedControl(name, button), button_(button),
      popup_(text(name), button, [this](const QString& key) { contract::fire(MenuClick, key.toStdString()); }) {
    button->setOpensList(true);
    QObject::connect(button, &QPushButton::clicked, &context_, [this] {
        popup_.setLeastWidth(button_->width());
        popup_.open(button_->mapToGlobal(QPoint(0, button_->height())));
    });
}

void MenuButtonControl::addItem(std::string_view key, std::string_view caption) {
    if (std::find(keys_.begin(), keys_.end(), key) != keys_.end())
        throw contract::RuntimeError(duplicateKey,
                                     "La chiave \"" + std::string(key) + "\" esiste già nel menu " + name_ + ".");
    keys_.emplace_back(key);
    popup_.addItem(text(key), text(caption));
}

void MenuButtonControl::showCaption(const QString& caption) {
    button_->setText(caption);
}

QJsonObject MenuButtonControl::read() const {
    QJsonObject members = CaptionedControl::read();
    members.insert(QStringLiteral("tooltip"), text(toolTip_));
    return members;
}

QString MenuButtonControl::click() {
    return clickMiddle(widget_);
}

QString MenuButtonControl::chooseItem(const QString& key) {
    if (popup_.item(key) == nullptr)
        return QStringLiteral("il menu \"%1\" non ha la voce \"%2\"").arg(text(name_), key);
    if (QString reason = clickMiddle(widget_); !reason.isEmpty())
        return reason;
    if (!popup_.choose(key))
        return QStringLiteral("la voce \"%1\" del menu \"%2\" è disabilitata").arg(key, text(name_));
    return {};
}

PopupMenuControl::PopupMenuControl(std::string_view name, QWidget* parent)
    : name_(name),
      popup_(text(name), parent, [this](const QString& item) { contract::fire(Click, item.toStdString()); }) {
    popup_.nameMenu();
}

void PopupMenuControl::addItem(const contract::PopupItem& item) {
    popup_.addItem(text(item.name), text(item.caption))->setObjectName(text(item.name));
}

void PopupMenuControl::setItemEnabled(std::string_view item, bool enabled) {
    if (QAction* action = popup_.item(text(item)))
        action->setEnabled(enabled);
}

void PopupMenuControl::showAtMouse() {
    popup_.open(LastInput::instance().popupPoint());
}

} // namespace platform::qt
