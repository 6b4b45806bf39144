#include "platform/odbc/Text.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <iterator>

namespace platform::odbc {

namespace {

constexpr std::uint32_t replacement = 0xFFFD;
constexpr std::uint32_t firstSurrogate = 0xD800;
constexpr std::uint32_t firstLowSurrogate = 0xDC00;
constexpr std::uint32_t afterSurrogates = 0xE000;
constexpr std::uint32_t firstBeyond = 0x10000; // the first character that takes two units
constexpr std::uint32_t afterLast = 0x110000;

bool continues(unsigned char byte) {
    return (byte & 0xC0U) == 0x80U;
}

/// Takes one character from the front of the text.
std::uint32_t takeCharacter(std::string_view& text) {
    const auto at = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = at(0);
    std::size_t length = 1;
    std::uint32_t code = lead;
    std::uint32_t least = 0;
    if (lead >= 0xF0U && lead < 0xF8U) {
        length = 4;
        code = lead & 0x07U;
        least = firstBeyond;
    } else if (lead >= 0xE0U && lead < 0xF0U) {
        length = 3;
        code = lead & 0x0FU;
        least = 0x800;
    } else if (lead >= 0xC0U && lead < 0xE0U) {
        length = 2;
        code = lead & 0x1FU;
        least = 0x80;
    } else if (lead >= 0x80U) {
        text.remove_prefix(1);
        return replacement;
    }
    std::size_t read = 1;
    for (; read < length && read < text.size() && continues(at(read)); ++read)
        code = (code << 6U) | (at(read) & 0x3FU);
    text.remove_prefix(read);
    const bool surrogate = code >= firstSurrogate && code < afterSurrogates;
    return read == length && code >= least && code < afterLast && !surrogate ? code : replacement;
}

/// Writes one character and tells where it ends.
char* writeCharacter(std::uint32_t code, char* into) {
    if (code < 0x80) {
        *into++ = static_cast<char>(code);
    } else if (code < 0x800) {
        *into++ = static_cast<char>(0xC0U | (code >> 6U));
        *into++ = static_cast<char>(0x80U | (code & 0x3FU));
    } else if (code < firstBeyond) {
        *into++ = static_cast<char>(0xE0U | (code >> 12U));
        *into++ = static_cast<char>(0x80U | ((code >> 6U) & 0x3FU));
        *into++ = static_cast<char>(0x80U | (code & 0x3FU));
    } else {
        *into++ = static_cast<char>(0xF0U | (code >> 18U));
        *into++ = static_cast<char>(0x80U | ((code >> 12U) & 0x3FU));
        *into++ = static_cast<char>(0x80U | ((code >> 6U) & 0x3FU));
        *into++ = static_cast<char>(0x80U | (code & 0x3FU));
    }
    return into;
}

std::uint32_t unitAt(const char* units, std::size_t i) {
    SQLWCHAR unit = 0;
    std::memcpy(&unit, units + i * sizeof unit, sizeof unit);
    return unit;
}

constexpr std::size_t group = 8; // units looked at together

/// Whether all the units of a group are ASCII.
bool isPlain(const char* units) {
    std::uint64_t halves[2];
    static_assert(sizeof halves == group * sizeof(SQLWCHAR));
    std::memcpy(halves, units, sizeof halves);
    return ((halves[0] | halves[1]) & 0xFF80FF80FF80FF80U) == 0;
}

/// Writes the lowest bits of a number as hexadecimal digits, the highest first.
char* writeDigits(std::uint32_t number, unsigned digits, char* into) {
    constexpr const char* hexadecimal = "0123456789ABCDEF";
    while (digits-- > 0)
        *into++ = hexadecimal[(number >> (4 * digits)) & 0xFU];
    return into;
}

} // namespace

void wide(std::string_view text, std::vector<SQLWCHAR>& into) {
    into.clear();
    into.reserve(text.size());
    while (!text.empty()) {
        if (static_cast<unsigned char>(text.front()) < 0x80U) {
            into.push_back(static_cast<SQLWCHAR>(text.front()));
            text.remove_prefix(1);
            continue;
        }
        const std::uint32_t code = takeCharacter(text);
        if (code < firstBeyond) {
            into.push_back(static_cast<SQLWCHAR>(code));
        } else {
            into.push_back(static_cast<SQLWCHAR>(firstSurrogate + ((code - firstBeyond) >> 10U)));
            into.push_back(static_cast<SQLWCHAR>(firstLowSurrogate + ((code - firstBeyond) & 0x3FFU)));
        }
    }
}

std::vector<SQLWCHAR> wide(std::string_view text) {
    std::vector<SQLWCHAR> units;
    wide(text, units);
    return units;
}

std::size_t writeNarrow(const char* units, std::size_t count, char* into) {
    char* to = into;
    for (std::size_t i = 0; i < count;) {
        // Most texts are plain letters.
        const std::size_t end = std::min(i + group, count);
        if (end - i == group && isPlain(units + i * sizeof(SQLWCHAR))) {
            for (std::size_t k = 0; k < group; ++k)
                to[k] = static_cast<char>(unitAt(units, i + k));
            to += group;
            i = end;
            continue;
        }
        while (i < end) {
            std::uint32_t code = unitAt(units, i++);
            if (code >= firstSurrogate && code < afterSurrogates) {
                const std::uint32_t low = code < firstLowSurrogate && i < count ? unitAt(units, i) : 0;
                const bool pair = low >= firstLowSurrogate && low < afterSurrogates;
                code = pair ? firstBeyond + ((code - firstSurrogate) << 10U) + (low - firstLowSurrogate) : replacement;
                if (pair)
                    ++i;
            }
            to = writeCharacter(code, to);
        }
    }
    return static_cast<std::size_t>(to - into);
}

void appendNarrow(const SQLWCHAR* text, std::size_t count, std::string& into) {
    const std::size_t before = into.size();
    into.resize(before + count * narrowPerUnit);
    const auto* units = static_cast<const char*>(static_cast<const void*>(text));
    into.resize(before + writeNarrow(units, count, into.data() + before));
}

std::string narrow(const SQLWCHAR* text, std::size_t count) {
    std::string result;
    appendNarrow(text, count, result);
    return result;
}

void writeGuid(const SQLGUID& guid, char* into) {
    constexpr std::size_t bytesBeforeLastDash = 2;
    into = writeDigits(guid.Data1, 8, into);
    *into++ = '-';
    into = writeDigits(guid.Data2, 4, into);
    *into++ = '-';
    into = writeDigits(guid.Data3, 4, into);
    *into++ = '-';
    for (std::size_t i = 0; i < std::size(guid.Data4); ++i) {
        if (i == bytesBeforeLastDash)
            *into++ = '-';
        into = writeDigits(guid.Data4[i], 2, into);
    }
}

} // namespace platform::odbc
