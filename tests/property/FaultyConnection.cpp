#include "property/FaultyConnection.h"

#include "contract/Progress.h"
#include "contract/RuntimeError.h"
#include "contract/Snapshot.h"

namespace property {

void FaultyConnection::fail(std::string text, contract::ErrorCategory category) {
    errors_ = {{"HY000", 1, text, category}};
    throw contract::RuntimeError(contract::RuntimeError::database, text);
}

void FaultyConnection::operation() {
    if (lost_)
        fail("Connessione persa", contract::ErrorCategory::lostConnection);
    ++operations_;
    if (!failAt_ || operations_ != *failAt_)
        return;
    failAt_.reset();
    switch (fault_) {
    case Fault::error:
        fail("Errore provocato", contract::ErrorCategory::other);
    case Fault::endedByServer:
        if (inner().InTransaction())
            inner().RollbackTrans();
        fail("Transazione vittima di un deadlock", contract::ErrorCategory::deadlock);
    case Fault::lostConnection:
        inner().Close();
        lost_ = true;
        fail("Connessione persa", contract::ErrorCategory::lostConnection);
    case Fault::cancelled:
        if (cancellable_ > 0)
            throw contract::Cancelled();
        return;
    }
}

void FaultyConnection::reconnect() {
    lost_ = false;
    if (!inner().IsOpen())
        inner().Open();
}

std::int64_t FaultyConnection::Execute(const contract::Statement& statement) {
    operation();
    return inner().Execute(statement);
}

void FaultyConnection::Read(const contract::Statement& statement, contract::Snapshot& rows) {
    rows.clear();
    operation();
    inner().Read(statement, rows);
}

void FaultyConnection::BeginTrans() {
    ++begun;
    operation();
    inner().BeginTrans();
}

void FaultyConnection::CommitTrans() {
    operation();
    inner().CommitTrans();
}

void FaultyConnection::RollbackTrans() {
    if (lost_)
        return; // the server has rolled back with the connection
    inner().RollbackTrans();
}

} // namespace property
