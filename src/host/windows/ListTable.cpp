#include "host/windows/ListTable.h"

#include "platform/qt/look/Appearance.h"

#include <QHeaderView>

namespace host {

namespace {
constexpr int beside = 12; ///< pixels that a column is wider than its widest text
}

void setUpList(QTableWidget& list, const std::vector<ListColumn>& columns) {
    list.setSelectionBehavior(QAbstractItemView::SelectRows);
    list.setEditTriggers(QAbstractItemView::NoEditTriggers);
    list.setShowGrid(false);
    list.setTabKeyNavigation(false);
    list.verticalHeader()->hide();
    list.verticalHeader()->setDefaultSectionSize(platform::qt::Appearance::instance().rowHeight());
    list.horizontalHeader()->setHighlightSections(false);
    list.setColumnCount(static_cast<int>(columns.size()));
    for (std::size_t i = 0; i < columns.size(); ++i) {
        auto* heading = new QTableWidgetItem(columns[i].title);
        heading->setTextAlignment(columns[i].alignment | Qt::AlignVCenter);
        list.setHorizontalHeaderItem(static_cast<int>(i), heading);
    }
}

QTableWidgetItem* setCell(QTableWidget& list, int row, int column, const QString& text) {
    auto* item = new QTableWidgetItem(text);
    item->setTextAlignment(Qt::Alignment(list.horizontalHeaderItem(column)->textAlignment()));
    list.setItem(row, column, item);
    return item;
}

void fitColumns(QTableWidget& list, int stretched) {
    list.resizeColumnsToContents();
    for (int column = 0; column < list.columnCount(); ++column)
        list.setColumnWidth(column, list.columnWidth(column) + beside);
    list.horizontalHeader()->setSectionResizeMode(stretched, QHeaderView::Stretch);
}

} // namespace host
