#pragma once

#include "contract/Connection.h"

#include <memory>
#include <string>
#include <utility>

namespace property {

/// A connection that hands everything on to another one: a test overrides what it watches or disturbs.
class WrappedConnection : public contract::Connection {
public:
    explicit WrappedConnection(std::unique_ptr<contract::Connection> inner) : inner_(std::move(inner)) {}

    std::string ConnectionString() const override { return inner_->ConnectionString(); }
    void SetConnectionString(std::string_view text) override { inner_->SetConnectionString(text); }
    void Open() override { inner_->Open(); }
    void Close() noexcept override { inner_->Close(); }
    bool IsOpen() const override { return inner_->IsOpen(); }
    std::int64_t Execute(const contract::Statement& statement) override { return inner_->Execute(statement); }
    void Read(const contract::Statement& statement, contract::Snapshot& rows) override {
        inner_->Read(statement, rows);
    }
    void BeginTrans() override { inner_->BeginTrans(); }
    void CommitTrans() override { inner_->CommitTrans(); }
    void RollbackTrans() override { inner_->RollbackTrans(); }
    bool InTransaction() const override { return inner_->InTransaction(); }
    const contract::ErrorList& Errors() const override { return inner_->Errors(); }

protected:
    contract::Connection& inner() { return *inner_; }

private:
    std::unique_ptr<contract::Connection> inner_;
};

} // namespace property
