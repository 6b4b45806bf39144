#include "platform/qt/tree/TreeListControl.h"

#include "contract/RuntimeError.h"
#include "platform/qt/look/PlainText.h"
#include "platform/qt/tree/TreeHeader.h"

#include <algorithm>
#include <string>
#include <utility>

namespace platform::qt {

using contract::Node;
using contract::RuntimeError;
using contract::TreeColumnKind;
using contract::Value;

TreeListControl::TreeListControl(std::string_view name, QWidget* parent)
    : QtControl(name, new TreeView(parent)), view_(static_cast<TreeView*>(widget_.data())), model_(&view_->nodes()) {
    view_->setListener(this);
    connectView();
    QObject::connect(view_, &QObject::destroyed, &focus_, [this] { focus_.forget(); });
    focus_.changed = [this] { contract::fire(OnChangeNode); };
    focus_.rested = [this] { contract::fire(OnChangeNodeEx); };
    focus_.columnChanged = [this] { contract::fire(OnChangedColumn, focused()); };
}

TreeListControl::~TreeListControl() {
    if (widget_)
        view_->setListener(nullptr);
}

// Set-up

void TreeListControl::setBandCaption(std::string_view caption) {
    view_->bands().setBandCaption(text(caption));
    view_->setAccessibleName(text(caption));
}

void TreeListControl::addColumn(const contract::TreeColumn& column) {
    model_->addColumn(column);
    view_->columnAdded(model_->columnCount() - 1);
}

const std::vector<contract::TreeColumn>& TreeListControl::columns() const {
    return model_->columns();
}

void TreeListControl::setScrollTipColumn(std::string_view column) {
    view_->setScrollTipColumn(std::string(column));
}

void TreeListControl::setFontName(std::string_view name) {
    view_->setFontName(text(name));
}

void TreeListControl::setColor(contract::TreeColor property, contract::Color color) {
    view_->colors().set(property, color);
    view_->refreshLook();
}

void TreeListControl::setHeaderColors(contract::Color background, contract::Color text) {
    view_->colors().setHeader(background, text);
    view_->refreshLook();
}

void TreeListControl::setColumnColors(contract::Color background, contract::Color text) {
    view_->colors().setColumn(background, text);
    view_->refreshLook();
}

void TreeListControl::setEmptyText(std::string_view value) {
    view_->setEmptyText(text(value));
}

// Data

void TreeListControl::bind(std::shared_ptr<contract::Recordset> records, std::string_view keyField,
                           std::string_view parentField, std::optional<std::int64_t> focusKey) {
    focus_.forget();
    forgetAim();
    changed_ = false;
    rebinding_ = true;
    try {
        model_->bind(std::move(records), keyField, parentField);
    } catch (...) {
        rebinding_ = false;
        throw;
    }
    const auto count = model_->count();
    int deepest = 0;
    for (std::int32_t at = 0; at < count; ++at)
        deepest = std::max(deepest, model_->nodes().level(at));
    view_->setDepth(deepest, model_->digits(view_->treeColumn()));
    if (count > 0) {
        const Node wanted = focusKey ? byKey(*focusKey) : Node{};
        openAncestors(wanted ? wanted.position : 0);
        applyExpansions();
        view_->focusPosition(wanted ? wanted.position : 0);
    }
    rebinding_ = false;
    moveRecordsToFocus();
    view_->viewport()->update();
    focus_.raiseAll();
}

void TreeListControl::clearNodes() {
    focus_.forget();
    forgetAim();
    changed_ = false;
    rebinding_ = true;
    model_->clearNodes();
    rebinding_ = false;
    moveRecordsToFocus();
    view_->viewport()->update();
    focus_.raiseAll();
}

void TreeListControl::unbind() {
    if (model_->count() > 0)
        clearNodes(); // the focus goes, and is seen to go
    focus_.forget();
    forgetAim();
    changed_ = false;
    rebinding_ = true;
    model_->unbind();
    rebinding_ = false;
    view_->viewport()->update();
}

std::shared_ptr<contract::Recordset> TreeListControl::records() const {
    return model_->records();
}

void TreeListControl::moveRecordsToFocus() {
    const auto& records = model_->records();
    if (!records)
        return;
    if (const Node node = focused())
        records->MoveTo(row(node));
    else
        records->MoveEnd();
}

// Nodes

std::int32_t TreeListControl::checkedPosition(Node node) const {
    if (!model_->hasPosition(node.position))
        throw RuntimeError(RuntimeError::invalidCall, "L'albero \"" + name_ + "\" non ha il nodo indicato.");
    return node.position;
}

int TreeListControl::columnNamed(std::string_view column) const {
    const int position = model_->findColumn(column);
    if (position < 0)
        throw RuntimeError(RuntimeError::itemNotFound,
                           "L'albero \"" + name_ + "\" non ha la colonna \"" + std::string(column) + "\".");
    return position;
}

std::size_t TreeListControl::nodeCount() const {
    return model_->nodes().size();
}

Node TreeListControl::firstNode() const {
    return {model_->count() > 0 ? 0 : -1};
}

Node TreeListControl::next(Node node) const {
    return {node && node.position + 1 < model_->count() ? node.position + 1 : -1};
}

int TreeListControl::level(Node node) const {
    return model_->nodes().level(checkedPosition(node));
}

Node TreeListControl::parent(Node node) const {
    return {model_->nodes().parent(checkedPosition(node))};
}

Node TreeListControl::byKey(std::int64_t key) const {
    return {model_->nodes().find(key)};
}

std::int64_t TreeListControl::key(Node node) const {
    return model_->key(checkedPosition(node));
}

std::size_t TreeListControl::row(Node node) const {
    return static_cast<std::size_t>(model_->nodes().row(checkedPosition(node)));
}

std::size_t TreeListControl::descendants(Node node) const {
    const auto position = checkedPosition(node);
    return static_cast<std::size_t>(model_->nodes().subtreeEnd(position) - position - 1);
}

Node TreeListControl::focused() const {
    return {TreeModel::position(view_->currentIndex())};
}

void TreeListControl::setFocused(Node node) {
    if (!node)
        return; // a tree with nodes always has a focused one
    focusRow(checkedPosition(node));
}

void TreeListControl::focusRow(std::int32_t position, std::optional<int> column) {
    openAncestors(position);
    if (updates_ > 0)
        applyExpansions();
    focus_.hold();
    if (column)
        view_->setCurrentIndex(model_->at(position, *column));
    else
        view_->focusPosition(position);
    view_->scrollTo(view_->currentIndex());
    moveRecordsToFocus();
    focus_.release(false);
}

void TreeListControl::makeVisible(Node node) {
    showCell(checkedPosition(node), std::max(view_->treeColumn(), 0));
}

void TreeListControl::makeVisible(Node node, std::string_view column) {
    const int at = columnNamed(column);
    showCell(checkedPosition(node), at);
}

std::string TreeListControl::focusedColumn() const {
    const QModelIndex current = view_->currentIndex();
    return current.isValid() ? model_->column(current.column()).name : std::string();
}

void TreeListControl::setFocusedColumn(std::string_view column) {
    const int position = columnNamed(column);
    if (const Node node = focused())
        focusRow(node.position, position);
}

Value TreeListControl::value(Node node, std::string_view column) const {
    const int at = columnNamed(column);
    const auto position = checkedPosition(node);
    if (model_->column(at).kind == TreeColumnKind::state)
        model_->fetchTexts(at, {position});
    return model_->value(position, at);
}

void TreeListControl::setValue(Node node, std::string_view column, const Value& value) {
    const int at = columnNamed(column);
    model_->setValue(checkedPosition(node), at, value);
    view_->viewport()->update();
}

std::string TreeListControl::fieldOf(std::string_view column) const {
    return model_->column(columnNamed(column)).field;
}

// Expansion

bool TreeListControl::expanded(Node node) const {
    return model_->isOpen(checkedPosition(node));
}

void TreeListControl::setExpanded(Node node, bool expanded) {
    const auto position = checkedPosition(node);
    if (model_->isLeaf(position) || model_->isOpen(position) == expanded)
        return;
    model_->setOpen(position, expanded);
    changed_ = true;
    if (updates_ == 0)
        applyExpansions();
}

void TreeListControl::beginUpdate() {
    ++updates_;
}

void TreeListControl::endUpdate() {
    if (updates_ > 0 && --updates_ == 0)
        applyExpansions();
}

void TreeListControl::applyExpansions() {
    if (!changed_)
        return;
    changed_ = false;
    // The row on which the user's eye rests stays at its height: the focused one if it is on screen, else the top one.
    const auto shownAt = [this](std::int32_t position) {
        return view_->cellRect(position, std::max(view_->treeColumn(), 0)).top();
    };
    const auto visible = view_->visiblePositions();
    const auto before = focused().position;
    const auto after = nearestShown(before);
    auto anchor = after;
    if (std::find(visible.begin(), visible.end(), before) == visible.end())
        anchor = visible.empty() ? -1 : nearestShown(visible.front());
    const int rowHeight = std::max(1, Appearance::instance().rowHeight());
    const int height = anchor < 0 ? 0 : shownAt(anchor) / rowHeight;
    // A node that is about to be hidden hands the focus to the one that is still shown. It is told when all is done.
    focus_.hold();
    if (after != before)
        view_->focusPosition(after);
    view_->layOutNodes();
    if (anchor >= 0)
        view_->scrollRowTo(anchor, height);
    if (after != before)
        view_->scrollTo(view_->currentIndex());
    focus_.release(false);
    viewMoved();
}

std::int32_t TreeListControl::nearestShown(std::int32_t position) const {
    auto shown = position;
    for (auto above = position < 0 ? -1 : model_->nodes().parent(position); above >= 0;
         above = model_->nodes().parent(above))
        if (!model_->isOpen(above))
            shown = above;
    return shown;
}

void TreeListControl::openAncestors(std::int32_t position) {
    ++updates_;
    for (auto above = model_->nodes().parent(position); above >= 0; above = model_->nodes().parent(above))
        setExpanded({above}, true);
    endUpdate();
}

// Columns

void TreeListControl::setColumnLocked(std::size_t position, bool locked) {
    columnLocked(position);
    if (model_->locked(position) == locked)
        return;
    model_->setLocked(position, locked);
    view_->viewport()->update();
}

bool TreeListControl::columnLocked(std::size_t position) const {
    if (position >= model_->columns().size())
        throw RuntimeError(RuntimeError::itemNotFound, "L'albero \"" + name_ + "\" non ha una colonna in posizione " +
                                                           std::to_string(position) + ".");
    return model_->locked(position);
}

std::map<QString, double> TreeListControl::columnWidths() const {
    std::map<QString, double> widths;
    for (std::size_t at = 0; at < model_->columns().size(); ++at)
        if (const double width = view_->userWidths()[at]; width > 0)
            widths[QString::fromStdString(model_->columns()[at].name)] = width;
    return widths;
}

void TreeListControl::setColumnWidths(const std::map<QString, double>& widths) {
    std::vector<double> given;
    for (const auto& column : model_->columns()) {
        const auto at = widths.find(QString::fromStdString(column.name));
        given.push_back(at == widths.end() ? 0.0 : at->second);
    }
    view_->setUserWidths(given);
}

void TreeListControl::refreshColumn(std::string_view column) {
    model_->forgetTexts(columnNamed(column));
    if (view_->isVisible())
        view_->fetchVisibleTexts();
    view_->viewport()->update();
}

} // namespace platform::qt
