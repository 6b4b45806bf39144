#include "platform/qt/fields/DataFrameControl.h"

#include "contract/RuntimeError.h"
#include "platform/qt/fields/DataEntryHooks.h"
#include "platform/qt/tree/ColumnTypes.h"

#include <algorithm>

namespace platform::qt {

using contract::RuntimeError;
using contract::Value;

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
    if (statusChanged)
        statusChanged();
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

shared::ColumnValues DataFrameControl::valuesToWrite() const {
    shared::ColumnValues values;
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

contract::DateField* DataFrameControl::mistypedDate() const {
    for (auto* date : dates_) {
        const bool valid = date->hasValidDate(); // writes in full what was typed in short
        const auto text = date->text();
        const auto binding = std::find_if(bindings_.begin(), bindings_.end(),
                                          [date](const Binding& each) { return each.control == date; });
        if (!valid && text.find_first_not_of(' ') != std::string::npos && text != binding->shown)
            return date;
    }
    return nullptr;
}

bool DataFrameControl::save() {
    if (auto* mistyped = mistypedDate()) {
        mistyped->setFocus();
        return false;
    }
    bool cancel = false;
    contract::fire(BeforeUpdate, cancel);
    if (cancel)
        return false;
    const shared::ColumnValues values = valuesToWrite();
    if (existing_) {
        if (connection().Execute(shared::composeUpdate(table_, values, recordAsRead())) == 0)
            refuseStale();
        keepWritten(values);
    } else {
        connection().Execute(shared::composeInsert(table_, values));
        appendRecord(values);
    }
    existing_ = true;
    for (auto& binding : bindings_)
        binding.shown = binding.content();
    setStatus(browsing);
    if (const auto& saved = DataEntryHooks::instance().saved)
        saved();
    return true;
}

/// Key and values that the row must still have when it is written.
shared::ColumnValues DataFrameControl::recordAsRead() const {
    shared::ColumnValues conditions = key_;
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
    shared::ColumnValues values;
    for (const auto& field : now.rows().fields())
        values.emplace_back(field.name, now[field.name]);
    keepWritten(values);
    undo();
    throw RuntimeError(RuntimeError::invalidCall,
                       "Il record della tabella " + table_ +
                           " è stato modificato da un altro utente dopo la lettura. Le modifiche non sono state "
                           "salvate e i campi mostrano i valori attuali.");
}

void DataFrameControl::keepWritten(const shared::ColumnValues& values) {
    const auto row = records_ ? records_->Row() : std::nullopt;
    if (!row)
        return;
    for (const auto& [field, value] : values)
        if (const auto column = records_->rows().find(field))
            records_->SetValue(*row, *column, value);
}

void DataFrameControl::appendRecord(const shared::ColumnValues& values) {
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
    dates_.clear();
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
    connection().Execute(shared::composeDelete(table_, key_));
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
