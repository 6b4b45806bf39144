// Dates and numbers out of any text: what is taken for one reads back as the same, and formatting takes every value.

#include "component/data/Formattazione.h"
#include "contract/RuntimeError.h"
#include "contract/Statement.h"
#include "contract/Value.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

using contract::Date;
using contract::FieldType;
using contract::RuntimeError;
using contract::Statement;
using contract::Value;

void must(bool condition) {
    if (!condition)
        std::abort();
}

std::string_view withoutBlanks(std::string_view text) {
    while (!text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    return text;
}

void checkDates(std::string_view text) {
    if (const auto date = Date::parse(text)) {
        must(date->text() == withoutBlanks(text));
        must(Date::parseIso(date->iso()) == date);
        must(Date::fromDays(date->days()) == date);
        must(date->year() >= 1 && date->year() <= 9999);
    }
    if (const auto date = Date::parseIso(text))
        must(date->iso() == text && Date::parse(date->text()) == date);
}

void checkNumbers(std::string_view text) {
    const Value value(text);
    const auto number = value.integer();
    if (number)
        must(Value(Value(*number).text()).integer() == number);
    Statement statement;
    try {
        statement.bare(value);
        must(number.has_value() && statement.text() == std::to_string(*number));
    } catch (const RuntimeError& error) {
        must(error.number() == RuntimeError::typeMismatch && !number);
    }
}

/// A text argument stands between its quotes whatever it holds.
void checkQuotes(std::string_view text) {
    Statement statement("'");
    statement.text(text) << "'";
    const std::string written = statement.text();
    std::string back;
    for (std::size_t i = 1; i + 1 < written.size(); ++i) {
        back.push_back(written[i]);
        if (written[i] == '\'') {
            must(i + 2 < written.size() && written[i + 1] == '\'');
            ++i;
        }
    }
    must(back == text);
}

void checkIdentifier(std::string_view text) {
    Statement statement;
    try {
        statement.identifier(text);
    } catch (const RuntimeError&) {
        return;
    }
    must(statement.text() == text);
    must(text.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_") ==
         std::string_view::npos);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    checkDates(text);
    checkNumbers(text);
    checkQuotes(text);
    checkIdentifier(text);
    for (int type = 0; type <= 255; ++type)
        for (const int decimals : {0, 2, 255})
            (void)qz::formattaValore(static_cast<FieldType>(type), decimals, Value(text));
    return 0;
}
