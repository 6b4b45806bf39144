#include "platform/headless/HeadlessDataFrame.h"

#include "contract/RuntimeError.h"

#include <algorithm>
#include <utility>

namespace platform::headless {

using contract::Statement;
using contract::Value;

namespace {

/// "NULL", a number bare, a date or a text between quotes.
void writeValue(Statement& statement, const Value& value) {
    if (value.isMissing())
        statement << "NULL";
    else if (const auto* date = value.as<contract::Date>())
        (statement << "CONVERT(DateTime,'").date(*date) << "',103)";
    else if (value.isNumber() || value.as<bool>())
        statement.bare(value);
    else
        (statement << "'").text(value.text()) << "'";
}

} // namespace

void HeadlessDataFrame::initialise(contract::Cinterface*& host, std::shared_ptr<contract::Connection> connection,
                                   std::shared_ptr<contract::Recordset> records, const Statement& statement,
                                   std::string_view keyField) {
    journal_->call(name() + ".initialise", {host ? "host" : "", connection ? "connection" : "",
                                            records ? "records" : "", statement.text(), std::string(keyField)});
    connection_ = std::move(connection);
    records_ = std::move(records);
    statement_ = statement;
}

std::shared_ptr<contract::Recordset> HeadlessDataFrame::load(const Statement& statement,
                                                             std::shared_ptr<contract::Recordset> records) {
    journal_->call(name() + ".load", {statement.text()});
    records_ = std::move(records);
    return records_;
}

void HeadlessDataFrame::bind(std::string_view field, std::function<Value()> read,
                             std::function<void(const Value&)> write) {
    bindings_.push_back({std::string(field), std::move(read), std::move(write), {}});
}

std::function<void()> HeadlessDataFrame::touch() {
    return [this] {
        if (status_ == browsing && changed())
            enterStatus(editing);
    };
}

void HeadlessDataFrame::bindField(contract::DateField& control, std::string_view field) {
    auto& typed = dynamic_cast<HeadlessDateField&>(control);
    typed.touched = touch();
    dates_.push_back(&typed);
    bind(
        field,
        [&control]() -> Value {
            const auto date = contract::Date::parse(control.text());
            return date ? Value(*date) : Value::null();
        },
        [&control](const Value& value) {
            const auto date = value.date();
            control.setText(date ? date->text() : std::string());
        });
}

void HeadlessDataFrame::bindField(contract::ComboBox& control, std::string_view field) {
    dynamic_cast<HeadlessComboBox&>(control).touched = touch();
    bind(
        field, [&control]() -> Value { return control.position() < 0 ? Value::null() : Value(control.position()); },
        [&control](const Value& value) { control.setPosition(static_cast<int>(value.integer().value_or(-1))); });
}

void HeadlessDataFrame::bindField(contract::CheckBox& control, std::string_view field) {
    dynamic_cast<HeadlessCheckBox&>(control).touched = touch();
    bind(
        field, [&control]() -> Value { return control.checked() ? 1 : 0; },
        [&control](const Value& value) { control.setChecked(value.integer().value_or(0) != 0); });
}

void HeadlessDataFrame::bindField(contract::TextField& control, std::string_view field) {
    if (auto* lookup = dynamic_cast<HeadlessLookupField*>(&control))
        lookup->touched = touch();
    else
        dynamic_cast<HeadlessTextField&>(control).touched = touch();
    bind(
        field,
        [&control]() -> Value {
            const auto text = control.text();
            if (text.empty())
                return Value::null();
            const auto whole = Value(text).integer();
            return whole ? Value(*whole) : Value(text);
        },
        [&control](const Value& value) { control.setText(value.text()); });
}

void HeadlessDataFrame::setTable(std::string_view table, const std::vector<std::string>& keyColumns) {
    table_ = table;
    keyColumns_ = keyColumns;
}

void HeadlessDataFrame::setDefault(std::string_view field, const Value& value) {
    defaults_[std::string(field)] = value;
}

void HeadlessDataFrame::setRecordValue(std::string_view field, const Value& value) {
    hidden_[std::string(field)] = value;
}

Value HeadlessDataFrame::recordValue(const std::string& field) const {
    if (records_ && records_->Row())
        return (*records_)[field];
    const auto value = defaults_.find(field);
    return value == defaults_.end() ? Value::null() : value->second;
}

void HeadlessDataFrame::show() {
    for (auto& binding : bindings_) {
        binding.write(recordValue(binding.field));
        binding.shown = binding.read().text();
    }
    hidden_.clear();
    enterStatus(records_ && records_->Row() ? browsing : inserting);
}

bool HeadlessDataFrame::changed() const {
    return std::any_of(bindings_.begin(), bindings_.end(),
                       [](const Binding& binding) { return binding.read().text() != binding.shown; });
}

void HeadlessDataFrame::enterStatus(int status) {
    status_ = status;
    contract::fire(ChangeStatus, status);
}

Statement HeadlessDataFrame::writing() const {
    std::vector<std::pair<std::string, Value>> values;
    for (const auto& [field, value] : hidden_)
        values.emplace_back(field, value);
    for (const auto& binding : bindings_)
        values.emplace_back(binding.field, binding.read());

    Statement statement;
    if (status_ == inserting) {
        (statement << "INSERT INTO ").identifier(table_) << " (";
        for (std::size_t i = 0; i < values.size(); ++i)
            (i == 0 ? statement : statement << ", ").identifier(values[i].first);
        statement << ") VALUES (";
        for (std::size_t i = 0; i < values.size(); ++i)
            writeValue(i == 0 ? statement : statement << ", ", values[i].second);
        return statement << ")";
    }
    (statement << "UPDATE ").identifier(table_) << " SET ";
    for (std::size_t i = 0; i < values.size(); ++i) {
        (i == 0 ? statement : statement << ", ").identifier(values[i].first) << " = ";
        writeValue(statement, values[i].second);
    }
    bool first = true;
    const auto require = [&](const std::string& column) {
        (std::exchange(first, false) ? statement << " WHERE " : statement << " AND ").identifier(column);
        const auto value = recordValue(column);
        if (value.isMissing())
            statement << " IS NULL";
        else
            writeValue(statement << " = ", value);
    };
    for (const auto& column : keyColumns_)
        require(column);
    for (const auto& binding : bindings_)
        if (records_ && records_->rows().find(binding.field))
            require(binding.field);
    return statement;
}

/// The row was deleted or changed since it was read: nothing was written. A changed one is shown as it is now.
void HeadlessDataFrame::refuseStale() {
    contract::Recordset now;
    now.Open(statement_, *connection_);
    const auto row = records_->Row();
    for (; row && !now.Eof(); now.MoveNext()) {
        const bool same = std::all_of(keyColumns_.begin(), keyColumns_.end(), [&](const std::string& column) {
            return now[column].text() == recordValue(column).text();
        });
        if (!same)
            continue;
        for (const auto& field : now.rows().fields())
            if (const auto column = records_->rows().find(field.name))
                records_->SetValue(*row, *column, now[field.name]);
        show();
        throw contract::RuntimeError(contract::RuntimeError::invalidCall,
                                     "Il record è stato modificato da un altro utente.");
    }
    throw contract::RuntimeError(contract::RuntimeError::noCurrentRecord, "Il record non c'è più.");
}

bool HeadlessDataFrame::save() {
    for (auto* date : dates_)
        if (date->mistyped()) {
            date->setFocus();
            return false;
        }
    bool cancel = false;
    contract::fire(BeforeUpdate, cancel);
    if (cancel)
        return false;
    if (connection_->Execute(writing()) == 0 && status_ != inserting)
        refuseStale();
    keepRow();
    hidden_.clear();
    for (auto& binding : bindings_)
        binding.shown = binding.read().text();
    enterStatus(browsing);
    return true;
}

/// The record set shows what was written.
void HeadlessDataFrame::keepRow() {
    if (!records_)
        return;
    if (status_ == inserting) {
        auto& rows = records_->fill();
        for (std::size_t field = 0; field < rows.columnCount(); ++field)
            rows.column(field).appendNull();
        rows.rowDone();
        records_->MoveTo(rows.rowCount() - 1);
    }
    const auto row = records_->Row();
    if (!row)
        return;
    const auto keep = [&](const std::string& name, const Value& value) {
        if (const auto field = records_->rows().find(name))
            records_->SetValue(*row, *field, value);
    };
    for (const auto& [field, value] : hidden_)
        keep(field, value);
    for (const auto& binding : bindings_)
        keep(binding.field, binding.read());
}

void HeadlessDataFrame::close() {
    journal_->call(name() + ".close");
    records_.reset();
    connection_.reset();
}

} // namespace platform::headless
