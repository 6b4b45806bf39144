#include "host/script/ViewControl.h"

#include "platform/qt/forms/InputEvents.h"

#include <QJsonArray>

namespace host {

QJsonObject ViewControl::read() const {
    QJsonArray rows;
    const auto& model = *view_->model();
    for (int row = 0; row < model.rowCount(); ++row) {
        QJsonArray cells;
        for (int column = 0; column < model.columnCount(); ++column)
            cells.append(model.index(row, column).data().toString());
        rows.append(cells);
    }
    return {{QStringLiteral("rows"), rows}, {QStringLiteral("tooltip"), view_->toolTip()}};
}

QString ViewControl::select(const QString& key) {
    if (QString reason = platform::qt::input::obstacle(view_); !reason.isEmpty())
        return reason;
    bool number = false;
    const int row = key.toInt(&number);
    if (!number || row < 0 || row >= view_->model()->rowCount())
        return QStringLiteral("nessuna riga \"%1\" in %2").arg(key, view_->objectName());
    const QModelIndex index = view_->model()->index(row, 0);
    view_->scrollTo(index);
    platform::qt::input::click(view_->viewport(), view_->visualRect(index).center());
    return {};
}

} // namespace host
