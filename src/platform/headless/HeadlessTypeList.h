#pragma once

#include "contract/Controls.h"
#include "platform/headless/HeadlessControl.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform::headless {

/// A type list without a screen. Its entries are held in display order: parents before their children, entries of one
/// parent in the order in which they were added.
class HeadlessTypeList : public HeadlessControl<contract::TypeList> {
public:
    using HeadlessControl::HeadlessControl;

    void clear() override;
    void add(const contract::TypeEntry& entry) override;
    std::size_t count() const override { return entries_.size(); }
    contract::TypeEntry entry(std::size_t position) const override;
    contract::TypeEntry entry(std::string_view key) const override;
    void refresh() override { ++refreshes_; }

    std::optional<contract::TypeEntry> selected() const override;
    void select(std::size_t position) override;

    /// How often the list was drawn anew.
    int refreshes() const { return refreshes_; }

    // User

    /// Clicks an entry; false when there is none or the list is hidden or disabled.
    bool clickEntry(std::string_view key);

private:
    std::optional<std::size_t> find(std::string_view key) const;

    std::vector<contract::TypeEntry> entries_;
    std::optional<std::string> selected_;
    int refreshes_ = 0;
};

} // namespace platform::headless
