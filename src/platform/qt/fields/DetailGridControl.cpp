#include "platform/qt/fields/DetailGridControl.h"

#include "contract/RuntimeError.h"

#include <QJsonArray>

#include <algorithm>

namespace platform::qt {

using contract::RuntimeError;

namespace {
constexpr int badCell = 30009;
}

DetailGridControl::DetailGridControl(std::string_view name, QWidget* parent)
    : QtControl(name, new DetailGridView(parent)), view_(static_cast<DetailGridView*>(widget_.data())) {
    view_->setAccessibleName(view_->objectName());
}

void DetailGridControl::requireCell(std::size_t row, std::size_t column) const {
    if (row >= rowCount() || column > 1)
        throw RuntimeError(badCell, "La griglia \"" + name_ + "\" non ha la cella di riga " + std::to_string(row) +
                                        " e colonna " + std::to_string(column) + ".");
}

void DetailGridControl::clear() {
    view_->cells().setRows(0);
}

void DetailGridControl::setRowCount(std::size_t rows) {
    view_->cells().setRows(rows);
}

std::size_t DetailGridControl::rowCount() const {
    return view_->cells().rows();
}

void DetailGridControl::setCell(std::size_t row, std::size_t column, std::string_view text) {
    requireCell(row, column);
    view_->cells().setText(row, column, text);
}

std::string DetailGridControl::cell(std::size_t row, std::size_t column) const {
    requireCell(row, column);
    return view_->cells().text(row, column).toStdString();
}

void DetailGridControl::setRowHeight(std::size_t row, contract::Twips height) {
    requireCell(row, 0);
    view_->setWantedHeight(static_cast<int>(row), Appearance::pixels(height));
}

void DetailGridControl::setColumnWidth(std::size_t column, contract::Twips width) {
    if (column > 1)
        requireCell(0, column);
    view_->setWantedWidth(static_cast<int>(column), Appearance::pixels(width));
}

void DetailGridControl::setFontName(std::string_view name) {
    view_->setFontName(QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size())));
}

void DetailGridControl::setHighLightColor(contract::Color color) {
    view_->highLight.set(color, "GridHighLightFontColor");
    view_->refreshLook();
}

void DetailGridControl::setTextColor(contract::Color color) {
    view_->text.set(color, "GridFontColor");
    view_->refreshLook();
}

void DetailGridControl::setFixedColor(contract::Color color) {
    view_->fixed.set(color, "GridHeaderColor");
    view_->refreshLook();
}

QJsonObject DetailGridControl::read() const {
    QJsonArray rows;
    for (std::size_t row = 0; row < rowCount(); ++row)
        rows.append(QJsonArray{view_->cells().text(row, 0), view_->cells().text(row, 1)});
    return QJsonObject{{"rows", rows}, {"tooltip", QString::fromStdString(toolTip_)}};
}

} // namespace platform::qt
