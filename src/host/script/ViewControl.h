#pragma once

#include "platform/qt/forms/Scriptable.h"

#include <QTableView>

namespace host {

/// The rows of a view as a grid. "select" with a key from 0 presses on the row shown there.
class ViewControl : public platform::qt::Scriptable {
public:
    explicit ViewControl(QTableView* view) : view_(view) {}
    QWidget* widget() override { return view_; }
    QJsonObject read() const override;
    QString select(const QString& key) override;

private:
    QTableView* view_;
};

} // namespace host
