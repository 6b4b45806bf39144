#include "contract/Date.h"

#include "contract/RuntimeError.h"

#include <chrono>
#include <ctime>

namespace contract {

namespace {

constexpr std::int32_t firstDay = -719162; // 01/01/0001
constexpr std::int32_t lastDay = 2932896;  // 31/12/9999

std::optional<int> digits(std::string_view text) {
    int value = 0;
    for (const char c : text) {
        if (c < '0' || c > '9')
            return std::nullopt;
        value = value * 10 + (c - '0');
    }
    return value;
}

std::chrono::year_month_day civil(std::int32_t days) {
    return std::chrono::year_month_day{std::chrono::sys_days{std::chrono::days{days}}};
}

void put(char* at, int value, int count) {
    for (int i = count - 1; i >= 0; --i) {
        at[i] = static_cast<char>('0' + value % 10);
        value /= 10;
    }
}

} // namespace

std::optional<Date> Date::of(int year, int month, int day) {
    if (year < 1 || year > 9999 || month < 1 || month > 12 || day < 1 || day > 31)
        return std::nullopt;
    const std::chrono::year_month_day date{std::chrono::year{year}, std::chrono::month{static_cast<unsigned>(month)},
                                           std::chrono::day{static_cast<unsigned>(day)}};
    if (!date.ok())
        return std::nullopt;
    return Date(static_cast<std::int32_t>(std::chrono::sys_days{date}.time_since_epoch().count()));
}

std::optional<Date> Date::parse(std::string_view text) {
    constexpr std::string_view blanks = " \t";
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return std::nullopt;
    text = text.substr(first, text.find_last_not_of(blanks) - first + 1);
    if (text.size() != 10 || text[2] != '/' || text[5] != '/')
        return std::nullopt;
    const auto day = digits(text.substr(0, 2));
    const auto month = digits(text.substr(3, 2));
    const auto year = digits(text.substr(6, 4));
    if (!day || !month || !year)
        return std::nullopt;
    return of(*year, *month, *day);
}

std::optional<Date> Date::parseIso(std::string_view text) {
    if (text.size() != 10 || text[4] != '-' || text[7] != '-')
        return std::nullopt;
    const auto year = digits(text.substr(0, 4));
    const auto month = digits(text.substr(5, 2));
    const auto day = digits(text.substr(8, 2));
    if (!day || !month || !year)
        return std::nullopt;
    return of(*year, *month, *day);
}

std::optional<Date> Date::fromDays(std::int64_t days) {
    if (days < firstDay || days > lastDay)
        return std::nullopt;
    return Date(static_cast<std::int32_t>(days));
}

Date Date::today() {
    const std::time_t now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
    std::tm local{};
    localtime_r(&now, &local);
    return of(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday).value_or(Date());
}

int Date::year() const {
    return static_cast<int>(civil(days_).year());
}

int Date::month() const {
    return static_cast<int>(static_cast<unsigned>(civil(days_).month()));
}

int Date::day() const {
    return static_cast<int>(static_cast<unsigned>(civil(days_).day()));
}

Date Date::plusDays(std::int32_t count) const {
    const auto date = fromDays(static_cast<std::int64_t>(days_) + count);
    if (!date)
        throw RuntimeError(RuntimeError::overflow, "Overflow");
    return *date;
}

std::string Date::text() const {
    const auto date = civil(days_);
    std::string text = "00/00/0000";
    put(text.data(), static_cast<int>(static_cast<unsigned>(date.day())), 2);
    put(text.data() + 3, static_cast<int>(static_cast<unsigned>(date.month())), 2);
    put(text.data() + 6, static_cast<int>(date.year()), 4);
    return text;
}

std::string Date::iso() const {
    const auto date = civil(days_);
    std::string text = "0000-00-00";
    put(text.data(), static_cast<int>(date.year()), 4);
    put(text.data() + 5, static_cast<int>(static_cast<unsigned>(date.month())), 2);
    put(text.data() + 8, static_cast<int>(static_cast<unsigned>(date.day())), 2);
    return text;
}

} // namespace contract
