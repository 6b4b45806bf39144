// A move of n nodes out of a distinta of 10 n, beside a walk over the bare SQLite API that runs the same statements,
// translated, prepared once and bound, and reads every column. Both roll back, so that every round finds the same rows.

#include "Scene.h"

#include "component/interaction/EseguiSpostamento.h"
#include "component/maintenance/IstruzioniControlli.h"
#include "component/maintenance/IstruzioniSpostamento.h"
#include "component/maintenance/LettureSingole.h"
#include "component/maintenance/ScrittureSingole.h"
#include "component/maintenance/Spostamento.h"
#include "platform/dialect/Translator.h"

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <deque>
#include <memory>
#include <string>
#include <vector>

namespace {

using contract::Statement;

constexpr qz::DistintaId origin(1);
constexpr qz::DistintaId destination(2);

/// One statement of the bare walk: the engine's text, prepared once.
class Bare {
public:
    Bare(platform::sqlite::Connection& connection, const Statement& statement) {
        const auto text = platform::dialect::Translator(connection.catalog()).translate(statement).text;
        sqlite3_prepare_v3(connection.handle(), text.c_str(), -1, SQLITE_PREPARE_PERSISTENT, &handle_, nullptr);
    }
    Bare(const Bare&) = delete;
    Bare& operator=(const Bare&) = delete;
    ~Bare() { sqlite3_finalize(handle_); }

    template <class... Numbers> void bind(Numbers... numbers) {
        int at = 0;
        (sqlite3_bind_int64(handle_, ++at, numbers), ...);
    }
    bool step() { return sqlite3_step(handle_) == SQLITE_ROW; }
    void reset() { sqlite3_reset(handle_); }
    sqlite3_stmt* handle() { return handle_; }

    /// Reads every column of the row, and gives a whole number of one of them; 0 for null.
    std::int64_t read(int wanted) {
        std::int64_t result = 0;
        const int count = sqlite3_column_count(handle_);
        for (int i = 0; i < count; ++i) {
            switch (sqlite3_column_type(handle_, i)) {
            case SQLITE_INTEGER:
                benchmark::DoNotOptimize(sqlite3_column_int64(handle_, i));
                break;
            case SQLITE_TEXT:
                benchmark::DoNotOptimize(sqlite3_column_text(handle_, i));
                benchmark::DoNotOptimize(sqlite3_column_bytes(handle_, i));
                break;
            default:
                break;
            }
            if (i == wanted)
                result = sqlite3_column_int64(handle_, i);
        }
        return result;
    }

private:
    sqlite3_stmt* handle_ = nullptr;
};

/// The structural move, as the rules have it, written straight onto the engine's API.
class BareMove {
public:
    explicit BareMove(platform::sqlite::Connection& connection)
        : count_(connection, qz::istruzioneContaDitta(1, origin)),
          parents_(connection, qz::istruzionePadri({1, qz::TipoCF(0), qz::CodiceAccount(1)}, destination)),
          decode_(connection, qz::istruzioneDecodificaPadre(qz::NodoId(1), std::nullopt)),
          children_(connection, qz::istruzioneFigli(qz::NodoId(1), origin)),
          move_(connection, qz::istruzioneAggiornaDistinta(qz::NodoId(1), origin, destination)) {}

    /// Nodes moved.
    std::size_t run(std::int64_t node, std::int64_t account, std::int64_t target, bool counts) {
        std::size_t moved = 1;
        counts_ = counts;
        check(account, target);
        std::deque<std::int64_t> queue{node};
        while (!queue.empty()) {
            const auto parent = queue.front();
            queue.pop_front();
            decode_.bind(parent);
            decode_.step();
            const auto decoded = decode_.read(1);
            decode_.reset();
            children_.bind(parent, std::int64_t{1});
            std::vector<std::pair<std::int64_t, std::int64_t>> found;
            while (children_.step()) {
                const auto child = children_.read(0);
                found.emplace_back(child, sqlite3_column_int64(children_.handle(), 5));
            }
            children_.reset();
            for (const auto& [child, childAccount] : found) {
                queue.push_back(child);
                check(childAccount, decoded);
                move_.bind(std::int64_t{2}, std::int64_t{1}, child);
                move_.step();
                move_.reset();
                ++moved;
            }
        }
        return moved;
    }

private:
    void check(std::int64_t account, std::int64_t under) {
        if (counts_) {
            count_.bind(std::int64_t{1}, std::int64_t{1});
            count_.step();
            benchmark::DoNotOptimize(count_.read(0));
            count_.reset();
        }
        std::deque<std::int64_t> queue{under};
        while (!queue.empty()) {
            parents_.bind(std::int64_t{1}, queue.front(), std::int64_t{0}, std::int64_t{2});
            queue.pop_front();
            while (parents_.step())
                if (const auto parent = parents_.read(0); parent != 0 && parent != account)
                    queue.push_back(parent);
            parents_.reset();
        }
    }

    Bare count_, parents_, decode_, children_, move_;
    bool counts_ = true;
};

void move(benchmark::State& state) {
    const bench::Database database(static_cast<std::size_t>(state.range(0)));
    bench::Scene scene(database);
    const auto request = qz::richiestaDiSpostamento(scene.state, false);
    qz::Piano plan;
    for (auto _ : state) {
        scene.connection->BeginTrans();
        plan = {};
        qz::LettureSingole reads(*scene.connection);
        qz::ScrittureSingole writes(*scene.connection, request.autore, {});
        qz::Cammino(reads, writes, request, plan).CiclaLivelli();
        scene.connection->RollbackTrans();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    if (!plan.messaggio.empty())
        state.SkipWithError(plan.messaggio.c_str());
}

void bareMove(benchmark::State& state, bool counts) {
    const bench::Database database(static_cast<std::size_t>(state.range(0)));
    const auto connection = database.open();
    BareMove walk(*connection);
    std::size_t moved = 0;
    for (auto _ : state) {
        connection->BeginTrans();
        moved = walk.run(database.movedNode(), database.movedAccount(), database.targetAccount(), counts);
        connection->RollbackTrans();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    if (moved != static_cast<std::size_t>(state.range(0)))
        state.SkipWithError("the bare walk moved another number of nodes");
}

} // namespace

BENCHMARK(move)->Name("structural move/component")->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(bareMove, bare, true)
    ->Name("structural move/bare API")
    ->Arg(100)
    ->Arg(1000)
    ->Arg(10000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(bareMove, uncounted, false)
    ->Name("structural move/bare API without the counts")
    ->Arg(100)
    ->Arg(1000)
    ->Arg(10000)
    ->Unit(benchmark::kMillisecond);
