#include "platform/odbc/Text.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

using platform::odbc::narrow;
using platform::odbc::wide;
using platform::odbc::writeGuid;
using platform::odbc::writeNarrow;

std::string there(std::string_view text) {
    const auto units = wide(text);
    return narrow(units.data(), units.size());
}

TEST(OdbcText, GoesToUtf16AndBack) {
    for (const std::string text : {"", "Rossi S.p.A.", "Città è € ĀŁ Ж 中", "🦄 e 𝄞", "a\0b"})
        EXPECT_EQ(text, there(text));
    EXPECT_EQ(2U, wide("🦄").size());
    EXPECT_EQ(0xD83E, wide("🦄")[0]);
    EXPECT_EQ(0xDD84, wide("🦄")[1]);
    EXPECT_EQ(0x20AC, wide("€")[0]);
}

TEST(OdbcText, WhatIsNoUtf8BecomesAReplacement) {
    EXPECT_EQ("a\xEF\xBF\xBD", there("a\xE0"));
    EXPECT_EQ("\xEF\xBF\xBD"
              "b",
              there("\x80"
                    "b"));
    EXPECT_EQ("\xEF\xBF\xBD", there("\xC0\x80")) << "an overlong zero";
    EXPECT_EQ("\xEF\xBF\xBD", there("\xED\xA0\x80")) << "a surrogate";
    EXPECT_EQ("\xEF\xBF\xBD", there("\xF5\x80\x80\x80")) << "beyond the last character";
    EXPECT_EQ("\xEF\xBF\xBDx", there("\xE2\x82x")) << "the next character stays";
}

TEST(OdbcText, ASurrogateAloneBecomesAReplacement) {
    const SQLWCHAR high[] = {'a', 0xD83E, 'b'};
    EXPECT_EQ("a\xEF\xBF\xBD"
              "b",
              narrow(high, 3));
    const SQLWCHAR low[] = {0xDD84};
    EXPECT_EQ("\xEF\xBF\xBD", narrow(low, 1));
    const SQLWCHAR last[] = {0xD83E};
    EXPECT_EQ("\xEF\xBF\xBD", narrow(last, 1));
}

// Units are looked at eight at a time: each kind of character at each place of texts of each length.
TEST(OdbcText, EveryCharacterAtEveryPlace) {
    struct Case {
        std::vector<SQLWCHAR> units;
        std::string text;
    };
    const Case cases[] = {
        {{'a'}, "a"},
        {{0}, std::string(1, '\0')},
        {{0x7F}, "\x7F"},
        {{0x80}, "\xC2\x80"},
        {{0x7FF}, "\xDF\xBF"},
        {{0x800}, "\xE0\xA0\x80"},
        {{0x4100}, "\xE4\x84\x80"},
        {{0xFFFF}, "\xEF\xBF\xBF"},
        {{0xD800, 0xDC00}, "\xF0\x90\x80\x80"},
        {{0xDBFF, 0xDFFF}, "\xF4\x8F\xBF\xBF"},
        {{0xD83E}, "\xEF\xBF\xBD"},
        {{0xDD84}, "\xEF\xBF\xBD"},
        {{0xD83E, 0xD83E, 0xDD84}, "\xEF\xBF\xBD\xF0\x9F\xA6\x84"},
    };
    for (const auto& [units, character] : cases)
        for (std::size_t length = 0; length <= 40; ++length)
            for (std::size_t at = 0; at <= length; ++at) {
                std::string expected(length, 'x');
                expected.insert(at, character);
                std::vector<SQLWCHAR> text(length, 'x');
                text.insert(text.begin() + static_cast<std::ptrdiff_t>(at), units.begin(), units.end());
                ASSERT_EQ(expected, narrow(text.data(), text.size())) << units[0] << " at " << at << " of " << length;
            }
}

TEST(OdbcText, FillsNoMoreThanItsRoomFromAnyAddress) {
    for (std::size_t length = 0; length <= 40; ++length) {
        const std::vector<SQLWCHAR> units(length, 0x20AC);
        std::string bytes(1 + 2 * length, '\0'); // the units begin at an odd address
        if (length > 0)
            std::memcpy(bytes.data() + 1, units.data(), 2 * length);
        std::string into(3 * length + 1, '#');
        EXPECT_EQ(3 * length, writeNarrow(bytes.data() + 1, length, into.data()));
        EXPECT_EQ('#', into.back());
        EXPECT_EQ(narrow(units.data(), length), into.substr(0, 3 * length));
    }
}

TEST(OdbcText, AGuidHasUpperCaseDigits) {
    const SQLGUID guid = {0x6F9619FF, 0x8B86, 0xD011, {0xB4, 0x2D, 0x00, 0xC0, 0x4F, 0xC9, 0x64, 0x0F}};
    std::string text(platform::odbc::guidLength + 1, '#');
    writeGuid(guid, text.data());
    EXPECT_EQ("6F9619FF-8B86-D011-B42D-00C04FC9640F#", text);
}

} // namespace
