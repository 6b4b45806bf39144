#include "host/database/StateStore.h"

#include "contract/Date.h"
#include "contract/RuntimeError.h"
#include "contract/Snapshot.h"
#include "host/database/DatabaseAccess.h"
#include "host/database/StateTables.h"
#include "platform/odbc/Connection.h"
#include "platform/odbc/DatabaseTables.h"
#include "platform/odbc/Literals.h"
#include "platform/shared/LongWork.h"
#include "platform/sqlite/Connection.h"

#include <algorithm>
#include <utility>

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

StateStore::StateStore(std::string databasePath, std::function<void(std::function<void()>)> later, UnderWay underWay)
    : path_(std::move(databasePath)), later_(std::move(later)), underWay_(std::move(underWay)) {
}

StateStore::StateStore(std::unique_ptr<platform::odbc::Connection> connection) : server_(std::move(connection)) {
}

StateStore::~StateStore() {
    *alive_ = false;
    try {
        commit();
    } catch (const contract::RuntimeError&) {
        // The connection rolls back; there is nobody left to tell.
        file_.reset();
    }
}

contract::Connection* StateStore::underWay() const {
    return underWay_ ? underWay_() : nullptr;
}

contract::Connection* StateStore::openServer(bool create) {
    if (!server_->IsOpen())
        server_->Open();
    if (!tablesThere_) {
        tablesThere_ = platform::odbc::columnsOf(*server_, stateSchema().tables.front().name).has_value();
        if (!tablesThere_ && create) {
            platform::odbc::createTables(*server_, stateSchema());
            tablesThere_ = true;
        }
    }
    return tablesThere_ ? server_.get() : nullptr;
}

platform::sqlite::Connection& StateStore::openFile() {
    if (!file_) {
        auto connection =
            std::make_unique<platform::sqlite::Connection>(std::string(platform::sqlite::Connection::scheme) + path_);
        connection->Open();
        file_ = std::move(connection);
    }
    return *file_;
}

// The connection that sees what has been written; null where there are no states. A companion that could not be taken
// in yet, because nothing may be written, is read as it is.
contract::Connection* StateStore::reading() {
    if (server_)
        return openServer(false);
    if (auto* other = tablesThere_ ? underWay() : nullptr)
        return other;
    auto& file = openFile();
    tablesThere_ = tablesThere_ || file.catalog().columns(stateSchema().tables.front().name) != nullptr;
    if (tablesThere_)
        return &file;
    if (!companion_)
        companion_ = openStateCompanion(path_);
    return companion_.get();
}

void StateStore::prepareFile() {
    if (prepared_)
        return;
    auto& file = openFile();
    try {
        companion_.reset();
        prepareStateTables(file);
    } catch (const contract::RuntimeError&) {
        errors_ = file.Errors();
        file_.reset();
        throw;
    }
    prepared_ = tablesThere_ = !file.isReadOnly();
}

void StateStore::prepare() {
    if (server_)
        return;
    commit();
    prepareFile();
}

// One spelling; empty for what can have no state.
std::string StateStore::keyOf(std::string_view guid) const {
    std::string key = normal(guid);
    return !server_ || isGuid(key) ? key : std::string();
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
    auto* connection = any ? reading() : nullptr;
    if (connection == nullptr)
        return found;
    // A file answers one at a time as fast; a server is asked once for a screen.
    constexpr std::size_t mostAtOnce = 100;
    const std::size_t atOnce = server_ ? mostAtOnce : 1;
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

// The transaction of the present command. Where the database has ended it by itself, as it does on a full disk, what
// had been written in it is written again.
void StateStore::begin() {
    prepareFile();
    auto& file = openFile();
    if (file.InTransaction())
        return;
    file.BeginTrans();
    if (waiting_.empty() && later_)
        later_([this, alive = alive_] {
            if (*alive)
                commit();
        });
    for (const auto& write : waiting_)
        execute(file, write);
}

void StateStore::execute(contract::Connection& connection, const Write& write) {
    Statement update("UPDATE STATI_LEGAME SET STATI_ID_WF02 = ");
    update.number(write.state) << " WHERE STATI_GUID = '";
    update.text(write.key) << "'";
    if (connection.Execute(update) == 0) {
        Statement insert("INSERT INTO STATI_LEGAME (STATI_GUID, STATI_ID_WF02) VALUES ('");
        insert.text(write.key) << "', ";
        insert.number(write.state) << ")";
        connection.Execute(insert);
    }
    Statement history("INSERT INTO STATI_STORIA (STORIA_GUID, STORIA_ID_WF02, STORIA_UTENTE, STORIA_DATA");
    if (!write.origin.empty())
        history << ", STORIA_GUIDORIG";
    history << ") VALUES ('";
    history.text(write.key) << "', ";
    history.number(write.state) << ", '";
    history.text(write.user) << "', CONVERT(DateTime,'";
    history.date(contract::Date::today()) << "',103)";
    if (!write.origin.empty()) {
        history << ", '";
        history.text(write.origin) << "'";
    }
    history << ")";
    connection.Execute(history);
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

void StateStore::setOnServer(const Write& write) {
    openServer(true);
    const std::string text = serverText(write.key, write.state, write.user, write.origin);
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
    // A state is written with its history or not at all; a work is given up before or after.
    const platform::shared::LongWork::Aside aside;
    Write write{key, state, std::string(user), keyOf(from)};
    if (server_) {
        setOnServer(write);
        return;
    }
    if (auto* other = underWay()) {
        execute(*other, write);
        return;
    }
    begin();
    try {
        execute(*file_, write);
    } catch (const contract::RuntimeError&) {
        // Not half of it; what waits is written again with the next one.
        file_->RollbackTrans();
        throw;
    }
    waiting_.push_back(std::move(write));
    if (!later_)
        commit();
}

std::size_t StateStore::changes(std::string_view guid) {
    const std::string key = keyOf(guid);
    auto* connection = key.empty() ? nullptr : reading();
    if (connection == nullptr)
        return 0;
    Statement statement("SELECT STORIA_ID FROM STATI_STORIA WHERE STORIA_GUID = '");
    statement.text(key) << "'";
    contract::Snapshot rows;
    readAgainWhenLost(*connection, statement, rows);
    return rows.rowCount();
}

void StateStore::commit() {
    if (waiting_.empty())
        return;
    begin();
    file_->CommitTrans();
    waiting_.clear();
}

void StateStore::giveUp() {
    waiting_.clear();
    if (file_)
        file_->RollbackTrans();
}

contract::ErrorList StateStore::errors() const {
    if (server_)
        return server_->Errors();
    return file_ ? file_->Errors() : errors_;
}

} // namespace host
