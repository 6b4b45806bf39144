// The preview of a move of n nodes out of a distinta of 10 n, with the names that it shows; beside it the plan alone.

#include "BenchDatabase.h"

#include "component/maintenance/Anteprima.h"
#include "component/maintenance/LettureSingole.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {

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

void preview(benchmark::State& state, bool withValidity, bool withNames) {
    const bench::Database database(static_cast<std::size_t>(state.range(0)));
    const auto connection = database.open();
    const auto move = request(database, *connection, withValidity);
    for (auto _ : state) {
        const auto plan = qz::supponi(*connection, move);
        contract::MovePlan told;
        if (withNames)
            qz::aggiungiAnteprima(told, plan, move, *connection);
        benchmark::DoNotOptimize(told);
        if (plan.rifiutato() || plan.righe.size() != static_cast<std::size_t>(state.range(0)))
            state.SkipWithError("the move was refused, or moves another number of nodes");
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void sizes(benchmark::internal::Benchmark* benchmark) {
    for (const int nodes : {100, 10000, 100000})
        benchmark->Arg(nodes);
    benchmark->Unit(benchmark::kMillisecond);
}

} // namespace

BENCHMARK_CAPTURE(preview, structural, false, true)->Name("preview/structural")->Apply(sizes);
BENCHMARK_CAPTURE(preview, validity, true, true)->Name("preview/validity")->Apply(sizes);
BENCHMARK_CAPTURE(preview, structuralPlan, false, false)->Name("preview/structural/plan")->Apply(sizes);
BENCHMARK_CAPTURE(preview, validityPlan, true, false)->Name("preview/validity/plan")->Apply(sizes);
