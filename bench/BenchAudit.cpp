// The audit of a table of links beside a bare scan of the same columns, and the comparison of two distinte on a day.

#include "component/data/Schema.h"
#include "component/maintenance/Confronto.h"
#include "component/maintenance/Verifica.h"
#include "component/plugin/ClasseConfronto.h"
#include "platform/sqlite/BulkWriter.h"
#include "platform/sqlite/DatabaseFile.h"

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <string>

#include <unistd.h>

namespace {

using contract::Date;
using platform::sqlite::BulkWriter;
using platform::sqlite::Connection;

constexpr std::int64_t accountsOfADistinta = 100'000;

Date day(int year, int month, int dayOfMonth) {
    return Date::of(year, month, dayOfMonth).value_or(Date());
}

enum class Kind { sound, rotten, overlapping };

/// Two distinte of that many links in all, ten children a node, every account once in each, first in one and then in
/// the other; rotten, one link in ten breaks a rule; overlapping, both distinte hold on the same days. The second
/// distinta hangs each account under another parent.
class Database {
public:
    Database(std::int64_t links, Kind kind)
        : file_((std::filesystem::temp_directory_path() /
                 ("audit-" + std::to_string(::getpid()) + "-" + std::to_string(links) +
                  std::to_string(static_cast<int>(kind)) + ".db"))
                    .string()) {
        std::filesystem::remove(file_);
        platform::sqlite::createDatabase(file_, qz::schema(), [&](Connection& writer) { fill(writer, links, kind); });
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
    static Database& of(std::int64_t links, Kind kind) {
        static std::map<std::pair<std::int64_t, Kind>, std::unique_ptr<Database>> databases;
        auto& database = databases[{links, kind}];
        if (!database)
            database = std::make_unique<Database>(links, kind);
        return *database;
    }

    const std::string& file() const { return file_; }

    Connection connection;

private:
    static void fill(Connection& writer, std::int64_t links, Kind kind) {
        BulkWriter types(writer, "QZ01_TIPODISTINTA",
                         {"QZ01_ID", "QZ01_DITTA_CG18", "QZ01_CODICE", "QZ01_DESCR", "QZ01_INDTIPOSOGG"});
        types.append({std::int64_t{1}, std::int64_t{1}, "A", "Prima", std::int64_t{0}});
        types.append({std::int64_t{2}, std::int64_t{1}, "B", "Seconda", std::int64_t{0}});
        BulkWriter registry(writer, "CG16_ANAGGEN", {"CG16_CODICE", "CG16_RAGSOANAG"});
        BulkWriter accounts(writer, "CG44_CLIFOR",
                            {"CG44_DITTA_CG18", "CG44_TIPOCF", "CG44_CLIFOR", "CG44_CODICE_CG16"});
        BulkWriter nodes(writer, "QZ02_DISTINTA",
                         {"QZ02_ID", "QZ02_ID_QZ01", "QZ02_IDPARENT_QZ02", "QZ02_DITTA_CG18", "QZ02_TIPOCF_CG44",
                          "QZ02_CLIFOR_CG44", "QZ02_DATAINIZIOVAL", "QZ02_DATAFINEVAL", "QZ02_ID_WF02", "QZ02_GUID"});
        const std::int64_t half = links / 2;
        for (std::int64_t i = 1; i <= half; ++i) {
            registry.append({i, "Commerciale Rossi & Figli " + std::to_string(i) + " S.r.l."});
            accounts.append({std::int64_t{1}, std::int64_t{0}, i, i});
        }
        for (std::int64_t i = 1; i <= 2 * half; ++i) {
            const bool second = i > half;
            const std::int64_t place = second ? i - half : i;
            const std::int64_t fanOut = second ? 11 : 10;
            contract::Value parent = contract::Value::null();
            if (place > 1)
                parent = (place - 2) / fanOut + 1 + (second ? half : 0);
            const bool broken = kind == Kind::rotten && i % 10 == 7;
            std::string guid = "00000000-0000-4000-8000-000000000000";
            const auto digits = std::to_string(broken ? i - 1 : i);
            guid.replace(guid.size() - digits.size(), digits.size(), digits);
            nodes.append({i, std::int64_t{second ? 2 : 1}, parent, std::int64_t{1}, std::int64_t{0}, place,
                          second ? day(2024, 1, 1) : day(2020, 1, 1),
                          second || broken || kind == Kind::overlapping ? day(2099, 12, 31) : day(2023, 12, 31),
                          std::int64_t{1}, guid});
        }
    }

    std::string file_;
};

/// The engine's own interface, over the columns that the audit reads, each value taken.
std::int64_t bareScan(const std::string& file) {
    sqlite3* database = nullptr;
    sqlite3_stmt* statement = nullptr;
    std::int64_t sum = -1;
    if (sqlite3_open_v2(file.c_str(), &database, SQLITE_OPEN_READONLY, nullptr) == SQLITE_OK &&
        sqlite3_prepare_v2(database,
                           "SELECT QZ02_ID, QZ02_ID_QZ01, QZ02_IDPARENT_QZ02, QZ02_DITTA_CG18, QZ02_TIPOCF_CG44, "
                           "QZ02_CLIFOR_CG44, QZ02_DATAINIZIOVAL, QZ02_DATAFINEVAL, QZ02_GUID FROM QZ02_DISTINTA",
                           -1, &statement, nullptr) == SQLITE_OK) {
        sum = 0;
        while (sqlite3_step(statement) == SQLITE_ROW) {
            for (int column = 0; column < 6; ++column)
                sum += sqlite3_column_int64(statement, column);
            for (int column = 6; column < 9; ++column) {
                benchmark::DoNotOptimize(sqlite3_column_text(statement, column));
                sum += sqlite3_column_bytes(statement, column);
            }
        }
    }
    sqlite3_finalize(statement);
    sqlite3_close(database);
    return sum;
}

class Quiet : public contract::Progress {
public:
    void reached(std::string_view, std::uint64_t, std::optional<std::uint64_t>) override {}
};

void audit(benchmark::State& state, Kind kind) {
    auto& database = Database::of(state.range(0), kind);
    Quiet nobody;
    std::size_t found = 0;
    for (auto _ : state) {
        const auto result = qz::verificaDistinte(database.connection, 1, nobody);
        found = result.rilievi.size();
    }
    if ((found > 0) != (kind == Kind::rotten))
        state.SkipWithError("findings where none belong, or none where some do");
    state.counters["findings"] = static_cast<double>(found);
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void Audit(benchmark::State& state) {
    audit(state, Kind::sound);
}
void AuditOfRot(benchmark::State& state) {
    audit(state, Kind::rotten);
}

void BareScan(benchmark::State& state) {
    const auto& database = Database::of(state.range(0), Kind::sound);
    for (auto _ : state)
        if (bareScan(database.file()) < 0)
            state.SkipWithError("the table could not be read");
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

/// On a day when both sides hold.
void compare(benchmark::State& state, bool composed) {
    auto& database = Database::of(2 * accountsOfADistinta, Kind::overlapping);
    qz::ClasseConfronto comparison;
    Quiet nobody;
    std::size_t differences = 0;
    for (auto _ : state) {
        const auto report = comparison.compare(database.connection, 1, 1, 2, day(2024, 6, 1), nobody);
        differences = report->size();
        for (std::size_t i = 0; composed && i < report->size(); ++i)
            benchmark::DoNotOptimize(report->row(i).account);
    }
    state.counters["differences"] = static_cast<double>(differences);
    state.SetItemsProcessed(state.iterations() * 2 * accountsOfADistinta);
}

void Compare(benchmark::State& state) {
    compare(state, false);
}
void CompareAndCompose(benchmark::State& state) {
    compare(state, true);
}

BENCHMARK(BareScan)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK(Audit)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK(AuditOfRot)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK(Compare)->Unit(benchmark::kMillisecond);
BENCHMARK(CompareAndCompose)->Unit(benchmark::kMillisecond);

} // namespace
