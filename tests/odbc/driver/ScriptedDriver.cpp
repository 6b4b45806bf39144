// An ODBC driver whose server is a function of the test: it answers what a server would, at the moment that a test
// needs it. It takes what the adapter sends and refuses a second statement while a result is open, as FreeTDS's driver
// does.

#include "odbc/driver/Script.h"

#include <algorithm>
#include <cstring>
#include <iterator>

#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>

namespace {

using scripted::Answer;
using scripted::Cell;
using scripted::Diagnostic;
using scripted::Script;

Script& script() {
    static Script one;
    return one;
}

struct Handle {
    virtual ~Handle() = default;
    std::vector<Diagnostic> records;
};

struct Bound {
    SQLSMALLINT type = 0;
    char* values = nullptr;
    SQLLEN width = 0;
    SQLLEN* lengths = nullptr;
};

struct Statement : Handle {
    Answer answer;
    std::size_t next = 0; ///< row
    bool open = false;
    std::vector<Bound> columns;
    SQLULEN rowArray = 1;
    SQLULEN* fetched = nullptr;
    std::size_t current = 0;        ///< row of SQLGetData, counted from 0
    std::vector<std::size_t> given; ///< bytes of each column that SQLGetData has given

    void closeResult() {
        if (open)
            --script().openResults;
        open = false;
    }
    ~Statement() override { closeResult(); }
};

std::string ascii(const SQLWCHAR* text, SQLLEN length) {
    std::string result;
    for (SQLLEN i = 0; length == SQL_NTS ? text[i] != 0 : i < length; ++i) {
        const unsigned unit = text[i];
        if (unit < 0x80U)
            result += static_cast<char>(unit);
        else
            result += "\\u" + std::to_string(unit);
    }
    return result;
}

SQLRETURN failWith(Handle& handle, const std::vector<Diagnostic>& records) {
    handle.records = records;
    return SQL_ERROR;
}

/// A call that is no statement, with the failure that holds where nobody decides.
SQLRETURN serve(SQLHANDLE handle, const std::string& call, const std::vector<Diagnostic>& failure = {}) {
    script().calls.push_back(call);
    const auto records = script().served ? script().served(call) : failure;
    return records.empty() ? SQL_SUCCESS : failWith(*static_cast<Handle*>(handle), records);
}

Statement& statementOf(SQLHSTMT handle) {
    return *static_cast<Statement*>(static_cast<Handle*>(handle));
}

/// A cell's bytes as a C type of characters; others are written as they are.
std::string bytesOf(const std::u16string& text, SQLSMALLINT type) {
    if (type == SQL_C_WCHAR)
        return {reinterpret_cast<const char*>(text.data()), text.size() * 2};
    std::string bytes;
    for (const char16_t unit : text)
        bytes += static_cast<char>(unit);
    if (type == SQL_C_SBIGINT) {
        const SQLBIGINT number = std::stoll(bytes);
        bytes.assign(reinterpret_cast<const char*>(&number), sizeof number);
    } else if (type == SQL_C_DOUBLE) {
        const SQLDOUBLE number = std::stod(bytes);
        bytes.assign(reinterpret_cast<const char*>(&number), sizeof number);
    } else if (type == SQL_C_TYPE_TIMESTAMP) {
        SQL_TIMESTAMP_STRUCT day = {};
        day.year = static_cast<SQLSMALLINT>(std::stoi(bytes.substr(0, 4)));
        day.month = static_cast<SQLUSMALLINT>(std::stoi(bytes.substr(5, 2)));
        day.day = static_cast<SQLUSMALLINT>(std::stoi(bytes.substr(8, 2)));
        bytes.assign(reinterpret_cast<const char*>(&day), sizeof day);
    } else if (type == SQL_C_GUID) {
        std::erase(bytes, '-');
        const auto part = [&](std::size_t from, std::size_t digits) {
            return std::stoul(bytes.substr(from, digits), nullptr, 16);
        };
        SQLGUID guid = {};
        guid.Data1 = static_cast<decltype(guid.Data1)>(part(0, 8));
        guid.Data2 = static_cast<decltype(guid.Data2)>(part(8, 4));
        guid.Data3 = static_cast<decltype(guid.Data3)>(part(12, 4));
        for (std::size_t i = 0; i < std::size(guid.Data4); ++i)
            guid.Data4[i] = static_cast<unsigned char>(part(16 + 2 * i, 2));
        bytes.assign(reinterpret_cast<const char*>(&guid), sizeof guid);
    }
    return bytes;
}

std::size_t zeroOf(SQLSMALLINT type) {
    return type == SQL_C_WCHAR ? 2 : (type == SQL_C_CHAR ? 1 : 0);
}

/// Writes a cell; true when it was cut.
bool give(const Cell& cell, SQLSMALLINT type, char* value, std::size_t room, std::size_t from, SQLLEN* length) {
    if (!cell) {
        *length = SQL_NULL_DATA;
        return false;
    }
    const std::string bytes = bytesOf(*cell, type).substr(from);
    const std::size_t zero = zeroOf(type);
    *length = static_cast<SQLLEN>(bytes.size());
    const std::size_t count = zero == 0 ? bytes.size() : std::min(bytes.size(), room - zero);
    std::memcpy(value, bytes.data(), count);
    std::memset(value + count, 0, zero);
    return count < bytes.size();
}

SQLRETURN execute(Statement& statement, const std::string& text) {
    statement.closeResult();
    statement.records.clear();
    if (script().openResults > 0)
        return failWith(statement, {{"24000", 0, "[Scripted]Invalid cursor state"}});
    script().calls.push_back(text);
    statement.answer = script().answer ? script().answer(text) : Answer();
    statement.next = 0;
    if (!statement.answer.failure.empty())
        return failWith(statement, statement.answer.failure);
    if (!statement.answer.columns.empty()) {
        statement.open = true;
        script().mostOpenResults = std::max(script().mostOpenResults, ++script().openResults);
    }
    return SQL_SUCCESS;
}

} // namespace

extern "C" {

Script* scriptedDriverScript() {
    return &script();
}

SQLRETURN SQL_API SQLAllocHandle(SQLSMALLINT type, SQLHANDLE, SQLHANDLE* handle) {
    *handle = type == SQL_HANDLE_STMT ? static_cast<Handle*>(new Statement) : new Handle;
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLFreeHandle(SQLSMALLINT, SQLHANDLE handle) {
    delete static_cast<Handle*>(handle);
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLSetEnvAttr(SQLHENV, SQLINTEGER, SQLPOINTER, SQLINTEGER) {
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLDriverConnectW(SQLHDBC handle, SQLHWND, SQLWCHAR* text, SQLSMALLINT length, SQLWCHAR*, SQLSMALLINT,
                                    SQLSMALLINT*, SQLUSMALLINT) {
    script().connectionString = ascii(text, length);
    return serve(handle, "connect", script().connectFailure);
}

SQLRETURN SQL_API SQLDisconnect(SQLHDBC handle) {
    return serve(handle, "disconnect");
}

SQLRETURN SQL_API SQLGetInfoW(SQLHDBC, SQLUSMALLINT what, SQLPOINTER value, SQLSMALLINT, SQLSMALLINT* length) {
    std::u16string text;
    if (what == SQL_DBMS_NAME)
        text = u"Microsoft SQL Server";
    else if (what == SQL_DRIVER_ODBC_VER)
        text = u"03.52";
    else if (what == SQL_DATABASE_NAME)
        text = u"Conti";
    else
        return SQL_ERROR;
    std::memcpy(value, text.c_str(), (text.size() + 1) * 2);
    if (length != nullptr)
        *length = static_cast<SQLSMALLINT>(text.size() * 2);
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLSetConnectAttrW(SQLHDBC handle, SQLINTEGER what, SQLPOINTER value, SQLINTEGER) {
    const auto number = reinterpret_cast<std::size_t>(value);
    if (what == SQL_ATTR_LOGIN_TIMEOUT)
        script().loginTimeout = number;
    if (what == SQL_ATTR_CONNECTION_TIMEOUT)
        script().connectionTimeout = number;
    if (what == SQL_ATTR_AUTOCOMMIT)
        return serve(handle, number == SQL_AUTOCOMMIT_ON ? "autocommit on" : "autocommit off");
    if (what == SQL_ATTR_TXN_ISOLATION)
        script().calls.emplace_back(number == SQL_TXN_SERIALIZABLE ? "serializable" : "read committed");
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLGetConnectAttrW(SQLHDBC, SQLINTEGER, SQLPOINTER value, SQLINTEGER, SQLINTEGER*) {
    *static_cast<SQLUINTEGER*>(value) = script().dead ? SQL_CD_TRUE : SQL_CD_FALSE;
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLSetStmtAttrW(SQLHSTMT handle, SQLINTEGER what, SQLPOINTER value, SQLINTEGER) {
    auto& statement = statementOf(handle);
    const auto number = reinterpret_cast<std::size_t>(value);
    switch (what) {
    case SQL_ATTR_QUERY_TIMEOUT:
        script().queryTimeout = number;
        break;
    case SQL_ATTR_ROW_ARRAY_SIZE:
        statement.rowArray = number;
        break;
    case SQL_ATTR_ROWS_FETCHED_PTR:
        statement.fetched = static_cast<SQLULEN*>(value);
        break;
    default:
        break;
    }
    return SQL_SUCCESS;
}

// The driver manager keeps the statement's descriptors.
SQLRETURN SQL_API SQLGetStmtAttrW(SQLHSTMT, SQLINTEGER, SQLPOINTER value, SQLINTEGER, SQLINTEGER*) {
    static int descriptor = 0;
    *static_cast<SQLPOINTER*>(value) = &descriptor;
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLExecDirectW(SQLHSTMT handle, SQLWCHAR* text, SQLINTEGER length) {
    return execute(statementOf(handle), ascii(text, length));
}

SQLRETURN SQL_API SQLCancel(SQLHSTMT) {
    if (script().cancelled)
        script().cancelled();
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLNumResultCols(SQLHSTMT handle, SQLSMALLINT* count) {
    const auto& statement = statementOf(handle);
    *count = statement.open ? static_cast<SQLSMALLINT>(statement.answer.columns.size()) : SQLSMALLINT{0};
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLDescribeColW(SQLHSTMT handle, SQLUSMALLINT number, SQLWCHAR* name, SQLSMALLINT,
                                  SQLSMALLINT* length, SQLSMALLINT* type, SQLULEN* size, SQLSMALLINT* scale,
                                  SQLSMALLINT* nullable) {
    const auto& column = statementOf(handle).answer.columns[number - 1U];
    std::copy(column.name.begin(), column.name.end(), name);
    *length = static_cast<SQLSMALLINT>(column.name.size());
    *type = static_cast<SQLSMALLINT>(column.type);
    *size = column.size;
    *scale = static_cast<SQLSMALLINT>(column.scale);
    *nullable = SQL_NULLABLE;
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLBindCol(SQLHSTMT handle, SQLUSMALLINT number, SQLSMALLINT type, SQLPOINTER values, SQLLEN width,
                             SQLLEN* lengths) {
    auto& columns = statementOf(handle).columns;
    columns.resize(std::max<std::size_t>(columns.size(), number));
    columns[number - 1U] = {type, static_cast<char*>(values), width, lengths};
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLFetch(SQLHSTMT handle) {
    auto& statement = statementOf(handle);
    script().fetchSizes.push_back(static_cast<int>(statement.rowArray));
    const std::size_t left = statement.answer.rows.size() - statement.next;
    if (left == 0)
        return SQL_NO_DATA;
    const std::size_t count = std::min<std::size_t>(left, statement.rowArray);
    bool cut = false;
    for (std::size_t row = 0; row < count; ++row)
        for (std::size_t i = 0; i < statement.columns.size(); ++i) {
            const Bound& bound = statement.columns[i];
            const auto width = static_cast<std::size_t>(bound.width);
            cut = give(statement.answer.rows[statement.next + row][i], bound.type, bound.values + row * width, width, 0,
                       bound.lengths + row) ||
                  cut;
        }
    statement.current = statement.next;
    statement.given.assign(statement.answer.columns.size(), 0);
    statement.next += count;
    if (statement.fetched != nullptr)
        *statement.fetched = count;
    return cut ? SQL_SUCCESS_WITH_INFO : SQL_SUCCESS;
}

SQLRETURN SQL_API SQLGetData(SQLHSTMT handle, SQLUSMALLINT number, SQLSMALLINT type, SQLPOINTER value, SQLLEN room,
                             SQLLEN* length) {
    auto& statement = statementOf(handle);
    std::size_t& given = statement.given[number - 1U];
    const bool cut = give(statement.answer.rows[statement.current][number - 1U], type, static_cast<char*>(value),
                          static_cast<std::size_t>(room), given, length);
    given += static_cast<std::size_t>(room) - zeroOf(type);
    return cut ? SQL_SUCCESS_WITH_INFO : SQL_SUCCESS;
}

SQLRETURN SQL_API SQLRowCount(SQLHSTMT handle, SQLLEN* count) {
    *count = statementOf(handle).answer.changed;
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLMoreResults(SQLHSTMT handle) {
    statementOf(handle).closeResult();
    return SQL_NO_DATA;
}

SQLRETURN SQL_API SQLFreeStmt(SQLHSTMT handle, SQLUSMALLINT what) {
    auto& statement = statementOf(handle);
    if (what == SQL_CLOSE)
        statement.closeResult();
    else if (what == SQL_UNBIND)
        statement.columns.clear();
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLEndTran(SQLSMALLINT, SQLHANDLE handle, SQLSMALLINT how) {
    return serve(handle, how == SQL_COMMIT ? "commit" : "rollback",
                 how == SQL_COMMIT ? script().commitFailure : script().rollbackFailure);
}

SQLRETURN SQL_API SQLGetDiagRecW(SQLSMALLINT, SQLHANDLE handle, SQLSMALLINT number, SQLWCHAR* state, SQLINTEGER* native,
                                 SQLWCHAR* text, SQLSMALLINT room, SQLSMALLINT* length) {
    const auto& records = static_cast<Handle*>(handle)->records;
    if (static_cast<std::size_t>(number) > records.size())
        return SQL_NO_DATA;
    const auto& record = records[static_cast<std::size_t>(number) - 1];
    std::copy(record.state.begin(), record.state.end(), state);
    state[record.state.size()] = 0;
    *native = record.native;
    const std::size_t count = std::min<std::size_t>(record.text.size(), static_cast<std::size_t>(room) - 1);
    std::copy_n(record.text.begin(), count, text);
    text[count] = 0;
    *length = static_cast<SQLSMALLINT>(record.text.size());
    return SQL_SUCCESS;
}

// The driver manager asks a driver for its records only if it has this one too.
SQLRETURN SQL_API SQLGetDiagFieldW(SQLSMALLINT, SQLHANDLE, SQLSMALLINT, SQLSMALLINT, SQLPOINTER, SQLSMALLINT,
                                   SQLSMALLINT*) {
    return SQL_NO_DATA;
}

} // extern "C"
