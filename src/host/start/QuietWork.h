#pragma once

#include "contract/Cinterface.h"
#include "contract/Connection.h"
#include "host/database/TraceLog.h"
#include "host/start/CommandLine.h"
#include "host/start/ComponentLibrary.h"

#include <cstdint>
#include <memory>
#include <string>

namespace host {

/// What a task of the command line works with that needs no screen and no form: the component's class and an open
/// database with its tables.
class QuietWork {
public:
    /// Throws StartFailure: status 2 for a trace that can not be written, 3 for a database that does not serve.
    QuietWork(const CommandLine& line, ComponentLibrary& component, const std::string& connectionString);
    QuietWork(const QuietWork&) = delete;
    QuietWork& operator=(const QuietWork&) = delete;

    contract::Connection& connection() { return *connection_; }
    /// The one of the command line, else the lowest one in the database, else 1.
    std::int64_t company() const { return company_; }
    contract::PluginClass& component() { return *class_; }

private:
    TraceLog trace_;
    std::unique_ptr<contract::Connection> connection_;
    std::unique_ptr<contract::PluginClass> class_;
    std::int64_t company_ = 1;
};

} // namespace host
