#include "platform/shared/EditedRecord.h"

#include "platform/shared/ColumnTypes.h"

#include <algorithm>
#include <utility>

namespace platform::shared {

using contract::RuntimeError;
using contract::Value;

namespace {

bool holds(const ColumnValues& values, std::string_view field) {
    return std::any_of(values.begin(), values.end(), [&](const auto& entry) { return entry.first == field; });
}

} // namespace

void EditedRecord::open(std::shared_ptr<contract::Connection> connection, std::shared_ptr<contract::Recordset> records,
                        const contract::Statement& statement, std::string_view keyField) {
    connection_ = std::move(connection);
    records_ = std::move(records);
    statement_ = statement;
    if (keyColumns_.empty() && !keyField.empty())
        keyColumns_.emplace_back(keyField);
}

std::shared_ptr<contract::Recordset> EditedRecord::load(const contract::Statement& statement,
                                                        std::shared_ptr<contract::Recordset> records) {
    statement_ = statement;
    records_ = records ? std::move(records) : std::make_shared<contract::Recordset>();
    if (!records_->IsOpen())
        records_->Open(statement_, database());
    return records_;
}

void EditedRecord::setTable(std::string_view table, const std::vector<std::string>& keyColumns) {
    table_ = table;
    keyColumns_ = keyColumns;
}

void EditedRecord::setDefault(std::string_view field, const Value& value) {
    defaults_.insert_or_assign(std::string(field), value);
}

void EditedRecord::setValue(std::string_view field, const Value& value) {
    for (auto& [known, present] : hidden_)
        if (known == field) {
            present = value;
            return;
        }
    hidden_.emplace_back(field, value);
}

void EditedRecord::close() {
    hidden_.clear();
    records_.reset();
    connection_.reset();
    exists_ = false;
}

void EditedRecord::show() {
    exists_ = records_ && !records_->Bof() && !records_->Eof();
    readKey();
}

void EditedRecord::showRow(std::size_t row) {
    if (!records_)
        return;
    records_->MoveTo(row);
    show();
}

void EditedRecord::showNew() {
    exists_ = false;
    readKey();
}

void EditedRecord::readKey() {
    key_.clear();
    if (!exists_)
        return;
    for (const auto& column : keyColumns_)
        if (records_->rows().find(column))
            key_.emplace_back(column, (*records_)[column]);
}

Value EditedRecord::value(std::string_view field) const {
    if (exists_ && records_->rows().find(field))
        return (*records_)[field];
    const auto found = defaults_.find(field);
    return found == defaults_.end() ? Value() : found->second;
}

contract::Connection& EditedRecord::database() const {
    if (!connection_)
        throw RuntimeError(RuntimeError::objectNotSet, "Il riquadro " + name_ + " non ha una connessione al database.");
    return *connection_;
}

bool EditedRecord::isKey(std::string_view field) const {
    return std::find(keyColumns_.begin(), keyColumns_.end(), field) != keyColumns_.end();
}

ColumnValues EditedRecord::valuesToWrite(const ColumnValues& fields) const {
    ColumnValues values;
    for (const auto& [field, value] : hidden_)
        if (!exists_ || !isKey(field))
            values.emplace_back(field, value);
    for (const auto& [field, value] : fields)
        if (!holds(values, field) && (!exists_ || !isKey(field)))
            values.emplace_back(field, value);
    if (!exists_)
        for (const auto& [field, value] : defaults_)
            if (!holds(values, field))
                values.emplace_back(field, value);
    return values;
}

/// Key and values that the row must still have when it is written.
ColumnValues EditedRecord::asRead(const ColumnValues& fields) const {
    ColumnValues conditions = key_;
    if (!records_ || !records_->Row())
        return conditions;
    for (const auto& entry : fields) {
        const auto& field = entry.first;
        const auto column = records_->rows().find(field);
        if (column && comparable(records_->rows().fields()[*column].type) && !holds(conditions, field))
            conditions.emplace_back(field, (*records_)[field]);
    }
    return conditions;
}

void EditedRecord::save(const ColumnValues& fields) {
    const ColumnValues values = valuesToWrite(fields);
    if (exists_) {
        if (database().Execute(composeUpdate(table_, values, asRead(fields))) == 0)
            refuseStale();
        keepWritten(values);
    } else {
        database().Execute(composeInsert(table_, values));
        append(values);
    }
    exists_ = true;
}

/// The row was deleted or changed since it was read: nothing was written.
void EditedRecord::refuseStale() {
    contract::Recordset now;
    now.Open(statement_, database());
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
    throw RecordChanged(RuntimeError::invalidCall,
                        "Il record della tabella " + table_ +
                            " è stato modificato da un altro utente dopo la lettura. Le modifiche non sono state "
                            "salvate e i campi mostrano i valori attuali.");
}

void EditedRecord::keepWritten(const ColumnValues& values) {
    const auto row = records_ ? records_->Row() : std::nullopt;
    if (!row)
        return;
    for (const auto& [field, value] : values)
        if (const auto column = records_->rows().find(field))
            records_->SetValue(*row, *column, value);
}

void EditedRecord::append(const ColumnValues& values) {
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

void EditedRecord::erase() {
    if (!exists_)
        return;
    database().Execute(composeDelete(table_, key_));
    records_->Open(statement_, database());
    show();
}

contract::ErrorList EditedRecord::errors() const {
    return connection_ ? connection_->Errors() : contract::ErrorList{};
}

} // namespace platform::shared
