#pragma once

#include "platform/sqlite/Connection.h"

#include <memory>
#include <optional>
#include <string>

namespace property {

enum class Fault {
    error,         ///< the operation fails and the transaction stays
    endedByServer, ///< the operation fails and the server has ended the transaction
    lostConnection ///< the connection is gone, and with it the transaction; later operations fail too until reopened
};

/// An embedded connection of which one operation can be made to fail; statements and transaction words count alike.
class FaultyConnection : public contract::Connection {
public:
    explicit FaultyConnection(const std::string& connectionString) : inner_(connectionString) {}

    /// Fails the operation of that number, counted from 1 from now on.
    void failAt(std::size_t operation, Fault fault) {
        failAt_ = operation;
        fault_ = fault;
        operations_ = 0;
    }
    void neverFail() { failAt_.reset(); }
    std::size_t operations() const { return operations_; }
    void countFromNow() { operations_ = 0; }
    /// Brings a lost connection back.
    void reconnect();

    std::string ConnectionString() const override { return inner_.ConnectionString(); }
    void SetConnectionString(std::string_view text) override { inner_.SetConnectionString(text); }
    void Open() override { inner_.Open(); }
    void Close() noexcept override { inner_.Close(); }
    bool IsOpen() const override { return inner_.IsOpen(); }
    std::int64_t Execute(const contract::Statement& statement) override;
    void Read(const contract::Statement& statement, contract::Snapshot& rows) override;
    void BeginTrans() override;
    void CommitTrans() override;
    void RollbackTrans() override;
    bool InTransaction() const override { return inner_.IsOpen() && inner_.InTransaction(); }
    const contract::ErrorList& Errors() const override { return errors_; }

private:
    void operation();
    [[noreturn]] void fail(std::string text, contract::ErrorCategory category);

    platform::sqlite::Connection inner_;
    contract::ErrorList errors_;
    std::optional<std::size_t> failAt_;
    Fault fault_ = Fault::error;
    std::size_t operations_ = 0;
    bool lost_ = false;
};

} // namespace property
