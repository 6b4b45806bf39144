#pragma once

#include "contract/Controls.h"
#include "platform/qt/forms/QtControl.h"
#include "platform/qt/tree/TreeColors.h"

#include <QAbstractTableModel>
#include <QStyledItemDelegate>
#include <QTableView>

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace platform::qt {

/// The texts of a detail grid.
class DetailGridModel : public QAbstractTableModel {
    Q_OBJECT
public:
    using QAbstractTableModel::QAbstractTableModel;

    void setRows(std::size_t rows);
    void setText(std::size_t row, std::size_t column, std::string_view text);
    QString text(std::size_t row, std::size_t column) const { return rows_[row][column]; }
    std::size_t rows() const { return rows_.size(); }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

private:
    std::vector<std::array<QString, 2>> rows_;
};

/// The widget of a detail grid: cells can be marked and copied, never changed.
class DetailGridView : public QTableView {
    Q_OBJECT
public:
    explicit DetailGridView(QWidget* parent);

    DetailGridModel& cells() const { return model_; }
    void refreshLook();
    void setFontName(const QString& name);
    /// Pixels.
    void setWantedWidth(int column, int width);
    void setWantedHeight(int row, int height);

    ThemedColor highLight, text, fixed;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void copy() const;
    void layoutColumns();
    int smallestHeight() const;

    DetailGridModel& model_;
    QString fontName_;
    std::array<int, 2> wantedWidths_{0, 0};
};

/// The grid that shows an account's details.
class DetailGridControl : public QtControl<contract::DetailGrid> {
public:
    DetailGridControl(std::string_view name, QWidget* parent);

    void clear() override;
    void setRowCount(std::size_t rows) override;
    std::size_t rowCount() const override;
    void setCell(std::size_t row, std::size_t column, std::string_view text) override;
    std::string cell(std::size_t row, std::size_t column) const override;
    void setRowHeight(std::size_t row, contract::Twips height) override;
    void setColumnWidth(std::size_t column, contract::Twips width) override;

    void setFontName(std::string_view name) override;
    void setHighLightColor(contract::Color color) override;
    void setTextColor(contract::Color color) override;
    void setFixedColor(contract::Color color) override;

    QJsonObject read() const override;

private:
    /// Throws RuntimeError 30009 outside the bounds.
    void requireCell(std::size_t row, std::size_t column) const;

    DetailGridView* view_; // belongs to its parent widget
};

} // namespace platform::qt
