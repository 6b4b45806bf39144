#pragma once

#include "contract/CellStore.h"
#include "contract/Value.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace contract {

/// Data type of a field. The codes are ADO's DataTypeEnum
/// (https://learn.microsoft.com/sql/ado/reference/ado-api/datatypeenum).
enum class FieldType : std::int16_t {
    empty = 0,
    smallInt = 2,
    integer = 3,
    single = 4,
    doublePrecision = 5,
    currency = 6,
    date = 7,
    boolean = 11,
    variant = 12,
    decimal = 14,
    tinyInt = 16,
    unsignedTinyInt = 17,
    unsignedSmallInt = 18,
    unsignedInt = 19,
    bigInt = 20,
    unsignedBigInt = 21,
    guid = 72,
    binary = 128,
    character = 129,
    wideCharacter = 130,
    numeric = 131,
    dbDate = 133,
    dbTime = 134,
    dbTimeStamp = 135,
    varChar = 200,
    longVarChar = 201,
    varWChar = 202,
    longVarWChar = 203,
    varBinary = 204,
    longVarBinary = 205
};

struct FieldInfo {
    std::string name;                    ///< the column's name or alias
    FieldType type = FieldType::variant; ///< data type
    int precision = 0;                   ///< digits in all of a numeric field, 0 where it does not apply
    int numericScale = 0;                ///< digits after the point of a numeric field
};

/// The description of a result's columns; shared by all the results of one prepared statement.
using FieldList = std::vector<FieldInfo>;

/// The values of one column of a snapshot, in the most compact form that holds them: 8 bytes a whole or real number, 4
/// bytes a date, a text's own bytes and 8 more. A value of another kind than its column's is kept aside, as it is.
class Column {
public:
    enum class Storage : std::uint8_t { integer, real, date, text };

    explicit Column(FieldType type = FieldType::variant);

    void appendNull() {
        mark(size_, true);
        placeholder();
    }
    void append(std::int64_t value) {
        if (storage_ != Storage::integer) {
            appendAside(value);
            return;
        }
        cells_.push(value);
        ++size_;
    }
    void append(double value) {
        if (storage_ != Storage::real) {
            appendAside(value);
            return;
        }
        cells_.push(value);
        ++size_;
    }
    void append(Date value) {
        if (storage_ != Storage::date) {
            appendAside(value);
            return;
        }
        cells_.push(value.days());
        ++size_;
    }
    /// UTF-8.
    void append(std::string_view value) {
        if (storage_ != Storage::text) {
            appendAside(value);
            return;
        }
        characters_.append(value.data(), value.size());
        cells_.push(static_cast<std::uint64_t>(characters_.bytes()));
        ++size_;
    }
    void append(const Value& value);

    // A block of rows at once.
    void appendNulls(std::size_t count);
    void append(std::span<const std::int64_t> values) { appendNumbers(values, Storage::integer); }
    void append(std::span<const double> values) { appendNumbers(values, Storage::real); }
    /// Where a text of at most that many bytes has room in a column of texts; appendWritten() then appends as many
    /// bytes of it as were written. Valid until the next change.
    char* textRoom(std::size_t bytes) { return characters_.room(bytes); }
    void appendWritten(std::size_t bytes) {
        characters_.written(bytes);
        cells_.push(static_cast<std::uint64_t>(characters_.bytes()));
        ++size_;
    }
    /// Makes room for that many more rows; unlike reserve(), with some for the blocks that may follow.
    void expect(std::size_t rows) { cells_.room(rows * cellSize()); }

    void reserve(std::size_t rows);
    std::size_t size() const { return size_; }
    Storage storage() const { return storage_; }

    bool isNull(std::size_t row) const;
    /// The value with the kind that suits the column's type; Null for a null.
    Value value(std::size_t row) const;
    /// As Value::integer(), without a copy.
    std::optional<std::int64_t> integer(std::size_t row) const;
    /// The characters of a text cell; empty for null and for a value of another kind. Valid until the next change.
    std::string_view text(std::size_t row) const;

    void set(std::size_t row, const Value& value);

    /// Bytes in use, capacity included.
    std::size_t memory() const;

private:
    void mark(std::size_t row, bool null);
    void placeholder();
    std::size_t cellSize() const { return storage_ == Storage::date ? sizeof(std::int32_t) : sizeof(std::int64_t); }
    template <class T> void appendNumbers(std::span<const T> values, Storage storage) {
        if (storage_ != storage) {
            for (const T value : values)
                appendAside(value);
            return;
        }
        cells_.append(static_cast<const char*>(static_cast<const void*>(values.data())), values.size_bytes());
        size_ += values.size();
    }
    void appendAside(Value value);
    void aside(std::size_t row, Value value);
    std::string_view stored(std::size_t row) const;
    const Value* findAside(std::size_t row) const;

    FieldType type_;
    Storage storage_;
    std::size_t size_ = 0;
    CellStore cells_;      // int64, double, days of a date, or where a text ends, by the storage
    CellStore characters_; // of the texts, one after the other
    CellStore nulls_;      // one bit a row in words of 64, only as long as the last null needs
    std::vector<std::pair<std::size_t, Value>> odd_; // by row
};

/// The rows of one result, read whole and held by column on the client.
class Snapshot {
public:
    /// No fields, no rows.
    void clear();
    /// Clears, then takes these fields.
    void start(std::shared_ptr<const FieldList> fields);

    const FieldList& fields() const { return *fields_; }
    /// Position of a field by name, without regard to the case of ASCII letters; nothing when there is none.
    std::optional<std::size_t> find(std::string_view name) const;

    // The columns are made when they are first written to: many results have no row.
    Column& column(std::size_t field) {
        if (columns_.empty())
            makeColumns();
        return columns_[field];
    }
    const Column& column(std::size_t field) const { return columns_.empty() ? noRows() : columns_[field]; }
    std::size_t columnCount() const { return fields_->size(); }

    /// To be called once after each row's values were appended to every column.
    void rowDone() { ++rows_; }
    void setRowCount(std::size_t rows) { rows_ = rows; }
    std::size_t rowCount() const { return rows_; }

    std::size_t memory() const;

private:
    static const std::shared_ptr<const FieldList>& none();
    static const Column& noRows();
    void makeColumns();

    std::shared_ptr<const FieldList> fields_ = none();
    std::vector<Column> columns_;
    std::size_t rows_ = 0;
};

} // namespace contract
