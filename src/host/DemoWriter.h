#pragma once

#include "host/DemoModel.h"
#include "platform/sqlite/Connection.h"

namespace host {

// Both write within the transaction that is open on the connection.

void writeDemoData(const DemoData& data, platform::sqlite::Connection& connection);
/// The nodes' workflow states into the host's own file.
void writeDemoStates(const DemoData& data, platform::sqlite::Connection& connection);

} // namespace host
