#pragma once

#include "property/WrappedConnection.h"

#include <memory>
#include <optional>
#include <string>

namespace property {

enum class Fault {
    error,          ///< the operation fails and the transaction stays
    endedByServer,  ///< the operation fails and the server has ended the transaction
    lostConnection, ///< the connection is gone, and with it the transaction; later operations fail too until reopened
    cancelled       ///< the user gives the work up, where it may be given up; a commit is not
};

/// A connection of which one operation can be made to fail; statements and transaction words count alike.
class FaultyConnection : public WrappedConnection {
public:
    using WrappedConnection::WrappedConnection;

    /// Fails the operation of that number, counted from 1 from now on.
    void failAt(std::size_t operation, Fault fault) {
        failAt_ = operation;
        fault_ = fault;
        operations_ = 0;
    }
    void neverFail() { failAt_.reset(); }
    std::size_t operations() const { return operations_; }
    void countFromNow() { operations_ = 0; }
    int begun = 0; ///< transactions
    /// Brings a lost connection back.
    void reconnect();

    std::int64_t Execute(const contract::Statement& statement) override;
    void Read(const contract::Statement& statement, contract::Snapshot& rows) override;
    void BeginTrans() override;
    void CommitTrans() override;
    void RollbackTrans() override;
    void setCancellable(bool cancellable) noexcept override { cancellable_ += cancellable ? 1 : -1; }
    bool InTransaction() const override { return IsOpen() && WrappedConnection::InTransaction(); }
    const contract::ErrorList& Errors() const override {
        return errors_.empty() ? WrappedConnection::Errors() : errors_;
    }

private:
    void operation();
    [[noreturn]] void fail(std::string text, contract::ErrorCategory category);

    contract::ErrorList errors_;
    std::optional<std::size_t> failAt_;
    Fault fault_ = Fault::error;
    std::size_t operations_ = 0;
    bool lost_ = false;
    int cancellable_ = 0; ///< how many works say so
};

} // namespace property
