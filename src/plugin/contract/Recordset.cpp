#include "plugin/contract/Recordset.h"

#include "plugin/contract/RuntimeError.h"

#include <string>

namespace contract {

namespace {

[[noreturn]] void noRecord() {
    throw RuntimeError(RuntimeError::noCurrentRecord,
                       "Nessun record corrente: il gruppo di record è all'inizio o alla fine.");
}

} // namespace

std::string_view Field::name() const {
    return records_.rows().fields()[field_].name;
}

FieldType Field::type() const {
    return records_.rows().fields()[field_].type;
}

int Field::numericScale() const {
    return records_.rows().fields()[field_].numericScale;
}

Value Field::value() const {
    const auto row = records_.row();
    if (!row)
        noRecord();
    return records_.rows().column(field_).value(*row);
}

void Recordset::open() {
    if (!connection_)
        throw RuntimeError(RuntimeError::objectNotSet, "Connessione non impostata.");
    open(source_, *connection_);
}

void Recordset::open(const Statement& source, Connection& connection) {
    close();
    connection.read(source, rows_);
    open_ = true;
}

void Recordset::close() {
    rows_.clear();
    row_ = 0;
    open_ = false;
}

void Recordset::moveNext() {
    if (eof())
        noRecord();
    ++row_;
}

void Recordset::movePrevious() {
    if (bof())
        noRecord();
    --row_;
}

void Recordset::moveTo(std::size_t row) {
    if (row >= rows_.rowCount())
        noRecord();
    row_ = static_cast<std::int64_t>(row);
}

std::optional<std::size_t> Recordset::row() const {
    if (bof() || eof())
        return std::nullopt;
    return static_cast<std::size_t>(row_);
}

std::size_t Recordset::fieldIndex(std::string_view name) const {
    const auto index = rows_.find(name);
    if (!index)
        throw RuntimeError(RuntimeError::itemNotFound,
                           "Nell'insieme non c'è alcun elemento di nome \"" + std::string(name) + "\".");
    return *index;
}

Value Recordset::operator[](std::string_view name) const {
    return field(name).value();
}

void Recordset::setValue(std::size_t row, std::size_t field, const contract::Value& value) {
    if (row >= rows_.rowCount())
        noRecord();
    rows_.column(field).set(row, value);
}

} // namespace contract
