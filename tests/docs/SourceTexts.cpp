#include "docs/SourceTexts.h"

#include "docs/Files.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>

namespace docs_test {

namespace {

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

bool isLower(char c) {
    return c >= 'a' && c <= 'z';
}

/// Letters of ASCII, and whatever is no ASCII.
bool isLetter(char c) {
    return isLower(c) || (c >= 'A' && c <= 'Z') || static_cast<unsigned char>(c) >= 0x80;
}

std::size_t afterLine(std::string_view source, std::size_t at) {
    const auto end = source.find('\n', at);
    return end == std::string_view::npos ? source.size() : end;
}

/// Reads the literal whose opening quote stands at a place; gives the place after it.
std::size_t readLiteral(std::string_view source, std::size_t at, std::string& text) {
    for (++at; at < source.size() && source[at] != '"'; ++at) {
        if (source[at] != '\\') {
            text += source[at];
            continue;
        }
        const char escaped = source[++at];
        text += escaped == 'n' ? '\n' : escaped == 't' ? '\t' : escaped;
    }
    return at + 1;
}

/// The place after a character literal, or after the separator in a number.
std::size_t afterApostrophe(std::string_view source, std::size_t at) {
    if (at > 0 && std::isalnum(static_cast<unsigned char>(source[at - 1])) != 0)
        return at + 1;
    for (++at; at < source.size() && source[at] != '\''; ++at)
        if (source[at] == '\\')
            ++at;
    return at + 1;
}

/// Names of made-up accounts, not what is said when they can not be written.
bool isDemo(const std::string& file) {
    return file.starts_with("Demo") && file != "DemoDatabase.cpp";
}

std::size_t afterRawLiteral(std::string_view source, std::size_t at) {
    const auto open = source.find('(', at);
    const std::string closing = ")" + std::string(source.substr(at + 1, open - at - 1)) + "\"";
    return source.find(closing, open) + closing.size();
}

} // namespace

std::vector<std::string> literalsOf(std::string_view source) {
    std::vector<std::string> found;
    bool joined = false; // nothing but white space and comments since the last literal
    for (std::size_t at = 0; at < source.size();) {
        const auto two = source.substr(at, 2);
        if (two == "//" || (source[at] == '#' && (at == 0 || source[at - 1] == '\n'))) {
            at = afterLine(source, at);
        } else if (two == "/*") {
            at = source.find("*/", at) + 2;
        } else if (two == "R\"") {
            at = afterRawLiteral(source, at + 1);
            joined = false;
        } else if (source[at] == '"') {
            if (!joined)
                found.emplace_back();
            at = readLiteral(source, at, found.back());
            joined = true;
        } else if (source[at] == '\'') {
            at = afterApostrophe(source, at);
            joined = false;
        } else {
            joined = joined && isBlank(source[at]);
            ++at;
        }
    }
    return found;
}

std::vector<SourceText> sourceTexts() {
    std::vector<SourceText> all;
    const auto root = inSources("src");
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
        const auto& path = entry.path();
        const auto name = path.lexically_relative(root).generic_string();
        if ((path.extension() != ".cpp" && path.extension() != ".h") || name.starts_with("platform/headless/") ||
            isDemo(path.filename().string()))
            continue;
        for (auto& text : literalsOf(read(path)))
            all.push_back({name, std::move(text)});
    }
    return all;
}

std::string tidy(std::string_view text) {
    std::string tidied;
    for (const char c : text) {
        if (!isBlank(c))
            tidied += c;
        else if (!tidied.empty() && tidied.back() != ' ')
            tidied += ' ';
    }
    if (!tidied.empty() && tidied.back() == ' ')
        tidied.pop_back();
    return tidied;
}

std::vector<std::string> fixedPieces(std::string_view text) {
    std::vector<std::string> pieces(1);
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool place = text[at] == '%' && at + 1 < text.size() &&
                           (std::isdigit(static_cast<unsigned char>(text[at + 1])) != 0 || text[at + 1] == 's');
        if (place || text[at] == '\n')
            pieces.emplace_back();
        else
            pieces.back() += text[at];
        at += place ? 1 : 0;
    }
    for (auto& piece : pieces)
        piece = tidy(piece);
    std::erase_if(pieces, [](const std::string& piece) { return piece.empty(); });
    return pieces;
}

bool readsAsWords(std::string_view piece) {
    constexpr std::array<std::string_view, 14> sql{"SELECT", "FROM", "WHERE", "CONVERT", "ISNULL", "AS",    "CASE",
                                                   "SET",    "AND",  "ELSE",  "PRAGMA",  "RTRIM(", "Rtrim", "VALUES"};
    if (piece.find(' ') == std::string_view::npos || piece.find_first_of("{}") != std::string_view::npos ||
        piece.find("px ") != std::string_view::npos)
        return false;
    int words = 0;
    for (std::size_t at = 0; at < piece.size();) {
        if (!isLetter(piece[at])) {
            ++at;
            continue;
        }
        const auto end = std::find_if_not(piece.begin() + static_cast<std::ptrdiff_t>(at), piece.end(), isLetter);
        const auto word = piece.substr(at, static_cast<std::size_t>(end - piece.begin()) - at);
        // "CONVERT è ammesso" speaks of SQL; "CONVERT(" is it.
        if (std::find(sql.begin(), sql.end(), word) != sql.end() &&
            piece.substr(at + word.size()).find(" è ammesso") != 0)
            return false;
        if (std::count_if(word.begin(), word.end(), isLower) >= 2)
            ++words;
        at += word.size();
    }
    return words >= 2;
}

} // namespace docs_test
