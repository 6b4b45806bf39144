#include "platform/odbc/Errors.h"

#include "contract/RuntimeError.h"
#include "platform/odbc/Text.h"
#include "platform/shared/Outcome.h"

#include <algorithm>

namespace platform::odbc {

namespace {

using contract::DatabaseErrorRecord;
using contract::ErrorCategory;
using contract::ErrorList;

constexpr std::size_t mostRecords = 50;

/// The server's own numbers, as its documentation lists them.
struct NativeCategory {
    std::int64_t number;
    ErrorCategory category;
};
constexpr NativeCategory serverNumbers[] = {
    {1205, ErrorCategory::deadlock},    // chosen as the victim
    {1222, ErrorCategory::locked},      // lock request time out
    {2601, ErrorCategory::duplicate},   // unique index
    {2627, ErrorCategory::duplicate},   // key
    {208, ErrorCategory::missingTable}, // invalid object name
    {3701, ErrorCategory::missingTable}, {4902, ErrorCategory::missingTable},
    {229, ErrorCategory::permission}, // on an object
    {230, ErrorCategory::permission}, // on a column
    {262, ErrorCategory::permission}, // in a database
    {297, ErrorCategory::permission},    {300, ErrorCategory::permission},
    {911, ErrorCategory::permission}, // the database does not exist
    {916, ErrorCategory::permission}, // not able to enter the database
    {1088, ErrorCategory::permission},   {4060, ErrorCategory::permission},
    {15247, ErrorCategory::permission},  {18452, ErrorCategory::permission},
    {18456, ErrorCategory::permission}, // login failed
    {102, ErrorCategory::syntax},        {103, ErrorCategory::syntax},
    {105, ErrorCategory::syntax}, // quotation mark not closed
    {107, ErrorCategory::syntax},        {109, ErrorCategory::syntax},
    {110, ErrorCategory::syntax},        {137, ErrorCategory::syntax},
    {156, ErrorCategory::syntax},                                      // near a keyword
    {170, ErrorCategory::syntax},        {195, ErrorCategory::syntax}, // unknown function
    {207, ErrorCategory::syntax},                                      // invalid column name
    {209, ErrorCategory::syntax},                                      // ambiguous column name
    {213, ErrorCategory::syntax},        {319, ErrorCategory::syntax},
    {4104, ErrorCategory::syntax},       {4145, ErrorCategory::syntax},
    {3906, ErrorCategory::readOnly}, // the database is read-only
    {3908, ErrorCategory::readOnly},     {1101, ErrorCategory::full},
    {1105, ErrorCategory::full},         {9002, ErrorCategory::full}, // transaction log
};

/// SQLite's primary result codes, as its driver reports them.
constexpr NativeCategory sqliteNumbers[] = {
    {3, ErrorCategory::permission},    {5, ErrorCategory::locked},        {6, ErrorCategory::locked},
    {8, ErrorCategory::readOnly},      {11, ErrorCategory::notADatabase}, {13, ErrorCategory::full},
    {14, ErrorCategory::notADatabase}, {23, ErrorCategory::permission},   {26, ErrorCategory::notADatabase},
};

/// Words of servers that speak the dialect but have numbers of their own.
struct WordsCategory {
    std::string_view words;
    ErrorCategory category;
};
constexpr WordsCategory serverWords[] = {
    {"deadlock", ErrorCategory::deadlock},
    {"could not serialize access", ErrorCategory::deadlock},
    {"duplicate key", ErrorCategory::duplicate},
    {"permission denied", ErrorCategory::permission},
    {"Invalid object name", ErrorCategory::missingTable},
    {"Invalid column name", ErrorCategory::syntax},
    {"column", ErrorCategory::syntax}, // of a relation that exists
    {"relation", ErrorCategory::missingTable},
    {"syntax error", ErrorCategory::syntax},
    {"lock timeout", ErrorCategory::locked},
};

/// Numbers with which a server refuses a login by its user or password.
constexpr std::int64_t refusedLogins[] = {18452, 18456};
/// Numbers with which it refuses a login by its database.
constexpr std::int64_t refusedDatabases[] = {911, 916, 4060};

template <std::size_t N> bool isOneOf(const std::int64_t (&numbers)[N], std::int64_t native) {
    return std::find(std::begin(numbers), std::end(numbers), native) != std::end(numbers);
}

bool has(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

template <std::size_t N> ErrorCategory byNumber(const NativeCategory (&numbers)[N], std::int64_t native) {
    const auto* at = std::find_if(std::begin(numbers), std::end(numbers),
                                  [native](const auto& entry) { return entry.number == native; });
    return at == std::end(numbers) ? ErrorCategory::other : at->category;
}

ErrorCategory byWords(std::string_view state, std::int64_t native, std::string_view text) {
    constexpr std::int64_t highestNumber = 100000; // of SQL Server's own errors
    if (native < highestNumber || (state != "42000" && state != "23000" && state != "40001" && state != "HY000"))
        return ErrorCategory::other;
    const auto* at = std::find_if(std::begin(serverWords), std::end(serverWords),
                                  [text](const auto& entry) { return has(text, entry.words); });
    const bool missing = at != std::end(serverWords) && (at->words == "column" || at->words == "relation");
    return at == std::end(serverWords) || (missing && !has(text, "does not exist")) ? ErrorCategory::other
                                                                                    : at->category;
}

ErrorCategory sqliteCategory(std::int64_t native, std::string_view text) {
    constexpr std::int64_t error = 1;
    constexpr std::int64_t constraint = 19;
    constexpr std::int64_t primaryCode = 0xff;
    const auto code = native & primaryCode;
    if (code == error)
        return has(text, "no such table") ? ErrorCategory::missingTable : ErrorCategory::syntax;
    if (code == constraint)
        return has(text, "UNIQUE") || has(text, "PRIMARY KEY") ? ErrorCategory::duplicate : ErrorCategory::other;
    return byNumber(sqliteNumbers, code);
}

ErrorCategory byState(std::string_view state, std::int64_t native) {
    if (state.substr(0, 2) == "08")
        return ErrorCategory::lostConnection;
    if (state == "HYT00" || state == "HYT01")
        return ErrorCategory::timeout;
    if (state == "40001")
        return ErrorCategory::deadlock;
    if (state == "42S02")
        return ErrorCategory::missingTable;
    if (state == "42S22")
        return ErrorCategory::syntax;
    if (state == "28000")
        return ErrorCategory::permission;
    if (state == "25006")
        return ErrorCategory::readOnly;
    // Drivers give this state to most of what a server refuses: only without a number of the server's own does it say
    // something.
    if (state == "42000" && native == 0)
        return ErrorCategory::syntax;
    return ErrorCategory::other;
}

/// What keeps a connection from being opened; empty for anything else.
std::string_view explanationOfLogin(const DatabaseErrorRecord& record) {
    if (record.category == ErrorCategory::permission && isOneOf(refusedDatabases, record.nativeError))
        return "il database non esiste o l'utente non vi può entrare";
    if (record.category == ErrorCategory::permission &&
        (record.sqlState == "28000" || isOneOf(refusedLogins, record.nativeError)))
        return "utente o password non accettati dal server";
    if (record.sqlState == "IM002" || record.sqlState == "IM003" || has(record.description, "Can't open lib"))
        return "il driver ODBC o l'origine dati non si trova";
    return {};
}

std::string_view explanationOf(const DatabaseErrorRecord& record) {
    if (const auto login = explanationOfLogin(record); !login.empty())
        return login;
    switch (record.category) {
    case ErrorCategory::lostConnection:
        return "il collegamento con il server non c'è o si è interrotto";
    case ErrorCategory::deadlock:
        return "il server ha annullato la transazione perché in conflitto con quella di un altro utente; si può "
               "riprovare";
    case ErrorCategory::timeout:
        return "il tempo massimo è scaduto e la connessione è stata chiusa con l'istruzione; si riapre al prossimo "
               "comando";
    case ErrorCategory::locked:
        return "i dati sono occupati da un altro utente e l'attesa è finita";
    case ErrorCategory::duplicate:
        return "esiste già una riga con la stessa chiave";
    case ErrorCategory::permission:
        return "l'utente del database non ha il permesso";
    case ErrorCategory::syntax:
        return "l'istruzione non è stata accettata";
    case ErrorCategory::readOnly:
        return "il database è di sola lettura";
    case ErrorCategory::full:
        return "non c'è più spazio nel database";
    case ErrorCategory::notADatabase:
        return "il database non si può aprire";
    case ErrorCategory::missingTable:
        return "una tabella non esiste";
    case ErrorCategory::other:
        break;
    }
    // SQLite's words, where its file can not be written although the disk does not say that it is full.
    if (has(record.description, "disk I/O error"))
        return "errore di lettura o scrittura del file";
    return "errore del database";
}

/// The record that tells most: the driver may put its own word before or after the server's.
const DatabaseErrorRecord& telling(const ErrorList& records) {
    // What has made the connection go tells more than that it has gone.
    auto at = std::find_if(records.begin(), records.end(),
                           [](const auto& record) { return record.category == ErrorCategory::timeout; });
    if (at == records.end())
        at = std::find_if(records.begin(), records.end(),
                          [](const auto& record) { return record.category != ErrorCategory::other; });
    return at == records.end() ? records.front() : *at;
}

DatabaseErrorRecord recordOf(Engine engine, std::string state, std::int64_t native, std::string text) {
    DatabaseErrorRecord record;
    record.category = categoryOf(engine, state, native, text);
    record.sqlState = std::move(state);
    record.nativeError = native;
    record.description = std::move(text);
    return record;
}

std::string_view stateOf(ErrorCategory category) {
    switch (category) {
    case ErrorCategory::lostConnection:
        return "08003";
    case ErrorCategory::timeout:
        return "HYT00";
    case ErrorCategory::syntax:
        return "42000";
    default:
        return "HY000";
    }
}

} // namespace

contract::ErrorCategory categoryOf(Engine engine, std::string_view state, std::int64_t native, std::string_view text) {
    // The driver may say that the server rejected the connection (08004); the server says why.
    if (engine == Engine::server && (isOneOf(refusedLogins, native) || isOneOf(refusedDatabases, native)))
        return ErrorCategory::permission;
    const auto found = byState(state, native);
    if (found == ErrorCategory::lostConnection || (found == ErrorCategory::timeout && engine == Engine::sqlite))
        return found;
    // A driver may give the state of a time-out to a lock that was not granted in time (1222): the connection lives.
    auto own = engine == Engine::sqlite ? sqliteCategory(native, text) : byNumber(serverNumbers, native);
    if (own == ErrorCategory::other && engine == Engine::server)
        own = byWords(state, native, text);
    return own == ErrorCategory::other ? found : own;
}

contract::ErrorList recordsOf(SQLSMALLINT type, SQLHANDLE handle, Engine engine) {
    ErrorList records;
    constexpr SQLSMALLINT room = 4096;
    for (SQLSMALLINT number = 1; records.size() < mostRecords; ++number) {
        SQLINTEGER native = 0;
        SQLSMALLINT length = 0;
        if (engine == Engine::sqlite) {
            SQLCHAR state[6] = {};
            SQLCHAR text[room] = {};
            if (!SQL_SUCCEEDED(SQLGetDiagRec(type, handle, number, state, &native, text, room, &length)))
                break;
            records.push_back(
                recordOf(engine, reinterpret_cast<const char*>(state), native, reinterpret_cast<const char*>(text)));
            continue;
        }
        SQLWCHAR state[6] = {};
        SQLWCHAR text[room] = {};
        if (!SQL_SUCCEEDED(SQLGetDiagRecW(type, handle, number, state, &native, text, room, &length)))
            break;
        const auto count = std::clamp<SQLSMALLINT>(length, 0, room - 1);
        records.push_back(recordOf(engine, narrow(state, 5), native, narrow(text, static_cast<std::size_t>(count))));
    }
    return records;
}

bool endsConnection(const contract::ErrorList& records) {
    return std::any_of(records.begin(), records.end(), [](const auto& record) {
        return record.category == ErrorCategory::lostConnection || record.category == ErrorCategory::timeout;
    });
}

std::string_view withoutMarks(std::string_view text) {
    while (!text.empty() && text.front() == '[') {
        const auto end = text.find(']');
        if (end == std::string_view::npos)
            break;
        text.remove_prefix(end + 1);
        text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    }
    return text;
}

std::string describe(std::string_view operation, std::string_view database, const contract::ErrorList& records) {
    std::string text = shared::notDone(operation, database);
    if (records.empty())
        return text + "errore del driver ODBC, senza spiegazione.";
    const auto& record = telling(records);
    text += explanationOf(record);
    text += " (" + record.sqlState + ", errore " + std::to_string(record.nativeError) + ": ";
    text += withoutMarks(record.description);
    return text + ").";
}

void fail(contract::ErrorList& errors, contract::ErrorCategory category, std::string_view description,
          std::string_view operation, std::string_view database) {
    DatabaseErrorRecord record;
    record.category = category;
    record.sqlState = stateOf(category);
    record.description = description;
    errors.clear();
    errors.push_back(std::move(record));
    std::string text = shared::notDone(operation, database);
    text += description;
    throw contract::RuntimeError(contract::RuntimeError::database, text + ".");
}

} // namespace platform::odbc
