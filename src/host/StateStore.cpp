#include "host/StateStore.h"

#include "platform/sqlite/Connection.h"
#include "platform/sqlite/DatabaseFile.h"
#include "plugin/contract/Date.h"
#include "plugin/contract/RuntimeError.h"
#include "plugin/contract/Snapshot.h"

#include <algorithm>
#include <filesystem>

namespace host {

using contract::Statement;

namespace {

/// One spelling for each identifier.
std::string normal(std::string_view guid) {
    const auto first = guid.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return {};
    std::string text(guid.substr(first, guid.find_last_not_of(' ') - first + 1));
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
    return text;
}

} // namespace

const contract::Schema& StateStore::schema() {
    using contract::ColumnType;
    static const contract::Schema tables{{
        {"STATI_LEGAME",
         {{"STATI_GUID", ColumnType::guid, false}, {"STATI_ID_WF02", ColumnType::integer, false}},
         {"STATI_GUID"},
         {}},
        {"STATI_STORIA",
         {{"STORIA_ID", ColumnType::identity, false},
          {"STORIA_GUID", ColumnType::guid, false},
          {"STORIA_ID_WF02", ColumnType::integer, false},
          {"STORIA_GUIDORIG", ColumnType::guid},
          {"STORIA_UTENTE", ColumnType::text, true, 50},
          {"STORIA_DATA", ColumnType::date}},
         {"STORIA_ID"},
         {{"IX_STORIA_GUID", {"STORIA_GUID"}}}},
    }};
    return tables;
}

StateStore::StateStore(std::string databasePath, std::function<void(std::function<void()>)> later)
    : path_(fileOf(databasePath)), later_(std::move(later)) {
}

StateStore::~StateStore() {
    *alive_ = false;
    try {
        commit();
    } catch (const contract::RuntimeError&) {
        // The connection rolls back; there is nobody left to tell.
        connection_.reset();
    }
}

contract::Connection* StateStore::open(bool create) {
    if (connection_)
        return connection_.get();
    std::error_code ignored;
    const bool exists = std::filesystem::exists(path_, ignored) && std::filesystem::file_size(path_, ignored) > 0;
    if (!exists && !create)
        return nullptr;
    if (!exists)
        platform::sqlite::createDatabase(path_, schema());
    auto connection =
        std::make_unique<platform::sqlite::Connection>(std::string(platform::sqlite::Connection::scheme) + path_);
    connection->Open();
    connection_ = std::move(connection);
    return connection_.get();
}

std::optional<std::int64_t> StateStore::state(std::string_view guid) {
    const std::string key = normal(guid);
    auto* connection = key.empty() ? nullptr : open(false);
    if (connection == nullptr)
        return std::nullopt;
    Statement statement("SELECT STATI_ID_WF02 FROM STATI_LEGAME WHERE STATI_GUID = '");
    statement.text(key) << "'";
    contract::Snapshot rows;
    connection->Read(statement, rows);
    return rows.rowCount() > 0 ? rows.column(0).integer(0) : std::nullopt;
}

void StateStore::setState(std::string_view guid, std::int64_t state, std::string_view user, std::string_view from) {
    const std::string key = normal(guid);
    if (key.empty())
        return;
    auto& connection = *open(true);
    if (!connection.InTransaction()) {
        connection.BeginTrans();
        if (later_)
            later_([this, alive = alive_] {
                if (*alive)
                    commit();
            });
    }
    Statement update("UPDATE STATI_LEGAME SET STATI_ID_WF02 = ");
    update.number(state) << " WHERE STATI_GUID = '";
    update.text(key) << "'";
    if (connection.Execute(update) == 0) {
        Statement insert("INSERT INTO STATI_LEGAME (STATI_GUID, STATI_ID_WF02) VALUES ('");
        insert.text(key) << "', ";
        insert.number(state) << ")";
        connection.Execute(insert);
    }
    Statement history("INSERT INTO STATI_STORIA (STORIA_GUID, STORIA_ID_WF02, STORIA_GUIDORIG, STORIA_UTENTE, "
                      "STORIA_DATA) VALUES ('");
    history.text(key) << "', ";
    history.number(state) << ", '";
    history.text(normal(from)) << "', '";
    history.text(user) << "', CONVERT(DateTime,'";
    history.date(contract::Date::today()) << "',103))";
    connection.Execute(history);
    if (!later_)
        commit();
}

std::size_t StateStore::changes(std::string_view guid) {
    auto* connection = open(false);
    if (connection == nullptr)
        return 0;
    Statement statement("SELECT STORIA_ID FROM STATI_STORIA WHERE STORIA_GUID = '");
    statement.text(normal(guid)) << "'";
    contract::Snapshot rows;
    connection->Read(statement, rows);
    return rows.rowCount();
}

void StateStore::commit() {
    if (connection_ && connection_->InTransaction())
        connection_->CommitTrans();
}

} // namespace host
