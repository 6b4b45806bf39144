// A move with validity of n nodes out of a distinta of 10 n, from its first statement to before its commit, beside the
// statements that it sent, sent again over the bare SQLite API. Both roll back, so that every round finds the same
// rows. The links' workflow states are the headless host's, kept in memory; on the disk they are measured apart.

#include "Replay.h"
#include "Scene.h"

#include "component/interaction/EseguiSpostamento.h"

#include <benchmark/benchmark.h>

#include <memory>

namespace {

struct Move {
    explicit Move(std::int64_t nodes)
        : database(static_cast<std::size_t>(nodes)), direct(database.open()),
          connection(std::make_shared<bench::RecordingConnection>(direct)), scene(database, connection) {}

    /// Runs the command once. False when it did not come as far as its commit.
    bool run() {
        scene.state.nodiPerBlocchi = -1;
        scene.state.DataFineLegame = "31/12/2023"; // a move leaves the end of its new links there
        try {
            qz::EseguiSpostamento(scene.state, true);
        } catch (const bench::StoppedBeforeCommit&) {
            return true;
        }
        return false;
    }

    bench::Database database;
    std::shared_ptr<platform::sqlite::Connection> direct;
    std::shared_ptr<bench::RecordingConnection> connection;
    bench::Scene scene;
};

void component(benchmark::State& state) {
    Move move(state.range(0));
    for (auto _ : state)
        if (!move.run())
            state.SkipWithError("the move was refused");
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void bare(benchmark::State& state) {
    Move move(state.range(0));
    move.connection->recording = true;
    if (!move.run())
        state.SkipWithError("the move was refused");
    bench::Replay replay(*move.direct, move.connection->statements);
    for (auto _ : state) {
        move.direct->BeginTrans();
        const bool good = replay.run();
        move.direct->RollbackTrans();
        if (!good)
            state.SkipWithError("a statement was refused");
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.counters["statements"] = static_cast<double>(replay.size());
}

} // namespace

BENCHMARK(component)
    ->Name("move with validity/component")
    ->Arg(100)
    ->Arg(1000)
    ->Arg(10000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(bare)->Name("move with validity/bare API")->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
