#include "platform/odbc/RowReader.h"

#include "platform/dialect/SqliteValues.h"
#include "platform/odbc/Text.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <span>

namespace platform::odbc {

namespace {

using contract::Column;

constexpr std::size_t budget = 16U << 20U; ///< bytes of a block, at most
constexpr std::size_t fewestRows = 16;     ///< of a block, however long they are
constexpr std::size_t alignment = 8;
constexpr std::size_t firstPart = 512; ///< bytes of the first part of a text fetched by itself, at least

std::size_t aligned(std::size_t size) {
    return (size + alignment - 1) / alignment * alignment;
}

/// A number as its canonical text: a digit before the point, whatever the driver writes.
std::string_view canonical(std::string_view digits, std::string& scratch) {
    const bool negative = !digits.empty() && digits.front() == '-';
    const auto rest = digits.substr(negative ? 1 : 0);
    if (rest.empty() || rest.front() != '.')
        return digits;
    scratch = negative ? "-0" : "0";
    scratch += rest;
    return scratch;
}

} // namespace

RowReader::Outcome RowReader::read(SQLHSTMT statement, Engine engine,
                                   const std::optional<std::vector<dialect::ResultColumn>>& known, Fetch fetch,
                                   contract::Snapshot& rows) {
    SQLSMALLINT count = 0;
    if (!SQL_SUCCEEDED(SQLNumResultCols(statement, &count)))
        return Outcome::failed;
    if (count <= 0)
        return Outcome::noResult;
    if (!layout_.describe(statement, count, engine, known))
        return Outcome::failed;
    rows.start(layout_.fields);
    return fetch == Fetch::byBlock ? readBlocks(statement, rows) : readByRow(statement, rows);
}

void RowReader::arrange() {
    std::size_t row = 0;
    for (const auto& bound : layout_.columns)
        row += aligned(bound.width);
    rowsPerBlock_ = std::clamp(budget / std::max<std::size_t>(row, 1), fewestRows, blockRows);
    std::size_t offset = 0;
    for (auto& bound : layout_.columns) {
        bound.offset = offset;
        offset += aligned(bound.width * rowsPerBlock_);
    }
    if (offset > capacity_) {
        // Not filled: most results have few rows, and touch little of it.
        arrays_.reset(new char[offset]);
        capacity_ = offset;
    }
    if (indicators_.size() < layout_.columns.size() * rowsPerBlock_)
        indicators_.resize(layout_.columns.size() * rowsPerBlock_);
    states_.assign(blockRows, SQL_ROW_NOROW);
}

bool RowReader::bind(SQLHSTMT statement) {
    arrange();
    if (!SQL_SUCCEEDED(SQLSetStmtAttr(statement, SQL_ATTR_ROW_ARRAY_SIZE, attribute(rowsPerBlock_), SQL_IS_UINTEGER)) ||
        !SQL_SUCCEEDED(SQLSetStmtAttr(statement, SQL_ATTR_ROWS_FETCHED_PTR, &fetched_, SQL_IS_POINTER)) ||
        !SQL_SUCCEEDED(SQLSetStmtAttr(statement, SQL_ATTR_ROW_STATUS_PTR, states_.data(), SQL_IS_POINTER)))
        return false;
    for (std::size_t i = 0; i < layout_.columns.size(); ++i) {
        const BoundColumn& bound = layout_.columns[i];
        if (!SQL_SUCCEEDED(SQLBindCol(statement, static_cast<SQLUSMALLINT>(i + 1), cTypeOf(bound.form),
                                      arrays_.get() + bound.offset, static_cast<SQLLEN>(bound.width), indicators(i))))
            return false;
    }
    return true;
}

RowReader::Outcome RowReader::readBlocks(SQLHSTMT statement, contract::Snapshot& rows) {
    if (!bind(statement))
        return Outcome::failed;
    for (;;) {
        fetched_ = 0;
        const SQLRETURN result = SQLFetch(statement);
        if (result == SQL_NO_DATA)
            return Outcome::complete;
        if (!SQL_SUCCEEDED(result))
            return Outcome::failed;
        if (fetched_ == 0)
            return Outcome::complete;
        const auto count = static_cast<std::size_t>(fetched_);
        if (result == SQL_SUCCESS_WITH_INFO && hasFailedRows(count))
            return Outcome::failed;
        for (std::size_t i = 0; i < layout_.columns.size(); ++i)
            if (!appendBlock(rows.column(i), i, count))
                return Outcome::tooLong;
        rows.setRowCount(rows.rowCount() + count);
    }
}

// The values of one column, in runs of nulls and of others. False when one did not fit into its array.
bool RowReader::appendBlock(contract::Column& column, std::size_t field, std::size_t count) {
    BoundColumn& bound = layout_.columns[field];
    const char* values = arrays_.get() + bound.offset;
    const SQLLEN* lengths = indicators(field);
    column.expect(count);
    for (std::size_t row = 0; row < count;) {
        const std::size_t first = row;
        const bool null = lengths[first] == SQL_NULL_DATA;
        while (row < count && (lengths[row] == SQL_NULL_DATA) == null)
            ++row;
        if (null)
            column.appendNulls(row - first);
        else if (!appendRun(column, bound, values + first * bound.width, lengths + first, row - first))
            return false;
    }
    return true;
}

bool RowReader::appendRun(contract::Column& column, BoundColumn& bound, const char* values, const SQLLEN* lengths,
                          std::size_t count) {
    if (bound.form == Form::whole) {
        static_assert(sizeof(SQLBIGINT) == sizeof(std::int64_t));
        column.append(std::span(static_cast<const std::int64_t*>(static_cast<const void*>(values)), count));
        return true;
    }
    const bool isText = bound.form == Form::wide || bound.form == Form::narrow;
    const std::size_t zero = bound.form == Form::wide ? sizeof(SQLWCHAR) : 1;
    const auto longest = static_cast<SQLLEN>(bound.width - zero);
    for (std::size_t row = 0; row < count; ++row, values += bound.width) {
        if (isText && (lengths[row] < 0 || lengths[row] > longest))
            return false;
        append(column, bound, values, lengths[row]);
    }
    return true;
}

// A row that the driver could not convert among others that it could.
bool RowReader::hasFailedRows(std::size_t count) const {
    return std::any_of(states_.begin(), states_.begin() + static_cast<std::ptrdiff_t>(std::min(count, states_.size())),
                       [](auto state) { return state == SQL_ROW_ERROR; });
}

RowReader::Outcome RowReader::readByRow(SQLHSTMT statement, contract::Snapshot& rows) {
    SQLSetStmtAttr(statement, SQL_ATTR_ROW_ARRAY_SIZE, attribute(1), SQL_IS_UINTEGER);
    std::string value;
    for (;;) {
        const SQLRETURN result = SQLFetch(statement);
        if (result == SQL_NO_DATA)
            return Outcome::complete;
        if (!SQL_SUCCEEDED(result))
            return Outcome::failed;
        for (std::size_t i = 0; i < layout_.columns.size(); ++i) {
            bool null = false;
            if (!getValue(statement, i, value, null))
                return Outcome::failed;
            if (null)
                rows.column(i).appendNull();
            else
                append(rows.column(i), layout_.columns[i], value.data(), static_cast<SQLLEN>(value.size()));
        }
        rows.rowDone();
    }
}

// The whole of one value, in as many parts as the driver gives it.
bool RowReader::getValue(SQLHSTMT statement, std::size_t field, std::string& value, bool& null) {
    const BoundColumn& bound = layout_.columns[field];
    const bool isText = bound.form == Form::wide || bound.form == Form::narrow;
    const std::size_t zero = !isText ? 0 : (bound.form == Form::wide ? sizeof(SQLWCHAR) : 1);
    std::size_t used = 0;
    std::size_t part = std::max<std::size_t>(bound.width, firstPart);
    for (;;) {
        value.resize(used + part);
        SQLLEN length = 0;
        const SQLRETURN result = SQLGetData(statement, static_cast<SQLUSMALLINT>(field + 1), cTypeOf(bound.form),
                                            value.data() + used, static_cast<SQLLEN>(part), &length);
        if (result == SQL_NO_DATA && used > 0)
            break;
        if (!SQL_SUCCEEDED(result))
            return false;
        null = length == SQL_NULL_DATA;
        if (null || !isText) {
            value.resize(null ? 0 : bound.width);
            return true;
        }
        const bool rest = length == SQL_NO_TOTAL || static_cast<std::size_t>(length) > part - zero;
        used += rest ? part - zero : static_cast<std::size_t>(length);
        if (!rest)
            break;
        // What is left is known, or the parts double.
        part = length == SQL_NO_TOTAL ? 2 * part : static_cast<std::size_t>(length) - (part - zero) + zero;
    }
    value.resize(used);
    return true;
}

void RowReader::append(contract::Column& column, BoundColumn& bound, const char* value, SQLLEN length) {
    switch (bound.form) {
    case Form::whole: {
        SQLBIGINT number = 0;
        std::memcpy(&number, value, sizeof number);
        column.append(static_cast<std::int64_t>(number));
        return;
    }
    case Form::real: {
        SQLDOUBLE number = 0;
        std::memcpy(&number, value, sizeof number);
        column.append(double{number});
        return;
    }
    case Form::timestamp:
        appendDate(column, bound, value);
        return;
    case Form::guid: {
        SQLGUID guid;
        std::memcpy(&guid, value, sizeof guid);
        writeGuid(guid, column.textRoom(guidLength));
        column.appendWritten(guidLength);
        return;
    }
    case Form::narrow: {
        const std::string_view text(value, static_cast<std::size_t>(length));
        if (bound.sqlite)
            appendSqlite(column, bound, text);
        else
            column.append(canonical(text, scratch_));
        return;
    }
    case Form::wide: {
        const std::size_t count = static_cast<std::size_t>(length) / sizeof(SQLWCHAR);
        column.appendWritten(writeNarrow(value, count, column.textRoom(count * narrowPerUnit)));
        return;
    }
    }
}

void RowReader::appendDate(contract::Column& column, BoundColumn& bound, const char* value) {
    SQL_TIMESTAMP_STRUCT day = {};
    if (bound.dateRead && std::memcmp(bound.lastBytes, value, sizeof day) == 0) {
        column.append(bound.lastDate);
        return;
    }
    std::memcpy(&day, value, sizeof day);
    if (const auto date = contract::Date::of(day.year, day.month, day.day)) {
        std::memcpy(bound.lastBytes, value, sizeof day);
        bound.lastDate = *date;
        bound.dateRead = true;
        column.append(*date);
        return;
    }
    // A day that this program knows no date for, shown as the database has it.
    char text[40];
    std::snprintf(text, sizeof text, "%04d-%02u-%02u", int{day.year}, unsigned{day.month}, unsigned{day.day});
    column.append(std::string_view(text));
}

// SQLite keeps a value of any kind in a column of any type; its driver gives all of them as characters.
void RowReader::appendSqlite(contract::Column& column, BoundColumn& bound, std::string_view text) {
    const char* end = text.data() + text.size();
    std::int64_t whole = 0;
    double real = 0;
    const auto isWhole = [&] {
        const auto [rest, error] = std::from_chars(text.data(), end, whole);
        return error == std::errc() && rest == end;
    };
    const auto isReal = [&] {
        const auto [rest, error] = std::from_chars(text.data(), end, real);
        return error == std::errc() && rest == end;
    };
    switch (column.storage()) {
    case Column::Storage::integer:
        if (isWhole())
            column.append(whole);
        else if (isReal())
            column.append(real);
        else
            column.append(text);
        return;
    case Column::Storage::real:
        if (isReal())
            column.append(real);
        else
            column.append(text);
        return;
    case Column::Storage::date: {
        constexpr std::size_t dateLength = 10; // yyyy-mm-dd
        const bool dayOnly = text.size() == dateLength ||
                             (text.size() > dateLength && (text[dateLength] == ' ' || text[dateLength] == 'T'));
        if (dayOnly && bound.dateRead && std::memcmp(bound.lastBytes, text.data(), dateLength) == 0) {
            column.append(bound.lastDate);
            return;
        }
        const auto date = dayOnly ? contract::Date::parseIso(text.substr(0, dateLength)) : std::nullopt;
        if (!date) {
            column.append(text);
            return;
        }
        std::memcpy(bound.lastBytes, text.data(), dateLength);
        bound.lastDate = *date;
        bound.dateRead = true;
        column.append(*date);
        return;
    }
    case Column::Storage::text:
        break;
    }
    if (bound.amount && isWhole())
        column.append(std::string_view(dialect::amountText(whole)));
    else if (bound.amount && isReal())
        column.append(std::string_view(dialect::amountText(real)));
    else
        column.append(text);
}

} // namespace platform::odbc
