#include "platform/odbc/BulkWriter.h"

#include "platform/odbc/Text.h"
#include "plugin/contract/RuntimeError.h"

#include <algorithm>
#include <cstring>

namespace platform::odbc {

namespace {

using contract::ColumnType;
using contract::RuntimeError;
using contract::Value;

SQLPOINTER number(std::uintptr_t value) {
    return reinterpret_cast<SQLPOINTER>(value); // NOLINT(performance-no-int-to-ptr)
}

[[noreturn]] void refuse(const std::string& operation, const std::string& why) {
    throw RuntimeError(RuntimeError::invalidCall, operation + why);
}

const contract::ColumnDef& columnOf(const contract::TableDef& table, const std::string& name,
                                    const std::string& operation) {
    const auto at = std::find_if(table.columns.begin(), table.columns.end(),
                                 [&](const auto& column) { return column.name == name; });
    if (at == table.columns.end())
        refuse(operation, ": la tabella non ha la colonna " + name + ".");
    return *at;
}

} // namespace

BulkWriter::BulkWriter(Connection& connection, const contract::TableDef& table, const std::vector<std::string>& columns)
    : connection_(connection), table_(table.name), operation_("Inserimento nella tabella " + table_) {
    if (!connection.InTransaction())
        refuse(operation_, " non ammesso senza una transazione aperta.");
    std::string text = "INSERT INTO " + table_ + " (";
    std::string places;
    for (const auto& name : columns) {
        const auto& column = columnOf(table, name, operation_);
        text += (parameters_.empty() ? "" : ", ") + name;
        places += parameters_.empty() ? "?" : ", ?";
        parameters_.push_back({column.name, column.type, {}, {}});
        identity_ = identity_ || column.type == ColumnType::identity;
    }
    text += ") VALUES (" + places + ")";
    statement_ = StatementHandle(connection.handle());
    if (!statement_)
        connection.fail(SQL_HANDLE_DBC, connection.handle(), operation_);
    const bool server = connection.engine() == Engine::server;
    std::vector<SQLWCHAR> units = wide(text);
    check(server ? SQLPrepareW(statement_.get(), units.data(), static_cast<SQLINTEGER>(units.size()))
                 : SQLPrepare(statement_.get(), reinterpret_cast<SQLCHAR*>(text.data()),
                              static_cast<SQLINTEGER>(text.size())));
    SQLULEN size = 1;
    if (server &&
        SQL_SUCCEEDED(SQLSetStmtAttr(statement_.get(), SQL_ATTR_PARAMSET_SIZE, number(arrayRows), SQL_IS_UINTEGER)) &&
        SQL_SUCCEEDED(SQLGetStmtAttr(statement_.get(), SQL_ATTR_PARAMSET_SIZE, &size, SQL_IS_UINTEGER, nullptr)))
        rowsPerArray_ = std::clamp<std::size_t>(size, 1, arrayRows);
    pending_.reserve(arrayRows * parameters_.size());
}

void BulkWriter::check(SQLRETURN result) {
    if (!SQL_SUCCEEDED(result) && result != SQL_NO_DATA)
        connection_.fail(SQL_HANDLE_STMT, statement_.get(), operation_);
}

void BulkWriter::append(std::span<const Value> row) {
    if (row.size() != parameters_.size())
        refuse(operation_, ": il numero dei valori non è quello delle colonne.");
    pending_.insert(pending_.end(), row.begin(), row.end());
    ++rows_;
    if (pending_.size() >= arrayRows * parameters_.size())
        finish();
}

void BulkWriter::finish() {
    const std::size_t count = pending_.size() / parameters_.size();
    if (count == 0)
        return;
    if (identity_)
        setIdentityInsert(true);
    for (std::size_t first = 0; first < count; first += rowsPerArray_)
        write(first, std::min(rowsPerArray_, count - first));
    if (identity_)
        setIdentityInsert(false);
    pending_.clear();
}

// The server takes a value of a column that it counts by itself for one table at a time only.
void BulkWriter::setIdentityInsert(bool on) {
    if (connection_.engine() == Engine::server)
        connection_.runNative("SET IDENTITY_INSERT " + table_ + (on ? " ON" : " OFF"));
}

void BulkWriter::write(std::size_t first, std::size_t count) {
    SQLULEN processed = 0;
    std::vector<SQLUSMALLINT> states(count, SQL_PARAM_UNUSED);
    if (rowsPerArray_ > 1) {
        check(SQLSetStmtAttr(statement_.get(), SQL_ATTR_PARAM_BIND_TYPE, number(SQL_PARAM_BIND_BY_COLUMN),
                             SQL_IS_UINTEGER));
        check(SQLSetStmtAttr(statement_.get(), SQL_ATTR_PARAMSET_SIZE, number(count), SQL_IS_UINTEGER));
        check(SQLSetStmtAttr(statement_.get(), SQL_ATTR_PARAMS_PROCESSED_PTR, &processed, SQL_IS_POINTER));
        check(SQLSetStmtAttr(statement_.get(), SQL_ATTR_PARAM_STATUS_PTR, states.data(), SQL_IS_POINTER));
    }
    for (std::size_t column = 0; column < parameters_.size(); ++column)
        bind(column, first, count);
    const Reset reset(statement_.get());
    SQLRETURN result = SQLExecute(statement_.get());
    check(result);
    if (rowsPerArray_ == 1)
        return;
    // A row that failed among others is told by its state only.
    if (std::any_of(states.begin(), states.end(), [](auto state) { return state == SQL_PARAM_ERROR; }))
        connection_.fail(SQL_HANDLE_STMT, statement_.get(), operation_);
    while (SQL_SUCCEEDED(result))
        result = SQLMoreResults(statement_.get());
    check(result);
}

template <class T, class Convert>
void BulkWriter::pack(std::size_t column, std::size_t first, std::size_t count, SQLSMALLINT cType, SQLSMALLINT type,
                      SQLULEN size, SQLSMALLINT scale, Convert convert) {
    Parameter& parameter = parameters_[column];
    parameter.values.resize(count * sizeof(T));
    parameter.lengths.resize(count);
    for (std::size_t row = 0; row < count; ++row) {
        const Value& value = pending(first + row, column);
        parameter.lengths[row] = value.isMissing() ? SQL_NULL_DATA : static_cast<SQLLEN>(sizeof(T));
        if (value.isMissing())
            continue;
        const std::optional<T> converted = convert(value);
        if (!converted)
            throw RuntimeError(RuntimeError::typeMismatch, operation_ + ": il valore «" + value.text() +
                                                               "» non è del tipo della colonna " +
                                                               std::string(parameter.name) + ".");
        std::memcpy(parameter.values.data() + row * sizeof(T), &*converted, sizeof(T));
    }
    check(SQLBindParameter(statement_.get(), static_cast<SQLUSMALLINT>(column + 1), SQL_PARAM_INPUT, cType, type, size,
                           scale, parameter.values.data(), sizeof(T), parameter.lengths.data()));
}

void BulkWriter::packText(std::size_t column, std::size_t first, std::size_t count) {
    Parameter& parameter = parameters_[column];
    parameter.lengths.resize(count);
    const bool server = connection_.engine() == Engine::server;
    // A number with decimals and a day of SQLite go as their texts too.
    const auto textOf = [](const Value& value) {
        const auto* date = value.as<contract::Date>();
        return date != nullptr ? date->iso() : value.text();
    };
    std::vector<std::string> bytes(count);
    std::size_t width = 2;
    for (std::size_t row = 0; row < count; ++row) {
        const Value& value = pending(first + row, column);
        parameter.lengths[row] = SQL_NULL_DATA;
        if (value.isMissing())
            continue;
        if (server) {
            const auto units = wide(textOf(value));
            bytes[row].assign(reinterpret_cast<const char*>(units.data()), units.size() * sizeof(SQLWCHAR));
        } else {
            bytes[row] = textOf(value);
        }
        parameter.lengths[row] = static_cast<SQLLEN>(bytes[row].size());
        width = std::max(width, bytes[row].size());
    }
    parameter.values.assign(count * width, '\0');
    for (std::size_t row = 0; row < count; ++row)
        std::memcpy(parameter.values.data() + row * width, bytes[row].data(), bytes[row].size());
    constexpr std::size_t longest = 4000;
    const std::size_t characters = server ? width / sizeof(SQLWCHAR) : width;
    const SQLSMALLINT wideType = characters > longest ? SQL_WLONGVARCHAR : SQL_WVARCHAR;
    check(SQLBindParameter(statement_.get(), static_cast<SQLUSMALLINT>(column + 1), SQL_PARAM_INPUT,
                           server ? SQL_C_WCHAR : SQL_C_CHAR, server ? wideType : SQL_VARCHAR, characters, 0,
                           parameter.values.data(), static_cast<SQLLEN>(width), parameter.lengths.data()));
}

void BulkWriter::bind(std::size_t column, std::size_t first, std::size_t count) {
    switch (parameters_[column].type) {
    case ColumnType::identity:
    case ColumnType::integer:
    case ColumnType::number:
    case ColumnType::flag:
        pack<SQLBIGINT>(column, first, count, SQL_C_SBIGINT, SQL_BIGINT, 19, 0,
                        [](const Value& value) -> std::optional<SQLBIGINT> {
                            const auto whole = value.integer();
                            return whole ? std::optional<SQLBIGINT>(*whole) : std::nullopt;
                        });
        return;
    case ColumnType::date: {
        if (connection_.engine() == Engine::sqlite)
            break;
        constexpr SQLULEN size = 23; // yyyy-mm-dd hh:mm:ss.fff
        pack<SQL_TIMESTAMP_STRUCT>(column, first, count, SQL_C_TYPE_TIMESTAMP, SQL_TYPE_TIMESTAMP, size, 3,
                                   [](const Value& value) -> std::optional<SQL_TIMESTAMP_STRUCT> {
                                       const auto date = value.date();
                                       if (!date)
                                           return std::nullopt;
                                       SQL_TIMESTAMP_STRUCT day = {};
                                       day.year = static_cast<SQLSMALLINT>(date->year());
                                       day.month = static_cast<SQLUSMALLINT>(date->month());
                                       day.day = static_cast<SQLUSMALLINT>(date->day());
                                       return day;
                                   });
        return;
    }
    case ColumnType::amount:
    case ColumnType::text:
    case ColumnType::guid:
        break;
    }
    packText(column, first, count);
}

} // namespace platform::odbc
