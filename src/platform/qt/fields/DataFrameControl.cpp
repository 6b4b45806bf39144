#include "platform/qt/fields/DataFrameControl.h"

#include "platform/qt/fields/DataEntryHooks.h"

#include <algorithm>

namespace platform::qt {

using contract::Value;

DataFrameControl::DataFrameControl(std::string_view name, QWidget* parent)
    : FrameBase(name, new QWidget(parent)), record_(name) {
}

DataFrameControl::~DataFrameControl() = default;

void DataFrameControl::initialise(contract::Cinterface*&, std::shared_ptr<contract::Connection> connection,
                                  std::shared_ptr<contract::Recordset> records, const contract::Statement& statement,
                                  std::string_view keyField) {
    record_.open(std::move(connection), std::move(records), statement, keyField);
}

std::shared_ptr<contract::Recordset> DataFrameControl::load(const contract::Statement& statement,
                                                            std::shared_ptr<contract::Recordset> records) {
    return record_.load(statement, std::move(records));
}

void DataFrameControl::setTable(std::string_view table, const std::vector<std::string>& keyColumns) {
    record_.setTable(table, keyColumns);
}

void DataFrameControl::setDefault(std::string_view field, const Value& value) {
    record_.setDefault(field, value);
}

void DataFrameControl::setRecordValue(std::string_view field, const Value& value) {
    record_.setValue(field, value);
}

void DataFrameControl::show() {
    record_.show();
    showRecord();
}

void DataFrameControl::showRecord() {
    fill();
    setStatus(record_.exists() ? browsing : inserting);
}

void DataFrameControl::fill() {
    filling_ = true;
    try {
        for (const auto& binding : bindings_)
            binding.put(record_.value(binding.field));
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
    const int now = !record_.exists() ? inserting : changed() ? editing : browsing;
    if (now != status_)
        setStatus(now);
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
    shared::ColumnValues values;
    for (const auto& binding : bindings_)
        values.emplace_back(binding.field, binding.value());
    try {
        record_.save(values);
    } catch (const shared::RecordChanged&) {
        undo();
        throw;
    }
    for (auto& binding : bindings_)
        binding.shown = binding.content();
    setStatus(browsing);
    if (const auto& saved = DataEntryHooks::instance().saved)
        saved();
    return true;
}

void DataFrameControl::undo() {
    showRecord();
}

void DataFrameControl::close() {
    for (auto* source : sources_)
        source->edited = nullptr;
    sources_.clear();
    dates_.clear();
    bindings_.clear();
    record_.close();
    status_ = browsing;
}

void DataFrameControl::showRow(std::size_t row) {
    if (!records())
        return;
    record_.showRow(row);
    showRecord();
}

void DataFrameControl::showNew() {
    record_.showNew();
    showRecord();
}

void DataFrameControl::deleteRecord() {
    if (!record_.exists())
        return;
    record_.erase();
    showRecord();
}

QJsonObject DataFrameControl::read() const {
    QJsonObject members = FrameBase::read();
    members.insert(QStringLiteral("status"), status_);
    return members;
}

} // namespace platform::qt
