#include "platform/qt/tree/TreeHeader.h"
#include "platform/qt/tree/TreeListControl.h"

#include "platform/qt/forms/Guarded.h"

#include <QScrollBar>

#include <algorithm>
#include <string>

namespace platform::qt {

using contract::HitCode;
using contract::MouseButton;
using contract::Node;
using contract::Rect;
using contract::TreeColumnKind;
using contract::TreeHit;
using contract::Twips;

namespace {

/// Shift state as the form's handlers know it: 1 shift, 2 control, 4 alt.
int shiftState(Qt::KeyboardModifiers modifiers) {
    return (modifiers.testFlag(Qt::ShiftModifier) ? 1 : 0) | (modifiers.testFlag(Qt::ControlModifier) ? 2 : 0) |
           (modifiers.testFlag(Qt::AltModifier) ? 4 : 0);
}

} // namespace

// Screen

std::int32_t TreeListControl::topRow() const {
    return std::max(view_->positionAt(0), 0);
}

void TreeListControl::setTopRow(std::int32_t position) {
    if (model_->count() == 0)
        return;
    view_->scrollRowTo(nearestShown(std::clamp(position, 0, model_->count() - 1)), 0);
}

HitCode TreeListControl::hitCode(QPoint point, std::int32_t position, int column) const {
    if (position < 0)
        return HitCode::below;
    if (column < 0)
        return HitCode::right;
    if (view_->buttonRect(position).contains(point))
        return HitCode::button;
    if (model_->column(column).kind == TreeColumnKind::check && view_->checkRect(position, column).contains(point))
        return HitCode::check;
    return HitCode::cell;
}

TreeHit TreeListControl::hitTest(Twips x, Twips y) const {
    return aim_ && aim_->x == x && aim_->y == y ? aim_->hit : hitAt(x, y);
}

TreeHit TreeListControl::hitAt(Twips x, Twips y) const {
    TreeHit hit;
    const QPoint point(Appearance::pixels(x), Appearance::pixels(y));
    const auto name = [&](int column) {
        if (column < 0)
            return;
        hit.column = model_->column(column).name;
        hit.band = view_->bands().bandCaption().toStdString();
    };
    const QPoint inHeader = view_->header()->viewport()->mapFrom(view_, point);
    if (view_->header()->viewport()->rect().contains(inHeader)) {
        hit.code = HitCode::header;
        name(view_->header()->logicalIndexAt(inHeader));
        return hit;
    }
    const QPoint inside = view_->viewport()->mapFrom(view_, point);
    // Below the tree's own edge is still below the last row.
    if (inside.x() < 0 || inside.y() < 0 || inside.x() >= view_->viewport()->width() ||
        (inside.y() >= view_->viewport()->height() && inside.y() < view_->rowsBottom()))
        return hit;
    const auto position = view_->positionAt(inside.y());
    const int column = view_->header()->logicalIndexAt(inside.x());
    hit.node = {position};
    hit.code = hitCode(inside, position, column);
    name(column);
    return hit;
}

std::optional<Rect> TreeListControl::cell(Node node, std::string_view column) const {
    const int at = model_->findColumn(column);
    if (at < 0 || !model_->hasPosition(node.position) || nearestShown(node.position) != node.position)
        return std::nullopt;
    const QRect rect = view_->cellRect(node.position, at) & view_->viewport()->rect();
    if (rect.isEmpty())
        return std::nullopt;
    const QPoint corner = view_->viewport()->mapTo(view_, rect.topLeft());
    return Rect{Appearance::twips(corner.x()), Appearance::twips(corner.y()), Appearance::twips(rect.width()),
                Appearance::twips(rect.height())};
}

void TreeListControl::showCell(std::int32_t position, int column) {
    openAncestors(position);
    if (updates_ > 0)
        applyExpansions();
    view_->scrollTo(model_->at(position, column));
}

void TreeListControl::connectView() {
    const auto moved = [this] { viewMoved(); };
    QObject::connect(view_->verticalScrollBar(), &QScrollBar::valueChanged, &focus_, moved);
    QObject::connect(view_->horizontalScrollBar(), &QScrollBar::valueChanged, &focus_, moved);
    QObject::connect(&view_->bands(), &QHeaderView::sectionResized, &focus_, moved);
}

void TreeListControl::viewMoved() {
    if (!rebinding_)
        guarded([this] { contract::fire(OnViewMoved); });
}

void TreeListControl::update() {
    view_->viewport()->update();
    view_->header()->viewport()->update();
}

// What the widget tells

void TreeListControl::currentMoved(const QModelIndex& current, const QModelIndex& previous) {
    if (rebinding_)
        return;
    if (TreeModel::position(current) != TreeModel::position(previous)) {
        moveRecordsToFocus();
        focus_.nodeMoved();
    }
    if (current.isValid() && current.column() != previous.column())
        focus_.columnMoved();
}

void TreeListControl::inputBegins() {
    focus_.hold();
}

void TreeListControl::inputEnds(bool byKey) {
    focus_.release(byKey);
}

void TreeListControl::flushFocus() {
    focus_.flush();
}

void TreeListControl::pressBegins(QPoint point) {
    const QPoint inTree = view_->viewport()->mapTo(view_, point);
    const Twips x = Appearance::twips(inTree.x());
    const Twips y = Appearance::twips(inTree.y());
    aim_ = Aim{x, y, hitAt(x, y)};
}

void TreeListControl::pressed(Qt::MouseButton button, Qt::KeyboardModifiers modifiers, QPoint point) {
    const QPoint inTree = view_->viewport()->mapTo(view_, point);
    contract::fire(OnMouseDown, button == Qt::RightButton ? MouseButton::right : MouseButton::left,
                   shiftState(modifiers), Appearance::twips(inTree.x()), Appearance::twips(inTree.y()));
}

void TreeListControl::linkClicked(std::int32_t position, int column) {
    const std::string name = model_->column(column).name;
    contract::fire(OnHyperLink, Node{position}, name);
}

void TreeListControl::checkToggled(std::int32_t position, bool checked) {
    contract::fire(OnCheckChanged, Node{position}, checked ? 1 : 0);
}

void TreeListControl::cellEdited(std::int32_t position) {
    contract::fire(OnEdited, Node{position});
}

void TreeListControl::cellLocked(std::int32_t position, int column) {
    const std::string name = model_->column(column).name;
    contract::fire(OnLocked, Node{position}, name);
}

void TreeListControl::toggleExpanded(std::int32_t position) {
    setExpanded({position}, !expanded({position}));
}

void TreeListControl::expandByKey(std::int32_t position, int key) {
    if (key != Qt::Key_Asterisk)
        return setExpanded({position}, key == Qt::Key_Plus);
    beginUpdate();
    for (auto at = position; at < model_->nodes().subtreeEnd(position); ++at)
        setExpanded({at}, true);
    endUpdate();
}

} // namespace platform::qt
