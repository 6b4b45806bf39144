#include "platform/qt/DataFrameControl.h"

#include "platform/qt/InputEvents.h"
#include "plugin/contract/RuntimeError.h"

#include <algorithm>

namespace platform::qt {

using contract::Date;
using contract::FieldType;
using contract::RuntimeError;
using contract::Value;

namespace {

bool holdsDate(FieldType type) {
    return type == FieldType::date || type == FieldType::dbDate || type == FieldType::dbTimeStamp;
}

bool holdsNumber(FieldType type) {
    switch (type) {
    case FieldType::smallInt:
    case FieldType::integer:
    case FieldType::tinyInt:
    case FieldType::bigInt:
    case FieldType::unsignedTinyInt:
    case FieldType::unsignedSmallInt:
    case FieldType::unsignedInt:
    case FieldType::unsignedBigInt:
    case FieldType::boolean:
    case FieldType::numeric:
    case FieldType::decimal:
        return true;
    default:
        return false;
    }
}

/// Whether a database can compare a column of that type with a literal for equality.
bool comparable(FieldType type) {
    switch (type) {
    case FieldType::guid:
    case FieldType::character:
    case FieldType::wideCharacter:
    case FieldType::varChar:
    case FieldType::varWChar:
        return true;
    default:
        return holdsNumber(type) || holdsDate(type);
    }
}

std::string trimmed(const std::string& content) {
    const auto first = content.find_first_not_of(' ');
    return first == std::string::npos ? std::string()
                                      : content.substr(first, content.find_last_not_of(' ') - first + 1);
}

Value dateValue(const std::string& field, const std::string& content) {
    if (trimmed(content).empty())
        return Value::null();
    const auto date = Date::parse(content);
    if (!date)
        throw RuntimeError(RuntimeError::typeMismatch,
                           "Il campo " + field + " contiene \"" + content + "\", che non è una data.");
    return *date;
}

std::string dateText(const Value& value) {
    const auto date = value.date();
    return date ? date->text() : value.text();
}

} // namespace

DataFrameControl::DataFrameControl(std::string_view name, QWidget* parent) : FrameBase(name, new QWidget(parent)) {
}

DataFrameControl::~DataFrameControl() = default;

void DataFrameControl::initialise(contract::Cinterface*&, std::shared_ptr<contract::Connection> connection,
                                  std::shared_ptr<contract::Recordset> records, const contract::Statement& statement,
                                  std::string_view keyField) {
    connection_ = std::move(connection);
    records_ = std::move(records);
    statement_ = statement;
    if (keyColumns_.empty() && !keyField.empty())
        keyColumns_.emplace_back(keyField);
}

std::shared_ptr<contract::Recordset> DataFrameControl::load(const contract::Statement& statement,
                                                            std::shared_ptr<contract::Recordset> records) {
    statement_ = statement;
    records_ = records ? std::move(records) : std::make_shared<contract::Recordset>();
    if (!records_->IsOpen())
        records_->Open(statement_, connection());
    return records_;
}

void DataFrameControl::addBinding(const contract::Control& control, EditSource* source, Binding binding) {
    binding.control = &control;
    bindings_.push_back(std::move(binding));
    if (source == nullptr)
        return;
    sources_.push_back(source);
    source->edited = [this] { followEdit(); };
}

void DataFrameControl::bindField(contract::DateField& control, std::string_view field) {
    const std::string column(field);
    addBinding(control, dynamic_cast<EditSource*>(&control),
               {column,
                nullptr,
                [&control] { return control.text(); },
                [&control, column] { return dateValue(column, control.text()); },
                [&control](const Value& value) { control.setText(dateText(value)); },
                {}});
}

void DataFrameControl::bindField(contract::ComboBox& control, std::string_view field) {
    const auto value = [&control] {
        return control.position() < 0 ? Value::null() : Value(static_cast<std::int64_t>(control.position()));
    };
    addBinding(control, dynamic_cast<EditSource*>(&control),
               {std::string(field),
                nullptr,
                [&control] { return std::to_string(control.position()); },
                value,
                [&control](const Value& shown) {
                    const auto position = shown.integer();
                    control.setPosition(position && *position >= 0 && *position < control.itemCount()
                                            ? static_cast<int>(*position)
                                            : -1);
                },
                {}});
}

void DataFrameControl::bindField(contract::CheckBox& control, std::string_view field) {
    addBinding(control, dynamic_cast<EditSource*>(&control),
               {std::string(field),
                nullptr,
                [&control] { return std::string(control.checked() ? "1" : "0"); },
                [&control] { return Value(static_cast<std::int64_t>(control.checked() ? 1 : 0)); },
                [&control](const Value& value) { control.setChecked(value.integer().value_or(0) != 0); },
                {}});
}

void DataFrameControl::bindField(contract::TextField& control, std::string_view field) {
    const std::string column(field);
    addBinding(control, dynamic_cast<EditSource*>(&control),
               {column,
                nullptr,
                [&control] { return control.text(); },
                [this, &control, column] { return textValue(column, control.text()); },
                [&control](const Value& value) { control.setText(value.text()); },
                {}});
}

Value DataFrameControl::textValue(const std::string& field, const std::string& content) const {
    const auto column = records_ ? records_->rows().find(field) : std::nullopt;
    const FieldType type = column ? records_->rows().fields()[*column].type : FieldType::varWChar;
    if (content.empty() || (!holdsDate(type) && holdsNumber(type) && trimmed(content).empty()))
        return Value::null();
    if (holdsDate(type))
        return dateValue(field, content);
    if (!holdsNumber(type))
        return content;
    const auto number = Value(content).integer();
    if (!number)
        throw RuntimeError(RuntimeError::typeMismatch,
                           "Il campo " + field + " contiene \"" + content + "\", che non è un numero intero.");
    return *number;
}

void DataFrameControl::setTable(std::string_view table, const std::vector<std::string>& keyColumns) {
    table_ = table;
    keyColumns_ = keyColumns;
}

void DataFrameControl::setDefault(std::string_view field, const Value& value) {
    defaults_.insert_or_assign(std::string(field), value);
}

void DataFrameControl::setRecordValue(std::string_view field, const Value& value) {
    for (auto& [known, present] : recordValues_)
        if (known == field) {
            present = value;
            return;
        }
    recordValues_.emplace_back(field, value);
}

void DataFrameControl::show() {
    existing_ = records_ && !records_->Bof() && !records_->Eof();
    fill();
    setStatus(existing_ ? browsing : inserting);
}

void DataFrameControl::fill() {
    key_.clear();
    if (existing_)
        for (const auto& column : keyColumns_)
            if (records_->rows().find(column))
                key_.emplace_back(column, (*records_)[column]);
    filling_ = true;
    try {
        for (const auto& binding : bindings_) {
            if (existing_ && records_->rows().find(binding.field)) {
                binding.put((*records_)[binding.field]);
            } else {
                const auto found = defaults_.find(binding.field);
                binding.put(found == defaults_.end() ? Value() : found->second);
            }
        }
    } catch (...) {
        filling_ = false;
        throw;
    }
    filling_ = false;
    // What a field shows may set others off; all have come to rest now.
    for (auto& binding : bindings_)
        binding.shown = binding.content();
}

bool DataFrameControl::changed() const {
    return std::any_of(bindings_.begin(), bindings_.end(),
                       [](const Binding& binding) { return binding.content() != binding.shown; });
}

void DataFrameControl::setStatus(int status) {
    status_ = status;
    contract::fire(ChangeStatus, status);
}

void DataFrameControl::followEdit() {
    if (filling_)
        return;
    const int now = !existing_ ? inserting : changed() ? editing : browsing;
    if (now != status_)
        setStatus(now);
}

contract::Connection& DataFrameControl::connection() const {
    if (!connection_)
        throw RuntimeError(RuntimeError::objectNotSet, "Il riquadro " + name_ + " non ha una connessione al database.");
    return *connection_;
}

ColumnValues DataFrameControl::valuesToWrite() const {
    ColumnValues values;
    const auto known = [&values](std::string_view field) {
        return std::any_of(values.begin(), values.end(), [&](const auto& entry) { return entry.first == field; });
    };
    const auto isKey = [this](std::string_view field) {
        return std::find(keyColumns_.begin(), keyColumns_.end(), field) != keyColumns_.end();
    };
    for (const auto& [field, value] : recordValues_)
        if (!existing_ || !isKey(field))
            values.emplace_back(field, value);
    for (const auto& binding : bindings_)
        if (!known(binding.field) && (!existing_ || !isKey(binding.field)))
            values.emplace_back(binding.field, binding.value());
    if (!existing_)
        for (const auto& [field, value] : defaults_)
            if (!known(field))
                values.emplace_back(field, value);
    return values;
}

bool DataFrameControl::save() {
    bool cancel = false;
    contract::fire(BeforeUpdate, cancel);
    if (cancel)
        return false;
    const ColumnValues values = valuesToWrite();
    if (existing_) {
        if (connection().Execute(composeUpdate(table_, values, recordAsRead())) == 0)
            refuseStale();
        keepWritten(values);
    } else {
        connection().Execute(composeInsert(table_, values));
        appendRecord(values);
    }
    existing_ = true;
    for (auto& binding : bindings_)
        binding.shown = binding.content();
    setStatus(browsing);
    return true;
}

/// Key and values that the row must still have when it is written.
ColumnValues DataFrameControl::recordAsRead() const {
    ColumnValues conditions = key_;
    if (!records_ || !records_->Row())
        return conditions;
    const auto known = [&conditions](std::string_view field) {
        return std::any_of(conditions.begin(), conditions.end(),
                           [&](const auto& entry) { return entry.first == field; });
    };
    for (const auto& binding : bindings_) {
        const auto column = records_->rows().find(binding.field);
        if (column && comparable(records_->rows().fields()[*column].type) && !known(binding.field))
            conditions.emplace_back(binding.field, (*records_)[binding.field]);
    }
    return conditions;
}

/// The row was deleted or changed since it was read: nothing was written. A changed one is shown as it is now.
void DataFrameControl::refuseStale() {
    contract::Recordset now;
    now.Open(statement_, connection());
    const auto isShown = [&] {
        return std::all_of(key_.begin(), key_.end(), [&](const auto& entry) {
            return now.rows().find(entry.first) && now[entry.first].text() == entry.second.text();
        });
    };
    while (!now.Eof() && !isShown())
        now.MoveNext();
    if (now.Eof())
        throw RuntimeError(RuntimeError::noCurrentRecord,
                           "Il record della tabella " + table_ +
                               " non c'è più: qualcun altro lo ha eliminato. Le modifiche non sono state salvate.");
    ColumnValues values;
    for (const auto& field : now.rows().fields())
        values.emplace_back(field.name, now[field.name]);
    keepWritten(values);
    undo();
    throw RuntimeError(RuntimeError::invalidCall,
                       "Il record della tabella " + table_ +
                           " è stato modificato da un altro utente dopo la lettura. Le modifiche non sono state "
                           "salvate e i campi mostrano i valori attuali.");
}

void DataFrameControl::keepWritten(const ColumnValues& values) {
    const auto row = records_ ? records_->Row() : std::nullopt;
    if (!row)
        return;
    for (const auto& [field, value] : values)
        if (const auto column = records_->rows().find(field))
            records_->SetValue(*row, *column, value);
}

void DataFrameControl::appendRecord(const ColumnValues& values) {
    const auto written = [&values](std::string_view field) {
        const auto found =
            std::find_if(values.begin(), values.end(), [&](const auto& entry) { return entry.first == field; });
        return found == values.end() ? Value::null() : found->second;
    };
    key_.clear();
    for (const auto& column : keyColumns_)
        key_.emplace_back(column, written(column));
    if (!records_ || records_->FieldCount() == 0)
        return;
    contract::Snapshot& rows = records_->fill();
    for (std::size_t column = 0; column < rows.columnCount(); ++column)
        rows.column(column).append(written(rows.fields()[column].name));
    rows.rowDone();
    records_->MoveTo(rows.rowCount() - 1);
}

void DataFrameControl::undo() {
    fill();
    setStatus(existing_ ? browsing : inserting);
}

void DataFrameControl::close() {
    for (auto* source : sources_)
        source->edited = nullptr;
    sources_.clear();
    bindings_.clear();
    recordValues_.clear();
    records_.reset();
    connection_.reset();
    existing_ = false;
    status_ = browsing;
}

void DataFrameControl::showRow(std::size_t row) {
    if (!records_)
        return;
    records_->MoveTo(row);
    show();
}

void DataFrameControl::showNew() {
    existing_ = false;
    fill();
    setStatus(inserting);
}

void DataFrameControl::deleteRecord() {
    if (!existing_)
        return;
    connection().Execute(composeDelete(table_, key_));
    records_->Open(statement_, connection());
    show();
}

contract::ErrorList DataFrameControl::errors() const {
    return connection_ ? connection_->Errors() : contract::ErrorList{};
}

QJsonObject DataFrameControl::read() const {
    QJsonObject members = FrameBase::read();
    members.insert(QStringLiteral("status"), status_);
    return members;
}

} // namespace platform::qt
