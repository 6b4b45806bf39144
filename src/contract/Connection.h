#pragma once

#include "contract/Statement.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace contract {

class Snapshot;

/// What kind of failure a database reported.
enum class ErrorCategory : std::uint8_t {
    other,
    lostConnection,
    deadlock,
    timeout,
    locked,
    duplicate,
    permission,
    syntax,
    readOnly,
    full,
    notADatabase,
    missingTable
};

/// One diagnostic record of a database.
struct DatabaseErrorRecord {
    std::string sqlState;         ///< five characters, empty when the engine has none
    std::int64_t nativeError = 0; ///< the engine's own number
    std::string description;      ///< the engine's text, UTF-8
    ErrorCategory category = ErrorCategory::other;
};

/// The Errors collection of a connection: the records of the last failure, first cause first.
using ErrorList = std::vector<DatabaseErrorRecord>;

/// A connection to a database that understands the server's dialect. Used from one thread.
///
/// Every operation that fails fills Errors() and throws RuntimeError with number RuntimeError::database and a
/// description in the user's language that says what failed and where.
class Connection {
public:
    Connection() = default;
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    virtual ~Connection() = default;

    virtual std::string ConnectionString() const = 0;
    /// Before Open() only.
    virtual void SetConnectionString(std::string_view text) = 0;

    virtual void Open() = 0;
    /// Rolls back an open transaction first. Harmless on a closed connection; never throws.
    virtual void Close() noexcept = 0;
    virtual bool IsOpen() const = 0;

    /// Runs a statement whose rows, if any, are not wanted. Returns the number of rows changed.
    virtual std::int64_t Execute(const Statement& statement) = 0;

    /// Runs a statement and reads all its rows into the snapshot, which is cleared first. The server's result is closed
    /// when this returns. After a failure the snapshot is empty.
    virtual void Read(const Statement& statement, Snapshot& rows) = 0;

    /// Starts a serialisable transaction; transactions do not nest (RuntimeError 5).
    virtual void BeginTrans() = 0;
    virtual void CommitTrans() = 0;
    /// Succeeds quietly when there is no transaction, since a server may have ended it on an error; Errors() then
    /// keeps the records of that first error.
    virtual void RollbackTrans() = 0;
    virtual bool InTransaction() const = 0;

    /// The records of the last operation that failed; empty before the first failure.
    virtual const ErrorList& Errors() const = 0;

    /// From now on the user may give up what goes on, or no more. Execute(), Read() and BeginTrans() then throw
    /// Cancelled, before a statement or within one; a transaction is still to be rolled back. Calls nest, each true has
    /// its false (Cancellable). A connection without a user need not do anything.
    virtual void setCancellable(bool) noexcept {}
};

/// What the user may give up, as long as the object lives or until end().
class Cancellable {
public:
    explicit Cancellable(Connection& connection) : connection_(connection) { connection_.setCancellable(true); }
    Cancellable(const Cancellable&) = delete;
    Cancellable& operator=(const Cancellable&) = delete;
    ~Cancellable() { end(); }
    void end() noexcept {
        if (open_)
            connection_.setCancellable(false);
        open_ = false;
    }

private:
    Connection& connection_;
    bool open_ = true;
};

/// Rolls the transaction back unless it was committed: whatever leaves a move by an error, or because its user gives it
/// up, leaves no transaction open. It may be given up until its commit begins.
class Transaction {
public:
    explicit Transaction(Connection& connection) : connection_(connection), cancellable_(connection) {
        connection_.BeginTrans();
    }
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    ~Transaction();

    void commit();
    void rollback();

private:
    Connection& connection_;
    Cancellable cancellable_;
    bool open_ = true;
};

} // namespace contract
