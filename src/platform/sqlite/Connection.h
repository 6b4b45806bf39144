#pragma once

#include "contract/Connection.h"
#include "platform/sqlite/BusyWait.h"
#include "platform/sqlite/EngineCatalog.h"
#include "platform/sqlite/Handles.h"
#include "platform/sqlite/StatementCache.h"

#include <string>
#include <string_view>

namespace platform::sqlite {

/// A connection to an embedded database file.
///
/// The connection string is "embedded:" and the path of a file that exists; ";busy=" and a number of milliseconds may
/// follow: how long an operation, or the command that it belongs to (platform::shared::Waiting), waits for another
/// program's lock before it fails (5000 without it).
///
/// The file is kept in SQLite's rollback journal mode: between two transactions all the data stands in the one file, so
/// that it can be copied, and read where nothing may be written beside it. A commit has reached the disk when
/// CommitTrans() returns.
class Connection : public contract::Connection {
public:
    static constexpr std::string_view scheme = "embedded:";
    static constexpr int defaultBusyWait = 5000; ///< milliseconds

    Connection() = default;
    /// Not open yet.
    explicit Connection(std::string_view connectionString) : connectionString_(connectionString) {}
    ~Connection() override { Close(); }

    std::string ConnectionString() const override { return connectionString_; }
    void SetConnectionString(std::string_view text) override;

    void Open() override;
    void Close() noexcept override;
    bool IsOpen() const override { return database_ != nullptr; }

    std::int64_t Execute(const contract::Statement& statement) override;
    void Read(const contract::Statement& statement, contract::Snapshot& rows) override;

    void BeginTrans() override;
    void CommitTrans() override;
    void RollbackTrans() override;
    bool InTransaction() const override;

    const contract::ErrorList& Errors() const override { return errors_; }
    void setCancellable(bool cancellable) noexcept override;

    /// Runs one text of SQLite's own language, for tables and indexes. Throws as Execute() does.
    void runNative(const std::string& text);

    /// The file's path as the connection string gives it; empty before Open().
    const std::string& file() const { return file_; }
    bool isReadOnly() const;
    const StatementCache& statements() const { return statements_; }
    const EngineCatalog& catalog() const { return catalog_; }
    /// Null while the connection is closed.
    sqlite3* handle() const { return database_.get(); }

    /// Puts the engine's error into Errors() and throws; for the parts of this adapter.
    [[noreturn]] void fail(int code, std::string_view operation);

private:
    void readConnectionString(int& busyWait);
    void openFile();
    void configure(int busyWait);
    void checkOpen(std::string_view operation);
    void checkInPlace(std::string_view operation);
    void checkTransactionAlive(std::string_view operation);
    /// What a code says that a statement was left with: Cancelled where the user gave it up, else as fail().
    [[noreturn]] void leave(int code, std::string_view operation);
    static int onProgress(void*);
    PreparedStatement& prepare(const contract::Statement& statement, std::string_view operation);
    void bind(PreparedStatement& prepared, const contract::Statement& statement, std::string_view operation);

    std::string connectionString_;
    std::string file_;
    BusyWait busyWait_;
    DatabaseHandle database_;
    EngineCatalog catalog_;
    StatementCache statements_;
    contract::ErrorList errors_;
    bool begun_ = false; ///< by BeginTrans(), whatever SQLite has done with it since
};

} // namespace platform::sqlite
