#include "host/database/TracingConnection.h"

#include "contract/Snapshot.h"
#include "platform/shared/LongWork.h"

#include <utility>

namespace host {

using platform::shared::LongWork;

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

// The host's own writes are no part of what the user may give up.
void TracingConnection::prepareWriting() {
    const LongWork::Aside aside;
    if (beforeWriting)
        beforeWriting();
}

// The text is traced before the statement runs, so that one that fails, or never returns, stands in the trace too; one
// before which the user gave up was never sent.

std::int64_t TracingConnection::Execute(const contract::Statement& statement) {
    LongWork::instance().check();
    if (!connection_->InTransaction())
        prepareWriting();
    trace_.add(statement);
    const auto changed = connection_->Execute(statement);
    LongWork::instance().statementDone();
    trace_.finished();
    return changed;
}

void TracingConnection::Read(const contract::Statement& statement, contract::Snapshot& rows) {
    rows.clear();
    LongWork::instance().check();
    trace_.add(statement);
    connection_->Read(statement, rows);
    LongWork::instance().statementDone();
    trace_.finished();
}

void TracingConnection::BeginTrans() {
    LongWork::instance().check();
    prepareWriting();
    trace_.add("BeginTrans");
    connection_->BeginTrans();
}

void TracingConnection::CommitTrans() {
    LongWork::instance().kept();
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
