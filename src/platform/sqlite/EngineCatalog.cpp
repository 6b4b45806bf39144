#include "platform/sqlite/EngineCatalog.h"

#include "platform/dialect/SqliteValues.h"
#include "platform/sqlite/Handles.h"

namespace platform::sqlite {

namespace {

std::string lowered(std::string_view text) {
    std::string result(text);
    for (char& c : result)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    return result;
}

std::string_view columnText(sqlite3_stmt* statement, int column) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
    return text ? std::string_view(text) : std::string_view();
}

} // namespace

void EngineCatalog::attach(sqlite3* database) {
    database_ = database;
    tables_.clear();
}

const dialect::Catalog::Columns* EngineCatalog::columns(std::string_view table) const {
    const std::string name = lowered(table);
    if (const auto at = tables_.find(name); at != tables_.end())
        return &at->second;
    if (!database_)
        return nullptr;
    static constexpr std::string_view text = "SELECT name, type FROM pragma_table_info(?1)";
    sqlite3_stmt* raw = nullptr;
    if (sqlite3_prepare_v2(database_, text.data(), static_cast<int>(text.size()), &raw, nullptr) != SQLITE_OK)
        return nullptr;
    const StatementHandle statement(raw);
    sqlite3_bind_text(raw, 1, name.data(), static_cast<int>(name.size()), SQLITE_STATIC);
    Columns columns;
    while (sqlite3_step(raw) == SQLITE_ROW)
        columns.push_back({std::string(columnText(raw, 0)), dialect::kindOfDeclared(columnText(raw, 1))});
    // A table that is not there now may be there at the next statement.
    if (columns.empty())
        return nullptr;
    return &tables_.emplace(name, std::move(columns)).first->second;
}

} // namespace platform::sqlite
