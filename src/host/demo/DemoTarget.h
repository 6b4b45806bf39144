#pragma once

#include "contract/Schema.h"
#include "contract/Value.h"

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace platform::sqlite {
class Connection;
}
namespace platform::odbc {
class Connection;
enum class RowForm : std::uint8_t;
} // namespace platform::odbc

namespace host {

/// Takes many rows of one table. Throws what the database throws.
class RowWriter {
public:
    RowWriter() = default;
    RowWriter(const RowWriter&) = delete;
    RowWriter& operator=(const RowWriter&) = delete;
    virtual ~RowWriter() = default;

    /// One row: a value for each column; a missing value is a null.
    virtual void append(std::span<const contract::Value> row) = 0;
    void append(std::initializer_list<contract::Value> row) { append(std::span(row.begin(), row.size())); }
    /// Writes the rows that still wait.
    virtual void finish() = 0;
};

/// The tables of a database that is being filled, within the transaction that is open on its connection.
class DemoTarget {
public:
    DemoTarget() = default;
    DemoTarget(const DemoTarget&) = delete;
    DemoTarget& operator=(const DemoTarget&) = delete;
    virtual ~DemoTarget() = default;

    /// A writer for these columns of a table; it stands until the target goes.
    RowWriter& table(std::string_view name, const std::vector<std::string>& columns);
    /// Writes what still waits in any writer. Without it rows may be missing.
    void finish();

protected:
    virtual std::unique_ptr<RowWriter> newWriter(std::string_view table, const std::vector<std::string>& columns) = 0;

private:
    std::vector<std::unique_ptr<RowWriter>> writers_;
};

/// The connection must outlive the target.
std::unique_ptr<DemoTarget> newTarget(platform::sqlite::Connection& connection);
/// So must the schema, which tells the columns' types. The form is one that the connection's server reads.
std::unique_ptr<DemoTarget> newTarget(platform::odbc::Connection& connection, const contract::Schema& schema,
                                      platform::odbc::RowForm form);

} // namespace host
