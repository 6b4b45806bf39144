#include "contract/Value.h"

#include <charconv>
#include <cmath>
#include <system_error>

namespace contract {

namespace {

template <class... F> struct Overloaded : F... { using F::operator()...; };
template <class... F> Overloaded(F...) -> Overloaded<F...>;

std::optional<std::int64_t> wholeNumber(std::string_view text) {
    constexpr std::string_view blanks = " \t";
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return std::nullopt;
    text = text.substr(first, text.find_last_not_of(blanks) - first + 1);
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return value;
}

std::optional<std::int64_t> wholeNumber(double value) {
    if (!std::isfinite(value) || std::trunc(value) != value || std::fabs(value) >= 9.2e18)
        return std::nullopt;
    return static_cast<std::int64_t>(value);
}

std::optional<std::int64_t> wholeNumber(const Decimal& value) {
    const auto point = value.digits.find('.');
    if (point == std::string::npos)
        return wholeNumber(std::string_view(value.digits));
    if (value.digits.find_first_not_of('0', point + 1) != std::string::npos)
        return std::nullopt;
    return wholeNumber(std::string_view(value.digits).substr(0, point));
}

std::string decimalText(double value) {
    char buffer[400];
    const auto [end, error] = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed);
    return error == std::errc() ? std::string(buffer, end) : std::string();
}

} // namespace

bool Value::isNumber() const {
    return as<std::int16_t>() || as<std::int32_t>() || as<std::int64_t>() || as<double>() || as<Decimal>();
}

std::optional<std::int64_t> Value::integer() const {
    using Result = std::optional<std::int64_t>;
    return std::visit(
        Overloaded{
            [](Empty) -> Result { return std::nullopt; }, [](Null) -> Result { return std::nullopt; },
            [](bool value) -> Result { return value ? 1 : 0; }, [](std::int16_t value) -> Result { return value; },
            [](std::int32_t value) -> Result { return value; }, [](std::int64_t value) -> Result { return value; },
            [](double value) -> Result { return wholeNumber(value); },
            [](const Decimal& value) -> Result { return wholeNumber(value); },
            [](Date) -> Result { return std::nullopt; },
            [](const std::string& value) -> Result { return wholeNumber(std::string_view(value)); }},
        data_);
}

std::optional<Date> Value::date() const {
    if (const auto* date = as<Date>())
        return *date;
    if (const auto* text = as<std::string>())
        return Date::parse(*text);
    return std::nullopt;
}

std::string Value::text() const {
    return std::visit(
        Overloaded{[](Empty) { return std::string(); }, [](Null) { return std::string(); },
                   [](bool value) { return std::string(value ? "True" : "False"); },
                   [](std::int16_t value) { return std::to_string(value); },
                   [](std::int32_t value) { return std::to_string(value); },
                   [](std::int64_t value) { return std::to_string(value); },
                   [](double value) { return decimalText(value); }, [](const Decimal& value) { return value.digits; },
                   [](Date value) { return value.text(); }, [](const std::string& value) { return value; }},
        data_);
}

} // namespace contract
