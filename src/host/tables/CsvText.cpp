#include "host/tables/CsvText.h"

#include <algorithm>

namespace host {

namespace {

constexpr std::string_view lineEnd = "\r\n";
constexpr std::size_t pieceBytes = 1 << 16;

/// What makes a formula of a text.
constexpr std::string_view formulaStarts = "=+-@\t\r\n";
/// What would end a field or a line, or be trimmed away.
constexpr std::string_view needQuotes = ";\"\r\n";

std::string textField(std::string text) {
    if (text.empty())
        return text;
    if (formulaStarts.find(text.front()) != std::string_view::npos)
        text.insert(text.begin(), '\'');
    if (text.find_first_of(needQuotes) == std::string::npos && text.front() != ' ' && text.back() != ' ')
        return text;
    std::string quoted = "\"";
    for (const char letter : text) {
        if (letter == '"')
            quoted += '"';
        quoted += letter;
    }
    return quoted + '"';
}

} // namespace

std::string csvField(const contract::Value& value) {
    if (const bool* flag = value.as<bool>())
        return *flag ? "Sì" : "No";
    std::string text = value.text();
    if (value.isNumber()) {
        std::replace(text.begin(), text.end(), '.', ',');
        return text;
    }
    return value.as<contract::Date>() != nullptr ? text : textField(std::move(text));
}

std::string csvLine(const std::vector<contract::Value>& fields) {
    std::string line;
    for (const auto& field : fields) {
        if (&field != &fields.front())
            line += ';';
        line += csvField(field);
    }
    return line.append(lineEnd);
}

std::string csvLine(const Table& table, std::size_t row) {
    std::vector<contract::Value> fields;
    for (std::size_t column = 0; column < table.columns().size(); ++column)
        fields.push_back(table.value(row, column));
    return csvLine(fields);
}

std::string csvHeader(const Table& table) {
    std::vector<contract::Value> titles;
    for (const auto& column : table.columns())
        titles.emplace_back(column.title.toStdString());
    return csvLine(titles);
}

void writeCsv(const Table& table, const std::function<bool(std::string_view)>& take) {
    std::string piece(csvByteOrderMark);
    piece += csvHeader(table);
    for (std::size_t row = 0; row < table.rowCount(); ++row) {
        piece += csvLine(table, row);
        if (piece.size() < pieceBytes)
            continue;
        if (!take(piece))
            return;
        piece.clear();
    }
    if (!piece.empty())
        take(piece);
}

} // namespace host
