#pragma once

#include "platform/qt/fields/CalendarEdit.h"
#include "platform/qt/forms/Scriptable.h"

#include <QAbstractButton>

namespace host {

/// A check box or a radio button of the host's own windows as scripts see it: true where it is chosen.
class CheckControl : public platform::qt::Scriptable {
public:
    explicit CheckControl(QAbstractButton* button) : button_(button) {}
    QWidget* widget() override { return button_; }
    QJsonObject read() const override;
    QString click() override;
    QString set(const QJsonValue& value) override;

private:
    QAbstractButton* button_;
};

/// A date field of the host's own windows; its text is "dd/mm/yyyy".
class DayControl : public platform::qt::Scriptable {
public:
    explicit DayControl(platform::qt::CalendarEdit* field) : field_(field) {}
    QWidget* widget() override { return field_; }
    QJsonObject read() const override;
    QString set(const QJsonValue& value) override;

private:
    platform::qt::CalendarEdit* field_;
};

} // namespace host
