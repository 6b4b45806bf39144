// The statements and round trips of a move, and the time that they take with a server further and further away: a
// connection to the embedded database that waits before each operation as long as the server's answers would be on
// their way. How many answers an operation waits for is what FreeTDS's driver does: one for a statement, whose rows
// come in one stream; two to begin a transaction (isolation, begin); three to commit or roll back (the end, the
// driver's own next transaction given up, isolation).

#include "Scene.h"

#include "component/interaction/EseguiSpostamento.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <memory>
#include <thread>

namespace {

using std::chrono::nanoseconds;

/// Waits and counts in front of another connection.
class DistantConnection : public contract::Connection {
public:
    DistantConnection(std::shared_ptr<contract::Connection> connection, nanoseconds latency)
        : connection_(std::move(connection)), latency_(latency) {}

    std::string ConnectionString() const override { return connection_->ConnectionString(); }
    void SetConnectionString(std::string_view text) override { connection_->SetConnectionString(text); }
    void Open() override { connection_->Open(); }
    void Close() noexcept override { connection_->Close(); }
    bool IsOpen() const override { return connection_->IsOpen(); }
    bool InTransaction() const override { return connection_->InTransaction(); }
    const contract::ErrorList& Errors() const override { return connection_->Errors(); }

    std::int64_t Execute(const contract::Statement& statement) override {
        ++statements;
        travel(1);
        return connection_->Execute(statement);
    }
    void Read(const contract::Statement& statement, contract::Snapshot& rows) override {
        ++statements;
        travel(1);
        connection_->Read(statement, rows);
    }
    void BeginTrans() override {
        travel(2);
        connection_->BeginTrans();
    }
    void CommitTrans() override {
        travel(3);
        connection_->CommitTrans();
    }
    void RollbackTrans() override {
        if (InTransaction())
            travel(3);
        connection_->RollbackTrans();
    }

    std::size_t statements = 0;
    std::size_t roundTrips = 0;

private:
    void travel(std::size_t answers) {
        roundTrips += answers;
        if (latency_ == nanoseconds::zero())
            return;
        // The system's sleep is longer than asked for by some tens of microseconds; the rest is waited for awake.
        const auto until = std::chrono::steady_clock::now() + answers * latency_;
        std::this_thread::sleep_until(until - std::chrono::microseconds(100));
        while (std::chrono::steady_clock::now() < until) {
        }
    }

    std::shared_ptr<contract::Connection> connection_;
    nanoseconds latency_;
};

// One whole command on a fresh database: the transaction with its walk, and both trees read again.
void command(benchmark::State& state, bool validity) {
    const nanoseconds latency(state.range(1) * 1000);
    std::size_t statements = 0;
    std::size_t roundTrips = 0;
    for (auto _ : state) {
        state.PauseTiming();
        const bench::Database database(static_cast<std::size_t>(state.range(0)));
        const auto distant = std::make_shared<DistantConnection>(database.open(), latency);
        bench::Scene scene(database, distant);
        for (auto* side : {&scene.state.origine, &scene.state.destinazione}) {
            const std::string name = side == &scene.state.origine ? "1" : "2";
            side->frame = &scene.state.form->addDataFrame("FRAME" + name, nullptr);
            side->livelli = &scene.state.form->addButton("LIVELLI" + name, nullptr);
        }
        distant->statements = distant->roundTrips = 0;
        scene.state.DataFineLegame = "30/06/2024";
        scene.state.nodiPerBlocchi = -1;
        state.ResumeTiming();
        qz::EseguiSpostamento(scene.state, validity);
        state.PauseTiming();
        statements = distant->statements;
        roundTrips = distant->roundTrips;
        if (!scene.state.MessaggioSpostamento.empty())
            state.SkipWithError(scene.state.MessaggioSpostamento.c_str());
        state.ResumeTiming();
    }
    state.counters["statements"] = static_cast<double>(statements);
    state.counters["round_trips"] = static_cast<double>(roundTrips);
}

/// Nodes moved, and microseconds of latency.
void distances(benchmark::internal::Benchmark* bench) {
    for (const std::int64_t nodes : {1, 10, 100, 1000})
        for (const std::int64_t latency : {0, 300, 2000})
            bench->Args({nodes, latency});
    bench->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);
}

} // namespace

BENCHMARK_CAPTURE(command, structure, false)->Name("move at a distance/structure")->Apply(distances);
BENCHMARK_CAPTURE(command, validity, true)->Name("move at a distance/validity")->Apply(distances);
