#include "host/StateStore.h"

#include "host/DatabaseAccess.h"
#include "platform/odbc/Connection.h"
#include "platform/odbc/DatabaseTables.h"
#include "platform/odbc/Literals.h"
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

/// Whether the server takes the text for a global identifier.
bool isGuid(std::string_view text) {
    constexpr std::string_view pattern = "hhhhhhhh-hhhh-hhhh-hhhh-hhhhhhhhhhhh";
    return std::equal(text.begin(), text.end(), pattern.begin(), pattern.end(), [](char c, char wanted) {
        const bool digit = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F');
        return wanted == '-' ? c == '-' : digit;
    });
}

} // namespace

contract::Schema StateStore::beside(contract::Schema other) {
    const auto& own = schema().tables;
    other.tables.insert(other.tables.end(), own.begin(), own.end());
    return other;
}

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

StateStore::StateStore(const std::string& databasePath, std::function<void(std::function<void()>)> later)
    : path_(fileOf(databasePath)), later_(std::move(later)) {
}

StateStore::StateStore(std::unique_ptr<platform::odbc::Connection> connection)
    : connection_(std::move(connection)), server_(static_cast<platform::odbc::Connection*>(connection_.get())) {
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
    return server_ != nullptr ? openServer(create) : openFile(create);
}

contract::Connection* StateStore::openServer(bool create) {
    if (!server_->IsOpen())
        server_->Open();
    if (!tablesThere_) {
        tablesThere_ = platform::odbc::columnsOf(*server_, schema().tables.front().name).has_value();
        if (!tablesThere_ && create) {
            platform::odbc::createTables(*server_, schema());
            tablesThere_ = true;
        }
    }
    return tablesThere_ ? server_ : nullptr;
}

contract::Connection* StateStore::openFile(bool create) {
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

// One spelling; empty for what can have no state.
std::string StateStore::keyOf(std::string_view guid) const {
    std::string key = normal(guid);
    return server_ == nullptr || isGuid(key) ? key : std::string();
}

std::optional<std::int64_t> StateStore::state(std::string_view guid) {
    return states({std::string(guid)}).front();
}

std::vector<std::optional<std::int64_t>> StateStore::states(const std::vector<std::string>& guids) {
    std::vector<std::optional<std::int64_t>> found(guids.size());
    std::vector<std::string> keys;
    keys.reserve(guids.size());
    for (const auto& guid : guids)
        keys.push_back(keyOf(guid));
    const bool any = std::any_of(keys.begin(), keys.end(), [](const auto& key) { return !key.empty(); });
    auto* connection = any ? open(false) : nullptr;
    if (connection == nullptr)
        return found;
    // A file answers one at a time as fast; a server is asked once for a screen.
    constexpr std::size_t mostAtOnce = 100;
    const std::size_t atOnce = server_ != nullptr ? mostAtOnce : 1;
    for (std::size_t first = 0; first < keys.size(); first += atOnce) {
        const std::size_t last = std::min(keys.size(), first + atOnce);
        Statement statement("SELECT STATI_GUID, STATI_ID_WF02 FROM STATI_LEGAME WHERE STATI_GUID IN ('");
        bool asked = false;
        for (std::size_t i = first; i < last; ++i) {
            if (keys[i].empty())
                continue;
            if (asked)
                statement << "', '";
            statement.text(keys[i]);
            asked = true;
        }
        if (!asked)
            continue;
        statement << "')";
        contract::Snapshot rows;
        readAgainWhenLost(*connection, statement, rows);
        for (std::size_t row = 0; row < rows.rowCount(); ++row) {
            const std::string key = normal(rows.column(0).value(row).text());
            for (std::size_t i = first; i < last; ++i)
                if (keys[i] == key)
                    found[i] = rows.column(1).integer(row);
        }
    }
    return found;
}

// The transaction of the present command.
void StateStore::begin(contract::Connection& connection) {
    if (connection.InTransaction())
        return;
    connection.BeginTrans();
    if (later_)
        later_([this, alive = alive_] {
            if (*alive)
                commit();
        });
}

std::int64_t StateStore::update(contract::Connection& connection, const std::string& key, std::int64_t state) {
    Statement statement("UPDATE STATI_LEGAME SET STATI_ID_WF02 = ");
    statement.number(state) << " WHERE STATI_GUID = '";
    statement.text(key) << "'";
    return connection.Execute(statement);
}

void StateStore::insert(contract::Connection& connection, const std::string& key, std::int64_t state) {
    Statement statement("INSERT INTO STATI_LEGAME (STATI_GUID, STATI_ID_WF02) VALUES ('");
    statement.text(key) << "', ";
    statement.number(state) << ")";
    connection.Execute(statement);
}

std::string StateStore::serverText(const std::string& key, std::int64_t state, std::string_view user,
                                   const std::string& origin) {
    const std::string value = std::to_string(state);
    const std::string day = platform::odbc::serverDay(contract::Date::today());
    std::string text =
        "SET XACT_ABORT ON; BEGIN TRANSACTION; UPDATE STATI_LEGAME SET STATI_ID_WF02 = " + value +
        " WHERE STATI_GUID = '" + key +
        "'; IF @@ROWCOUNT = 0 INSERT INTO STATI_LEGAME (STATI_GUID, STATI_ID_WF02) VALUES ('" + key + "', " + value +
        "); INSERT INTO STATI_STORIA (STORIA_GUID, STORIA_ID_WF02, STORIA_GUIDORIG, STORIA_DATA, "
        "STORIA_UTENTE) VALUES ('" +
        key + "', " + value + ", " + (origin.empty() ? "NULL" : "'" + origin + "'") + ", '" + day + "', N";
    platform::odbc::appendQuoted(user, text);
    return text + "); COMMIT TRANSACTION";
}

void StateStore::setOnServer(const std::string& key, std::int64_t state, std::string_view user,
                             const std::string& origin) {
    open(true);
    const std::string text = serverText(key, state, user, origin);
    try {
        server_->runNative(text);
    } catch (const contract::RuntimeError&) {
        // Another user was quicker with the link's first state; nothing has been written, and now there is one.
        const auto& records = server_->Errors();
        if (records.empty() || records.front().category != contract::ErrorCategory::duplicate)
            throw;
        server_->runNative(text);
    }
}

void StateStore::setState(std::string_view guid, std::int64_t state, std::string_view user, std::string_view from) {
    const std::string key = keyOf(guid);
    if (key.empty())
        return;
    const std::string origin = keyOf(from);
    if (server_ != nullptr) {
        setOnServer(key, state, user, origin);
        return;
    }
    auto& connection = *open(true);
    begin(connection);
    if (update(connection, key, state) == 0)
        insert(connection, key, state);
    Statement history("INSERT INTO STATI_STORIA (STORIA_GUID, STORIA_ID_WF02, STORIA_UTENTE, STORIA_DATA");
    if (!origin.empty())
        history << ", STORIA_GUIDORIG";
    history << ") VALUES ('";
    history.text(key) << "', ";
    history.number(state) << ", '";
    history.text(user) << "', CONVERT(DateTime,'";
    history.date(contract::Date::today()) << "',103)";
    if (!origin.empty()) {
        history << ", '";
        history.text(origin) << "'";
    }
    history << ")";
    connection.Execute(history);
    if (!later_)
        commit();
}

std::size_t StateStore::changes(std::string_view guid) {
    const std::string key = keyOf(guid);
    auto* connection = key.empty() ? nullptr : open(false);
    if (connection == nullptr)
        return 0;
    Statement statement("SELECT STORIA_ID FROM STATI_STORIA WHERE STORIA_GUID = '");
    statement.text(key) << "'";
    contract::Snapshot rows;
    readAgainWhenLost(*connection, statement, rows);
    return rows.rowCount();
}

void StateStore::commit() {
    if (connection_ && connection_->InTransaction())
        connection_->CommitTrans();
}

void StateStore::giveUp() {
    if (connection_)
        connection_->RollbackTrans();
}

contract::ErrorList StateStore::errors() const {
    return connection_ ? connection_->Errors() : contract::ErrorList();
}

} // namespace host
