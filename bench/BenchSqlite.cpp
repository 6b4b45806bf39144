// What the adapter costs beside a bare loop over the engine's own interface, on one file with the same settings.

#include "component/data/IstruzioniDistinta.h"
#include "component/data/Schema.h"
#include "component/maintenance/IstruzioniControlli.h"
#include "component/maintenance/IstruzioniSpostamento.h"
#include "contract/Recordset.h"
#include "platform/dialect/Translator.h"
#include "platform/sqlite/BulkWriter.h"
#include "platform/sqlite/DatabaseFile.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <map>
#include <memory>
#include <string>

#include <sqlite3.h>
#include <unistd.h>

namespace {

using contract::Date;
using contract::Statement;
using contract::Value;
using platform::sqlite::BulkWriter;
using platform::sqlite::Connection;

/// A file with one distinta of that many nodes, ten children each, every one with its account and registry entry.
class Database {
public:
    explicit Database(std::int64_t nodes)
        : file_((std::filesystem::temp_directory_path() /
                 ("bench-" + std::to_string(::getpid()) + "-" + std::to_string(nodes) + ".db"))
                    .string()) {
        std::filesystem::remove(file_);
        platform::sqlite::createDatabase(file_, qz::schema(), [&](Connection& database) { fill(database, nodes); });
        connection.SetConnectionString(std::string(Connection::scheme) + file_);
        connection.Open();
    }
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;
    ~Database() {
        connection.Close();
        std::filesystem::remove(file_);
    }

    /// Made once a size.
    static Database& of(std::int64_t nodes) {
        static std::map<std::int64_t, std::unique_ptr<Database>> databases;
        auto& database = databases[nodes];
        if (!database)
            database = std::make_unique<Database>(nodes);
        return *database;
    }

    Connection connection;

private:
    static void fill(Connection& database, std::int64_t nodes) {
        BulkWriter types(database, "QZ01_TIPODISTINTA", {"QZ01_ID", "QZ01_DITTA_CG18", "QZ01_INDTIPOSOGG"});
        types.append({1, 1, 0});
        BulkWriter rows(database, "QZ02_DISTINTA",
                        {"QZ02_ID", "QZ02_ID_QZ01", "QZ02_IDPARENT_QZ02", "QZ02_DITTA_CG18", "QZ02_TIPOCF_CG44",
                         "QZ02_CLIFOR_CG44", "QZ02_DATAINIZIOVAL", "QZ02_DATAFINEVAL", "QZ02_GUID", "QZ02_UTENTECRE",
                         "QZ02_GRUPPOCRE", "QZ02_DATACRE"});
        BulkWriter accounts(database, "CG44_CLIFOR",
                            {"CG44_DITTA_CG18", "CG44_TIPOCF", "CG44_CLIFOR", "CG44_CODICE_CG16"});
        BulkWriter registry(database, "CG16_ANAGGEN", {"CG16_CODICE", "CG16_RAGSOANAG"});
        const Date end = *Date::of(2099, 12, 31);
        for (std::int64_t i = 1; i <= nodes; ++i) {
            const Date start = Date::of(2015, 1, 1)->plusDays(static_cast<std::int32_t>(i % 3000));
            const std::string guid = "{00000000-0000-4000-8000-" + std::to_string(100000000000 + i) + "}";
            rows.append(
                {i, 1, i <= 10 ? Value::null() : Value(i / 10), 1, 0, i, start, end, guid, "ADMIN", "ADMIN", start});
            accounts.append({1, 0, i, i});
            registry.append({i, "Ragione sociale numero " + std::to_string(i)});
        }
    }

    std::string file_;
};

/// The statement, translated and prepared, with the engine's interface only.
class Bare {
public:
    Bare(Connection& connection, const Statement& statement) : statement_(nullptr) {
        const auto text = platform::dialect::Translator(connection.catalog()).translate(statement).text;
        sqlite3_prepare_v3(connection.handle(), text.c_str(), -1, SQLITE_PREPARE_PERSISTENT, &statement_, nullptr);
    }
    Bare(const Bare&) = delete;
    Bare& operator=(const Bare&) = delete;
    ~Bare() { sqlite3_finalize(statement_); }

    template <class... Numbers> std::int64_t run(Numbers... numbers) {
        int parameter = 0;
        (sqlite3_bind_int64(statement_, ++parameter, numbers), ...);
        std::int64_t sum = 0;
        const int columns = sqlite3_column_count(statement_);
        while (sqlite3_step(statement_) == SQLITE_ROW)
            for (int i = 0; i < columns; ++i)
                sum += readColumn(i);
        sqlite3_reset(statement_);
        return sum;
    }

private:
    std::int64_t readColumn(int i) {
        switch (sqlite3_column_type(statement_, i)) {
        case SQLITE_INTEGER:
            return sqlite3_column_int64(statement_, i);
        case SQLITE_FLOAT:
            return static_cast<std::int64_t>(sqlite3_column_double(statement_, i));
        case SQLITE_NULL:
            return 0;
        default:
            return sqlite3_column_text(statement_, i)[0] + sqlite3_column_bytes(statement_, i);
        }
    }

    sqlite3_stmt* statement_;
};

const qz::DescrizioneLato& sideOf(const benchmark::State& state) {
    return state.range(1) == 0 ? qz::latoOrigine() : qz::latoDestinazione();
}

void treeBare(benchmark::State& state) {
    auto& database = Database::of(state.range(0));
    Bare bare(database.connection, qz::istruzioneNodi(sideOf(state), 1, 0, "1"));
    for (auto _ : state)
        benchmark::DoNotOptimize(bare.run(1, 0, 1));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void treeAdapter(benchmark::State& state) {
    auto& database = Database::of(state.range(0));
    std::size_t bytes = 0;
    for (auto _ : state) {
        contract::Recordset rows;
        rows.Open(qz::istruzioneNodi(sideOf(state), 1, 0, "1"), database.connection);
        if (rows.RecordCount() != static_cast<std::size_t>(state.range(0)))
            state.SkipWithError("rows are missing");
        bytes = rows.rows().memory();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.counters["bytes_a_row"] = static_cast<double>(bytes) / static_cast<double>(state.range(0));
}

// Small statements run inside a transaction, as those of a move do.

constexpr std::int64_t smallNodes = 10000;

// One row of 23 columns.
void nodeBare(benchmark::State& state) {
    auto& connection = Database::of(smallNodes).connection;
    contract::Transaction transaction(connection);
    Bare bare(connection, qz::istruzioneNodo(1, qz::NodoId(1)));
    std::int64_t id = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(bare.run(1, id = id % smallNodes + 1));
}
void nodeAdapter(benchmark::State& state) {
    auto& connection = Database::of(smallNodes).connection;
    contract::Transaction transaction(connection);
    std::int64_t id = 0;
    for (auto _ : state) {
        contract::Recordset rows;
        rows.Open(qz::istruzioneNodo(1, qz::NodoId(id = id % smallNodes + 1)), connection);
        benchmark::DoNotOptimize(rows.RecordCount());
    }
}

// No row of 23 columns: the children of a leaf.
void childrenBare(benchmark::State& state) {
    auto& connection = Database::of(smallNodes).connection;
    contract::Transaction transaction(connection);
    Bare bare(connection, qz::istruzioneFigli(qz::NodoId(1), qz::DistintaId(1)));
    for (auto _ : state)
        benchmark::DoNotOptimize(bare.run(smallNodes, 1));
}
void childrenAdapter(benchmark::State& state) {
    auto& connection = Database::of(smallNodes).connection;
    contract::Transaction transaction(connection);
    for (auto _ : state) {
        contract::Recordset rows;
        rows.Open(qz::istruzioneFigli(qz::NodoId(smallNodes), qz::DistintaId(1)), connection);
        benchmark::DoNotOptimize(rows.Empty());
    }
}

// The parent query: one row of four columns over five tables.
void parentsBare(benchmark::State& state) {
    auto& connection = Database::of(smallNodes).connection;
    contract::Transaction transaction(connection);
    Bare bare(connection, qz::istruzionePadri({1, qz::TipoCF(0), qz::CodiceAccount(1)}, qz::DistintaId(1)));
    std::int64_t account = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(bare.run(1, account = account % smallNodes + 1, 0, 1));
}
void parentsAdapter(benchmark::State& state) {
    auto& connection = Database::of(smallNodes).connection;
    contract::Transaction transaction(connection);
    std::int64_t account = 0;
    for (auto _ : state) {
        contract::Recordset rows;
        rows.Open(qz::istruzionePadri({1, qz::TipoCF(0), qz::CodiceAccount(account = account % smallNodes + 1)},
                                      qz::DistintaId(1)),
                  connection);
        benchmark::DoNotOptimize(rows["Anagrafica"].integer());
    }
}

// A descendant's update, inside one transaction.
void updateBare(benchmark::State& state) {
    auto& connection = Database::of(smallNodes).connection;
    Bare bare(connection, qz::istruzioneAggiornaDistinta(qz::NodoId(1), qz::DistintaId(1), qz::DistintaId(1)));
    contract::Transaction transaction(connection);
    std::int64_t id = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(bare.run(1, 1, id = id % smallNodes + 1));
}
void updateAdapter(benchmark::State& state) {
    auto& connection = Database::of(smallNodes).connection;
    contract::Transaction transaction(connection);
    std::int64_t id = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(connection.Execute(qz::istruzioneAggiornaDistinta(
            qz::NodoId(id = id % smallNodes + 1), qz::DistintaId(1), qz::DistintaId(1))));
}

// Composing alone, to see its share.
void composeNode(benchmark::State& state) {
    for (auto _ : state) {
        auto statement = qz::istruzioneNodo(1, qz::NodoId(5));
        benchmark::DoNotOptimize(statement.shape());
    }
}

void bulkInsert(benchmark::State& state) {
    for (auto _ : state)
        const Database database(state.range(0));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void treeSizes(benchmark::internal::Benchmark* bench) {
    for (const std::int64_t nodes : {10000, 100000, 1000000})
        for (const std::int64_t side : {0, 1})
            bench->Args({nodes, side});
    bench->Unit(benchmark::kMillisecond);
}

} // namespace

BENCHMARK(treeBare)->Apply(treeSizes);
BENCHMARK(treeAdapter)->Apply(treeSizes);
BENCHMARK(nodeBare);
BENCHMARK(nodeAdapter);
BENCHMARK(childrenBare);
BENCHMARK(childrenAdapter);
BENCHMARK(parentsBare);
BENCHMARK(parentsAdapter);
BENCHMARK(updateBare);
BENCHMARK(updateAdapter);
BENCHMARK(composeNode);
BENCHMARK(bulkInsert)->Arg(100000)->Unit(benchmark::kMillisecond);
