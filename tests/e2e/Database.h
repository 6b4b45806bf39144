#pragma once

#include <QString>

#include <string>
#include <vector>

struct sqlite3;

namespace e2e {

/// The tables of an embedded database as an outside program reaches them: plain SQL, nothing of the program between.
class Database {
public:
    explicit Database(const QString& file);
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
    sqlite3* database_ = nullptr;
};

/// Fills the tables of a new database with two customer hierarchies, one of suppliers and an empty one of company 1,
/// and one supplier hierarchy of company 2 (see the .cpp for the drawing).
void fillForest(Database& database);

} // namespace e2e
