#include "platform/headless/HeadlessDataFrame.h"

#include <algorithm>
#include <utility>

namespace platform::headless {

using contract::Statement;
using contract::Value;

void HeadlessDataFrame::initialise(contract::Cinterface*& host, std::shared_ptr<contract::Connection> connection,
                                   std::shared_ptr<contract::Recordset> records, const Statement& statement,
                                   std::string_view keyField) {
    journal_->call(name() + ".initialise", {host ? "host" : "", connection ? "connection" : "",
                                            records ? "records" : "", statement.text(), std::string(keyField)});
    record_.open(std::move(connection), std::move(records), statement, keyField);
}

std::shared_ptr<contract::Recordset> HeadlessDataFrame::load(const Statement& statement,
                                                             std::shared_ptr<contract::Recordset> records) {
    journal_->call(name() + ".load", {statement.text()});
    return record_.load(statement, std::move(records));
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
    record_.setTable(table, keyColumns);
}

void HeadlessDataFrame::setDefault(std::string_view field, const Value& value) {
    record_.setDefault(field, value);
}

void HeadlessDataFrame::setRecordValue(std::string_view field, const Value& value) {
    record_.setValue(field, value);
}

void HeadlessDataFrame::show() {
    record_.show();
    showRecord();
}

void HeadlessDataFrame::showRecord() {
    for (auto& binding : bindings_) {
        binding.write(record_.value(binding.field));
        binding.shown = binding.read().text();
    }
    enterStatus(record_.exists() ? browsing : inserting);
}

bool HeadlessDataFrame::changed() const {
    return std::any_of(bindings_.begin(), bindings_.end(),
                       [](const Binding& binding) { return binding.read().text() != binding.shown; });
}

void HeadlessDataFrame::enterStatus(int status) {
    status_ = status;
    contract::fire(ChangeStatus, status);
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
    shared::ColumnValues values;
    for (const auto& binding : bindings_)
        values.emplace_back(binding.field, binding.read());
    try {
        record_.save(values);
    } catch (const shared::RecordChanged&) {
        undo();
        throw;
    }
    for (auto& binding : bindings_)
        binding.shown = binding.read().text();
    enterStatus(browsing);
    return true;
}

void HeadlessDataFrame::close() {
    journal_->call(name() + ".close");
    record_.close();
}

} // namespace platform::headless
