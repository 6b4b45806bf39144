#include "platform/headless/HeadlessControls.h"

#include "contract/RuntimeError.h"

#include <algorithm>

namespace platform::headless {

using contract::RuntimeError;

namespace {

[[noreturn]] void noItem(std::string_view name) {
    throw RuntimeError(RuntimeError::itemNotFound, "Nessuna voce \"" + std::string(name) + "\".");
}

void refuseTwice(bool exists, std::string_view key) {
    if (exists)
        throw RuntimeError(457, "La chiave \"" + std::string(key) + "\" esiste già.");
}

} // namespace

bool HeadlessButton::click() {
    if (!usable())
        return false;
    setFocus();
    contract::fire(ButtonClick);
    return true;
}

void HeadlessMenuButton::addItem(std::string_view key, std::string_view caption) {
    refuseTwice(std::any_of(items_.begin(), items_.end(), [&](const auto& item) { return item.first == key; }), key);
    items_.emplace_back(key, caption);
}

std::vector<std::string> HeadlessMenuButton::itemKeys() const {
    std::vector<std::string> keys;
    for (const auto& item : items_)
        keys.push_back(item.first);
    return keys;
}

const std::string& HeadlessMenuButton::itemCaption(std::string_view key) const {
    for (const auto& item : items_)
        if (item.first == key)
            return item.second;
    noItem(key);
}

bool HeadlessMenuButton::choose(std::string_view key) {
    const auto item = std::find_if(items_.begin(), items_.end(), [&](const auto& entry) { return entry.first == key; });
    if (!usable() || item == items_.end())
        return false;
    const auto chosen = item->first;
    contract::fire(MenuClick, chosen);
    return true;
}

void HeadlessPopupMenu::addItem(const contract::PopupItem& item) {
    const auto same = [&](const Entry& entry) { return entry.item.name == item.name; };
    refuseTwice(std::any_of(entries_.begin(), entries_.end(), same), item.name);
    entries_.push_back({item, true});
}

HeadlessPopupMenu::Entry& HeadlessPopupMenu::entry(std::string_view item) {
    for (auto& entry : entries_)
        if (entry.item.name == item)
            return entry;
    noItem(item);
}

void HeadlessPopupMenu::setItemEnabled(std::string_view item, bool enabled) {
    entry(item).enabled = enabled;
}

std::vector<contract::PopupItem> HeadlessPopupMenu::items() const {
    std::vector<contract::PopupItem> items;
    for (const auto& entry : entries_)
        items.push_back(entry.item);
    return items;
}

bool HeadlessPopupMenu::itemEnabled(std::string_view item) const {
    return const_cast<HeadlessPopupMenu*>(this)->entry(item).enabled;
}

bool HeadlessPopupMenu::choose(std::string_view item) {
    const auto found =
        std::find_if(entries_.begin(), entries_.end(), [&](const Entry& entry) { return entry.item.name == item; });
    if (!open_ || found == entries_.end() || !found->enabled)
        return false;
    open_ = false;
    const auto chosen = found->item.name;
    contract::fire(Click, chosen);
    return true;
}

HeadlessDetailGrid::Row& HeadlessDetailGrid::at(std::size_t row, std::size_t column) {
    if (row >= rows_.size() || column > 1)
        throw RuntimeError(30009, "Cella fuori della griglia: riga " + std::to_string(row) + ", colonna " +
                                      std::to_string(column) + ".");
    return rows_[row];
}

void HeadlessDetailGrid::setCell(std::size_t row, std::size_t column, std::string_view text) {
    at(row, column).cells[column] = text;
}

std::string HeadlessDetailGrid::cell(std::size_t row, std::size_t column) const {
    return const_cast<HeadlessDetailGrid*>(this)->at(row, column).cells[column];
}

void HeadlessDetailGrid::setRowHeight(std::size_t row, contract::Twips height) {
    at(row, 0).height = height;
}

void HeadlessDetailGrid::setColumnWidth(std::size_t column, contract::Twips width) {
    if (column > 1)
        throw RuntimeError(30009, "Colonna fuori della griglia: " + std::to_string(column) + ".");
    widths_[column] = width;
}

contract::Twips HeadlessDetailGrid::rowHeight(std::size_t row) const {
    return const_cast<HeadlessDetailGrid*>(this)->at(row, 0).height;
}

contract::Twips HeadlessDetailGrid::columnWidth(std::size_t column) const {
    return widths_.at(column);
}

void HeadlessSplitter::setUp(const Settings& settings) {
    settings_ = settings;
    setShare(settings.start);
}

void HeadlessSplitter::setShare(double percent) {
    share_ = std::clamp(percent, 0.0, 100.0);
}

bool HeadlessSplitter::drag(double percent) {
    if (!usable() || settings_.locked)
        return false;
    setShare(percent);
    contract::fire(Move);
    return true;
}

} // namespace platform::headless
