#pragma once

#include "platform/qt/forms/Scriptable.h"

#include <QComboBox>

namespace host {

/// A list to choose from in the host's own windows as scripts see it: its value is the chosen item's position from 0.
class ComboControl : public platform::qt::Scriptable {
public:
    explicit ComboControl(QComboBox* combo) : combo_(combo) {}
    QWidget* widget() override { return combo_; }
    QJsonObject read() const override;
    /// Walks to the item with the keyboard.
    QString set(const QJsonValue& value) override;

private:
    QComboBox* combo_;
};

} // namespace host
