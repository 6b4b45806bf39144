#include "platform/qt/tree/TreeView.h"

#include "platform/qt/look/PlainText.h"
#include "platform/qt/tree/TreeDelegate.h"
#include "platform/qt/tree/TreeHeader.h"

#include <QCursor>
#include <QFontDatabase>
#include <QScrollBar>
#include <QStyle>
#include <QToolTip>

#include <algorithm>

namespace platform::qt {

using contract::TreeColumnKind;

namespace {

constexpr int margin = 6;
constexpr int baseZoom = 8;
/// Deeper levels scroll into view; the first column does not grow without end.
constexpr int deepestRoom = 8;
/// Letters of a name that a narrow tree still shows, with the dots behind them, before its columns have to be scrolled.
constexpr int leastLetters = 20;

/// Width of so many letters as names have them, from the five most frequent ones.
int widthOfLetters(const QFontMetrics& font, int letters) {
    return font.horizontalAdvance(QStringLiteral("aeion")) * letters / 5;
}
/// Letters of a state in a narrow tree.
constexpr int leastStateLetters = 6;
/// Ancestors of a deep node that its path names.
constexpr int nearest = 12;

double zoomFactor() {
    return static_cast<double>(Appearance::instance().zoom()) / baseZoom;
}

} // namespace

TreeView::TreeView(QWidget* parent)
    : QTreeView(parent), model_(*new TreeModel(this)), header_(new TreeHeader(*this)),
      delegate_(new TreeDelegate(*this)) {
    setHeader(header_);
    setModel(&model_);
    setItemDelegate(delegate_);
    setUniformRowHeights(true);
    setAnimated(false);
    setRootIsDecorated(true);
    setAllColumnsShowFocus(true);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    setTabKeyNavigation(false);
    setMouseTracking(true);
    viewport()->setMouseTracking(true);
    setFrameShape(QFrame::StyledPanel);
    connect(header_, &QHeaderView::sectionResized, this, [this](int column, int, int width) {
        if (fitting_ || width <= 0 || column >= static_cast<int>(userWidths_.size()))
            return;
        userWidths_[static_cast<std::size_t>(column)] = width / zoomFactor();
        layoutColumns();
    });
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, [this] {
        if (verticalScrollBar()->isSliderDown())
            showScrollTip();
    });
    connect(verticalScrollBar(), &QScrollBar::sliderReleased, this, [] { QToolTip::hideText(); });
    connect(&Appearance::instance(), &Appearance::changed, this, &TreeView::refreshLook);
    refreshLook();
}

void TreeView::refreshLook() {
    palette_ = colors_.palette();
    QFont face = Appearance::instance().font();
    if (!fontName_.isEmpty() && QFontDatabase::hasFamily(fontName_))
        face.setFamily(fontName_);
    setFont(face);
    header_->setFont(face);
    QPalette look = QTreeView::palette();
    look.setColor(QPalette::Base, palette_.surface);
    look.setColor(QPalette::Text, palette_.text);
    look.setColor(QPalette::Highlight, palette_.selection);
    look.setColor(QPalette::HighlightedText, palette_.selectionText);
    setPalette(look);
    header_->updateGeometry();
    updateGeometries();
    scheduleDelayedItemsLayout();
    layoutColumns();
    header_->viewport()->update();
    viewport()->update();
}

void TreeView::setFontName(const QString& name) {
    fontName_ = name;
    refreshLook();
}

void TreeView::setEmptyText(const QString& text) {
    emptyText_ = text;
    viewport()->update();
}

void TreeView::columnAdded(int column) {
    userWidths_.resize(static_cast<std::size_t>(column) + 1, 0);
    const auto& added = model_.column(column);
    setColumnHidden(column, !added.visible);
    if (added.visible && firstVisible_ < 0) {
        firstVisible_ = column;
        setTreePosition(column);
    }
    if (added.visible && added.kind == TreeColumnKind::text)
        stretchColumn_ = column;
    layoutColumns();
}

void TreeView::setDepth(int levels, int digits) {
    depth_ = std::min(levels, deepestRoom);
    digits_ = std::max(digits, leastDigits);
    layoutColumns();
}

void TreeView::setUserWidths(const std::vector<double>& widths) {
    std::fill(userWidths_.begin(), userWidths_.end(), 0.0);
    std::copy_n(widths.begin(), std::min(widths.size(), userWidths_.size()), userWidths_.begin());
    layoutColumns();
}

int TreeView::inset(int column) const {
    const auto kind = model_.column(column).kind;
    // They stand in the middle of what they have.
    return kind == TreeColumnKind::date || kind == TreeColumnKind::check ? 2 : margin;
}

int TreeView::codeWidth() const {
    return fontMetrics().horizontalAdvance(QString(digits_, QLatin1Char('0')));
}

int TreeView::preferredWidth(int column) const {
    if (const double width = userWidths_[static_cast<std::size_t>(column)]; width > 0)
        return qRound(width * zoomFactor());
    const int width = qRound(Appearance::pixels(model_.column(column).width) * zoomFactor());
    if (column != firstVisible_)
        return width;
    // The deepest code stands in full behind its branches.
    return std::max(width, (depth_ + 1) * indentation() + codeWidth() + 2 * margin);
}

int TreeView::spareWidth(int column) const {
    if (userWidths_[static_cast<std::size_t>(column)] > 0 || column == stretchColumn_)
        return 0;
    const auto& shown = model_.column(column);
    int text = 0;
    if (shown.kind == TreeColumnKind::date)
        text = fontMetrics().horizontalAdvance(QStringLiteral("00/00/0000"));
    else if (shown.kind == TreeColumnKind::state)
        text = leastStateLetters * fontMetrics().averageCharWidth();
    else if (shown.kind != TreeColumnKind::check)
        return 0;
    text = std::max(text, fontMetrics().horizontalAdvance(model_.headerData(column, Qt::Horizontal).toString()));
    return std::max(preferredWidth(column) - text - 2 * inset(column) - 1, 0);
}

// Where the columns do not fit: the column of the names gives up a third of its width, but not what shows a name of
// some letters, then dates, check boxes and states give up what is free beside their texts, then the branches stand
// closer, then the names give up a half in all. Only then they have to be scrolled: the last column must not hide
// behind the scroll bar.
void TreeView::layoutColumns() {
    if (fitting_)
        return;
    fitting_ = true;
    setIndentation(std::max(12, Appearance::instance().rowHeight() / 2));
    int lacking = -viewport()->width();
    int spare = 0;
    // A column that is only just being added has no width yet.
    const int count = static_cast<int>(userWidths_.size());
    for (int column = 0; column < count; ++column) {
        if (isColumnHidden(column))
            continue;
        lacking += column == stretchColumn_ ? leastStretched() : preferredWidth(column);
        spare += spareWidth(column);
    }
    const int given = std::clamp(lacking, 0, spare);
    if (lacking > given)
        closeBranches(lacking - given);
    int others = 0;
    for (int column = 0, before = 0; column < count; ++column) {
        if (isColumnHidden(column) || column == stretchColumn_)
            continue;
        // Each gives its share; the shares together are what is given.
        const int here = before + spareWidth(column);
        const int part = spare > 0 ? given * here / spare - given * before / spare : 0;
        before = here;
        header_->resizeSection(column, preferredWidth(column) - part);
        others += header_->sectionSize(column);
    }
    if (stretchColumn_ >= 0) {
        const bool byUser = userWidths_[static_cast<std::size_t>(stretchColumn_)] > 0;
        const int room =
            std::max(viewport()->width() - others, std::min(preferredWidth(stretchColumn_) / 2, leastStretched()));
        header_->resizeSection(stretchColumn_, byUser ? leastStretched() : room);
    }
    fitting_ = false;
}

void TreeView::closeBranches(int lacking) {
    if (firstVisible_ < 0)
        return;
    const int usual = indentation();
    const int before = preferredWidth(firstVisible_);
    const int closest = std::max(8, Appearance::instance().rowHeight() / 4);
    const int perLevel = (lacking + depth_) / (depth_ + 1); // rounded up
    setIndentation(std::max(closest, usual - perLevel));
    // The user's width, or the column's own, is not for the branches to change.
    if (preferredWidth(firstVisible_) == before)
        setIndentation(usual);
}

int TreeView::leastStretched() const {
    const int wanted = preferredWidth(stretchColumn_);
    if (userWidths_[static_cast<std::size_t>(stretchColumn_)] > 0)
        return wanted;
    return std::min(wanted, std::max(wanted * 2 / 3, widthOfLetters(fontMetrics(), leastLetters) + 2 * margin));
}

std::int32_t TreeView::positionAt(int y) const {
    if (firstVisible_ < 0)
        return -1;
    return TreeModel::position(indexAt(QPoint(columnViewportPosition(firstVisible_) + 1, y)));
}

QRect TreeView::cellRect(std::int32_t position, int column) const {
    if (firstVisible_ < 0 || column < 0 || isColumnHidden(column))
        return {};
    const QRect row = visualRect(model_.at(position, firstVisible_));
    if (row.height() <= 0)
        return {};
    return {columnViewportPosition(column), row.top(), columnWidth(column), row.height()};
}

int TreeView::levelsDrawn() const {
    return std::max(0, (columnWidth(firstVisible_) - codeWidth() - 2 * margin) / std::max(1, indentation()) - 1);
}

int TreeView::indent(std::int32_t position) const {
    return (std::min(model_.nodes().level(position), levelsDrawn()) + 1) * indentation();
}

QRect TreeView::contentRect(std::int32_t position, int column) const {
    QRect cell = cellRect(position, column);
    if (cell.isEmpty())
        return {};
    if (column == firstVisible_)
        cell.setLeft(cell.left() + indent(position) - margin + 2);
    return cell.adjusted(inset(column), 0, -inset(column), -1);
}

QRect TreeView::buttonRect(std::int32_t position) const {
    if (!model_.hasPosition(position) || model_.isLeaf(position))
        return {};
    const QRect cell = cellRect(position, firstVisible_);
    return QRect(cell.left() + indent(position) - indentation(), cell.top(), indentation(), cell.height()) & cell;
}

QRect TreeView::checkRect(std::int32_t position, int column) const {
    const QRect cell = cellRect(position, column);
    const int side = std::min(cell.height() - 4, fontMetrics().height() + 2);
    return {cell.center().x() - side / 2, cell.center().y() - side / 2, side, side};
}

QRect TreeView::linkRect(std::int32_t position, int column) const {
    if (!model_.hasPosition(position) || column < 0 || !model_.column(column).link)
        return {};
    const QRect room = contentRect(position, column);
    const int width = std::min(fontMetrics().horizontalAdvance(model_.drawnText(position, column)), room.width());
    if (width <= 0)
        return {};
    const auto alignment = model_.headerData(column, Qt::Horizontal, Qt::TextAlignmentRole).toInt();
    return QStyle::alignedRect(Qt::LeftToRight, Qt::Alignment(alignment), QSize(width, room.height()), room);
}

int TreeView::rowsBottom() const {
    if (model_.count() == 0)
        return 0;
    return visualRect(model_.at(model_.lastShown(), firstVisible_)).bottom() + 1;
}

void TreeView::layOutNodes() {
    model_.layOut();
    doItemsLayout();
}

void TreeView::scrollRowTo(std::int32_t position, int rows) {
    const QModelIndex index = model_.at(position, std::max(firstVisible_, 0));
    if (!index.isValid())
        return;
    scrollTo(index, QAbstractItemView::PositionAtTop);
    if (rows != 0)
        verticalScrollBar()->setValue(verticalScrollBar()->value() - rows);
}

std::vector<std::int32_t> TreeView::visiblePositions() const {
    std::vector<std::int32_t> shown;
    const int step = Appearance::instance().rowHeight();
    for (int y = 0; y < viewport()->height(); y += step) {
        const auto position = positionAt(y);
        if (position < 0)
            break;
        shown.push_back(position);
    }
    return shown;
}

QString TreeView::nameOf(std::int32_t position) const {
    QStringList parts;
    for (const auto kind : {TreeColumnKind::code, TreeColumnKind::text})
        for (int column = 0; column < model_.columnCount(); ++column)
            if (model_.column(column).kind == kind && model_.column(column).visible)
                if (const QString part = model_.drawnText(position, column); !part.isEmpty())
                    parts.append(part);
    return parts.join(QLatin1Char(' '));
}

QString TreeView::path(std::int32_t position) const {
    std::vector<std::int32_t> named;
    auto at = position;
    for (; at >= 0 && named.size() < nearest; at = model_.nodes().parent(at))
        named.push_back(at);
    QStringList lines;
    if (at >= 0) {
        while (model_.nodes().parent(at) >= 0)
            at = model_.nodes().parent(at);
        lines.append(nameOf(at));
        lines.append(QStringLiteral("…"));
    }
    for (auto node = named.rbegin(); node != named.rend(); ++node)
        lines.append(QString(2 * lines.size(), QLatin1Char(' ')) + nameOf(*node));
    return lines.join(QLatin1Char('\n'));
}

void TreeView::fetchVisibleTexts() {
    for (int column = 0; column < model_.columnCount(); ++column)
        if (model_.column(column).kind == TreeColumnKind::state && !isColumnHidden(column))
            model_.fetchTexts(column, visiblePositions());
}

void TreeView::resizeEvent(QResizeEvent* event) {
    QTreeView::resizeEvent(event);
    layoutColumns();
}

void TreeView::reset() {
    hovered_ = pressed_ = {};
    ++contents_;
    editing_ = edited_ = dropMark_ = -1;
    cutMark_.reset();
    QTreeView::reset();
}

void TreeView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTreeView::currentChanged(current, previous);
    if (listener_ != nullptr)
        listener_->currentMoved(current, previous);
    showPointer();
    viewport()->update();
}

void TreeView::showScrollTip() {
    const int column = model_.findColumn(scrollTipColumn_);
    const auto position = positionAt(0);
    if (column < 0 || position < 0)
        return;
    const QString tip = model_.drawnText(position, column);
    const int left = verticalScrollBar()->mapToGlobal(QPoint(0, 0)).x() - fontMetrics().horizontalAdvance(tip) - 40;
    QToolTip::showText(QPoint(left, QCursor::pos().y() - 20), letters(tip), verticalScrollBar());
}

} // namespace platform::qt
