#include "platform/headless/HeadlessTree.h"

#include "contract/RuntimeError.h"

#include <algorithm>
#include <utility>

namespace platform::headless {

using contract::Node;
using contract::RuntimeError;
using contract::TreeColumn;
using contract::TreeColumnKind;

void HeadlessTree::addColumn(const TreeColumn& column) {
    columns_.push_back(column);
    locked_.push_back(false);
}

void HeadlessTree::setColor(contract::TreeColor property, contract::Color color) {
    colors_[property] = color;
}

void HeadlessTree::setHeaderColors(contract::Color background, contract::Color text) {
    headerColors_ = {background, text};
}

void HeadlessTree::setColumnColors(contract::Color background, contract::Color text) {
    columnColors_ = {background, text};
}

std::optional<contract::Color> HeadlessTree::color(contract::TreeColor property) const {
    const auto color = colors_.find(property);
    return color == colors_.end() ? std::nullopt : std::optional(color->second);
}

void HeadlessTree::bind(std::shared_ptr<contract::Recordset> records, std::string_view keyField,
                        std::string_view parentField, std::optional<std::int64_t> focusKey) {
    shared::TreeIndex index;
    index.build(*records, keyField, parentField);
    keyField_ = records->FieldIndex(keyField);
    records_ = std::move(records);
    index_ = std::move(index);
    expanded_.assign(index_.size(), true);
    for (std::int32_t at = 0; at < static_cast<std::int32_t>(index_.size()); ++at)
        expanded_[static_cast<std::size_t>(at)] = index_.level(at) + 1 < levelsOpened;
    checks_.clear();
    states_.clear();
    topRow_ = 0;
    focused_ = firstNode();
    if (focusKey && byKey(*focusKey))
        focused_ = byKey(*focusKey);
    syncCursor();
    if (focused_)
        makeVisible(focused_);
    if (focusedColumn_.empty() && focused_) {
        const auto first = std::find_if(columns_.begin(), columns_.end(), [](const auto& c) { return c.visible; });
        if (first != columns_.end())
            focusedColumn_ = first->name;
    }
    laidOut();
    focusSettled();
}

void HeadlessTree::clearNodes() {
    index_.clear();
    expanded_.clear();
    checks_.clear();
    states_.clear();
    topRow_ = 0;
    focused_ = {};
    syncCursor();
    laidOut();
    focusSettled();
}

void HeadlessTree::unbind() {
    const bool hadNodes = index_.size() > 0;
    records_.reset();
    if (hadNodes)
        clearNodes();
}

Node HeadlessTree::firstNode() const {
    return index_.size() > 0 ? Node{0} : Node{};
}

Node HeadlessTree::next(Node node) const {
    const auto after = node.position + 1;
    return node && after < static_cast<std::int32_t>(index_.size()) ? Node{after} : Node{};
}

std::int64_t HeadlessTree::key(Node node) const {
    return records_->rows().column(keyField_).integer(row(node)).value_or(0);
}

std::size_t HeadlessTree::row(Node node) const {
    return static_cast<std::size_t>(index_.row(node.position));
}

std::size_t HeadlessTree::descendants(Node node) const {
    return static_cast<std::size_t>(index_.subtreeEnd(node.position) - node.position - 1);
}

// Focus

void HeadlessTree::syncCursor() {
    if (!records_)
        return;
    if (focused_)
        records_->MoveTo(row(focused_));
    else
        records_->MoveEnd();
}

void HeadlessTree::focusChanged() {
    resting_ = false;
    contract::fire(OnChangeNode);
}

void HeadlessTree::focusSettled() {
    focusChanged();
    settle();
}

void HeadlessTree::moveFocus(Node node) {
    focused_ = node;
    makeVisible(node);
    syncCursor();
}

void HeadlessTree::setFocused(Node node) {
    if (!node)
        return;
    const bool changed = node != focused_;
    moveFocus(node);
    if (changed)
        focusChanged();
}

void HeadlessTree::setFocusedColumn(std::string_view column) {
    if (column == focusedColumn_)
        return;
    if (!column.empty())
        columnIndex(column);
    focusedColumn_ = column;
    contract::fire(OnChangedColumn, focused_);
}

// Cells

std::size_t HeadlessTree::columnIndex(std::string_view column) const {
    const auto at = std::find_if(columns_.begin(), columns_.end(), [&](const auto& c) { return c.name == column; });
    if (at == columns_.end())
        throw RuntimeError(RuntimeError::itemNotFound,
                           "L'albero " + name() + " non ha una colonna \"" + std::string(column) + "\".");
    return static_cast<std::size_t>(at - columns_.begin());
}

std::string HeadlessTree::fieldOf(std::string_view column) const {
    return columnOf(column).field;
}

std::string HeadlessTree::checkText(std::size_t column, std::size_t row) const {
    const auto cells = checks_.find(column);
    if (cells == checks_.end())
        return "False";
    const auto cell = cells->second.find(row);
    return cell == cells->second.end() ? "False" : cell->second;
}

const std::string& HeadlessTree::stateText(std::size_t column, std::size_t row) const {
    auto& cells = states_[column];
    const auto cell = cells.find(row);
    if (cell != cells.end())
        return cell->second;
    auto texts = columns_[column].texts ? columns_[column].texts({row}) : std::vector<std::string>();
    texts.resize(1);
    return cells[row] = texts.front();
}

contract::Value HeadlessTree::value(Node node, std::string_view column) const {
    const auto at = columnIndex(column);
    const auto& description = columns_[at];
    if (description.kind == TreeColumnKind::check)
        return checkText(at, row(node));
    if (description.kind == TreeColumnKind::state)
        return stateText(at, row(node));
    if (description.field.empty())
        return {};
    return records_->rows().column(records_->FieldIndex(description.field)).value(row(node));
}

void HeadlessTree::setValue(Node node, std::string_view column, const contract::Value& value) {
    const auto at = columnIndex(column);
    const auto& description = columns_[at];
    if (description.kind == TreeColumnKind::check)
        checks_[at][row(node)] = value.text();
    else if (description.kind == TreeColumnKind::state)
        states_[at][row(node)] = value.text();
    else if (!description.field.empty())
        records_->SetValue(row(node), records_->FieldIndex(description.field), value);
}

void HeadlessTree::setColumnLocked(std::size_t position, bool locked) {
    if (position >= locked_.size())
        throw RuntimeError(RuntimeError::itemNotFound,
                           "L'albero " + name() + " non ha una colonna " + std::to_string(position) + ".");
    locked_[position] = locked;
}

bool HeadlessTree::columnLocked(std::size_t position) const {
    if (position >= locked_.size())
        throw RuntimeError(RuntimeError::itemNotFound,
                           "L'albero " + name() + " non ha una colonna " + std::to_string(position) + ".");
    return locked_[position];
}

std::vector<std::size_t> HeadlessTree::rowsOnScreen() const {
    const auto positions = shown();
    const auto top = std::lower_bound(positions.begin(), positions.end(), topRow());
    std::vector<std::size_t> rows;
    for (auto at = top; at != positions.end() && static_cast<std::int32_t>(rows.size()) < screenRows_; ++at)
        rows.push_back(row({*at}));
    return rows;
}

void HeadlessTree::askStates(std::size_t column) {
    auto rows = rowsOnScreen();
    auto& known = states_[column];
    std::erase_if(rows, [&](std::size_t row) { return known.contains(row); });
    if (rows.empty() || !columns_[column].texts)
        return;
    auto texts = columns_[column].texts(rows);
    texts.resize(rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i)
        known[rows[i]] = texts[i];
}

void HeadlessTree::refreshColumn(std::string_view column) {
    const auto at = columnIndex(column);
    states_.erase(at);
    askStates(at);
}

void HeadlessTree::draw() {
    for (std::size_t column = 0; column < columns_.size(); ++column)
        if (columns_[column].kind == TreeColumnKind::state && columns_[column].visible)
            askStates(column);
}

// Expansion

bool HeadlessTree::expanded(Node node) const {
    return expanded_[static_cast<std::size_t>(node.position)] && index_.subtreeEnd(node.position) > node.position + 1;
}

void HeadlessTree::setExpanded(Node node, bool expanded) {
    expanded_[static_cast<std::size_t>(node.position)] = expanded;
    laidOut();
}

void HeadlessTree::laidOut() {
    if (updates_ > 0) {
        layoutDue_ = true;
        return;
    }
    ++layouts_;
    // A hidden node cannot keep the focus.
    if (focused_)
        setFocused({shownPosition(focused_.position)});
    contract::fire(OnViewMoved);
}

void HeadlessTree::endUpdate() {
    if (updates_ > 0 && --updates_ == 0 && std::exchange(layoutDue_, false))
        laidOut();
}

void HeadlessTree::expandAncestors(Node node) {
    bool opened = false;
    for (auto above = parent(node); above; above = parent(above))
        if (!expanded(above)) {
            expanded_[static_cast<std::size_t>(above.position)] = true;
            opened = true;
        }
    if (opened)
        laidOut();
}

std::vector<std::int32_t> HeadlessTree::shown() const {
    std::vector<std::int32_t> positions;
    const auto count = static_cast<std::int32_t>(index_.size());
    for (std::int32_t at = 0; at < count; at = expanded({at}) ? at + 1 : index_.subtreeEnd(at))
        positions.push_back(at);
    return positions;
}

} // namespace platform::headless
