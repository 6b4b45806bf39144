#include "property/WorldDatabase.h"

#include "component/data/Schema.h"
#include "contract/Recordset.h"
#include "odbc/OdbcFixture.h"
#include "odbc/ServerLock.h"
#include "platform/odbc/Connection.h"
#include "platform/odbc/DatabaseTables.h"
#include "platform/sqlite/Connection.h"
#include "platform/sqlite/DatabaseFile.h"

#include <sqlite3.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <stdexcept>
#include <tuple>

#include <unistd.h>

namespace property {

namespace {

std::string inQuotes(const std::string& text) {
    return "'" + text + "'";
}

std::string orNull(std::optional<std::int64_t> number) {
    return number ? std::to_string(*number) : "NULL";
}

std::string guid(std::int64_t id) {
    std::string digits = std::to_string(id);
    return "00000000-0000-0000-0000-" + std::string(12 - digits.size(), '0') + digits;
}

void dropTables(const std::string& connectionString) {
    platform::odbc::Connection connection(connectionString);
    connection.Open();
    odbc_test::dropTables(connection, qz::schema());
}

std::vector<model::Row> readRows(const contract::Statement& query, contract::Connection& connection) {
    contract::Recordset records;
    records.Open(query, connection);
    std::vector<model::Row> all;
    for (; !records.Eof(); records.MoveNext()) {
        model::Row row;
        row.id = records["QZ02_ID"].integer().value_or(0);
        row.distinta = records["QZ02_ID_QZ01"].integer().value_or(0);
        row.parent = records["QZ02_IDPARENT_QZ02"].integer();
        row.account = records["QZ02_CLIFOR_CG44"].integer();
        row.start = records["QZ02_DATAINIZIOVAL"].date().value_or(contract::Date());
        row.end = records["QZ02_DATAFINEVAL"].date().value_or(contract::Date());
        const bool audited = records["QZ02_UTENTEVAR"].text() == "UTENTE";
        const bool inserted = records["QZ02_UTENTECRE"].text() == "UTENTE";
        const bool dated = !records["QZ02_DATAVAR"].isNull();
        row.moved = audited && dated && !inserted;
        row.closed = audited && !dated && !inserted;
        all.push_back(row);
    }
    return all;
}

} // namespace

std::string nameOf(Where where) {
    switch (where) {
    case Where::odbc:
        return "Odbc";
    case Where::server:
        return "Server";
    case Where::embedded:
        break;
    }
    return "Embedded";
}

std::optional<std::string> WorldDatabase::missing(Where where) {
    if (where == Where::odbc && !odbc_test::sqliteDriver())
        return "libsqliteodbc is not installed";
    if (where == Where::server && !odbc_test::serverString())
        return "DISTINTE_TEST_ODBC names no server";
    return std::nullopt;
}

WorldDatabase::WorldDatabase(Where where, bool forks) : where_(where), forks_(forks) {
    if (where_ == Where::server) {
        lock_ = odbc_test::lockServer();
        connectionString_ = odbc_test::serverString().value();
        dropTables(connectionString_);
        platform::odbc::Connection connection(connectionString_);
        connection.Open();
        platform::odbc::createTables(connection, qz::schema());
        return;
    }
    std::string name = (std::filesystem::temp_directory_path() / "distinte-world-XXXXXX").string();
    const int file = mkstemp(name.data());
    if (file < 0)
        throw std::runtime_error("no temporary file");
    close(file);
    path_ = name;
    std::filesystem::remove(path_);
    platform::sqlite::createDatabase(path_, qz::schema());
    connectionString_ = where_ == Where::odbc ? odbc_test::sqliteString(odbc_test::sqliteDriver().value(), path_)
                                              : std::string(platform::sqlite::Connection::scheme) + path_;
}

WorldDatabase::~WorldDatabase() {
    direct_.reset();
    if (where_ == Where::server) {
        try {
            dropTables(connectionString_);
        } catch (const contract::RuntimeError& error) {
            ADD_FAILURE() << error.description();
        }
        odbc_test::unlockServer(lock_);
        return;
    }
    for (const auto* ending : {"", "-journal", ".stati", ".stati-journal"})
        std::filesystem::remove(path_ + ending);
}

std::unique_ptr<contract::Connection> WorldDatabase::connect() const {
    if (where_ == Where::embedded)
        return std::make_unique<platform::sqlite::Connection>(connectionString_);
    return std::make_unique<platform::odbc::Connection>(connectionString_);
}

// A file is filled and read without the driver that is tested over it.
contract::Connection& WorldDatabase::direct() {
    if (direct_)
        return *direct_;
    if (where_ == Where::server) {
        auto connection = std::make_unique<platform::odbc::Connection>(connectionString_);
        connection->Open();
        native_ = [to = connection.get()](const std::string& text) { to->runNative(text); };
        direct_ = std::move(connection);
        return *direct_;
    }
    auto connection =
        std::make_unique<platform::sqlite::Connection>(std::string(platform::sqlite::Connection::scheme) + path_);
    connection->Open();
    connection->runNative("PRAGMA synchronous = OFF");
    native_ = [to = connection.get()](const std::string& text) { to->runNative(text); };
    direct_ = std::move(connection);
    return *direct_;
}

void WorldDatabase::run(const std::string& text) {
    direct();
    native_(text);
}

void WorldDatabase::insert(const std::string& table, const std::string& columns, const std::vector<std::string>& rows) {
    std::string text = "INSERT INTO " + table + " (" + columns + ") VALUES ";
    for (const auto& row : rows)
        text += (&row == &rows.front() ? "(" : ", (") + row + ")";
    const bool numbered = where_ == Where::server && table.starts_with("QZ");
    if (numbered)
        run("SET IDENTITY_INSERT " + table + " ON");
    if (!rows.empty())
        run(text);
    if (numbered)
        run("SET IDENTITY_INSERT " + table + " OFF");
}

// A server reads eight digits as a day whatever its language is.
std::string WorldDatabase::day(contract::Date date) const {
    std::string text = date.iso();
    if (where_ == Where::server)
        std::erase(text, '-');
    return inQuotes(text);
}

void WorldDatabase::write(const model::World& world) {
    const Visit visit(*this);
    direct().BeginTrans();
    for (const auto* table : {"QZ01_TIPODISTINTA", "QZ02_DISTINTA", "CG16_ANAGGEN", "CG44_CLIFOR"})
        run("DELETE FROM " + std::string(table));
    std::vector<std::string> rows;
    for (const auto id : world.namedDistinte)
        rows.push_back(std::to_string(id) + ", 1, 'D" + std::to_string(id) + "', 'Distinta', 0");
    insert("QZ01_TIPODISTINTA", "QZ01_ID, QZ01_DITTA_CG18, QZ01_CODICE, QZ01_DESCR, QZ01_INDTIPOSOGG", rows);
    rows.clear();
    for (const auto account : world.registered)
        rows.push_back(std::to_string(account) + ", 'Nome " + std::to_string(account) + "'");
    insert("CG16_ANAGGEN", "CG16_CODICE, CG16_RAGSOANAG", rows);
    rows.clear();
    for (const auto account : world.registered)
        rows.push_back("1, 0, " + std::to_string(account) + ", " + std::to_string(account));
    insert("CG44_CLIFOR", "CG44_DITTA_CG18, CG44_TIPOCF, CG44_CLIFOR, CG44_CODICE_CG16", rows);
    rows.clear();
    highest_ = 0;
    for (const auto& row : world.rows) {
        rows.push_back(std::to_string(row.id) + ", " + std::to_string(row.distinta) + ", " + orNull(row.parent) +
                       ", 1, 0, " + orNull(row.account) + ", " + day(row.start) + ", " + day(row.end) + ", " +
                       inQuotes(guid(row.id)));
        highest_ = std::max(highest_, row.id);
    }
    insert("QZ02_DISTINTA",
           "QZ02_ID, QZ02_ID_QZ01, QZ02_IDPARENT_QZ02, QZ02_DITTA_CG18, QZ02_TIPOCF_CG44, QZ02_CLIFOR_CG44, "
           "QZ02_DATAINIZIOVAL, QZ02_DATAFINEVAL, QZ02_GUID",
           rows);
    next_ = world.nextId;
    if (where_ != Where::server) {
        // New rows are numbered from here on.
        run("DELETE FROM sqlite_sequence WHERE name = 'QZ02_DISTINTA'");
        run("INSERT INTO sqlite_sequence (name, seq) VALUES ('QZ02_DISTINTA', " + std::to_string(next_ - 1) + ")");
    }
    direct().CommitTrans();
}

std::vector<model::Row> WorldDatabase::rows() {
    const Visit visit(*this);
    auto all = readRows(contract::Statement("SELECT * FROM QZ02_DISTINTA ORDER BY QZ02_ID"), direct());
    if (where_ == Where::server)
        renumber(all);
    return all;
}

// A server gives no number twice, and copies siblings in an order of its own: level by level, by account.
void WorldDatabase::renumber(std::vector<model::Row>& rows) const {
    std::map<std::int64_t, std::int64_t> numbers;
    const auto isNew = [&](std::int64_t id) { return id > highest_; };
    for (;;) {
        std::vector<std::tuple<std::int64_t, std::int64_t, std::int64_t>> level; // parent, account, id
        for (const auto& row : rows) {
            const auto parent = row.parent.value_or(0);
            if (isNew(row.id) && !numbers.contains(row.id) && (!isNew(parent) || numbers.contains(parent)))
                level.emplace_back(isNew(parent) ? numbers[parent] : parent, row.account.value_or(0), row.id);
        }
        if (level.empty())
            break;
        std::sort(level.begin(), level.end());
        for (const auto& entry : level)
            numbers.emplace(std::get<2>(entry), next_ + static_cast<std::int64_t>(numbers.size()));
    }
    for (auto& row : rows) {
        if (numbers.contains(row.id))
            row.id = numbers[row.id];
        if (row.parent && numbers.contains(*row.parent))
            row.parent = numbers[*row.parent];
    }
    std::sort(rows.begin(), rows.end(), [](const auto& a, const auto& b) { return a.id < b.id; });
}

void WorldDatabase::changeEnd(std::int64_t node, contract::Date end) {
    const Visit visit(*this);
    run("UPDATE QZ02_DISTINTA SET QZ02_DATAFINEVAL = " + day(end) + " WHERE QZ02_ID = " + std::to_string(node));
}

bool WorldDatabase::sound() {
    if (where_ == Where::server)
        return true;
    platform::sqlite::Connection connection(std::string(platform::sqlite::Connection::scheme) + path_);
    connection.Open();
    std::string answer;
    sqlite3_exec(
        connection.handle(), "PRAGMA integrity_check",
        [](void* text, int, char** values, char**) {
            *static_cast<std::string*>(text) += values[0];
            return 0;
        },
        &answer, nullptr);
    return answer == "ok";
}

std::vector<model::Row> rowsAsTheyLie(contract::Connection& connection) {
    return readRows(contract::Statement("SELECT * FROM QZ02_DISTINTA"), connection);
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
                (row.moved ? " moved" : "") + (row.closed ? " closed" : "") + "\n";
    return text;
}

} // namespace property
