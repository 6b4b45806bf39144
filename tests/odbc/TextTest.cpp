#include "platform/odbc/Text.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using platform::odbc::narrow;
using platform::odbc::wide;

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

} // namespace
