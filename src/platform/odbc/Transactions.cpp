// The transactions of a connection: opened and ended by the driver's autocommit switch, and found ended where the
// server did it.

#include "contract/RuntimeError.h"
#include "platform/odbc/Connection.h"
#include "platform/shared/LongWork.h"
#include "platform/shared/Outcome.h"

#include <algorithm>

namespace platform::odbc {

namespace {

using contract::ErrorCategory;
using contract::RuntimeError;

constexpr std::string_view beginning = "Apertura della transazione";
constexpr std::int64_t noTransaction = 3903; ///< the server's number: a rollback without a transaction

} // namespace

// What follows in the same move must not be written on its own.
void Connection::checkTransactionAlive(std::string_view operation) const {
    if (begun_ && ended_)
        throw RuntimeError(RuntimeError::database,
                           shared::notDone(operation, name_) +
                               "la transazione è già stata annullata per un errore precedente.");
}

// A server ends a transaction by itself on some errors (the victim of a deadlock, a failed conversion).
bool Connection::serverHasTransaction() {
    if (!database_)
        return false;
    if (!statement_)
        return true;
    const Reset reset(statement_.get());
    if (engine_ == Engine::sqlite) {
        // It refuses a transaction within another one; there it does so by itself when no space is left.
        if (!SQL_SUCCEEDED(run("BEGIN")))
            return true;
        run("ROLLBACK");
        return false;
    }
    contract::Snapshot rows;
    if (!SQL_SUCCEEDED(run("SELECT @@TRANCOUNT")) ||
        reader_.read(statement_.get(), engine_, std::nullopt, RowReader::Fetch::byBlock, rows) !=
            RowReader::Outcome::complete)
        return true;
    return rows.rowCount() == 0 || rows.column(0).integer(0).value_or(1) > 0;
}

bool Connection::setAutocommit(bool on) {
    return SQL_SUCCEEDED(SQLSetConnectAttr(database_.get(), SQL_ATTR_AUTOCOMMIT,
                                           attribute(on ? SQL_AUTOCOMMIT_ON : SQL_AUTOCOMMIT_OFF), SQL_IS_UINTEGER));
}

bool Connection::setIsolation(std::uintptr_t level) {
    return SQL_SUCCEEDED(SQLSetConnectAttr(database_.get(), SQL_ATTR_TXN_ISOLATION, attribute(level), SQL_IS_UINTEGER));
}

void Connection::BeginTrans() {
    if (begun_)
        throw RuntimeError(RuntimeError::invalidCall, "Una transazione è già aperta: le transazioni non si annidano.");
    shared::LongWork::instance().check();
    ready(beginning);
    if (engine_ == Engine::sqlite)
        // With autocommit off its driver would take no lock before the first write, and two transactions that have both
        // read could not both go on.
        watched([&] { execute("BEGIN IMMEDIATE", beginning); });
    // For the transaction alone: what is read outside of one need not lock ranges.
    else if (!setIsolation(SQL_TXN_SERIALIZABLE) || !setAutocommit(false)) {
        try {
            fail(SQL_HANDLE_DBC, database_.get(), beginning);
        } catch (...) {
            if (database_)
                endTransaction();
            throw;
        }
    }
    begun_ = true;
    ended_ = false;
}

void Connection::CommitTrans() {
    checkTransactionAlive(committing);
    ready(committing);
    if (!begun_)
        platform::odbc::fail(errors_, ErrorCategory::other, "nessuna transazione è aperta", committing, name_);
    const shared::LongWork::Aside aside;
    if (engine_ == Engine::sqlite)
        execute("COMMIT", committing);
    else if (!SQL_SUCCEEDED(SQLEndTran(SQL_HANDLE_DBC, database_.get(), SQL_COMMIT)))
        fail(SQL_HANDLE_DBC, database_.get(), committing);
    begun_ = ended_ = false;
    endTransaction();
}

void Connection::RollbackTrans() {
    if (!begun_)
        return;
    const bool ended = ended_;
    begun_ = ended_ = false;
    if (!database_)
        return;
    if (engine_ == Engine::sqlite) {
        const Reset reset(statement_.get());
        if (!SQL_SUCCEEDED(run("ROLLBACK")) && !ended)
            disconnect();
        return;
    }
    const bool done = SQL_SUCCEEDED(SQLEndTran(SQL_HANDLE_DBC, database_.get(), SQL_ROLLBACK));
    // The driver's own state needs it also where the server has ended the transaction; that there is none any more is
    // no failure then (3903), and the first error stays.
    if (!done && !ended) {
        const auto records = recordsOf(SQL_HANDLE_DBC, database_.get(), engine_);
        const bool none = std::any_of(records.begin(), records.end(),
                                      [](const auto& record) { return record.nativeError == noTransaction; });
        if (!none) {
            // Where the server does not hear of it, the connection ends, and with it the transaction.
            disconnect();
            return;
        }
    }
    endTransaction();
}

// Back to statements that stand alone. A connection that does not get there is opened again.
void Connection::endTransaction() {
    if (engine_ == Engine::server && (!setAutocommit(true) || !setIsolation(SQL_TXN_READ_COMMITTED)))
        disconnect();
}

} // namespace platform::odbc
