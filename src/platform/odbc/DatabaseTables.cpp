#include "platform/odbc/DatabaseTables.h"

#include "contract/RuntimeError.h"
#include "contract/Snapshot.h"
#include "platform/dialect/Ddl.h"
#include "platform/dialect/Token.h"
#include "platform/odbc/Literals.h"

#include <algorithm>

namespace platform::odbc {

namespace {

using contract::RuntimeError;

[[noreturn]] void refuse(const Connection& connection, const std::string& why) {
    throw RuntimeError(RuntimeError::database, "Il database «" + connection.name() + "» " + why + ".");
}

std::vector<std::string_view> namesOf(const contract::Schema& schema) {
    std::vector<std::string_view> names;
    for (const auto& table : schema.tables)
        names.push_back(table.name);
    return names;
}

bool hasColumn(const std::vector<std::string>& columns, std::string_view name) {
    return std::any_of(columns.begin(), columns.end(), [&](const auto& have) { return dialect::sameName(have, name); });
}

} // namespace

std::optional<std::vector<std::string>> columnsOf(Connection& connection, std::string_view table) {
    auto tables = columnsOf(connection, std::vector<std::string_view>{table});
    return std::move(tables.front());
}

std::vector<std::optional<std::vector<std::string>>> columnsOf(Connection& connection,
                                                               const std::vector<std::string_view>& tables) {
    std::vector<std::optional<std::vector<std::string>>> columns(tables.size());
    if (tables.empty())
        return columns;
    std::string text = connection.engine() == Engine::sqlite
                           ? "SELECT m.name AS t, p.name AS c FROM sqlite_master m JOIN pragma_table_info(m.name) p "
                             "WHERE m.name COLLATE NOCASE IN ("
                           : "SELECT TABLE_NAME, COLUMN_NAME FROM INFORMATION_SCHEMA.COLUMNS WHERE TABLE_SCHEMA IN "
                             "(SCHEMA_NAME(), 'dbo') AND TABLE_NAME IN (";
    for (const auto table : tables) {
        if (table != tables.front())
            text += ", ";
        appendQuoted(table, text);
    }
    text += connection.engine() == Engine::sqlite ? ") ORDER BY p.cid" : ") ORDER BY ORDINAL_POSITION";
    contract::Snapshot rows;
    connection.readNative(text, rows);
    for (std::size_t row = 0; row < rows.rowCount(); ++row) {
        const auto name = rows.column(0).text(row);
        for (std::size_t i = 0; i < tables.size(); ++i)
            if (dialect::sameName(name, tables[i])) {
                if (!columns[i])
                    columns[i].emplace();
                columns[i]->emplace_back(rows.column(1).text(row));
            }
    }
    return columns;
}

std::optional<std::string> existingTable(Connection& connection, const contract::Schema& schema) {
    const auto columns = columnsOf(connection, namesOf(schema));
    for (std::size_t i = 0; i < columns.size(); ++i)
        if (columns[i])
            return std::string(schema.tables[i].name);
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

contract::Schema missingTables(Connection& connection, const contract::Schema& schema) {
    const auto all = columnsOf(connection, namesOf(schema));
    contract::Schema missing;
    for (std::size_t i = 0; i < all.size(); ++i) {
        const auto& table = schema.tables[i];
        const auto& columns = all[i];
        if (!columns || !std::all_of(table.columns.begin(), table.columns.end(),
                                     [&](const auto& column) { return hasColumn(*columns, column.name); }))
            missing.tables.push_back(table);
    }
    return missing;
}

void checkDatabase(Connection& connection, const contract::Schema& schema) {
    const auto all = columnsOf(connection, namesOf(schema));
    for (std::size_t i = 0; i < all.size(); ++i) {
        const auto& table = schema.tables[i];
        if (table.isOptional)
            continue;
        const auto& columns = all[i];
        if (!columns)
            // A server shows nobody a table that he has no right on.
            refuse(connection, "non contiene la tabella " + std::string(table.name) +
                                   (connection.engine() == Engine::server ? ", o l'utente non la può leggere" : ""));
        for (const auto& column : table.columns)
            if (!hasColumn(*columns, column.name))
                refuse(connection, "non contiene la colonna " + std::string(column.name) + " della tabella " +
                                       std::string(table.name));
    }
}

} // namespace platform::odbc
