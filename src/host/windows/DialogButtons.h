#pragma once

#include "platform/qt/look/FlatButton.h"

#include <QString>

namespace host {

/// A button for the host's own dialogs and boxes, in the look of the forms' buttons. primary: the one that the dialog
/// is there for.
inline platform::qt::FlatButton* dialogButton(const QString& caption, QWidget* parent, bool primary = false) {
    auto* button = new platform::qt::FlatButton(parent);
    button->setText(caption);
    button->setPrimary(primary);
    constexpr QSize least(104, 32);
    button->setMinimumSize(least);
    return button;
}

} // namespace host
