#pragma once

#include "property/MoveModel.h"

#include "plugin/contract/Connection.h"

#include <memory>
#include <string>
#include <vector>

namespace concurrent {

/// An embedded database of company 1 on which several processes work, with distinte of customers; removed with it. It
/// keeps no connection open between two calls, so that a process may fork.
class SharedDatabase {
public:
    SharedDatabase();
    SharedDatabase(const SharedDatabase&) = delete;
    SharedDatabase& operator=(const SharedDatabase&) = delete;
    ~SharedDatabase();

    std::string connectionString() const;
    const std::string& path() const { return path_; }

    /// Makes the database hold exactly this world.
    void write(const model::World& world);
    /// The rows without the marks of who changed them, by ascending id.
    std::vector<model::Row> rows() const;
    /// What the engine's own check finds; "ok" when nothing.
    std::string check() const;

private:
    std::string path_;
};

/// The same rows without the marks of who changed them.
std::vector<model::Row> withoutMarks(std::vector<model::Row> rows);

/// One line a row.
std::string describe(const std::vector<model::Row>& rows);

} // namespace concurrent
