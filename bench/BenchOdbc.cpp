// What the ODBC adapter costs beside a bare loop over ODBC's own functions with the same block size, on the same
// driver: the tree's statement over the SQLite driver, and over a server where DISTINTE_TEST_ODBC names one. On a
// server the program's tables are dropped and made anew.

#include "component/data/IstruzioniDistinta.h"
#include "component/data/Schema.h"
#include "contract/Recordset.h"
#include "platform/dialect/Translator.h"
#include "platform/odbc/BulkWriter.h"
#include "platform/odbc/DatabaseTables.h"
#include "platform/odbc/Literals.h"
#include "platform/odbc/Text.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <unistd.h>

namespace {

using contract::Date;
using contract::Value;
using platform::odbc::BulkWriter;
using platform::odbc::Connection;
using platform::odbc::Engine;

std::string sqliteDriver() {
    std::error_code ignored;
    for (const auto& folder : std::filesystem::directory_iterator("/usr/lib", ignored)) {
        const auto library = folder.path() / "odbc" / "libsqlite3odbc.so";
        if (std::filesystem::exists(library, ignored))
            return library.string();
    }
    return {};
}

/// One distinta of that many nodes, ten children each, every one with its account and registry entry.
class Tables {
public:
    Tables(const std::string& connectionString, std::int64_t nodes) : connection(connectionString) {
        connection.Open();
        for (const auto& table : qz::schema().tables)
            if (platform::odbc::columnsOf(connection, table.name))
                connection.runNative("DROP TABLE " + std::string(table.name));
        platform::odbc::createTables(connection, qz::schema(), [nodes](Connection& open) { fill(open, nodes); });
    }

    Connection connection;

private:
    static const contract::TableDef& table(std::string_view name) {
        const auto& tables = qz::schema().tables;
        return *std::find_if(tables.begin(), tables.end(), [name](const auto& table) { return table.name == name; });
    }

    static void fill(Connection& connection, std::int64_t nodes) {
        BulkWriter rows(connection, table("QZ02_DISTINTA"),
                        {"QZ02_ID", "QZ02_ID_QZ01", "QZ02_IDPARENT_QZ02", "QZ02_DITTA_CG18", "QZ02_TIPOCF_CG44",
                         "QZ02_CLIFOR_CG44", "QZ02_DATAINIZIOVAL", "QZ02_DATAFINEVAL", "QZ02_GUID", "QZ02_UTENTECRE",
                         "QZ02_GRUPPOCRE", "QZ02_DATACRE"});
        BulkWriter accounts(connection, table("CG44_CLIFOR"),
                            {"CG44_DITTA_CG18", "CG44_TIPOCF", "CG44_CLIFOR", "CG44_CODICE_CG16"});
        BulkWriter registry(connection, table("CG16_ANAGGEN"), {"CG16_CODICE", "CG16_RAGSOANAG"});
        const Date end = *Date::of(2099, 12, 31);
        for (std::int64_t i = 1; i <= nodes; ++i) {
            const Date start = Date::of(2015, 1, 1)->plusDays(static_cast<std::int32_t>(i % 3000));
            const std::string guid = "00000000-0000-4000-8000-" + std::to_string(100000000000 + i);
            rows.append(
                {i, 1, i <= 10 ? Value::null() : Value(i / 10), 1, 0, i, start, end, guid, "ADMIN", "ADMIN", start});
            accounts.append({1, 0, i, i});
            registry.append({i, "Ragione sociale numero " + std::to_string(i)});
        }
        for (auto* writer : {&rows, &accounts, &registry})
            writer->finish();
    }
};

/// Tables behind a driver, made once a size. Nothing where there is no such driver or server.
Tables* tablesOf(bool server, std::int64_t nodes) {
    static std::map<std::pair<bool, std::int64_t>, std::unique_ptr<Tables>> all;
    auto& tables = all[{server, nodes}];
    if (tables)
        return tables.get();
    if (server) {
        const char* text = std::getenv("DISTINTE_TEST_ODBC");
        if (text == nullptr || text[0] == '\0')
            return nullptr;
        // One size at a time stands in the server's tables.
        std::erase_if(all, [&](const auto& entry) { return entry.first.first && entry.first.second != nodes; });
        all[{server, nodes}] = std::make_unique<Tables>(text, nodes);
        return all[{server, nodes}].get();
    }
    const std::string driver = sqliteDriver();
    if (driver.empty())
        return nullptr;
    const auto file = std::filesystem::temp_directory_path() / ("bench-odbc-" + std::to_string(::getpid()) + ".db");
    std::filesystem::remove(file);
    tables = std::make_unique<Tables>("Driver=" + driver + ";Database=" + file.string(), nodes);
    std::filesystem::remove(file); // the open connection keeps it
    return tables.get();
}

contract::Statement statement() {
    return qz::istruzioneNodi(qz::latoOrigine(), 1, 0, "1");
}

/// The text that the adapter sends: the statement's own, or its translation for SQLite.
std::string textFor(Connection& connection) {
    if (connection.engine() == Engine::server)
        return statement().text();
    const platform::dialect::SchemaCatalog catalog(qz::schema());
    const auto translation = platform::dialect::Translator(catalog).translate(statement());
    std::string text = translation.text;
    for (std::size_t i = translation.parameters.size(); i > 0; --i) {
        std::string literal;
        platform::odbc::appendLiteral(statement(), translation.parameters[i - 1], literal);
        const std::string place = "?" + std::to_string(i);
        for (auto at = text.find(place); at != std::string::npos; at = text.find(place))
            text.replace(at, place.size(), literal);
    }
    return text;
}

/// Reads all the rows with nothing but ODBC's functions: the same block size, the same types and widths.
class Bare {
public:
    explicit Bare(Connection& connection) : wide_(connection.engine() == Engine::server), text_(textFor(connection)) {
        SQLAllocHandle(SQL_HANDLE_STMT, connection.handle(), &statement_);
    }
    Bare(const Bare&) = delete;
    Bare& operator=(const Bare&) = delete;
    ~Bare() { SQLFreeHandle(SQL_HANDLE_STMT, statement_); }

    std::size_t run() {
        if (!SQL_SUCCEEDED(execute()))
            return 0;
        bind();
        std::size_t rows = 0;
        std::int64_t sum = 0;
        while (SQL_SUCCEEDED(SQLFetch(statement_))) {
            for (const auto& column : columns_)
                for (SQLULEN row = 0; row < fetched_; ++row)
                    if (column.lengths[row] != SQL_NULL_DATA)
                        sum += column.lengths[row] + column.values[row * column.width];
            rows += fetched_;
        }
        benchmark::DoNotOptimize(sum);
        SQLFreeStmt(statement_, SQL_CLOSE);
        SQLFreeStmt(statement_, SQL_UNBIND);
        return rows;
    }

private:
    static constexpr std::size_t block = platform::odbc::RowReader::blockRows;
    struct Column {
        std::vector<char> values;
        std::vector<SQLLEN> lengths;
        std::size_t width = 0;
    };

    SQLRETURN execute() {
        if (wide_) {
            auto units = platform::odbc::wide(text_);
            return SQLExecDirectW(statement_, units.data(), static_cast<SQLINTEGER>(units.size()));
        }
        return SQLExecDirect(statement_, reinterpret_cast<SQLCHAR*>(text_.data()),
                             static_cast<SQLINTEGER>(text_.size()));
    }

    void bind() {
        SQLSMALLINT count = 0;
        SQLNumResultCols(statement_, &count);
        columns_.resize(static_cast<std::size_t>(count));
        SQLSetStmtAttr(statement_, SQL_ATTR_ROW_ARRAY_SIZE,
                       reinterpret_cast<SQLPOINTER>(block), // NOLINT(performance-no-int-to-ptr)
                       SQL_IS_UINTEGER);
        SQLSetStmtAttr(statement_, SQL_ATTR_ROWS_FETCHED_PTR, &fetched_, SQL_IS_POINTER);
        for (SQLSMALLINT i = 0; i < count; ++i) {
            Column& column = columns_[static_cast<std::size_t>(i)];
            SQLCHAR name[256];
            SQLSMALLINT length = 0;
            SQLSMALLINT type = 0;
            SQLULEN size = 0;
            SQLSMALLINT scale = 0;
            SQLSMALLINT nullable = 0;
            SQLDescribeCol(statement_, static_cast<SQLUSMALLINT>(i + 1), name, sizeof name, &length, &type, &size,
                           &scale, &nullable);
            const SQLSMALLINT cType = typeFor(type, size, column.width);
            column.values.resize(block * column.width);
            column.lengths.resize(block);
            SQLBindCol(statement_, static_cast<SQLUSMALLINT>(i + 1), cType, column.values.data(),
                       static_cast<SQLLEN>(column.width), column.lengths.data());
        }
    }

    SQLSMALLINT typeFor(SQLSMALLINT type, SQLULEN size, std::size_t& width) const {
        constexpr std::size_t unbounded = 512;
        if (!wide_) {
            width = unbounded;
            return SQL_C_CHAR;
        }
        switch (type) {
        case SQL_BIT:
        case SQL_SMALLINT:
        case SQL_INTEGER:
        case SQL_BIGINT:
            width = sizeof(SQLBIGINT);
            return SQL_C_SBIGINT;
        case SQL_TYPE_TIMESTAMP:
            width = sizeof(SQL_TIMESTAMP_STRUCT);
            return SQL_C_TYPE_TIMESTAMP;
        case SQL_NUMERIC:
        case SQL_DECIMAL:
            width = size + 4;
            return SQL_C_CHAR;
        case SQL_GUID:
            width = sizeof(SQLGUID);
            return SQL_C_GUID;
        default:
            width = ((size == 0 || size > 4000 ? unbounded : size) + 1) * sizeof(SQLWCHAR);
            return SQL_C_WCHAR;
        }
    }

    bool wide_;
    std::string text_;
    SQLHSTMT statement_ = nullptr;
    SQLULEN fetched_ = 0;
    std::vector<Column> columns_;
};

void bare(benchmark::State& state, bool server) {
    auto* tables = tablesOf(server, state.range(0));
    if (tables == nullptr) {
        state.SkipWithError(server ? "DISTINTE_TEST_ODBC names no server" : "libsqliteodbc is not installed");
        return;
    }
    Bare loop(tables->connection);
    for (auto _ : state)
        if (loop.run() != static_cast<std::size_t>(state.range(0)))
            state.SkipWithError("rows are missing");
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void adapter(benchmark::State& state, bool server) {
    auto* tables = tablesOf(server, state.range(0));
    if (tables == nullptr) {
        state.SkipWithError(server ? "DISTINTE_TEST_ODBC names no server" : "libsqliteodbc is not installed");
        return;
    }
    for (auto _ : state) {
        contract::Recordset rows;
        rows.Open(statement(), tables->connection);
        if (rows.RecordCount() != static_cast<std::size_t>(state.range(0)))
            state.SkipWithError("rows are missing");
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void sizes(benchmark::internal::Benchmark* bench) {
    bench->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond)->UseRealTime();
}

} // namespace

BENCHMARK_CAPTURE(bare, sqlite, false)->Name("odbc rows/SQLite driver/bare")->Apply(sizes);
BENCHMARK_CAPTURE(adapter, sqlite, false)->Name("odbc rows/SQLite driver/adapter")->Apply(sizes);
BENCHMARK_CAPTURE(bare, server, true)->Name("odbc rows/server/bare")->Apply(sizes);
BENCHMARK_CAPTURE(adapter, server, true)->Name("odbc rows/server/adapter")->Apply(sizes);
