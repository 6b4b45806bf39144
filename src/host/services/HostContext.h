#pragma once

#include "contract/Connection.h"
#include "host/database/FormConnections.h"
#include "host/database/StateStore.h"
#include "host/database/TraceLog.h"
#include "host/services/ErrorLog.h"
#include "host/services/Notices.h"
#include "host/services/ServiceJournal.h"
#include "host/windows/UserDialogs.h"

#include <QPointer>
#include <QString>
#include <QWidget>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace host {

/// Who refuses the next close of the component's form.
enum class RefuseClose : std::uint8_t { nobody, frame, script };

/// What the host's services share. Every service holds on to it, so that one which a component keeps longer than the
/// session still stands on firm ground.
struct HostContext {
    // Connections refer to the trace, so it goes last.
    TraceLog trace;
    ServiceJournal journal;
    UserDialogs dialogs;
    ErrorLog errorLog;
    Notices notices;

    std::string connectionString;
    std::int64_t company = 0;
    std::string user;
    std::string group;
    RefuseClose refuseClose = RefuseClose::nobody;

    /// The host's own connection, open, for its own windows; nothing of it is traced.
    std::shared_ptr<contract::Connection> connection;
    FormConnections formConnections;
    std::unique_ptr<StateStore> states;
    QPointer<QWidget> window;
    std::function<void(const QString&)> statusText;

    /// Writes an error to the log; where it can not be written the user is told, once.
    void logError(const ErrorLog::Entry& entry);
};

/// A connection for the component, not open: traced, and known to the context. The states that wait are committed
/// before it begins a transaction. It holds on to the context.
std::shared_ptr<TracingConnection> newFormConnection(const std::shared_ptr<HostContext>& context);

} // namespace host
