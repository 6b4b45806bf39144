// The detail of one account out of 100,000, with everything that it can show, beside the bare API.

#include "Replay.h"

#include "component/data/DettaglioAnagrafica.h"
#include "component/data/IstruzioniDettaglio.h"
#include "component/data/Schema.h"
#include "contract/Recordset.h"
#include "platform/sqlite/BulkWriter.h"
#include "platform/sqlite/DatabaseFile.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include <unistd.h>

namespace {

using platform::sqlite::BulkWriter;
using platform::sqlite::Connection;

constexpr std::int64_t accounts = 100'000;

/// A number in a text column, as codes are kept.
std::string code(std::int64_t number) {
    return std::to_string(number);
}

void writeClasses(Connection& connection) {
    BulkWriter macroareas(connection, "MG07_MACROAREE",
                          {"MG07_DITTA_CG18", "MG07_TIPOCF", "MG07_MACROAREA", "MG07_DESCRMACROAR"});
    BulkWriter areas(connection, "MG08_AREE",
                     {"MG08_DITTA_CG18", "MG08_TIPOCF_MG07", "MG08_MACROAREA_MG07", "MG08_AREA", "MG08_DESCRAREA"});
    BulkWriter banks(connection, "CG12_BANCHE", {"CG12_BANCA", "CG12_DESCR"});
    BulkWriter agencies(connection, "CG13_AGENZIE", {"CG13_BANCA_CG12", "CG13_CODCAB", "CG13_DESCR"});
    BulkWriter payments(connection, "CG62_CONDPAGDES", {"CG62_CODPAG", "CG62_DESCPAG"});
    BulkWriter agents(connection, "MG17_AGENTI",
                      {"MG17_DITTA_CG18", "MG17_IDAGENTE", "MG17_AGENTE", "MG17_ANAGEN_CG16"});
    const std::int64_t one = 1;
    const std::int64_t customers = 0;
    for (std::int64_t i = 1; i <= 500; ++i) {
        banks.append({code(i), "Banca " + code(i)});
        agencies.append({code(i), code(i), "Filiale " + code(i)});
        payments.append({code(i), "Pagamento a " + code(i) + " giorni"});
        agents.append({one, i, "AG" + code(i), i});
        macroareas.append({one, customers, code(i), "Macroarea " + code(i)});
        for (std::int64_t j = 1; j <= 20; ++j)
            areas.append({one, customers, code(i), code(j), "Area " + code(j)});
    }
}

void writeAccounts(Connection& connection) {
    BulkWriter registry(connection, "CG16_ANAGGEN", {"CG16_CODICE", "CG16_RAGSOANAG", "CG16_INDIRIZZO", "CG16_CITTA"});
    BulkWriter rows(connection, "CG44_CLIFOR",
                    {"CG44_DITTA_CG18", "CG44_TIPOCF", "CG44_CLIFOR", "CG44_CODICE_CG16", "CG44_CODABI_CG12",
                     "CG44_CODCAB_CG13", "CG44_CODPAG_CG62", "CG44_IDAGENTE_MG17"});
    BulkWriter sales(
        connection, "MG19_CLIFORVA",
        {"MG19_DITTA_CG18", "MG19_TIPOCF_CG44", "MG19_CLIFOR_CG44", "MG19_LISTMAG", "MG19_MACROAREA", "MG19_AREA"});
    BulkWriter divisions(connection, "VCO1C_CLIFOR",
                         {"CO1C_DITTA_CG18", "CO1C_TIPOCF_CG44", "CO1C_CLIFOR_CG44", "CO1C_IDDIV_CO1A",
                          "CO1D_CODPAG_CG62", "CO1D_IDAGENTE_MG17"});
    const std::int64_t one = 1;
    const std::int64_t customers = 0;
    for (std::int64_t i = 1; i <= accounts; ++i) {
        const auto k = i % 500 + 1;
        registry.append({i, "Commerciale Rossi & Figli " + code(i) + " S.r.l.", "Via Garibaldi " + code(k), "Torino"});
        rows.append({one, customers, i, i, code(k), code(k), code(k), k});
        sales.append({one, customers, i, k, code(k), code(i % 20 + 1)});
        divisions.append({one, customers, i, "D1", code(501 - k), 501 - k});
    }
}

/// The database of all rounds; removed at the end of the program.
class Accounts {
public:
    Accounts() {
        std::string name = (std::filesystem::temp_directory_path() / "distinte-bench-XXXXXX").string();
        const int descriptor = mkstemp(name.data());
        if (descriptor < 0)
            std::abort();
        close(descriptor);
        path_ = name;
        std::filesystem::remove(path_);
        platform::sqlite::createDatabase(path_, qz::schema(), [](Connection& file) {
            writeClasses(file);
            writeAccounts(file);
        });
        connection.SetConnectionString(std::string(Connection::scheme) + path_);
        connection.Open();
    }
    Accounts(const Accounts&) = delete;
    Accounts& operator=(const Accounts&) = delete;
    ~Accounts() {
        connection.Close();
        std::filesystem::remove(path_);
    }
    static Accounts& instance() {
        static Accounts only;
        return only;
    }
    Connection connection;

private:
    std::string path_;
};

contract::Statement detailOf(std::int64_t account, bool division) {
    qz::LinkParameters parameters;
    parameters.flg_CondVendita = parameters.flg_Provvigioni = parameters.flg_Classificazioni = true;
    const qz::SoggettoDettaglio subject{1, 0, contract::Value(account)};
    return division ? qz::istruzioneDettaglioDivisione(parameters, subject, "D1")
                    : qz::istruzioneDettaglio(parameters, subject);
}

std::int64_t next(std::int64_t account) {
    return (account * 7919 + 104729) % accounts + 1;
}

void component(benchmark::State& state, bool division) {
    auto& connection = Accounts::instance().connection;
    std::int64_t account = 1;
    for (auto _ : state) {
        account = next(account);
        contract::Recordset rows;
        rows.Open(detailOf(account, division), connection);
        if (rows.RecordCount() != 1)
            state.SkipWithError("the account was not found");
    }
}

void bare(benchmark::State& state, bool division) {
    auto& connection = Accounts::instance().connection;
    std::vector<contract::Statement> statements;
    std::int64_t account = 1;
    for (int i = 0; i < 1000; ++i)
        statements.push_back(detailOf(account = next(account), division));
    bench::Replay replay(connection, statements);
    for (auto _ : state)
        if (!replay.run())
            state.SkipWithError("a statement was refused");
    state.SetItemsProcessed(state.iterations() * 1000);
    state.SetLabel("1,000 details a round");
}

} // namespace

BENCHMARK_CAPTURE(component, plain, false)->Name("detail of an account/component")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(bare, plain, false)->Name("detail of an account/bare API")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(component, division, true)
    ->Name("detail of an account with division/component")
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(bare, division, true)
    ->Name("detail of an account with division/bare API")
    ->Unit(benchmark::kMicrosecond);
