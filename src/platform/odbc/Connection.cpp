#include "platform/odbc/Connection.h"

#include "contract/RuntimeError.h"
#include "platform/dialect/SqliteValues.h"
#include "platform/odbc/DataSource.h"
#include "platform/odbc/Literals.h"
#include "platform/odbc/Text.h"
#include "platform/shared/LongWork.h"
#include "platform/shared/Waiting.h"

#include <algorithm>
#include <charconv>
#include <chrono>

namespace platform::odbc {

namespace {

using contract::ErrorCategory;
using contract::RuntimeError;
using shared::LongWork;

constexpr std::string_view opening = "Apertura";
constexpr std::string_view reopening = "Riapertura della connessione";
constexpr std::string_view reading = "Lettura";
constexpr std::string_view executing = "Esecuzione dell'istruzione";
constexpr std::size_t longestString = 32767; ///< bytes that a driver's length can tell

std::string lowered(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return text;
}

/// SQLite's driver has narrow functions only. Its name tells it before it is asked: a path with accents must reach it
/// as it is.
bool namesSqlite(const platform::odbc::ConnectionString& string) {
    return lowered(string.value("Driver").value_or("")).find("sqlite") != std::string::npos;
}

std::string infoText(SQLHDBC database, SQLUSMALLINT what) {
    constexpr SQLSMALLINT room = 1024;
    SQLCHAR text[room] = {};
    SQLSMALLINT length = 0;
    if (!SQL_SUCCEEDED(SQLGetInfo(database, what, text, room, &length)))
        return {};
    return reinterpret_cast<const char*>(text);
}

/// Counts a statement that takes long as time that its command has waited: the driver does not tell waiting from work.
class Measured {
public:
    Measured() = default;
    Measured(const Measured&) = delete;
    Measured& operator=(const Measured&) = delete;
    ~Measured() {
        constexpr std::chrono::seconds quick{1};
        const auto taken = std::chrono::steady_clock::now() - began_;
        if (taken > quick)
            shared::Waiting::instance().add(std::chrono::duration_cast<shared::Waiting::Time>(taken));
    }

private:
    std::chrono::steady_clock::time_point began_ = std::chrono::steady_clock::now();
};

bool isSelect(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
    return lowered(std::string(text.substr(0, 6))) == "select";
}

} // namespace

Connection::Connection(std::string_view connectionString)
    : connectionString_(connectionString), catalog_([this](const std::string& table) { return columnsOf(table); }) {
}

void Connection::SetConnectionString(std::string_view text) {
    if (IsOpen())
        throw RuntimeError(RuntimeError::invalidCall, "La stringa di connessione non si cambia a connessione aperta.");
    connectionString_ = text;
}

void Connection::Open() {
    if (IsOpen())
        throw RuntimeError(RuntimeError::invalidCall, "La connessione è già aperta.");
    if (connectionString_.size() > longestString)
        platform::odbc::fail(errors_, ErrorCategory::other, "la stringa di connessione è troppo lunga", opening,
                             "ODBC");
    platform::odbc::ConnectionString string(connectionString_);
    name_ = labelOf(string);
    passwords_ = string.secrets();
    timeout_ = 0;
    if (const auto seconds = string.value(ConnectionString::statementTimeout)) {
        const auto* end = seconds->data() + seconds->size();
        const auto [rest, error] = std::from_chars(seconds->data(), end, timeout_);
        if (error != std::errc() || rest != end)
            platform::odbc::fail(errors_, ErrorCategory::other,
                                 "StatementTimeout della stringa di connessione non è un numero di secondi", opening,
                                 name_);
    }
    if (const std::string reason = string.refusal(targetOf(string).driver); !reason.empty())
        platform::odbc::fail(errors_, ErrorCategory::other, reason, opening, name_);
    connect(opening);
    open_ = true;
}

void Connection::connect(std::string_view operation) {
    try {
        establish(operation);
    } catch (...) {
        disconnect();
        throw;
    }
}

void Connection::establish(std::string_view operation) {
    disconnect();
    environment_ = Environment(nullptr);
    if (environment_)
        SQLSetEnvAttr(environment_.get(), SQL_ATTR_ODBC_VERSION, attribute(SQL_OV_ODBC3), 0);
    database_ = DatabaseHandle(environment_.get());
    if (!database_)
        platform::odbc::fail(errors_, ErrorCategory::other, "il gestore dei driver ODBC non risponde", operation,
                             name_);
    SQLSetConnectAttr(database_.get(), SQL_ATTR_LOGIN_TIMEOUT, attribute(loginTimeout), SQL_IS_UINTEGER);
    const platform::odbc::ConnectionString string(connectionString_);
    std::string text = string.driverText(timeout_, targetOf(string).driver);
    SQLRETURN result = SQL_ERROR;
    SQLSMALLINT length = 0;
    engine_ = namesSqlite(string) ? Engine::sqlite : Engine::server;
    // What the driver asks by itself, at the beginning and the end of a transaction, is no statement. A driver that
    // does not know the attribute goes on without.
    if (timeout_ > 0 && engine_ == Engine::server)
        SQLSetConnectAttr(database_.get(), SQL_ATTR_CONNECTION_TIMEOUT, attribute(timeout_), SQL_IS_UINTEGER);
    if (engine_ == Engine::sqlite) {
        result = SQLDriverConnect(database_.get(), nullptr, reinterpret_cast<SQLCHAR*>(text.data()),
                                  static_cast<SQLSMALLINT>(text.size()), nullptr, 0, &length, SQL_DRIVER_NOPROMPT);
    } else {
        wide(text, wideText_);
        result =
            SQLDriverConnectW(database_.get(), nullptr, wideText_.data(), static_cast<SQLSMALLINT>(wideText_.size()),
                              nullptr, 0, &length, SQL_DRIVER_NOPROMPT);
        std::fill(wideText_.begin(), wideText_.end(), SQLWCHAR{0});
    }
    if (!SQL_SUCCEEDED(result))
        fail(SQL_HANDLE_DBC, database_.get(), operation);
    engine_ = lowered(infoText(database_.get(), SQL_DBMS_NAME)).find("sqlite") != std::string::npos ? Engine::sqlite
                                                                                                    : Engine::server;
    prepareStatement(operation);
    // A server may be set to tell nobody how many rows a statement has changed.
    if (engine_ == Engine::server)
        execute("SET NOCOUNT OFF", operation);
}

void Connection::prepareStatement(std::string_view operation) {
    statement_ = StatementHandle(database_.get());
    if (!statement_)
        fail(SQL_HANDLE_DBC, database_.get(), operation);
    if (timeout_ > 0 &&
        !SQL_SUCCEEDED(SQLSetStmtAttr(statement_.get(), SQL_ATTR_QUERY_TIMEOUT, attribute(timeout_), SQL_IS_UINTEGER)))
        fail(SQL_HANDLE_STMT, statement_.get(), operation);
    statementTimeout_ = timeout_;
}

void Connection::disconnect() noexcept {
    statement_.reset();
    if (database_)
        SQLDisconnect(database_.get());
    database_.reset();
    environment_.reset();
}

void Connection::Close() noexcept {
    if (database_ && begun_) {
        SQLEndTran(SQL_HANDLE_DBC, database_.get(), SQL_ROLLBACK);
        // A driver refuses to disconnect within a transaction.
        setAutocommit(true);
    }
    disconnect();
    statements_.clear();
    catalog_.clear();
    open_ = begun_ = ended_ = false;
}

std::string Connection::databaseName() const {
    return database_ ? infoText(database_.get(), SQL_DATABASE_NAME) : std::string();
}

void Connection::fail(SQLSMALLINT type, SQLHANDLE handle, std::string_view operation) {
    errors_ = recordsOf(type, handle, engine_);
    for (auto& record : errors_)
        record.description = withoutPasswords(std::move(record.description), passwords_);
    std::string description = describe(operation, name_, errors_);
    SQLULEN dead = SQL_CD_FALSE;
    if (database_)
        SQLGetConnectAttr(database_.get(), SQL_ATTR_CONNECTION_DEAD, &dead, SQL_IS_UINTEGER, nullptr);
    const bool lost = static_cast<SQLUINTEGER>(dead) == SQL_CD_TRUE;
    if (lost && !endsConnection(errors_)) {
        // A driver may say no more than "unknown error" when it can not reach the server to set an attribute.
        if (errors_.empty())
            errors_.push_back({"08S01", 0, {}, ErrorCategory::lostConnection});
        errors_.front().category = ErrorCategory::lostConnection;
        description = describe(operation, name_, errors_);
    }
    if (lost || endsConnection(errors_))
        disconnect();
    else if (statement_)
        Reset(statement_.get()).now();
    if (begun_ && !ended_ && !serverHasTransaction()) {
        ended_ = true;
        if (operation == committing)
            description += " Non è certo che le modifiche siano state registrate: ricaricare e controllare.";
        else
            description += " La transazione è annullata.";
    }
    throw RuntimeError(RuntimeError::database, std::move(description));
}

// Opens a lost connection again.
void Connection::ready(std::string_view operation) {
    if (!IsOpen())
        platform::odbc::fail(errors_, ErrorCategory::lostConnection, "la connessione non è aperta", operation, name_);
    if (database_)
        return;
    if (begun_)
        platform::odbc::fail(errors_, ErrorCategory::lostConnection,
                             "la connessione si è interrotta e la transazione è annullata", operation, name_);
    catalog_.clear();
    connect(reopening);
}

const TranslatedStatement& Connection::translated(const contract::Statement& statement) {
    if (const auto* found = statements_.find(statement))
        return *found;
    try {
        return statements_.store(
            std::make_unique<TranslatedStatement>(statement, dialect::Translator(catalog_).translate(statement)));
    } catch (const dialect::TranslationError& error) {
        errors_.assign(1, {"42000", 0, error.description(), ErrorCategory::syntax});
        throw;
    }
}

std::string Connection::translatedText(const TranslatedStatement& shape, const contract::Statement& statement) {
    try {
        return shape.text(statement);
    } catch (const RuntimeError& error) {
        errors_.assign(1, {"22018", 0, error.description(), ErrorCategory::other});
        throw RuntimeError(RuntimeError::database, error.description());
    }
}

void Connection::limitStatement(std::string_view operation) {
    const auto& waiting = shared::Waiting::instance();
    if (timeout_ == 0 || !statement_ || engine_ != Engine::server || !waiting.boundsCommands())
        return;
    const auto left = waiting.left(std::chrono::seconds(timeout_));
    if (left.count() == 0)
        platform::odbc::fail(errors_, ErrorCategory::timeout,
                             "il comando ha già atteso il tempo massimo (StatementTimeout)", operation, name_);
    const auto seconds = static_cast<std::uintptr_t>(std::chrono::ceil<std::chrono::seconds>(left).count());
    if (seconds != statementTimeout_ &&
        SQL_SUCCEEDED(SQLSetStmtAttr(statement_.get(), SQL_ATTR_QUERY_TIMEOUT, attribute(seconds), SQL_IS_UINTEGER)))
        statementTimeout_ = seconds;
}

SQLRETURN Connection::run(std::string_view text) {
    if (engine_ == Engine::sqlite) {
        std::string copy(text); // a driver's parameter is not const
        return SQLExecDirect(statement_.get(), reinterpret_cast<SQLCHAR*>(copy.data()),
                             static_cast<SQLINTEGER>(copy.size()));
    }
    wide(text, wideText_);
    return SQLExecDirectW(statement_.get(), wideText_.data(), static_cast<SQLINTEGER>(wideText_.size()));
}

// Reads on to the end of what the server answers: a later part of it may hold an error.
bool Connection::drain() {
    SQLRETURN result = SQL_SUCCESS;
    while (SQL_SUCCEEDED(result))
        result = SQLMoreResults(statement_.get());
    return result == SQL_NO_DATA;
}

std::int64_t Connection::execute(std::string_view text, std::string_view operation) {
    Reset reset(statement_.get());
    const SQLRETURN result = run(text);
    SQLLEN changed = 0;
    // SQL_NO_DATA: nothing was there to be changed.
    bool done = SQL_SUCCEEDED(result) || result == SQL_NO_DATA;
    if (SQL_SUCCEEDED(result)) {
        SQLRowCount(statement_.get(), &changed);
        done = drain();
    }
    if (!done) {
        reset.forget();
        leave(operation);
    }
    return std::max<std::int64_t>(changed, 0);
}

std::int64_t Connection::Execute(const contract::Statement& statement) {
    LongWork::instance().check();
    checkTransactionAlive(executing);
    ready(executing);
    limitStatement(executing);
    const Measured measured;
    const std::string text =
        engine_ == Engine::server ? statement.text() : translatedText(translated(statement), statement);
    std::int64_t changed = 0;
    watched([&] { changed = execute(text, executing); });
    return changed;
}

void Connection::runNative(std::string_view text, std::string_view operation) {
    if (operation.empty())
        operation = executing;
    checkTransactionAlive(operation);
    ready(operation);
    limitStatement(operation);
    const Measured measured;
    watched([&] { execute(text, operation); });
    catalog_.clear();
    statements_.clear();
}

void Connection::Read(const contract::Statement& statement, contract::Snapshot& rows) {
    rows.clear();
    LongWork::instance().check();
    ready(reading);
    limitStatement(reading);
    const Measured measured;
    const TranslatedStatement* shape = engine_ == Engine::sqlite ? &translated(statement) : nullptr;
    if (shape != nullptr)
        read(translatedText(*shape, statement), shape->columns(), rows);
    else
        read(statement.text(), std::nullopt, rows);
}

void Connection::readNative(std::string_view text, contract::Snapshot& rows) {
    rows.clear();
    ready(reading);
    limitStatement(reading);
    const Measured measured;
    read(std::string(text), std::nullopt, rows);
}

void Connection::read(const std::string& text, const std::optional<std::vector<dialect::ResultColumn>>& known,
                      contract::Snapshot& rows) {
    try {
        watched([&] { readWhole(text, known, rows); });
    } catch (const contract::Cancelled&) {
        rows.clear();
        throw;
    }
}

void Connection::readWhole(const std::string& text, const std::optional<std::vector<dialect::ResultColumn>>& known,
                           contract::Snapshot& rows) {
    auto fetch = isSelect(text) ? RowReader::Fetch::byBlock : RowReader::Fetch::byRow;
    for (;;) {
        Reset reset(statement_.get());
        const SQLRETURN result = run(text);
        auto outcome = RowReader::Outcome::failed;
        if (SQL_SUCCEEDED(result)) {
            outcome = reader_.read(statement_.get(), engine_, known, fetch, rows);
            // A count of rows or a message may come in front of the rows.
            while (outcome == RowReader::Outcome::noResult && SQL_SUCCEEDED(SQLMoreResults(statement_.get())))
                outcome = reader_.read(statement_.get(), engine_, known, fetch, rows);
        }
        if (outcome == RowReader::Outcome::tooLong) {
            rows.clear();
            fetch = RowReader::Fetch::byRow;
            continue;
        }
        if (result == SQL_NO_DATA || outcome == RowReader::Outcome::noResult)
            return;
        if (outcome == RowReader::Outcome::complete && drain())
            return;
        rows.clear();
        reset.forget();
        leave(reading);
    }
}

dialect::Catalog::Columns Connection::columnsOf(const std::string& table) {
    dialect::Catalog::Columns columns;
    std::string text = "SELECT name, type FROM pragma_table_info(";
    appendQuoted(table, text);
    text += ")";
    const Reset reset(statement_.get());
    contract::Snapshot rows;
    if (!SQL_SUCCEEDED(run(text)) || reader_.read(statement_.get(), engine_, std::nullopt, RowReader::Fetch::byBlock,
                                                  rows) != RowReader::Outcome::complete)
        return columns;
    for (std::size_t row = 0; row < rows.rowCount(); ++row)
        columns.push_back(
            {std::string(rows.column(0).text(row)), dialect::kindOfDeclared(std::string(rows.column(1).text(row)))});
    return columns;
}

} // namespace platform::odbc
