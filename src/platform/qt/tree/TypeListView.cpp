#include "platform/qt/tree/TypeListView.h"

#include "contract/RuntimeError.h"
#include "platform/qt/forms/Guarded.h"
#include "platform/qt/look/Appearance.h"
#include "platform/qt/tree/TreeGlyphs.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <utility>

namespace platform::qt {

using contract::RuntimeError;
using contract::TypeEntry;

namespace {

constexpr int keyExists = 457;
constexpr int elementNotFound = 35601;
constexpr int margin = 8;

} // namespace

// The entries

void TypeListModel::clear() {
    beginResetModel();
    entries_.clear();
    levels_.clear();
    endResetModel();
}

int TypeListModel::find(std::string_view key) const {
    const auto found =
        std::find_if(entries_.begin(), entries_.end(), [&](const TypeEntry& entry) { return entry.key == key; });
    return found == entries_.end() ? -1 : static_cast<int>(found - entries_.begin());
}

void TypeListModel::add(const TypeEntry& entry) {
    if (find(entry.key) >= 0)
        throw RuntimeError(keyExists, "La chiave \"" + entry.key + "\" è già presente nell'elenco delle distinte.");
    int row = count();
    int level = 0;
    if (!entry.parent.empty()) {
        const int parent = find(entry.parent);
        if (parent < 0)
            throw RuntimeError(elementNotFound, "L'elenco delle distinte non ha la voce \"" + entry.parent +
                                                    "\" sotto cui aggiungere \"" + entry.key + "\".");
        level = this->level(parent) + 1;
        row = parent + 1;
        while (row < count() && this->level(row) >= level)
            ++row;
    }
    beginInsertRows({}, row, row);
    entries_.insert(entries_.begin() + row, entry);
    levels_.insert(levels_.begin() + row, level);
    endInsertRows();
}

int TypeListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : count();
}

QVariant TypeListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || role != Qt::DisplayRole)
        return {};
    return QString::fromStdString(entry(index.row()).text);
}

// The drawing

void TypeListDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const auto& colors = Appearance::instance().colors();
    const auto& entry = model_.entry(index.row());
    const auto* view = static_cast<const TypeListView*>(&list_);
    const bool enabled = list_.isEnabled();
    const bool selected = view->selectedRow() == index.row();
    const int row = option.rect.height();
    painter->save();
    QColor ink = enabled ? colors.text : colors.textDisabled;
    if (selected) {
        // The entry whose nodes stand below: quiet, so that it does not compete with the row that a move would take.
        painter->fillRect(option.rect, enabled ? colors.surfaceAlternate : colors.line);
        painter->fillRect(QRect(option.rect.topLeft(), QSize(3, row)), enabled ? colors.accent : colors.textDisabled);
    }
    const int side = row - 8;
    const int left = option.rect.left() + margin + model_.level(index.row()) * side;
    const QRectF image(left, option.rect.top() + 4, side, side);
    const std::string& name = selected && !entry.selectedImage.empty() ? entry.selectedImage : entry.image;
    QColor line = selected ? ink : colors.textMuted;
    if (!enabled)
        line = colors.textDisabled;
    if (name == "close")
        drawGroup(*painter, image, line);
    else if (name == "schema" || name == "open")
        drawSchema(*painter, image, line, name == "open");
    QFont font = list_.font();
    font.setWeight(selected || model_.level(index.row()) == 0 ? QFont::DemiBold : QFont::Normal);
    painter->setFont(font);
    painter->setPen(ink);
    const QRect room(left + side + 6, option.rect.top(), option.rect.right() - left - side - 6 - margin, row);
    painter->drawText(room, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                      QFontMetrics(font).elidedText(QString::fromStdString(entry.text), Qt::ElideRight, room.width()));
    if (selected && enabled && list_.hasFocus()) {
        painter->setPen(QPen(colors.focusRing, 1));
        painter->setBrush(Qt::NoBrush);
        painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
    }
    painter->restore();
}

QSize TypeListDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const {
    return {60, Appearance::instance().rowHeight()};
}

// The widget

TypeListView::TypeListView(QWidget* parent) : QListView(parent), model_(*new TypeListModel(this)) {
    setModel(&model_);
    setItemDelegate(new TypeListDelegate(model_, *this));
    setUniformItemSizes(true);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setTabKeyNavigation(false);
    rest_.setSingleShot(true);
    rest_.setInterval(restMilliseconds);
    connect(&rest_, &QTimer::timeout, this, &TypeListView::choose);
    connect(&Appearance::instance(), &Appearance::changed, this, &TypeListView::refreshLook);
    refreshLook();
}

void TypeListView::refreshLook() {
    setFont(Appearance::instance().font());
    scheduleDelayedItemsLayout();
    viewport()->update();
}

void TypeListView::selectRow(int row) {
    rest_.stop();
    setCurrentIndex(model_.index(row));
    viewport()->update();
}

void TypeListView::choose() {
    rest_.stop();
    if (selectedRow() >= 0 && chosen)
        guarded([this] {
            const auto listener = chosen;
            listener();
        });
}

void TypeListView::settle() {
    if (rest_.isActive())
        choose();
}

void TypeListView::mousePressEvent(QMouseEvent* event) {
    const QModelIndex index = indexAt(event->position().toPoint());
    pressedRow_ = -1;
    if (event->button() != Qt::LeftButton || !index.isValid())
        return;
    pressedRow_ = index.row();
    selectRow(index.row());
}

void TypeListView::mouseMoveEvent(QMouseEvent*) {
    // A drag does not wander through the entries.
}

void TypeListView::mouseReleaseEvent(QMouseEvent* event) {
    const QModelIndex index = indexAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && index.isValid() && index.row() == std::exchange(pressedRow_, -1))
        choose();
}

void TypeListView::mouseDoubleClickEvent(QMouseEvent* event) {
    event->accept(); // its first click has chosen
}

void TypeListView::keyPressEvent(QKeyEvent* event) {
    const bool plain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (plain && (enter || event->key() == Qt::Key_Space) && selectedRow() >= 0) {
        event->accept();
        return choose();
    }
    const int before = selectedRow();
    QListView::keyPressEvent(event);
    if (selectedRow() != before) {
        rest_.start();
        viewport()->update();
    }
}

void TypeListView::focusInEvent(QFocusEvent* event) {
    QListView::focusInEvent(event);
    viewport()->update();
}

void TypeListView::focusOutEvent(QFocusEvent* event) {
    QListView::focusOutEvent(event);
    settle(); // whoever goes on to the tree wants the chosen type in it
    viewport()->update();
}

} // namespace platform::qt
