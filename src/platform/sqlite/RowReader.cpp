#include "platform/sqlite/RowReader.h"

#include "platform/sqlite/EngineCatalog.h"
#include "platform/sqlite/Handles.h"

#include <charconv>
#include <cstring>

namespace platform::sqlite {

namespace {

using contract::FieldInfo;
using contract::FieldType;
using dialect::ValueKind;

constexpr int amountDecimals = 2;
constexpr int amountDigits = 18;
constexpr std::size_t dateLength = 10; // yyyy-mm-dd

FieldInfo fieldOf(std::string name, ValueKind kind) {
    FieldInfo field;
    field.name = std::move(name);
    switch (kind) {
    case ValueKind::whole:
        field.type = FieldType::integer;
        break;
    case ValueKind::amount:
        field.type = FieldType::numeric;
        field.precision = amountDigits;
        field.numericScale = amountDecimals;
        break;
    case ValueKind::text:
        field.type = FieldType::varWChar;
        break;
    case ValueKind::date:
        field.type = FieldType::date;
        break;
    case ValueKind::unknown:
        break;
    }
    return field;
}

/// The decimal form of an amount, with two decimals at least.
std::string amountText(double value) {
    char buffer[400];
    const auto [end, error] = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed);
    if (error != std::errc())
        return {};
    std::string text(buffer, end);
    auto point = text.find('.');
    if (point == std::string::npos) {
        point = text.size();
        text += '.';
    }
    while (text.size() < point + 1 + amountDecimals)
        text += '0';
    return text;
}

void appendAmount(contract::Column& column, std::int64_t value) {
    column.append(std::string_view(std::to_string(value) + ".00"));
}

} // namespace

RowReader::RowReader(sqlite3_stmt* statement, std::optional<std::vector<dialect::ResultColumn>> known)
    : known_(std::move(known)) {
    describe(statement);
}

void RowReader::describe(sqlite3_stmt* statement) {
    const int count = sqlite3_column_count(statement);
    if (known_ && known_->size() != static_cast<std::size_t>(count))
        known_.reset();
    auto fields = std::make_shared<contract::FieldList>();
    fields->reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        const auto* known = known_ ? &(*known_)[static_cast<std::size_t>(i)] : nullptr;
        const char* declared = sqlite3_column_decltype(statement, i);
        const char* name = sqlite3_column_name(statement, i);
        auto kind = declared ? kindOfDeclared(declared) : ValueKind::unknown;
        if (kind == ValueKind::unknown && known)
            kind = known->kind;
        fields->push_back(fieldOf(known ? known->name : std::string(name ? name : ""), kind));
    }
    fields_ = std::move(fields);
    dates_.assign(fields_->size(), LastDate());
    amounts_.clear();
    for (const auto& field : *fields_)
        amounts_.push_back(field.type == FieldType::numeric);
}

int RowReader::read(sqlite3_stmt* statement, contract::Snapshot& rows) {
    int code = sqlite3_step(statement);
    // SQLite prepares again by itself when a table has changed, and a star may then stand for other columns.
    if (static_cast<std::size_t>(sqlite3_column_count(statement)) != fields_->size())
        describe(statement);
    rows.start(fields_);
    if (code != SQLITE_ROW)
        return code;
    const auto count = static_cast<int>(fields_->size());
    contract::Column* columns = &rows.column(0);
    for (; code == SQLITE_ROW; code = sqlite3_step(statement)) {
        for (int i = 0; i < count; ++i) {
            // Safe without a lock, because a connection belongs to one thread.
            sqlite3_value* value = sqlite3_column_value(statement, i);
            const auto field = static_cast<std::size_t>(i);
            contract::Column& column = columns[field];
            switch (sqlite3_value_type(value)) {
            case SQLITE_INTEGER:
                if (amounts_[field])
                    appendAmount(column, sqlite3_value_int64(value));
                else
                    column.append(static_cast<std::int64_t>(sqlite3_value_int64(value)));
                break;
            case SQLITE_FLOAT:
                if (amounts_[field])
                    column.append(std::string_view(amountText(sqlite3_value_double(value))));
                else
                    column.append(sqlite3_value_double(value));
                break;
            case SQLITE_NULL:
                column.appendNull();
                break;
            default: {
                const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
                appendText(column, field, {text, static_cast<std::size_t>(sqlite3_value_bytes(value))});
                break;
            }
            }
        }
        rows.rowDone();
    }
    return code;
}

void RowReader::appendText(contract::Column& column, std::size_t field, std::string_view text) {
    if (column.storage() != contract::Column::Storage::date || text.size() < dateLength) {
        column.append(text);
        return;
    }
    LastDate& last = dates_[field];
    const bool dayOnly = text.size() == dateLength || text[dateLength] == ' ' || text[dateLength] == 'T';
    if (dayOnly && std::memcmp(last.text, text.data(), dateLength) == 0) {
        column.append(last.date);
        return;
    }
    const auto date = dayOnly ? contract::Date::parseIso(text.substr(0, dateLength)) : std::nullopt;
    if (!date) {
        column.append(text);
        return;
    }
    std::memcpy(last.text, text.data(), dateLength);
    last.date = *date;
    column.append(*date);
}

} // namespace platform::sqlite
