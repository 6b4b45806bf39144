#include "concurrent/HistoryCheck.h"

#include "concurrent/Replay.h"
#include "property/WorldDatabase.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <tuple>

namespace concurrent {

namespace {

using model::Row;
using model::World;
using Rows = std::vector<Row>;

constexpr std::int64_t freshIds = 1'000'000'000; ///< above every id of a database
constexpr std::uint32_t otherOrders = 400;
constexpr std::size_t longestPermutation = 4;

bool byId(const Row& a, const Row& b) {
    return a.id < b.id;
}

std::set<std::int64_t> idsOf(const Rows& rows) {
    std::set<std::int64_t> ids;
    for (const auto& row : rows)
        ids.insert(row.id);
    return ids;
}

/// Rows that came or changed.
Rows changes(const Rows& before, const Rows& after) {
    std::map<std::int64_t, Row> old;
    for (const auto& row : before)
        old.emplace(row.id, row);
    Rows changed;
    for (const auto& row : after) {
        const auto at = old.find(row.id);
        if (at == old.end() || !(at->second == row))
            changed.push_back(row);
    }
    return changed;
}

/// What has changed lies behind the others, as in a database that keeps versions.
Rows with(const Rows& rows, const Rows& changed) {
    const auto ids = idsOf(changed);
    Rows all;
    for (const auto& row : rows)
        if (!ids.contains(row.id))
            all.push_back(row);
    all.insert(all.end(), changed.begin(), changed.end());
    return all;
}

/// By ascending id; ids that were not known before are given anew, level by level.
Rows comparable(Rows rows, const std::set<std::int64_t>& known) {
    std::map<std::int64_t, std::int64_t> numbers;
    const auto settled = [&](std::int64_t id) { return known.contains(id) || numbers.contains(id); };
    const auto number = [&](std::int64_t id) { return numbers.contains(id) ? numbers[id] : id; };
    for (;;) {
        std::vector<std::tuple<std::int64_t, std::int64_t, std::int64_t, contract::Date, contract::Date, std::int64_t>>
            level; // parent, distinta, account, period, id
        for (const auto& row : rows)
            if (!settled(row.id) && (!row.parent || settled(*row.parent)))
                level.emplace_back(number(row.parent.value_or(0)), row.distinta, row.account.value_or(0), row.start,
                                   row.end, row.id);
        if (level.empty())
            break;
        std::sort(level.begin(), level.end());
        for (const auto& entry : level)
            numbers.emplace(std::get<5>(entry), 2 * freshIds + static_cast<std::int64_t>(numbers.size()));
    }
    for (auto& row : rows) {
        row.id = number(row.id);
        if (row.parent)
            row.parent = number(*row.parent);
    }
    std::sort(rows.begin(), rows.end(), byId);
    return rows;
}

class Checker {
public:
    Checker(const World& start, const std::vector<Rows>& states, const std::vector<Entry>& entries)
        : start_(start), states_(states), entries_(entries), commits_(states.size(), nullptr), changes_(states.size()) {
    }

    Verdict run() {
        numberCommits();
        for (const auto& entry : entries_)
            if (verdict_.problem.empty())
                checkAlone(entry);
        worlds_.push_back(world(states_.front()));
        for (std::uint32_t commit = 1; commit < states_.size() && verdict_.problem.empty(); ++commit)
            place(commit);
        return verdict_;
    }

private:
    void problem(const std::string& text) {
        if (verdict_.problem.empty())
            verdict_.problem = text;
    }

    World world(Rows rows) const {
        World made = start_;
        made.rows = std::move(rows);
        made.nextId = freshIds;
        return made;
    }

    /// A commit that was under way may have come to nothing, and its number to another one.
    std::uint32_t seenAtMost(const Entry& entry) const {
        const auto before = entry.committed ? entry.commit : static_cast<std::uint32_t>(states_.size());
        return std::min(entry.seenAtMost, before - 1);
    }

    void numberCommits() {
        for (const auto& entry : entries_) {
            if (entry.committed != (entry.commit != 0) || (entry.committed && entry.failed))
                return problem("neither kept nor refused: " + describe(entry));
            if (!entry.committed)
                continue;
            if (entry.commit >= states_.size() || commits_[entry.commit] || entry.seenAtLeast >= entry.commit)
                return problem("no commit of its own: " + describe(entry));
            commits_[entry.commit] = &entry;
            changes_[entry.commit] = changes(states_[entry.commit - 1], states_[entry.commit]);
            verdict_.overlapping += seenAtMost(entry) + 1 < entry.commit ? 1 : 0;
        }
        for (std::size_t commit = 1; commit < commits_.size(); ++commit) {
            if (!commits_[commit])
                return problem("nobody's commit " + std::to_string(commit));
            if (states_[commit].size() < states_[commit - 1].size())
                return problem("rows are missing after " + describe(*commits_[commit]));
        }
    }

    /// Whether the model does this to these rows; without rows that changed, whether it refuses.
    bool does(const World& before, const Entry& entry, const Rows* changed) {
        const auto known = idsOf(before.rows);
        const auto found = changed ? comparable(*changed, known) : Rows();
        for (std::uint32_t attempt = 0; attempt < 2 + otherOrders; ++attempt) {
            World after = before;
            after.indexed = attempt == 0;
            if (attempt == 0)
                std::sort(after.rows.begin(), after.rows.end(), byId);
            else
                after.order = attempt - 1;
            const bool kept = apply(after, entry);
            if (kept != (changed != nullptr) ||
                (kept && comparable(changes(before.rows, property::withoutMarks(after.rows)), known) != found))
                continue;
            reordered_ = attempt > 1;
            return true;
        }
        return false;
    }

    /// On one of the states that it can have seen.
    void checkAlone(const Entry& entry) {
        if (entry.failed)
            return;
        for (auto seen = entry.seenAtLeast; seen <= seenAtMost(entry); ++seen)
            if (does(world(states_[seen]), entry, entry.committed ? &changes_[entry.commit] : nullptr)) {
                verdict_.otherRowOrder += reordered_ ? 1 : 0;
                return;
            }
        problem((entry.committed ? "not what the model does: " : "not what the model refuses: ") + describe(entry) +
                "\nbefore:\n" + property::describe(states_[seenAtMost(entry)]) + "changed:\n" +
                property::describe(changes_[entry.commit]));
    }

    /// Finds the commit its place among those before it.
    void place(std::uint32_t commit) {
        const auto& entry = *commits_[commit];
        if (follow(order_.size(), {commit}))
            return;
        ++verdict_.outOfTurn;
        for (std::size_t at = order_.size(); at-- > 0 && order_[at] > entry.seenAtLeast;) {
            std::vector<std::uint32_t> behind{commit};
            behind.insert(behind.end(), order_.begin() + static_cast<std::ptrdiff_t>(at), order_.end());
            if (follow(at, behind))
                return;
        }
        for (std::size_t last = 2; last < longestPermutation && last <= order_.size(); ++last) {
            std::vector<std::uint32_t> behind(order_.end() - static_cast<std::ptrdiff_t>(last), order_.end());
            behind.push_back(commit);
            std::sort(behind.begin(), behind.end());
            do
                if (follow(order_.size() - last, behind))
                    return;
            while (std::next_permutation(behind.begin(), behind.end()));
        }
        problem("one after the other can not have done it: " + describe(entry));
    }

    /// Puts these commits behind the first ones, if the model does there what they did and the rows become the
    /// database's.
    bool follow(std::size_t first, const std::vector<std::uint32_t>& behind) {
        for (std::size_t later = 0; later < behind.size(); ++later)
            for (std::size_t earlier = 0; earlier < later; ++earlier)
                if (behind[later] <= commits_[behind[earlier]]->seenAtLeast)
                    return false;
        std::vector<World> worlds{worlds_[first]};
        for (const auto commit : behind) {
            if (!does(worlds.back(), *commits_[commit], &changes_[commit]))
                return false;
            worlds.push_back(world(with(worlds.back().rows, changes_[commit])));
        }
        auto reached = worlds.back().rows;
        const auto& wanted = states_[first + behind.size()];
        auto sorted = wanted;
        std::sort(reached.begin(), reached.end(), byId);
        std::sort(sorted.begin(), sorted.end(), byId);
        if (reached != sorted)
            return false;
        worlds.back().rows = wanted; // as they lie
        order_.resize(first);
        order_.insert(order_.end(), behind.begin(), behind.end());
        worlds_.resize(first);
        worlds_.insert(worlds_.end(), worlds.begin(), worlds.end());
        return true;
    }

    const World& start_;
    const std::vector<Rows>& states_;
    const std::vector<Entry>& entries_;
    std::vector<const Entry*> commits_; ///< by number; the first is none
    std::vector<Rows> changes_;         ///< of each commit
    std::vector<std::uint32_t> order_;  ///< one after the other
    std::vector<World> worlds_;         ///< before each of these, and behind the last
    bool reordered_ = false;            ///< the last that agreed needed rows in another order
    Verdict verdict_;
};

} // namespace

Verdict checkHistory(const World& start, const std::vector<Rows>& states, const std::vector<Entry>& entries) {
    return Checker(start, states, entries).run();
}

std::string describe(const Entry& entry) {
    static const char* const kinds[] = {"-", "structure", "validity", "edit"};
    std::string text = std::string(kinds[static_cast<int>(entry.kind)]) + " of " + std::to_string(entry.node) +
                       " under " + std::to_string(entry.target) + " by user " + std::to_string(entry.user);
    if (entry.commit != 0)
        text += ", commit " + std::to_string(entry.commit);
    if (entry.seenAtMost != 0)
        text += ", having seen " + std::to_string(entry.seenAtLeast) + " to " + std::to_string(entry.seenAtMost);
    return text;
}

} // namespace concurrent
