#include "contract/Connection.h"

#include "contract/RuntimeError.h"

namespace contract {

Transaction::~Transaction() {
    cancellable_.end();
    if (!open_)
        return;
    try {
        connection_.RollbackTrans();
    } catch (const RuntimeError&) {
        // The error that brought us here is the one to report; a connection that cannot even roll back has none open.
        open_ = false;
    }
}

void Transaction::commit() {
    cancellable_.end();
    connection_.CommitTrans();
    open_ = false;
}

void Transaction::rollback() {
    open_ = false;
    cancellable_.end();
    connection_.RollbackTrans();
}

} // namespace contract
