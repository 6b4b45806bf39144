#include "platform/sqlite/RowReader.h"

#include "platform/dialect/SqliteValues.h"
#include "platform/sqlite/Handles.h"

#include <cstring>

namespace platform::sqlite {

namespace {

using contract::FieldType;
using dialect::ValueKind;

constexpr std::size_t dateLength = 10; // yyyy-mm-dd

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
        auto kind = declared ? dialect::kindOfDeclared(declared) : ValueKind::unknown;
        if (kind == ValueKind::unknown && known)
            kind = known->kind;
        fields->push_back(dialect::fieldOf(known ? known->name : std::string(name ? name : ""), kind));
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
                    column.append(std::string_view(dialect::amountText(std::int64_t{sqlite3_value_int64(value)})));
                else
                    column.append(static_cast<std::int64_t>(sqlite3_value_int64(value)));
                break;
            case SQLITE_FLOAT:
                if (amounts_[field])
                    column.append(std::string_view(dialect::amountText(sqlite3_value_double(value))));
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
