#include "host/database/TracingConnection.h"

#include <utility>

namespace host {

TracingConnection::TracingConnection(std::unique_ptr<contract::Connection> connection, TraceLog& trace)
    : connection_(std::move(connection)), trace_(trace) {
}

std::string TracingConnection::ConnectionString() const {
    return connection_->ConnectionString();
}
void TracingConnection::SetConnectionString(std::string_view text) {
    connection_->SetConnectionString(text);
}
void TracingConnection::Open() {
    connection_->Open();
}
void TracingConnection::Close() noexcept {
    connection_->Close();
}
bool TracingConnection::IsOpen() const {
    return connection_->IsOpen();
}
bool TracingConnection::InTransaction() const {
    return connection_->InTransaction();
}
const contract::ErrorList& TracingConnection::Errors() const {
    return connection_->Errors();
}

// The text is traced before the statement runs, so that one that fails, or never returns, stands in the trace too.

std::int64_t TracingConnection::Execute(const contract::Statement& statement) {
    if (beforeWriting && !connection_->InTransaction())
        beforeWriting();
    trace_.add(statement);
    const auto changed = connection_->Execute(statement);
    trace_.finished();
    return changed;
}

void TracingConnection::Read(const contract::Statement& statement, contract::Snapshot& rows) {
    trace_.add(statement);
    connection_->Read(statement, rows);
    trace_.finished();
}

void TracingConnection::BeginTrans() {
    if (beforeWriting)
        beforeWriting();
    trace_.add("BeginTrans");
    connection_->BeginTrans();
}

void TracingConnection::CommitTrans() {
    trace_.add("CommitTrans");
    connection_->CommitTrans();
    trace_.finished();
}

void TracingConnection::RollbackTrans() {
    trace_.add("RollbackTrans");
    connection_->RollbackTrans();
    trace_.finished();
}

} // namespace host
