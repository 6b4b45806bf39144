#include "host/script/WidgetControls.h"

#include "platform/qt/forms/InputEvents.h"

#include <QJsonArray>

namespace host {

namespace input = platform::qt::input;

QJsonObject ButtonControl::read() const {
    return {{QStringLiteral("caption"), button_->text()}, {QStringLiteral("tooltip"), button_->toolTip()}};
}

QString ButtonControl::click() {
    if (QString reason = input::obstacle(button_); !reason.isEmpty())
        return reason;
    input::click(button_, button_->rect().center());
    return {};
}

QJsonObject FieldControl::read() const {
    return {{QStringLiteral("value"), field_->text()}};
}

QString FieldControl::set(const QJsonValue& value) {
    if (!value.isString())
        return QStringLiteral("il campo \"%1\" vuole un testo").arg(field_->objectName());
    if (QString reason = input::obstacle(field_); !reason.isEmpty())
        return reason;
    input::replaceText(field_, value.toString());
    return {};
}

QJsonObject LabelControl::read() const {
    return {{QStringLiteral("caption"), label_->text()}};
}

QJsonObject TableControl::read() const {
    QJsonArray rows;
    for (int row = 0; row < table_->rowCount(); ++row) {
        if (table_->isRowHidden(row))
            continue;
        QJsonArray cells;
        for (int column = 0; column < table_->columnCount(); ++column) {
            const auto* item = table_->item(row, column);
            cells.append(item != nullptr ? item->text() : QString());
        }
        rows.append(cells);
    }
    return {{QStringLiteral("rows"), rows}, {QStringLiteral("tooltip"), table_->toolTip()}};
}

} // namespace host
