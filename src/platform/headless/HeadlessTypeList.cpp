#include "platform/headless/HeadlessTypeList.h"

#include "contract/RuntimeError.h"

#include <algorithm>
#include <set>

namespace platform::headless {

using contract::RuntimeError;
using contract::TypeEntry;

void HeadlessTypeList::clear() {
    entries_.clear();
    selected_.reset();
}

std::optional<std::size_t> HeadlessTypeList::find(std::string_view key) const {
    const auto at = std::find_if(entries_.begin(), entries_.end(), [&](const auto& entry) { return entry.key == key; });
    if (at == entries_.end())
        return std::nullopt;
    return static_cast<std::size_t>(at - entries_.begin());
}

void HeadlessTypeList::add(const TypeEntry& entry) {
    if (find(entry.key))
        throw RuntimeError(457, "La chiave \"" + entry.key + "\" esiste già nell'elenco.");
    if (entry.parent.empty()) {
        entries_.push_back(entry);
        return;
    }
    const auto parent = find(entry.parent);
    if (!parent)
        throw RuntimeError(35601, "Elemento \"" + entry.parent + "\" non trovato nell'elenco.");
    // Behind everything that hangs from the parent.
    std::set<std::string> family{entry.parent};
    auto at = entries_.begin() + static_cast<std::ptrdiff_t>(*parent) + 1;
    while (at != entries_.end() && family.contains(at->parent)) {
        family.insert(at->key);
        ++at;
    }
    entries_.insert(at, entry);
}

TypeEntry HeadlessTypeList::entry(std::size_t position) const {
    if (position < 1 || position > entries_.size())
        throw RuntimeError(35600, "Indice fuori dell'elenco: " + std::to_string(position) + ".");
    return entries_[position - 1];
}

TypeEntry HeadlessTypeList::entry(std::string_view key) const {
    const auto at = find(key);
    if (!at)
        throw RuntimeError(35601, "Elemento \"" + std::string(key) + "\" non trovato nell'elenco.");
    return entries_[*at];
}

std::optional<TypeEntry> HeadlessTypeList::selected() const {
    if (!selected_)
        return std::nullopt;
    return entry(std::string_view(*selected_));
}

void HeadlessTypeList::select(std::size_t position) {
    selected_ = entry(position).key;
}

bool HeadlessTypeList::clickEntry(std::string_view key) {
    if (!usable() || !find(key))
        return false;
    setFocus();
    selected_ = std::string(key);
    contract::fire(Click);
    return true;
}

} // namespace platform::headless
