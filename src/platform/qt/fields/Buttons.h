#pragma once

#include "contract/Controls.h"
#include "platform/qt/forms/CaptionedControl.h"
#include "platform/qt/forms/PopupPresenter.h"
#include "platform/qt/look/FlatButton.h"

#include <vector>

namespace platform::qt {

/// A button: a click of the mouse, its mnemonic, Space or (as the form's default button) Enter press it.
class ButtonControl : public CaptionedControl<contract::Button> {
public:
    ButtonControl(std::string_view name, QWidget* parent);

    void setIcon(contract::Icon icon) override;
    void setPrimary(bool primary) override;

    FlatButton* button() const { return button_; }

    QJsonObject read() const override;
    QString click() override;

protected:
    void showCaption(const QString& caption) override;

private:
    ButtonControl(std::string_view name, FlatButton* button);

    FlatButton* button_; ///< the control's widget; alive while widget_ is
    QObject context_;
};

/// A button that opens a list of items below itself.
class MenuButtonControl : public CaptionedControl<contract::MenuButton> {
public:
    MenuButtonControl(std::string_view name, QWidget* parent);

    void addItem(std::string_view key, std::string_view caption) override;
    std::vector<std::string> itemKeys() const override { return keys_; }

    QJsonObject read() const override;
    QString click() override;
    QString chooseItem(const QString& key) override;

protected:
    void showCaption(const QString& caption) override;

private:
    MenuButtonControl(std::string_view name, FlatButton* button);

    FlatButton* button_; ///< the control's widget; alive while widget_ is
    std::vector<std::string> keys_;
    PopupPresenter popup_;
    QObject context_;
};

/// A context menu of a form. Its entries bear their names, so that a read of the form's menus finds them.
class PopupMenuControl : public contract::PopupMenu {
public:
    PopupMenuControl(std::string_view name, QWidget* parent);

    const std::string& name() const override { return name_; }
    void addItem(const contract::PopupItem& item) override;
    void setItemEnabled(std::string_view item, bool enabled) override;
    void showAtMouse() override;

private:
    std::string name_;
    PopupPresenter popup_;
};

} // namespace platform::qt
