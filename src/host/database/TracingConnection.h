#pragma once

#include "contract/Connection.h"
#include "host/database/TraceLog.h"

#include <functional>
#include <memory>

namespace host {

/// A connection that tells a trace what goes through it.
class TracingConnection : public contract::Connection {
public:
    /// The trace must outlive the connection.
    TracingConnection(std::unique_ptr<contract::Connection> connection, TraceLog& trace);

    /// What goes through it leaves no trace: for the host's own writes in a transaction that is under way.
    contract::Connection& untraced() { return *connection_; }
    /// Runs before a transaction begins and before each statement that is run outside of one. What it throws, the
    /// operation throws.
    std::function<void()> beforeWriting;

    std::string ConnectionString() const override;
    void SetConnectionString(std::string_view text) override;
    void Open() override;
    void Close() noexcept override;
    bool IsOpen() const override;
    std::int64_t Execute(const contract::Statement& statement) override;
    void Read(const contract::Statement& statement, contract::Snapshot& rows) override;
    void BeginTrans() override;
    void CommitTrans() override;
    void RollbackTrans() override;
    bool InTransaction() const override;
    const contract::ErrorList& Errors() const override;
    void setCancellable(bool cancellable) noexcept override { connection_->setCancellable(cancellable); }

private:
    void prepareWriting();

    std::unique_ptr<contract::Connection> connection_;
    TraceLog& trace_;
};

} // namespace host
