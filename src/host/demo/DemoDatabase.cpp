#include "host/demo/DemoDatabase.h"

#include "host/database/StateTables.h"
#include "host/demo/DemoWriter.h"
#include "platform/odbc/BulkWriter.h"
#include "platform/odbc/DatabaseTables.h"
#include "platform/sqlite/DatabaseFile.h"

namespace host {

void createDemoDatabase(const std::string& path, const contract::Schema& schema, std::int64_t largest) {
    const DemoData data = makeDemoData(largest);
    platform::sqlite::createDatabase(path, withStates(schema), [&](platform::sqlite::Connection& connection) {
        const auto target = newTarget(connection);
        writeDemoData(data, *target);
        writeDemoStates(data, *target);
        target->finish();
    });
}

void createDemoDatabase(platform::odbc::Connection& connection, const contract::Schema& schema, std::int64_t largest) {
    const DemoData data = makeDemoData(largest);
    const contract::Schema all = withStates(schema);
    const auto form = platform::odbc::fastestRowForm(connection);
    platform::odbc::createTables(connection, all, [&](platform::odbc::Connection& open) {
        const auto target = newTarget(open, all, form);
        writeDemoData(data, *target);
        writeDemoStates(data, *target);
        target->finish();
    });
}

} // namespace host
