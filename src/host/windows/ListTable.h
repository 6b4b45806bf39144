#pragma once

#include <QString>
#include <QTableWidget>

#include <vector>

namespace host {

/// A column of a list in the host's windows.
struct ListColumn {
    QString title;
    Qt::Alignment alignment = Qt::AlignLeft; ///< across; of the heading and of every text below it
};

/// Makes a table a list of whole rows that are only read, with these columns and no rows.
void setUpList(QTableWidget& list, const std::vector<ListColumn>& columns);
/// Puts a text into a cell, aligned as its column. The row must be there. The list owns the item.
QTableWidgetItem* setCell(QTableWidget& list, int row, int column, const QString& text);
/// Makes the columns as wide as their texts; one (0 the first) takes the room that is left.
void fitColumns(QTableWidget& list, int stretched);

} // namespace host
