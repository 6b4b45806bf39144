#include "host/demo/DemoModel.h"

#include "host/demo/DemoCompany.h"

#include <algorithm>
#include <string>

namespace host {

using namespace demo;

namespace {

constexpr int customers = 0;
constexpr int suppliers = 1;

std::string text(std::string_view view) {
    return std::string(view);
}

/// Makes the companies one after the other; the members are what several of their distinte share.
class Maker {
public:
    explicit Maker(std::size_t largest) : largest_(largest) {}

    DemoData make() {
        makeFirstCompany();
        makeSecondCompany();
        makeBonuses();
        return std::move(data_);
    }

private:
    std::size_t atMost(std::size_t size) const { return std::min(size, largest_); }

    DemoType type(std::int64_t company, const char* code, const char* description, int kind,
                  const char* division = "") {
        return {static_cast<std::int64_t>(data_.types.size()) + 1,
                company,
                code,
                description,
                kind,
                division,
                guid(sequence_)};
    }

    /// Puts accounts under the parents given, some of them under accounts placed before, down to a depth.
    void hang(Distinta& distinta, const std::vector<std::size_t>& parents, const std::vector<std::int64_t>& accounts,
              std::size_t oneBelowAnother, int deepest) {
        std::vector<std::size_t> placed;
        for (const auto account : accounts) {
            if (distinta.room() == 0)
                return;
            std::optional<std::size_t> parent;
            if (!parents.empty())
                parent = parents[sequence_.below(parents.size())];
            if (!placed.empty() && sequence_.oneIn(oneBelowAnother)) {
                const std::size_t other =
                    placed[placed.size() - 1 - sequence_.below(std::min<std::size_t>(placed.size(), 8))];
                if (distinta.depth(other) < deepest)
                    parent = other;
            }
            if (const auto position = distinta.add(parent, account))
                placed.push_back(*position);
        }
    }

    void makeFirstCompany() {
        Accounts accounts(data_, sequence_, 1);
        accounts.addAgents(std::clamp<std::size_t>(largest_ / 40, 3, 300));
        trading_ = accounts.addTrading(customers, 10001, largest_ + std::max<std::size_t>(30, largest_ / 10));
        makeAgents(accounts);
        makeGroups(accounts);
        makeZones(accounts);
        makeChannels(accounts);
        { const Distinta empty(data_, sequence_, type(1, "NV", "Nuovi clienti", customers), 0); }
        makeDeep(accounts);
        const auto sellers = accounts.addTrading(suppliers, 50001, std::max<std::size_t>(60, largest_ / 5));
        makeSuppliers(accounts, 1, sellers);
    }

    void makeAgents(Accounts& accounts) {
        Distinta distinta(data_, sequence_, type(1, "AG", "Agenti", customers), largest_);
        std::vector<std::size_t> heads;
        std::vector<std::size_t> agents;
        const std::size_t headCount = std::clamp<std::size_t>(largest_ / 500, 1, 40);
        for (std::size_t i = 0; i < headCount; ++i) {
            const std::string name = "Capo area " + personName(sequence_);
            if (const auto at =
                    distinta.add({}, accounts.addHead(customers, 1001 + static_cast<std::int64_t>(i), name)))
                heads.push_back(*at);
        }
        const std::size_t agentCount = largest_ < 10 ? 0 : std::clamp<std::size_t>(largest_ / 40, 2, 400);
        for (std::size_t i = 0; i < agentCount; ++i) {
            const std::string name = "Agenzia " + personName(sequence_);
            if (const auto at = distinta.add(heads[i % heads.size()],
                                             accounts.addHead(customers, 1101 + static_cast<std::int64_t>(i), name)))
                agents.push_back(*at);
        }
        const auto& parents = agents.empty() ? heads : agents;
        // The past links fill what is left of the distinta's size.
        const std::size_t past = largest_ < 20 ? 0 : largest_ / 50;
        const std::size_t present = distinta.room() - past;
        hang(distinta, parents, {trading_.begin(), trading_.begin() + static_cast<std::ptrdiff_t>(present)}, 4, 6);
        distinta.addPast(parents, past);
        while (distinta.room() > 0 && spare_ < trading_.size() - present)
            distinta.add(parents.front(), trading_[trading_.size() - ++spare_]);
    }

    void makeGroups(Accounts& accounts) {
        const std::size_t size = atMost(std::max<std::size_t>(24, largest_ / 4));
        Distinta distinta(data_, sequence_, type(1, "GR", "Gruppi d'acquisto", customers), size);
        std::vector<std::size_t> groups;
        std::int64_t code = 2001;
        for (const char* name : {"Gruppo Aurora", "Consorzio Tirreno", "Unione Dettaglianti del Po", "Gruppo Ponente",
                                 "Rete Adriatica", "Centrale Acquisti Etna"})
            if (const auto at = distinta.add({}, accounts.addHead(customers, code++, name)))
                groups.push_back(*at);
        // A node that waits for its account.
        if (distinta.room() > 0)
            distinta.add(groups.front(), std::nullopt, "Da assegnare");
        hang(distinta, groups, shuffled(trading_, sequence_), 5, 4);
    }

    void makeZones(Accounts& accounts) {
        const std::size_t size = atMost(std::max<std::size_t>(64, largest_ / 10));
        Distinta distinta(data_, sequence_, type(1, "ZN", "Zone", customers), size);
        std::vector<std::size_t> zones;
        std::int64_t code = 3100;
        std::int64_t regionCode = 3201;
        std::int64_t zoneCode = 3301;
        for (const auto& area : macroAreas()) {
            const auto top = distinta.add({}, accounts.addHead(customers, code, text(area.description)));
            code += 10;
            for (const auto& region : regions()) {
                if (region.macroArea != area.code)
                    continue;
                const auto middle =
                    distinta.add(top, accounts.addHead(customers, regionCode++, text(region.description)));
                for (const auto& place : places())
                    if (place.region == region.code)
                        if (const auto at = distinta.add(
                                middle, accounts.addHead(customers, zoneCode++, "Zona di " + text(place.town))))
                            zones.push_back(*at);
            }
        }
        hang(distinta, zones, shuffled(trading_, sequence_), 9, 5);
    }

    void makeChannels(Accounts& accounts) {
        const std::size_t size = atMost(60);
        Distinta distinta(data_, sequence_, type(1, "CN", "Canali di vendita", customers, "DIV1"), size);
        std::vector<std::size_t> channels;
        std::int64_t code = 4001;
        for (const auto& category : macroCategories())
            if (const auto at =
                    distinta.add({}, accounts.addHead(customers, code++, "Canale " + text(category.description))))
                channels.push_back(*at);
        hang(distinta, channels, shuffled(trading_, sequence_), 6, 3);
    }

    void makeDeep(Accounts& accounts) {
        constexpr int levels = 12;
        Distinta distinta(data_, sequence_, type(1, "PR", "Strutture di gruppo", customers),
                          atMost(std::size_t{2} * levels));
        const auto members = shuffled(trading_, sequence_);
        std::optional<std::size_t> parent;
        // The whole chain first, so that it stands in a small distinta too.
        std::vector<std::size_t> chain;
        for (int level = 0; level < levels; ++level) {
            const std::string name = level == 0 ? "Holding Alpi S.p.A." : "Società di livello " + std::to_string(level);
            parent = distinta.add(parent, accounts.addHead(customers, 6001 + level, name));
            if (!parent)
                return;
            chain.push_back(*parent);
        }
        // Every company of the chain has a member, but the members of the last but one have no level below the last.
        for (std::size_t i = 0; i < chain.size() && distinta.room() > 0; ++i)
            distinta.add(chain[std::min(i, chain.size() - 2)], members[i]);
    }

    void makeSuppliers(Accounts& accounts, std::int64_t company, const std::vector<std::int64_t>& sellers) {
        Distinta byCategory(data_, sequence_, type(company, "FO", "Fornitori per categoria", suppliers),
                            atMost(std::max<std::size_t>(40, company == 1 ? largest_ / 5 : 40)));
        std::vector<std::size_t> heads;
        std::int64_t code = 5001;
        for (const auto& category : categories())
            if (const auto at =
                    byCategory.add({}, accounts.addHead(suppliers, code++, "Fornitori " + text(category.description))))
                heads.push_back(*at);
        hang(byCategory, heads, sellers, 6, 4);
        if (company != 1)
            return;
        Distinta groups(data_, sequence_, type(company, "CO", "Consorzi fornitori", suppliers), atMost(30));
        heads.clear();
        code = 5101;
        for (const char* name : {"Consorzio Molini Padani", "Consorzio Caseario Alpino", "Rete Logistica Italia"})
            if (const auto at = groups.add({}, accounts.addHead(suppliers, code++, name)))
                heads.push_back(*at);
        hang(groups, heads, shuffled(sellers, sequence_), 7, 3);
    }

    void makeSecondCompany() {
        Accounts accounts(data_, sequence_, 2);
        accounts.addAgents(5);
        const auto buyers = accounts.addTrading(customers, 10001, 160);
        const std::size_t size = atMost(150);
        Distinta distinta(data_, sequence_, type(2, "AG", "Agenti", customers), size);
        std::vector<std::size_t> agents;
        for (std::int64_t i = 0; i < 5; ++i)
            if (const auto at =
                    distinta.add({}, accounts.addHead(customers, 1001 + i, "Agenzia " + personName(sequence_))))
                agents.push_back(*at);
        hang(distinta, agents, buyers, 5, 4);
        makeSuppliers(accounts, 2, accounts.addTrading(suppliers, 50001, 40));
    }

    void makeBonuses() {
        // Of the first company's agents and zones; states in turn, so that each occurs early.
        std::vector<std::int64_t> candidates;
        for (const auto& node : data_.nodes)
            if (node.company == 1 && node.account && (node.type == 1 || node.type == 3) && node.parent)
                candidates.push_back(node.id);
        if (candidates.empty())
            return;
        const auto drawn = shuffled(candidates, sequence_);
        const std::size_t count = std::min(drawn.size(), std::clamp<std::size_t>(largest_ / 100, 8, 500));
        for (std::size_t i = 0; i < count; ++i) {
            DemoBonus bonus;
            bonus.id = static_cast<std::int64_t>(i) + 1;
            bonus.company = 1;
            bonus.contract = 100 + static_cast<std::int64_t>(i / 4);
            bonus.nodes.push_back(drawn[i]);
            bonus.settlements.push_back(static_cast<int>(i % 4));
            if (i % 5 == 0)
                bonus.settlements.push_back(0);
            if (i % 7 == 3)
                bonus.exceptNodes.push_back(drawn[i]);
            data_.bonuses.push_back(bonus);
        }
    }

    std::size_t largest_;
    Sequence sequence_{20240229};
    DemoData data_;
    std::vector<std::int64_t> trading_; ///< customers of the first company
    std::size_t spare_ = 0;
};

} // namespace

DemoData makeDemoData(std::int64_t largest) {
    return Maker(static_cast<std::size_t>(std::max<std::int64_t>(largest, 1))).make();
}

} // namespace host
