#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace contract {

/// A calendar day from 01/01/0001 to 31/12/9999: no time of day, no time zone. What a person types begins later.
class Date {
public:
    /// 01/01/1900.
    Date() = default;

    /// The day of these numbers: year [1, 9999], month [1, 12], day [1, 31]. Nothing when there is no such day.
    static std::optional<Date> of(int year, int month, int day);

    /// The day written as exactly "dd/mm/yyyy" (two, two and four digits); blanks around it are passed over.
    /// Nothing when the text is anything else or no day of the calendar.
    static std::optional<Date> parse(std::string_view text);

    /// The day written as exactly "yyyy-mm-dd", without blanks. Nothing when the text is anything else.
    static std::optional<Date> parseIso(std::string_view text);

    /// The day of a count of days from 01/01/1970 (negative before it). Nothing outside the bounds of the class.
    static std::optional<Date> fromDays(std::int64_t days);

    /// Today by the clock and the time zone of this machine.
    static Date today();

    int year() const;
    /// [1, 12]
    int month() const;
    /// [1, 31]
    int day() const;

    /// Days from 01/01/1970, negative before it.
    std::int32_t days() const { return days_; }

    /// The day after (negative: before) by that many days. Throws RuntimeError 6 beyond the bounds of the class.
    Date plusDays(std::int32_t count) const;

    /// "dd/mm/yyyy"
    std::string text() const;
    /// "yyyy-mm-dd"
    std::string iso() const;

    friend auto operator<=>(const Date&, const Date&) = default;

private:
    explicit Date(std::int32_t days) : days_(days) {}
    std::int32_t days_ = -25567;
};

} // namespace contract
