#include "property/WildWorld.h"

#include "component/maintenance/LettureSingole.h"
#include "contract/Recordset.h"

#include <algorithm>

namespace property {

namespace {

int draw(std::mt19937& random, int from, int to) {
    return std::uniform_int_distribution<int>(from, to)(random);
}

bool oneIn(std::mt19937& random, int n) {
    return draw(random, 1, n) == 1;
}

contract::Date day(std::mt19937& random) {
    return contract::Date::of(2020 + draw(random, 0, 7), draw(random, 1, 12), draw(random, 1, 28))
        .value_or(contract::Date());
}

template <class T> std::string orNull(const std::optional<T>& value) {
    return value ? std::to_string(*value) : "NULL";
}

std::string orNull(const std::optional<contract::Date>& date) {
    return date ? "'" + date->iso() + "'" : "NULL";
}

/// How far a world is from what the form would have made.
struct Temper {
    int odd = 0;          ///< one row in so many is out of order in some way; 0: none
    bool history = false; ///< links of different periods
    int accounts = 0;     ///< drawn from so many; 0: each row has one of its own
    bool options = false; ///< with optional columns
};

void spoil(WildRow& row, std::mt19937& random, int count) {
    switch (draw(random, 1, 9)) {
    case 1:
        row.account.reset();
        break;
    case 2:
        row.company = oneIn(random, 2) ? std::optional<std::int64_t>() : 2;
        break;
    case 3:
        row.kind = oneIn(random, 2) ? std::optional<std::int64_t>() : 1;
        break;
    case 4:
        row.distinta = oneIn(random, 2) ? std::optional<std::int64_t>() : draw(random, 1, 4);
        break;
    case 5:
        row.start.reset();
        break;
    case 6:
        row.end.reset();
        break;
    case 7:
        row.parent = row.id; // a cycle of its own
        break;
    default:
        row.parent = draw(random, 1, count + 3); // of whatever distinta, below itself, or none
        break;
    }
}

std::array<std::string, 5> options(std::mt19937& random) {
    const auto maybe = [&](std::string value) { return oneIn(random, 2) ? std::move(value) : std::string("NULL"); };
    return {maybe(std::to_string(draw(random, 1, 99))), maybe(std::to_string(draw(random, 0, 1))),
            maybe(std::to_string(draw(random, 1, 99))), maybe(std::to_string(draw(random, 1, 99))),
            maybe(std::to_string(draw(random, 0, 1)))};
}

} // namespace

WildWorld wildWorld(std::mt19937& random, bool huge) {
    WildWorld world;
    const bool large = oneIn(random, 25);
    const int count = huge ? draw(random, 2500, 3000) : large ? draw(random, 100, 350) : draw(random, 2, 40);
    Temper temper;
    temper.odd = oneIn(random, 3) ? 0 : huge || large ? draw(random, 20, 60) : draw(random, 3, 15);
    temper.history = oneIn(random, 2);
    temper.accounts = oneIn(random, 2) ? 0 : std::max(3, count * draw(random, 1, 6) / 4);
    temper.options = oneIn(random, 2);
    const int depth = draw(random, 1, 4); // the higher, the nearer to the first rows new ones hang
    const std::int64_t kind = oneIn(random, 4) ? 1 : 0;

    for (int id = 1; id <= count; ++id) {
        WildRow row;
        row.id = id;
        row.distinta = huge || large ? (oneIn(random, 20) ? 2 : 1) : draw(random, 1, 3);
        row.company = 1;
        row.kind = kind;
        row.account = temper.accounts > 0 ? draw(random, 1, temper.accounts) : 5000 + id;
        std::vector<std::int64_t> candidates;
        for (const auto& other : world.rows)
            if (other.distinta == row.distinta)
                candidates.push_back(other.id);
        if (!candidates.empty() && (huge || large || !oneIn(random, 6))) {
            const auto among = std::max<std::size_t>(1, candidates.size() / static_cast<std::size_t>(depth * depth));
            const auto last = huge ? std::min<std::size_t>(among, 5) : among;
            row.parent = candidates[static_cast<std::size_t>(draw(random, 0, static_cast<int>(last) - 1))];
        }
        row.start = temper.history ? day(random) : contract::Date::of(2020, 1, 1).value_or(contract::Date());
        row.end = temper.history && !oneIn(random, 3) ? std::max(*row.start, day(random))
                                                      : contract::Date::of(2099, 12, 31).value_or(*row.start);
        row.optional.fill("NULL");
        if (temper.options)
            row.optional = options(random);
        if (temper.odd > 0 && oneIn(random, temper.odd))
            spoil(row, random, count);
        if (row.account && !oneIn(random, 10))
            world.registered.emplace(row.company.value_or(1), row.kind.value_or(kind), *row.account);
        world.rows.push_back(row);
    }
    for (const int type : {1, 2, 3, 4}) {
        if (oneIn(random, 12))
            continue; // a distinta without a type
        const std::string number = std::to_string(type);
        world.types.push_back(number + ", 1, " + (oneIn(random, 12) ? std::string("NULL") : "'D" + number + "'") +
                              ", 'Distinta', " + std::to_string(kind));
    }
    return world;
}

void write(const WildWorld& world, platform::sqlite::Connection& database) {
    const auto insert = [&](const std::string& into, const std::vector<std::string>& rows) {
        constexpr std::size_t together = 400;
        for (std::size_t from = 0; from < rows.size(); from += together) {
            std::string text = "INSERT INTO " + into + " VALUES ";
            for (std::size_t i = from; i < std::min(rows.size(), from + together); ++i)
                text += (i == from ? "(" : ", (") + rows[i] + ")";
            database.runNative(text);
        }
    };
    for (const auto* table : {"QZ01_TIPODISTINTA", "QZ02_DISTINTA", "CG16_ANAGGEN", "CG44_CLIFOR"})
        database.runNative("DELETE FROM " + std::string(table));
    insert("QZ01_TIPODISTINTA (QZ01_ID, QZ01_DITTA_CG18, QZ01_CODICE, QZ01_DESCR, QZ01_INDTIPOSOGG)", world.types);
    std::vector<std::string> names;
    std::vector<std::string> accounts;
    for (const auto& [company, kind, account] : world.registered) {
        const auto code = std::to_string(account * 10 + company * 2 + kind);
        if (account % 7 != 0) // some have no master data
            names.push_back(code + ", " + (account % 5 == 0 ? std::string("NULL") : "'Nome " + code + "'"));
        accounts.push_back(std::to_string(company) + ", " + std::to_string(kind) + ", " + std::to_string(account) +
                           ", " + code);
    }
    insert("CG16_ANAGGEN (CG16_CODICE, CG16_RAGSOANAG)", names);
    insert("CG44_CLIFOR (CG44_DITTA_CG18, CG44_TIPOCF, CG44_CLIFOR, CG44_CODICE_CG16)", accounts);
    std::vector<std::string> rows;
    for (const auto& row : world.rows) {
        std::string text = std::to_string(row.id) + ", " + orNull(row.distinta) + ", " + orNull(row.parent) + ", " +
                           orNull(row.company) + ", " + orNull(row.kind) + ", " + orNull(row.account) + ", " +
                           orNull(row.start) + ", " + orNull(row.end);
        for (const auto& value : row.optional)
            text += ", " + value;
        rows.push_back(std::move(text));
    }
    insert("QZ02_DISTINTA (QZ02_ID, QZ02_ID_QZ01, QZ02_IDPARENT_QZ02, QZ02_DITTA_CG18, QZ02_TIPOCF_CG44, "
           "QZ02_CLIFOR_CG44, QZ02_DATAINIZIOVAL, QZ02_DATAFINEVAL, QZ02_CLIFORFATT_CG44, QZ02_TIPOANAGFATT, "
           "QZ02_IDSTRUTTURA_LP09, QZ02_IDLOCALIZZATA_LP09, QZ02_INDEREPROMO)",
           rows);
    database.runNative("UPDATE sqlite_sequence SET seq = " + std::to_string(world.rows.size() + 10) +
                       " WHERE name = 'QZ02_DISTINTA'");
}

qz::Richiesta wildMove(const WildWorld& world, std::mt19937& random, platform::sqlite::Connection& database) {
    const auto any = [&]() -> const WildRow& {
        return world.rows[static_cast<std::size_t>(draw(random, 0, static_cast<int>(world.rows.size()) - 1))];
    };
    // A screen shows no node without a distinta. Those near the top have much below them.
    const auto* moved = &any();
    for (std::size_t at = 0, top = std::min<std::size_t>(world.rows.size() / 8, 2); at < world.rows.size(); ++at) {
        const auto& row =
            world.rows[(at + static_cast<std::size_t>(draw(random, 0, static_cast<int>(top)))) % world.rows.size()];
        if (moved->distinta && (at > 0 || oneIn(random, 2)))
            break;
        moved = &row;
    }
    const auto& node = *moved;
    const auto* target = &any();
    for (int tries = 0; tries < 40 && !oneIn(random, 20) && target->distinta == node.distinta; ++tries)
        target = &any();
    contract::Recordset record;
    contract::Statement row("SELECT * FROM QZ02_DISTINTA WHERE QZ02_ID = ");
    row.number(node.id);
    record.Open(row, database);
    const auto read = qz::nodoLetto(record);
    const qz::TipoCF kind(node.kind.value_or(0));
    qz::Richiesta move{read,
                       qz::NodoId(target->id),
                       target->account ? std::optional(qz::CodiceAccount(*target->account)) : std::nullopt,
                       qz::DistintaId(node.distinta.value_or(1)),
                       qz::DistintaId(target->distinta.value_or(2)),
                       node.company.value_or(1),
                       kind,
                       kind,
                       {},
                       {"UTENTE", "GRUPPO", *contract::Date::parse("15/06/2024")},
                       {}};
    if (oneIn(random, 3))
        return move;
    const auto last = node.start ? std::max(*node.start, day(random)) : day(random);
    move.validita = qz::Validita{last, last.plusDays(1), oneIn(random, 2) ? "VECCHIO" : ""};
    move.parametri.stato = draw(random, 0, 3);
    move.parametri.dateFisse = oneIn(random, 3);
    if (!oneIn(random, 8))
        move.parametri.fineFissa = oneIn(random, 4) ? day(random) : std::max(last.plusDays(1), day(random));
    return move;
}

std::string everything(contract::Connection& database) {
    static constexpr std::array columns{"QZ02_ID",
                                        "QZ02_ID_QZ01",
                                        "QZ02_IDPARENT_QZ02",
                                        "QZ02_DITTA_CG18",
                                        "QZ02_TIPOCF_CG44",
                                        "QZ02_CLIFOR_CG44",
                                        "QZ02_DESCR",
                                        "QZ02_DATAINIZIOVAL",
                                        "QZ02_DATAFINEVAL",
                                        "QZ02_ID_WF02",
                                        "QZ02_GUID",
                                        "QZ02_INDREGPROV",
                                        "QZ02_CLIFORFATT_CG44",
                                        "QZ02_TIPOANAGFATT",
                                        "QZ02_IDSTRUTTURA_LP09",
                                        "QZ02_IDLOCALIZZATA_LP09",
                                        "QZ02_INDEREPROMO",
                                        "QZ02_UTENTECRE",
                                        "QZ02_GRUPPOCRE",
                                        "QZ02_DATACRE",
                                        "QZ02_UTENTEVAR",
                                        "QZ02_GRUPPOVAR",
                                        "QZ02_DATAVAR"};
    contract::Recordset rows;
    rows.Open(contract::Statement("SELECT * FROM QZ02_DISTINTA ORDER BY QZ02_ID"), database);
    std::string text;
    for (; !rows.Eof(); rows.MoveNext()) {
        for (const auto* column : columns)
            text += rows[column].text() + "|";
        text += "\n";
    }
    return text;
}

} // namespace property
