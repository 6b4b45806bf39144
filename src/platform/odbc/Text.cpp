#include "platform/odbc/Text.h"

#include <cstdint>

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

void appendCharacter(std::uint32_t code, std::string& into) {
    if (code < 0x80) {
        into += static_cast<char>(code);
    } else if (code < 0x800) {
        into += static_cast<char>(0xC0U | (code >> 6U));
        into += static_cast<char>(0x80U | (code & 0x3FU));
    } else if (code < firstBeyond) {
        into += static_cast<char>(0xE0U | (code >> 12U));
        into += static_cast<char>(0x80U | ((code >> 6U) & 0x3FU));
        into += static_cast<char>(0x80U | (code & 0x3FU));
    } else {
        into += static_cast<char>(0xF0U | (code >> 18U));
        into += static_cast<char>(0x80U | ((code >> 12U) & 0x3FU));
        into += static_cast<char>(0x80U | ((code >> 6U) & 0x3FU));
        into += static_cast<char>(0x80U | (code & 0x3FU));
    }
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

void appendNarrow(const SQLWCHAR* text, std::size_t count, std::string& into) {
    std::size_t i = 0;
    // Most texts are plain letters.
    const std::size_t before = into.size();
    into.resize(before + count);
    char* plain = into.data() + before;
    for (; i < count && text[i] < 0x80; ++i)
        plain[i] = static_cast<char>(text[i]);
    into.resize(before + i);
    for (; i < count; ++i) {
        std::uint32_t code = text[i];
        if (code >= firstSurrogate && code < afterSurrogates) {
            const bool pair = code < firstLowSurrogate && i + 1 < count && text[i + 1] >= firstLowSurrogate &&
                              text[i + 1] < afterSurrogates;
            code =
                pair ? firstBeyond + ((code - firstSurrogate) << 10U) + (text[i + 1] - firstLowSurrogate) : replacement;
            if (pair)
                ++i;
        }
        appendCharacter(code, into);
    }
}

std::string narrow(const SQLWCHAR* text, std::size_t count) {
    std::string result;
    appendNarrow(text, count, result);
    return result;
}

} // namespace platform::odbc
