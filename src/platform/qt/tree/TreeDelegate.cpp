#include "platform/qt/tree/TreeDelegate.h"

#include "platform/qt/fields/CalendarEdit.h"
#include "platform/qt/look/PlainText.h"
#include "platform/qt/tree/TreeGlyphs.h"
#include "platform/qt/tree/TreeView.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>

namespace platform::qt {

using contract::TreeColumnKind;

namespace {

constexpr int leastLock = 8; ///< pixels below which a padlock is none

} // namespace

TreeDelegate::TreeDelegate(TreeView& tree) : QStyledItemDelegate(&tree), tree_(tree) {
}

void TreeDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const auto& palette = tree_.palette();
    const auto position = TreeModel::position(index);
    const auto& column = tree_.nodes().column(index.column());
    const bool enabled = tree_.isEnabled();
    const bool focusedRow = enabled && tree_.rowFocused(position);
    // The lock is the focused node's.
    const bool locked =
        tree_.rowFocused(position) && column.editable && tree_.nodes().locked(static_cast<std::size_t>(index.column()));
    painter->save();

    QColor ink = palette.text;
    if (!enabled)
        ink = palette.textDisabled;
    else if (focusedRow)
        ink = palette.selectionText;

    if (column.kind == TreeColumnKind::check) {
        const bool checked = tree_.nodes().checked(position);
        const bool filled = checked && enabled && !focusedRow;
        QColor line = focusedRow || !enabled ? ink : palette.textMuted;
        if (filled)
            line = palette.accent;
        // On the selection a box that is ticked stands out by the surface in it, as the accent may be the selection's
        // own colour; an empty one is its outline only, so that it is never taken for a ticked one.
        const QColor mark = filled ? palette.accentText : (enabled ? palette.text : ink);
        QColor fill = palette.surface;
        if (filled)
            fill = palette.accent;
        else if (focusedRow && !checked)
            fill = Qt::transparent;
        drawCheckBox(*painter, tree_.checkRect(position, index.column()), checked, line, fill, mark);
    } else {
        QRect room = tree_.contentRect(position, index.column());
        QFont font = tree_.font();
        if (tree_.rowFocused(position)) // told apart without colour too
            font.setWeight(QFont::DemiBold);
        const auto text = tree_.nodes().drawnText(position, index.column());
        if (locked) {
            // The text keeps its room: a column that has none beside it shows no lock.
            const int free = room.width() - QFontMetrics(font).horizontalAdvance(text);
            const int side = std::min({room.height() - 10, option.fontMetrics.height() - 3, free});
            if (side >= leastLock) {
                drawLock(*painter, QRectF(room.left(), room.center().y() - side / 2.0, side, side), ink);
                room.setLeft(room.left() + side);
            }
        }
        if (tree_.linkPointed(position, index.column())) {
            font.setUnderline(true);
            ink = focusedRow ? palette.selectionText : palette.link;
        }
        painter->setFont(font);
        painter->setPen(ink);
        const auto alignment = index.data(Qt::TextAlignmentRole).toInt();
        painter->drawText(room, alignment | Qt::TextSingleLine,
                          QFontMetrics(font).elidedText(text, Qt::ElideRight, room.width()));
    }

    if (focusedRow && tree_.currentIndex().column() == index.column()) {
        // The cell that the keyboard would act on; a thinner frame while the keyboard is elsewhere.
        QColor frame = palette.selectionText;
        frame.setAlpha(tree_.hasFocus() ? 230 : 110);
        painter->setPen(QPen(frame, 1));
        painter->setBrush(Qt::NoBrush);
        painter->drawRect(option.rect.adjusted(1, 1, -2, -3));
    }
    painter->restore();
}

QSize TreeDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex& index) const {
    const auto text = tree_.nodes().drawnText(TreeModel::position(index), index.column());
    return {tree_.fontMetrics().horizontalAdvance(text) + 16, Appearance::instance().rowHeight()};
}

QWidget* TreeDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex&) const {
    auto* editor = new CalendarEdit(parent);
    editor->setAlignment(Qt::AlignCenter);
    editor->setFont(tree_.font());
    editor->setFrame(false);
    editor->setAutoFillBackground(true);
    return editor;
}

void TreeDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
    auto* field = static_cast<CalendarEdit*>(editor);
    const auto text = index.data(Qt::EditRole).toString();
    field->setText(text);
    field->setProperty("shown", text);
    field->selectAll();
}

void TreeDelegate::setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const {
    auto* field = static_cast<CalendarEdit*>(editor);
    field->complete();
    // A cell that was only looked at keeps its value, whatever that is; so does one in which no date was typed.
    if (field->error().isEmpty() && field->text() != field->property("shown").toString())
        model->setData(index, field->text(), Qt::EditRole);
}

void TreeDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem&, const QModelIndex& index) const {
    QRect rect = tree_.cellRect(TreeModel::position(index), index.column());
    // A column too narrow for a date still lets it be read while it is typed.
    rect.setWidth(std::max(rect.width(), editor->sizeHint().width()));
    editor->setGeometry(rect);
}

bool TreeDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                             const QModelIndex& index) {
    if (event->type() != QEvent::ToolTip || !index.isValid())
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    const auto position = TreeModel::position(index);
    const auto kind = tree_.nodes().column(index.column()).kind;
    QString tip = tree_.path(position);
    // What does not fit stands above the node's path, unless the path holds it anyway.
    if (kind == TreeColumnKind::date || kind == TreeColumnKind::state) {
        const auto text = tree_.nodes().drawnText(position, index.column());
        if (tree_.fontMetrics().horizontalAdvance(text) > tree_.contentRect(position, index.column()).width())
            tip = text + QLatin1Char('\n') + tip;
    }
    QToolTip::showText(event->globalPos(), letters(tip), view);
    return true;
}

bool TreeDelegate::eventFilter(QObject* editor, QEvent* event) {
    auto* field = qobject_cast<CalendarEdit*>(editor);
    // A cell in which no date was typed stays open with its text; Escape leaves it as it was.
    const auto mistyped = [field] {
        if (field != nullptr)
            field->complete();
        return field != nullptr && !field->error().isEmpty();
    };
    if (event->type() == QEvent::FocusOut && mistyped())
        return false;
    if (event->type() == QEvent::KeyPress) {
        auto* widget = qobject_cast<QWidget*>(editor);
        const auto key = static_cast<QKeyEvent*>(event)->key();
        if (widget != nullptr &&
            (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Tab || key == Qt::Key_Backtab)) {
            if (mistyped())
                return true;
            // Committed here and now: what follows in a script or in the queue of keys finds the cell done.
            emit commitData(widget);
            emit closeEditor(widget, NoHint);
            return true;
        }
    }
    return QStyledItemDelegate::eventFilter(editor, event);
}

} // namespace platform::qt
