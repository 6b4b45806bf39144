#include "host/start/QuietWork.h"

#include "contract/RuntimeError.h"
#include "host/database/AppendedFile.h"
#include "host/database/Companies.h"
#include "host/database/DatabaseAccess.h"
#include "host/database/TracingConnection.h"
#include "host/start/StartFailure.h"

namespace host {

QuietWork::QuietWork(const CommandLine& line, ComponentLibrary& component, const std::string& connectionString) {
    if (line.trace) {
        const QString file = QString::fromLocal8Bit(*line.trace);
        refuseDatabaseAs(file, connectionString, "file di traccia");
        try {
            trace_.openFile(file);
        } catch (const contract::RuntimeError& error) {
            throw StartFailure(ExitStatus::usage, error.description());
        }
    }
    try {
        auto connection = newConnection(connectionString);
        connection->Open();
        checkTables(*connection, component.schema());
        const auto all = line.company ? std::vector<std::int64_t>{*line.company} : companiesOf(*connection);
        company_ = all.empty() ? 1 : all.front();
        connection_ = std::make_unique<TracingConnection>(std::move(connection), trace_);
    } catch (const contract::RuntimeError& error) {
        throw StartFailure(ExitStatus::database, error.description());
    }
    class_ = component.newClass(contract::copiaDistintaClassId);
    if (!class_)
        throw StartFailure(ExitStatus::database,
                           std::string("il componente non conosce la classe ") + contract::copiaDistintaClassId);
}

} // namespace host
