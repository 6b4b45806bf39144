#include "property/StandInServer.h"

#include "contract/RuntimeError.h"
#include "platform/odbc/Connection.h"

#include <stdexcept>

#include <dlfcn.h>
#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>

namespace property {

namespace {

using contract::Column;
using scripted::Diagnostic;

const std::vector<Diagnostic> lostRecords = {{"08S01", 20006, "[Scripted][Server]Write to the server failed"}};

std::u16string ascii(const std::string& text) {
    return {text.begin(), text.end()};
}

scripted::ResultColumn describe(const contract::FieldInfo& field, Column::Storage storage) {
    constexpr std::size_t characters = 200;
    switch (storage) {
    case Column::Storage::integer:
        return {field.name, SQL_BIGINT, 19, 0};
    case Column::Storage::real:
        return {field.name, SQL_DOUBLE, 53, 0};
    case Column::Storage::date:
        return {field.name, SQL_TYPE_TIMESTAMP, 23, 3};
    case Column::Storage::text:
        break;
    }
    return {field.name, SQL_WVARCHAR, characters, 0};
}

scripted::Cell cell(const Column& column, std::size_t row) {
    const auto value = column.value(row);
    if (value.isNull())
        return std::nullopt;
    if (const auto* date = value.as<contract::Date>())
        return ascii(date->iso() + " 00:00:00");
    return ascii(value.text());
}

} // namespace

const contract::Statement* StandInServer::spoken_ = nullptr;

/// Keeps what is asked before its text goes to the driver.
class StandInServer::Speaker : public WrappedConnection {
public:
    Speaker()
        : WrappedConnection(std::make_unique<platform::odbc::Connection>(
              std::string("Driver=") + SCRIPTED_DRIVER + ";Server=erp;Database=Conti;UID=sa;PWD=segreto")) {}
    std::int64_t Execute(const contract::Statement& statement) override {
        spoken_ = &statement;
        return inner().Execute(statement);
    }
    void Read(const contract::Statement& statement, contract::Snapshot& rows) override {
        spoken_ = &statement;
        inner().Read(statement, rows);
    }
};

StandInServer::StandInServer(const std::string& file)
    : rows_(std::string(platform::sqlite::Connection::scheme) + file),
      library_(::dlopen(SCRIPTED_DRIVER, RTLD_NOW | RTLD_LOCAL)) {
    if (library_ == nullptr)
        throw std::runtime_error(::dlerror());
    script_ = reinterpret_cast<scripted::ScriptFunction>(::dlsym(library_, scripted::scriptFunction))();
    *script_ = scripted::Script();
    script_->answer = [this](const std::string& text) { return answer(text); };
    script_->served = [this](const std::string& call) { return served(call); };
    rows_.Open();
    rows_.runNative("PRAGMA synchronous = OFF");
}

StandInServer::~StandInServer() {
    *script_ = scripted::Script();
    ::dlclose(library_);
}

std::unique_ptr<contract::Connection> StandInServer::connect() {
    return std::make_unique<Speaker>();
}

void StandInServer::failAt(std::size_t call, ServerFault fault) {
    failAt_ = call;
    fault_ = fault;
    calls_ = 0;
    emptyRollbacks_ = 0;
    failedAtCommit_ = false;
}

std::optional<ServerFault> StandInServer::due() {
    ++calls_;
    if (!failAt_ || calls_ != *failAt_)
        return std::nullopt;
    failAt_.reset();
    return fault_;
}

void StandInServer::endTransaction(bool commit) {
    if (!rows_.InTransaction())
        return;
    if (commit)
        rows_.CommitTrans();
    else
        rows_.RollbackTrans();
}

void StandInServer::lose() {
    endTransaction(false);
    connected_ = false;
    autocommit_ = true;
}

std::vector<Diagnostic> StandInServer::fail(ServerFault fault) {
    switch (fault) {
    case ServerFault::refused:
        return {{"42000", 50000, "[Scripted][Server]Refused by a trigger"}};
    case ServerFault::deadlock:
        endTransaction(false);
        return {{"40001", 1205, "[Scripted][Server]Transaction was deadlocked and has been chosen as the victim."}};
    case ServerFault::timedOut:
        lose();
        return {{"HYT00", 20003, "[Scripted][Server]Timeout expired"}};
    case ServerFault::away:
        nobody_ = true;
        break;
    case ServerFault::cut:
    case ServerFault::answerLost:
        break;
    }
    lose();
    return lostRecords;
}

scripted::Answer StandInServer::answer(const std::string& text) {
    scripted::Answer answer;
    if (!connected_) {
        answer.failure = lostRecords;
        return answer;
    }
    if (text == "SELECT @@TRANCOUNT") {
        answer.columns = {{"", SQL_INTEGER, 10, 0}};
        answer.rows = {{rows_.InTransaction() ? u"1" : u"0"}};
        return answer;
    }
    if (text == "SET NOCOUNT OFF")
        return answer;
    const auto fault = due();
    if (fault && fault != ServerFault::answerLost) {
        answer.failure = fail(*fault);
        return answer;
    }
    if (spoken_ == nullptr || spoken_->text() != text)
        throw std::logic_error("not what the connection was asked: " + text);
    // With autocommit off every statement begins a transaction where there is none.
    if (!autocommit_ && !rows_.InTransaction())
        rows_.BeginTrans();
    answer = carryOut();
    if (fault)
        answer.failure = fail(*fault);
    return answer;
}

scripted::Answer StandInServer::carryOut() {
    scripted::Answer answer;
    try {
        if (spoken_->text().find("SELECT") > spoken_->text().find_first_not_of(' ')) {
            answer.changed = static_cast<long>(rows_.Execute(*spoken_));
            return answer;
        }
        contract::Snapshot rows;
        rows_.Read(*spoken_, rows);
        for (std::size_t i = 0; i < rows.columnCount(); ++i)
            answer.columns.push_back(describe(rows.fields()[i], rows.column(i).storage()));
        for (std::size_t row = 0; row < rows.rowCount(); ++row) {
            auto& cells = answer.rows.emplace_back();
            for (std::size_t i = 0; i < rows.columnCount(); ++i)
                cells.push_back(cell(rows.column(i), row));
        }
    } catch (const contract::RuntimeError& error) {
        answer.failure = {{"42000", 50001, "[Scripted][Server]" + error.description()}};
    }
    return answer;
}

std::vector<Diagnostic> StandInServer::served(const std::string& call) {
    if (call == "disconnect") {
        lose();
        return {};
    }
    if (call == "connect") {
        if (std::exchange(nobody_, false))
            return {{"08001", 20009, "[Scripted][Server]Unable to connect: the server is unavailable"}};
        connected_ = autocommit_ = true;
        return {};
    }
    if (!connected_)
        return lostRecords;
    if (call == "autocommit on") {
        endTransaction(true); // as the driver does
        autocommit_ = true;
        return {};
    }
    if (call == "rollback") {
        if (!autocommit_ && !rows_.InTransaction()) {
            ++emptyRollbacks_;
            return {{"25000", 3903, "[Scripted][Server]The ROLLBACK TRANSACTION request has no corresponding BEGIN"}};
        }
        endTransaction(false);
        return {};
    }
    const auto fault = due();
    if (fault)
        failedAtCommit_ = call == "commit";
    if (fault && fault != ServerFault::answerLost)
        return fail(*fault);
    if (call == "commit")
        endTransaction(true);
    else
        autocommit_ = false;
    return fault ? fail(*fault) : std::vector<Diagnostic>();
}

} // namespace property
