#include "platform/headless/ScriptedConnection.h"

#include "contract/Statement.h"

namespace platform::headless {

using contract::FieldType;
using contract::RuntimeError;

namespace {

FieldType typeOf(const contract::Value& value) {
    if (value.as<std::string>())
        return FieldType::varChar;
    if (value.as<contract::Date>())
        return FieldType::dbTimeStamp;
    if (value.as<double>())
        return FieldType::doublePrecision;
    if (value.as<contract::Decimal>())
        return FieldType::numeric;
    if (value.as<bool>())
        return FieldType::boolean;
    if (value.as<std::int64_t>())
        return FieldType::bigInt;
    return value.isMissing() ? FieldType::variant : FieldType::integer;
}

const contract::DatabaseErrorRecord lostConnection{"08S01", 0, "Connessione al database interrotta.",
                                                   contract::ErrorCategory::lostConnection};

} // namespace

ScriptedRows rows(const std::vector<std::string>& names, std::vector<std::vector<contract::Value>> values) {
    ScriptedRows answer;
    for (std::size_t column = 0; column < names.size(); ++column) {
        contract::FieldInfo field{names[column], FieldType::variant, 0, 0};
        for (const auto& row : values)
            if (field.type == FieldType::variant && column < row.size())
                field.type = typeOf(row[column]);
        answer.fields.push_back(field);
    }
    answer.rows = std::move(values);
    return answer;
}

ScriptedConnection::~ScriptedConnection() {
    journal_->note("~Connection");
}

void ScriptedConnection::answer(std::string_view beginning, ScriptedRows rows) {
    answer(beginning, [rows = std::move(rows)](const std::string&) { return rows; });
}

void ScriptedConnection::answer(std::string_view beginning, std::function<ScriptedRows(const std::string&)> make) {
    rules_.push_back({std::string(beginning), false, std::move(make), {}, std::nullopt});
}

void ScriptedConnection::answerExactly(std::string_view text, ScriptedRows rows) {
    rules_.push_back(
        {std::string(text), true, [rows = std::move(rows)](const std::string&) { return rows; }, {}, std::nullopt});
}

void ScriptedConnection::fail(std::string_view beginning, contract::DatabaseErrorRecord record) {
    rules_.push_back({std::string(beginning), false, {}, {}, std::move(record)});
}

void ScriptedConnection::change(std::string_view beginning, std::function<std::int64_t(const std::string&)> effect) {
    rules_.push_back({std::string(beginning), false, {}, std::move(effect), std::nullopt});
}

void ScriptedConnection::failNth(int nth, contract::DatabaseErrorRecord record) {
    failures_.emplace_back(nth, std::move(record));
}

void ScriptedConnection::loseConnectionAt(int nth) {
    lossIn_ = nth;
}

void ScriptedConnection::forget() {
    rules_.clear();
    failures_.clear();
    lossIn_.reset();
    lost_ = false;
}

std::vector<std::string> ScriptedConnection::take() {
    std::vector<std::string> texts(statements_.begin() + static_cast<std::ptrdiff_t>(taken_), statements_.end());
    taken_ = statements_.size();
    return texts;
}

std::vector<std::string> ScriptedConnection::statements(std::string_view beginning) const {
    std::vector<std::string> found;
    for (const auto& text : statements_)
        if (text.starts_with(beginning))
            found.push_back(text);
    return found;
}

const ScriptedConnection::Rule* ScriptedConnection::rule(const std::string& text) const {
    for (auto rule = rules_.rbegin(); rule != rules_.rend(); ++rule)
        if (rule->exact ? text == rule->text : text.starts_with(rule->text))
            return &*rule;
    return nullptr;
}

void ScriptedConnection::report(const contract::DatabaseErrorRecord& record, const std::string& text) {
    errors_ = {record};
    if (inTransaction_ && (record.category == contract::ErrorCategory::lostConnection || endsOnError_))
        endTransaction("RollbackTrans");
    throw RuntimeError(RuntimeError::database, record.description + " (" + text + ")");
}

void ScriptedConnection::endTransaction(std::string_view word) {
    inTransaction_ = false;
    if (transaction)
        transaction(word);
}

void ScriptedConnection::operation(const std::string& text) {
    if (!open_)
        throw RuntimeError(3704, "Operazione non consentita se l'oggetto è chiuso.");
    statements_.push_back(text);
    if (lossIn_ && --*lossIn_ == 0)
        lost_ = true;
    if (lost_)
        report(lostConnection, text);
    std::optional<contract::DatabaseErrorRecord> due;
    for (auto& [left, record] : failures_)
        if (--left == 0)
            due = record;
    if (due)
        report(*due, text);
    if (const auto* found = rule(text); found && found->error)
        report(*found->error, text);
}

void ScriptedConnection::SetConnectionString(std::string_view text) {
    journal_->call("Connection.SetConnectionString", {std::string(text)});
    connectionString_ = text;
}

void ScriptedConnection::Open() {
    journal_->call("Connection.Open");
    open_ = true;
}

void ScriptedConnection::Close() noexcept {
    if (open_)
        journal_->note("Connection.Close()");
    open_ = false;
    if (inTransaction_)
        endTransaction("RollbackTrans");
}

std::int64_t ScriptedConnection::Execute(const contract::Statement& statement) {
    const auto text = statement.text();
    operation(text);
    const auto* found = rule(text);
    return found && found->effect ? found->effect(text) : 1;
}

void ScriptedConnection::Read(const contract::Statement& statement, contract::Snapshot& rows) {
    rows.clear();
    const auto text = statement.text();
    operation(text);
    const auto* found = rule(text);
    if (!found || !found->make)
        return;
    const auto answer = found->make(text);
    rows.start(std::make_shared<const contract::FieldList>(answer.fields));
    for (const auto& row : answer.rows) {
        for (std::size_t column = 0; column < answer.fields.size(); ++column)
            rows.column(column).append(column < row.size() ? row[column] : contract::Value::null());
        rows.rowDone();
    }
}

void ScriptedConnection::BeginTrans() {
    if (inTransaction_)
        throw RuntimeError(RuntimeError::invalidCall, "È già aperta una transazione.");
    operation("BeginTrans");
    inTransaction_ = true;
    if (transaction)
        transaction("BeginTrans");
}

void ScriptedConnection::CommitTrans() {
    operation("CommitTrans");
    endTransaction("CommitTrans");
}

void ScriptedConnection::RollbackTrans() {
    if (!inTransaction_) {
        // A server may have ended it; the errors of that stay.
        statements_.emplace_back("RollbackTrans");
        return;
    }
    endTransaction("RollbackTrans");
    operation("RollbackTrans");
}

} // namespace platform::headless
