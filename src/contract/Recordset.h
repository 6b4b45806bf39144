#pragma once

#include "contract/Connection.h"
#include "contract/Snapshot.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

namespace contract {

enum class MarshalOptions : std::uint8_t { all = 0, modifiedOnly = 1 };

class Recordset;

/// One field of the current record.
class Field {
public:
    Field(const Recordset& records, std::size_t field) : records_(records), field_(field) {}

    std::string_view Name() const;
    FieldType Type() const;
    int NumericScale() const;
    /// Throws RuntimeError 3021 when the record set stands on no record.
    contract::Value Value() const;

private:
    const Recordset& records_;
    std::size_t field_;
};

/// A client-side record set with a cursor: a snapshot, read whole, whose server side is closed at once.
///
/// It is empty exactly when BOF and EOF hold together. A record set that was never opened is empty.
class Recordset {
public:
    void SetActiveConnection(std::shared_ptr<Connection> connection) { connection_ = std::move(connection); }
    void SetSource(Statement statement) { source_ = std::move(statement); }
    const Statement& Source() const { return source_; }
    void SetMarshalOptions(MarshalOptions options) { marshalOptions_ = options; }
    MarshalOptions GetMarshalOptions() const { return marshalOptions_; }

    /// Reads the source over the active connection and stands on the first record. Throws what the connection throws,
    /// RuntimeError 91 without a connection; the record set is empty then.
    void Open();
    void Open(const Statement& source, Connection& connection);
    /// Back to no fields and no rows.
    void Close();
    bool IsOpen() const { return open_; }

    bool Bof() const { return row_ < 0 || rows_.rowCount() == 0; }
    bool Eof() const { return row_ >= static_cast<std::int64_t>(rows_.rowCount()); }
    bool Empty() const { return rows_.rowCount() == 0; }
    std::size_t RecordCount() const { return rows_.rowCount(); }

    void MoveFirst() { row_ = 0; }
    void MoveNext();
    void MovePrevious();
    /// To the record of that row, counted from 0. Throws RuntimeError 3021 when there is none.
    void MoveTo(std::size_t row);
    /// Past the last record.
    void MoveEnd() { row_ = static_cast<std::int64_t>(rows_.rowCount()); }
    /// Row of the current record, counted from 0; nothing at BOF or EOF.
    std::optional<std::size_t> Row() const;

    std::size_t FieldCount() const { return rows_.fields().size(); }
    /// Throws RuntimeError 3265 when there is no such field.
    std::size_t FieldIndex(std::string_view name) const;
    contract::Field Fields(std::size_t index) const { return {*this, index}; }
    contract::Field Fields(std::string_view name) const { return {*this, FieldIndex(name)}; }

    /// The current record's value. Throws RuntimeError 3265 for an unknown name, 3021 where there is no record.
    contract::Value operator[](std::string_view name) const;

    /// Changes a value of the client's copy; the database is not touched.
    void SetValue(std::size_t row, std::size_t field, const contract::Value& value);

    const Snapshot& rows() const { return rows_; }
    /// To fill a record set without a connection. Stands on the first record afterwards if the caller calls
    /// MoveFirst().
    Snapshot& fill() {
        open_ = true;
        row_ = 0;
        return rows_;
    }

private:
    std::shared_ptr<Connection> connection_;
    Statement source_;
    MarshalOptions marshalOptions_ = MarshalOptions::all;
    Snapshot rows_;
    std::int64_t row_ = 0;
    bool open_ = false;
};

} // namespace contract
