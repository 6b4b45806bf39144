#pragma once

#include "contract/Connection.h"
#include "platform/odbc/ConnectionString.h"
#include "platform/odbc/EngineCatalog.h"
#include "platform/odbc/Errors.h"
#include "platform/odbc/Handles.h"
#include "platform/odbc/RowReader.h"
#include "platform/odbc/StatementCache.h"
#include "platform/odbc/Watch.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace platform::odbc {

/// A connection through ODBC's driver manager, to SQL Server or what speaks its dialect; the texts go to it unchanged,
/// each in one piece. For a driver that says it is SQLite the dialect is translated in front of it.
///
/// The connection string is a driver's, and besides "StatementTimeout=" with the seconds that a statement may take, and
/// where commands are known (platform::shared::Waiting) all those of one command together that took longer than a
/// second (no limit without it); the beginning and the end of a transaction may take as long, where the driver can be
/// told so. Its passwords stand in no error.
///
/// A connection that is lost, or whose statement timed out, is opened again by the next command, but never within a
/// transaction: that one is over, and everything but reading is refused until RollbackTrans().
///
/// While somebody listens (platform::shared::LongWork) the driver's calls run in a thread of their own, so that the
/// user can give one up that takes long.
class Connection : public contract::Connection {
public:
    static constexpr int loginTimeout = 10; ///< seconds

    Connection() : Connection(std::string_view()) {}
    /// Not open yet.
    explicit Connection(std::string_view connectionString);
    ~Connection() override { Close(); }

    std::string ConnectionString() const override { return connectionString_; }
    void SetConnectionString(std::string_view text) override;

    void Open() override;
    void Close() noexcept override;
    /// True also while a lost connection waits to be opened again.
    bool IsOpen() const override { return open_; }

    std::int64_t Execute(const contract::Statement& statement) override;
    void Read(const contract::Statement& statement, contract::Snapshot& rows) override;

    void BeginTrans() override;
    void CommitTrans() override;
    void RollbackTrans() override;
    bool InTransaction() const override { return begun_ && !ended_; }

    const contract::ErrorList& Errors() const override { return errors_; }
    void setCancellable(bool cancellable) noexcept override;

    /// Runs one text of the engine's own language, untranslated; an error names the operation where there is one.
    /// Throws as Execute() does.
    void runNative(std::string_view text, std::string_view operation = {});
    /// The same for a text with rows. Throws as Read() does.
    void readNative(std::string_view text, contract::Snapshot& rows);

    Engine engine() const { return engine_; }
    /// What a user calls the database; no password.
    const std::string& name() const { return name_; }
    /// The database's own name as the driver tells it: a SQLite file's path.
    std::string databaseName() const;
    /// The driver's handle; null while the connection is closed or lost.
    SQLHDBC handle() const { return database_.get(); }

private:
    /// What the user reads of an operation that failed; also how fail() knows a commit.
    static constexpr std::string_view committing = "Conferma della transazione";

    [[noreturn]] void fail(SQLSMALLINT type, SQLHANDLE handle, std::string_view operation);
    /// fail(), or Cancelled where the user gave the statement up.
    [[noreturn]] void leave(std::string_view operation);
    /// Carries out what the statement's handle is used for; the user may give it up meanwhile. Throws Cancelled then.
    void watched(const std::function<void()>& call);
    void connect(std::string_view operation);
    void establish(std::string_view operation);
    void disconnect() noexcept;
    void prepareStatement(std::string_view operation);
    void ready(std::string_view operation);
    void checkTransactionAlive(std::string_view operation) const;
    /// Gives the next statement what its command may still wait; a command that has waited long enough is refused.
    void limitStatement(std::string_view operation);
    const TranslatedStatement& translated(const contract::Statement& statement);
    std::string translatedText(const TranslatedStatement& shape, const contract::Statement& statement);
    SQLRETURN run(std::string_view text);
    bool drain();
    void read(const std::string& text, const std::optional<std::vector<dialect::ResultColumn>>& known,
              contract::Snapshot& rows);
    void readWhole(const std::string& text, const std::optional<std::vector<dialect::ResultColumn>>& known,
                   contract::Snapshot& rows);
    std::int64_t execute(std::string_view text, std::string_view operation);
    void endTransaction();
    bool setIsolation(std::uintptr_t level);
    bool setAutocommit(bool on);
    bool serverHasTransaction();
    dialect::Catalog::Columns columnsOf(const std::string& table);

    std::string connectionString_;
    std::string name_;
    std::vector<std::string> passwords_;
    std::uintptr_t timeout_ = 0;          ///< in seconds; 0 for none
    std::uintptr_t statementTimeout_ = 0; ///< of the next statement: what is left of it

    Environment environment_;
    DatabaseHandle database_;
    StatementHandle statement_;
    Engine engine_ = Engine::server;
    EngineCatalog catalog_;
    StatementCache statements_;
    RowReader reader_;
    std::vector<SQLWCHAR> wideText_;
    contract::ErrorList errors_;
    Watch watch_;
    std::atomic<bool> givenUp_ = false; ///< the statement under way
    bool open_ = false;
    bool begun_ = false; ///< by BeginTrans(), whatever the server has done with it since
    bool ended_ = false; ///< the server has ended the transaction, or the connection is lost
};

} // namespace platform::odbc
