#include "platform/odbc/DatabaseTables.h"

#include "platform/dialect/Ddl.h"
#include "platform/dialect/Token.h"
#include "plugin/contract/RuntimeError.h"
#include "plugin/contract/Snapshot.h"

#include <algorithm>

namespace platform::odbc {

namespace {

using contract::RuntimeError;

[[noreturn]] void refuse(const Connection& connection, const std::string& why) {
    throw RuntimeError(RuntimeError::database, "Il database «" + connection.name() + "» " + why + ".");
}

} // namespace

std::optional<std::vector<std::string>> columnsOf(Connection& connection, std::string_view table) {
    contract::Statement statement("SELECT * FROM ");
    statement.identifier(table) << " WHERE 1=0";
    contract::Snapshot rows;
    try {
        connection.Read(statement, rows);
    } catch (const RuntimeError&) {
        const auto& records = connection.Errors();
        if (std::any_of(records.begin(), records.end(),
                        [](const auto& record) { return record.category == contract::ErrorCategory::missingTable; }))
            return std::nullopt;
        throw;
    }
    std::vector<std::string> names;
    for (const auto& field : rows.fields())
        names.push_back(field.name);
    return names;
}

std::optional<std::string> existingTable(Connection& connection, const contract::Schema& schema) {
    for (const auto& table : schema.tables)
        if (columnsOf(connection, table.name))
            return std::string(table.name);
    return std::nullopt;
}

void createTables(Connection& connection, const contract::Schema& schema,
                  const std::function<void(Connection&)>& fill) {
    if (const auto table = existingTable(connection, schema))
        refuse(connection, "contiene già la tabella " + *table);
    const auto language = connection.engine() == Engine::sqlite ? dialect::Engine::sqlite : dialect::Engine::sqlServer;
    contract::Transaction transaction(connection);
    for (const auto& text : dialect::createStatements(schema, language))
        connection.runNative(text);
    if (fill)
        fill(connection);
    transaction.commit();
}

void checkDatabase(Connection& connection, const contract::Schema& schema) {
    for (const auto& table : schema.tables) {
        const auto columns = columnsOf(connection, table.name);
        if (!columns)
            refuse(connection, "non contiene la tabella " + std::string(table.name));
        for (const auto& column : table.columns)
            if (std::none_of(columns->begin(), columns->end(),
                             [&](const auto& have) { return dialect::sameName(have, column.name); }))
                refuse(connection, "non contiene la colonna " + std::string(column.name) + " della tabella " +
                                       std::string(table.name));
    }
}

} // namespace platform::odbc
