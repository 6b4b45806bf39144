#include "contract/TypedDate.h"
#include "platform/headless/HeadlessTree.h"

#include <algorithm>
#include <utility>

namespace platform::headless {

using contract::HitCode;
using contract::Node;
using contract::Rect;
using contract::Twips;

namespace {

constexpr std::int32_t headRows = 2; // the band's and the columns' captions

} // namespace

/// The position itself when it is shown, else that of its uppermost collapsed ancestor.
std::int32_t HeadlessTree::shownPosition(std::int32_t position) const {
    auto shown = position;
    for (auto above = parent({position}); above; above = parent(above))
        if (!expanded(above))
            shown = above.position;
    return shown;
}

std::int32_t HeadlessTree::topRow() const {
    return index_.size() > 0 ? shownPosition(topRow_) : 0;
}

void HeadlessTree::setTopRow(std::int32_t position) {
    const auto positions = shown();
    if (positions.empty())
        return;
    const auto wanted =
        shownPosition(std::clamp(position, std::int32_t{0}, static_cast<std::int32_t>(index_.size()) - 1));
    const auto last = std::max(static_cast<std::ptrdiff_t>(positions.size()) - screenRows_, std::ptrdiff_t{0});
    const auto at = std::lower_bound(positions.begin(), positions.end(), wanted) - positions.begin();
    scrollTo(positions[static_cast<std::size_t>(std::min(at, last))]);
}

void HeadlessTree::scrollTo(std::int32_t position) {
    if (std::exchange(topRow_, position) != position)
        contract::fire(OnViewMoved);
}

void HeadlessTree::makeVisible(Node node) {
    if (!node)
        return;
    expandAncestors(node);
    const auto positions = shown();
    const auto place = [&](std::int32_t position) {
        return std::lower_bound(positions.begin(), positions.end(), position) - positions.begin();
    };
    const auto at = place(node.position);
    const auto top = place(topRow());
    if (at < top)
        scrollTo(node.position);
    else if (at >= top + screenRows_)
        scrollTo(positions[static_cast<std::size_t>(at - screenRows_ + 1)]);
    else
        scrollTo(positions[static_cast<std::size_t>(top)]);
}

void HeadlessTree::makeVisible(Node node, std::string_view column) {
    columnIndex(column);
    makeVisible(node);
}

contract::TreeHit HeadlessTree::hitTest(Twips x, Twips y) const {
    contract::TreeHit hit;
    if (x < 0 || y < 0)
        return hit;
    Twips left = 0;
    const contract::TreeColumn* column = nullptr;
    for (const auto& candidate : columns_) {
        if (!candidate.visible)
            continue;
        if (x < left + candidate.width) {
            column = &candidate;
            break;
        }
        left += candidate.width;
    }
    if (column) {
        hit.column = column->name;
        hit.band = bandCaption_;
    }
    const auto line = y / rowHeight - headRows;
    if (line < 0) {
        hit.code = HitCode::header;
        return hit;
    }
    const auto positions = shown();
    const auto top = std::lower_bound(positions.begin(), positions.end(), topRow());
    if (line >= positions.end() - top) {
        hit.code = HitCode::below;
        return hit;
    }
    hit.node = {*(top + line)};
    if (!column)
        hit.code = HitCode::right;
    else
        hit.code = column->kind == contract::TreeColumnKind::check ? HitCode::check : HitCode::cell;
    return hit;
}

std::optional<Rect> HeadlessTree::cell(Node node, std::string_view column) const {
    const auto at = columnIndex(column);
    if (!node || !columns_[at].visible)
        return std::nullopt;
    const auto positions = shown();
    const auto top = std::lower_bound(positions.begin(), positions.end(), topRow());
    const auto found = std::lower_bound(top, positions.end(), node.position);
    if (node.position < topRow() || found == positions.end() || *found != node.position || found - top >= screenRows_)
        return std::nullopt;
    Twips left = 0;
    for (std::size_t i = 0; i < at; ++i)
        if (columns_[i].visible)
            left += columns_[i].width;
    return Rect{left, (static_cast<Twips>(found - top) + headRows) * rowHeight, columns_[at].width, rowHeight};
}

// User

bool HeadlessTree::focusNode(Node node) {
    if (!usable() || !node)
        return false;
    setFocus();
    setFocused(node);
    return true;
}

bool HeadlessTree::focusKey(std::int64_t key, std::string_view column) {
    if (!focusNode(byKey(key)))
        return false;
    if (!column.empty())
        setFocusedColumn(column);
    return true;
}

void HeadlessTree::focusThrough(const std::vector<Node>& nodes) {
    const auto before = focused_;
    for (const auto node : nodes)
        moveFocus(node);
    if (focused_ != before)
        focusChanged();
}

void HeadlessTree::settle() {
    if (resting_)
        return;
    resting_ = true;
    contract::fire(OnChangeNodeEx);
}

bool HeadlessTree::pressMouse(contract::MouseButton button, Node node, std::string_view column, int shift) {
    if (!usable())
        return false;
    setFocus();
    if (!node) {
        const auto rows = static_cast<Twips>(std::min(shown().size(), static_cast<std::size_t>(screenRows_)));
        contract::fire(OnMouseDown, button, shift, 1, (rows + headRows) * rowHeight + 1);
        return true;
    }
    makeVisible(node);
    const auto area = cell(node, column);
    if (!area)
        return false;
    setFocused(node);
    setFocusedColumn(column);
    // Listeners may have moved the tree meanwhile; the mouse has not moved.
    contract::fire(OnMouseDown, button, shift, area->left + 1, area->top + 1);
    return true;
}

bool HeadlessTree::clickLink(Node node, std::string_view column) {
    constexpr int control = 2;
    if (!node || !pressMouse(contract::MouseButton::left, node, column, control) || !columnOf(column).link)
        return false;
    contract::fire(OnHyperLink, node, std::string(column));
    return true;
}

bool HeadlessTree::check(Node node, bool checked) {
    const auto column = std::find_if(columns_.begin(), columns_.end(), [](const auto& candidate) {
        return candidate.kind == contract::TreeColumnKind::check;
    });
    if (column == columns_.end() || !focusNode(node))
        return false;
    const std::string text = checked ? column->checkedValue : "False";
    if (value(node, column->name).text() == text)
        return true;
    setValue(node, column->name, text);
    contract::fire(OnCheckChanged, node, checked ? 1 : 0);
    return true;
}

bool HeadlessTree::columnEditable(std::string_view column) const {
    const auto at = columnIndex(column);
    return columns_[at].editable && !locked_[at];
}

bool HeadlessTree::editCell(Node node, std::string_view column, std::string_view text) {
    if (!focusNode(node))
        return false;
    setFocusedColumn(column);
    if (!columnEditable(column)) {
        if (columnOf(column).editable)
            contract::fire(OnLocked, node, std::string(column));
        return false;
    }
    contract::Value value = contract::Value::null();
    if (columnOf(column).kind != contract::TreeColumnKind::date)
        value = text;
    else if (const auto date = contract::typedOver(contract::Date::parse(text), this->value(node, column).date()))
        value = *date;
    else if (!text.empty())
        return false;
    setValue(node, column, value);
    contract::fire(OnEdited, node);
    return true;
}

} // namespace platform::headless
