#include "platform/qt/fields/CalendarEdit.h"
#include "platform/qt/forms/Guarded.h"
#include "platform/qt/tree/TreeView.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDateTime>
#include <QFocusEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>

#include <utility>

namespace platform::qt {

using contract::TreeColumnKind;

namespace {

/// Holds back what the focus tells while an input is dealt with.
class InputScope {
public:
    InputScope(TreeViewListener* listener, bool byKey) : listener_(listener), byKey_(byKey) {
        if (listener_ != nullptr)
            listener_->inputBegins();
    }
    InputScope(const InputScope&) = delete;
    InputScope& operator=(const InputScope&) = delete;
    ~InputScope() {
        if (listener_ != nullptr)
            guarded([this] { listener_->inputEnds(byKey_); });
    }

private:
    TreeViewListener* listener_;
    bool byKey_;
};

} // namespace

TreeView::Place TreeView::placeAt(QPoint point) const {
    const auto position = positionAt(point.y());
    const int column = header()->logicalIndexAt(point.x());
    if (position < 0 || column < 0)
        return {position, column, Part::none};
    if (buttonRect(position).contains(point))
        return {position, column, Part::button};
    const auto& kind = model_.column(column);
    if (kind.kind == TreeColumnKind::check && checkRect(position, column).adjusted(-3, -3, 3, 3).contains(point))
        return {position, column, Part::check};
    if (kind.link && linkRect(position, column).contains(point))
        return {position, column, Part::link};
    return {position, column, Part::row};
}

void TreeView::focusPosition(std::int32_t position) {
    const int column = currentIndex().isValid() ? currentIndex().column() : firstVisible_;
    setCurrentIndex(model_.at(position, std::max(column, 0)));
}

bool TreeView::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::Leave)
        hover({}, Qt::NoModifier);
    return QTreeView::viewportEvent(event);
}

void TreeView::hover(const Place& place, Qt::KeyboardModifiers modifiers) {
    if (place == hovered_ && modifiers == hoverModifiers_)
        return;
    const auto before = std::exchange(hovered_, place);
    hoverModifiers_ = modifiers;
    showPointer();
    for (const auto& changed : {before, place})
        if (changed.part == Part::link)
            viewport()->update(cellRect(changed.position, changed.column));
}

void TreeView::showPointer() {
    viewport()->setCursor(linkOpens(hovered_, hoverModifiers_) ? Qt::PointingHandCursor : Qt::ArrowCursor);
}

/// Ctrl shows the link under a mouse that rests.
void TreeView::hoverKey(const QKeyEvent& event, bool down) {
    if (event.key() != Qt::Key_Control || hovered_.position < 0)
        return;
    const Place place = hovered_;
    hover(place, Qt::KeyboardModifiers(hoverModifiers_).setFlag(Qt::ControlModifier, down));
}

void TreeView::mousePressEvent(QMouseEvent* event) {
    const auto button = event->button();
    pressed_ = {};
    if (listener_ == nullptr || (button != Qt::LeftButton && button != Qt::RightButton))
        return;
    event->accept();
    if (auto* editor = mistypedEditor())
        return editor->setFocus(Qt::OtherFocusReason);
    const QPointer<TreeView> alive(this);
    guarded([&] { listener_->pressBegins(event->position().toPoint()); });
    press(placeAt(event->position().toPoint()), *event);
    if (alive && listener_ != nullptr)
        listener_->pressEnds();
}

/// Acts on the cell that was aimed at, wherever that is when the focus has moved and its listeners are done.
void TreeView::press(Place place, const QMouseEvent& event) {
    const auto contents = contents_;
    const QPointer<TreeView> alive(this);
    guarded([&] { listener_->flushFocus(); });
    if (!alive || listener_ == nullptr)
        return;
    if (place.part == Part::link && !linkOpens(place, event.modifiers()))
        place.part = Part::row;
    if (place.position >= 0 && contents == contents_)
        focusPressed(place, event.button());
    if (!alive || listener_ == nullptr)
        return;
    if (event.button() == Qt::LeftButton && contents == contents_) {
        pressed_ = place;
        pressedAt_ = event.position().toPoint();
    }
    guarded([&] { listener_->pressed(event.button(), event.modifiers(), event.position().toPoint()); });
}

void TreeView::focusPressed(const Place& place, Qt::MouseButton button) {
    const InputScope scope(listener_, false);
    // A row that is seen in part stays where the mouse is, for the release and for a second click.
    setAutoScroll(false);
    if (button == Qt::RightButton || place.column < 0)
        focusPosition(place.position);
    else if (place.part == Part::button)
        guarded([&] { listener_->toggleExpanded(place.position); });
    else
        setCurrentIndex(model_.at(place.position, place.column));
    setAutoScroll(true);
}

void TreeView::mouseReleaseEvent(QMouseEvent* event) {
    const Place pressed = std::exchange(pressed_, {});
    if (listener_ == nullptr || event->button() != Qt::LeftButton)
        return;
    // A mouse that has not moved still means what it pressed, even if the tree was scrolled under it.
    const QPoint point = event->position().toPoint();
    const bool still = (point - pressedAt_).manhattanLength() < QApplication::startDragDistance();
    if (!still && placeAt(point) != pressed)
        return;
    if (pressed.part == Part::check)
        toggleCheck(pressed.position);
    else if (pressed.part == Part::link)
        guarded([&] { listener_->linkClicked(pressed.position, pressed.column); });
}

void TreeView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (auto* editor = mistypedEditor())
        return editor->setFocus(Qt::OtherFocusReason);
    const Place place = placeAt(event->position().toPoint());
    // Quick clicks on a box or a button count each for itself.
    if (place.part == Part::check || place.part == Part::button || event->button() != Qt::LeftButton)
        return mousePressEvent(event);
    if (place.position >= 0 && place.column >= 0 && currentIndex() == model_.at(place.position, place.column))
        editFocused();
}

void TreeView::mouseMoveEvent(QMouseEvent* event) {
    hover(event->buttons() == Qt::NoButton ? placeAt(event->position().toPoint()) : hovered_, event->modifiers());
}

void TreeView::contextMenuEvent(QContextMenuEvent* event) {
    // The press of the button or key has done it already.
    event->accept();
}

void TreeView::toggleCheck(std::int32_t position) {
    const int column = model_.findKind(TreeColumnKind::check);
    if (column < 0 || !model_.hasPosition(position))
        return;
    const bool checked = !model_.checked(position);
    if (!model_.setData(model_.at(position, column), checked ? Qt::Checked : Qt::Unchecked, Qt::CheckStateRole))
        return;
    viewport()->update();
    guarded([&] { listener_->checkToggled(position, checked); });
}

void TreeView::keyPressEvent(QKeyEvent* event) {
    hoverKey(*event, true);
    if (pressedKey(event)) {
        event->accept();
        return;
    }
    const InputScope scope(listener_, true);
    QTreeView::keyPressEvent(event);
}

void TreeView::keyReleaseEvent(QKeyEvent* event) {
    hoverKey(*event, false);
    QTreeView::keyReleaseEvent(event);
}

bool TreeView::pressedKey(QKeyEvent* event) {
    const bool plain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    const auto focused = TreeModel::position(currentIndex());
    if (event->key() == Qt::Key_Menu || (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier)) {
        pressMenuKey(Qt::NoModifier);
        return true;
    }
    if (focused < 0 || listener_ == nullptr)
        return false;
    // Some keyboards type them with Shift.
    const bool sign = event->key() == Qt::Key_Plus || event->key() == Qt::Key_Minus || event->key() == Qt::Key_Asterisk;
    if (!plain && !(sign && (event->modifiers() & ~Qt::KeypadModifier) == Qt::ShiftModifier))
        return false;
    switch (event->key()) {
    case Qt::Key_F2:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        guarded([this] { listener_->flushFocus(); });
        return editFocused();
    case Qt::Key_Space: {
        const bool searching = !searched_.isEmpty() && QDateTime::currentMSecsSinceEpoch() - searchedAt_ <
                                                           QApplication::keyboardInputInterval();
        if (searching || model_.findKind(TreeColumnKind::check) < 0)
            return false;
        guarded([this] { listener_->flushFocus(); });
        toggleCheck(focused);
        return true;
    }
    case Qt::Key_Plus:
    case Qt::Key_Minus:
    case Qt::Key_Asterisk:
        guarded([&] { listener_->expandByKey(focused, event->key()); });
        return true;
    case Qt::Key_Left:
        if (currentIndex().column() != firstVisible_)
            moveColumn(-1);
        else if (!model_.isLeaf(focused) && isOpen(focused))
            guarded([&] { listener_->toggleExpanded(focused); });
        else if (const auto above = model_.nodes().parent(focused); above >= 0) {
            const InputScope scope(listener_, true);
            focusPosition(above);
        }
        return true;
    case Qt::Key_Right:
        if (currentIndex().column() == firstVisible_ && !model_.isLeaf(focused) && !isOpen(focused))
            guarded([&] { listener_->toggleExpanded(focused); });
        else
            moveColumn(1);
        return true;
    default:
        return typeIntoCell(event);
    }
}

void TreeView::moveColumn(int step) {
    int column = currentIndex().column() + step;
    while (column >= 0 && column < model_.columnCount() && isColumnHidden(column))
        column += step;
    if (column < 0 || column >= model_.columnCount())
        return;
    const InputScope scope(listener_, true);
    setCurrentIndex(currentIndex().siblingAtColumn(column));
}

void TreeView::pressMenuKey(Qt::KeyboardModifiers modifiers) {
    if (listener_ == nullptr || !currentIndex().isValid())
        return;
    guarded([this] { listener_->flushFocus(); });
    scrollTo(currentIndex());
    const QRect cell = cellRect(TreeModel::position(currentIndex()), currentIndex().column()) & viewport()->rect();
    if (cell.isEmpty())
        return;
    const QPointer<TreeView> alive(this);
    guarded([&] { listener_->pressBegins(cell.center()); });
    guarded([&] { listener_->pressed(Qt::RightButton, modifiers, cell.center()); });
    if (alive && listener_ != nullptr)
        listener_->pressEnds();
}

QVariant TreeView::inputMethodQuery(Qt::InputMethodQuery query) const {
    if (query != Qt::ImCursorRectangle || !currentIndex().isValid())
        return QTreeView::inputMethodQuery(query);
    const QRect cell = cellRect(TreeModel::position(currentIndex()), currentIndex().column());
    return (cell & viewport()->rect()).translated(viewport()->mapTo(this, QPoint(0, 0)));
}

bool TreeView::typeIntoCell(QKeyEvent* event) {
    const QString text = event->text();
    if (text.size() != 1 || !text.at(0).isDigit() || !model_.editable(currentIndex().column()))
        return false;
    guarded([this] { listener_->flushFocus(); });
    if (!editFocused())
        return false;
    QApplication::sendEvent(openEditor(), event);
    return true;
}

bool TreeView::editFocused() {
    const QModelIndex index = currentIndex();
    if (!index.isValid())
        return false;
    if (!model_.flags(index).testFlag(Qt::ItemIsEditable)) {
        if (listener_ != nullptr && model_.column(index.column()).editable &&
            model_.locked(static_cast<std::size_t>(index.column())))
            guarded([&] { listener_->cellLocked(TreeModel::position(index), index.column()); });
        return false;
    }
    scrollTo(index);
    if (openEditor() != nullptr)
        return true;
    editing_ = TreeModel::position(index);
    edit(index);
    return openEditor() != nullptr;
}

CalendarEdit* TreeView::mistypedEditor() const {
    auto* editor = qobject_cast<CalendarEdit*>(openEditor());
    if (editor != nullptr)
        editor->complete();
    return editor != nullptr && !editor->error().isEmpty() ? editor : nullptr;
}

QString TreeView::editError() const {
    const auto* editor = qobject_cast<CalendarEdit*>(openEditor());
    return editor != nullptr ? editor->error() : QString();
}

QWidget* TreeView::openEditor() const {
    return state() == EditingState ? indexWidget(currentIndex()) : nullptr;
}

void TreeView::commitData(QWidget* editor) {
    QTreeView::commitData(editor);
    const auto* field = qobject_cast<CalendarEdit*>(editor);
    edited_ = field == nullptr || field->error().isEmpty() ? editing_ : -1;
}

void TreeView::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
    QTreeView::closeEditor(editor, hint);
    const auto edited = std::exchange(edited_, -1);
    if (edited >= 0 && hint != QAbstractItemDelegate::RevertModelCache && listener_ != nullptr)
        guarded([&] { listener_->cellEdited(edited); });
}

void TreeView::focusInEvent(QFocusEvent* event) {
    QTreeView::focusInEvent(event);
    viewport()->update();
    if (auto* editor = mistypedEditor())
        editor->setFocus(Qt::OtherFocusReason);
}

void TreeView::focusOutEvent(QFocusEvent* event) {
    QTreeView::focusOutEvent(event);
    if (listener_ != nullptr)
        guarded([this] { listener_->flushFocus(); });
    viewport()->update();
}

void TreeView::keyboardSearch(const QString& search) {
    if (model_.count() == 0 || search.isEmpty())
        return;
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    const bool again = now - searchedAt_ < QApplication::keyboardInputInterval();
    searchedAt_ = now;
    const bool repeated = again && searched_ == search && search.size() == 1;
    searched_ = again && !repeated ? searched_ + search : search;
    // First in the column of the focus, then in names, then in codes.
    std::vector<int> columns{currentIndex().column()};
    for (const auto kind : {TreeColumnKind::text, TreeColumnKind::code})
        for (int column = 0; column < model_.columnCount(); ++column)
            if (model_.column(column).kind == kind)
                columns.push_back(column);
    for (const int column : columns) {
        const bool searchable =
            column >= 0 && !isColumnHidden(column) &&
            (model_.column(column).kind == TreeColumnKind::text || model_.column(column).kind == TreeColumnKind::code);
        if (const auto found = searchable ? findText(column) : -1; found >= 0)
            return focusPosition(found);
    }
}

std::int32_t TreeView::findText(int column) const {
    // Rows below a closed node are not on offer.
    const auto after = [this](std::int32_t at) {
        const auto next = !model_.isLeaf(at) && !isOpen(at) ? model_.nodes().subtreeEnd(at) : at + 1;
        return next < model_.count() ? next : 0;
    };
    // A longer text may still fit the focused row; a new or repeated letter goes on to the next one.
    const auto start = std::max(TreeModel::position(currentIndex()), 0);
    auto position = searched_.size() > 1 ? start : after(start);
    for (std::int32_t visited = 0; visited < model_.count(); ++visited, position = after(position))
        if (model_.text(position, column).startsWith(searched_, Qt::CaseInsensitive))
            return position;
    return -1;
}

} // namespace platform::qt
