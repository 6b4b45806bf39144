#pragma once

#include <QString>

#include <memory>
#include <set>
#include <string>
#include <vector>

struct sqlite3;

namespace platform::odbc {
class Connection;
}

namespace e2e {

class Workplace;

/// The tables of a database as an outside program reaches them: plain SQL, untranslated. What it is given must mean the
/// same to SQLite and to SQL Server, but for days: 'yyyy-mm-dd' in both.
class Database {
public:
    /// An embedded one.
    explicit Database(const QString& file);
    /// The workplace's.
    explicit Database(const Workplace& place);
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;
    ~Database();

    /// One or several statements; a failure fails the test.
    void run(const std::string& sql);
    /// The rows of a query as texts, "null" for nulls.
    std::vector<std::vector<std::string>> rows(const std::string& sql);
    /// First column of the first row; "none" without rows.
    std::string value(const std::string& sql);
    /// Every row of the table of nodes, in one text: to see that nothing changed.
    std::string nodes();

private:
    void open(const QString& file);
    void runOnServer(const std::string& sql);
    std::vector<std::vector<std::string>> rowsOfServer(const std::string& sql);

    sqlite3* database_ = nullptr;
    std::unique_ptr<platform::odbc::Connection> server_;
};

/// Names of the program's tables, the host's with them.
std::set<std::string> tablesOfTheProgram();

/// Drops the program's tables, the host's with them, where they are there.
void dropServerTables(const std::string& connectionString);

/// Fills the tables of a new database with two customer hierarchies, one of suppliers and an empty one of company 1,
/// and one supplier hierarchy of company 2 (see the .cpp for the drawing).
void fillForest(Database& database);

} // namespace e2e
