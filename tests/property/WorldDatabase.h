#pragma once

#include "contract/Connection.h"
#include "property/MoveModel.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace property {

/// Over what a test's program reaches its database.
enum class Where {
    embedded,
    odbc,  ///< an embedded database through unixODBC and SQLite's driver
    server ///< the server that DISTINTE_TEST_ODBC names
};

/// For the names of test cases: "Embedded", "Odbc", "Server".
std::string nameOf(Where where);

/// A database of company 1 with three distinte of customers that a test fills and looks into, apart from the program
/// under test; removed with the object. A server's tables are this object's alone while it lives: other tests wait.
class WorldDatabase {
public:
    /// Why there can be no such database here; nothing when there can.
    static std::optional<std::string> missing(Where where);

    /// forks: no connection stays open between two calls, so that the process may fork then.
    explicit WorldDatabase(Where where = Where::embedded, bool forks = false);
    WorldDatabase(const WorldDatabase&) = delete;
    WorldDatabase& operator=(const WorldDatabase&) = delete;
    ~WorldDatabase();

    Where where() const { return where_; }
    /// The program's.
    const std::string& connectionString() const { return connectionString_; }
    /// Path of an embedded one.
    const std::string& path() const { return path_; }
    /// A connection of the program's kind, not open yet.
    std::unique_ptr<contract::Connection> connect() const;

    /// Makes the database hold exactly this world. What comes after this needs no care of the disk.
    void write(const model::World& world);
    /// The rows by ascending id, with the marks of who changed them. On a server the rows that came after write() bear
    /// the numbers that the world would have given them.
    std::vector<model::Row> rows();
    /// Gives the rows that came after write() the numbers that rows() gives them on a server, by ascending id.
    void renumber(std::vector<model::Row>& rows) const;
    /// What another user does: gives a node's link another end.
    void changeEnd(std::int64_t node, contract::Date end);
    /// Whether the engine's own check finds nothing wrong with the file; a server keeps its own.
    bool sound();

private:
    /// The own connection for one call.
    class Visit {
    public:
        explicit Visit(WorldDatabase& database) : database_(database) {}
        Visit(const Visit&) = delete;
        Visit& operator=(const Visit&) = delete;
        ~Visit() {
            if (database_.forks_)
                database_.direct_.reset();
        }

    private:
        WorldDatabase& database_;
    };
    contract::Connection& direct();
    void run(const std::string& text);
    void insert(const std::string& table, const std::string& columns, const std::vector<std::string>& rows);
    std::string day(contract::Date date) const;

    Where where_;
    bool forks_;
    int lock_ = -1; ///< of a server
    std::string path_;
    std::string connectionString_;
    std::unique_ptr<contract::Connection> direct_;
    std::function<void(const std::string&)> native_; ///< runs a text over direct_
    std::int64_t highest_ = 0;                       ///< id of the world written last
    std::int64_t next_ = 1;                          ///< id that the world would give next
};

/// The rows over an open connection, with their own numbers and in the order in which the database gives them unasked.
std::vector<model::Row> rowsAsTheyLie(contract::Connection& connection);

/// The same rows without the marks of who changed them.
std::vector<model::Row> withoutMarks(std::vector<model::Row> rows);

/// One line a row.
std::string describe(const std::vector<model::Row>& rows);

} // namespace property
