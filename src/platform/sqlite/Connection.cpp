#include "platform/sqlite/Connection.h"

#include "contract/RuntimeError.h"
#include "platform/shared/LongWork.h"
#include "platform/shared/Outcome.h"
#include "platform/shared/SystemReason.h"
#include "platform/sqlite/Binder.h"
#include "platform/sqlite/Errors.h"
#include "platform/sqlite/FilePlace.h"

#include <charconv>
#include <filesystem>
#include <system_error>

namespace platform::sqlite {

namespace {

using contract::ErrorCategory;
using contract::RuntimeError;
using shared::LongWork;

constexpr std::string_view opening = "Apertura";
constexpr std::string_view reading = "Lettura";
constexpr std::string_view executing = "Esecuzione dell'istruzione";
constexpr std::string_view beginning = "Apertura della transazione";
constexpr std::string_view committing = "Conferma della transazione";
constexpr std::string_view rollingBack = "Annullamento della transazione";

/// Steps of SQLite's own machine between two looks at the user: well below a millisecond.
constexpr int stepsBetweenLooks = 5000;

std::string pragmaText(sqlite3* database, const char* pragma) {
    sqlite3_stmt* raw = nullptr;
    if (sqlite3_prepare_v2(database, pragma, -1, &raw, nullptr) != SQLITE_OK)
        return {};
    const StatementHandle statement(raw);
    if (sqlite3_step(raw) != SQLITE_ROW)
        return {};
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(raw, 0));
    return text ? text : "";
}

} // namespace

void Connection::SetConnectionString(std::string_view text) {
    if (IsOpen())
        throw RuntimeError(RuntimeError::invalidCall, "La stringa di connessione non si cambia a connessione aperta.");
    connectionString_ = text;
}

void Connection::readConnectionString(int& busyWait) {
    std::string_view text = connectionString_;
    const auto invalid = [&](std::string_view why) {
        platform::sqlite::fail(errors_, ErrorCategory::other, why, opening, connectionString_);
    };
    if (text.substr(0, scheme.size()) != scheme)
        invalid("la stringa di connessione non comincia con \"embedded:\"");
    text.remove_prefix(scheme.size());
    constexpr std::string_view option = ";busy=";
    if (const auto at = text.rfind(option); at != std::string_view::npos) {
        const auto digits = text.substr(at + option.size());
        const char* end = digits.data() + digits.size();
        const auto [rest, error] = std::from_chars(digits.data(), end, busyWait);
        if (error != std::errc() || rest != end || busyWait < 0)
            invalid("il tempo di attesa della stringa di connessione non è un numero");
        text = text.substr(0, at);
    }
    if (text.empty())
        invalid("la stringa di connessione non nomina un file");
    file_ = text;
}

void Connection::Open() {
    if (IsOpen())
        throw RuntimeError(RuntimeError::invalidCall, "La connessione è già aperta.");
    int busyWait = defaultBusyWait;
    readConnectionString(busyWait);
    try {
        openFile();
        configure(busyWait);
    } catch (...) {
        Close();
        throw;
    }
}

void Connection::openFile() {
    std::error_code error;
    const auto status = std::filesystem::status(file_, error);
    // A folder that may not be searched, a link in a circle: the file may be there all the same.
    if (status.type() == std::filesystem::file_type::none)
        platform::sqlite::fail(errors_, ErrorCategory::notADatabase,
                               "il file non si raggiunge: " + platform::systemReason(error.value()), opening, file_);
    if (!std::filesystem::exists(status))
        platform::sqlite::fail(errors_, ErrorCategory::notADatabase, "il file non esiste", opening, file_);
    if (std::filesystem::is_directory(status))
        platform::sqlite::fail(errors_, ErrorCategory::notADatabase, "è una cartella, non un file", opening, file_);
    // An absolute path, so that SQLite takes no file name for one of its special ones.
    const std::string path = std::filesystem::absolute(file_, error).string();
    sqlite3* raw = nullptr;
    const int code = sqlite3_open_v2(path.c_str(), &raw, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    database_.reset(raw);
    if (code != SQLITE_OK)
        fail(code, opening);
    sqlite3_extended_result_codes(raw, 1);
}

void Connection::configure(int busyWait) {
    busyWait_.attach(database_.get(), file_, busyWait);
    sqlite3_progress_handler(database_.get(), stepsBetweenLooks, &Connection::onProgress, nullptr);
    // EXTRA is FULL, and also makes the deletion of the journal durable, which is the moment of the commit.
    runNative("PRAGMA cache_size = -65536; PRAGMA temp_store = MEMORY; PRAGMA foreign_keys = OFF; "
              "PRAGMA synchronous = EXTRA");
    int code = sqlite3_exec(database_.get(), "SELECT 1 FROM sqlite_schema LIMIT 1", nullptr, nullptr, nullptr);
    if (code != SQLITE_OK)
        fail(code, opening);
    // A file left in another mode by its maker is turned back where that is possible now; where it is not, because
    // another program is working on it or nothing may be written, the mode it has serves as well.
    if (!isReadOnly() && pragmaText(database_.get(), "PRAGMA journal_mode") == "wal")
        sqlite3_exec(database_.get(), "PRAGMA journal_mode = DELETE", nullptr, nullptr, nullptr);
    catalog_.attach(database_.get());
}

void Connection::Close() noexcept {
    if (!database_)
        return;
    statements_.clear();
    catalog_.attach(nullptr);
    // SQLite rolls an open transaction back by itself.
    database_.reset();
    begun_ = false;
}

bool Connection::isReadOnly() const {
    return database_ && sqlite3_db_readonly(database_.get(), "main") == 1;
}

void Connection::fail(int code, std::string_view operation) {
    platform::sqlite::fail(errors_, database_.get(), code, operation, file_);
}

// Where the user gave up, the engine ends the statement, or the wait for a lock, with a code of its own.
void Connection::leave(int code, std::string_view operation) {
    if (LongWork::instance().cancelled())
        throw contract::Cancelled();
    fail(code, operation);
}

int Connection::onProgress(void*) {
    return LongWork::instance().stops(true) ? 1 : 0;
}

void Connection::setCancellable(bool cancellable) noexcept {
    if (cancellable)
        LongWork::instance().begin();
    else
        LongWork::instance().end();
}

void Connection::checkOpen(std::string_view operation) {
    if (!IsOpen())
        platform::sqlite::fail(errors_, ErrorCategory::lostConnection, "la connessione non è aperta", operation, file_);
}

// A file that has gone would be read on as it was, and nobody would be told.
void Connection::checkInPlace(std::string_view operation) {
    if (InTransaction())
        return;
    if (const auto why = displacement(database_.get(), file_))
        platform::sqlite::fail(errors_, ErrorCategory::notADatabase, *why, operation, file_);
}

// SQLite ends a transaction by itself on some errors (disk full, input or output). What follows in the same move must
// not be written on its own.
void Connection::checkTransactionAlive(std::string_view operation) {
    if (begun_ && !InTransaction())
        throw RuntimeError(RuntimeError::database,
                           shared::notDone(operation, file_) +
                               "la transazione è già stata annullata per un errore precedente.");
}

PreparedStatement& Connection::prepare(const contract::Statement& statement, std::string_view operation) {
    if (auto* prepared = statements_.find(statement))
        return *prepared;
    dialect::Translation translation;
    try {
        // A table that was left half read would be none.
        const LongWork::Aside aside;
        translation = dialect::Translator(catalog_).translate(statement);
    } catch (const dialect::TranslationError& error) {
        errors_.assign(1, {"42000", 0, error.description(), ErrorCategory::syntax});
        throw;
    }
    sqlite3_stmt* raw = nullptr;
    const int code =
        sqlite3_prepare_v3(database_.get(), translation.text.data(), static_cast<int>(translation.text.size()),
                           SQLITE_PREPARE_PERSISTENT, &raw, nullptr);
    auto prepared = std::make_unique<PreparedStatement>();
    prepared->handle.reset(raw);
    if (code != SQLITE_OK)
        leave(code, operation);
    prepared->shape = statement.withoutValues();
    prepared->parameters = std::move(translation.parameters);
    prepared->scratch.resize(prepared->parameters.size());
    prepared->reader = RowReader(raw, std::move(translation.columns));
    return statements_.store(std::move(prepared));
}

void Connection::bind(PreparedStatement& prepared, const contract::Statement& statement, std::string_view operation) {
    int code = SQLITE_OK;
    try {
        code = bindArguments(prepared, statement);
    } catch (const RuntimeError& error) {
        errors_.assign(1, {"22018", 0, error.description(), ErrorCategory::other});
        throw RuntimeError(RuntimeError::database, error.description());
    }
    if (code != SQLITE_OK)
        fail(code, operation);
}

std::int64_t Connection::Execute(const contract::Statement& statement) {
    LongWork::instance().check();
    checkOpen(executing);
    checkInPlace(executing);
    checkTransactionAlive(executing);
    PreparedStatement& prepared = prepare(statement, executing);
    bind(prepared, statement, executing);
    const Reset reset(prepared.handle.get());
    int code = SQLITE_ROW;
    while (code == SQLITE_ROW)
        code = sqlite3_step(prepared.handle.get());
    if (code != SQLITE_DONE)
        leave(code, executing);
    return sqlite3_stmt_readonly(prepared.handle.get()) ? 0 : sqlite3_changes64(database_.get());
}

void Connection::Read(const contract::Statement& statement, contract::Snapshot& rows) {
    rows.clear();
    LongWork::instance().check();
    checkOpen(reading);
    checkInPlace(reading);
    PreparedStatement& prepared = prepare(statement, reading);
    bind(prepared, statement, reading);
    const Reset reset(prepared.handle.get());
    const int code = prepared.reader.read(prepared.handle.get(), rows);
    if (code == SQLITE_DONE)
        return;
    rows.clear();
    leave(code, reading);
}

void Connection::BeginTrans() {
    LongWork::instance().check();
    checkOpen(beginning);
    if (InTransaction())
        throw RuntimeError(RuntimeError::invalidCall, "Una transazione è già aperta: le transazioni non si annidano.");
    checkInPlace(beginning);
    // SQLite would begin, and refuse the first change only.
    if (isReadOnly())
        fail(SQLITE_READONLY, beginning);
    // The write lock is taken at once: two moves cannot both read first and then wait for each other.
    const int code = sqlite3_exec(database_.get(), "BEGIN IMMEDIATE", nullptr, nullptr, nullptr);
    if (code != SQLITE_OK)
        leave(code, beginning);
    begun_ = true;
}

void Connection::CommitTrans() {
    checkOpen(committing);
    checkTransactionAlive(committing);
    if (!InTransaction())
        platform::sqlite::fail(errors_, ErrorCategory::other, "nessuna transazione è aperta", committing, file_);
    const LongWork::Aside aside;
    const int code = sqlite3_exec(database_.get(), "COMMIT", nullptr, nullptr, nullptr);
    if (code != SQLITE_OK)
        fail(code, committing);
    begun_ = false;
}

void Connection::RollbackTrans() {
    begun_ = false;
    if (!InTransaction())
        return;
    const LongWork::Aside aside;
    const int code = sqlite3_exec(database_.get(), "ROLLBACK", nullptr, nullptr, nullptr);
    if (code != SQLITE_OK && InTransaction())
        fail(code, rollingBack);
}

bool Connection::InTransaction() const {
    return database_ && sqlite3_get_autocommit(database_.get()) == 0;
}

void Connection::runNative(const std::string& text) {
    checkOpen(executing);
    const int code = sqlite3_exec(database_.get(), text.c_str(), nullptr, nullptr, nullptr);
    if (code != SQLITE_OK)
        fail(code, executing);
}

} // namespace platform::sqlite
