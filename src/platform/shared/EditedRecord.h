#pragma once

#include "contract/Connection.h"
#include "contract/Recordset.h"
#include "contract/RuntimeError.h"
#include "contract/Statement.h"
#include "contract/Value.h"
#include "platform/shared/RecordStatements.h"

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace platform::shared {

/// Another user has changed the record since it was read: nothing was written, and the record set holds what stands
/// there now. A RuntimeError 5.
class RecordChanged : public contract::RuntimeError {
public:
    using RuntimeError::RuntimeError;
};

/// The record that a data-entry frame edits: its key, its values as they were read, and how it is inserted, updated and
/// deleted. It knows nothing of the fields that show it.
class EditedRecord {
public:
    /// name: the frame's, for messages.
    explicit EditedRecord(std::string_view name) : name_(name) {}

    /// What the record is read from. keyField counts while no key columns are set. The connection may be null until
    /// something is read or written.
    void open(std::shared_ptr<contract::Connection> connection, std::shared_ptr<contract::Recordset> records,
              const contract::Statement& statement, std::string_view keyField);
    /// Takes the rows, which are read where the record set is not open; a record set of its own where it is null.
    std::shared_ptr<contract::Recordset> load(const contract::Statement& statement,
                                              std::shared_ptr<contract::Recordset> records);
    void setTable(std::string_view table, const std::vector<std::string>& keyColumns);
    /// What a field of a record that does not exist yet holds; written with it even when no field shows it.
    void setDefault(std::string_view field, const contract::Value& value);
    /// A value that is written with the record although no field shows it.
    void setValue(std::string_view field, const contract::Value& value);
    /// Lets go of connection and rows. Table, key columns and defaults stay.
    void close();

    /// Shows the row under the record set's cursor, or a new record where it stands on none.
    void show();
    void showRow(std::size_t row);
    void showNew();
    /// Whether the record is one of the database.
    bool exists() const { return exists_; }
    /// Of the record shown; of a new one, and of a field that the rows do not have, its default, Empty without one.
    contract::Value value(std::string_view field) const;

    /// Writes what the fields hold, in their order: the values that no field shows first, of a new record the other
    /// defaults last. The key columns of a record that exists stay. The record set shows what was written.
    ///
    /// Throws RuntimeError 91 without a connection, RecordChanged, RuntimeError 3021 when the record is no longer
    /// there, and what the connection throws; nothing was written then.
    void save(const ColumnValues& fields);
    /// Deletes the record and reads the rows again. Nothing for a new one.
    void erase();

    /// Nothing without rows.
    const std::shared_ptr<contract::Recordset>& records() const { return records_; }
    const std::shared_ptr<contract::Connection>& connection() const { return connection_; }
    /// The database's records of the last failure.
    contract::ErrorList errors() const;

private:
    contract::Connection& database() const;
    bool isKey(std::string_view field) const;
    ColumnValues valuesToWrite(const ColumnValues& fields) const;
    ColumnValues asRead(const ColumnValues& fields) const;
    [[noreturn]] void refuseStale();
    void keepWritten(const ColumnValues& values);
    void append(const ColumnValues& values);
    void readKey();

    std::string name_;
    std::shared_ptr<contract::Connection> connection_;
    std::shared_ptr<contract::Recordset> records_;
    contract::Statement statement_;
    std::string table_;
    std::vector<std::string> keyColumns_;
    std::map<std::string, contract::Value, std::less<>> defaults_;
    ColumnValues hidden_;
    ColumnValues key_; ///< of the record shown
    bool exists_ = false;
};

} // namespace platform::shared
