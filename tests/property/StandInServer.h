#pragma once

#include "contract/Snapshot.h"
#include "odbc/driver/Script.h"
#include "platform/sqlite/Connection.h"
#include "property/WrappedConnection.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace property {

/// What happens to one call of a StandInServer's client.
enum class ServerFault {
    refused,   ///< an error of that call alone; the transaction stays
    deadlock,  ///< the victim: the server has ended the transaction, and a rollback after it is refused (3903)
    timedOut,  ///< the statement took too long, and the connection has gone with it
    cut,       ///< the connection is lost before the server has done anything
    away,      ///< the same, and nobody answers the next login either
    answerLost ///< done as asked, but the connection is lost before the answer
};

/// A server that fails at a test's word, behind the driver that answers what it is told: the rows are those of an
/// embedded database, and transactions begin and end as a server's do with the driver's autocommit off. One at a time.
class StandInServer {
public:
    explicit StandInServer(const std::string& file);
    StandInServer(const StandInServer&) = delete;
    StandInServer& operator=(const StandInServer&) = delete;
    ~StandInServer();

    /// A connection over ODBC to this server, not open yet.
    static std::unique_ptr<contract::Connection> connect();

    /// Disturbs the call of that number, counted from 1 from now on: a statement, the beginning of a transaction or its
    /// commit.
    void failAt(std::size_t call, ServerFault fault);
    /// And answers every login again.
    void neverFail() {
        failAt_.reset();
        nobody_ = false;
    }
    /// The last disturbed call was a commit.
    bool failedAtCommit() const { return failedAtCommit_; }
    bool inTransaction() const { return rows_.InTransaction(); }
    /// Rollbacks that were refused since there was no transaction.
    int emptyRollbacks() const { return emptyRollbacks_; }

private:
    class Speaker;
    scripted::Answer answer(const std::string& text);
    scripted::Answer carryOut();
    std::vector<scripted::Diagnostic> served(const std::string& call);
    std::optional<ServerFault> due();
    std::vector<scripted::Diagnostic> fail(ServerFault fault);
    void lose();
    void endTransaction(bool commit);

    static const contract::Statement* spoken_; ///< what the client's connection runs now
    platform::sqlite::Connection rows_;
    void* library_ = nullptr;
    scripted::Script* script_ = nullptr;
    bool autocommit_ = true;
    bool connected_ = false;
    bool nobody_ = false; ///< at the next login
    std::size_t calls_ = 0;
    std::optional<std::size_t> failAt_;
    ServerFault fault_ = ServerFault::refused;
    bool failedAtCommit_ = false;
    int emptyRollbacks_ = 0;
};

} // namespace property
