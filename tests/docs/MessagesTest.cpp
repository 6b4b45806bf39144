// The manual explains every message that the program can show, and no other.

#include "docs/Files.h"
#include "docs/SourceTexts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

using docs_test::fixedPieces;
using docs_test::inSources;
using docs_test::read;
using docs_test::readsAsWords;
using docs_test::tidy;

/// The texts set as code in the manual's chapter on messages.
std::vector<std::string> messagesOfTheManual() {
    const auto manual = read(inSources("docs/manuale.md"));
    const auto chapter = manual.find("\n## I messaggi\n");
    if (chapter == std::string::npos)
        return {};
    std::vector<std::string> messages;
    for (auto open = manual.find('`', chapter); open != std::string::npos;) {
        const auto close = manual.find('`', open + 1);
        messages.push_back(tidy(manual.substr(open + 1, close - open - 1)));
        open = manual.find('`', close + 1);
    }
    return messages;
}

/// Texts that read as words but are no messages: captions, tool tips, names of columns, and pieces of such.
std::set<std::string> captions() {
    std::set<std::string> all;
    std::istringstream lines(read(inSources("tests/docs/didascalie.txt")));
    for (std::string line; std::getline(lines, line);)
        if (!line.empty() && line[0] != '#')
            all.insert(tidy(line));
    return all;
}

/// Whether a text is made of pieces of the sources one after the other, with nothing but signs between them.
bool madeOf(const std::string& text, const std::set<std::string>& pieces) {
    std::vector<bool> reached(text.size() + 1, false);
    reached[0] = true;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (!reached[at])
            continue;
        const auto c = static_cast<unsigned char>(text[at]);
        if (std::isalnum(c) == 0 && c < 0x80)
            reached[at + 1] = true;
        for (const auto& piece : pieces)
            if (text.compare(at, piece.size(), piece) == 0)
                reached[at + piece.size()] = true;
    }
    return reached[text.size()];
}

/// With a line end for each "…", which stands for what changes.
std::string withoutDots(std::string text) {
    constexpr std::string_view dots = "…";
    for (auto at = text.find(dots); at != std::string::npos; at = text.find(dots))
        text.replace(at, dots.size(), "\n");
    return text;
}

TEST(Messages, TheManualExplainsEveryOne) {
    const auto explained = messagesOfTheManual();
    const auto others = captions();
    std::size_t messages = 0;
    for (const auto& source : docs_test::sourceTexts()) {
        for (const auto& piece : fixedPieces(source.text)) {
            if (!readsAsWords(piece) || others.contains(piece))
                continue;
            ++messages;
            EXPECT_TRUE(std::any_of(explained.begin(), explained.end(),
                                    [&](const auto& text) { return text.find(piece) != std::string::npos; }))
                << source.file << ": \"" << piece << "\" is neither a message of docs/manuale.md nor a caption of "
                << "tests/docs/didascalie.txt";
        }
    }
    EXPECT_GT(messages, 150U);
}

TEST(Messages, TheManualExplainsNoOther) {
    std::set<std::string> pieces;
    for (const auto& source : docs_test::sourceTexts())
        for (const auto& piece : fixedPieces(withoutDots(source.text)))
            pieces.insert(piece);
    for (const auto& message : messagesOfTheManual()) {
        for (const auto& fixed : fixedPieces(withoutDots(message)))
            EXPECT_TRUE(madeOf(fixed, pieces)) << "nothing in the sources says \"" << fixed << "\" of: " << message;
    }
}

TEST(Messages, TheListOfCaptionsHoldsNoOther) {
    std::set<std::string> pieces;
    for (const auto& source : docs_test::sourceTexts())
        for (const auto& piece : fixedPieces(source.text))
            pieces.insert(piece);
    for (const auto& caption : captions())
        EXPECT_TRUE(pieces.contains(caption)) << caption;
}

TEST(Messages, LiteralsAreReadAsTheCompilerReadsThem) {
    using Texts = std::vector<std::string>;
    EXPECT_EQ(Texts{"uno due"}, docs_test::literalsOf("f(\"uno \" // \"no\"\n  /* \"no\" */ \"due\");"));
    EXPECT_EQ((Texts{"uno", "due"}), docs_test::literalsOf("f(\"uno\", \"due\");"));
    EXPECT_EQ((Texts{"a\"b\n", "c"}), docs_test::literalsOf("x = '\"'; y = \"a\\\"b\\n\" + 1'000 + \"c\";"));
    EXPECT_EQ(Texts{"dopo"}, docs_test::literalsOf("#include \"no\"\nR\"x(\"no\" )\" no)x\"; \"dopo\""));
    EXPECT_EQ((Texts{"la riga", "di"}), fixedPieces("la riga\n%1 di %s"));
    EXPECT_TRUE(readsAsWords("il file"));
    EXPECT_FALSE(readsAsWords("flg_Anagrafica"));
    EXPECT_FALSE(readsAsWords(" AND x IS NULL or so"));
}

} // namespace
