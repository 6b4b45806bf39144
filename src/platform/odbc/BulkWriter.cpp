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
    for (const auto& name : columns) {
        columns_.push_back(columnOf(table, name, operation_));
        identity_ = identity_ || columns_.back().type == ColumnType::identity;
    }
    // SQLite runs a statement of one row as fast.
    const bool server = connection.engine() == Engine::server;
    one_ = prepare(1);
    many_ = prepare(server ? std::clamp<std::size_t>(mostParameters / columns_.size(), 1, statementRows) : 1);
    SQLULEN size = 1;
    arrays_ =
        server &&
        SQL_SUCCEEDED(SQLSetStmtAttr(many_.handle.get(), SQL_ATTR_PARAMSET_SIZE, number(2), SQL_IS_UINTEGER)) &&
        SQL_SUCCEEDED(SQLGetStmtAttr(many_.handle.get(), SQL_ATTR_PARAMSET_SIZE, &size, SQL_IS_UINTEGER, nullptr)) &&
        size == 2;
    pending_.reserve(arrayRows * columns_.size());
}

BulkWriter::Prepared BulkWriter::prepare(std::size_t rows) {
    std::string text = "INSERT INTO " + table_ + " (";
    std::string places;
    for (const auto& column : columns_) {
        text += (places.empty() ? "" : ", ") + std::string(column.name);
        places += places.empty() ? "(?" : ", ?";
    }
    text += ") VALUES ";
    for (std::size_t row = 0; row < rows; ++row)
        text += (row == 0 ? "" : ", ") + places + ")";
    Prepared prepared{StatementHandle(connection_.handle()), rows};
    SQLHSTMT statement = prepared.handle.get();
    if (!prepared.handle)
        connection_.fail(SQL_HANDLE_DBC, connection_.handle(), operation_);
    std::vector<SQLWCHAR> units = wide(text);
    check(statement,
          connection_.engine() == Engine::server
              ? SQLPrepareW(statement, units.data(), static_cast<SQLINTEGER>(units.size()))
              : SQLPrepare(statement, reinterpret_cast<SQLCHAR*>(text.data()), static_cast<SQLINTEGER>(text.size())));
    return prepared;
}

void BulkWriter::check(SQLHSTMT statement, SQLRETURN result) {
    if (!SQL_SUCCEEDED(result) && result != SQL_NO_DATA)
        connection_.fail(SQL_HANDLE_STMT, statement, operation_);
}

void BulkWriter::append(std::span<const Value> row) {
    if (row.size() != columns_.size())
        refuse(operation_, ": il numero dei valori non è quello delle colonne.");
    pending_.insert(pending_.end(), row.begin(), row.end());
    ++rows_;
    if (pending_.size() >= arrayRows * columns_.size())
        finish();
}

void BulkWriter::finish() {
    const std::size_t count = pending_.size() / columns_.size();
    if (count == 0)
        return;
    if (identity_)
        setIdentityInsert(true);
    const std::size_t executions = count / many_.rows;
    write(many_, 0, executions);
    write(one_, executions * many_.rows, count - executions * many_.rows);
    if (identity_)
        setIdentityInsert(false);
    pending_.clear();
}

// The server takes a value of a column that it counts by itself for one table at a time only.
void BulkWriter::setIdentityInsert(bool on) {
    if (connection_.engine() == Engine::server)
        connection_.runNative("SET IDENTITY_INSERT " + table_ + (on ? " ON" : " OFF"));
}

void BulkWriter::write(Prepared& prepared, std::size_t first, std::size_t executions) {
    if (!arrays_ && executions > 1) {
        for (std::size_t i = 0; i < executions; ++i)
            write(prepared, first + i * prepared.rows, 1);
        return;
    }
    if (executions == 0)
        return;
    SQLHSTMT statement = prepared.handle.get();
    SQLULEN processed = 0;
    std::vector<SQLUSMALLINT> states(executions, SQL_PARAM_UNUSED);
    if (arrays_) {
        check(statement,
              SQLSetStmtAttr(statement, SQL_ATTR_PARAM_BIND_TYPE, number(SQL_PARAM_BIND_BY_COLUMN), SQL_IS_UINTEGER));
        check(statement, SQLSetStmtAttr(statement, SQL_ATTR_PARAMSET_SIZE, number(executions), SQL_IS_UINTEGER));
        check(statement, SQLSetStmtAttr(statement, SQL_ATTR_PARAMS_PROCESSED_PTR, &processed, SQL_IS_POINTER));
        check(statement, SQLSetStmtAttr(statement, SQL_ATTR_PARAM_STATUS_PTR, states.data(), SQL_IS_POINTER));
    }
    parameters_.resize(std::max(parameters_.size(), prepared.rows * columns_.size()));
    for (std::size_t row = 0; row < prepared.rows; ++row)
        for (std::size_t column = 0; column < columns_.size(); ++column) {
            const std::size_t parameter = row * columns_.size() + column;
            bind({statement, static_cast<SQLUSMALLINT>(parameter + 1), column, first + row, prepared.rows, executions},
                 parameters_[parameter]);
        }
    const Reset reset(statement);
    SQLRETURN result = SQLExecute(statement);
    check(statement, result);
    // A row that failed among others is told by its state only.
    if (std::any_of(states.begin(), states.end(), [](auto state) { return state == SQL_PARAM_ERROR; }))
        connection_.fail(SQL_HANDLE_STMT, statement, operation_);
    while (SQL_SUCCEEDED(result))
        result = SQLMoreResults(statement);
    check(statement, result);
}

template <class T, class Convert>
void BulkWriter::pack(const Place& place, Parameter& parameter, SQLSMALLINT cType, SQLSMALLINT type, SQLULEN size,
                      SQLSMALLINT scale, Convert convert) {
    parameter.values.resize(place.count * sizeof(T));
    parameter.lengths.resize(place.count);
    for (std::size_t i = 0; i < place.count; ++i) {
        const Value& value = pending(place, i);
        parameter.lengths[i] = value.isMissing() ? SQL_NULL_DATA : static_cast<SQLLEN>(sizeof(T));
        if (value.isMissing())
            continue;
        const std::optional<T> converted = convert(value);
        if (!converted)
            throw RuntimeError(RuntimeError::typeMismatch, operation_ + ": il valore «" + value.text() +
                                                               "» non è del tipo della colonna " +
                                                               std::string(columns_[place.column].name) + ".");
        std::memcpy(parameter.values.data() + i * sizeof(T), &*converted, sizeof(T));
    }
    check(place.statement, SQLBindParameter(place.statement, place.number, SQL_PARAM_INPUT, cType, type, size, scale,
                                            parameter.values.data(), sizeof(T), parameter.lengths.data()));
}

void BulkWriter::packText(const Place& place, Parameter& parameter) {
    const bool server = connection_.engine() == Engine::server;
    // A number with decimals and a day of SQLite go as their texts too.
    const auto textOf = [](const Value& value) {
        const auto* date = value.as<contract::Date>();
        return date != nullptr ? date->iso() : value.text();
    };
    parameter.lengths.resize(place.count);
    std::vector<std::string> bytes(place.count);
    std::size_t width = 2;
    for (std::size_t i = 0; i < place.count; ++i) {
        const Value& value = pending(place, i);
        parameter.lengths[i] = SQL_NULL_DATA;
        if (value.isMissing())
            continue;
        if (server) {
            const auto units = wide(textOf(value));
            bytes[i].assign(reinterpret_cast<const char*>(units.data()), units.size() * sizeof(SQLWCHAR));
        } else {
            bytes[i] = textOf(value);
        }
        parameter.lengths[i] = static_cast<SQLLEN>(bytes[i].size());
        width = std::max(width, bytes[i].size());
    }
    parameter.values.assign(place.count * width, '\0');
    for (std::size_t i = 0; i < place.count; ++i)
        std::memcpy(parameter.values.data() + i * width, bytes[i].data(), bytes[i].size());
    // The size of the column, not of the longest value: a statement whose sizes change is prepared again.
    constexpr std::size_t least = 40; // of a global identifier, and of a number with decimals
    constexpr std::size_t longest = 4000;
    const std::size_t characters = std::max({server ? width / sizeof(SQLWCHAR) : width, least,
                                             static_cast<std::size_t>(std::max(0, columns_[place.column].length))});
    const auto wideType = static_cast<SQLSMALLINT>(characters > longest ? SQL_WLONGVARCHAR : SQL_WVARCHAR);
    check(place.statement,
          SQLBindParameter(place.statement, place.number, SQL_PARAM_INPUT, server ? SQL_C_WCHAR : SQL_C_CHAR,
                           server ? wideType : SQL_VARCHAR, characters, 0, parameter.values.data(),
                           static_cast<SQLLEN>(width), parameter.lengths.data()));
}

void BulkWriter::bind(const Place& place, Parameter& parameter) {
    switch (columns_[place.column].type) {
    case ColumnType::identity:
    case ColumnType::integer:
    case ColumnType::number:
    case ColumnType::flag:
        pack<SQLBIGINT>(place, parameter, SQL_C_SBIGINT, SQL_BIGINT, 19, 0,
                        [](const Value& value) -> std::optional<SQLBIGINT> {
                            const auto whole = value.integer();
                            return whole ? std::optional<SQLBIGINT>(*whole) : std::nullopt;
                        });
        return;
    case ColumnType::date: {
        if (connection_.engine() == Engine::sqlite)
            break;
        constexpr SQLULEN size = 23; // yyyy-mm-dd hh:mm:ss.fff
        pack<SQL_TIMESTAMP_STRUCT>(place, parameter, SQL_C_TYPE_TIMESTAMP, SQL_TYPE_TIMESTAMP, size, 3,
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
    packText(place, parameter);
}

} // namespace platform::odbc
