#include "platform/dialect/SqliteValues.h"

#include <algorithm>
#include <charconv>
#include <system_error>

namespace platform::dialect {

namespace {

using contract::FieldInfo;
using contract::FieldType;

constexpr int amountDecimals = 2;
constexpr int amountDigits = 18;

} // namespace

ValueKind kindOfDeclared(std::string_view type) {
    std::string name(type);
    std::transform(name.begin(), name.end(), name.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    const auto has = [&](std::string_view part) { return name.find(part) != std::string::npos; };
    if (has("date"))
        return ValueKind::date;
    if (has("int"))
        return ValueKind::whole;
    if (has("char") || has("clob") || has("text"))
        return ValueKind::text;
    if (has("numeric") || has("decimal") || has("real") || has("floa") || has("doub"))
        return ValueKind::amount;
    return ValueKind::unknown;
}

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

std::string amountText(std::int64_t value) {
    return std::to_string(value) + ".00";
}

} // namespace platform::dialect
