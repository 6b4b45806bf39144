#include "platform/qt/tree/TreeHeader.h"

#include "platform/qt/tree/TreeView.h"

#include <QPainter>

namespace platform::qt {

namespace {
constexpr int margin = 6;
}

TreeHeader::TreeHeader(TreeView& tree) : QHeaderView(Qt::Horizontal, &tree), tree_(tree) {
    setSectionsMovable(false);
    setSectionsClickable(false);
    setStretchLastSection(false);
    setHighlightSections(false);
    setMinimumSectionSize(28);
    setSectionResizeMode(QHeaderView::Interactive);
    setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

void TreeHeader::setBandCaption(const QString& caption) {
    bandCaption_ = caption;
    updateGeometry();
    emit geometriesChanged();
    viewport()->update();
}

int TreeHeader::bandHeight() const {
    return bandCaption_.isEmpty() ? 0 : Appearance::instance().rowHeight() - 2;
}

QSize TreeHeader::sizeHint() const {
    return {QHeaderView::sizeHint().width(), bandHeight() + Appearance::instance().rowHeight() + 4};
}

void TreeHeader::paintEvent(QPaintEvent* event) {
    const auto& palette = tree_.palette();
    {
        QPainter painter(viewport());
        painter.fillRect(viewport()->rect(), palette.header);
    }
    QHeaderView::paintEvent(event);
    QPainter painter(viewport());
    const int width = viewport()->width();
    const int bottom = viewport()->height() - 1;
    painter.fillRect(QRect(length() - offset(), bandHeight(), width, bottom - bandHeight()), palette.header);
    if (bandHeight() > 0) {
        const QRect band(0, 0, width, bandHeight());
        painter.fillRect(band, palette.group);
        painter.setFont(font());
        painter.setPen(isEnabled() ? palette.groupText : palette.textDisabled);
        const QRect room = band.adjusted(margin, 0, -margin, 0);
        painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter,
                         fontMetrics().elidedText(bandCaption_, Qt::ElideRight, room.width()));
        painter.fillRect(QRect(0, bandHeight() - 1, width, 1), palette.line);
    }
    painter.fillRect(QRect(0, bottom, width, 1), palette.lineStrong);
}

void TreeHeader::paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const {
    if (!rect.isValid())
        return;
    const auto& palette = tree_.palette();
    const QRect cell = rect.adjusted(0, bandHeight(), 0, -1);
    painter->save();
    painter->fillRect(cell, palette.header);
    painter->setPen(isEnabled() ? palette.headerText : palette.textDisabled);
    painter->setFont(font());
    const int beside = tree_.inset(logicalIndex);
    const QRect room = cell.adjusted(beside, 0, -beside, 0);
    const auto alignment = model()->headerData(logicalIndex, Qt::Horizontal, Qt::TextAlignmentRole).toInt();
    const auto caption = model()->headerData(logicalIndex, Qt::Horizontal).toString();
    painter->drawText(room, alignment, fontMetrics().elidedText(caption, Qt::ElideRight, room.width()));
    painter->fillRect(QRect(cell.right(), cell.top() + 5, 1, cell.height() - 10), palette.line);
    painter->restore();
}

} // namespace platform::qt
