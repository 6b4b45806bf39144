#include "property/AuditModel.h"

#include <algorithm>
#include <cctype>
#include <functional>

namespace property::audit {

namespace {

constexpr std::int64_t company = 1;

std::string upper(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return text;
}

/// As the check of a move asks: one end lies within the other period, or the period encloses the other one.
bool overlap(const Link& tested, const Link& standing) {
    const auto within = [&](contract::Date day) { return *standing.start <= day && day <= *standing.end; };
    return within(*tested.start) || within(*tested.end) ||
           (*tested.start <= *standing.start && *tested.end >= *standing.end);
}

class Checker {
public:
    explicit Checker(const World& world) : world_(world) {}

    std::multiset<std::string> check() {
        for (const auto& link : world_.links) {
            if (link.company != company)
                continue;
            if (onCycle(link)) {
                found("cycle", link);
                continue;
            }
            checkParent(link);
            checkDates(link);
            checkAccount(link);
            checkGuid(link);
        }
        return std::move(findings_);
    }

private:
    void found(const char* rule, const Link& link) {
        findings_.insert(std::string(rule) + " " + std::to_string(link.id));
    }

    const Link* parentOf(const Link& link) const {
        for (const auto& other : world_.links)
            if (link.parent == other.id)
                return &other;
        return nullptr;
    }

    /// The links above, as far as there are any, each once.
    std::vector<const Link*> above(const Link& link) const {
        std::vector<const Link*> way;
        for (const auto* at = parentOf(link); at != nullptr; at = parentOf(*at)) {
            if (std::find(way.begin(), way.end(), at) != way.end())
                break;
            way.push_back(at);
        }
        return way;
    }

    bool onCycle(const Link& link) const {
        const auto way = above(link);
        return std::find(way.begin(), way.end(), &link) != way.end();
    }

    bool parentMissing(const Link& link) const { return link.parent && parentOf(link) == nullptr; }

    void checkParent(const Link& link) {
        if (parentMissing(link))
            found("parent-missing", link);
        const auto way = above(link);
        if (std::any_of(way.begin(), way.end(),
                        [this](const Link* other) { return parentMissing(*other) || onCycle(*other); }))
            found("unreachable", link);
        const auto* parent = parentOf(link);
        if (parent == nullptr)
            return;
        const bool elsewhere = parent->distinta != link.distinta || parent->company != link.company;
        if (elsewhere)
            found("parent-elsewhere", link);
        else if (link.hasPeriod() && parent->hasPeriod() && (*link.start < *parent->start || *link.end > *parent->end))
            found("outside-parent", link);
    }

    void checkDates(const Link& link) {
        const auto first = contract::Date::of(1900, 1, 1);
        if (!link.start || !link.end || *link.start < *first || *link.end < *first)
            found("bad-date", link);
        if (link.start && link.end && *link.end < *link.start)
            found("inverted-period", link);
    }

    bool anyOther(const Link& link, const std::function<bool(const Link&)>& holds) const {
        return std::any_of(world_.links.begin(), world_.links.end(), [&](const Link& other) {
            return other.id != link.id && other.company == link.company && other.kind && other.kind == link.kind &&
                   other.account && other.account == link.account && other.hasPeriod() && holds(other);
        });
    }

    bool hangs(const Link& link) const {
        const auto* parent = parentOf(link);
        if (parent == nullptr || !parent->distinta)
            return false;
        const auto distinta = world_.distinte.find(*parent->distinta);
        return distinta != world_.distinte.end() && distinta->second.hasCode;
    }

    void checkAccount(const Link& link) {
        const auto distinta = link.distinta ? world_.distinte.find(*link.distinta) : world_.distinte.end();
        if (distinta == world_.distinte.end() || distinta->second.company != link.company ||
            distinta->second.kind != link.kind)
            found("kind", link);
        if (link.account && (!link.kind || !world_.registry.contains({*link.kind, *link.account})))
            found("no-registry", link);
        if (!link.hasPeriod())
            return;
        if (anyOther(link, [&](const Link& other) { return hangs(other) && overlap(link, other); }))
            found("overlap", link);
        if (link.parent &&
            anyOther(link, [&](const Link& other) { return other.parent == link.parent && overlap(link, other); }))
            found("duplicate-link", link);
        checkGap(link);
    }

    /// Some link of the account has ended, none holds on the day before, and this is the first one after it.
    void checkGap(const Link& link) {
        const bool hadOne = anyOther(link, [&](const Link& other) { return *other.start < *link.start; });
        const bool covered = anyOther(link, [&](const Link& other) {
            return *other.start < *link.start && *other.end >= link.start->plusDays(-1);
        });
        const bool second =
            anyOther(link, [&](const Link& other) { return *other.start == *link.start && other.id < link.id; });
        if (hadOne && !covered && !second)
            found("gap", link);
    }

    void checkGuid(const Link& link) {
        if (link.guid.empty())
            found("guid-missing", link);
        else if (std::any_of(world_.links.begin(), world_.links.end(), [&](const Link& other) {
                     return other.id != link.id && upper(other.guid) == upper(link.guid);
                 }))
            found("guid-duplicate", link);
    }

    const World& world_;
    std::multiset<std::string> findings_;
};

} // namespace

std::multiset<std::string> findings(const World& world) {
    return Checker(world).check();
}

} // namespace property::audit
