#include "host/demo/DemoCompany.h"

#include <algorithm>
#include <utility>

namespace host::demo {

using contract::Date;

namespace {

/// Accounts that the demo wants without a registry entry, sales data or agent: one in so many.
constexpr std::size_t oneWithoutRegistry = 97;
constexpr std::size_t oneWithoutSalesData = 31;
constexpr std::size_t oneWithoutAgent = 11;
constexpr std::size_t oneWithoutBank = 13;

Date day(int year, int month, int dayOfMonth) {
    return Date::of(year, month, dayOfMonth).value_or(Date());
}

const Date openEnd = day(2099, 12, 31);
/// The first day of links whose account had another link before.
const Date secondStart = day(2023, 1, 1);

} // namespace

std::int64_t Accounts::addRegistry(const std::string& name, const Place& place) {
    const auto code = static_cast<std::int64_t>(data_.registry.size()) + 1;
    DemoRegistry entry;
    entry.code = code;
    entry.name = name;
    entry.address = address(sequence_);
    entry.city = place.town;
    entry.province = place.province;
    entry.phone = phone(sequence_, place);
    if (sequence_.oneIn(3))
        entry.fax = phone(sequence_, place);
    data_.registry.push_back(entry);
    return code;
}

std::int64_t Accounts::addHead(int kind, std::int64_t code, const std::string& name) {
    DemoAccount account;
    account.company = company_;
    account.kind = kind;
    account.code = code;
    account.place = sequence_.below(placeCount);
    account.trade = sequence_.below(tradeCount);
    account.registry = addRegistry(name, places()[account.place]);
    account.salesData = false;
    data_.accounts.push_back(account);
    return code;
}

std::vector<std::int64_t> Accounts::addTrading(int kind, std::int64_t first, std::size_t count) {
    const auto& trades = kind == 0 ? customerTrades() : supplierTrades();
    std::vector<std::int64_t> codes;
    codes.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        DemoAccount account;
        account.company = company_;
        account.kind = kind;
        account.code = first + static_cast<std::int64_t>(i);
        account.place = sequence_.below(placeCount);
        account.trade = sequence_.below(tradeCount);
        // The second customer of the first company carries the longest name that windows must bear.
        const bool longest = company_ == 1 && kind == 0 && i == 1;
        if (longest || !sequence_.oneIn(oneWithoutRegistry))
            account.registry = addRegistry(longest ? longestName() : companyName(sequence_, trades[account.trade]),
                                           places()[account.place]);
        account.payment = payments()[sequence_.below(payments().size())].code;
        if (!sequence_.oneIn(oneWithoutBank))
            account.bank = sequence_.below(banks().size());
        if (agents_ > 0 && kind == 0 && !sequence_.oneIn(oneWithoutAgent))
            account.agent = static_cast<std::int64_t>(1 + sequence_.below(agents_));
        account.salesData = !sequence_.oneIn(oneWithoutSalesData);
        data_.accounts.push_back(account);
        codes.push_back(account.code);
    }
    return codes;
}

void Accounts::addAgents(std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        const auto id = static_cast<std::int64_t>(i) + 1;
        const Place& place = places()[sequence_.below(placeCount)];
        const std::string code = "A" + std::string(id < 10 ? "00" : id < 100 ? "0" : "") + std::to_string(id);
        data_.agents.push_back({company_, id, code, addRegistry(personName(sequence_), place)});
    }
    agents_ = count;
}

Distinta::Distinta(DemoData& data, Sequence& sequence, const DemoType& type, std::size_t size)
    : data_(data), sequence_(sequence), type_(type), size_(size), first_(data.nodes.size()) {
    data_.types.push_back(type);
}

std::optional<std::size_t> Distinta::add(std::optional<std::size_t> parent, std::optional<std::int64_t> account,
                                         const std::string& description) {
    if (room() == 0)
        return std::nullopt;
    DemoNode added;
    added.id = static_cast<std::int64_t>(data_.nodes.size()) + 1;
    added.type = type_.id;
    added.company = type_.company;
    added.kind = type_.kind;
    added.account = account;
    added.description = description;
    added.from = day(2015 + static_cast<int>(sequence_.below(8)), 1 + static_cast<int>(sequence_.below(12)), 1);
    added.to = sequence_.oneIn(20) ? day(2027 + static_cast<int>(sequence_.below(4)), 12, 31) : openEnd;
    if (parent) {
        const DemoNode& above = node(*parent);
        added.parent = above.id;
        hasChildren_[*parent] = true;
        // No link outlasts its parent's.
        added.from = std::max(added.from, above.from);
        added.to = std::min(added.to, above.to);
    }
    added.guid = guid(sequence_);
    constexpr std::array<std::int64_t, 10> usual{2, 2, 2, 2, 2, 2, 1, 1, 3, 4};
    added.state = sequence_.oneIn(6) ? 0 : usual[sequence_.below(usual.size())];
    data_.nodes.push_back(added);
    depths_.push_back(parent ? depths_[*parent] + 1 : 0);
    hasChildren_.push_back(false);
    return made_++;
}

void Distinta::addPast(const std::vector<std::size_t>& parents, std::size_t count) {
    // Both links of such an account are leaves, and the parents given are not: no path meets the account twice.
    const std::size_t present = made_;
    for (std::size_t position = 0; position < present && count > 0 && room() > 0 && !parents.empty(); ++position) {
        const std::size_t parent = parents[sequence_.below(parents.size())];
        if (hasChildren_[position] || depths_[position] == 0 || !node(position).account || parent == position)
            continue;
        node(position).from = secondStart;
        const auto past = add(parent, node(position).account);
        node(*past).to = secondStart.plusDays(-1);
        --count;
    }
}

} // namespace host::demo
