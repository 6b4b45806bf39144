#include "host/demo/DemoWriter.h"

#include "host/demo/DemoNames.h"

#include <set>
#include <string>
#include <utility>

namespace host {

using contract::Date;
using contract::Value;
using namespace demo;

namespace {

constexpr const char* author = "ADMIN";
constexpr const char* division = "DIV1";
const Date written = Date::of(2024, 1, 15).value_or(Date());

Value orNull(const std::optional<std::int64_t>& number) {
    return number ? Value(*number) : Value::null();
}
Value orNull(const std::string& text) {
    return text.empty() ? Value::null() : Value(text);
}

void writeDistinte(const DemoData& data, DemoTarget& target) {
    RowWriter& types = target.table("QZ01_TIPODISTINTA", {"QZ01_ID", "QZ01_DITTA_CG18", "QZ01_CODICE", "QZ01_DESCR",
                                                          "QZ01_INDTIPOSOGG", "QZ01_IDDIV_CO1A", "QZ01_GUID"});
    for (const auto& type : data.types)
        types.append({type.id, type.company, type.code, type.description, type.kind, orNull(type.division), type.guid});

    RowWriter& nodes = target.table(
        "QZ02_DISTINTA", {"QZ02_ID", "QZ02_ID_QZ01", "QZ02_IDPARENT_QZ02", "QZ02_DITTA_CG18", "QZ02_TIPOCF_CG44",
                          "QZ02_CLIFOR_CG44", "QZ02_DESCR", "QZ02_DATAINIZIOVAL", "QZ02_DATAFINEVAL", "QZ02_ID_WF02",
                          "QZ02_GUID", "QZ02_INDREGPROV", "QZ02_INDEREPROMO", "QZ02_UTENTECRE", "QZ02_GRUPPOCRE",
                          "QZ02_DATACRE", "QZ02_UTENTEVAR", "QZ02_GRUPPOVAR", "QZ02_DATAVAR"});
    for (const auto& node : data.nodes)
        nodes.append({node.id, node.type, orNull(node.parent), node.company, node.kind, orNull(node.account),
                      orNull(node.description), node.from, node.to, node.state != 0 ? Value(node.state) : Value::null(),
                      node.guid, std::int64_t{0}, std::int64_t{0}, author, author, written, author, author, written});

    // The second company has no parameters: it works with the defaults.
    RowWriter& parameters =
        target.table("QZ03_PARAMETRI", {"QZ03_DITTA_CG18", "QZ03_ID_WF02", "QZ03_TIPOCARICODATA", "QZ03_DATAINIZIOVAL",
                                        "QZ03_DATAFINEVAL", "QZ03_FLG_ANAG", "QZ03_FLG_CONDVEND", "QZ03_FLG_CLAS",
                                        "QZ03_FLG_PROV", "QZ03_TIPOANAGFATT"});
    parameters.append({std::int64_t{1}, std::int64_t{2}, std::int64_t{0}, Date::of(2000, 1, 1).value_or(Date()),
                       Date::of(2099, 12, 31).value_or(Date()), std::int64_t{1}, std::int64_t{1}, std::int64_t{1},
                       std::int64_t{1}, std::int64_t{0}});

    RowWriter& states = target.table("WF02_STATI", {"WF02_ID", "WF02_DESCR"});
    for (const auto& state : workflowStates())
        states.append({std::int64_t{std::stoll(std::string(state.code))}, state.description});
}

void writeBonuses(const DemoData& data, DemoTarget& target) {
    RowWriter& bonuses = target.table("QZ13_PREMI", {"QZ13_ID", "QZ13_DITTA_CG18"});
    RowWriter& subjects =
        target.table("QZ14_SOGGCONTR", {"QZ14_ID_QZ13", "QZ14_ID_QZ02", "QZ14_DITTA_CG18", "QZ14_CODCONTR_QZ10",
                                        "QZ14_VERCONTR_QZ10", "QZ14_PROGRCOND_QZ13"});
    RowWriter& settlements =
        target.table("QZ18_LIQUIDAZIONE", {"QZ18_ID_QZ13", "QZ18_DATASCADENZA", "QZ18_STATOSCADENZA"});
    RowWriter& exceptions =
        target.table("QZ27_SOGGCONTRDISAB", {"QZ27_ID_QZ02", "QZ27_DITTA_CG18", "QZ27_CODCONTR_QZ10",
                                             "QZ27_VERCONTR_QZ10", "QZ27_PROGRCOND_QZ13"});
    constexpr std::int64_t version = 1;
    for (const auto& bonus : data.bonuses) {
        bonuses.append({bonus.id, bonus.company});
        for (const auto node : bonus.nodes)
            subjects.append({bonus.id, node, bonus.company, bonus.contract, version, bonus.id});
        int month = 3;
        for (const int state : bonus.settlements) {
            settlements.append({bonus.id, Date::of(2024, month, 30).value_or(Date()), state});
            month += 3;
        }
        for (const auto node : bonus.exceptNodes)
            exceptions.append({node, bonus.company, bonus.contract, version, bonus.id});
    }
}

const Trade& tradeOf(const DemoAccount& account) {
    return (account.kind == 0 ? customerTrades() : supplierTrades())[account.trade];
}

std::string grouping(const DemoAccount& account, std::int64_t divisor, char prefix) {
    return std::string(1, prefix) + std::to_string(account.code / divisor % 3 + 1);
}

void writeAccounts(const DemoData& data, DemoTarget& target) {
    RowWriter& registry = target.table("CG16_ANAGGEN", {"CG16_CODICE", "CG16_RAGSOANAG", "CG16_INDIRIZZO", "CG16_CITTA",
                                                        "CG16_PROV", "CG16_TEL1NUM", "CG16_FAXNUM"});
    for (const auto& entry : data.registry)
        registry.append(
            {entry.code, entry.name, entry.address, entry.city, entry.province, entry.phone, orNull(entry.fax)});

    RowWriter& accounts =
        target.table("CG44_CLIFOR", {"CG44_DITTA_CG18", "CG44_TIPOCF", "CG44_CLIFOR", "CG44_CODICE_CG16",
                                     "CG44_CODICE_CG08", "CG44_CODICE_CG28", "CG44_CODABI_CG12", "CG44_CODCAB_CG13",
                                     "CG44_CODPAG_CG62", "CG44_IDAGENTE_MG17"});
    RowWriter& sales =
        target.table("MG19_CLIFORVA", {"MG19_DITTA_CG18", "MG19_TIPOCF_CG44", "MG19_CLIFOR_CG44", "MG19_LISTMAG",
                                       "MG19_MACROAREA", "MG19_AREA", "MG19_ZONA", "MG19_MACROCAT", "MG19_CATEG",
                                       "MG19_SOTTOCAT", "MG19_RAGGRCF1", "MG19_RAGGRCF2", "MG19_RAGGCRF3"});
    for (const auto& account : data.accounts) {
        const Place& place = places()[account.place];
        const auto bank = account.bank ? Value(banks()[*account.bank].abi) : Value::null();
        const auto branch = account.bank ? Value(static_cast<std::int64_t>(1000 + account.place)) : Value::null();
        accounts.append({account.company, account.kind, account.code, orNull(account.registry), "EUR", "22", bank,
                         branch, orNull(account.payment), orNull(account.agent)});
        if (!account.salesData)
            continue;
        const Trade& trade = tradeOf(account);
        sales.append({account.company, account.kind, account.code, account.code % 4 + 1, regionOf(place).macroArea,
                      place.area, place.zone, trade.macroCategory, trade.category, trade.subCategory,
                      grouping(account, 1, 'P'), grouping(account, 3, 'S'), grouping(account, 9, 'T')});
    }

    RowWriter& agents =
        target.table("MG17_AGENTI", {"MG17_DITTA_CG18", "MG17_IDAGENTE", "MG17_AGENTE", "MG17_ANAGEN_CG16"});
    for (const auto& agent : data.agents)
        agents.append({agent.company, agent.id, agent.code, agent.registry});
}

void writeDivisions(const DemoData& data, DemoTarget& target) {
    std::set<std::int64_t> types;
    for (const auto& type : data.types)
        if (!type.division.empty())
            types.insert(type.id);
    RowWriter& divisions = target.table("VCO1C_CLIFOR", {"CO1C_DITTA_CG18", "CO1C_TIPOCF_CG44", "CO1C_CLIFOR_CG44",
                                                         "CO1C_IDDIV_CO1A", "CO1D_CODPAG_CG62", "CO1D_IDAGENTE_MG17"});
    // Every other account of the distinta has values of the division's own, some of them only the payment terms.
    bool other = false;
    for (const auto& node : data.nodes) {
        if (!types.contains(node.type) || !node.account)
            continue;
        other = !other;
        if (other)
            divisions.append({node.company, node.kind, *node.account, division, "RB60",
                              node.id % 3 == 0 ? Value(std::int64_t{1}) : Value::null()});
    }
}

void writeBanks(DemoTarget& target) {
    RowWriter& writer = target.table("CG12_BANCHE", {"CG12_BANCA", "CG12_DESCR"});
    RowWriter& branches = target.table("CG13_AGENZIE", {"CG13_BANCA_CG12", "CG13_CODCAB", "CG13_DESCR"});
    for (const auto& bank : banks()) {
        writer.append({bank.abi, bank.name});
        for (std::size_t i = 0; i < placeCount; ++i)
            branches.append(
                {bank.abi, static_cast<std::int64_t>(1000 + i), "Agenzia di " + std::string(places()[i].town)});
    }
    RowWriter& terms = target.table("CG62_CONDPAGDES", {"CG62_CODPAG", "CG62_DESCPAG"});
    for (const auto& payment : payments())
        terms.append({payment.code, payment.description});
}

void writeGeography(DemoTarget& target, std::int64_t company, std::int64_t kind) {
    RowWriter& areas =
        target.table("MG07_MACROAREE", {"MG07_DITTA_CG18", "MG07_TIPOCF", "MG07_MACROAREA", "MG07_DESCRMACROAR"});
    for (const auto& area : macroAreas())
        areas.append({company, kind, area.code, area.description});
    RowWriter& regionRows = target.table(
        "MG08_AREE", {"MG08_DITTA_CG18", "MG08_TIPOCF_MG07", "MG08_MACROAREA_MG07", "MG08_AREA", "MG08_DESCRAREA"});
    for (const auto& region : regions())
        regionRows.append({company, kind, region.macroArea, region.code, region.description});
    RowWriter& zones = target.table("MG09_ZONE", {"MG09_DITTA_CG18", "MG09_TIPOCF_MG08", "MG09_MACROAREA_MG08",
                                                  "MG09_AREA_MG08", "MG09_ZONA", "MG09_DESCRZONA"});
    for (const auto& place : places())
        zones.append(
            {company, kind, regionOf(place).macroArea, place.area, place.zone, "Zona di " + std::string(place.town)});
}

void writeCategories(DemoTarget& target, std::int64_t company, std::int64_t kind) {
    RowWriter& macros =
        target.table("MG10_MACROCAT", {"MG10_DITTA_CG18", "MG10_TIPOCF", "MG10_MACROCAT", "MG10_DESCRMACROCAT"});
    for (const auto& macro : macroCategories())
        macros.append({company, kind, macro.code, macro.description});
    RowWriter& categoryRows = target.table(
        "MG11_CATEG", {"MG11_DITTA_CG18", "MG11_TIPOCF_MG10", "MG11_MACROCAT_MG10", "MG11_CATEG", "MG11_DESCRCAT"});
    RowWriter& subRows = target.table("MG12_SOTTOCAT", {"MG12_DITTA_CG18", "MG12_TIPOCF_MG11", "MG12_MACROCAT_MG11",
                                                        "MG12_CATEG_MG11", "MG12_SOTTCAT", "MG12_DESCRSOTTOCAT"});
    std::set<std::pair<std::string_view, std::string_view>> seen;
    std::set<std::string_view> seenSub;
    for (const auto& trade : kind == 0 ? customerTrades() : supplierTrades()) {
        if (seen.emplace(trade.macroCategory, trade.category).second) {
            std::string_view description = trade.name;
            for (const auto& category : categories())
                if (category.code == trade.category)
                    description = category.description;
            categoryRows.append({company, kind, trade.macroCategory, trade.category, description});
        }
        if (seenSub.insert(trade.subCategory).second)
            subRows.append({company, kind, trade.macroCategory, trade.category, trade.subCategory, trade.name});
    }
}

void writeGroupings(DemoTarget& target, std::int64_t company, std::int64_t kind) {
    const struct {
        const char* table;
        const char* number;
        const char* prefix;
        const char* name;
    } tables[] = {{"MG31_RAGGRCF1", "1", "P", "Promozione "},
                  {"MG32_RAGGRCF2", "2", "S", "Servizio "},
                  {"MG33_RAGGRCF3", "3", "T", "Trasporto "}};
    for (const auto& entry : tables) {
        const std::string prefix = std::string(entry.table).substr(0, 4) + "_";
        RowWriter& rows =
            target.table(entry.table, {prefix + "DITTA_CG18", prefix + "TIPOCF", prefix + "CODRAGGRCF" + entry.number,
                                       prefix + "DESCRAGGRCF" + entry.number});
        for (int i = 1; i <= 3; ++i)
            rows.append({company, kind, entry.prefix + std::to_string(i), entry.name + std::to_string(i)});
    }
}

} // namespace

void writeDemoData(const DemoData& data, DemoTarget& target) {
    writeDistinte(data, target);
    writeBonuses(data, target);
    writeAccounts(data, target);
    writeDivisions(data, target);
    writeBanks(target);
    for (const std::int64_t company : {1, 2}) {
        for (const std::int64_t kind : {0, 1}) {
            writeGeography(target, company, kind);
            writeCategories(target, company, kind);
            writeGroupings(target, company, kind);
        }
    }
}

void writeDemoStates(const DemoData& data, DemoTarget& target) {
    RowWriter& states = target.table("STATI_LEGAME", {"STATI_GUID", "STATI_ID_WF02"});
    RowWriter& history =
        target.table("STATI_STORIA", {"STORIA_GUID", "STORIA_ID_WF02", "STORIA_UTENTE", "STORIA_DATA"});
    for (const auto& node : data.nodes) {
        if (node.state == 0)
            continue;
        states.append({node.guid, node.state});
        history.append({node.guid, node.state, author, written});
    }
}

} // namespace host
