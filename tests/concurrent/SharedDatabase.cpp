#include "concurrent/SharedDatabase.h"

#include "data/Schema.h"
#include "platform/sqlite/BulkWriter.h"
#include "platform/sqlite/Connection.h"
#include "platform/sqlite/DatabaseFile.h"
#include "plugin/contract/Recordset.h"

#include <sqlite3.h>

#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include <unistd.h>

namespace concurrent {

namespace {

using platform::sqlite::Connection;

contract::Value orNull(std::optional<std::int64_t> number) {
    return number ? contract::Value(*number) : contract::Value::null();
}

} // namespace

SharedDatabase::SharedDatabase() {
    std::string name = (std::filesystem::temp_directory_path() / "distinte-concurrent-XXXXXX").string();
    const int file = mkstemp(name.data());
    if (file < 0)
        throw std::runtime_error("no temporary file");
    close(file);
    path_ = name;
    std::filesystem::remove(path_);
    platform::sqlite::createDatabase(path_, qz::schema());
}

SharedDatabase::~SharedDatabase() {
    for (const auto* ending : {"", "-journal", ".stati", ".stati-journal"})
        std::filesystem::remove(path_ + ending);
}

std::string SharedDatabase::connectionString() const {
    return std::string(Connection::scheme) + path_;
}

void SharedDatabase::write(const model::World& world) {
    Connection connection(connectionString());
    connection.Open();
    connection.runNative("PRAGMA synchronous = OFF"); // what is tested comes after this
    connection.BeginTrans();
    for (const auto* table : {"QZ01_TIPODISTINTA", "QZ02_DISTINTA", "CG16_ANAGGEN", "CG44_CLIFOR"})
        connection.runNative("DELETE FROM " + std::string(table));
    platform::sqlite::BulkWriter types(connection, "QZ01_TIPODISTINTA",
                                       {"QZ01_ID", "QZ01_DITTA_CG18", "QZ01_CODICE", "QZ01_DESCR", "QZ01_INDTIPOSOGG"});
    for (const auto id : world.namedDistinte)
        types.append({id, std::int64_t{1}, "D" + std::to_string(id), "Distinta", std::int64_t{0}});
    platform::sqlite::BulkWriter registry(connection, "CG16_ANAGGEN", {"CG16_CODICE", "CG16_RAGSOANAG"});
    platform::sqlite::BulkWriter accounts(connection, "CG44_CLIFOR",
                                          {"CG44_DITTA_CG18", "CG44_TIPOCF", "CG44_CLIFOR", "CG44_CODICE_CG16"});
    for (const auto account : world.registered) {
        registry.append({account, "Nome " + std::to_string(account)});
        accounts.append({std::int64_t{1}, std::int64_t{0}, account, account});
    }
    platform::sqlite::BulkWriter nodes(connection, "QZ02_DISTINTA",
                                       {"QZ02_ID", "QZ02_ID_QZ01", "QZ02_IDPARENT_QZ02", "QZ02_DITTA_CG18",
                                        "QZ02_TIPOCF_CG44", "QZ02_CLIFOR_CG44", "QZ02_DATAINIZIOVAL",
                                        "QZ02_DATAFINEVAL", "QZ02_GUID"});
    for (const auto& row : world.rows)
        nodes.append({row.id, row.distinta, orNull(row.parent), std::int64_t{1}, std::int64_t{0}, orNull(row.account),
                      row.start, row.end, "guid " + std::to_string(row.id)});
    // New rows are numbered from here on.
    connection.runNative("DELETE FROM sqlite_sequence WHERE name = 'QZ02_DISTINTA'");
    connection.runNative("INSERT INTO sqlite_sequence (name, seq) VALUES ('QZ02_DISTINTA', " +
                         std::to_string(world.nextId - 1) + ")");
    connection.CommitTrans();
}

std::vector<model::Row> SharedDatabase::rows() const {
    Connection connection(connectionString());
    connection.Open();
    contract::Recordset records;
    records.Open(contract::Statement("SELECT * FROM QZ02_DISTINTA ORDER BY QZ02_ID"), connection);
    std::vector<model::Row> all;
    for (; !records.Eof(); records.MoveNext())
        all.push_back({records["QZ02_ID"].integer().value_or(0), records["QZ02_ID_QZ01"].integer().value_or(0),
                       records["QZ02_IDPARENT_QZ02"].integer(), records["QZ02_CLIFOR_CG44"].integer(),
                       records["QZ02_DATAINIZIOVAL"].date().value_or(contract::Date()),
                       records["QZ02_DATAFINEVAL"].date().value_or(contract::Date())});
    return all;
}

std::string SharedDatabase::check() const {
    Connection connection(connectionString());
    connection.Open();
    std::string answer;
    sqlite3_exec(
        connection.handle(), "PRAGMA integrity_check",
        [](void* text, int, char** values, char**) {
            *static_cast<std::string*>(text) += values[0];
            return 0;
        },
        &answer, nullptr);
    return answer;
}

std::vector<model::Row> withoutMarks(std::vector<model::Row> rows) {
    for (auto& row : rows)
        row.moved = row.closed = false;
    return rows;
}

std::string describe(const std::vector<model::Row>& rows) {
    std::string text;
    for (const auto& row : rows)
        text += std::to_string(row.id) + ": distinta " + std::to_string(row.distinta) + " parent " +
                (row.parent ? std::to_string(*row.parent) : "-") + " account " +
                (row.account ? std::to_string(*row.account) : "-") + " " + row.start.text() + ".." + row.end.text() +
                "\n";
    return text;
}

} // namespace concurrent
