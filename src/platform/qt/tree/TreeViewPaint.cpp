#include "platform/qt/tree/TreeDelegate.h"
#include "platform/qt/tree/TreeGlyphs.h"
#include "platform/qt/tree/TreeView.h"

#include <QPaintEvent>
#include <QPainter>
#include <QStyleOptionViewItem>

#include <algorithm>

namespace platform::qt {

void TreeView::paintEvent(QPaintEvent* event) {
    fetchVisibleTexts();
    {
        QPainter painter(viewport());
        painter.fillRect(event->rect(), palette_.surface);
    }
    QTreeView::paintEvent(event);
    if (model_.count() > 0 || emptyText_.isEmpty())
        return;
    QPainter painter(viewport());
    painter.setFont(font());
    painter.setPen(isEnabled() ? palette_.textMuted : palette_.textDisabled);
    painter.drawText(viewport()->rect().adjusted(24, 12, -24, -12), Qt::AlignCenter | Qt::TextWordWrap, emptyText_);
}

void TreeView::drawRow(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const auto position = TreeModel::position(index);
    const QRect row(0, option.rect.top(), viewport()->width(), option.rect.height());
    const bool focused = rowFocused(position);
    if (focused)
        painter->fillRect(row.adjusted(0, 0, 0, -1), isEnabled() ? palette_.selection : palette_.line);
    QStyleOptionViewItem cell(option);
    cell.font = font();
    cell.fontMetrics = fontMetrics();
    for (int column = 0; column < model_.columnCount(); ++column) {
        if (isColumnHidden(column))
            continue;
        cell.rect = QRect(columnViewportPosition(column), row.top(), columnWidth(column), row.height());
        if (!cell.rect.intersects(row))
            continue;
        painter->save();
        painter->setClipRect(cell.rect, Qt::IntersectClip);
        if (column == firstVisible_)
            drawBranches(painter, cell.rect, index);
        delegate_->paint(painter, cell, model_.at(position, column));
        painter->restore();
    }
    painter->fillRect(QRect(row.left(), row.bottom(), row.width(), 1), palette_.line);
    paintMarks(*painter, row, position);
}

void TreeView::drawBranches(QPainter* painter, const QRect& rect, const QModelIndex& index) const {
    const auto position = TreeModel::position(index);
    const int level = model_.nodes().level(position);
    const bool focused = rowFocused(position) && isEnabled();
    QColor guide = focused ? palette_.selectionText : palette_.line;
    if (focused)
        guide.setAlpha(90);
    QColor ink = palette_.textMuted;
    if (!isEnabled())
        ink = palette_.textDisabled;
    else if (focused)
        ink = palette_.selectionText;
    if (const int drawn = levelsDrawn(); level <= drawn) {
        for (int at = 0; at < level; ++at)
            painter->fillRect(QRect(rect.left() + at * indentation() + indentation() / 2, rect.top(), 1, rect.height()),
                              guide);
    } else {
        // Too deep for lines: the number of the level instead.
        const QRect room(rect.left() + 2, rect.top(), drawn * indentation() - 2, rect.height());
        painter->setFont(font());
        painter->setPen(ink);
        painter->drawText(room, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                          fontMetrics().elidedText(QString::number(level + 1), Qt::ElideRight, room.width()));
    }
    if (model_.isLeaf(position))
        return;
    // As large where the branches stand close.
    const QRectF button(buttonRect(position));
    const qreal side = std::max<qreal>(button.width(), rect.height() * 0.6);
    drawChevron(*painter, {button.center().x() - side / 2, button.center().y() - side / 2, side, side},
                isOpen(position), ink);
}

} // namespace platform::qt
