// A move in blocks of n nodes out of a distinta of 10 n, beside a set-based script over the bare SQLite API that
// changes the same rows: a recursive query and two updates, or with validity a recursive query, a check of overlaps, an
// update and an insertion. All roll back, so that every round finds the same rows. The workflow of the links' states
// does nothing but give GUIDs.

#include "BenchDatabase.h"

#include "component/maintenance/Blocchi.h"
#include "component/maintenance/LettureSingole.h"
#include "component/maintenance/Spostamento.h"

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace {

class Workflow : public contract::WorkflowState {
public:
    std::string GetNewGUID() override {
        std::array<char, 40> guid{};
        std::snprintf(guid.data(), guid.size(), "ABCDEF00-0000-4000-8000-%012zX", ++made_);
        return guid.data();
    }
    void DuplicaStato(std::string_view, std::string_view) override {}
    void GetDefaultFlussoStato() override {}
    void ConfermaStato() override {}
    std::string GetDescrizioneStatoFromGUID(std::string_view) override { return {}; }
    std::vector<std::string> descriptions(const std::vector<std::string>& guids) override {
        return std::vector<std::string>(guids.size());
    }

private:
    std::size_t made_ = 0;
};

contract::Date day(int year, int month, int dayOfMonth) {
    return contract::Date::of(year, month, dayOfMonth).value_or(contract::Date());
}

qz::Richiesta request(const bench::Database& database, contract::Connection& connection, bool withValidity) {
    contract::Statement statement("SELECT * FROM QZ02_DISTINTA WHERE QZ02_ID = ");
    statement.number(database.movedNode());
    contract::Recordset record;
    record.Open(statement, connection);
    qz::Richiesta move{qz::nodoLetto(record),
                       qz::NodoId(database.targetNode()),
                       qz::CodiceAccount(database.targetAccount()),
                       qz::DistintaId(1),
                       qz::DistintaId(2),
                       1,
                       qz::TipoCF(0),
                       qz::TipoCF(0),
                       {},
                       {"UTENTE", "GRUPPO", day(2024, 6, 15)},
                       {}};
    if (withValidity)
        move.validita = qz::Validita{day(2023, 12, 31), day(2024, 1, 1), {}};
    return move;
}

/// Times each round without its rollback.
void blocks(benchmark::State& state, bool withValidity) {
    const bench::Database database(static_cast<std::size_t>(state.range(0)));
    const auto connection = database.open();
    const auto move = request(database, *connection, withValidity);
    for (auto _ : state) {
        Workflow workflow;
        qz::Piano plan;
        connection->BeginTrans();
        {
            qz::Blocchi blocks(*connection, move, [&]() -> contract::WorkflowState& { return workflow; });
            qz::sposta(blocks, blocks, move, plan);
        }
        state.PauseTiming();
        connection->RollbackTrans();
        if (plan.rifiutato() || plan.righe.size() != static_cast<std::size_t>(state.range(0)))
            state.SkipWithError("the move was refused, or moved another number of nodes");
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

const char* const structural[] = {
    "UPDATE QZ02_DISTINTA SET QZ02_ID_QZ01 = 2 WHERE QZ02_ID_QZ01 = 1 AND QZ02_ID IN (WITH RECURSIVE BELOW(ID) AS "
    "(SELECT QZ02_ID FROM QZ02_DISTINTA WHERE QZ02_IDPARENT_QZ02 = :node AND QZ02_ID_QZ01 = 1 UNION ALL SELECT "
    "D.QZ02_ID FROM BELOW JOIN QZ02_DISTINTA D ON D.QZ02_IDPARENT_QZ02 = BELOW.ID AND D.QZ02_ID_QZ01 = 1) SELECT ID "
    "FROM BELOW)",
    "UPDATE QZ02_DISTINTA SET QZ02_IDPARENT_QZ02 = :target, QZ02_ID_QZ01 = 2, QZ02_DATAVAR = '2024-06-15', "
    "QZ02_GRUPPOVAR = 'GRUPPO', QZ02_UTENTEVAR = 'UTENTE' WHERE QZ02_ID_QZ01 = 1 AND QZ02_ID = :node"};

const char* const withNewLinks[] = {
    "CREATE TEMP TABLE MOVED (RANK INTEGER PRIMARY KEY, ID INTEGER UNIQUE, PARENT INTEGER)",
    "INSERT INTO MOVED (ID, PARENT) WITH RECURSIVE BELOW(ID, PARENT) AS (SELECT :node, NULL UNION ALL SELECT "
    "D.QZ02_ID, "
    "BELOW.ID FROM BELOW JOIN QZ02_DISTINTA D ON D.QZ02_IDPARENT_QZ02 = BELOW.ID AND D.QZ02_ID_QZ01 = 1) SELECT ID, "
    "PARENT FROM BELOW",
    "UPDATE QZ02_DISTINTA SET QZ02_DATAFINEVAL = CASE WHEN QZ02_DATAINIZIOVAL > '2023-12-31' THEN QZ02_DATAINIZIOVAL "
    "ELSE '2023-12-31' END, QZ02_GRUPPOVAR = 'GRUPPO', QZ02_UTENTEVAR = 'UTENTE' WHERE QZ02_ID_QZ01 = 1 AND "
    "QZ02_DATAFINEVAL > '2023-12-31' AND QZ02_ID IN (SELECT ID FROM MOVED)",
    "SELECT COUNT(*) FROM MOVED JOIN QZ02_DISTINTA O ON O.QZ02_ID = MOVED.ID JOIN QZ02_DISTINTA D ON D.QZ02_DITTA_CG18 "
    "= O.QZ02_DITTA_CG18 AND D.QZ02_TIPOCF_CG44 = O.QZ02_TIPOCF_CG44 AND D.QZ02_CLIFOR_CG44 = O.QZ02_CLIFOR_CG44 AND "
    "D.QZ02_IDPARENT_QZ02 IS NOT NULL WHERE D.QZ02_DATAINIZIOVAL <= '2099-12-31' AND D.QZ02_DATAFINEVAL >= "
    "'2024-01-01'",
    "INSERT INTO QZ02_DISTINTA (QZ02_ID, QZ02_ID_QZ01, QZ02_IDPARENT_QZ02, QZ02_DITTA_CG18, QZ02_TIPOCF_CG44, "
    "QZ02_CLIFOR_CG44, QZ02_INDREGPROV, QZ02_ID_WF02, QZ02_DATAINIZIOVAL, QZ02_DATAFINEVAL, QZ02_DATACRE, "
    "QZ02_GRUPPOCRE, QZ02_UTENTECRE, QZ02_DATAVAR, QZ02_GRUPPOVAR, QZ02_UTENTEVAR, QZ02_CLIFORFATT_CG44, "
    "QZ02_TIPOANAGFATT, QZ02_IDSTRUTTURA_LP09, QZ02_IDLOCALIZZATA_LP09, QZ02_INDEREPROMO, QZ02_GUID) SELECT "
    "1000000000 + M.RANK, 2, CASE WHEN P.RANK IS NULL THEN :target ELSE 1000000000 + P.RANK END, O.QZ02_DITTA_CG18, "
    "O.QZ02_TIPOCF_CG44, O.QZ02_CLIFOR_CG44, 0, 0, '2024-01-01', '2099-12-31', '2024-06-15', 'GRUPPO', 'UTENTE', "
    "'2024-06-15', 'GRUPPO', 'UTENTE', O.QZ02_CLIFORFATT_CG44, O.QZ02_TIPOANAGFATT, O.QZ02_IDSTRUTTURA_LP09, "
    "O.QZ02_IDLOCALIZZATA_LP09, O.QZ02_INDEREPROMO, printf('ABCDEF00-0000-4000-8000-%012X', M.RANK) FROM MOVED M JOIN "
    "QZ02_DISTINTA O ON O.QZ02_ID = M.ID LEFT JOIN MOVED P ON P.ID = M.PARENT ORDER BY M.RANK"};

/// Rows changed by the last statement; -1 when it was refused.
int run(sqlite3* handle, const char* text, std::int64_t node, std::int64_t target) {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(handle, text, -1, &statement, nullptr) != SQLITE_OK)
        return -1;
    sqlite3_bind_int64(statement, sqlite3_bind_parameter_index(statement, ":node"), node);
    sqlite3_bind_int64(statement, sqlite3_bind_parameter_index(statement, ":target"), target);
    while (sqlite3_step(statement) == SQLITE_ROW)
        benchmark::DoNotOptimize(sqlite3_column_int64(statement, 0));
    return sqlite3_finalize(statement) == SQLITE_OK ? sqlite3_changes(handle) : -1;
}

template <std::size_t Count>
void script(benchmark::State& state, const char* const (&statements)[Count], std::int64_t expected) {
    const bench::Database database(static_cast<std::size_t>(state.range(0)));
    const auto connection = database.open();
    for (auto _ : state) {
        connection->BeginTrans();
        std::int64_t changed = 0;
        for (const auto* text : statements) {
            const auto rows = run(connection->handle(), text, database.movedNode(), database.targetNode());
            changed = rows < 0 ? -1'000'000'000 : rows;
        }
        state.PauseTiming();
        connection->RollbackTrans();
        if (changed != (expected == 0 ? state.range(0) : expected))
            state.SkipWithError("the script changed another number of rows");
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void sizes(benchmark::internal::Benchmark* benchmark) {
    for (const int nodes : {10, 100, 1000, 10000, 100000})
        benchmark->Arg(nodes);
    benchmark->Unit(benchmark::kMillisecond);
}

} // namespace

BENCHMARK_CAPTURE(blocks, structural, false)->Name("blocks/structural/component")->Apply(sizes);
BENCHMARK_CAPTURE(script, structural, structural, 1)->Name("blocks/structural/script")->Apply(sizes);
BENCHMARK_CAPTURE(blocks, validity, true)->Name("blocks/validity/component")->Apply(sizes);
BENCHMARK_CAPTURE(script, validity, withNewLinks, 0)->Name("blocks/validity/script")->Apply(sizes);
