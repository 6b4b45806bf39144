#pragma once

#include <QDate>
#include <QString>

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <string>
#include <vector>

namespace e2e {

inline std::string today() {
    return QDate::currentDate().toString(QStringLiteral("dd/MM/yyyy")).toStdString();
}

inline bool startsWith(const std::string& text, const std::string& start) {
    return text.rfind(start, 0) == 0;
}

inline bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

/// The texts that begin with one of these.
inline std::vector<std::string> beginningWith(const std::vector<std::string>& texts,
                                              std::initializer_list<const char*> starts) {
    std::vector<std::string> found;
    std::copy_if(texts.begin(), texts.end(), std::back_inserter(found), [&](const std::string& text) {
        return std::any_of(starts.begin(), starts.end(), [&](const char* start) { return startsWith(text, start); });
    });
    return found;
}

/// The texts between the first one equal to `first` and the next one equal to `last`, both included; none otherwise.
inline std::vector<std::string> stretch(const std::vector<std::string>& texts, const std::string& first,
                                        const std::string& last) {
    const auto begin = std::find(texts.begin(), texts.end(), first);
    const auto end = std::find(begin, texts.end(), last);
    return end == texts.end() ? std::vector<std::string>{} : std::vector<std::string>(begin, end + 1);
}

/// Checks that the texts end with these, to the blank.
inline void expectEnding(const std::vector<std::string>& expected, const std::vector<std::string>& texts) {
    ASSERT_GE(texts.size(), expected.size());
    const auto start = texts.end() - static_cast<std::ptrdiff_t>(expected.size());
    EXPECT_EQ(expected, std::vector<std::string>(start, texts.end()));
}

} // namespace e2e
