#include "host/script/ChoiceControls.h"

#include "platform/qt/forms/InputEvents.h"

namespace host {

namespace input = platform::qt::input;

QJsonObject CheckControl::read() const {
    return {{QStringLiteral("value"), button_->isChecked()}, {QStringLiteral("caption"), button_->text()}};
}

QString CheckControl::click() {
    if (QString reason = input::obstacle(button_); !reason.isEmpty())
        return reason;
    // Beside the mark, where every style takes the press.
    input::click(button_, QPoint(8, button_->height() / 2));
    return {};
}

QString CheckControl::set(const QJsonValue& value) {
    if (!value.isBool())
        return QStringLiteral("la casella \"%1\" vuole true o false").arg(button_->objectName());
    if (button_->isChecked() == value.toBool())
        return input::obstacle(button_);
    return click();
}

QJsonObject DayControl::read() const {
    return {{QStringLiteral("value"), field_->text()}, {QStringLiteral("error"), field_->error()}};
}

QString DayControl::set(const QJsonValue& value) {
    if (!value.isString())
        return QStringLiteral("il campo \"%1\" vuole un testo").arg(field_->objectName());
    if (QString reason = input::obstacle(field_); !reason.isEmpty())
        return reason;
    input::replaceText(field_, value.toString());
    input::leave(field_);
    return {};
}

} // namespace host
