#include "platform/qt/forms/Guarded.h"
#include "platform/qt/tree/TreeView.h"

#include <QPainter>
#include <QPen>

#include <algorithm>

namespace platform::qt {

bool TreeView::takesHold(QPoint point) const {
    const Place place = placeAt(point);
    return place.position >= 0 && (place.part == Part::row || place.part == Part::link);
}

void TreeView::setDropMark(std::int32_t position) {
    if (dropMark_ == position)
        return;
    dropMark_ = position;
    viewport()->update();
}

void TreeView::setCutMark(std::optional<std::int64_t> key) {
    cutMark_ = key;
    viewport()->update();
}

void TreeView::openBranch(std::int32_t position) {
    if (listener_ == nullptr || !model_.hasPosition(position) || model_.isLeaf(position) || isOpen(position))
        return;
    const int rows = cellRect(position, firstVisible_).top() / std::max(1, Appearance::instance().rowHeight());
    guarded([&] { listener_->toggleExpanded(position); });
    if (model_.hasPosition(position))
        scrollRowTo(position, rows);
}

/// A whole frame where a node would come to hang, a broken one around the node that was cut: told apart without colour.
void TreeView::paintMarks(QPainter& painter, const QRect& row, std::int32_t position) const {
    const bool cut = cutMark_ && model_.key(position) == *cutMark_;
    if (position != dropMark_ && !cut)
        return;
    QPen pen(rowFocused(position) ? palette_.selectionText : palette_.accent, 2);
    if (position != dropMark_)
        pen.setStyle(Qt::DashLine);
    painter.save();
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(row.adjusted(1, 2, -2, -3));
    painter.restore();
}

} // namespace platform::qt
