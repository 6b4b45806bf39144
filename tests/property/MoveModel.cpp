#include "property/MoveModel.h"

#include <algorithm>
#include <array>
#include <deque>
#include <random>

namespace model {

namespace {

using Account = std::optional<std::int64_t>;

constexpr const char* hangsBelow = ": legame presente in un nodo padre nella struttura.\n";

/// Questions whose answers have no order of their own.
enum class Question : std::uint32_t { parents, standIn, children, overlaps };

std::int64_t idOf(const Row& row) {
    return row.id;
}

std::int64_t idOf(const Row* row) {
    return row->id;
}

class Mover {
public:
    Mover(World world, const Move& move) : world_(std::move(world)), move_(move) {}

    bool run() {
        const Row* node = byId(move_.node);
        const Row* under = byId(move_.target);
        if (!node || !under)
            return false;
        const Row moved = *node;
        const Row target = *under;
        start_ = move_.closing.plusDays(1);
        end_ = move_.fixedEnd.value_or(moved.end);
        text_ = forbidden(moved.account, target.account);
        if (text_.empty() && move_.origin == move_.destination && standsAbove(moved.id, target.id))
            text_ = "Cliente " + (moved.account ? std::to_string(*moved.account) : "") + hangsBelow;
        if (!text_.empty())
            return false;
        if (move_.withValidity) {
            // The new links share one period, so what holds for the moved node's holds for every other one.
            if (end_ < start_) {
                text_ = "Il nuovo legame finirebbe il " + end_.text() + ", prima del suo inizio il " + start_.text() +
                        ". Spostamento annullato.\n";
                return false;
            }
            text_ = copy(moved, target.id);
            if (!text_.empty())
                return false;
        }
        walk(moved.id);
        if (!refusedLinks_.empty()) {
            text_ = lastRefused_ ? refusedLinks_ : refusedLinks_ + text_;
            return false;
        }
        if (!text_.empty())
            return false;
        if (!move_.withValidity)
            if (Row* row = byId(move_.node); row && row->distinta == move_.origin) {
                row->parent = move_.target;
                row->distinta = move_.destination;
                row->moved = true;
            }
        return true;
    }

    World take() { return std::move(world_); }
    const std::string& text() const { return text_; }

private:
    Row* byId(std::int64_t id) {
        const auto at = std::find_if(world_.rows.begin(), world_.rows.end(), [id](const Row& r) { return r.id == id; });
        return at == world_.rows.end() ? nullptr : &*at;
    }

    /// Whether a row is met on the way up from another one, at most once round a ring.
    bool standsAbove(std::int64_t id, std::int64_t from) {
        const Row* row = byId(from);
        for (std::size_t steps = 0; row != nullptr && steps <= world_.rows.size(); ++steps) {
            if (row->id == id)
                return true;
            row = row->parent ? byId(*row->parent) : nullptr;
        }
        return false;
    }

    /// Rows, or pointers to rows, in the order in which this world answers the question.
    template <class Rows> void arrange(Question question, Rows& rows) const {
        if (world_.order == 0)
            return;
        const auto rank = [&](std::int64_t id) {
            std::seed_seq seed{world_.order, static_cast<std::uint32_t>(question), static_cast<std::uint32_t>(id)};
            std::array<std::uint32_t, 1> drawn{};
            seed.generate(drawn.begin(), drawn.end());
            return drawn.front();
        };
        std::sort(rows.begin(), rows.end(),
                  [&](const auto& a, const auto& b) { return rank(idOf(a)) < rank(idOf(b)); });
    }

    std::size_t countOf(std::int64_t distinta) const {
        return static_cast<std::size_t>(std::count_if(world_.rows.begin(), world_.rows.end(),
                                                      [&](const Row& r) { return r.distinta == distinta; }));
    }

    /// Account of the row that a row hangs from, as the account table knows it.
    Account accountAbove(const Row& row) {
        const Row* above = row.parent ? byId(*row.parent) : nullptr;
        if (!above || !above->account || !world_.registered.contains(*above->account))
            return std::nullopt;
        return above->account;
    }

    /// Reason why an account may not hang under another one; empty when it may.
    std::string forbidden(Account account, Account under) {
        const std::string label = "Cliente " + (account ? std::to_string(*account) : "");
        if (account && account == under)
            return label + " coincide con la destinazione. Spostamento annullato.\n";
        const std::size_t bound = countOf(move_.origin) + 1;
        std::vector<Account> seen;
        Account current = under;
        for (std::size_t head = 0; head <= seen.size(); ++head) {
            if (head >= bound)
                return {};
            if (head > 0)
                current = seen[head - 1];
            if (!current)
                continue;
            std::vector<Row> links;
            for (const Row& row : world_.rows)
                if (row.distinta == move_.destination && row.account == current)
                    links.push_back(row);
            arrange(Question::parents, links);
            std::vector<Account> above;
            above.reserve(links.size());
            for (const Row& row : links)
                above.push_back(accountAbove(row));
            if (above.empty())
                continue;
            if (above.front() && above.front() == account)
                return label + hangsBelow;
            if (above.front())
                for (const auto& each : above)
                    if (seen.size() < bound)
                        seen.push_back(each);
        }
        return {};
    }

    /// Node and account that stand for a parent in the destination.
    std::pair<std::int64_t, Account> standIn(std::int64_t parent) {
        const Row* row = byId(parent);
        if (!row || !row->account)
            return {0, 0};
        std::vector<const Row*> same;
        for (const Row& other : world_.rows)
            if (other.account == row->account && (!move_.withValidity || other.start == start_))
                same.push_back(&other);
        arrange(Question::standIn, same);
        if (world_.indexed)
            std::stable_sort(same.begin(), same.end(),
                             [](const Row* a, const Row* b) { return a->distinta < b->distinta; });
        if (same.empty())
            return {0, 0};
        return {same.front()->id, same.front()->account};
    }

    void walk(std::int64_t root) {
        const std::size_t places = countOf(move_.origin) + 1;
        std::deque<std::int64_t> open{root};
        std::size_t queued = 0;
        while (!open.empty()) {
            const auto parent = open.front();
            open.pop_front();
            const auto [standInId, standInAccount] = standIn(parent);
            if (standInId == 0)
                continue;
            std::vector<Row> children;
            for (const Row& row : world_.rows)
                if (row.parent == parent && row.distinta == move_.origin)
                    children.push_back(row);
            arrange(Question::children, children);
            for (const Row& child : children) {
                if (queued >= places)
                    return;
                ++queued;
                open.push_back(child.id);
                lastRefused_ = false;
                text_ = forbidden(child.account, standInAccount);
                if (!text_.empty())
                    continue;
                if (!move_.withValidity) {
                    Row* row = byId(child.id);
                    if (row && row->distinta == move_.origin)
                        row->distinta = move_.destination;
                } else if (child.account) {
                    text_ = copy(child, standInId);
                    if (!text_.empty()) {
                        refusedLinks_ += text_;
                        lastRefused_ = true;
                    }
                }
            }
        }
    }

    /// Closes a link and adds the new one; the reason when the new one is refused.
    std::string copy(const Row& old, std::int64_t parent) {
        if (Row* row = byId(old.id); row && row->distinta == move_.origin && row->end > move_.closing) {
            row->end = std::max(row->start, move_.closing);
            row->closed = true;
        }
        if (auto reason = overlap(*old.account, parent); !reason.empty())
            return reason;
        Row fresh;
        fresh.id = world_.nextId++;
        fresh.distinta = move_.destination;
        fresh.parent = parent;
        fresh.account = old.account;
        fresh.start = start_;
        fresh.end = end_;
        world_.rows.push_back(fresh);
        return {};
    }

    std::string overlap(std::int64_t account, std::int64_t parent) {
        std::vector<Row> links;
        for (const Row& row : world_.rows) {
            const bool touches = (row.start <= start_ && start_ <= row.end) || (row.start <= end_ && end_ <= row.end) ||
                                 (start_ <= row.start && row.end <= end_);
            if (row.account == account && touches)
                links.push_back(row);
        }
        arrange(Question::overlaps, links);
        std::stable_sort(links.begin(), links.end(),
                         [](const Row& a, const Row& b) { return a.distinta < b.distinta; });
        const std::string label = "Cliente " + std::to_string(account);
        if (!links.empty()) {
            const Row& first = links.front();
            const Row* above = first.parent ? byId(*first.parent) : nullptr;
            if (above && world_.namedDistinte.contains(above->distinta)) {
                const auto aboveAccount = accountAbove(first);
                const std::string number = aboveAccount ? std::to_string(*aboveAccount) : "";
                return label + " già legato alla distinta D" + std::to_string(above->distinta) + ": Nodo padre " +
                       number + " - " + (aboveAccount ? "Nome " + number : "") + " nel periodo dal " +
                       first.start.text() + " al " + first.end.text() + "\n";
            }
        }
        const Row* row = byId(parent);
        if (row && row->account == account)
            return label + " uguale al nodo padre, non è possibile salvare la struttura.\n";
        return {};
    }

    World world_;
    Move move_;
    contract::Date start_;
    contract::Date end_;
    std::string text_;
    std::string refusedLinks_;
    bool lastRefused_ = false;
};

} // namespace

Outcome apply(World& world, const Move& move) {
    Mover mover(world, move);
    if (!mover.run())
        return {false, mover.text()};
    world = mover.take();
    return {true, {}};
}

} // namespace model
