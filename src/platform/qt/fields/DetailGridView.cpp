#include "platform/qt/fields/DetailGridControl.h"

#include "platform/qt/forms/CaptionedControl.h"
#include "platform/qt/look/PlainText.h"

#include <QClipboard>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>

namespace platform::qt {

namespace {

constexpr int margin = 6;

/// Names on the fixed colour, values on the surface; a text that is cut off shows in full under the mouse.
class CellDelegate : public QStyledItemDelegate {
public:
    explicit CellDelegate(DetailGridView& grid) : QStyledItemDelegate(&grid), grid_(grid) {}

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        const auto& theme = Appearance::instance().colors();
        const bool name = index.column() == 0;
        const bool selected = option.state.testFlag(QStyle::State_Selected) && grid_.isEnabled();
        QColor ink = grid_.text.resolve(theme.text);
        painter->save();
        if (selected) {
            painter->fillRect(option.rect, theme.selection);
            ink = grid_.highLight.resolve(theme.selectionText);
        } else if (name) {
            painter->fillRect(option.rect, grid_.fixed.resolve(theme.header));
        }
        if (!grid_.isEnabled())
            ink = theme.textDisabled;
        painter->setFont(grid_.font());
        painter->setPen(ink);
        const QRect room = option.rect.adjusted(margin, 0, -margin, 0);
        painter->drawText(room, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                          grid_.fontMetrics().elidedText(index.data().toString(), Qt::ElideRight, room.width()));
        painter->fillRect(QRect(option.rect.left(), option.rect.bottom(), option.rect.width(), 1), theme.line);
        if (name)
            painter->fillRect(QRect(option.rect.right(), option.rect.top(), 1, option.rect.height()), theme.line);
        painter->restore();
    }

    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override {
        const QString text = index.data().toString();
        if (event->type() != QEvent::ToolTip || !index.isValid() ||
            grid_.fontMetrics().horizontalAdvance(text) <= option.rect.width() - 2 * margin)
            return QStyledItemDelegate::helpEvent(event, view, option, index);
        QToolTip::showText(event->globalPos(), letters(text), view);
        return true;
    }

private:
    DetailGridView& grid_;
};

} // namespace

// The texts

void DetailGridModel::setRows(std::size_t rows) {
    beginResetModel();
    rows_.resize(rows);
    endResetModel();
}

void DetailGridModel::setText(std::size_t row, std::size_t column, std::string_view text) {
    rows_[row][column] = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    const QModelIndex changed = index(static_cast<int>(row), static_cast<int>(column));
    emit dataChanged(changed, changed);
}

int DetailGridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int DetailGridModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : 2;
}

QVariant DetailGridModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || role != Qt::DisplayRole)
        return {};
    return brief(text(static_cast<std::size_t>(index.row()), static_cast<std::size_t>(index.column())));
}

// The widget

DetailGridView::DetailGridView(QWidget* parent) : QTableView(parent), model_(*new DetailGridModel(this)) {
    setModel(&model_);
    setItemDelegate(new CellDelegate(*this));
    setShowGrid(false);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    horizontalHeader()->hide();
    verticalHeader()->hide();
    verticalHeader()->setMinimumSectionSize(1);
    horizontalHeader()->setMinimumSectionSize(1);
    connect(&Appearance::instance(), &Appearance::changed, this, &DetailGridView::refreshLook);
    refreshLook();
}

void DetailGridView::refreshLook() {
    QFont face = Appearance::instance().font();
    if (!fontName_.isEmpty() && QFontDatabase::hasFamily(fontName_))
        face.setFamily(fontName_);
    setFont(face);
    verticalHeader()->setDefaultSectionSize(Appearance::instance().rowHeight());
    layoutColumns();
    viewport()->update();
}

void DetailGridView::setFontName(const QString& name) {
    fontName_ = name;
    refreshLook();
}

int DetailGridView::smallestHeight() const {
    return fontMetrics().height() + 3; // no text is cut, whatever the form computed
}

void DetailGridView::setWantedHeight(int row, int height) {
    verticalHeader()->resizeSection(row, std::max(height, smallestHeight()));
}

void DetailGridView::setWantedWidth(int column, int width) {
    wantedWidths_[static_cast<std::size_t>(column)] = std::max(width, 0);
    layoutColumns();
}

void DetailGridView::layoutColumns() {
    // Without a word from the form the names take what the longest one needs.
    const int names = wantedWidths_[0] > 0
                          ? wantedWidths_[0]
                          : fontMetrics().horizontalAdvance(QStringLiteral("CondizioniPagamento")) + 3 * margin;
    horizontalHeader()->resizeSection(0, names);
    horizontalHeader()->resizeSection(1, std::max(wantedWidths_[1], viewport()->width() - names));
}

void DetailGridView::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    layoutColumns();
}

void DetailGridView::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy)) {
        copy();
        event->accept();
        return;
    }
    QTableView::keyPressEvent(event);
}

void DetailGridView::copy() const {
    QString copied;
    for (int row = 0; row < model_.rowCount(); ++row) {
        QStringList marked;
        for (int column = 0; column < model_.columnCount(); ++column)
            if (selectionModel()->isSelected(model_.index(row, column)))
                marked.append(model_.text(static_cast<std::size_t>(row), static_cast<std::size_t>(column)));
        if (marked.isEmpty())
            continue;
        if (!copied.isEmpty())
            copied += QLatin1Char('\n');
        copied += marked.join(QLatin1Char('\t'));
    }
    if (!copied.isEmpty())
        QGuiApplication::clipboard()->setText(copied);
}

} // namespace platform::qt
