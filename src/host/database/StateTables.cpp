#include "host/database/StateTables.h"

#include "contract/RuntimeError.h"
#include "contract/Snapshot.h"
#include "platform/dialect/Ddl.h"
#include "platform/sqlite/BulkWriter.h"
#include "platform/sqlite/Connection.h"
#include "platform/sqlite/DatabaseFile.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <system_error>
#include <vector>

#include <fcntl.h>

namespace host {

namespace {

namespace fs = std::filesystem;

using contract::Statement;
using platform::sqlite::Connection;

[[noreturn]] void refuseCompanion(const std::string& file, const std::string& why) {
    throw contract::RuntimeError(contract::RuntimeError::database,
                                 "Gli stati dei legami nel file «" + file + "» non si possono acquisire: " + why +
                                     " Spostando il file altrove il database si apre senza quegli stati.");
}

/// What the companion holds.
struct Companion {
    contract::Snapshot states;
    contract::Snapshot history;
};

const std::vector<std::string> stateColumns = {"STATI_GUID", "STATI_ID_WF02"};
const std::vector<std::string> historyColumns = {"STORIA_GUID", "STORIA_ID_WF02", "STORIA_GUIDORIG", "STORIA_UTENTE",
                                                 "STORIA_DATA"};

void read(Connection& file, Companion& companion) {
    file.Read(Statement("SELECT STATI_GUID, STATI_ID_WF02 FROM STATI_LEGAME ORDER BY STATI_GUID"), companion.states);
    file.Read(Statement("SELECT STORIA_GUID, STORIA_ID_WF02, STORIA_GUIDORIG, STORIA_UTENTE, STORIA_DATA FROM "
                        "STATI_STORIA ORDER BY STORIA_ID"),
              companion.history);
}

/// A number for these rows, never 0; of 31 bits, as much as a database's own mark holds.
std::int32_t markOf(const Companion& companion) {
    constexpr std::uint32_t start = 2166136261U;
    constexpr std::uint32_t factor = 16777619U;
    std::uint32_t sum = start;
    for (const auto* rows : {&companion.states, &companion.history})
        for (std::size_t row = 0; row < rows->rowCount(); ++row)
            for (std::size_t column = 0; column < rows->columnCount(); ++column)
                for (const char c : rows->column(column).value(row).text() + '\n')
                    sum = (sum ^ static_cast<unsigned char>(c)) * factor;
    return static_cast<std::int32_t>((sum & 0x7fffffffU) | 1U);
}

/// The first free name of the kept file; one that is there is never replaced.
void setAside(const std::string& file, const std::string& ending) {
    for (int number = 1; number < 1000; ++number) {
        const std::string kept = file + ending + (number == 1 ? std::string() : std::to_string(number));
        if (::renameat2(AT_FDCWD, file.c_str(), AT_FDCWD, kept.c_str(), RENAME_NOREPLACE) == 0 || errno != EEXIST)
            return; // what can not be renamed is known by its mark
    }
}

bool hasState(Connection& database, const contract::Value& guid) {
    contract::Snapshot rows;
    Statement text("SELECT STATI_ID_WF02 FROM STATI_LEGAME WHERE STATI_GUID = '");
    text.text(guid.text()) << "'";
    database.Read(text, rows);
    return rows.rowCount() > 0;
}

void append(const contract::Snapshot& rows, std::size_t row, platform::sqlite::BulkWriter& writer) {
    std::vector<contract::Value> values;
    for (std::size_t column = 0; column < rows.columnCount(); ++column)
        values.push_back(rows.column(column).value(row));
    writer.append(values);
}

void takeIn(const Companion& companion, Connection& database) {
    platform::sqlite::BulkWriter states(database, "STATI_LEGAME", stateColumns);
    for (std::size_t row = 0; row < companion.states.rowCount(); ++row)
        if (!hasState(database, companion.states.column(0).value(row)))
            append(companion.states, row, states);
    platform::sqlite::BulkWriter history(database, "STATI_STORIA", historyColumns);
    for (std::size_t row = 0; row < companion.history.rowCount(); ++row)
        append(companion.history, row, history);
}

bool hasTables(Connection& database) {
    const auto& tables = stateSchema().tables;
    return std::all_of(tables.begin(), tables.end(),
                       [&](const auto& table) { return database.catalog().columns(table.name) != nullptr; });
}

void makeMissingTables(Connection& database) {
    contract::Schema missing;
    for (const auto& table : stateSchema().tables)
        if (database.catalog().columns(table.name) == nullptr)
            missing.tables.push_back(table);
    for (const auto& text : platform::dialect::createStatements(missing, platform::dialect::Engine::sqlite))
        database.runNative(text);
}

} // namespace

const contract::Schema& stateSchema() {
    using contract::ColumnType;
    static const contract::Schema tables{{
        {"STATI_LEGAME",
         {{"STATI_GUID", ColumnType::guid, false}, {"STATI_ID_WF02", ColumnType::integer, false}},
         {"STATI_GUID"},
         {}},
        {"STATI_STORIA",
         {{"STORIA_ID", ColumnType::identity, false},
          {"STORIA_GUID", ColumnType::guid, false},
          {"STORIA_ID_WF02", ColumnType::integer, false},
          {"STORIA_GUIDORIG", ColumnType::guid},
          {"STORIA_UTENTE", ColumnType::text, true, 50},
          {"STORIA_DATA", ColumnType::date}},
         {"STORIA_ID"},
         {{"IX_STORIA_GUID", {"STORIA_GUID"}}}},
    }};
    return tables;
}

contract::Schema withStates(contract::Schema other) {
    const auto& own = stateSchema().tables;
    other.tables.insert(other.tables.end(), own.begin(), own.end());
    return other;
}

std::unique_ptr<Connection> openStateCompanion(const std::string& databasePath) {
    const std::string file = stateCompanionOf(databasePath);
    std::error_code ignored;
    if (!fs::exists(file, ignored) || fs::file_size(file, ignored) == 0)
        return {};
    try {
        auto companion = std::make_unique<Connection>(std::string(Connection::scheme) + file);
        companion->Open();
        platform::sqlite::checkDatabase(*companion, stateSchema());
        return companion;
    } catch (const contract::RuntimeError& error) {
        refuseCompanion(file, error.description());
    }
}

void prepareStateTables(Connection& database) {
    if (database.isReadOnly())
        return;
    const auto file = openStateCompanion(database.file());
    if (!file && hasTables(database))
        return;
    const std::string name = stateCompanionOf(database.file());
    Companion companion;
    try {
        if (file) {
            // An earlier version of the program that still has it open writes nothing more into it meanwhile.
            if (!file->isReadOnly())
                file->BeginTrans();
            read(*file, companion);
        }
    } catch (const contract::RuntimeError& error) {
        refuseCompanion(name, error.description());
    }
    contract::Transaction transaction(database);
    makeMissingTables(database);
    platform::sqlite::checkDatabase(database, stateSchema());
    if (file && platform::sqlite::markOf(database) != markOf(companion)) {
        takeIn(companion, database);
        platform::sqlite::setMark(database, markOf(companion));
    }
    transaction.commit();
    if (file) {
        file->Close();
        setAside(name, ".acquisito");
    }
}

void leaveStateCompanion(const std::string& databasePath) {
    setAside(stateCompanionOf(databasePath), ".vecchio");
}

} // namespace host
