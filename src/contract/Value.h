#pragma once

#include "contract/Date.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace contract {

/// A number with a fixed count of decimals, of any precision: its canonical text, "-" at most once in front, at least
/// one digit before the point, the point only with decimals ("-1234.50").
struct Decimal {
    std::string digits;
    friend bool operator==(const Decimal&, const Decimal&) = default;
};

/// One value of a record, a control or a property, with its kind. Empty (never set) and Null (known to be missing) are
/// two kinds, and neither equals the empty text.
class Value {
public:
    struct Empty {
        friend bool operator==(const Empty&, const Empty&) = default;
    };
    struct Null {
        friend bool operator==(const Null&, const Null&) = default;
    };

    Value() = default;
    Value(Null) : data_(Null{}) {}
    Value(bool value) : data_(value) {}
    Value(std::int16_t value) : data_(value) {}
    Value(std::int32_t value) : data_(value) {}
    Value(std::int64_t value) : data_(value) {}
    Value(double value) : data_(value) {}
    Value(Decimal value) : data_(std::move(value)) {}
    Value(Date value) : data_(value) {}
    Value(std::string value) : data_(std::move(value)) {}
    Value(std::string_view value) : data_(std::string(value)) {}
    Value(const char* value) : data_(std::string(value)) {}

    static Value null() { return Value(Null{}); }

    template <class T> const T* as() const { return std::get_if<T>(&data_); }

    bool isEmpty() const { return as<Empty>() != nullptr; }
    bool isNull() const { return as<Null>() != nullptr; }
    /// Empty or Null.
    bool isMissing() const { return isEmpty() || isNull(); }
    /// One of the three integer kinds, double or decimal; a boolean is no number here.
    bool isNumber() const;

    /// The whole number held by an integer, a boolean (1 or 0), a double or decimal without a fraction, or a text that
    /// is one in decimal digits, blanks around it passed over. Nothing otherwise, Empty and Null included.
    std::optional<std::int64_t> integer() const;

    /// A date, or a text that reads as "dd/mm/yyyy". Nothing otherwise.
    std::optional<Date> date() const;

    /// Text form: "" for Empty and Null, decimal digits without grouping for numbers, "dd/mm/yyyy" for dates,
    /// "True" or "False" for booleans.
    std::string text() const;

    /// Same kind and same content.
    friend bool operator==(const Value&, const Value&) = default;

private:
    std::variant<Empty, Null, bool, std::int16_t, std::int32_t, std::int64_t, double, Decimal, Date, std::string> data_;
};

} // namespace contract
