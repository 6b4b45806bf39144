#include "host/script/ComboControl.h"

#include "host/services/Text.h"
#include "platform/qt/forms/InputEvents.h"

#include <QJsonArray>

namespace host {

namespace input = platform::qt::input;

QJsonObject ComboControl::read() const {
    QJsonArray items;
    for (int i = 0; i < combo_->count(); ++i)
        items.append(combo_->itemText(i));
    return {{QStringLiteral("value"), combo_->currentIndex()}, {QStringLiteral("items"), items}};
}

QString ComboControl::set(const QJsonValue& value) {
    const auto position = wholeNumber(value);
    if (!position || *position < 0 || *position >= combo_->count())
        return QStringLiteral("l'elenco \"%1\" non ha la voce %2")
            .arg(combo_->objectName(), position ? QString::number(*position) : QStringLiteral("indicata"));
    if (QString reason = input::obstacle(combo_); !reason.isEmpty())
        return reason;
    input::enter(combo_);
    input::press(combo_, Qt::Key_Home);
    for (int i = 0; i < *position; ++i)
        input::press(combo_, Qt::Key_Down);
    return combo_->currentIndex() == *position ? QString() : QStringLiteral("la voce non si lascia scegliere");
}

} // namespace host
