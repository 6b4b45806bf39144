// The registry of moves, as far as the host has to do with it: whether the database has its tables.

#include "host/database/DatabaseAccess.h"
#include "host/services/HostContext.h"
#include "host/start/ComponentLibrary.h"
#include "host/start/HostSession.h"

namespace host {

void HostSession::addRegistry() {
    addTables(*context_->connection, optionalTables(component_.schema()));
    hasRegistry_ = true;
    keepRegistry();
}

contract::MoveRegistry* HostSession::registry() const {
    return formOpen() ? dynamic_cast<contract::MoveRegistry*>(class_.get()) : nullptr;
}

void HostSession::keepRegistry() {
    if (auto* registry = dynamic_cast<contract::MoveRegistry*>(class_.get()))
        registry->KeepsRegistry(hasRegistry_);
}

} // namespace host
