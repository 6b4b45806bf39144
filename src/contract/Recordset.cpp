#include "contract/Recordset.h"

#include "contract/RuntimeError.h"

#include <string>

namespace contract {

namespace {

[[noreturn]] void noRecord() {
    throw RuntimeError(RuntimeError::noCurrentRecord,
                       "Nessun record corrente: il gruppo di record è all'inizio o alla fine.");
}

} // namespace

std::string_view Field::Name() const {
    return records_.rows().fields()[field_].name;
}

FieldType Field::Type() const {
    return records_.rows().fields()[field_].type;
}

int Field::NumericScale() const {
    return records_.rows().fields()[field_].numericScale;
}

Value Field::Value() const {
    const auto row = records_.Row();
    if (!row)
        noRecord();
    return records_.rows().column(field_).value(*row);
}

void Recordset::Open() {
    if (!connection_)
        throw RuntimeError(RuntimeError::objectNotSet, "Connessione non impostata.");
    Open(source_, *connection_);
}

void Recordset::Open(const Statement& source, Connection& connection) {
    Close();
    connection.Read(source, rows_);
    open_ = true;
}

void Recordset::Close() {
    rows_.clear();
    row_ = 0;
    open_ = false;
}

void Recordset::MoveNext() {
    if (Eof())
        noRecord();
    ++row_;
}

void Recordset::MovePrevious() {
    if (Bof())
        noRecord();
    --row_;
}

void Recordset::MoveTo(std::size_t row) {
    if (row >= rows_.rowCount())
        noRecord();
    row_ = static_cast<std::int64_t>(row);
}

std::optional<std::size_t> Recordset::Row() const {
    if (Bof() || Eof())
        return std::nullopt;
    return static_cast<std::size_t>(row_);
}

std::size_t Recordset::FieldIndex(std::string_view name) const {
    const auto index = rows_.find(name);
    if (!index)
        throw RuntimeError(RuntimeError::itemNotFound,
                           "Nell'insieme non c'è alcun elemento di nome \"" + std::string(name) + "\".");
    return *index;
}

Value Recordset::operator[](std::string_view name) const {
    return Fields(name).Value();
}

void Recordset::SetValue(std::size_t row, std::size_t field, const contract::Value& value) {
    if (row >= rows_.rowCount())
        noRecord();
    rows_.column(field).set(row, value);
}

} // namespace contract
