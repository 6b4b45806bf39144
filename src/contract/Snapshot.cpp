#include "contract/Snapshot.h"

#include <algorithm>
#include <utility>

namespace contract {

namespace {

constexpr std::size_t rowsPerWord = 64;

Column::Storage storageFor(FieldType type) {
    switch (type) {
    case FieldType::smallInt:
    case FieldType::integer:
    case FieldType::boolean:
    case FieldType::tinyInt:
    case FieldType::unsignedTinyInt:
    case FieldType::unsignedSmallInt:
    case FieldType::unsignedInt:
    case FieldType::bigInt:
        return Column::Storage::integer;
    case FieldType::single:
    case FieldType::doublePrecision:
        return Column::Storage::real;
    case FieldType::date:
    case FieldType::dbDate:
    case FieldType::dbTimeStamp:
        return Column::Storage::date;
    default:
        return Column::Storage::text;
    }
}

bool isDecimal(FieldType type) {
    return type == FieldType::decimal || type == FieldType::numeric || type == FieldType::currency ||
           type == FieldType::unsignedBigInt;
}

template <class T> Value narrowed(std::int64_t number) {
    // An engine may keep a number that is wider than its column's type; it stays the number it is.
    if (std::in_range<T>(number))
        return static_cast<T>(number);
    return number;
}

Value integerOf(FieldType type, std::int64_t number) {
    switch (type) {
    case FieldType::boolean:
        return number != 0;
    case FieldType::smallInt:
    case FieldType::tinyInt:
    case FieldType::unsignedTinyInt:
        return narrowed<std::int16_t>(number);
    case FieldType::integer:
    case FieldType::unsignedSmallInt:
        return narrowed<std::int32_t>(number);
    default:
        return number;
    }
}

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool sameName(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) { return lower(x) == lower(y); });
}

} // namespace

Column::Column(FieldType type) : type_(type), storage_(storageFor(type)) {
}

void Column::mark(std::size_t row, bool null) {
    const auto word = row / rowsPerWord;
    const auto bit = std::uint64_t{1} << (row % rowsPerWord);
    auto words = nulls_.bytes() / sizeof bit;
    if (word >= words && !null)
        return;
    for (; words <= word; ++words)
        nulls_.push(std::uint64_t{0});
    const auto old = nulls_.at<std::uint64_t>(word);
    nulls_.put(word, null ? old | bit : old & ~bit);
}

void Column::placeholder() {
    switch (storage_) {
    case Storage::integer:
        cells_.push(std::int64_t{0});
        break;
    case Storage::real:
        cells_.push(double{0});
        break;
    case Storage::date:
        cells_.push(std::int32_t{0});
        break;
    case Storage::text:
        cells_.push(static_cast<std::uint64_t>(characters_.bytes()));
        break;
    }
    ++size_;
}

void Column::appendNulls(std::size_t count) {
    if (count == 0)
        return;
    const std::size_t end = size_ + count;
    const std::size_t words = nulls_.bytes() / sizeof(std::uint64_t);
    const std::size_t needed = (end + rowsPerWord - 1) / rowsPerWord;
    nulls_.fill(std::uint64_t{0}, needed - words);
    for (std::size_t row = size_; row < end;) {
        const std::size_t word = row / rowsPerWord;
        const std::size_t first = row % rowsPerWord;
        const std::size_t bits = std::min(rowsPerWord - first, end - row);
        const std::uint64_t ones = ~std::uint64_t{0} >> (rowsPerWord - bits);
        nulls_.put(word, nulls_.at<std::uint64_t>(word) | ones << first);
        row += bits;
    }
    switch (storage_) {
    case Storage::integer:
        cells_.fill(std::int64_t{0}, count);
        break;
    case Storage::real:
        cells_.fill(double{0}, count);
        break;
    case Storage::date:
        cells_.fill(std::int32_t{0}, count);
        break;
    case Storage::text:
        cells_.fill(static_cast<std::uint64_t>(characters_.bytes()), count);
        break;
    }
    size_ = end;
}

void Column::appendAside(Value value) {
    aside(size_, std::move(value));
    placeholder();
}

void Column::append(const Value& value) {
    if (value.isMissing())
        appendNull();
    else if (const auto* text = value.as<std::string>())
        append(std::string_view(*text));
    else if (const auto* date = value.as<Date>())
        append(*date);
    else if (const auto* real = value.as<double>())
        append(*real);
    else if (const auto* decimal = value.as<Decimal>(); decimal && isDecimal(type_))
        append(std::string_view(decimal->digits));
    else if (const auto whole = value.integer(); whole && storage_ == Storage::integer)
        append(*whole);
    else
        appendAside(value);
}

void Column::reserve(std::size_t rows) {
    cells_.reserve(rows * cellSize());
}

bool Column::isNull(std::size_t row) const {
    const auto word = row / rowsPerWord;
    return word < nulls_.bytes() / sizeof(std::uint64_t) &&
           ((nulls_.at<std::uint64_t>(word) >> (row % rowsPerWord)) & 1U) != 0;
}

Value Column::value(std::size_t row) const {
    if (isNull(row))
        return Value::null();
    if (const auto* odd = findAside(row))
        return *odd;
    switch (storage_) {
    case Storage::integer:
        return integerOf(type_, cells_.at<std::int64_t>(row));
    case Storage::real:
        return cells_.at<double>(row);
    case Storage::date:
        return Date::fromDays(cells_.at<std::int32_t>(row)).value_or(Date());
    case Storage::text:
        break;
    }
    if (isDecimal(type_))
        return Decimal{std::string(text(row))};
    return text(row);
}

std::optional<std::int64_t> Column::integer(std::size_t row) const {
    if (isNull(row))
        return std::nullopt;
    if (storage_ == Storage::integer && odd_.empty())
        return cells_.at<std::int64_t>(row);
    return value(row).integer();
}

std::string_view Column::text(std::size_t row) const {
    if (storage_ != Storage::text) {
        const auto* odd = findAside(row);
        const auto* characters = odd ? odd->as<std::string>() : nullptr;
        return characters ? std::string_view(*characters) : std::string_view();
    }
    if (isNull(row))
        return {};
    if (const auto* odd = findAside(row)) {
        const auto* characters = odd->as<std::string>();
        return characters ? std::string_view(*characters) : std::string_view();
    }
    return stored(row);
}

std::string_view Column::stored(std::size_t row) const {
    const auto begin = row == 0 ? 0 : cells_.at<std::uint64_t>(row - 1);
    return {characters_.data() + begin, cells_.at<std::uint64_t>(row) - begin};
}

void Column::set(std::size_t row, const Value& value) {
    mark(row, value.isMissing());
    std::erase_if(odd_, [row](const auto& entry) { return entry.first == row; });
    if (value.isMissing())
        return;
    if (const auto* date = value.as<Date>(); date && storage_ == Storage::date)
        cells_.put(row, date->days());
    else if (const auto whole = value.integer(); whole && storage_ == Storage::integer && !value.as<std::string>())
        cells_.put(row, *whole);
    else
        aside(row, value);
}

void Column::aside(std::size_t row, Value value) {
    const auto at = std::lower_bound(odd_.begin(), odd_.end(), row,
                                     [](const auto& entry, std::size_t r) { return entry.first < r; });
    odd_.insert(at, {row, std::move(value)});
}

const Value* Column::findAside(std::size_t row) const {
    if (odd_.empty())
        return nullptr;
    const auto at = std::lower_bound(odd_.begin(), odd_.end(), row,
                                     [](const auto& entry, std::size_t r) { return entry.first < r; });
    return at != odd_.end() && at->first == row ? &at->second : nullptr;
}

std::size_t Column::memory() const {
    return cells_.allocated() + characters_.allocated() + nulls_.allocated() + odd_.capacity() * sizeof(odd_[0]);
}

const std::shared_ptr<const FieldList>& Snapshot::none() {
    static const auto empty = std::make_shared<const FieldList>();
    return empty;
}

const Column& Snapshot::noRows() {
    static const Column column;
    return column;
}

void Snapshot::clear() {
    fields_ = none();
    columns_.clear();
    rows_ = 0;
}

void Snapshot::start(std::shared_ptr<const FieldList> fields) {
    fields_ = std::move(fields);
    columns_.clear();
    rows_ = 0;
}

void Snapshot::makeColumns() {
    columns_.reserve(fields_->size());
    for (const auto& field : *fields_)
        columns_.emplace_back(field.type);
}

std::optional<std::size_t> Snapshot::find(std::string_view name) const {
    for (std::size_t i = 0; i < fields_->size(); ++i)
        if (sameName((*fields_)[i].name, name))
            return i;
    return std::nullopt;
}

std::size_t Snapshot::memory() const {
    std::size_t bytes = columns_.capacity() * sizeof(Column);
    for (const auto& column : columns_)
        bytes += column.memory();
    return bytes;
}

} // namespace contract
